// Keeps the line breaks of a text while a control that knows only one kind of break shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

enum class LineBreak : std::uint8_t { CrLf, Lf, Cr };

// The line breaks alone, for a control that keeps the text itself and tells which breaks a change touched.
class BreakList {
public:
    // Takes the breaks of a new text, which may be any: CR LF, a lone LF, a lone CR. Returns the text for the control,
    // every break a single LF.
    std::string Set(std::string_view text);

    // Tells of an edit: in place of `removed` breaks from number `first`, counted from 0, stand the `added` ones. What
    // reaches beyond the last break is left out. Returns those that are gone.
    std::vector<LineBreak> Replace(std::size_t first, std::size_t removed, const std::vector<LineBreak>& added);

    // The breaks with these numbers, which are there.
    std::vector<LineBreak> Some(std::size_t first, std::size_t count) const;

    // What the control shows, with its breaks.
    std::string Apply(std::string_view shown) const;

private:
    std::vector<LineBreak> mBreaks; // one for each LF that is shown
};

} // namespace tessaly
