// The search for the extension takes the first match, not the last.
#include "app/CompilerCommand.h"

#include "platform/text/Ascii.h"

#include <algorithm>

namespace tessaly {

namespace {

constexpr std::string_view PsfExtension = ".psf";

} // namespace

std::string OutputName(std::string_view psfPath) {
    const auto found = std::search(psfPath.begin(), psfPath.end(), PsfExtension.begin(), PsfExtension.end(),
                                   [](char character, char small) { return SmallLetter(character) == small; });
    return std::string(psfPath.begin(), found == psfPath.end() ? psfPath.begin() : found) + ".out";
}

std::string CompilerCommandLine(std::string_view compBat, std::string_view outputName) {
    return std::string(compBat).append(" \"").append(outputName).append("\"");
}

} // namespace tessaly
