// The texts that the user sees, in both languages: by identifier, and by readable names for the code.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

inline constexpr std::uint8_t EnglishLanguage = 0;
inline constexpr std::uint8_t GermanLanguage = 1;

enum class Text {
#define PLAIN_TEXT(identifier, name, english, german) name,
#include "app/Texts.def"
};

// The texts that the main window keeps in its language, one member per identifier; all "" at first.
struct WindowTexts {
#define WINDOW_TEXT(identifier, name, english, german) std::string identifier;
#include "app/Texts.def"

    // The member that holds `text`. Throws std::out_of_range for a text that the window does not keep.
    const std::string& Words(Text text) const;
};

struct CatalogueRow {
    std::string_view identifier;
    std::string_view english;
    std::string_view german;
    std::string WindowTexts::*member = nullptr; // null when the window does not keep the text
};

inline constexpr CatalogueRow CatalogueRows[] = {
#define PLAIN_TEXT(identifier, name, english, german) {#identifier, english, german},
#define WINDOW_TEXT(identifier, name, english, german) {#identifier, english, german, &WindowTexts::identifier},
#include "app/Texts.def"
};

constexpr const CatalogueRow& Row(Text text) {
    return CatalogueRows[static_cast<std::size_t>(text)];
}

enum class OwnText {
#define OWN_TEXT(name, english, german) name,
#include "app/OwnTexts.def"
};

// A text of OwnTexts.def in German, or in English for any other language.
std::string_view OwnWords(OwnText text, std::uint8_t language);

// How folders and texts of others call a language: "de" for German, "en" for any other.
constexpr std::string_view LanguageTag(std::uint8_t language) {
    return language == GermanLanguage ? "de" : "en";
}

// Sets `output` to the text of `identifier` (its case counts) in `language`, in UTF-8 with LF between lines. An
// identifier that is not in the catalogue gives a text, too, that says so. In a language that is neither English nor
// German `output` is left as it is, whatever the identifier.
void LookupPrompt(std::string_view identifier, std::uint8_t language, std::string& output);

// Sets all texts of `window` to those in `language`; in one that is neither English nor German they become "". All
// change or, when memory runs out, none does: std::bad_alloc is passed on.
void ApplyLanguage(WindowTexts& window, std::uint8_t language);

} // namespace tessaly
