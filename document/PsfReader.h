// The PSF reader: a line-by-line state machine. It finds sections by exact tag lines and keys by a search
// without regard to case, and lets a body run until the next tag that it expects.
#pragma once

#include "document/FuncObject.h"
#include "document/PsfReadObserver.h"
#include "document/SharedText.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class CodePage;
class InputFile;
class LineReader;
class VornSrcObj;

class PsfReader {
public:
    // `document` must be freshly initialised; `observer` may be null.
    PsfReader(VornSrcObj& document, const CodePage& codePage, PsfReadObserver* observer);

    // Reads the whole file into the document and closes it. True when the end tag ended an event's text.
    // Throws on unreadable data and on a NumFuncs= value that is no number; what was read until then stays.
    bool Read(InputFile& file);

private:
    enum class FunctionState { LookingForHeader, LookingForPrototype, ReadingPrototype, ReadingBody };
    enum class EventState { LookingForTag, LookingForText, ReadingText };

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
        void Set(std::string_view names);
        std::shared_ptr<Expected> Take();

    private:
        std::string mNames;
        std::size_t mPosition = 0;
        std::shared_ptr<Expected> mLast;
    };

    void ReadHeader();
    void ReadReferences();
    void ReadFunctionList();
    void ReadCount();
    void ReadNames();
    void ReadFunctions();
    bool ReadFunction(std::int32_t index, Expected& function, const Expected& next);
    bool EndsBody(std::int32_t index, Expected& function, const Expected& next);
    void TakeFunction(std::int32_t index, Expected& function);
    void FillTable();
    void ReadEvents();
    bool ReadEvent(std::int32_t index);
    bool EndsEvent(std::int32_t index);
    void StoreEvent(std::int32_t index);
    void ReadRest();

    bool NextLine();
    bool IsTag(std::string_view tag);
    void Notice(PsfNotice::Kind kind, std::int32_t index);
    void Notice(PsfNotice::Kind kind, std::int32_t index, std::string_view text);

    VornSrcObj& mDocument;
    const CodePage& mCodePage;
    PsfReadObserver* mObserver;
    LineReader* mLines = nullptr;
    std::string_view mLine;

    std::int32_t mExpectedCount = 0;
    NameList mNames;
    FunctionState mFunctionState = FunctionState::LookingForHeader;
    TextCollector mCurProtoType;
    TextCollector mCurFuncBody;
    std::vector<FuncObject::NewFunction> mRead; // what goes into the table when all functions have been read
    std::vector<std::int32_t> mReadIndexes;     // their numbers in the list of names
    EventState mEventState = EventState::LookingForTag;
    TextCollector mEventText;
    bool mEndPSFSeen = false;
};

} // namespace tessaly
