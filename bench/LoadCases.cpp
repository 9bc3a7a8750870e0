// Loading 100 MB: the document, the least that a loader must do, two commands and two readers of INI files.
// All but the commands end with everything in memory; nobody frees anything while the clock runs.
#include "bench/Cases.h"
#include "bench/Document.h"
#include "bench/Measure.h"
#include "bench/TestData.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <glib.h>
#include <ini.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace tessaly {

namespace {

Outcome LoadDocument(const BenchFiles& files) {
    BenchDocument document;
    const Stopwatch watch;
    const Status status = document->LoadFile(files.psf);
    const double seconds = watch.Seconds();
    Check(status == Status::Done && document->GetFunctionCount() == files.functions, "the document lost functions");
    return {.seconds = seconds, .items = document->GetFunctionCount()};
}

struct Block {
    char* bytes = nullptr;
    std::size_t size = 0;
};

// A whole file in memory that nobody has touched before.
Block ReadFresh(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    Check(file >= 0 && fstat(file, &status) == 0, "cannot open the test data");
    Block block;
    block.size = static_cast<std::size_t>(status.st_size);
    block.bytes = static_cast<char*>(std::malloc(block.size));
    std::size_t done = 0;
    while (done < block.size) {
        const ssize_t count = read(file, block.bytes + done, block.size - done);
        Check(count > 0, "cannot read the test data");
        done += static_cast<std::size_t>(count);
    }
    close(file);
    return block;
}

struct Line {
    const char* begin;
    std::size_t size;
};

// The ideal loop: no decoding, no sections, no names, only the lines in memory of their own and their places.
Outcome LoadIdeal(const BenchFiles& files) {
    const Stopwatch watch;
    const Block file = ReadFresh(files.psf);
    auto* text = static_cast<char*>(std::malloc(file.size));
    // Room for the most lines that there can be; what is not used is never touched and costs nothing.
    auto* index = static_cast<Line*>(std::malloc((file.size / 2 + 1) * sizeof(Line)));
    std::size_t lines = 0;
    char* target = text;
    const char* const end = file.bytes + file.size;
    for (const char* line = file.bytes; line < end;) {
        const auto* cr = static_cast<const char*>(std::memchr(line, '\r', static_cast<std::size_t>(end - line)));
        const auto size = static_cast<std::size_t>((cr != nullptr ? cr : end) - line);
        std::memcpy(target, line, size);
        index[lines++] = {target, size};
        target += size;
        line += size + 2;
    }
    benchmark::DoNotOptimize(text);
    benchmark::DoNotOptimize(index);
    const double seconds = watch.Seconds();
    Check(static_cast<std::size_t>(target - text) + 2 * lines == file.size, "the ideal loop lost bytes");
    return {.seconds = seconds, .items = static_cast<std::int64_t>(lines)};
}

struct Pairs {
    char* target = nullptr;
    std::int64_t count = 0;
};

// The least that a program with this reader must do: the reader forgets name and value after the call.
int KeepPair(void* user, const char*, const char* name, const char* value) {
    auto* pairs = static_cast<Pairs*>(user);
    pairs->target = stpcpy(pairs->target, name) + 1;
    pairs->target = stpcpy(pairs->target, value) + 1;
    ++pairs->count;
    return 1;
}

Outcome LoadInih(const BenchFiles& files) {
    const Stopwatch watch;
    Pairs pairs;
    // "=" and CR LF of each pair make room for its two NULs.
    auto* text = static_cast<char*>(std::malloc(static_cast<std::size_t>(FileSize(files.ini))));
    pairs.target = text;
    const int result = ini_parse(files.ini.c_str(), KeepPair, &pairs);
    benchmark::DoNotOptimize(text);
    const double seconds = watch.Seconds();
    Check(result == 0 && pairs.count == files.keys, "inih lost keys");
    return {.seconds = seconds, .items = pairs.count};
}

Outcome LoadKeyFile(const BenchFiles& files) {
    const Stopwatch watch;
    GKeyFile* keyFile = g_key_file_new();
    const bool loaded = g_key_file_load_from_file(keyFile, files.ini.c_str(), G_KEY_FILE_NONE, nullptr) != 0;
    const double seconds = watch.Seconds();
    Check(loaded, "GKeyFile does not load");
    std::int64_t keys = 0;
    gsize groupCount = 0;
    gchar** groups = g_key_file_get_groups(keyFile, &groupCount);
    for (gsize i = 0; i < groupCount; ++i) {
        gsize count = 0;
        g_strfreev(g_key_file_get_keys(keyFile, groups[i], &count, nullptr));
        keys += static_cast<std::int64_t>(count);
    }
    Check(keys == files.keys, "GKeyFile lost keys");
    return {.seconds = seconds, .items = keys};
}

// A command from before its start to after its end, its output in `output`.
Outcome RunCommand(std::vector<std::string> words, const std::string& output) {
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY, 0);
    int status = -1;
    pid_t child = -1;
    const Stopwatch watch;
    const int failure = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    Check(failure == 0 && waitpid(child, &status, 0) == child, "a command does not start");
    const double seconds = watch.Seconds();
    Check(status == 0, "a command failed");
    return {.seconds = seconds};
}

Outcome RunDos2Unix(const BenchFiles& files) {
    const std::string target = files.memory + "/dos2unix";
    const Outcome outcome = RunCommand({"dos2unix", "-q", "-n", files.psf, target}, "/dev/null");
    Check(FileSize(target) < FileSize(files.psf), "dos2unix did nothing");
    unlink(target.c_str());
    return outcome;
}

} // namespace

void AddLoadCases(const BenchFiles& files) {
    const std::int64_t psf = FileSize(files.psf);
    const std::int64_t ini = FileSize(files.ini);
    AddCase("load/tessaly", psf, [files] { return LoadDocument(files); });
    AddCase("load/ideal", psf, [files] { return LoadIdeal(files); });
    AddCase("load/iconv", psf, [files] {
        return RunCommand({"iconv", "-f", "CP1252", "-t", "UTF-8", files.psf}, "/dev/null");
    });
    AddCase("load/dos2unix", psf, [files] { return RunDos2Unix(files); });
    AddCase("load/inih", ini, [files] { return LoadInih(files); });
    AddCase("load/gkeyfile", ini, [files] { return LoadKeyFile(files); });
}

} // namespace tessaly
