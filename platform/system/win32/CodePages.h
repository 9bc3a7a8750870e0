// Code pages as Windows converts them, without its best fits: what has no place becomes "?" and not a look-alike.
#pragma once

#include "platform/text/CodePage.h"

#include <memory>
#include <string>

namespace tessaly {

// The system's ANSI code page; Windows-1252 where that is one that MakeCodePage does not make.
std::unique_ptr<CodePage> MakeSystemCodePage();

// The code page called `name`: a number, also behind "cp" or "windows-", or one of the usual names of those that have
// one, such as "utf-8", in any case. Null when Windows does not have it, or when it is no code page for files of this
// kind because bytes 00 to 7F are not ASCII in it, or because a character may have more than two bytes and it is not
// UTF-8.
std::unique_ptr<CodePage> MakeCodePage(const std::string& name);

} // namespace tessaly
