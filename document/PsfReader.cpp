// The phases of a load, one function each. At the end of the file a phase ends and the next finds the end
// at once, so a phase never asks why its loop is over.
#include "document/PsfReader.h"

#include "document/CaseFold.h"
#include "document/LineReader.h"
#include "document/NumberText.h"
#include "document/PsfKeys.h"
#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/Utf8.h"

#include <stdexcept>

namespace tessaly {

namespace {

// The value behind a key: the line from the character on that follows the key when the key begins the line.
// A key further right has part of itself and of what stands before it in its value; kept on purpose.
std::string_view ValueOf(std::string_view line, std::string_view key) {
    return line.substr(Utf8Position(line, key.size()));
}

void BeginText(TextCollector& text, std::string_view firstLine) {
    text.Begin();
    AppendLine(text.Tail(), firstLine);
}

} // namespace

void PsfReader::NameList::Set(std::string_view names) {
    mNames = names;
    mPosition = 0;
    mLast = nullptr;
}

std::shared_ptr<PsfReader::Expected> PsfReader::NameList::Take() {
    if (mLast) {
        return mLast;
    }
    const std::size_t comma = mNames.find(',', mPosition);
    const bool last = comma == std::string::npos;
    auto function = std::make_shared<Expected>();
    function->name = mNames.substr(mPosition, last ? comma : comma - mPosition);
    function->header = "[" + function->name + "]";
    if (last) {
        mLast = function;
    } else {
        mPosition = comma + 1;
    }
    return function;
}

PsfReader::PsfReader(VornSrcObj& document, const CodePage& codePage, PsfReadObserver* observer)
    : mDocument(document),
      mCodePage(codePage),
      mObserver(observer) {}

bool PsfReader::Read(InputFile& file) {
    LineReader lines(file, mCodePage);
    mLines = &lines;
    ReadHeader();
    ReadReferences();
    ReadFunctionList();
    try {
        ReadFunctions();
    } catch (...) {
        FillTable(); // what was read before the failure stays
        throw;
    }
    FillTable();
    ReadEvents();
    ReadRest();
    mLines = nullptr;
    file.Close();
    return mEndPSFSeen;
}

// Everything up to "[GVars]" is ignored: the start tag and the comment are not checked, and a FileName= value
// is of no use.
void PsfReader::ReadHeader() {
    while (NextLine()) {
        if (IsTag(GVarsTag)) {
            return;
        }
    }
}

void PsfReader::ReadReferences() {
    std::string& text = mDocument.mVarCode;
    text.clear();
    while (true) {
        mLines->AppendPlainLines(text);
        if (!NextLine() || IsTag(GFuncsTag)) {
            return;
        }
        AppendLine(text, mLine);
    }
}

void PsfReader::ReadFunctionList() {
    while (NextLine() && !IsTag(FuncCodeTag)) {
        const bool isCount = ContainsKey(mLine, NumFuncsKey);
        if (isCount) {
            ReadCount();
        }
        if (ContainsKey(mLine, FuncNamesKey)) {
            ReadNames();
        } else if (!isCount) {
            Notice(PsfNotice::Kind::Ignored, 0);
        }
    }
}

void PsfReader::ReadCount() {
    const std::string_view value = ValueOf(mLine, NumFuncsKey);
    const std::optional<std::int32_t> count = ToInteger(value);
    if (!count) {
        Notice(PsfNotice::Kind::BadCount, 0, value);
        throw std::invalid_argument("NumFuncs= is not a number");
    }
    mExpectedCount = *count;
    if (mExpectedCount > 0) {
        mNames.Set(""); // that many names, all empty
    }
    Notice(PsfNotice::Kind::CountLine, mExpectedCount, value);
}

void PsfReader::ReadNames() {
    const std::string_view value = ValueOf(mLine, FuncNamesKey);
    if (mExpectedCount > 0) {
        mNames.Set(value);
    }
    Notice(PsfNotice::Kind::NamesLine, mExpectedCount, value);
}

void PsfReader::ReadFunctions() {
    if (mExpectedCount <= 0) {
        while (NextLine() && !IsTag(EventCodeTag)) {
            Notice(PsfNotice::Kind::Ignored, 0);
        }
        return;
    }
    std::shared_ptr<Expected> function = mNames.Take();
    for (std::int32_t i = 0; i < mExpectedCount; ++i) {
        // Behind the last function its own header ends it: kept on purpose.
        const bool last = i == mExpectedCount - 1;
        const std::shared_ptr<Expected> next = last ? function : mNames.Take();
        if (!ReadFunction(i, *function, *next)) {
            Notice(PsfNotice::Kind::FunctionLost, i, {});
            return;
        }
        function = next;
    }
}

// Reads lines until function `index` is finished; false at the end of the file. The state outlives the
// function: after "[EventCode]" or "[EndPSF]" the next one goes on in the same body.
bool PsfReader::ReadFunction(std::int32_t index, Expected& function, const Expected& next) {
    while (true) {
        if (mFunctionState == FunctionState::ReadingBody) {
            mLines->AppendPlainLines(mCurFuncBody.Tail());
        }
        if (!NextLine()) {
            return false;
        }
        switch (mFunctionState) {
        case FunctionState::LookingForHeader:
            if (mLine == function.header) {
                Notice(PsfNotice::Kind::HeaderFound, index);
                mFunctionState = FunctionState::LookingForPrototype;
            } else {
                Notice(PsfNotice::Kind::Ignored, index);
            }
            break;
        case FunctionState::LookingForPrototype:
            if (ContainsKey(mLine, ProtoTypeKey)) {
                Notice(PsfNotice::Kind::PrototypeBegins, index);
                BeginText(mCurProtoType, ValueOf(mLine, ProtoTypeKey));
                mFunctionState = FunctionState::ReadingPrototype;
            } else {
                Notice(PsfNotice::Kind::Ignored, index);
            }
            break;
        case FunctionState::ReadingPrototype:
            if (ContainsKey(mLine, FuncBodyKey)) {
                Notice(PsfNotice::Kind::BodyBegins, index);
                BeginText(mCurFuncBody, ValueOf(mLine, FuncBodyKey));
                mFunctionState = FunctionState::ReadingBody;
            } else {
                AppendLine(mCurProtoType.Tail(), mLine);
            }
            break;
        case FunctionState::ReadingBody:
            if (EndsBody(index, function, next)) {
                return true;
            }
            AppendLine(mCurFuncBody.Tail(), mLine);
            break;
        }
    }
}

// Whether the line ends the body of function `index`; if so, the function is finished.
bool PsfReader::EndsBody(std::int32_t index, Expected& function, const Expected& next) {
    if (mLine == next.header) {
        TakeFunction(index, function);
        mFunctionState = FunctionState::LookingForPrototype;
        Notice(PsfNotice::Kind::HeaderFound, index + 1);
        return true;
    }
    if (IsTag(EventCodeTag)) {
        TakeFunction(index, function);
        return true;
    }
    if (mLine == EndPsfTag) {
        Notice(PsfNotice::Kind::FunctionLost, index);
        return true;
    }
    return false;
}

// A name that was read once stands in the table or collides with one there, so a second function of the same name
// need not be kept: a last name that is repeated a million times costs nothing.
void PsfReader::TakeFunction(std::int32_t index, Expected& function) {
    Notice(PsfNotice::Kind::FunctionRead, index);
    if (function.wasRead) {
        Notice(PsfNotice::Kind::FunctionDropped, index);
        return;
    }
    function.wasRead = true;
    mRead.push_back({function.name, mCurProtoType.Share(), mCurFuncBody.Share()});
    mReadIndexes.push_back(index);
}

// Puts what was read into the table, in one go because checking the names one by one would take most of a load.
void PsfReader::FillTable() {
    const std::vector<bool> collisions = mDocument.mFunctions.Fill(std::move(mRead));
    mRead.clear();
    for (std::size_t i = 0; i < collisions.size(); ++i) {
        if (collisions[i]) {
            Notice(PsfNotice::Kind::FunctionDropped, mReadIndexes[i], {});
        }
    }
}

void PsfReader::ReadEvents() {
    for (std::int32_t i = 0; i < EventCount; ++i) {
        if (!ReadEvent(i)) {
            return;
        }
    }
}

// Reads lines until event `index` is finished; false at the end of the file.
bool PsfReader::ReadEvent(std::int32_t index) {
    while (true) {
        if (mEventState == EventState::ReadingText) {
            mLines->AppendPlainLines(mEventText.Tail());
        }
        if (!NextLine()) {
            return false;
        }
        switch (mEventState) {
        case EventState::LookingForTag:
            if (mLine == EventTable[static_cast<std::size_t>(index)].tag) {
                Notice(PsfNotice::Kind::EventFound, index);
                mEventState = EventState::LookingForText;
            } else {
                Notice(PsfNotice::Kind::Ignored, index);
            }
            break;
        case EventState::LookingForText:
            if (ContainsKey(mLine, FuncBodyKey)) {
                Notice(PsfNotice::Kind::EventBegins, index);
                BeginText(mEventText, ValueOf(mLine, FuncBodyKey));
                mEventState = EventState::ReadingText;
            } else {
                Notice(PsfNotice::Kind::Ignored, index);
            }
            break;
        case EventState::ReadingText:
            if (EndsEvent(index)) {
                return true;
            }
            AppendLine(mEventText.Tail(), mLine);
            break;
        }
    }
}

// Whether the line ends the text of event `index`; if so, the event is finished.
bool PsfReader::EndsEvent(std::int32_t index) {
    // Behind the last event its own tag ends it: kept on purpose.
    const std::int32_t next = index < EventCount - 1 ? index + 1 : index;
    if (mLine == EventTable[static_cast<std::size_t>(next)].tag) {
        StoreEvent(index);
        mEventText.Begin();
        mEventState = EventState::LookingForText;
        Notice(PsfNotice::Kind::EventFound, index + 1);
        return true;
    }
    if (mLine == EndPsfTag) {
        StoreEvent(index);
        mEndPSFSeen = true; // the text and the state stay: what follows still counts for the next events
        return true;
    }
    return false;
}

void PsfReader::StoreEvent(std::int32_t index) {
    mDocument.mEventCodes[static_cast<std::size_t>(index)] = mEventText.Share();
    Notice(PsfNotice::Kind::EventStored, index);
}

void PsfReader::ReadRest() {
    while (NextLine()) {
    }
}

bool PsfReader::NextLine() {
    return mLines->Next(mLine);
}

bool PsfReader::IsTag(std::string_view tag) {
    const bool found = mLine == tag;
    if (found) {
        Notice(PsfNotice::Kind::TagFound, 0);
    }
    return found;
}

void PsfReader::Notice(PsfNotice::Kind kind, std::int32_t index) {
    Notice(kind, index, mLine);
}

void PsfReader::Notice(PsfNotice::Kind kind, std::int32_t index, std::string_view text) {
    if (mObserver != nullptr) {
        mObserver->Notice({kind, index, text, mLines->LineOffset()});
    }
}

} // namespace tessaly
