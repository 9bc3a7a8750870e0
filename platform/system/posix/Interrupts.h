// What an interrupted program must undo. Signal handlers see it, so it is written in an order that suits them.
#pragma once

#include <csignal>
#include <string>
#include <sys/types.h>

namespace tessaly::posix {

// From now on a program that is interrupted by INT, TERM or HUP, as far as they are not ignored, removes the file that
// it is just writing for ReplaceWhole. It ends the processes that it waits for, with all that these started. Then it
// ends as it would without this.
void EndCleanlyWhenInterrupted();

// While it lives the file `path` is removed when the program is interrupted. One at a time counts, the newest.
class RemovedOnInterrupt {
public:
    explicit RemovedOnInterrupt(const std::string& path);
    RemovedOnInterrupt(const RemovedOnInterrupt&) = delete;
    RemovedOnInterrupt& operator=(const RemovedOnInterrupt&) = delete;
    ~RemovedOnInterrupt();
};

// While it lives the processes of the group of `process` are ended when the program is interrupted.
class EndedOnInterrupt {
public:
    explicit EndedOnInterrupt(pid_t process);
    EndedOnInterrupt(const EndedOnInterrupt&) = delete;
    EndedOnInterrupt& operator=(const EndedOnInterrupt&) = delete;
    ~EndedOnInterrupt();

private:
    int mPlace = -1; // for one too many
};

// While it lives no interruption comes through.
class InterruptsHeld {
public:
    InterruptsHeld();
    InterruptsHeld(const InterruptsHeld&) = delete;
    InterruptsHeld& operator=(const InterruptsHeld&) = delete;
    ~InterruptsHeld();

private:
    sigset_t mBefore;
};

} // namespace tessaly::posix
