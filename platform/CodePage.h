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

    // Appends the text that `bytes` stand for. Never fails: a byte that stands for no character becomes a
    // control or private-use character that encodes to the same byte again, or U+FFFD in a multi-byte code
    // page. `bytes` must not begin or end inside a character.
    virtual void AppendDecoded(std::string_view bytes, std::string& text) const = 0;

    // Appends the bytes for `text`. Never fails: a character without a place in the code page becomes "?",
    // and so does each byte of `text` that is not UTF-8.
    virtual void AppendEncoded(std::string_view text, std::string& bytes) const = 0;

    // The position of the first byte that stands for no character, or npos.
    virtual std::size_t FindUnassigned(std::string_view bytes) const = 0;
};

} // namespace tessaly
