// The main window: its state and its commands. The commands live in one file per group: CodeTree.cpp,
// KeysAndToolBar.cpp, ContextMenus.cpp, FileCommands.cpp, BuildCommand.cpp, HelpCommands.cpp, LanguageCommands.cpp.
// Beside all of them Recovery.cpp keeps what is not saved, and GoTo.cpp leads from a message to its line.
#pragma once

#include "app/Catalogue.h"
#include "document/VornSrcObj.h"
#include "platform/desktop/Desktop.h"
#include "recovery/RecoveryStore.h"
#include "ui/BuildMessages.h"
#include "ui/Names.h"
#include "ui/TextFinder.h"
#include "ui/TypingHelp.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class frmSplash;

// The keys of the three groups of the code tree.
inline constexpr std::string_view ReferencesKey = "_0v";
inline constexpr std::string_view FunctionsKey = "_0f";
inline constexpr std::string_view EventsKey = "_0e";

// What the tool bar may have: no buttons, and "Add" with "Delete".
inline constexpr std::string_view EventTool = "EventTool";
inline constexpr std::string_view FuncVarTool = "FuncVarTool";

enum class SaveResult : std::int32_t { Saved = 0, NotSaved = 2 };
enum class SaveAnswer : std::int32_t { Saved = 0, Declined = 1, Cancelled = 2, Failed = 3 };

// A row of a context menu, and what it does; without a text a line between rows.
struct ContextChoice {
    PopupRow row;
    std::function<void()> run;
};

class VornMainFrm : public WindowTexts {
public:
    // Takes the controls of `desktop`, puts them in their places, makes the menus and listens to the events. Nothing is
    // loaded before the window is shown. Copies of what is not saved go where `recovery` says. The desktop, and what
    // `recovery` works with, must outlive the window.
    VornMainFrm(Desktop& desktop, const RecoveryHost& recovery);
    ~VornMainFrm();
    VornMainFrm(const VornMainFrm&) = delete;
    VornMainFrm& operator=(const VornMainFrm&) = delete;

    // Shows the window, which loads it, and returns at once.
    void Show();

    // State

    TreeItem mCurrentNode = TreeItem::None; // the item whose code the pane shows; never one that was removed
    std::string mLastOpenedFile;            // "" while untitled
    std::unique_ptr<VornSrcObj> mSourceDoc;
    std::int16_t FuncBodyChangeMode = 1; // 2 while the pane has the focus
    bool FuncBodyChangedFlag = false;    // there are unsaved edits
    std::string StatusPanel2;            // the identifier of the text in status panel 2
    double mLastHeight = 0;              // at the last layout, in twips
    double mLastWidth = 0;
    std::uint8_t mLanguage = 0;
    std::string mCompBat;
    std::string mCompFileName;
    std::string mHelpFile;
    std::string mProgBlkIcon;

    // The window itself

    void Form_Load();
    void Form_Resize();
    void Form_Unload();

    // Code tree and editing pane

    void BuildCodeTree();
    void CodeTree_NodeClick(TreeItem node);
    void SaveCurrentNodeCode(TreeItem node);
    void Form_AddFunction();
    void Form_DeleteFunction();
    void SetUpFuncBodyTabs();
    void DisableTabKeyForUseOnlyInFuncBody();
    void FuncBody_GotFocus();
    void FuncBody_LostFocus();
    void FuncBody_Change();
    bool FuncBody_KeyDown(const PaneKey& key); // whether it has been dealt with

    // Keys and tool bar

    void Form_KeyDown(int keyCode, int shift);
    void SetUpToolBar(std::string_view kind); // EventTool or FuncVarTool
    void VornToolBar_ButtonClick(std::int32_t number);

    // File commands

    void mnuNewPSF_Click();
    void mnuOpenPSF_Click(const std::string& dropped); // the file; "" has the user asked for one
    void mnuSavePSF_Click();
    void mnuSaveAsPSF_Click();
    void mnuExit_Click();

    SaveResult SavePSFFunc();
    SaveResult SaveAsPSFFunc();

    // Asks whether to save, and saves on Yes.
    SaveAnswer PromptUserForSave();

    // Build, help, language

    void mnuBuildExe_Click();
    void mnuHelpHotKeys_Click();
    void mnuOpenHelp_Click();
    void mnuAbout_Click();
    void mnuEnglish_Click();
    void mnuGerman_Click();

private:
    void PlaceControls();
    void MakeMenus();
    void Listen();
    void ListenToMenus();

