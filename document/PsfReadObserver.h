// What the PSF reader meets on its way, for those who want to tell the user what a load does silently.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessaly {

struct PsfNotice {
    enum class Kind {
        TagFound,        // "[GVars]", "[GFuncs]", "[FuncCode]" or "[EventCode]" where a phase was looking for it
        CountLine,       // a NumFuncs= line; index: its number, text: its value
        BadCount,        // the same, but its value is no number, so the load ends here; text: the value
        NamesLine,       // a FuncNames= line; index: the count known then, text: its value
        HeaderFound,     // the section header of function `index`: the first, or one that ended the function before
        PrototypeBegins, // the ProtoType= line of function `index`
        BodyBegins,      // the FuncBody= line of function `index`
        FunctionRead,    // function `index` ended; text: the line that ended it
        FunctionLost,    // function `index` ended but does not count; text: "[EndPSF]", or "" at the end of the file
        FunctionDropped, // function `index` was read, but its name collides; told when all functions have been read
        EventFound,      // the tag of event `index`: the first, or one that ended the event before
        EventBegins,     // the FuncBody= line of event `index`
        EventStored,     // event `index` ended and was stored; text: the line that ended it
        Ignored          // a line that counts for nothing where it stands
    };
    Kind kind;
    std::int32_t index = 0;
    std::string_view text = {}; // the line where nothing else is said; good during the call only
    std::uint64_t offset = 0;   // where the line begins in the file, in bytes
};

class PsfReadObserver {
public:
    virtual ~PsfReadObserver() = default;
    virtual void Notice(const PsfNotice& notice) = 0;
};

} // namespace tessaly
