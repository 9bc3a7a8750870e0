// The window's own life: it is made, loaded, resized and closed.
#include "ui/VornMainFrm.h"

#include "app/LenientNumber.h"
#include "app/Settings.h"
#include "ui/Command.h"
#include "ui/Editing.h"
#include "ui/MenuTable.h"
#include "ui/frmSplash.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <stdexcept>

namespace tessaly {

namespace {

// What a length becomes when the window grows by `ratio`; single precision, as extents are.
float Scaled(float length, double ratio) {
    return static_cast<float>(length * ratio);
}

// By how much the window has grown. A window that had no size before has no ratio.
double Ratio(double now, double before) {
    if (now < 0) {
        return 1;
    }
    if (before == 0) {
        throw std::domain_error("a window without a size cannot grow");
    }
    return now / before;
}

Reason ReasonOf(SaveAnswer answer) {
    switch (answer) {
    case SaveAnswer::Declined:
        return Reason::AnsweredNo;
    case SaveAnswer::Cancelled:
        return Reason::Cancelled;
    default:
        return Reason::SaveFailed;
    }
}

} // namespace

VornMainFrm::VornMainFrm(Desktop& desktop, const RecoveryHost& recovery)
    : mDesktop(desktop),
      mWindow(desktop.MainWindow()),
      mCodeTree(desktop.CodeTree()),
      mFuncBody(desktop.FuncBody()),
      mNames(desktop.Files(), desktop.AnsiCodePage()),
      mTypingHelp(mFuncBody, desktop.NameSuggestions(),
                  [this](Place place) {
                      const Headers::Places headers = {mCompBat, mCompFileName, mLastOpenedFile};
                      return mNames.At(mFuncBody, place, *mSourceDoc, mShownMember, headers);
                  }),
      mMessages(desktop, recovery.own),
      mFinding(desktop),
      mRecovery(recovery) {
    MakeMenus();
    PlaceControls();
    Listen();
}

VornMainFrm::~VornMainFrm() = default;

void VornMainFrm::Show() {
    mWindow.Show();
}

void VornMainFrm::Form_Load() {
    DisableTabKeyForUseOnlyInFuncBody();
    ForgetChanges();
    mSourceDoc = NewDocument();
    BuildCodeTree();
    mCurrentNode = mCodeTree.Find(EventsKey);
    mLastHeight = mWindow.Height();
    mLastWidth = mWindow.Width();
    // From here on an error ends its own step only.
    SetUpFuncBodyTabs();
    SetUpStatusBar();
    StatusPanel2 = "";
    mLastOpenedFile = "";
    ReadSettings();
    OpenCommandLine();
    OfferLeft();
}

void VornMainFrm::SetUpStatusBar() {
    StatusBar& bar = mDesktop.StatusBar1();
    Attempt([&bar] { bar.AddPanel(); });
    Attempt([&bar] { bar.SetPanelSpring(1); });
    Attempt([this, &bar] { bar.SetPanelText(1, Words(Text::FilePrefix)); });
    Attempt([&bar] { bar.AddPanel(); });
    Attempt([&bar] { bar.SetPanelSpring(2); });
    Attempt([&bar] { bar.SetPanelText(2, ""); });
}

void VornMainFrm::ReadSettings() {
    if (const std::string language = ReadSetting(LanguageSetting); !language.empty()) {
        Attempt([this, &language] { mLanguage = ToByte(language); });
    }
    Attempt([this] { ShowLanguage(); });
    mCompBat = ReadSetting(CompBatSetting);
    mCompFileName = ReadSetting(CompFileNameSetting);
    mHelpFile = ReadSetting(HelpSetting);
    mProgBlkIcon = ReadSetting(ProgBlkIconSetting);
    if (!mHelpFile.empty() && !mCompBat.empty() && !mCompFileName.empty()) {
        mDesktop.App().helpFile = mHelpFile;
    } else {
        Attempt([this] { Tell(Text::InstallationCorrupted, Text::Error, MsgIcon::Stop); });
    }
    if (!mProgBlkIcon.empty()) {
        Attempt([this] { mWindow.SetIcon(mProgBlkIcon); });
    }
}

std::string VornMainFrm::ReadSetting(std::string_view name) {
    return ReadRegValue(mDesktop.Settings(), Registry::LocalMachine, SettingsKey, name);
}

// The whole command line is one file name; neither quotes nor blanks are taken off it.
void VornMainFrm::OpenCommandLine() {
    const std::string& commandLine = mDesktop.App().commandLine;
    if (commandLine.empty()) {
        return;
    }
    mSourceDoc = NewDocument();
    if (mSourceDoc->LoadFile(commandLine) != Status::Done) {
        Attempt([this] { ShowFileName(""); });
        return;
    }
    Attempt([this] { BuildCodeTree(); });
    AddFunctionItems(true);
    mLastOpenedFile = commandLine;
    NoteLoaded(commandLine);
    Attempt([this] { ShowFileName(mLastOpenedFile); });
    Attempt([this] { mDesktop.StatusBar1().SetPanelText(2, Words(Text::FileOpened)); });
    StatusPanel2 = Row(Text::FileOpened).identifier;
    Attempt([this] { mCurrentNode = mCodeTree.Find(EventsKey); });
    OfferBeside();
}

// Adds an item for each function of the document. With `skipErrors` one that cannot be added is left out.
void VornMainFrm::AddFunctionItems(bool skipErrors) {
    for (std::int32_t i = 0; i < mSourceDoc->GetFunctionCount(); ++i) {
        std::string name;
        if (mSourceDoc->GetFuncName(i, name) != Status::Done) {
            continue;
        }
        const auto add = [this, &name] { mCodeTree.Add(mCodeTree.Find(FunctionsKey), name, name); };
        if (skipErrors) {
            Attempt(add);
        } else {
            add();
        }
    }
}

void VornMainFrm::Form_Resize() {
    mTypingHelp.Close();
    SaveCurrentNodeCode(mCurrentNode);
    const float newHeight = mWindow.Height();
    const float newWidth = mWindow.Width();
    const double heightRatio = Ratio(newHeight, mLastHeight);
    const double widthRatio = Ratio(newWidth, mLastWidth);

    Extent tree = mCodeTree.GetExtent();
    tree.height = Scaled(tree.height, heightRatio);
    tree.width = Scaled(tree.width, widthRatio);
    mCodeTree.SetExtent(tree);

    Extent label = mDesktop.FuncLabel().GetExtent();
    label.left = Scaled(label.left, widthRatio);
    mDesktop.FuncLabel().SetExtent(label);

    Extent pane = mFuncBody.GetExtent();
    pane.height = Scaled(pane.height, heightRatio);
    pane.width = Scaled(pane.width, widthRatio);
    pane.left = Scaled(pane.left, widthRatio);
    mFuncBody.SetExtent(pane);

    SetUpFuncBodyTabs();
    Attempt([this] { mFinding.LayOut(); });
    mLastHeight = newHeight;
    mLastWidth = newWidth;
}

// The window always closes, whatever the save question is answered: kept on purpose.
void VornMainFrm::Form_Unload() {
    SaveCurrentNodeCode(mCurrentNode);
    WriteCopy(Flushing::Now); // the system may not wait for an answer
    Reason reason = mHasSaveFailed ? Reason::SaveFailed : Reason::AnsweredNo;
    if (FuncBodyChangedFlag) {
        reason = ReasonOf(PromptUserForSave());
    }
    GiveUpDocument(reason);
    ForgetChanges();
    std::string language = std::to_string(mLanguage);
    WriteRegValue(mDesktop.Settings(), Registry::LocalMachine, SettingsKey, "Number", LanguageSetting, language);
}

// The tree takes a bit more than a quarter of the width: names of functions are short, lines of code are not. The pane
// is a whole number of tab stops wide, so that a tab at first is as wide as the characters beside it.
void VornMainFrm::PlaceControls() {
    constexpr float margin = 120;
    constexpr float panePart = 0.72F;
    constexpr float charactersInTab = 4;
    constexpr float charactersInLabel = 18;
    const float character = mFuncBody.CharacterWidth();
    const float tab = charactersInTab * character;
    const float width = std::max(mWindow.ClientWidth() - 3 * margin, 2 * tab);
    mTabStopCount = std::max(static_cast<int>(width * panePart / tab), 1);
    const float paneWidth = static_cast<float>(mTabStopCount) * tab;
    const float treeWidth = width - paneWidth;
    const float paneLeft = treeWidth + 2 * margin;

    // Labels keep their width when the window gets narrower, so they take what they have in the narrowest one.
    const float treeLabelWidth = std::clamp(charactersInLabel * character, treeWidth / 2, treeWidth);
    const float narrowest = (treeLabelWidth + margin) / paneLeft;
    mWindow.SetMinimumSize(mWindow.Width() * narrowest, mWindow.Height() / 2);

    const float labelTop = mDesktop.VornToolBar().PreferredHeight();
    const float labelHeight = mDesktop.FuncLabel().PreferredHeight();
    const float paneTop = labelTop + labelHeight + margin / 4;
    const float footer = mDesktop.StatusBar1().PreferredHeight() + margin;
    const float paneHeight = std::max(mWindow.ClientHeight() - footer - paneTop, labelHeight);
    mWindow.SetFooter(footer);
    mDesktop.LblcodeTreeViewer().SetExtent({margin, labelTop, treeLabelWidth, labelHeight});
    mCodeTree.SetExtent({margin, paneTop, treeWidth, paneHeight});
    mDesktop.FuncLabel().SetExtent({paneLeft, labelTop, paneWidth * narrowest, labelHeight});
    mFuncBody.SetExtent({paneLeft, paneTop, paneWidth, paneHeight});
}

void VornMainFrm::MakeMenus() {
    for (const MenuEntry& entry : MenuTable) {
        MenuItem* const parent = entry.parent.empty() ? nullptr : &mDesktop.Menu(entry.parent);
        if (parent != nullptr && entry.separatorBefore) {
            mDesktop.AddMenuSeparator(*parent);
        }
        mDesktop.AddMenu(parent, entry.name);
    }
}

void VornMainFrm::Listen() {
    const auto to = [this](auto handler) { return std::bind_front(handler, this); };
    mWindow.onLoad = to(&VornMainFrm::Form_Load);
    mWindow.onResize = to(&VornMainFrm::Form_Resize);
    mWindow.onUnload = to(&VornMainFrm::Form_Unload);
    mWindow.onFileDropped = to(&VornMainFrm::mnuOpenPSF_Click);
    mWindow.onIdle = [this] {
        WriteCopyWhenIdle();
        mFinding.WhenIdle();
    };
    mWindow.onSuspend = [this] {
        mNames.headers.LookAgain(); // somebody may edit them
        WriteCopy(Flushing::Now);
    };
    mWindow.onKeyDown = to(&VornMainFrm::Form_KeyDown);
    mWindow.onOwnKey = to(&VornMainFrm::TakeKey);
    mMessages.onName = to(&VornMainFrm::NameOf);
    mMessages.onGo = to(&VornMainFrm::GoTo);
    mMessages.onChange = to(&VornMainFrm::ShowMarks);
    mFinding.onEdited = [this] { FuncBodyChangedFlag = true; };
    mFinding.onEverywhere = to(&VornMainFrm::ListEverywhere);
    mCodeTree.onNodeClick = to(&VornMainFrm::CodeTree_NodeClick);
    mFuncBody.onGotFocus = to(&VornMainFrm::FuncBody_GotFocus);
    mFuncBody.onLostFocus = to(&VornMainFrm::FuncBody_LostFocus);
    mFuncBody.onChange = to(&VornMainFrm::FuncBody_Change);
    mFuncBody.keeps = [this](char32_t character) { return Keeps(mDesktop.AnsiCodePage(), character); };
    mFuncBody.tellLost = to(&VornMainFrm::TipOfLost);
    mFuncBody.onKey = to(&VornMainFrm::FuncBody_KeyDown);
    mFuncBody.onCtrlClick = to(&VornMainFrm::GoToNamed);
    mFuncBody.onCtrlWheel = to(&VornMainFrm::ZoomBySteps);
    mFuncBody.onMenu = to(&VornMainFrm::ShowPaneMenu);
    mCodeTree.onMenu = to(&VornMainFrm::ShowTreeMenu);
    mDesktop.VornToolBar().onButtonClick = to(&VornMainFrm::VornToolBar_ButtonClick);
    ListenToMenus();
}

void VornMainFrm::ListenToMenus() {
    const std::pair<std::string_view, void (VornMainFrm::*)()> commands[] = {
        {"mnuNewPSF", &VornMainFrm::mnuNewPSF_Click},           {"mnuSavePSF", &VornMainFrm::mnuSavePSF_Click},
        {"mnuSaveAsPSF", &VornMainFrm::mnuSaveAsPSF_Click},     {"mnuExit", &VornMainFrm::mnuExit_Click},
        {"mnuBuildExe", &VornMainFrm::mnuBuildExe_Click},       {"mnuEnglish", &VornMainFrm::mnuEnglish_Click},
        {"mnuGerman", &VornMainFrm::mnuGerman_Click},           {"mnuOpenHelp", &VornMainFrm::mnuOpenHelp_Click},
        {"mnuHelpHotKeys", &VornMainFrm::mnuHelpHotKeys_Click}, {"mnuAbout", &VornMainFrm::mnuAbout_Click},
    };
    for (const auto& [name, handler] : commands) {
        mDesktop.Menu(name).onClick = std::bind_front(handler, this);
    }
    mDesktop.Menu("mnuOpenPSF").onClick = std::bind_front(&VornMainFrm::mnuOpenPSF_Click, this, "");
}

std::unique_ptr<VornSrcObj> VornMainFrm::NewDocument() {
    return std::make_unique<VornSrcObj>(mDesktop.Files(), mDesktop.AnsiCodePage());
}

MsgResult VornMainFrm::Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) {
    return mDesktop.MessageBoxes().Show(text, caption, buttons, icon);
}

void VornMainFrm::Tell(Text text, Text caption, MsgIcon icon) {
    Tell(Words(text), caption, icon);
}

void VornMainFrm::Tell(std::string_view text, Text caption, MsgIcon icon) {
    Ask(text, Words(caption), MsgButtons::Ok, icon);
}

void VornMainFrm::TellStatus(Status status) {
    const std::string number = std::to_string(static_cast<std::int32_t>(status));
    Tell(Words(Text::Error) + " " + number + " " + Words(Text::HasOccurred), Text::Error, MsgIcon::Stop);
}

} // namespace tessaly
