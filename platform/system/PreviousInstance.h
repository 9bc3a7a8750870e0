// The test for another running copy of this program: the first thing that the program does, so no part of a desktop.
#pragma once

namespace tessaly {

class PreviousInstanceTest {
public:
    virtual ~PreviousInstanceTest() = default;

    // Whether another copy of this program was running already when this one was started.
    virtual bool PreviousInstance() const = 0;
};

} // namespace tessaly
