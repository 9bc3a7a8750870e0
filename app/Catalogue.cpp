#include "app/Catalogue.h"

#include "app/CatalogueTable.h"

#include <algorithm>
#include <iterator>

namespace tessaly {

namespace {

// What an identifier has that is not in the table. The German text is not that of `unknown`: kept on purpose.
constexpr CatalogueRow NoSuchIdentifier = {"", "Unknown error!", "Unbekannt Fehler!"};

const CatalogueRow& FindRow(std::string_view identifier) {
    const auto* row = std::find_if(std::begin(CatalogueRows), std::end(CatalogueRows),
                                   [identifier](const CatalogueRow& entry) { return entry.identifier == identifier; });
    return row == std::end(CatalogueRows) ? NoSuchIdentifier : *row;
}

} // namespace

void LookupPrompt(std::string_view identifier, std::uint8_t language, std::string& output) {
    if (language == EnglishLanguage) {
        output = FindRow(identifier).english;
    } else if (language == GermanLanguage) {
        output = FindRow(identifier).german;
    }
}

} // namespace tessaly
