// The registry of Windows by its ANSI calls. Text goes through the system's code page on its way, so what has no place
// there is stored as "?".
#pragma once

#include "platform/system/Registry.h"
#include "platform/text/CodePage.h"

#include <memory>
#include <string>

namespace tessaly::win32 {

class Registry final : public tessaly::Registry {
public:
    Registry();

    std::int32_t OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;

    // The bytes of every type that holds text (REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ) are converted.
    std::int32_t QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                            std::uint32_t& size) override;
    std::int32_t CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) override;
    std::int32_t CloseKey(Handle key) noexcept override;

private:
    std::string Ansi(std::string_view text) const;

    std::unique_ptr<const CodePage> mCodePage;
};

} // namespace tessaly::win32
