// The 8-bit code page of files on disk. In memory every text is valid UTF-8.
// Bytes 00 to 7F always are ASCII, alone and as the first byte of a character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessaly {

class CodePage {
public:
    virtual ~CodePage() = default;

    // Appends the text that `bytes` stand for. Never fails. A byte without a character becomes a control or private-use
    // character, which encodes to the same byte again. In a multi-byte code page it becomes U+FFFD. `bytes` must not
    // begin or end inside a character.
    virtual void AppendDecoded(std::string_view bytes, std::string& text) const = 0;

    // Puts the bytes for `text` to `to`, where there must be room for MostEncoded(text.size()), and returns the place
    // behind them; what stands there then is not promised. Never fails. A character without a place in the code page
    // becomes "?", never one that only looks like it; so does each byte that is not UTF-8.
    virtual char* Encode(std::string_view text, char* to) const = 0;

    // The most bytes that a text of `size` bytes has in any code page. No character takes more than twice its bytes in
    // UTF-8.
    static constexpr std::size_t MostEncoded(std::size_t size) { return size * 2; }

    // Appends the bytes for `text`.
    void AppendEncoded(std::string_view text, std::string& bytes) const {
        const std::size_t start = bytes.size();
        bytes.resize(start + MostEncoded(text.size()));
        bytes.resize(static_cast<std::size_t>(Encode(text, bytes.data() + start) - bytes.data()));
    }

    // The position of the first byte that is no character and becomes U+FFFD, or npos.
    virtual std::size_t FindLost(std::string_view bytes) const = 0;
};

} // namespace tessaly
