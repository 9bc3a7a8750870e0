// The warnings of psf check on any bytes: each stands in the file, and a file that does not load has one.
#include "document/VornSrcObj.h"
#include "fuzz/Check.h"
#include "platform/text/SingleByteCodePage.h"
#include "programs/psf/base/PsfWarnings.h"
#include "tests/desktop/SequentialFiles.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const SingleByteCodePage codePage(Windows1252HighHalf());
    memory::SequentialFiles files;
    files.contents["in"] = bytes;
    VornSrcObj document(files, codePage);
    psf::PsfWarnings warnings(true);
    const Status status = document.LoadFile("in", &warnings);
    const std::vector<psf::PsfWarning> found = warnings.Finish(document, bytes, codePage);
    for (const psf::PsfWarning& warning : found) {
        CHECK(warning.offset <= bytes.size());
        CHECK(!warning.member.empty() && !warning.text.empty() && !warning.rule.empty());
    }
    CHECK(status == Status::Done || !found.empty());
    return 0;
}
