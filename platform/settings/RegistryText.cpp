// What stands in the file goes straight into the store, line by line.
#include "platform/settings/RegistryText.h"

#include "platform/settings/RegistryScan.h"
#include "platform/settings/RegistryStore.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/Utf16.h"

#include <system_error>
#include <utility>

namespace tessaly {

namespace {

class Reader {
public:
    explicit Reader(RegistryStore& store) : mStore(store) {}
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() { CloseKey(); }

    // The values below a key that cannot be read must not end up in the key before it.
    void Take(const RegistryEntry& entry) {
        if (entry.isKey) {
            CloseKey();
        }
        if (!entry.error.empty()) {
            return;
        }
        if (entry.isKey && entry.deletes) {
            mStore.DeleteKey(entry.root, entry.path);
        } else if (entry.isKey) {
            mIsOpen = mStore.CreateKey(entry.root, entry.path, Registry::SetAccess, mKey) == Registry::Success;
        } else if (mIsOpen && entry.deletes) {
            mStore.DeleteValue(mKey, *entry.name);
        } else if (mIsOpen) {
            mStore.SetValue(mKey, *entry.name, entry.type, entry.bytes);
        }
    }

private:
    void CloseKey() {
        if (std::exchange(mIsOpen, false)) {
            mStore.CloseKey(mKey);
        }
    }

    RegistryStore& mStore;
    Registry::Handle mKey = 0;
    bool mIsOpen = false;
};

} // namespace

std::string ErrorText(const std::string& path, const RegistryTextError& error) {
    const std::string line = error.line > 0 ? ":" + std::to_string(error.line) : "";
    return path + line + ": " + error.text;
}

std::vector<RegistryTextError> ReadRegistryText(std::string_view bytes, RegistryStore& store) {
    const std::string_view bom = RegistryBom(bytes);
    bytes.remove_prefix(bom.size());
    std::string decoded;
    if (bom == Utf16Bom) {
        decoded = DecodeUtf16(bytes);
        bytes = decoded;
    }
    std::vector<RegistryTextError> errors;
    Reader reader(store);
    for (RegistryScanner scanner(bytes); scanner.Next();) {
        const RegistryEntry& entry = scanner.Entry();
        if (!entry.error.empty()) {
            errors.push_back({entry.number, entry.error});
        }
        reader.Take(entry);
    }
    return errors;
}

std::vector<RegistryTextError> ReadSettingsFile(SequentialFiles& files, const std::string& path, RegistryStore& store) {
    std::string bytes;
    try {
        bytes = ReadWhole(files, path, LargestSettingsFile);
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::no_such_file_or_directory) {
            return {};
        }
        return {{0, "the settings file cannot be read: " + error.code().message()}};
    }
    return ReadRegistryText(bytes, store);
}

} // namespace tessaly
