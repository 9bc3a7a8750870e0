// fork, a pipe and getrusage. ru_maxrss of a forked child does not begin with zero, so only its growth counts.
#include "bench/Measure.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessaly {

namespace {

constexpr int Repetitions = 11;

std::int64_t PeakBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return std::int64_t{usage.ru_maxrss} * 1024; // Linux counts it in KiB
}

// The whole life of a child. It leaves without freeing or flushing anything: that is no part of the work, and
// what is unflushed belongs to the parent.
[[noreturn]] void LiveAsChild(const std::function<Outcome()>& work, int pipe) {
    try {
        const std::int64_t before = PeakBytes();
        Outcome outcome = work();
        outcome.peakBytes = PeakBytes() - before;
        _exit(write(pipe, &outcome, sizeof(outcome)) == ssize_t{sizeof(outcome)} ? 0 : 1);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessaly_bench: %s\n", error.what());
        _exit(1);
    }
}

} // namespace

void Check(bool good, const char* what) {
    if (!good) {
        throw std::runtime_error(what);
    }
}

Outcome RunInChild(const std::function<Outcome()>& work) {
    int ends[2] = {-1, -1};
    Check(pipe(ends) == 0, "no pipe");
    const pid_t child = fork();
    Check(child >= 0, "no child process");
    if (child == 0) {
        close(ends[0]);
        LiveAsChild(work, ends[1]);
    }
    close(ends[1]);
    Outcome outcome;
    const ssize_t count = read(ends[0], &outcome, sizeof(outcome));
    close(ends[0]);
    int status = -1;
    waitpid(child, &status, 0);
    Check(count == ssize_t{sizeof(outcome)} && status == 0, "a measurement failed");
    return outcome;
}

void AddCase(const std::string& name, std::int64_t bytes, const std::function<Outcome()>& work) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [bytes, work](benchmark::State& state) {
                                     for (auto _ : state) {
                                         try {
                                             const Outcome outcome = RunInChild(work);
                                             state.SetIterationTime(outcome.seconds);
                                             state.counters["peak_bytes"] = static_cast<double>(outcome.peakBytes);
                                             state.counters["bytes"] = static_cast<double>(bytes);
                                             state.counters["items"] = static_cast<double>(outcome.items);
                                         } catch (const std::exception& error) {
                                             state.SkipWithError(error.what());
                                             break;
                                         }
                                     }
                                     state.SetBytesProcessed(bytes);
                                 })
        ->Iterations(1)
        ->Repetitions(Repetitions)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace tessaly
