// Work that other programs do: several at a time, told of in order.
#pragma once

#include "platform/system/Process.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tessaly::psf {

class Job {
public:
    virtual ~Job() = default;

    // Starts it, or ends it where one of that does not go well. False while it needs something that another job or
    // program has. With `mayWait` it waits for what other programs have.
    virtual bool Start(bool mayWait) = 0;

    // What it waits for; null once it has ended.
    virtual RunningProcess* Process() = 0;

    // Looks at its process. Whether it has ended.
    virtual bool HasEnded() = 0;

    // Says all that is to be said, and returns the exit status.
    virtual int Tell() = 0;
};

// Runs `jobs`, at most `count` at a time, and tells of each when all before it are done. A job that cannot start yet
// lets those behind it go first. Returns the first status that is not Success.
int RunJobs(std::vector<std::unique_ptr<Job>> jobs, std::size_t count);

} // namespace tessaly::psf
