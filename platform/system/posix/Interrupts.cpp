// The handler calls nothing but what a handler may.
#include "platform/system/posix/Interrupts.h"

#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <unistd.h>

namespace tessaly::posix {

namespace {

constexpr int Interruptions[] = {SIGINT, SIGTERM, SIGHUP};

std::array<char, PATH_MAX> temporary;
std::atomic<bool> hasTemporary = false;
std::array<std::atomic<pid_t>, 64> groups = {}; // 0 for a free place

sigset_t AllInterruptions() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : Interruptions) {
        sigaddset(&set, signal);
    }
    return set;
}

void OnInterrupt(int signal) {
    if (hasTemporary) {
        ::unlink(temporary.data());
    }
    for (const std::atomic<pid_t>& group : groups) {
        if (group != 0) {
            ::kill(-group, SIGTERM); // a shell may take the others for its child's business
        }
    }
    ::signal(signal, SIG_DFL); // what is raised now comes when this handler returns
    ::raise(signal);
}

} // namespace

RemovedOnInterrupt::RemovedOnInterrupt(const std::string& path) {
    hasTemporary = false;
    if (path.size() < temporary.size()) {
        temporary[path.copy(temporary.data(), path.size())] = '\0';
        hasTemporary = true;
    }
}

RemovedOnInterrupt::~RemovedOnInterrupt() {
    hasTemporary = false;
}

EndedOnInterrupt::EndedOnInterrupt(pid_t process) {
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i] == 0) {
            groups[i] = process;
            mPlace = static_cast<int>(i);
            return;
        }
    }
}

EndedOnInterrupt::~EndedOnInterrupt() {
    if (mPlace >= 0) {
        groups[static_cast<std::size_t>(mPlace)] = 0;
    }
}

InterruptsHeld::InterruptsHeld() : mBefore() {
    const sigset_t all = AllInterruptions();
    sigprocmask(SIG_BLOCK, &all, &mBefore);
}

InterruptsHeld::~InterruptsHeld() {
    sigprocmask(SIG_SETMASK, &mBefore, nullptr);
}

void EndCleanlyWhenInterrupted() {
    struct sigaction action = {};
    action.sa_handler = OnInterrupt;
    action.sa_mask = AllInterruptions();
    for (const int signal : Interruptions) {
        struct sigaction before = {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace tessaly::posix