    void SetUpStatusBar();
    void ShowButtonTips();
    void ShowLanguage();
    std::string FuncLabelText() const;
    void ReadSettings();
    void OpenCommandLine();
    void AddFunctionItems(bool skipErrors);
    std::string ReadSetting(std::string_view name);

    void ShowNodeCode(TreeItem node);
    void PutIntoPane(std::string_view text, const std::string& member = "");
    void LeaveText();
    void ReturnToText(std::string_view text);
    std::string ParentKey(TreeItem node) const;
    std::int32_t EventIndex(TreeItem node) const;
    bool IsFunctionItem(TreeItem node) const;
    void SelectFunctionsItem();
    void DeleteCurrentFunction();
    void Complain(std::string_view complaint, MsgIcon icon);

    bool MayDropDocument();
    bool SaveBeforeBuild();
    FileDialogSettings DialogSettings(std::string_view menu) const;
    Status Save(const std::string& fileName);
    std::string AskSaveName();
    void ForgetChanges();
    std::unique_ptr<VornSrcObj> NewDocument();

    std::string PaneText();
    void WithContent(const std::function<void(const WindowContent& content)>& use);
    void NoteChange();
    void WriteCopy(Flushing flushing);
    void WriteCopyWhenIdle();
    bool IsSafeToReplace(const std::string& fileName);
    void NoteLoaded(const std::string& fileName);
    void KeepDocument(Reason reason);
    void KeepPane();
    void GiveUpDocument(Reason reason);
    void OfferLeft();
    void OfferBeside();
    void Offer(const Copy& copy);
    void GoOnWith(const Copy& copy);
    void NoteEditedSince(const std::string& fileName);
    void SelectMember(const std::string& member, std::size_t caret);
    TreeItem ItemOf(const std::string& member) const;

    void UseTool(std::string_view tag);
    void ShowPaneMenu(ScreenPlace place);
    void ShowTreeMenu(ScreenPlace place);
    void ShowMenu(std::vector<ContextChoice> choices, ScreenPlace place);
    PopupRow MenuRow(OwnText text, const std::string& keys, bool isEnabled = true) const;
    void EditByMenu(const std::function<void()>& edit);

    std::string TipOfLost(std::u16string_view character) const;
    bool TakeKey(int keyCode, int shift);
    void ZoomBySteps(int steps);
    void GoToNamed();
    void GoBack();
    bool ShowMember(const std::string& member);
    void EnterPane();
    std::size_t ListEverywhere(const std::string& wanted, FindOptions options);
    void GoTo(const Diagnostic& message);
    std::string WordOf(Mark mark) const;
    void ShowLineMarks(std::string_view text);
    void ShowMarks();
    void NoteEdited(TreeItem item);
    void ShowEdited(bool areEdited);
    std::string NameOf(const std::string& member) const;

    MsgResult Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon);
    void Tell(Text text, Text caption, MsgIcon icon);
    void Tell(std::string_view text, Text caption, MsgIcon icon);
    void TellStatus(Status status);
    void ShowMessage(Text message);
    void ShowFileName(std::string_view fileName);

    Desktop& mDesktop;
    Window& mWindow;
    TreeView& mCodeTree;
    RichTextBox& mFuncBody;
    TreeItem mShownNode = TreeItem::None; // whose text was put into the pane; the pane is stored for no other item
    std::unique_ptr<frmSplash> mSplash;
    int mTabStopCount = 1; // across the pane

    // What recovery knows of the document's file; none for a document without a name.
    struct DocumentFile {
        std::string path; // the full one
        std::optional<FileMark> mark;
    };

    // Where somebody was before going to a function or event.
    struct WayBack {
        std::string member;
        Selection selected;
    };

    // What the user had of a text that was in the pane.
    struct LeftText {
        std::string text; // where something of it can be undone
        PaneSight sight;
    };

    std::map<std::string, LeftText> mLeft; // by the names of members
    Names mNames;
    TypingHelp mTypingHelp;
    BuildMessages mMessages;
    TextFinder mFinding;
    std::vector<WayBack> mCameFrom;
    std::vector<std::string> mMarkedMembers; // by messages, in the tree
    std::set<TreeItem> mEditedItems;         // whose texts the file does not have
    RecoveryStore mRecovery;
    DocumentFile mFile;
    std::string mShownMember;    // whose text the pane holds, be it stored or not; "" for none of the document
    bool mIsFilling = false;     // the program puts a text into the pane
    bool mIsUnsaved = false;     // there may be more than in the file, whatever the flag says
    bool mIsCopyBehind = false;  // ... and than in the copy
    bool mIsOnDisk = false;      // a power cut does not take the copy
    bool mHasSaveFailed = false; // the last one, whatever it told
};

} // namespace tessaly
