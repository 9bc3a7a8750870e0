// A console program's way in and out: its arguments as UTF-8, its standard streams as plain bytes.
#pragma once

#include <string>
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

} // namespace tessaly::win32
