// From a message to its line: a click on the tree item, done by the program, and then the caret. And from a line back:
// marks in the pane and the tree, which also shows what is edited.
#include "diagnostics/NearestLines.h"
#include "document/Members.h"
#include "editing/Names.h"
#include "platform/text/Ascii.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"
#include "ui/Command.h"
#include "ui/VornMainFrm.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>
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

Mark MarkOf(const Diagnostic& message) {
    switch (message.kind) {
    case DiagnosticKind::Error:
        return Mark::Error;
    case DiagnosticKind::Warning:
        return Mark::Warning;
    default:
        return Mark::None;
    }
}

// Where messages lead in a text as it is now. Positions are those of the pane: each line break counts as one.
class PlacesNow {
public:
    // Both texts must outlive it.
    PlacesNow(std::string_view before, std::string_view now) : mNearest(before, now), mLines(SplitEditorLines(now)) {
        std::size_t begin = 0;
        for (const std::string_view line : mLines) {
            mBegins.push_back(begin);
            begin += UnitsOf(line) + 1;
        }
    }

    std::size_t Caret(const Diagnostic& message) const {
        const TextPosition place = Find(message);
        return mBegins[place.line - 1] + place.column;
    }

    // From there to the end of the line; all of it where nothing stands behind the place. Blanks around are left out.
    LineMark Marked(const Diagnostic& message) const {
        const TextPosition place = Find(message);
        const std::string_view line = mLines[place.line - 1];
        const std::size_t front = UnitsOf(line) - UnitsOf(TrimFront(line));
        const std::size_t end = UnitsOf(TrimBack(line));
        const std::size_t begin = place.column < end ? std::max(place.column, front) : front;
        const std::size_t start = mBegins[place.line - 1];
        return {place.line, MarkOf(message), start + std::min(begin, end), start + end};
    }

private:
    // The column from 0, and both such that they are there.
    TextPosition Find(const Diagnostic& message) const {
        TextPosition place = mNearest.Find({message.line, message.column});
        place.line = std::clamp<std::size_t>(place.line, 1, mLines.size());
        place.column = std::min(std::max<std::size_t>(place.column, 1) - 1, UnitsOf(mLines[place.line - 1]));
        return place;
    }

    NearestLines mNearest;
    std::vector<std::string_view> mLines;
    std::vector<std::size_t> mBegins;
};

} // namespace

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

// A click on its item, done by the program. False where there is no text to go to.
bool VornMainFrm::ShowMember(const std::string& member) {
    const TreeItem item = ItemOf(member);
    mCodeTree.Select(item);
    CodeTree_NodeClick(item);
    if (!mFuncBody.FuncBodyAvailable()) {
        mCodeTree.SetFocus();
    }
    return mFuncBody.FuncBodyAvailable();
}

// Where the pane has had the keyboard all the time, nobody tells that typing counts again.
void VornMainFrm::EnterPane() {
    mFuncBody.SetFocus();
    FuncBodyChangeMode = 2;
}

void VornMainFrm::GoTo(const Diagnostic& message) {
    if (!ShowMember(message.member)) {
        return;
    }
    const std::optional<CCodeOrigin> origin = FindMember(*mSourceDoc, message.member);
    if (origin) {
        const PlacesNow places(mMessages.TextOf(message.member), MemberText(*mSourceDoc, *origin));
        mFuncBody.MoveCaret(places.Caret(message));
    }
    EnterPane();
}

// The function or the event whose name it is; one that is shown already, or has no item, leads nowhere.
void VornMainFrm::GoToNamed() {
    if (!mFuncBody.FuncBodyAvailable()) {
        return;
    }
    const Selection selected = mFuncBody.Selected();
    const std::u16string line = mFuncBody.Line(selected.caret.line);
    const Word word = WordBeside(line, selected.caret.column);
    const std::string name = ToUtf8(std::u16string_view(line).substr(word.begin, word.Length()));
    for (const std::string_view prefix : {FunctionPrefix, EventPrefix}) {
        const std::string member = std::string(prefix) + name;
        if (member != mShownMember && FindMember(*mSourceDoc, member) &&
            mCodeTree.Parent(ItemOf(member)) != TreeItem::None) {
            mCameFrom.push_back({mShownMember, selected});
            if (ShowMember(member)) {
                EnterPane();
            }
            return;
        }
    }
}

// One that is gone is left out.
void VornMainFrm::GoBack() {
    while (!mCameFrom.empty()) {
        const WayBack back = std::move(mCameFrom.back());
        mCameFrom.pop_back();
        if (FindMember(*mSourceDoc, back.member)) {
            if (ShowMember(back.member)) {
                mFuncBody.Select(back.selected);
                EnterPane();
            }
            return;
        }
    }
}

std::size_t VornMainFrm::ListEverywhere(const std::string& wanted, FindOptions options) {
    ShownMember shown;
    if (mFuncBody.FuncBodyAvailable()) {
        shown = {mShownMember, mFuncBody.Text()};
    }
    FoundPlaces found = FindEverywhere(*mSourceDoc, shown, wanted, options, BuildMessages::MostRows);
    const std::size_t count = found.count;
    mMessages.ShowFound(std::move(found));
    return count;
}

std::string VornMainFrm::WordOf(Mark mark) const {
    return std::string(OwnWords(mark == Mark::Error ? OwnText::ErrorMessage : OwnText::WarningMessage, mLanguage));
}

// What stands in the pane may have been edited since the build.
void VornMainFrm::ShowLineMarks(std::string_view text) {
    const PlacesNow places(mMessages.map.Text(mShownMember), text);
    std::vector<LineMark> marks;
    for (const Diagnostic& message : mMessages.All()) {
        if (message.member == mShownMember && MarkOf(message) != Mark::None) {
            marks.push_back(places.Marked(message));
            marks.back().text = WordOf(marks.back().mark) + ": " + message.text;
        }
    }
    mFuncBody.SetLineMarks(marks);
}

void VornMainFrm::NoteEdited(TreeItem item) {
    if (item != TreeItem::None && mEditedItems.insert(item).second) {
        ShowEdited(true);
    }
}

// Each step by itself: a mark that cannot be shown is no reason to leave the others out.
void VornMainFrm::ShowMarks() {
    if (!mShownMember.empty()) {
        Attempt([this] { ShowLineMarks(PaneText()); });
    }
    for (const std::string& member : std::exchange(mMarkedMembers, {})) {
        Attempt([&] { mCodeTree.SetMark(ItemOf(member), Mark::None, ""); });
    }
    std::map<std::string, Mark> marks;
    for (const Diagnostic& message : mMessages.All()) {
        if (FindMember(*mSourceDoc, message.member)) {
            Mark& mark = marks[message.member];
            mark = std::max(mark, MarkOf(message));
        }
    }
    for (const auto& marked : marks) {
        if (marked.second != Mark::None) {
            mMarkedMembers.push_back(marked.first);
            Attempt([&] { mCodeTree.SetMark(ItemOf(marked.first), marked.second, WordOf(marked.second)); });
        }
    }
}

} // namespace tessaly
