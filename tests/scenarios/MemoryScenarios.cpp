// The scenarios on the desktop in memory.
#include "tests/contract/MemoryDriver.h"
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {

INSTANTIATE_TEST_SUITE_P(Memory, ProgramScenario,
                         ::testing::Values(DesktopUnderTest{
                             "Memory", [](const Launch& launch) { return std::make_unique<MemoryDriver>(launch); }}),
                         [](const auto& parameter) { return parameter.param.name; });

} // namespace tessaly
