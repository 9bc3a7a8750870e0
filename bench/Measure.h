// Measurements in processes of their own. A process fresh from fork has no memory of an earlier measurement to use
// again. So every case pays for its page faults.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

// What a measurement found. It is the work that takes the time, so that it can leave out what it sets up.
struct Outcome {
    double seconds = 0;
    std::int64_t items = 0;     // functions, sections or lines, as the work counts them
    std::int64_t peakBytes = 0; // by how much the peak of the resident memory grew; RunInChild fills it in
};

class Stopwatch {
public:
    double Seconds() const { return std::chrono::duration<double>(Clock::now() - mStart).count(); }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point mStart = Clock::now();
};

// Throws std::runtime_error with `what` unless `good`.
void Check(bool good, const char* what);

// Runs `work` in a child process and returns its outcome. Throws std::runtime_error when the work threw, after
// the child wrote its message to stderr.
Outcome RunInChild(const std::function<Outcome()>& work);

// Adds a benchmark, each iteration of which runs `work` in a child. `bytes` is what the rate counts.
void AddCase(const std::string& name, std::int64_t bytes, const std::function<Outcome()>& work);

} // namespace tessaly
