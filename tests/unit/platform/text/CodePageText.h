// Texts through a code page, for its tests.
#pragma once

#include "platform/text/CodePage.h"

#include <string>
#include <string_view>

namespace tessaly {

inline std::string Decode(const CodePage& codePage, std::string_view bytes) {
    std::string text;
    codePage.AppendDecoded(bytes, text);
    return text;
}

inline std::string Encode(const CodePage& codePage, std::string_view text) {
    std::string bytes;
    codePage.AppendEncoded(text, bytes);
    return bytes;
}

inline std::string AllBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

} // namespace tessaly
