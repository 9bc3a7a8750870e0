// The nine event handlers. An event's index is its place in every list and in the PSF file.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

inline constexpr std::int32_t EventCount = 9;

// OnMsg, the last event: a loaded file can supply its text, but the window does not show it.
inline constexpr std::int32_t OnMsgIndex = 8;

struct EventEntry {
    std::string_view name;
    std::string_view tag;         // the section tag in a PSF file, alone on its line
    std::string_view defaultText; // the whole handler; line breaks are lone line feeds
};

inline constexpr std::array<EventEntry, EventCount> EventTable = {{
    {"OnError", "[OnError]", "void OnError(uchar channel, uchar error_type)\n{\n\n}"},
    {"OnFrame", "[OnFrame]", "void OnFrame(DataFrame *frame, uchar channel)\n{\n\n}"},
    {"OnKey", "[OnKey]", "void OnKey(char character)\n{\n\n}"},
    {"OnStart", "[OnStart]", "void OnStart(long time)\n{\n\n}"},
    {"OnStop", "[OnStop]", "void OnStop(long time)\n{\n\n}"},
    {"OnTimer", "[OnTimer]", "void OnTimer(uint timerid)\n{\n\n}"},
    {"OnTrigger", "[OnTrigger]", "void OnTrigger(long time)\n{\n\n}"},
    {"OnSerial", "[OnSerial]", "void OnSerial(const void * data, unsigned short datacount)\n{\n\n}"},
    {"OnMsg", "[OnMsg]", "void OnMsg(char * string){}"},
}};

} // namespace tessaly
