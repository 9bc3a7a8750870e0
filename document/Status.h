// The 32-bit status codes that document and table operations return instead of raising an error.
#pragma once

#include <cstdint>

namespace tessaly {

enum class Status : std::int32_t {
    Done = 0,
    LoadFailed = 2,
    IndexOutOfRange = 3,
    NotFound = 4, // also: the table is empty
    GenerationFailed = 6,
    NameCollision = 7,
    UnexpectedError = 65535 // the positive number, not -1
};

} // namespace tessaly
