// Documents that were given up, kept for a while: ordinary PSF files whose names tell the document, the date and the
// reason.
#pragma once

#include "recovery/Copy.h"

#include <cstddef>

namespace tessaly {

// The folder for them in a folder of copies.
std::string KeptFolder(const std::string& folder);

// Keeps `bytes` there under a name of their own and removes the oldest ones beyond 100 documents or 200 MB; the newest
// stays in any case. `origin.time` and `origin.reason` go into the name; `origin.copy` is the mark of `bytes`. An error
// means that nothing was kept.
std::error_code KeepDocument(PrivateFiles& own, const std::string& folder, std::string_view bytes,
                             const Origin& origin);

// What KeepDocument leaves behind.
inline constexpr std::size_t MostKept = 100;
inline constexpr std::uint64_t MostKeptBytes = 200'000'000;

} // namespace tessaly
