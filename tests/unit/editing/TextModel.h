// A text with a selection, on which edits are done as a pane does them. Written in tests as one string: ▯ stands where
// the selection began, if there is one, and ▮ where the caret is.
#pragma once

#include "editing/Text.h"
#include "platform/text/Utf16.h"

#include <string>
#include <string_view>

namespace tessaly {

class TextModel final : public TextLines {
public:
    explicit TextModel(std::string_view written);

    std::size_t Count() const override { return mLines.size(); }
    std::u16string Line(std::size_t index) const override { return mLines.at(index); }
    CLineState StateBefore(std::size_t index) const override;

    const Selection& Selected() const { return mSelection; }

    void Do(const Edit& edit);
    void Select(const Selection& selection) { mSelection = selection; }

    // What a key does that has no rule of its own: puts `text` in the place of the selection.
    void Type(std::u16string_view text);
    void TakeBack();

    std::string Written() const;

    // Without the marks.
    std::string Text() const;

private:
    std::size_t Position(Place place) const;
    void SetText(std::u16string_view text);
    std::u16string Whole() const;

    std::vector<std::u16string> mLines;
    Selection mSelection;
};

} // namespace tessaly
