// The phases of a load, one function each. At the end of the file each phase ends at once. So a phase seldom asks why
// its loop is over.
#include "document/LineReader.h"
#include "document/PsfKeys.h"
#include "document/PsfReadObserver.h"
#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/CaseFold.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <vector>

namespace tessaly {

namespace {

// The value behind a key: the line from the character on that follows the key when the key begins the line.
// A key further right has part of itself and of what stands before it in its value; kept on purpose.
std::string_view ValueOf(std::string_view line, std::string_view key) {
    return line.substr(Utf8Position(line, key.size()));
}

// A function that the list of names announces.
struct Expected {
    std::string name;
    std::string header;   // its section header
    bool wasRead = false; // so its name collides from now on
};

// The names of FuncNames=, cut off one by one. A list that is shorter than announced goes on with its
// last name for ever: Take then gives the same object again and again.
class NameList {
public:
    explicit NameList(std::string_view names) : mNames(names) {}

    std::shared_ptr<Expected> Take() {
        if (mLast) {
            return mLast;
        }
        const std::size_t comma = mNames.find(',');
        auto function = std::make_shared<Expected>();
        function->name = mNames.substr(0, comma);
        function->header = "[" + function->name + "]";
        if (comma == std::string_view::npos) {
            mLast = function;
        } else {
            mNames.remove_prefix(comma + 1);
        }
        return function;
    }

private:
    std::string_view mNames; // not taken yet
    std::shared_ptr<Expected> mLast;
};

// Finds sections by exact tag lines, and keys without regard to case. A body runs until the next expected tag.
class PsfReader {
public:
    PsfReader(InputFile& file, const CodePage& codePage, PsfContent& content, PsfReadObserver& observer)
        : mLines(file, codePage),
          mContent(content),
          mObserver(observer) {}

    // True when the end tag ended an event's text.
    bool Read();

private:
    void ReadHeader();
    void ReadReferences();
    void ReadFunctionList();
    void ReadCount();
    void ReadNames();
    void ReadFunctions();
    bool ReadPrototype(std::int32_t index);
    bool EndsBody(std::int32_t index, Expected& function, const Expected& next);
    void ReadEvents();
    bool EndsEvent(std::int32_t index);
    SharedText Kept(TextCollector& collector);

    template <class Test>
    bool Find(Test isWanted);
    template <class Test>
    bool ReadText(std::string& text, Test isEnd);
    bool IsTag(std::string_view tag);
    PsfLine Line() const { return {mLine, mLines.LineOffset()}; }

    LineReader mLines;
    PsfContent& mContent;
    PsfReadObserver& mObserver;
    std::string_view mLine;

