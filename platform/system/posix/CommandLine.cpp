// The shell has split the line, and how it was written is lost.
#include "platform/system/posix/CommandLine.h"

namespace tessaly::posix {

std::string CommandLine(int count, char** arguments) {
    std::string line;
    for (int i = 1; i < count; ++i) {
        line += (i > 1 ? " " : "") + std::string(arguments[i]);
    }
    return line;
}

} // namespace tessaly::posix
