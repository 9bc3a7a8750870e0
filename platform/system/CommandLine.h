// The command line of this program.
#pragma once

#include <string>

namespace tessaly {

class CommandLineSource {
public:
    virtual ~CommandLineSource() = default;

    // All that stands behind the program's name on its command line, as one text: quotes and inner blanks as they are,
    // without the blanks that separate it from the name.
    virtual std::string CommandLine() const = 0;
};

} // namespace tessaly
