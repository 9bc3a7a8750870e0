// The ways out differ on purpose in what they leave behind: see the header before making them alike.
#include "app/LenientNumber.h"
#include "app/Settings.h"
#include "platform/system/Registry.h"

namespace tessaly {

namespace {

constexpr std::string_view Written = "0";
constexpr std::string_view NotWritten = "-1";

} // namespace

std::string WriteRegValue(Registry& registry, std::uint32_t root, std::string_view keyPath, std::string_view typeName,
                          std::string_view valueName, std::string& valueText) {
    if (valueText.empty()) {
        return std::string(NotWritten);
    }
    Registry::Handle key = 0;
    // Without rights the write below may be refused: kept on purpose, do not mend.
    if (registry.CreateKey(root, keyPath, Registry::NoAccess, key) != Registry::Success) {
        return std::string(NotWritten);
    }
    std::int32_t result = Registry::Success; // of another type name, too: kept on purpose
    if (typeName == "String") {
        valueText += '\0';
        result = registry.SetValue(key, valueName, Registry::StringType, valueText);
    } else if (typeName == "Number") {
        const std::int32_t number = RoundToInteger(LenientValue(valueText));
        result = registry.SetValue(key, valueName, Registry::DwordType,
                                   Registry::DwordBytes(static_cast<std::uint32_t>(number)));
    }
    if (result != Registry::Success) {
        return std::string(NotWritten); // and the key stays open: kept on purpose
    }
    registry.CloseKey(key);
    return std::string(Written);
}

} // namespace tessaly
