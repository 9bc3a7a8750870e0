// The editing pane: plain text of any length, with the numbers of its lines in a margin. What keys do beyond what every
// editor does the program says; the desktop shows the text, the caret and the marks.
#pragma once

#include "editing/Brackets.h"
#include "editing/Find.h"
#include "editing/Spots.h"
#include "platform/desktop/Control.h"
#include "platform/desktop/LineMarks.h"
#include "platform/desktop/Raise.h"
#include "platform/desktop/TextHistory.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// A key that is pressed in the pane, or a character that is typed there.
struct PaneKey {
    int keyCode = 0; // as Window::onKeyDown has it; 0 for a character
    int shift = 0;   // likewise
    char16_t character = 0;

    bool operator==(const PaneKey&) const = default;
};

// What of a text is seen.
struct PaneScroll {
    std::size_t firstLine = 0; // from 0
    int across = 0;            // how far its left edge is out of sight, in pixels
};

// What a user had of a text beside the text itself: where the caret was, what was seen, what can be undone.
struct PaneSight {
    Ends selected;
    PaneScroll scroll;
    TextHistory history;
};

// Line breaks: a text comes back exactly as it was put in while the user has not edited it. After an edit untouched
// line breaks are still those that were put in, and a typed or pasted one is CR LF; of two breaks in a row, one of
// which is new, the first counts as the old one. What is undone has its own ones back.
//
// The lines are those of the text as it is now, also while the pane is unavailable.
class RichTextBox : public Control, public TextLines {
public:
    explicit RichTextBox(Controls& controls) : Control(controls, Keyboard::Used) {}

    // Raised after every change of the text, by the user as well as by SetText, even if that puts in what was there.
    std::function<void()> onChange;

    // Raised before the pane does with a key, or with a typed character from the blank on, what it always does. True:
    // nothing of that is to happen, it has been dealt with. A key that types raises it as a key first.
    std::function<bool(const PaneKey& key)> onKey;

    // Raised when the user has clicked with Ctrl alone held: the caret is there, and nothing is selected.
    std::function<void()> onCtrlClick;

    // Raised when the user turns the wheel with Ctrl held: by so many steps, those away from him above 0. It does not
    // scroll then.
    std::function<void(int steps)> onCtrlWheel;

    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;

    // The text, UTF-8. SetText shows all of it, forgets what could be undone and raises onChange. Or it throws a
    // std::exception, where memory is short as a rule; then the old text is still there and whole, what could be
    // undone still can be, and nothing is raised.
    std::string Text() const { return mBreaks.Apply(ShownText()); }
    virtual void SetText(std::string_view text) = 0;

    // Where the caret is: in units of UTF-16 from the beginning of the text, each line break counted as one. SetText
    // puts it to the beginning. MoveCaret selects nothing, brings the caret into view and goes to the end of the text
    // at most.
    std::size_t CaretPosition() const { return SelectedEnds().caret; }
    void MoveCaret(std::size_t position);

    // What is selected; places that are not there are the nearest ones that are. Select brings the caret into view. A
    // system may not tell at which end of what the user selected the caret is; then it is taken to be the later one.
    Selection Selected() const;
    void Select(const Selection& selection);
    void SelectAll();

    // The text between two places, each break an LF.
    std::u16string TextBetween(Place begin, Place end) const;

    // Does an edit as if the user had typed it: it is one step to undo, raises onChange once, and its line breaks are
    // CR LF. All others stay what they are. An unavailable pane takes none, as it takes no key.
    void Do(const Edit& edit);

    // Takes the last step back, or does it again. False, and nothing happens, where there is none. Otherwise the text
    // is what it was, byte for byte, and onChange is raised once. The pane does it by Ctrl+Z and Alt+Backspace, and by
    // Ctrl+Y and Ctrl+Shift+Z.
    bool CanUndo() const { return mFuncBodyAvailable && mHistory.CanUndo(); }
    bool CanRedo() const { return mFuncBodyAvailable && mHistory.CanRedo(); }
    bool Undo();
    bool Redo();

    // Takes it all away from the text, for when it comes back, and gives it to the text that was put in since. Both
    // are of the same text, byte for byte, or else the history is to be an empty one. Nothing is raised.
    PaneSight TakeSight();
    void GiveSight(PaneSight sight);

    // As the keys for the clipboard do it.
    enum class Clip { Cut, Copy, Paste };
    virtual void Do(Clip step) = 0;

    // An unavailable pane takes no input and refuses the focus. It is shown empty and grey, not hidden, so that the
    // window keeps its shape under the user's hand. If it has the focus when it becomes unavailable it keeps it. It is
    // available at first. A pane that cannot show its text stays unavailable, and a std::exception is thrown.
    bool FuncBodyAvailable() const { return mFuncBodyAvailable; }
    void SetFuncBodyAvailable(bool available) {
        if (available != mFuncBodyAvailable) {
            ShowAvailable(available);
            mFuncBodyAvailable = available;
            LookAtCaret();
        }
    }

    // Marks these lines, and no others: by a picture in the margin, the gravest mark of the line, and by a wavy line
    // under the text. See LineMarks for what stays of them when the user edits. SetText takes all away. None of this
    // is a change of the text: it raises nothing, cannot be undone and moves neither caret nor view. An unavailable
    // pane shows neither numbers nor marks, but keeps these.
    void SetLineMarks(std::span<const LineMark> marks) {
        mMarks.Set(marks, Count(), [this](std::size_t line) { return SpanOf(line); });
        ShowSpots(std::nullopt);
        Describe();
    }

