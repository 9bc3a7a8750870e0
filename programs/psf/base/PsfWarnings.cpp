// The tags, the events and the end of the file; what functions have to tell stands apart.
#include "programs/psf/base/PsfWarnings.h"

#include "diagnostics/Lint.h"
#include "document/Members.h"
#include "document/PsfKeys.h"

#include <algorithm>

namespace tessaly::psf {

namespace {

struct TagEntry {
    std::string_view tag;
    const char* member; // that is lost without it
};

constexpr TagEntry Tags[] = {
    {GVarsTag, "references"}, {GFuncsTag, "functions"}, {FuncCodeTag, "functions"}, {EventCodeTag, "events"}};

// Where the line begins that stands `count` lines behind the one at `offset`.
std::size_t SkipLines(const std::string& bytes, std::size_t offset, std::size_t count) {
    for (; count > 0 && offset < bytes.size(); --count) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n", offset), bytes.size() - 1);
        offset = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    return offset;
}

std::string EventMember(std::int32_t index) {
    return "events/" + std::string(EventTable.at(static_cast<std::size_t>(index)).name);
}

} // namespace

void PsfWarnings::Tag(PsfLine line) {
    mTagsFound = std::min(mTagsFound + 1, std::size(Tags)); // the last one may come again
    mFindings.BeginMember(line.offset, line.text == GVarsTag    ? "references"
                                       : line.text == GFuncsTag ? "functions"
                                                                : "");
    if (line.text == GVarsTag) {
        mReferences = line.offset;
    } else if (line.text == GFuncsTag) {
        mFindings.TextEnded(line, "references");
    } else if (line.text == FuncCodeTag) {
        mFindings.TellIgnored(Quoted(line.text), "functions");
    } else if (line.text == EventCodeTag && !mFunctions.AreAnnounced()) {
        mFindings.TellIgnored("\"[EventCode]\", since no function is announced,", "functions");
    }
}

void PsfWarnings::Event(PsfStep step, std::int32_t index, PsfLine line) {
    switch (step) {
    case PsfStep::Header:
        mAnyEvent = true;
        if (index == 0) {
            mFindings.TellIgnored(Quoted(line.text), EventMember(index));
        }
        if (index < EventCount) { // behind OnMsg its own tag is found once more
            mFindings.BeginMember(line.offset, EventMember(index));
        }
        break;
    case PsfStep::Text:
        mFindings.TellIgnored("\"FuncBody=\"", EventMember(index));
        mEvents[static_cast<std::size_t>(index)].begin = line.offset;
        break;
    default:
        EventEnded(index, line);
        break;
    }
}

// Without Lint all that is asked about a text is its prototype. With whole texts a check takes twice the memory.
std::size_t PsfWarnings::KeptSize(std::string_view text) {
    return mLint ? text.size() : std::min(text.find('{'), text.size() - 1) + 1;
}

void PsfWarnings::EventEnded(std::int32_t index, PsfLine line) {
    mEvents[static_cast<std::size_t>(index)].isStored = true;
    mFindings.TextEnded(line, EventMember(index));
    if (line.text == EndPsfTag && !mEnd) {
        mEnd = line.offset;
        mEndEvent = index;
        mFindings.BeginMember(line.offset, "");
    }
}

std::vector<PsfWarning> PsfWarnings::Finish(const VornSrcObj& document, const std::string& bytes,
                                            const CodePage& codePage) {
    const std::size_t lastBreak = bytes.find_last_of("\r\n", bytes.find_last_not_of("\r\n"));
    const std::uint64_t lastLine = lastBreak == std::string::npos ? 0 : lastBreak + 1;
    if (mReferences) {
        CheckHeader(std::string_view(bytes).substr(0, static_cast<std::size_t>(*mReferences)));
    }
    // What follows from a mistake further up is none of its own.
    if (!mFunctions.EventsAreLost() && !TagIsMissing(lastLine)) {
        CheckEvents(lastLine);
    }
    mFunctions.Finish(document.Functions(), bytes, codePage);
    CheckEnd(bytes);
    mFindings.CheckCharacters(bytes, codePage);
    if (mLint) {
        mFindings.CheckUtf8(bytes, codePage);
        CheckTexts(document, bytes);
    }
    return mFindings.Take();
}

// Of what stands in front of "[GVars]" a save keeps nothing; it writes the three usual lines.
void PsfWarnings::CheckHeader(std::string_view header) {
    for (std::size_t start = 0; start < header.size();) {
        const std::size_t end = std::min(header.find('\r', start), header.size());
        const std::string_view line = header.substr(start, end - start);
        if (line != "[BeginPSF]" && !line.starts_with("Comment=") && line != "FileName=" && !line.empty()) {
            mFindings.Warn(start, "references", "the line " + Quoted(line) + " before \"[GVars]\" is ignored",
                           rule::FileIgnored);
            return;
        }
        start = end + (header.substr(end, 2) == "\r\n" ? 2 : 1);
    }
}

// Where a tag is missing the rest of the file was searched for it. Behind a function that "[EndPSF]" ended the events
// are looked for without "[EventCode]".
bool PsfWarnings::TagIsMissing(std::uint64_t lastLine) {
    if (mAnyEvent || mTagsFound == std::size(Tags)) {
        return false;
    }
    const TagEntry& missing = Tags[mTagsFound];
    mFindings.Warn(lastLine, missing.member, "there is no line " + Quoted(missing.tag) + " where it belongs",
                   rule::FileNoTag);
    return true;
}

void PsfWarnings::CheckEvents(std::uint64_t lastLine) {
    const auto lost =
        std::find_if(mEvents.begin(), mEvents.end(), [](const EventText& text) { return !text.isStored; });
    const auto index = static_cast<std::int32_t>(lost - mEvents.begin());
    if (lost == mEvents.end()) {
        if (!mEnd) {
            mFindings.Warn(lastLine, EventMember(OnMsgIndex), "its text is not followed by \"[EndPSF]\"",
                           rule::FileNoTag);
        }
    } else if (lost->begin != 0) {
        mFindings.Warn(lost->begin, EventMember(index),
                       "lost, because its text is not ended by the next tag or \"[EndPSF]\"", rule::FileNotEnded);
    } else {
        mFindings.Warn(lastLine, EventMember(index),
                       index == OnMsgIndex ? "never stored; it keeps its default text"
                                           : "never stored; it and the events after it keep their default texts",
                       rule::FileNotStored);
    }
}

void PsfWarnings::CheckTexts(const VornSrcObj& document, const std::string& bytes) {
    for (const Finding& finding : Lint(document)) {
        mFindings.Warn(OffsetOf(finding.member, finding.line, bytes), Shown(MemberName(document, finding.member)),
                       finding.message, finding.rule);
    }
}

// A text has the lines of the file from where it begins.
std::size_t PsfWarnings::OffsetOf(CCodeOrigin member, std::size_t line, const std::string& bytes) const {
    const auto index = static_cast<std::size_t>(member.index);
    std::uint64_t begin = mReferences.value_or(0);
    if (member.kind == CCodeOrigin::Kind::Event) {
        begin = mEvents.at(index).begin;
        --line;
    } else if (member.kind == CCodeOrigin::Kind::Function) { // the first one of the references stands behind their tag
        begin = mFunctions.TextBegin(index);
        --line;
    }
    return SkipLines(bytes, static_cast<std::size_t>(begin), line);
}

void PsfWarnings::CheckEnd(const std::string& bytes) {
    if (!mEnd) {
        return;
    }
    const std::size_t rest =
        bytes.find_first_not_of(BlanksAndBreaks, static_cast<std::size_t>(*mEnd) + EndPsfTag.size());
    if (rest == std::string::npos) {
        return;
    }
    if (mEndEvent < EventCount - 1) {
        mFindings.Warn(*mEnd, EventMember(mEndEvent), "the line \"[EndPSF]\" ends its text early", rule::FileEndsEarly);
    }
    mFindings.Warn(rest, EventMember(mEndEvent), "there is text after \"[EndPSF]\"", rule::FileBehindEnd);
}

} // namespace tessaly::psf
