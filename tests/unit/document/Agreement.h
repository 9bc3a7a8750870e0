// What must hold for every input, however made: shared by the tests and the fuzzer.
#pragma once

#include "platform/text/CodePage.h"

#include <cstddef>
#include <string>

namespace tessaly {

// Loads `bytes` as a PSF that arrives in pieces of `readSize`, and compares the outcome with the literal reader's. Then
// generates C, saves, loads again and checks the rules for a round trip. Returns "" or what does not hold.
std::string FindDisagreement(const std::string& bytes, const CodePage& codePage, std::size_t readSize = 4096);

} // namespace tessaly
