// Any line of an event script, in a block of exactly its own size. An event that was read is written as a line and read
// again: it is the same event.
extern "C" {
#include "kit/runtime/frame.h"
#include "kit/runtime/script.h"
#include "kit/runtime/text.h"
}

#include "fuzz/Check.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

namespace {

// A line that is read; the event's text lies in it.
struct Line {
    explicit Line(std::string_view line) : bytes(std::make_unique<char[]>(line.size() + 1)) {
        std::memcpy(bytes.get(), line.data(), line.size());
        wrong = kit_script_parse(bytes.get(), line.size(), &event);
    }

    std::unique_ptr<char[]> bytes;
    KitEvent event = {};
    const char* wrong = nullptr;
};

std::string Utf8(const KitEvent& event) {
    std::string text(3 * event.length, '\0');
    text.resize(kit_text_to_utf8(event.text, event.length, text.data()));
    return text;
}

std::string Hexadecimal(const KitEvent& event) {
    std::string text;
    for (std::size_t i = 0; i < event.length; ++i) {
        std::array<char, 4> byte{};
        std::snprintf(byte.data(), byte.size(), " %02x", static_cast<unsigned char>(event.text[i]));
        text += byte.data();
    }
    return text;
}

std::string Frame(const KitEvent& event) {
    std::array<char, KIT_FRAME_TEXT> text{};
    const std::size_t length = kit_frame_text(&event.frame, text.data());
    CHECK(length == std::strlen(text.data()));
    return text.data();
}

std::string Text(const KitExpectation& expectation) {
    std::string text(expectation.text_length, '\0');
    text.resize(kit_expectation_text(&expectation, text.data()));
    return text;
}

std::string Format(const KitEvent& event) {
    switch (event.kind) {
    case kit_event_none:
        return "";
    case kit_event_start:
        return "start";
    case kit_event_stop:
        return "stop";
    case kit_event_trigger:
        return "trigger";
    case kit_event_key:
        return "key " + Utf8(event);
    case kit_event_timer:
        return "timer " + std::to_string(event.timer);
    case kit_event_error:
        return "error " + std::to_string(event.channel) + " " + std::to_string(event.error_type);
    case kit_event_serial:
        return "serial" + Hexadecimal(event);
    case kit_event_msg:
        return "msg " + Utf8(event);
    case kit_event_frame:
        return "can" + std::to_string(event.channel) + " " + Frame(event);
    case kit_event_expect:
        return {event.expectation.line, event.expectation.line_length};
    }
    return "?";
}

std::string WithStamp(const KitEvent& event) {
    if (!event.has_stamp) {
        return Format(event);
    }
    std::string fraction = std::to_string(event.stamp % 1000000);
    fraction.insert(0, 6 - fraction.size(), '0');
    return "(" + std::to_string(event.stamp / 1000000) + "." + fraction + ") " + Format(event);
}

void CheckSame(const KitExpectation& a, const KitExpectation& b) {
    CHECK(a.kind == b.kind && a.channel == b.channel && a.passes == b.passes && a.span == b.span);
    CHECK(std::strcmp(a.pattern, b.pattern) == 0);
    CHECK(Text(a) == Text(b));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string_view line = bytes.substr(0, std::min(bytes.find('\n'), size - 1) + 1);
    const Line first(line);
    if (first.wrong != nullptr || first.event.kind == kit_event_none) {
        return 0;
    }
    const KitEvent& a = first.event;
    CHECK(a.text == nullptr || (a.text >= first.bytes.get() && a.text + a.length <= first.bytes.get() + line.size()));
    const Line second(WithStamp(a) + "\r\n");
    const KitEvent& b = second.event;
    CHECK(second.wrong == nullptr);
    CHECK(a.kind == b.kind && a.has_stamp == b.has_stamp && a.stamp == b.stamp && a.timer == b.timer);
    CHECK(a.channel == b.channel && a.error_type == b.error_type && a.length == b.length);
    CheckSame(a.expectation, b.expectation);
    CHECK(a.length == 0 || std::memcmp(a.text, b.text, a.length) == 0);
    CHECK(a.frame.id == b.frame.id && a.frame.extended == b.frame.extended && a.frame.fd == b.frame.fd);
    CHECK(a.frame.remote == b.frame.remote && a.frame.brs == b.frame.brs && a.frame.esi == b.frame.esi);
    CHECK(a.frame.length == b.frame.length && std::memcmp(a.frame.data, b.frame.data, a.frame.length) == 0);
    return 0;
}
