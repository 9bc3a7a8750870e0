// The list comes first, then the sections, then what the document made of them.
#include "programs/psf/base/FunctionWarnings.h"

#include "document/CCodeGenerator.h"
#include "document/PsfKeys.h"
#include "document/TextValue.h"

#include <algorithm>
#include <map>

namespace tessaly::psf {

namespace {

// A prototype as far as it matters to C: single blanks, no ";".
std::string Essence(std::string_view prototype) {
    std::string essence;
    for (const char c : prototype) {
        if (BlanksAndBreaks.find(c) != std::string_view::npos) {
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

void FunctionWarnings::Count(PsfLine value) {
    const std::optional<std::int32_t> count = ToInteger(value.text);
    if (!count) {
        mFindings.Warn(value.offset, "functions",
                       "NumFuncs= is not a 32-bit number: " + Quoted(value.text) + "; the load ends here",
                       rule::FileCount);
        mFileIsOver = true;
        return;
    }
    mFindings.TellIgnored("\"NumFuncs=\"", "functions");
    mCount = *count;
    mCountLine = value.offset;
    mNames.clear();
}

void FunctionWarnings::Names(PsfLine value) {
    mNamesLine = value.offset;
    mNamesText = value.text;
    mNames.clear();
    const std::string_view text = mNamesText;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        mNames.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    if (mCount > 0 && mNames.size() < static_cast<std::size_t>(mCount)) {
        mFindings.Warn(value.offset, "functions/" + Shown(mNames.back()),
                       "NumFuncs= announces " + std::to_string(mCount) + " functions and FuncNames= lists " +
                           std::to_string(mNames.size()) + "; the others all get this name",
                       rule::FileNames);
    }
}

void FunctionWarnings::Step(PsfStep step, std::int32_t index, PsfLine line) {
    switch (step) {
    case PsfStep::Header:
        if (index == 0) {
            mFindings.TellIgnored(Quoted(line.text), Member(index));
        }
        Begin(index, line.offset);
        mFindings.BeginMember(line.offset, Member(index));
        break;
    case PsfStep::Prototype:
        mFindings.TellIgnored("\"ProtoType=\"", Member(index));
        mSection.prototype = line.offset;
        break;
    case PsfStep::Text:
        mSection.body = line.offset;
        break;
    case PsfStep::Ended:
        Ended(index, line);
        break;
    case PsfStep::Lost:
        Lost(index, line);
        break;
    }
}

void FunctionWarnings::Ended(std::int32_t index, PsfLine line) {
    if (mSection.index != index) { // it goes on in the text of the one before
        Begin(index, line.offset);
    }
    mRead.push_back(mSection);
    mFindings.TextEnded(line, Member(index));
    if (line.text == EventCodeTag && index < mCount - 1 && !mSectionsMissing) {
        mSectionsMissing = true;
        mFindings.Warn(line.offset, Member(index + 1),
                       "NumFuncs= announces " + std::to_string(mCount) + " functions, but only " +
                           std::to_string(index + 1) +
                           " sections are before \"[EventCode]\"; this function takes the events as its text",
                       rule::FileSections);
    }
}

void FunctionWarnings::Lost(std::int32_t index, PsfLine line) {
    mFileIsOver = line.text.empty();
    if (mSection.index == index) {
        mFindings.LossIsTold();
        mFindings.Warn(line.text.empty() ? mSection.header : line.offset, Member(index),
                       line.text.empty() ? "lost, because the file ends before its text does"
                                         : "lost, because the line \"[EndPSF]\" ends its text early",
                       rule::FileNotEnded);
    } else if (!mSectionsMissing) {
        mSectionsMissing = true;
        mFindings.Warn(mCountLine, Member(index),
                       "NumFuncs= announces " + std::to_string(mCount) + " functions, but the section \"[" +
                           Shown(NameOf(index)) + "]\" was not found where it belongs",
                       rule::FileSections);
    }
}

void FunctionWarnings::Finish(const FuncObject& functions, const std::string& bytes, const CodePage& codePage) {
    CheckDropped(functions);
    std::int32_t index = 0;
    for (const Section& section : mRead) {
        CheckFunction(section, "functions/" + Shown(functions.NameAt(index)), functions.PrototypeAt(index),
                      functions.CodeAt(index));
        ++index;
    }
    CheckNames(bytes, codePage);
}

// Keeps the others: the functions of the document are those that were read, in their order, without the dropped ones.
void FunctionWarnings::CheckDropped(const FuncObject& functions) {
    if (functions.GetCount() == 0) { // memory ran out before the table was filled, as it takes any first function
        mRead.clear();
        return;
    }
    std::size_t kept = 0;
    std::map<std::string_view, std::string> collisions; // a name always collides with the same one
    const std::string* collision = nullptr;
    std::string_view last;
    for (const Section section : mRead) {
        const std::string_view name = NameOf(section.index);
        const auto next = static_cast<std::int32_t>(kept);
        if (next < functions.GetCount() && functions.NameAt(next) == name) {
            mRead[kept++] = section;
            continue;
        }
        if (collision == nullptr || name.data() != last.data()) { // a short list repeats its last name without end
            last = name;
            const auto [entry, isNew] = collisions.try_emplace(name);
            if (isNew) {
                entry->second = Shown(functions.FindCollision(name).value_or(""));
            }
            collision = &entry->second;
        }
        mFindings.Warn(section.header, Member(section.index),
                       "dropped, because its name collides with \"" + *collision + "\"", rule::FileCollision);
    }
    mRead.resize(kept);
}

void FunctionWarnings::CheckFunction(const Section& section, const std::string& member, std::string_view prototype,
                                     std::string_view code) {
    std::string_view generated;
    if (!CutPrototype(code, generated)) {
        mFindings.Warn(section.body, member, "its code begins with \"{\", so no C file can be generated",
                       rule::FileNoPrototype);
        return;
    }
    if (code.find('{') == std::string_view::npos) {
        mFindings.Warn(section.body, member, "its code holds no \"{\", so all of it becomes the prototype",
                       rule::FileNoPrototype);
    }
    const std::string stored = Essence(prototype);
    if (!stored.empty() && stored != Essence(generated)) {
        mFindings.Warn(section.prototype, member,
                       "the stored prototype " + Quoted(stored) + " is not used; generation takes " +
                           Quoted(Essence(generated)) + " from the code",
                       rule::FilePrototype);
    }
}

// More names than announced come of a comma in a name; the section header still shows the name that it was.
void FunctionWarnings::CheckNames(const std::string& bytes, const CodePage& codePage) {
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
                mFindings.Warn(mNamesLine, "functions/" + Shown(name),
                               "the name is split at its comma, so the function is not found", rule::FileNames);
                ++found;
            }
            --candidates;
        }
        start = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    if (found == 0) {
        mFindings.Warn(mNamesLine, "functions/" + Shown(mNames[static_cast<std::size_t>(mCount)]),
                       "FuncNames= lists " + std::to_string(mNames.size()) + " names and NumFuncs= announces " +
                           std::to_string(mCount) + "; a name was split at a comma, or the last ones are left out",
                       rule::FileNames);
    }
}

// The name of the function announced as number `index`.
std::string_view FunctionWarnings::NameOf(std::int32_t index) const {
    const auto place = static_cast<std::size_t>(index);
    return mNames.empty() ? std::string_view() : place < mNames.size() ? mNames[place] : mNames.back();
}

std::string FunctionWarnings::Member(std::int32_t index) const {
    return "functions/" + Shown(NameOf(index));
}

} // namespace tessaly::psf
