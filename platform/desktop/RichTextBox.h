// The editing pane: plain text of any length, with the numbers of its lines in a margin. Undo, clipboard keys and the
// caret are its own business.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/LineMarks.h"
#include "platform/desktop/Raise.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Line breaks: a text comes back exactly as it was put in while the user has not edited it. After an edit untouched
// line breaks are still those that were put in, and a typed or pasted one is CR LF; of two breaks in a row, one of
// which is new, the first counts as the old one.
// BreakList keeps them.
class RichTextBox : public Control {
public:
    explicit RichTextBox(Controls& controls) : Control(controls, Keyboard::Used) {}

    // Raised after every change of the text, by the user as well as by SetText, even if that puts in what was there.
    std::function<void()> onChange;

    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;

    // The text, UTF-8. SetText shows all of it, forgets what could be undone and raises onChange. Or it throws a
    // std::exception, where memory is short as a rule; then the old text is still there and whole, and nothing is
    // raised. What could be undone is still there, too, unless the control of the system failed half-way.
    virtual std::string Text() const = 0;
    virtual void SetText(std::string_view text) = 0;

    // Where the caret is: in units of UTF-16 from the beginning of the text, each line break counted as one. SetText
    // puts it to the beginning. MoveCaret selects nothing, brings the caret into view and goes to the end of the text
    // at most.
    virtual std::size_t CaretPosition() const = 0;
    virtual void MoveCaret(std::size_t position) = 0;

    // An unavailable pane takes no input and refuses the focus. It is shown empty and grey, not hidden, so that the
    // window keeps its shape under the user's hand. If it has the focus when it becomes unavailable it keeps it. It is
    // available at first. A pane that cannot show its text stays unavailable, and a std::exception is thrown.
    bool FuncBodyAvailable() const { return mFuncBodyAvailable; }
    void SetFuncBodyAvailable(bool available) {
        if (available != mFuncBodyAvailable) {
            ShowAvailable(available);
            mFuncBodyAvailable = available;
        }
    }

    // Marks these lines, and no others: by a picture in the margin, the gravest mark of the line, and by a wavy line
    // under the text. See LineMarks for what stays of them when the user edits. SetText takes all away. None of this
    // is a change of the text: it raises nothing, cannot be undone and moves neither caret nor view. An unavailable
    // pane shows neither numbers nor marks, but keeps these.
    void SetLineMarks(std::span<const LineMark> marks) {
        mMarks.Set(marks, LineCount(), [this](std::size_t line) { return SpanOf(line); });
        ShowMarks();
    }

    // How wide each character is, in twips: the font has a fixed pitch.
    virtual float CharacterWidth() const = 0;

    // Where the tab stops are, in twips from the left edge of the text, ascending.
    virtual void SetTabStops(const std::vector<float>& stops) = 0;

    bool CanHaveFocus() const override { return mFuncBodyAvailable; }
    void GainFocus() override { Raise(onGotFocus); }
    void LoseFocus() override { Raise(onLostFocus); }

protected:
    // Sets it as soon as the text is there or gone, if something is painted before this returns.
    virtual void ShowAvailable(bool available) = 0;

    // Of the text: SpanOf is asked for lines that are there, from 1.
    virtual std::size_t LineCount() const = 0;
    virtual LineSpan SpanOf(std::size_t line) const = 0;

    // Other lines are marked now.
    virtual void ShowMarks() = 0;

    // The user has edited the text, or it is a new one. To be called before onChange is raised.
    void FollowEdit(const TextEdit& edit) {
        if (mMarks.Follow(edit, [this](std::size_t line) { return SpanOf(line); })) {
            ShowMarks();
        }
    }
    void ForgetMarks() { SetLineMarks({}); }

    const LineMarks& Marks() const { return mMarks; }

    bool mFuncBodyAvailable = true;

private:
    LineMarks mMarks;
};

} // namespace tessaly
