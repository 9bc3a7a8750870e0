// One row for each key. A command that has nothing to do leaves its key to the pane.
#include "ui/Editing.h"

#include "editing/Indenting.h"
#include "editing/LineCommands.h"
#include "platform/desktop/Window.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <iterator>

namespace tessaly {

namespace {

constexpr std::size_t TabWidth = 4; // in characters, as the window begins

using Rule = std::optional<Edit> (*)(const TextLines& lines, const Selection& selection);

struct KeyRule {
    PaneKey key;
    Rule rule;
};

std::optional<Edit> Enter(const TextLines& lines, const Selection& selection) {
    return PressEnter(lines, selection);
}

std::optional<Edit> Backspace(const TextLines& lines, const Selection& selection) {
    return PressBackspace(lines, selection, TabWidth);
}

template <Shift shift>
std::optional<Edit> Indent(const TextLines& lines, const Selection& selection) {
    return ShiftLines(lines, selection, shift, TabWidth);
}

template <Direction direction>
std::optional<Edit> Move(const TextLines& lines, const Selection& selection) {
    return MoveLines(lines, selection, direction);
}

std::optional<Edit> Duplicate(const TextLines& lines, const Selection& selection) {
    return DuplicateLines(lines, selection);
}

std::optional<Edit> Delete(const TextLines& lines, const Selection& selection) {
    return DeleteLines(lines, selection);
}

// The slash needs Shift on some keyboards, and has another place among the digits.
constexpr KeyRule KeyRules[] = {
    {{KeyEnter, 0, 0}, Enter},
    {{KeyEnter, 1, 0}, Enter},
    {{0, 0, u'}'}, PressCloseBrace},
    {{KeyBackspace, 0, 0}, Backspace},
    {{KeyTab, 0, 0}, Indent<Shift::In>},
    {{KeyTab, 1, 0}, Indent<Shift::Out>},
    {{KeySlash, 2, 0}, ToggleComment},
    {{KeySlash, 3, 0}, ToggleComment},
    {{KeyDivide, 2, 0}, ToggleComment},
    {{KeyUp, 4, 0}, Move<Direction::Up>},
    {{KeyDown, 4, 0}, Move<Direction::Down>},
    {{'D', 3, 0}, Duplicate},
    {{'K', 3, 0}, Delete},
};

} // namespace

std::optional<Edit> EditOf(const PaneKey& key, const TextLines& lines, const Selection& selection) {
    const auto found =
        std::find_if(std::begin(KeyRules), std::end(KeyRules), [&key](const KeyRule& each) { return each.key == key; });
    return found != std::end(KeyRules) ? found->rule(lines, selection) : std::nullopt;
}

bool Keeps(const CodePage& codePage, char32_t character) {
    std::string text;
    std::string bytes;
    std::string back;
    if (character < FirstOfTwoUnits && (IsHighSurrogate(character) || IsLowSurrogate(character))) {
        return false;
    }
    AppendUtf8(character, text);
    codePage.AppendEncoded(text, bytes);
    codePage.AppendDecoded(bytes, back);
    return back == text;
}

} // namespace tessaly
