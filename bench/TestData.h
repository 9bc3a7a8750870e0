// The files that the benchmarks read, made from a fixed seed: the same bytes on every machine.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

enum class NameOrder { Ascending, Random };

// A PSF file of `functions` functions of about 300 bytes each.
void WriteGrowthPsf(const std::string& path, std::int32_t functions, NameOrder order);

// A PSF file of at least `size` bytes with bodies of 8 to 60 lines and names in random order. Returns the number
// of functions.
std::int32_t WriteLargePsf(const std::string& path, std::int64_t size);

// The same bodies as an INI file of at least `size` bytes: a section for each function, a key for each line.
// Returns the number of keys.
std::int64_t WriteLargeIni(const std::string& path, std::int64_t size);

// A file of 100 bytes that announces 2147483647 functions.
void WriteHostilePsf(const std::string& path);

// The bytes of a file.
std::string ReadWhole(const std::string& path);

std::int64_t FileSize(const std::string& path);

} // namespace tessaly
