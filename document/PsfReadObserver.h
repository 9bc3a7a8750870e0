// What the PSF reader meets on its way, for those who want to tell the user what a load does silently.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessaly {

struct PsfNotice {
    enum class Kind {
        CountLine,       // a NumFuncs= line; index: its number, text: its value
        NamesLine,       // a FuncNames= line; index: the count known then, text: its value
        SectionsSkipped, // the function sections are skipped because no function is expected; no line
        HeaderFound,     // the section header of function `index`, which is its first or ended the one before
        PrototypeBegins, // the ProtoType= line of function `index`
        BodyBegins,      // the FuncBody= line of function `index`
        FunctionAdded,   // function `index` ended and was added; line: what ended it
        FunctionDropped, // the same, but its name collides with that of an earlier function
        FunctionLost,    // function `index` ended without being added; line: "[EndPSF]", or none at the end
        EventFound,      // the tag of event `index`, which is the first or ended the one before
        EventBegins,     // the FuncBody= line of event `index`
        EventStored,     // event `index` ended and was stored; line: what ended it
        Ignored,         // a line that counts for nothing where it stands; index: the function or event awaited
        Rest             // a line behind all that was expected
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
