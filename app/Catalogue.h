// The texts that the user sees, in both languages, by identifier.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

inline constexpr std::uint8_t EnglishLanguage = 0;
inline constexpr std::uint8_t GermanLanguage = 1;

// Sets `output` to the text of `identifier` (its case counts) in `language`, in UTF-8 with LF between lines. An
// identifier that is not in the catalogue gives a text, too, that says so. In a language that is neither English nor
// German `output` is left as it is, whatever the identifier.
void LookupPrompt(std::string_view identifier, std::uint8_t language, std::string& output);

} // namespace tessaly
