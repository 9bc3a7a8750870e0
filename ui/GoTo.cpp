// From a message to its line: a click on the tree item, done by the program, and then the caret.
#include "diagnostics/NearestLines.h"
#include "document/Members.h"
#include "platform/text/Utf8.h"
#include "ui/Command.h"
#include "ui/VornMainFrm.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace tessaly {

namespace {

// Of UTF-16: one for each character, and two from four bytes on.
std::size_t UnitsOf(std::string_view text) {
    constexpr unsigned char fourBytes = 0xF0;
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !IsContinuation(byte); }) +
        std::count_if(text.begin(), text.end(),
                      [](char byte) { return static_cast<unsigned char>(byte) >= fourBytes; }));
}

} // namespace

// Ctrl+J, and with Shift the way back.
void VornMainFrm::StepOnKey(int keyCode, int shift) {
    if (IsStepKey(keyCode, shift)) {
        RunCommand([this, shift] { mMessages.Step((shift & 1) != 0); });
    }
}

// Where there is no such item any more, or none was ever shown, that of its group.
TreeItem VornMainFrm::ItemOf(const std::string& member) const {
    const std::optional<CCodeOrigin> origin = FindMember(*mSourceDoc, member);
    std::string key(ReferencesKey);
    std::string_view group = ReferencesKey;
    if (member.starts_with(FunctionPrefix)) {
        group = FunctionsKey;
        key = member.substr(FunctionPrefix.size());
    } else if (member.starts_with(EventPrefix)) {
        group = EventsKey;
        key = std::string(EventsKey) + std::to_string(origin ? origin->index + 1 : 0);
    }
    try {
        return mCodeTree.Find(origin ? key : group);
    } catch (const std::out_of_range&) {
        return mCodeTree.Find(group);
    }
}

std::string VornMainFrm::NameOf(const std::string& member) const {
    const TreeItem item = ItemOf(member);
    const bool isGroup = mCodeTree.Parent(item) == TreeItem::None && member != ReferencesName;
    return isGroup ? member.substr(member.find('/') + 1) : mCodeTree.Text(item);
}

void VornMainFrm::GoTo(const Diagnostic& message) {
    const TreeItem item = ItemOf(message.member);
    mCodeTree.Select(item);
    CodeTree_NodeClick(item);
    if (!mFuncBody.FuncBodyAvailable()) {
        mCodeTree.SetFocus();
        return;
    }
    const std::optional<CCodeOrigin> origin = FindMember(*mSourceDoc, message.member);
    if (origin) {
        mFuncBody.MoveCaret(CaretOf(message, MemberText(*mSourceDoc, *origin)));
    }
    mFuncBody.SetFocus();
}

// In `text`, which may have been edited since the build. Each line break counts as one.
std::size_t VornMainFrm::CaretOf(const Diagnostic& message, std::string_view text) const {
    const TextPosition place =
        NearestLines(mMessages.map.Text(message.member), text).Find({message.line, message.column});
    const std::vector<std::string_view> lines = SplitEditorLines(text);
    const std::size_t line = std::min(std::max<std::size_t>(place.line, 1), lines.size()) - 1;
    std::size_t position = line;
    for (std::size_t above = 0; above < line; ++above) {
        position += UnitsOf(lines[above]);
    }
    return position + std::min(std::max<std::size_t>(place.column, 1) - 1, UnitsOf(lines[line]));
}

} // namespace tessaly
