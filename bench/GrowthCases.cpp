// Documents of ten times and a hundred times as many functions, and a tiny file that announces more than any
// memory holds. Every measurement handles the same number of functions in all, and keeps them. Else a small document
// would profit from memory and caches that the one before it has warmed.
#include "bench/Cases.h"
#include "bench/Document.h"
#include "bench/Measure.h"
#include "bench/TestData.h"

#include <deque>

namespace tessaly {

namespace {

constexpr std::int32_t FunctionsPerMeasurement = 200'000;

struct GrowthDocument {
    std::string path;
    std::int32_t functions;
};

// One load goes ahead of the measured ones, which therefore find code and file in the caches at every size.
Outcome LoadOften(const GrowthDocument& which) {
    BenchDocument(which.path);
    const std::int32_t times = FunctionsPerMeasurement / which.functions;
    std::deque<BenchDocument> documents(static_cast<std::size_t>(times));
    double seconds = 0;
    for (BenchDocument& document : documents) {
        const Stopwatch watch;
        const Status status = document->LoadFile(which.path);
        seconds += watch.Seconds();
        Check(status == Status::Done && document->GetFunctionCount() == which.functions, "the document lost functions");
    }
    return {.seconds = seconds / times, .items = which.functions};
}

Outcome WriteOften(const GrowthDocument& which, WriteOperation operation, const std::string& target) {
    const std::int32_t times = FunctionsPerMeasurement / which.functions;
    std::deque<BenchDocument> documents;
    for (std::int32_t i = 0; i < times; ++i) {
        documents.emplace_back(which.path);
    }
    double seconds = 0;
    for (BenchDocument& document : documents) {
        seconds += MeasureWrite(*document, operation, target).seconds;
    }
    return {.seconds = seconds / times, .items = which.functions};
}

void AddDocument(const GrowthDocument& which, const std::string& order, const std::string& target) {
    const std::int64_t size = FileSize(which.path);
    const std::string end = "/" + order + "/" + std::to_string(which.functions);
    AddCase("growth/load" + end, size, [which] { return LoadOften(which); });
    AddCase("growth/save" + end, size, [which, target] { return WriteOften(which, WriteOperation::Save, target); });
    AddCase("growth/generate" + end, size,
            [which, target] { return WriteOften(which, WriteOperation::Generate, target); });
}

Outcome LoadHostile(const std::string& path) {
    BenchDocument document;
    const Stopwatch watch;
    const Status status = document->LoadFile(path);
    const double seconds = watch.Seconds();
    Check(status == Status::LoadFailed, "the hostile file loads");
    return {.seconds = seconds, .items = document->GetFunctionCount()};
}

} // namespace

void AddGrowthCases(const BenchFiles& files) {
    for (const NameOrder order : {NameOrder::Ascending, NameOrder::Random}) {
        const std::string name = order == NameOrder::Ascending ? "ascending" : "random";
        for (const std::int32_t functions : {1'000, 10'000, 100'000}) {
            const GrowthDocument which{files.disk + "/" + name + std::to_string(functions) + ".PSF", functions};
            RunInChild([which, order] {
                WriteGrowthPsf(which.path, which.functions, order);
                return Outcome();
            });
            AddDocument(which, name, files.memory + "/written");
        }
    }
}

void AddHostileCase(const BenchFiles& files) {
    const std::string path = files.disk + "/hostile.PSF";
    WriteHostilePsf(path);
    AddCase("hostile/tessaly", FileSize(path), [path] { return LoadHostile(path); });
}

} // namespace tessaly
