// The editing pane in memory, and what a user can do with it. Positions are bytes of the text that is shown, in which
// every line break is one LF.
#pragma once

#include "platform/desktop/RichTextBox.h"
#include "tests/desktop/Control.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::memory {

class RichTextBox final : public Control<tessaly::RichTextBox>, public KeyTarget {
public:
    using Control::Control;

    void SetText(std::string_view text) override;
    float CharacterWidth() const override;
    void SetTabStops(const std::vector<float>& stops) override;
    std::size_t Count() const override;
    std::u16string Line(std::size_t index) const override;
    CLineState StateBefore(std::size_t index) const override;
    using tessaly::RichTextBox::Do;
    void Do(Clip step) override;

    // The user clicks into the pane, which moves the focus there and the caret nowhere. False, and nothing happens,
    // when it is unavailable.
    bool Click();

    // The user clicks with Ctrl held, or with the right button, at the byte at `position`. As Click and SetCaret.
    bool CtrlClick(std::size_t position);
    bool RightClick(std::size_t position);

    // The user turns the wheel with Ctrl held, by parts of a step if it is not a whole number of 120s.
    void CtrlWheel(int delta) { TellCtrlWheel(delta); }

    // Where the byte at `position` is, in twips from the left edge, as it is zoomed and scrolled.
    float LeftOf(std::size_t position) const;

    // The user works at the keyboard, at the caret or in place of what is selected. False, and nothing happens, when
    // the pane has not the focus or is unavailable. Each character raises onChange; a line break is a press of Enter.
    bool Type(std::string_view text);
    bool PressEnter();
    bool Backspace(); // also false when there is nothing before the caret
    bool Paste(std::string_view text);

    // Puts the caret before the byte at `position`; nothing is selected then. Throws ImpossibleAction for a position
    // behind the end or within a character.
    void SetCaret(std::size_t position);

    std::size_t Caret() const { return mCaret; }
    const std::string& Shown() const { return mShown; }
    const std::vector<float>& TabStops() const { return mTabStops; }

    // What the user sees in the margin: for each line its number and the mark, if there is one.
    std::vector<std::string> MarginShown() const;

    // What is behind the character at this byte, as 0xRRGGBB; another one for all that is set apart.
    std::uint32_t ColourBehind(std::size_t position) const;

    // What a screen reader is told of it beside its text.
    const std::string& Said() const { return mSaid; }

    // What is underlined, from the top.
    std::vector<std::string> Underlined() const;

    bool TakeKey(int keyCode, int shift) override;

private:
    void ShowAvailable(bool /*available*/) override { CountCall(); }
    std::string ShownText() const override;
    LineSpan SpanOf(std::size_t line) const override;
    std::size_t LineAt(std::size_t position) const override;
    Ends SelectedEnds() const override;
    void SelectEnds(const Ends& ends) override;
    PaneScroll Scrolled() const override { return mScroll; }
    void ScrollTo(const PaneScroll& scroll) override { mScroll = scroll; }
    void ShowReplaced(std::size_t start, std::size_t end, std::u16string_view text) override;
    void ShowTogether(const std::function<void()>& work) override { work(); }
    void ShowSpots(std::optional<std::size_t> /*line*/) override {}
    void ShowZoom() override { CountCall(); }
    void ShowDescription(const std::string& description) override { mSaid = description; }
    std::string_view LineBytes(std::size_t index) const;
    std::size_t PlaceOf(std::size_t position) const;
    bool TakesInput() const;
    bool Insert(std::string_view text);
    bool TakeBack();
    void Replace(std::size_t start, std::size_t end, std::string_view text);
    void ReplaceSelection(std::string_view text);

    std::string mShown;
    std::size_t mCaret = 0;
    std::size_t mAnchor = 0; // the other end of what is selected
    PaneScroll mScroll;      // there is no screen: nothing else scrolls
    std::string mSaid;
    std::vector<float> mTabStops;
};

} // namespace tessaly::memory
