// A second PSF reader for the tests: deliberately literal, slow and simple. It cuts the whole file into lines and
// follows the format's state tables row by row. It shares nothing with the real reader but the code page and the case
// folding of names.
#pragma once

#include "platform/text/CodePage.h"

#include <array>
#include <string>
#include <vector>

namespace tessaly {

struct LiteralFunction {
    std::string name;
    std::string prototype;
    std::string code;
};

struct LiteralDocument {
    int status = 0;
    std::string varCode;
    std::vector<LiteralFunction> functions;
    std::array<std::string, 9> eventCodes;
};

LiteralDocument ReadLiterally(const std::string& bytes, const CodePage& codePage);

} // namespace tessaly
