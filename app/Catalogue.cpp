// A text that is not there is no error: it has a text that says so.
#include "app/Catalogue.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace tessaly {

namespace {

// What an identifier has that is not in the table. The German text is not that of `unknown`: kept on purpose.
constexpr CatalogueRow NoSuchIdentifier = {"", "Unknown error!", "Unbekannt Fehler!"};

const CatalogueRow& FindRow(std::string_view identifier) {
    const auto* row = std::find_if(std::begin(CatalogueRows), std::end(CatalogueRows),
                                   [identifier](const CatalogueRow& entry) { return entry.identifier == identifier; });
    return row == std::end(CatalogueRows) ? NoSuchIdentifier : *row;
}

void SetText(const CatalogueRow& row, std::uint8_t language, std::string& output) {
    if (language == EnglishLanguage) {
        output = row.english;
    } else if (language == GermanLanguage) {
        output = row.german;
    }
}

} // namespace

const std::string& WindowTexts::Words(Text text) const {
    const auto member = Row(text).member;
    if (member == nullptr) {
        throw std::out_of_range("the window does not keep " + std::string(Row(text).identifier));
    }
    return this->*member;
}

std::string_view OwnWords(OwnText text, std::uint8_t language) {
    constexpr std::pair<std::string_view, std::string_view> rows[] = {
#define OWN_TEXT(name, english, german) {english, german},
#include "app/OwnTexts.def"
    };
    const auto& [english, german] = rows[static_cast<std::size_t>(text)];
    return language == GermanLanguage ? german : english;
}

void LookupPrompt(std::string_view identifier, std::uint8_t language, std::string& output) {
    SetText(FindRow(identifier), language, output);
}

void ApplyLanguage(WindowTexts& window, std::uint8_t language) {
    WindowTexts texts;
    for (const CatalogueRow& row : CatalogueRows) {
        if (row.member != nullptr) {
            SetText(row, language, texts.*row.member);
        }
    }
    window = std::move(texts);
}

} // namespace tessaly
