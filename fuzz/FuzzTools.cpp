// Gives any bytes to what else reads untrusted text: the warnings of psf check, the settings file, and the mapping
// of compiler messages. The first byte picks one of them. There is nothing to compare; it must just go well.
#include "document/VornSrcObj.h"
#include "platform/RegistryStore.h"
#include "platform/RegistryText.h"
#include "platform/SingleByteCodePage.h"
#include "platform/memory/MemoryFiles.h"
#include "tools/psf/DiagnosticMap.h"
#include "tools/psf/PsfWarnings.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace tessaly;

void Warn(const std::string& bytes) {
    const SingleByteCodePage codePage(Windows1252HighHalf());
    MemoryFiles files;
    files.contents["in"] = bytes;
    VornSrcObj document(files, codePage);
    psf::PsfWarnings warnings(document);
    const Status status = document.LoadFile("in", &warnings);
    const std::vector<psf::PsfWarning> found = warnings.Finish(bytes, codePage);
    for (const psf::PsfWarning& warning : found) {
        if (warning.offset > bytes.size() || warning.text.find(": ") == std::string::npos) {
            std::abort();
        }
    }
    if (status != Status::Done && found.empty()) {
        std::abort(); // a file that does not load has a reason
    }
}

void ReadSettings(const std::string& bytes) {
    RegistryStore store;
    ReadRegistryText(bytes, store);
}

void MapMessages(const std::string& bytes) {
    const SingleByteCodePage codePage(Windows1252HighHalf());
    MemoryFiles files;
    VornSrcObj document(files, codePage);
    document.AddFunction("Main", "", "void Main()\r\n{\r\n}\r\n");
    psf::DiagnosticMap(document, "a.PSF", "/tmp/a.c").Rewrite(bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 3) {
    case 0:
        Warn(bytes);
        break;
    case 1:
        ReadSettings(bytes);
        break;
    default:
        MapMessages(bytes);
        break;
    }
    return 0;
}
