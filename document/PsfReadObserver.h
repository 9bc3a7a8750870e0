// Reports from the PSF reader. A load drops and changes things silently; an observer can tell the user. One that needs
// no texts can save their memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessaly {

struct PsfLine {
    std::string_view text; // of the line, or its value; good during the call only
    std::uint64_t offset;  // where the line begins in the file, in bytes
};

// What a line is to the section of a function or an event.
enum class PsfStep {
    Header,    // the section begins: the first header or tag, or one that ended the text before
    Prototype, // the ProtoType= line of a function
    Text,      // the FuncBody= line
    Ended,     // the line that ended the text, which was taken; a function's name may still collide
    Lost       // a function ended but does not count: at "[EndPSF]", or with no line at the end of the file
};

// Hears of nothing, unless it is overridden.
class PsfReadObserver {
public:
    virtual ~PsfReadObserver() = default;

    // "[GVars]", "[GFuncs]", "[FuncCode]" or "[EventCode]" where a phase was looking for it.
    virtual void Tag(PsfLine) {}

    // The value of a NumFuncs= line. When it is no number, the load ends here.
    virtual void Count(PsfLine) {}

    // The value of a FuncNames= line.
    virtual void Names(PsfLine) {}

    // A step of the section with this number. Behind the last one its own header begins one more.
    virtual void Function(PsfStep, std::int32_t, PsfLine) {}
    virtual void Event(PsfStep, std::int32_t, PsfLine) {}

    // A line of a text that begins as a tag does and is none here.
    virtual void TagLike(PsfLine) {}

    // A line that counts for nothing where it stands.
    virtual void Ignored(PsfLine) {}

    // How many bytes of the code of a function or of an event's text that has just ended, the first ones, go into the
    // document.
    virtual std::size_t KeptSize(std::string_view text) { return text.size(); }
};

} // namespace tessaly
