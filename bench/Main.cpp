// The benchmark program: makes its data, measures, removes everything. The data is made in child processes, so
// that this process, of which every measurement gets a copy, stays small.
#include "bench/Cases.h"
#include "bench/Document.h"
#include "bench/Measure.h"
#include "bench/TestData.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

namespace tessaly {

namespace {

constexpr std::int64_t LargeSize = 100'000'000;

// A new folder in `parent`, gone with everything in it at the end.
class ScratchFolder {
public:
    explicit ScratchFolder(const std::string& parent) : mPath(parent + "/tessaly_bench.XXXXXX") {
        Check(mkdtemp(mPath.data()) != nullptr, "cannot make a folder for the test data");
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }

    const std::string& Path() const { return mPath; }

private:
    std::string mPath;
};

// Takes `option` and its value off the command line and returns the value.
std::string TakeOption(std::vector<char*>& arguments, const std::string& option, const std::string& otherwise) {
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const std::string text = *argument;
        if (text.starts_with(option)) {
            arguments.erase(argument);
            return text.substr(option.size());
        }
    }
    return otherwise;
}

BenchFiles MakeFiles(const std::string& disk, const std::string& memory) {
    BenchFiles files{.disk = disk,
                     .memory = memory,
                     .psf = disk + "/large.PSF",
                     .ini = disk + "/large.ini",
                     .saved = disk + "/saved.PSF",
                     .generated = disk + "/generated.c"};
    files.functions = RunInChild([&files] { return Outcome{.items = WriteLargePsf(files.psf, LargeSize)}; }).items;
    files.keys = RunInChild([&files] { return Outcome{.items = WriteLargeIni(files.ini, LargeSize)}; }).items;
    RunInChild([&files] {
        BenchDocument document(files.psf);
        Check(document->SaveFile(files.saved) == Status::Done, "cannot save");
        Check(document->BuildCCodeFile(files.generated) == Status::Done, "cannot generate");
        return Outcome();
    });
    return files;
}

// Into the page cache, where the files stay as long as there is memory.
void ReadAll(const BenchFiles& files) {
    for (const auto& entry : std::filesystem::directory_iterator(files.disk)) {
        const std::string path = entry.path();
        RunInChild([&path] { return Outcome{.items = static_cast<std::int64_t>(ReadWhole(path).size())}; });
    }
}

int Run(std::vector<char*> arguments) {
    const ScratchFolder disk(TakeOption(arguments, "--disk=", "/tmp"));
    const ScratchFolder memory(TakeOption(arguments, "--memory=", "/dev/shm"));
    // Cases take turns, so that a slow minute of the machine is not one case's alone.
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleave.data());
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 64;
    }
    const BenchFiles files = MakeFiles(disk.Path(), memory.Path());
    AddLoadCases(files);
    AddWriteCases(files);
    AddGrowthCases(files);
    AddHostileCase(files);
    AddCompletionCases(files);
    AddFindCases();
    ReadAll(files);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace

} // namespace tessaly

int main(int argc, char** argv) {
    try {
        return tessaly::Run(std::vector<char*>(argv, argv + argc));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessaly_bench: %s\n", error.what());
        return 1;
    }
}
