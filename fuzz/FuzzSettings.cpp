// One value is set in a settings file of any bytes. Read again it is there, and every other value is what it was.
// The file comes first in the input; the bytes at its end pick a value and its place.
#include "fuzz/Check.h"
#include "platform/settings/RegistryStore.h"
#include "platform/settings/RegistryText.h"
#include "platform/system/Registry.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <set>

namespace {

using namespace tessaly;
using Value = std::pair<std::uint32_t, std::string>; // type and bytes

constexpr std::uint32_t Roots[] = {Registry::LocalMachine, Registry::CurrentUser, Registry::ClassesRoot};
constexpr const char* Paths[] = {"SOFTWARE\\Ostrel\\OstrelCompiler", "K", "Software\\K"};
constexpr const char* Names[] = {"Language", "FCompBat", "", "a \"b\\", "n\xC3\xA4me"};

std::optional<Value> Get(RegistryStore& store, std::uint32_t root, const std::string& path, const std::string& name) {
    Registry::Handle key = 0;
    if (store.OpenKey(root, path, Registry::QueryAccess, key) != Registry::Success) {
        return std::nullopt;
    }
    Value value;
    std::uint32_t size = 0;
    std::optional<Value> found;
    if (store.QueryValue(key, name, value.first, nullptr, size) == Registry::Success) {
        value.second.resize(size);
        CHECK(store.QueryValue(key, name, value.first, value.second.data(), size) == Registry::Success);
        found = value;
    }
    store.CloseKey(key);
    return found;
}

// What stands between `open` and `close` anywhere in the text: the names of values and keys, among other things.
std::set<std::string> Between(const std::string& text, char open, char close) {
    std::set<std::string> found;
    for (std::size_t begin = text.find(open); begin != text.npos && found.size() < 40;
         begin = text.find(open, begin + 1)) {
        const std::size_t end = text.find(close, begin + 1);
        if (end != text.npos && end - begin < 100) {
            found.insert(text.substr(begin + 1, end - begin - 1));
        }
    }
    return found;
}

std::vector<std::string> Strings(const RegistryStore& store) {
    std::vector<std::string> strings;
    for (const auto& [key, values] : store.keys) {
        for (const auto& [name, value] : values) {
            if (value.type == Registry::StringType) {
                strings.push_back(value.bytes);
            }
        }
    }
    return strings;
}

std::string TextOf(const std::string& file) {
    return file.starts_with("\xFF\xFE") ? DecodeUtf16(file.substr(2)) : file;
}

Value PickValue(FuzzedDataProvider& input) {
    switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
        return {Registry::DwordType, std::string(1, input.ConsumeIntegral<char>()) + std::string(3, '\0')};
    case 1:
        return {Registry::StringType, "C:\\a \"b\" \xC3\xA4;x" + std::string(1, '\0')};
    case 2:
        return {Registry::StringType, std::string("two\nlines\0and more", 18)};
    default:
        return {Registry::BinaryType,
                std::string(static_cast<std::size_t>(input.ConsumeIntegralInRange(0, 40)), '\x7F')};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::uint32_t root = input.PickValueInArray(Roots);
    const std::string path = input.PickValueInArray(Paths);
    const std::string name = input.PickValueInArray(Names);
    const Value value = PickValue(input);
    const std::string file = input.ConsumeRemainingBytesAsString();

    const std::optional<std::string> changed = SetInRegistryText(file, {root, path}, name, {value.first, value.second});
    CHECK(changed.has_value());
    CHECK(SetInRegistryText(*changed, {root, path}, name, {value.first, value.second}) == changed);

    RegistryStore before;
    RegistryStore after;
    // Half a character at the end of UTF-16 is wrong by itself when a new line comes in front of it.
    const std::size_t half = file.starts_with("\xFF\xFE") ? file.size() % 2 : 0;
    const std::size_t wrong = ReadRegistryText(file, before).size();
    CHECK(ReadRegistryText(*changed, after).size() <= wrong + half);
    Registry::Handle key = 0;
    before.CreateKey(root, path, Registry::SetAccess, key);
    before.SetValue(key, name, value.first, value.second);
    before.CloseKey(key);
    CHECK(Get(after, root, path, name) == value);
    CHECK(Strings(before) == Strings(after));

    const std::set<std::string> names = Between(TextOf(file), '"', '"');
    for (const std::string& section : Between(TextOf(file), '\\', ']')) {
        for (const std::string& each : names) {
            for (const std::uint32_t place : Roots) {
                CHECK(Get(before, place, section, each) == Get(after, place, section, each));
            }
        }
    }
    return 0;
}
