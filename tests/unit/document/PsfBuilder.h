// Makes the bytes of PSF files for tests, section by section, well-formed or not.
#pragma once

#include "document/EventTable.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace tessaly {

// `lines`, each followed by CR LF.
inline std::string Lines(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines) {
        text.append(line).append("\r\n");
    }
    return text;
}

inline std::string PsfHead(std::string_view references = "int x;") {
    return Lines({"[BeginPSF]", "Comment= c", "FileName=", "[GVars]", references, "[GFuncs]"});
}

// A function section with an empty stored prototype.
inline std::string PsfFunction(const std::string& name, const std::string& body) {
    return Lines({"[" + name + "]", "ProtoType=", "FuncBody=" + body});
}

// The sections of events `first` to `last`, the text of each being its name and "text", and the end tag.
inline std::string PsfEvents(std::int32_t first = 0, std::int32_t last = EventCount - 1, bool endTag = true) {
    std::string text;
    for (std::int32_t i = first; i <= last; ++i) {
        const EventEntry& event = EventTable[static_cast<std::size_t>(i)];
        text += Lines({event.tag, "FuncBody=" + std::string(event.name) + " text"});
    }
    return text + (endTag ? "[EndPSF]\r\n" : "");
}

// A whole file; `functions` are the sections.
inline std::string Psf(std::string_view count, std::string_view names, std::string_view functions) {
    return PsfHead() + Lines({"NumFuncs=" + std::string(count), "FuncNames=" + std::string(names), "[FuncCode]"}) +
           std::string(functions) + "[EventCode]\r\n" + PsfEvents();
}

} // namespace tessaly