    std::int32_t mExpectedCount = 0;
    std::string mNames;
    TextCollector mCurProtoType;
    TextCollector mCurFuncBody;
    bool mBodyGoesOn = false;                // past the end of its function
    std::vector<FuncObject::Function> mRead; // what goes into the table when all functions have been read
    TextCollector mEventText;
    bool mEventGoesOn = false; // past the end of its event
    bool mEndPSFSeen = false;
};

bool PsfReader::Read() {
    ReadHeader();
    ReadReferences();
    ReadFunctionList();
    try {
        ReadFunctions();
    } catch (...) {
        mContent.functions.Fill(std::move(mRead)); // what was read before the failure stays
        throw;
    }
    mContent.functions.Fill(std::move(mRead));
    ReadEvents();
    while (mLines.Next(mLine)) { // up to the end of the file, which may be unreadable
    }
    return mEndPSFSeen;
}

// Everything up to "[GVars]" is ignored: the start tag and the comment are not checked, and a FileName= value
// is of no use.
void PsfReader::ReadHeader() {
    while (mLines.Next(mLine) && !IsTag(GVarsTag)) {
    }
}

void PsfReader::ReadReferences() {
    mContent.references.clear();
    ReadText(mContent.references, [this] { return IsTag(GFuncsTag); });
}

void PsfReader::ReadFunctionList() {
    while (mLines.Next(mLine) && !IsTag(FuncCodeTag)) {
        // No line is both: with the other key behind it a count is no number.
        if (ContainsKey(mLine, NumFuncsKey)) {
            ReadCount();
        } else if (ContainsKey(mLine, FuncNamesKey)) {
            ReadNames();
        } else {
            mObserver.Ignored(Line());
        }
    }
}

void PsfReader::ReadCount() {
    const std::string_view value = ValueOf(mLine, NumFuncsKey);
    mObserver.Count({value, mLines.LineOffset()});
    const std::optional<std::int32_t> count = ToInteger(value);
    if (!count) {
        throw std::invalid_argument("NumFuncs= is not a number");
    }
    mExpectedCount = *count;
    mNames.clear(); // that many names, all empty
}

void PsfReader::ReadNames() {
    const std::string_view value = ValueOf(mLine, FuncNamesKey);
    mObserver.Names({value, mLines.LineOffset()});
    mNames = value; // without a count nobody asks for them, and a later count empties them
}

// The header of all functions but the first one ended the body before. After "[EventCode]" or "[EndPSF]" a function
// goes on in the body of the one before.
void PsfReader::ReadFunctions() {
    if (mExpectedCount <= 0) {
        Find([this] { return IsTag(EventCodeTag); });
        return;
    }
    constexpr std::int32_t usual = 1000; // a file may announce any number
    mRead.reserve(static_cast<std::size_t>(std::min(mExpectedCount, usual)));
    NameList names(mNames);
    std::shared_ptr<Expected> function = names.Take();
    bool isThere = Find([&] { return mLine == function->header; });
    if (isThere) {
        mObserver.Function(PsfStep::Header, 0, Line());
    }
    for (std::int32_t i = 0; i < mExpectedCount; ++i) {
        // Behind the last function its own header ends it: kept on purpose.
        const bool last = i == mExpectedCount - 1;
        const std::shared_ptr<Expected> next = last ? function : names.Take();
        isThere = isThere && (mBodyGoesOn || ReadPrototype(i)) &&
                  ReadText(mCurFuncBody.Tail(), [&] { return EndsBody(i, *function, *next); });
        if (!isThere) {
            mObserver.Function(PsfStep::Lost, i, {{}, mLines.LineOffset()});
            return;
        }
        function = next;
    }
}

// Reads up to the line that begins the body; false at the end of the file.
bool PsfReader::ReadPrototype(std::int32_t index) {
    if (!Find([this] { return ContainsKey(mLine, ProtoTypeKey); })) {
        return false;
    }
    mObserver.Function(PsfStep::Prototype, index, Line());
    AppendLine(mCurProtoType.Begin(), ValueOf(mLine, ProtoTypeKey));
    while (mLines.Next(mLine)) {
        if (ContainsKey(mLine, FuncBodyKey)) {
            mObserver.Function(PsfStep::Text, index, Line());
            AppendLine(mCurFuncBody.Begin(), ValueOf(mLine, FuncBodyKey));
            return true;
        }
        AppendLine(mCurProtoType.Tail(), mLine);
    }
    return false;
}

// Whether the line ends the body of function `index`; if so, the function is finished. A name that was read once is in
// the table or collides with one there. So a second function of that name is not kept, and a name repeated a million
// times costs nothing.
bool PsfReader::EndsBody(std::int32_t index, Expected& function, const Expected& next) {
    const bool isNext = mLine == next.header;
    mBodyGoesOn = !isNext;
    if (!isNext && mLine == EndPsfTag) {
        mObserver.Function(PsfStep::Lost, index, Line());
        return true;
    }
    if (!isNext && !IsTag(EventCodeTag)) {
        return false;
    }
    mObserver.Function(PsfStep::Ended, index, Line());
    if (!function.wasRead) {
        function.wasRead = true;
        mRead.push_back({function.name, mCurProtoType.Share(), Kept(mCurFuncBody)});
    }
    if (isNext) {
        mObserver.Function(PsfStep::Header, index + 1, Line());
    }
    return true;
}

// Up to the end of the file. After "[EndPSF]" an event goes on in the text of the one before.
void PsfReader::ReadEvents() {
    bool isThere = Find([this] { return mLine == EventTable.front().tag; });
    if (isThere) {
        mObserver.Event(PsfStep::Header, 0, Line());
    }
    for (std::int32_t i = 0; isThere && i < EventCount; ++i) {
        if (!mEventGoesOn) {
            if (!Find([this] { return ContainsKey(mLine, FuncBodyKey); })) {
                return;
            }
            mObserver.Event(PsfStep::Text, i, Line());
            AppendLine(mEventText.Begin(), ValueOf(mLine, FuncBodyKey));
        }
        isThere = ReadText(mEventText.Tail(), [&] { return EndsEvent(i); });
    }
}

// Whether the line ends the text of event `index`; if so, the event is finished.
bool PsfReader::EndsEvent(std::int32_t index) {
    // Behind the last event its own tag ends it: kept on purpose.
    const std::int32_t next = index < EventCount - 1 ? index + 1 : index;
    const bool isNext = mLine == EventTable[static_cast<std::size_t>(next)].tag;
    mEventGoesOn = !isNext;
    if (!isNext && mLine != EndPsfTag) {
        return false;
    }
    mObserver.Event(PsfStep::Ended, index, Line());
    mContent.eventTexts[static_cast<std::size_t>(index)] = Kept(mEventText);
    if (isNext) {
        mObserver.Event(PsfStep::Header, index + 1, Line());
    } else {
        mEndPSFSeen = true;
    }
    return true;
}

SharedText PsfReader::Kept(TextCollector& collector) {
    const std::string_view text = collector.View();
    const std::size_t size = mObserver.KeptSize(text);
    return size < text.size() ? SharedText(text.substr(0, size)) : collector.Share();
}

// Goes on to the next line for which `isWanted`; false at the end of the file. The lines before it count for nothing.
template <class Test>
bool PsfReader::Find(Test isWanted) {
    while (mLines.Next(mLine)) {
        if (isWanted()) {
            return true;
        }
        mObserver.Ignored(Line());
    }
    return false;
}

// Appends lines to `text` up to the next one for which `isEnd`, a tag; false at the end of the file.
template <class Test>
bool PsfReader::ReadText(std::string& text, Test isEnd) {
    while (true) {
        mLines.AppendPlainLines(text);
        if (!mLines.Next(mLine)) {
            return false;
        }
        if (isEnd()) {
            return true;
        }
        if (mLine.starts_with('[')) {
            mObserver.TagLike(Line());
        }
        AppendLine(text, mLine);
    }
}

bool PsfReader::IsTag(std::string_view tag) {
    const bool found = mLine == tag;
    if (found) {
        mObserver.Tag(Line());
    }
    return found;
}

} // namespace

Status VornSrcObj::LoadFile(const std::string& fileName, PsfReadObserver* observer) {
    mReadError.clear();
    try {
        Init();
        PsfReadObserver nobody;
        const std::unique_ptr<InputFile> file = mFiles.OpenForInput(fileName);
        mLoadedOK = PsfReader(*file, mCodePage, mContent, observer != nullptr ? *observer : nobody).Read();
        file->Close();
    } catch (const std::bad_alloc&) {
        mLoadedOK = false;
        mReadError = std::make_error_code(std::errc::not_enough_memory);
    } catch (const std::system_error& error) {
        mLoadedOK = false;
        mReadError = error.code();
    } catch (const std::exception&) {
        mLoadedOK = false;
    }
    return mLoadedOK ? Status::Done : Status::LoadFailed;
}

} // namespace tessaly
