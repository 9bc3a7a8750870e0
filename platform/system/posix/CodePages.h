// Code pages by name, by the C library's iconv.
#pragma once

#include "platform/text/CodePage.h"

#include <memory>
#include <string>

namespace tessaly {

// The code page called `name`: "1252", "cp1252", "windows-1252" in any case, or whatever else iconv knows.
// Null when iconv does not know it, or when it is no code page for files of this kind because bytes 00 to 7F
// are not ASCII in it (UTF-16, EBCDIC) or it switches by escape sequences.
std::unique_ptr<CodePage> MakeCodePage(const std::string& name);

// The code page where nobody chose one: Windows-1252.
std::unique_ptr<CodePage> MakeDefaultCodePage();

} // namespace tessaly