    // What the marks of a line, from 0, say; with a column, only those whose wavy line is there. None while the pane is
    // unavailable.
    std::vector<std::string> MarksSay(std::size_t line, std::optional<std::size_t> column = std::nullopt) const;

    // Whether a save keeps a character. Others are set apart, as are blanks at the end of a line, the line of the
    // caret, and the bracket beside it with its partner, or another way without one. It is asked when they are drawn.
    std::function<bool(char32_t character)> keeps;

    // What is said of a character that a save does not keep: to a screen reader, and in a tip.
    std::function<std::string(std::u16string_view character)> tellLost;

    // Sets these matches apart, which are in order, and no others. Any change of the text takes them away. It is as
    // little a change itself as SetLineMarks is.
    void SetMatches(std::vector<Match> matches);

    // How large the text is shown, in percent, 100 at first: from LeastZoom to MostZoom, or the nearest of these. The
    // margin and the tab stops follow. Nothing that is asked for or set in twips changes by it.
    static constexpr int LeastZoom = 50;
    static constexpr int MostZoom = 400;
    int Zoom() const { return mZoom; }
    void SetZoom(int percent) {
        mZoom = std::clamp(percent, LeastZoom, MostZoom);
        ShowZoom();
    }

    // How wide each character is, in twips: the font has a fixed pitch.
    virtual float CharacterWidth() const = 0;

    // Where the tab stops are, in twips from the left edge of the text, ascending.
    virtual void SetTabStops(const std::vector<float>& stops) = 0;

    // For the desktop: what is to be set apart, in lines counted from 0. If that is too much to be seen at once, only
    // what touches the columns that `seen` tells.
    std::size_t CurrentLine() const { return mCaret.line; }
    std::vector<Spot> SpotsOf(std::size_t line, const std::function<LineSpan()>& seen = nullptr) const;

    bool CanHaveFocus() const override { return mFuncBodyAvailable; }
    void GainFocus() override { Raise(onGotFocus); }
    void LoseFocus() override { Raise(onLostFocus); }

protected:
    // Sets it as soon as the text is there or gone, if something is painted before this returns.
    virtual void ShowAvailable(bool available) = 0;

    // The text in UTF-8, with LF as its only break.
    virtual std::string ShownText() const = 0;

    // Of the text: SpanOf is asked for lines that are there, from 1. LineAt counts from 0.
    virtual LineSpan SpanOf(std::size_t line) const = 0;
    virtual std::size_t LineAt(std::size_t position) const = 0;

    // Both ends are in the text.
    virtual Ends SelectedEnds() const = 0;
    virtual void SelectEnds(const Ends& ends) = 0;

    // What is seen, and to be seen, as far as the text goes on that long below and beside it.
    virtual PaneScroll Scrolled() const = 0;
    virtual void ScrollTo(const PaneScroll& scroll) = 0;

    // Shows `text`, with LF as its only break, in the place of what is from `start` to before `end`. Raises nothing.
    virtual void ShowReplaced(std::size_t start, std::size_t end, std::u16string_view text) = 0;

    // Does `work`, which calls ShowReplaced some times and SelectEnds, and draws what came of it once.
    virtual void ShowTogether(const std::function<void()>& work) = 0;

    // Other things are set apart in this line, from 0, which may be gone; or in any line, and others are marked.
    virtual void ShowSpots(std::optional<std::size_t> line) = 0;

    // The zoom is another one.
    virtual void ShowZoom() = 0;

    // A screen reader is to be told this of the pane beside its text, caret and selection: what the marks of the line
    // with the caret say, and what of it a save would lose; "" for nothing.
    virtual void ShowDescription(const std::string& description) = 0;
    const std::string& Description() const { return mDescription; }

    // To be called in the place of scrolling when the wheel is turned with Ctrl held, by 120 for each step.
    void TellCtrlWheel(int delta);

    // A new text is shown that had these breaks: tells of it.
    void NoteNewText(BreakList breaks);

    // The user has put `added`, which is shown, in the place of `removed`; breaks are LFs. To be called before onChange
    // is raised.
    void NoteEdit(std::size_t start, std::u16string removed, std::u16string added);

    // To be called when the user has moved the caret, and behind every NoteEdit when the caret is where it belongs.
    void LookAtCaret();

    // To be called for every key and typed character before the control gets it. True for one that it is not to get.
    bool TakesKey(const PaneKey& key);

    const LineMarks& Marks() const { return mMarks; }

    bool mFuncBodyAvailable = true;

private:
    std::size_t Length() const { return SpanOf(Count()).end; }
    std::size_t PositionOf(Place place) const;
    Place PlaceAt(std::size_t position) const;
    Replacement Put(std::size_t start, std::size_t end, std::size_t firstBreak, const Stretch& added);
    void GoThrough(const std::function<void()>& work);
    void FollowEdit(std::size_t start, const Stretch& removed, const Stretch& added);
    std::size_t BreaksBehind(std::size_t position) const;
    void Describe();

    // What is set apart on account of the caret.
    struct CaretSight {
        std::size_t line = 0;
        bool isBehindBlanks = false; // at the end of the line: they are being typed
        std::optional<BracketPair> brackets;

        bool operator==(const CaretSight&) const = default;
    };

    LineMarks mMarks;
    BreakList mBreaks;
    TextHistory mHistory;
    CaretSight mCaret;
    std::vector<Match> mMatches;
    std::string mDescription;
    int mZoom = 100;
    int mWheel = 0; // what it has turned since the last step
};

} // namespace tessaly
