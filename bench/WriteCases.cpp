// Saving and generating beside one write() of the same bytes from one buffer, which is as fast as the system
// takes them.
#include "bench/Cases.h"
#include "bench/Document.h"
#include "bench/Measure.h"
#include "bench/TestData.h"

#include <fcntl.h>
#include <unistd.h>

namespace tessaly {

namespace {

Outcome WriteDocument(const BenchFiles& files, WriteOperation operation, const std::string& path,
                      std::int64_t expectedSize) {
    BenchDocument document(files.psf);
    const Outcome outcome = MeasureWrite(*document, operation, path);
    Check(outcome.items == expectedSize, "a written file has another size than before");
    return outcome;
}

Outcome WriteOnePiece(const std::string& source, const std::string& path) {
    const std::string bytes = ReadWhole(source);
    unlink(path.c_str());
    const Stopwatch watch;
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    const ssize_t count = write(file, bytes.data(), bytes.size());
    const bool closed = close(file) == 0;
    const double seconds = watch.Seconds();
    Check(closed && count == static_cast<ssize_t>(bytes.size()), "the bytes do not go out in one piece");
    unlink(path.c_str());
    return {.seconds = seconds, .items = count};
}

void AddPair(const BenchFiles& files, WriteOperation operation, const std::string& group, const std::string& folder) {
    const std::string& source = operation == WriteOperation::Save ? files.saved : files.generated;
    const std::int64_t size = FileSize(source);
    const std::string path = folder + "/written";
    AddCase(group + "/tessaly", size,
            [files, operation, path, size] { return WriteDocument(files, operation, path, size); });
    AddCase(group + "/one_piece", size, [source, path] { return WriteOnePiece(source, path); });
}

} // namespace

void AddWriteCases(const BenchFiles& files) {
    AddPair(files, WriteOperation::Save, "save/memory", files.memory);
    AddPair(files, WriteOperation::Generate, "generate/memory", files.memory);
    AddPair(files, WriteOperation::Save, "save/disk", files.disk);
    AddPair(files, WriteOperation::Generate, "generate/disk", files.disk);
}

} // namespace tessaly
