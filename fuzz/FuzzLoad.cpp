// Loads any bytes as a PSF and checks everything that must hold for every input. The first byte picks the
// code page and the size of the pieces in which the file arrives.
#include "platform/system/CodePages.h"
#include "platform/text/SingleByteCodePage.h"
#include "tests/unit/document/Agreement.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::unique_ptr<tessaly::CodePage> codePages[] = {
        tessaly::MakeSystemCodePage(), tessaly::MakeCodePage("1253"), tessaly::MakeCodePage("932")};
    if (size == 0) {
        return 0;
    }
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t readSize = data[0] & 0x80 ? 1 + (data[0] & 0x3F) : 4096;
    const std::string what = tessaly::FindDisagreement(bytes, *codePages[data[0] % std::size(codePages)], readSize);
    if (!what.empty()) {
        std::fprintf(stderr, "%s\n", what.c_str());
        std::abort();
    }
    return 0;
}
