// A document over files in memory, in Windows-1252: what most tests start from.
#pragma once

#include "document/VornSrcObj.h"
#include "platform/text/SingleByteCodePage.h"
#include "tests/desktop/SequentialFiles.h"

#include <ostream>
#include <string>

namespace tessaly {

// What the references of a new document hold.
inline constexpr const char* DefaultReferences = "/* ... include ... */\n\n/* ... variables ...*/\n";

inline void PrintTo(Status status, std::ostream* stream) {
    *stream << "status " << static_cast<std::int32_t>(status);
}

struct MemoryDocument {
    memory::SequentialFiles files;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    VornSrcObj document{files, codePage};

    Status Load(const std::string& bytes, PsfReadObserver* observer = nullptr) {
        files.contents["in.PSF"] = bytes;
        return document.LoadFile("in.PSF", observer);
    }

    // The bytes that SaveFile writes.
    std::string Saved() {
        document.SaveFile("out.PSF");
        return files.contents["out.PSF"];
    }

    // The bytes that BuildCCodeFile writes.
    std::string Generated() {
        document.BuildCCodeFile("out.c");
        return files.contents["out.c"];
    }

    std::string VarCode() const { return std::string(document.VarCode()); }
    std::string EventCode(std::int32_t index) const { return std::string(document.EventCodeAt(index)); }
    std::string Name(std::int32_t index) const { return std::string(document.Functions().NameAt(index)); }
    std::string Prototype(std::int32_t index) const { return std::string(document.Functions().PrototypeAt(index)); }
    std::string Code(std::int32_t index) const { return std::string(document.Functions().CodeAt(index)); }
};

} // namespace tessaly
