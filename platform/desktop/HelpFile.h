// The program's help: a file that the key F1 opens.
#pragma once

#include <string_view>

namespace tessaly {

class HelpFile {
public:
    virtual ~HelpFile() = default;

    // The file that F1 opens; "" at first: F1 then does nothing.
    virtual void SetHelpFile(std::string_view path) = 0;

    // Sends the key F1 to the program as if the user had pressed it, without waiting.
    virtual void SendF1() = 0;
};

} // namespace tessaly
