// Each measured write makes a new file: emptying an old one takes time as well.
#include "bench/Document.h"

#include "bench/TestData.h"

#include <unistd.h>

namespace tessaly {

BenchDocument::BenchDocument() : mCodePage(Windows1252HighHalf()), mDocument(mFiles, mCodePage) {}

BenchDocument::BenchDocument(const std::string& path) : BenchDocument() {
    Check(mDocument.LoadFile(path) == Status::Done, "a document does not load");
}

Outcome MeasureWrite(VornSrcObj& document, WriteOperation operation, const std::string& path) {
    unlink(path.c_str());
    const Stopwatch watch;
    const Status status = operation == WriteOperation::Save ? document.SaveFile(path) : document.BuildCCodeFile(path);
    const double seconds = watch.Seconds();
    Check(status == Status::Done, "a document cannot be written");
    const std::int64_t size = FileSize(path);
    unlink(path.c_str());
    return {.seconds = seconds, .items = size};
}

} // namespace tessaly
