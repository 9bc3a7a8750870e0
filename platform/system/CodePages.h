// The code pages that the system knows.
#pragma once

#include "platform/text/CodePage.h"

#include <memory>
#include <string>

namespace tessaly {

// The code page of files where nobody chose one. Windows: the system's ANSI code page, or Windows-1252 where that is
// one that MakeCodePage does not make. Elsewhere: Windows-1252.
std::unique_ptr<CodePage> MakeSystemCodePage();

// The code page called `name`, in any case: a number, also behind "cp" or "windows-", or a name such as "utf-8"; on
// Unix whatever iconv knows, on Windows one of the usual names of those that have one.
//
// Null when the system does not have it, or when it is no code page for files of this kind: bytes 00 to 7F are not
// ASCII in it (UTF-16, EBCDIC), it switches by escape sequences, or, on Windows, a character may have more than two
// bytes and it is not UTF-8.
std::unique_ptr<CodePage> MakeCodePage(const std::string& name);

} // namespace tessaly
