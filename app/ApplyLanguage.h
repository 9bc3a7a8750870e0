// Puts the texts of a language into the main window.
#pragma once

#include "app/LanguageTarget.h"

#include <cstdint>

namespace tessaly {

// Sets all texts of `window` that come from the catalogue to those in `language`, the messages and captions now shown
// included, and the check marks of the language menu. In a language that is neither English nor German all these texts
// become "", only the path of the current file is left in panel 1, and German is checked: kept on purpose.
// What `window` throws is passed on.
void ApplyLanguage(LanguageTarget& window, std::uint8_t language);

} // namespace tessaly
