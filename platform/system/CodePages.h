// The code pages that the system knows.
#pragma once

#include "platform/text/CodePage.h"

#include <memory>
#include <string>

namespace tessaly {

// The code page of files where nobody chose one. Windows: the system's ANSI code page, or Windows-1252 where
// MakeCodePage refuses that one. Elsewhere: Windows-1252.
std::unique_ptr<CodePage> MakeSystemCodePage();

// Its name, for MakeCodePage on a machine where another one may be the system's.
std::string SystemCodePageName();

// The code page called `name`, in any case: a number, also behind "cp" or "windows-", or a name such as "utf-8"; on
// Unix any name that iconv knows, on Windows a usual name of a code page.
//
// Null when the system does not have it, or when it does not suit these files. Bytes 00 to 7F must be ASCII (not so in
// UTF-16, EBCDIC), and escape sequences must not switch it. On Windows a character has at most two bytes, but in UTF-8.
std::unique_ptr<CodePage> MakeCodePage(const std::string& name);

} // namespace tessaly
