// What stands behind the program's name on a command line.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::win32 {

// `commandLine` without the program's name and the blanks and tabs behind it. The name ends at a blank or, if it begins
// with a double quote, at the next one. The rest is as it stands: quotes, inner blanks, blanks at the end.
std::wstring_view WithoutProgramName(std::wstring_view commandLine);

// The same of this process, as UTF-8.
std::string CommandLine();

} // namespace tessaly::win32
