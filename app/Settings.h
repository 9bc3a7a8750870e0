// The settings, as texts whatever type they are stored with. All are values of one key below HKEY_LOCAL_MACHINE.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

class Registry;

inline constexpr std::string_view SettingsKey = "SOFTWARE\\Ostrel\\OstrelCompiler";

inline constexpr std::string_view LanguageSetting = "Language";
inline constexpr std::string_view CompBatSetting = "FCompBat";           // the batch file that compiles
inline constexpr std::string_view CompFileNameSetting = "FCompFileName"; // the C file it compiles
inline constexpr std::string_view HelpSetting = "FHelp";
inline constexpr std::string_view ProgBlkIconSetting = "FProgBlkIcon";

// The value `valueName` of the key `keyPath` below `root`. A string loses its last character, which is taken for the
// terminating NUL. One stored without a NUL loses a real character, kept on purpose. A number in decimal, read as
// signed: 0xFFFFFFFF gives "-1". "" when there is no such key or value, for other types and when anything fails,
// exceptions of the registry included. Every key that is opened is closed again.
std::string ReadRegValue(Registry& registry, std::uint32_t root, std::string_view keyPath, std::string_view valueName);

// Stores `valueText` as the value `valueName` of the key `keyPath` below `root`; the key is made if it is missing.
// "0" when that worked, "-1" when it did not, also for an empty `valueText`, with which nothing is opened.
// `typeName` is one of these, to the letter:
// - "String": a string with its terminating NUL. The NUL is appended to `valueText` itself: the caller gets it back one
//   character longer, even if the write fails.
// - "Number": the number that LenientValue finds in `valueText`, rounded half to even, in 32 bits. Throws
//   std::range_error when it has no place there; the key then stays open.
// - Any other name: "0", and nothing is written.
// No rights are asked for with the key, so on today's Windows every write is refused and the answer is "-1". The key
// stays open after a write that failed. Both kept on purpose.
std::string WriteRegValue(Registry& registry, std::uint32_t root, std::string_view keyPath, std::string_view typeName,
                          std::string_view valueName, std::string& valueText);

} // namespace tessaly
