// The observer keeps the little that is needed to tell, when the next line counts again, what was lost before.
#include "programs/psf/PsfWarnings.h"

#include "document/CCodeGenerator.h"
#include "document/PsfKeys.h"

#include <algorithm>

namespace tessaly::psf {

namespace {

using Kind = PsfNotice::Kind;

constexpr std::size_t MostWarnings = 10000;
constexpr std::size_t LongestName = 200;
constexpr std::string_view Blank = " \t\r\n";

std::string EventMember(std::int32_t index) {
    return "events/" + std::string(EventTable.at(static_cast<std::size_t>(index)).name);
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(Blank) == std::string_view::npos;
}

// `text`, cut short when it is endless.
std::string Shown(std::string_view text) {
    const std::string shown(text.substr(0, LongestName));
    return text.size() > LongestName ? shown + "..." : shown;
}

std::string Quoted(std::string_view text) {
    return "\"" + Shown(text) + "\"";
}

// A prototype as far as it matters to C: single blanks, no ";".
std::string Essence(std::string_view prototype) {
    std::string essence;
    for (const char c : prototype) {
        if (Blank.find(c) != std::string_view::npos) {
            essence += essence.empty() || essence.back() == ' ' ? "" : " ";
        } else if (c != ';') {
            essence += c;
        }
    }
    while (essence.ends_with(' ')) {
        essence.pop_back();
    }
    return essence;
}

} // namespace

void PsfWarnings::Notice(const PsfNotice& notice) {
    switch (notice.kind) {
    case Kind::TagFound:
        mTags.emplace_back(notice.text);
        mStretches.push_back({notice.offset, notice.text == GVarsTag    ? "references"
                                             : notice.text == GFuncsTag ? "functions"
                                                                        : ""});
        NoticeTag(notice);
        break;
    case Kind::CountLine:
        TakeIgnored("\"NumFuncs=\"", "functions");
        mCount = notice.index;
        mCountLine = notice.offset;
        mNames.clear();
        break;
    case Kind::BadCount:
        Warn(notice.offset, "functions",
             "NumFuncs= is not a 32-bit number: " + Quoted(notice.text) + "; the load ends here");
        mCountIsBad = true;
        break;
    case Kind::NamesLine:
        NoticeNames(notice);
        break;
    case Kind::Ignored:
        if (!mIgnored && !IsBlank(notice.text)) {
            mIgnored = notice.offset;
        }
        break;
    case Kind::EventFound:
    case Kind::EventBegins:
    case Kind::EventStored:
        NoticeEvent(notice);
        break;
    default:
        NoticeFunction(notice);
        break;
    }
}

void PsfWarnings::NoticeTag(const PsfNotice& notice) {
    if (notice.text == GFuncsTag) {
        mTerminator = notice.offset;
        mTerminatorText = notice.text;
        mTerminated = "references";
    } else if (notice.text == FuncCodeTag) {
        TakeIgnored(Quoted(notice.text), "functions");
    } else if (notice.text == EventCodeTag && mCount <= 0) {
        TakeIgnored("\"[EventCode]\", since no function is announced,", "functions");
    }
}

void PsfWarnings::NoticeNames(const PsfNotice& notice) {
    mNamesLine = notice.offset;
    mNamesText = notice.text;
    mNames.clear();
    const std::string_view text = mNamesText;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        mNames.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    if (notice.index > 0 && mNames.size() < static_cast<std::size_t>(notice.index)) {
        Warn(notice.offset, "functions/" + Shown(mNames.back()),
             "NumFuncs= announces " + std::to_string(notice.index) + " functions and FuncNames= lists " +
                 std::to_string(mNames.size()) + "; the others all get this name");
    }
}

void PsfWarnings::NoticeFunction(const PsfNotice& notice) {
    const std::string member = FunctionMember(notice.index);
    switch (notice.kind) {
    case Kind::HeaderFound:
        if (notice.index == 0) {
            TakeIgnored(Quoted(notice.text), member);
        }
        mLastHeader = notice.index;
        mSection = {notice.index, notice.offset, notice.offset, notice.offset, false};
        mStretches.push_back({notice.offset, member});
        break;
    case Kind::PrototypeBegins:
        TakeIgnored("\"ProtoType=\"", member);
        mSection.prototype = notice.offset;
        break;
    case Kind::BodyBegins:
        mSection.body = notice.offset;
        break;
    case Kind::FunctionRead:
        if (mLastHeader != notice.index) { // it goes on in the text of the one before
            mSection = {notice.index, notice.offset, notice.offset, notice.offset, false};
        }
        mRead.push_back(mSection);
        FunctionEnded(notice);
        break;
    case Kind::FunctionDropped: {
        const auto section =
            std::lower_bound(mRead.begin(), mRead.end(), notice.index,
                             [](const Section& each, std::int32_t index) { return each.index < index; });
        section->dropped = true;
        break;
    }
    case Kind::FunctionLost:
        FunctionLost(notice);
        break;
    default:
        break;
    }
}

void PsfWarnings::FunctionEnded(const PsfNotice& notice) {
    mTerminator = notice.offset;
    mTerminatorText = notice.text;
    mTerminated = FunctionMember(notice.index);
    if (notice.text == EventCodeTag && notice.index < mCount - 1 && !mSectionsMissing) {
        mSectionsMissing = true;
        Warn(notice.offset, FunctionMember(notice.index + 1),
             "NumFuncs= announces " + std::to_string(mCount) + " functions, but only " +
                 std::to_string(notice.index + 1) +
                 " sections stand before \"[EventCode]\"; this function takes the events as its text");
    }
}

void PsfWarnings::FunctionLost(const PsfNotice& notice) {
    const std::string member = FunctionMember(notice.index);
    if (mLastHeader == notice.index) {
        mIgnoredIsTold = true;
        Warn(notice.text.empty() ? mSection.header : notice.offset, member,
             notice.text.empty() ? "lost, because the file ends before its text does"
                                 : "lost, because the line \"[EndPSF]\" ends its text early");
    } else if (!mSectionsMissing && !mCountIsBad) {
        mSectionsMissing = true;
        Warn(mCountLine, member,
             "NumFuncs= announces " + std::to_string(mCount) + " functions, but the section " + "\"[" +
                 Shown(NameOf(notice.index)) + "]\"" + " was not found where it belongs");
    }
}

void PsfWarnings::NoticeEvent(const PsfNotice& notice) {
    const auto index = static_cast<std::size_t>(notice.index);
    switch (notice.kind) {
    case Kind::EventFound:
        mEventFound = true;
        if (notice.index == 0) {
            TakeIgnored(Quoted(notice.text), EventMember(0));
        }
        if (notice.index < EventCount) { // behind OnMsg its own tag is found once more
            mStretches.push_back({notice.offset, EventMember(notice.index)});
        }
        break;
    case Kind::EventBegins:
        TakeIgnored("\"FuncBody=\"", EventMember(notice.index));
        mEventLine[index] = notice.offset;
        break;
    default:
        mStored[index] = true;
        mTerminator = notice.offset;
        mTerminatorText = notice.text;
        mTerminated = EventMember(notice.index);
        if (notice.text == EndPsfTag && !mEnd) {
            mEnd = notice.offset;
            mEndEvent = notice.index;
            mStretches.push_back({notice.offset, ""});
        }
        break;
    }
}

// The lines that were ignored up to a line that counts again. When a tag line had ended a text just before them,
// they are the rest of that text.
void PsfWarnings::TakeIgnored(const std::string& beforeWhat, const std::string& member) {
    if (mIgnoredIsTold) {
        mIgnoredIsTold = false;
    } else if (mIgnored && !mTerminated.empty()) {
        Warn(mTerminator, mTerminated,
             "the line " + Quoted(mTerminatorText) + " ends its text early; what follows up to " + beforeWhat +
                 " is lost");
    } else if (mIgnored) {
        Warn(*mIgnored, member, "the text before " + beforeWhat + " is ignored");
    }
    mIgnored.reset();
    mTerminated.clear();
}

std::vector<PsfWarning> PsfWarnings::Finish(const std::string& bytes, const CodePage& codePage) {
    const std::size_t lastBreak = bytes.find_last_of("\r\n", bytes.find_last_not_of("\r\n"));
    const std::uint64_t lastLine = lastBreak == std::string::npos ? 0 : lastBreak + 1;
    if (!mCountIsBad) {
        CheckMissingTags(lastLine);
        CheckEvents(lastLine);
    }
    CheckDropped();
    CheckFunctions();
    CheckNames(bytes, codePage);
    CheckEnd(bytes);
    CheckCharacters(bytes, codePage);
    std::stable_sort(mWarnings.begin(), mWarnings.end(),
                     [](const PsfWarning& a, const PsfWarning& b) { return a.offset < b.offset; });
    return std::move(mWarnings);
}

void PsfWarnings::CheckMissingTags(std::uint64_t lastLine) {
    const std::pair<std::string_view, const char*> expected[] = {
        {GVarsTag, "references"}, {GFuncsTag, "functions"}, {FuncCodeTag, "functions"}, {EventCodeTag, "events"}};
    for (const auto& [tag, member] : expected) {
        // Behind a function that "[EndPSF]" ended the events are looked for without "[EventCode]".
        if (!mEventFound && std::find(mTags.begin(), mTags.end(), tag) == mTags.end()) {
            Warn(lastLine, member, "there is no line " + Quoted(tag) + " where it belongs");
            return; // the rest of the file was searched for it
        }
    }
}

void PsfWarnings::CheckEvents(std::uint64_t lastLine) {
    for (std::int32_t i = 0; i < EventCount; ++i) {
        const auto index = static_cast<std::size_t>(i);
        if (!mStored[index]) {
            Warn(mEventLine[index] != 0 ? mEventLine[index] : lastLine, EventMember(i),
                 mEventLine[index] != 0 ? "lost, because its text is not ended by the next tag or \"[EndPSF]\""
                                        : "never stored; it keeps its default text");
        }
    }
    if (!mEnd && mStored.back()) {
        Warn(lastLine, EventMember(OnMsgIndex), "its text is not followed by \"[EndPSF]\"");
    }
}

void PsfWarnings::CheckDropped() {
    for (const Section& section : mRead) {
        if (section.dropped) {
            Warn(section.header, FunctionMember(section.index),
                 "dropped, because its name collides with \"" + CollisionOf(NameOf(section.index)) + "\"");
        }
    }
}

void PsfWarnings::CheckFunctions() {
    std::int32_t index = 0;
    for (const Section& section : mRead) {
        if (!section.dropped) {
            CheckFunction(section, index++);
        }
    }
}

void PsfWarnings::CheckFunction(const Section& section, std::int32_t index) {
    const FuncObject& functions = mDocument.Functions();
    const std::string member = "functions/" + Shown(functions.NameAt(index));
    std::string_view generated;
    if (!CutPrototype(functions.CodeAt(index), generated)) {
        Warn(section.body, member, "its code begins with \"{\", so no C file can be generated");
        return;
    }
    if (functions.CodeAt(index).find('{') == std::string_view::npos) {
        Warn(section.body, member, "its code holds no \"{\", so all of it becomes the prototype");
    }
    const std::string stored = Essence(functions.PrototypeAt(index));
    if (!stored.empty() && stored != Essence(generated)) {
        Warn(section.prototype, member,
             "the stored prototype " + Quoted(stored) + " is not used; generation takes " + Quoted(Essence(generated)) +
                 " from the code");
    }
}

// More names than announced come of a comma in a name; the section header still shows the name that it was.
void PsfWarnings::CheckNames(const std::string& bytes, const CodePage& codePage) {
    if (mCount <= 0 || mNames.size() <= static_cast<std::size_t>(mCount)) {
        return;
    }
    const std::string list = "," + mNamesText + ",";
    std::size_t found = 0;
    int candidates = 1000; // a file with more headers of this kind is no accident any more
    for (std::size_t start = 0; start < bytes.size() && candidates > 0;) {
        const std::size_t end = std::min(bytes.find('\r', start), bytes.size());
        const std::string_view line(bytes.data() + start, end - start);
        if (line.starts_with('[') && line.ends_with(']') && line.find(',') != std::string_view::npos) {
            std::string name;
            codePage.AppendDecoded(line.substr(1, line.size() - 2), name);
            if (list.find("," + name + ",") != std::string::npos) {
                Warn(mNamesLine, "functions/" + Shown(name),
                     "the name is split at its comma, so the function is not found");
                ++found;
            }
            --candidates;
        }
        start = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    if (found == 0) {
        Warn(mNamesLine, "functions/" + Shown(mNames[static_cast<std::size_t>(mCount)]),
             "FuncNames= lists " + std::to_string(mNames.size()) + " names and NumFuncs= announces " +
                 std::to_string(mCount) + "; a name was split at a comma, or the last ones are left out");
    }
}

void PsfWarnings::CheckEnd(const std::string& bytes) {
    if (!mEnd) {
        return;
    }
    const std::size_t rest = bytes.find_first_not_of(" \t\r\n", static_cast<std::size_t>(*mEnd) + EndPsfTag.size());
    if (rest == std::string::npos) {
        return;
    }
    if (mEndEvent < EventCount - 1) {
        Warn(*mEnd, EventMember(mEndEvent), "the line \"[EndPSF]\" ends its text early");
    }
    Warn(rest, EventMember(mEndEvent), "there is text after \"[EndPSF]\"");
}

void PsfWarnings::CheckCharacters(const std::string& bytes, const CodePage& codePage) {
    auto stretch = mStretches.begin();
    const std::string* member = nullptr;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\r', start), bytes.size());
        for (; stretch != mStretches.end() && stretch->offset <= start; ++stretch) {
            member = &stretch->member;
        }
        const std::size_t place = codePage.FindUnassigned(std::string_view(bytes).substr(start, end - start));
        if (place != std::string_view::npos && member != nullptr && !member->empty()) {
            char code[8];
            std::snprintf(code, sizeof code, "%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(bytes[start + place])));
            Warn(start + place, *member, "the byte " + std::string(code) + " is no character of the code page");
        }
        start = end + 1;
    }
}

// The name of the function announced as number `index`.
std::string_view PsfWarnings::NameOf(std::int32_t index) const {
    const auto place = static_cast<std::size_t>(index);
    return mNames.empty() ? std::string_view() : place < mNames.size() ? mNames[place] : mNames.back();
}

std::string PsfWarnings::FunctionMember(std::int32_t index) const {
    return "functions/" + Shown(NameOf(index));
}

// The name that `name` collides with. Remembered, because a name that collided once always does with the same;
// and the last one is known by its place, because a short list repeats it without end.
std::string PsfWarnings::CollisionOf(std::string_view name) {
    if (mCollisions.empty() || name.data() != mLastCollision.data()) {
        mLastCollision = name;
        if (!mCollisions.contains(name)) {
            mCollisions[name] = Shown(mDocument.Functions().FindCollision(name).value_or(""));
        }
        mShownCollision = mCollisions[name];
    }
    return mShownCollision;
}

void PsfWarnings::Warn(std::uint64_t offset, const std::string& member, const std::string& text) {
    if (mWarnings.size() + 1 < MostWarnings) {
        mWarnings.push_back({offset, member + ": " + text});
    } else if (mWarnings.size() + 1 == MostWarnings) {
        mWarnings.push_back({offset, member + ": there are more warnings than are shown"});
    }
}

} // namespace tessaly::psf
