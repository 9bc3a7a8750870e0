// The desktop in memory keeps the contracts.
#include "tests/contract/DesktopContract.h"
#include "tests/contract/MemoryDriver.h"

namespace tessaly {

INSTANTIATE_TEST_SUITE_P(Memory, DesktopContract,
                         ::testing::Values(DesktopUnderTest{
                             "Memory", [](const Launch& launch) { return std::make_unique<MemoryDriver>(launch); }}),
                         [](const auto& parameter) { return parameter.param.name; });

} // namespace tessaly
