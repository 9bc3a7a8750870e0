// The command line of this program.
#pragma once

#include <string>

namespace tessaly {

class CommandLineSource {
public:
    virtual ~CommandLineSource() = default;

    // The command line behind the program's name, as one text. Quotes and inner blanks stay; the blanks in front of it
    // do not.
    virtual std::string CommandLine() const = 0;
};

} // namespace tessaly
