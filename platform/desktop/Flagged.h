// A flag that is up as long as something is being done, also where that fails.
#pragma once

#include <utility>

namespace tessaly {

class Flagged {
public:
    explicit Flagged(bool& flag) : mFlag(flag), mBefore(std::exchange(flag, true)) {}
    Flagged(const Flagged&) = delete;
    Flagged& operator=(const Flagged&) = delete;
    ~Flagged() { mFlag = mBefore; }

private:
    bool& mFlag;
    bool mBefore;
};

} // namespace tessaly
