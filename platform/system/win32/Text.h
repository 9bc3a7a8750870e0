// Between the UTF-8 of the program and the UTF-16 of Windows. NULs are characters like others.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::win32 {

// `text` as UTF-16; U+FFFD for each byte that is not UTF-8.
std::wstring ToWide(std::string_view text);

// `wide` as UTF-8; U+FFFD for each surrogate without a partner.
std::string ToUtf8(std::wstring_view wide);

// `path` as the calls of Windows take it, also where it is longer than they take by themselves. Throws
// std::system_error for a path with a NUL in it, which would name another file.
std::wstring WidePath(const std::string& path);

} // namespace tessaly::win32
