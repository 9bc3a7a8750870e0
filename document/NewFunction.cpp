// Names are checked byte by byte: no byte of a character outside ASCII is a letter here.
#include "document/NewFunction.h"

#include "platform/text/Ascii.h"

namespace tessaly {

NameCheck CheckFunctionName(std::string_view name) {
    if (!name.empty() && IsDigit(name.front())) {
        return NameCheck::BeginsWithDigit;
    }
    for (const char character : name) {
        if (!IsLetter(character) && !IsDigit(character)) {
            return NameCheck::BadCharacter;
        }
    }
    return NameCheck::Accepted;
}

std::string NewFunctionText(std::string_view name) {
    return "void " + std::string(name) + "(void)\n{\n\n}";
}

} // namespace tessaly
