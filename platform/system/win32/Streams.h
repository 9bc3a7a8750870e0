// A program's way in and out: its command line as UTF-8, its standard streams as plain bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly::win32 {

// While it lives standard streams are not translated, and a console that they write to shows UTF-8.
class Streams {
public:
    Streams();
    Streams(const Streams&) = delete;
    Streams& operator=(const Streams&) = delete;
    ~Streams();

private:
    unsigned mConsoleCodePage; // what the console had before; 0 without one
};

// This program's name and arguments. Wildcards are not expanded.
std::vector<std::string> Arguments();

// `commandLine` without the program's name and the blanks and tabs behind it. The name ends at a blank or, if it begins
// with a double quote, at the next one. The rest is as it stands: quotes, inner blanks, blanks at the end.
std::wstring_view WithoutProgramName(std::wstring_view commandLine);

// The same of this process, as UTF-8.
std::string CommandLine();

} // namespace tessaly::win32
