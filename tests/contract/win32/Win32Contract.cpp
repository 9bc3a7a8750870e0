// The Windows desktop keeps the contracts, with its real controls.
#include "tests/contract/DesktopContract.h"
#include "tests/contract/win32/Win32Driver.h"

namespace tessaly {

INSTANTIATE_TEST_SUITE_P(Win32, DesktopContract,
                         ::testing::Values(DesktopUnderTest{
                             "Win32", [](const Launch& launch) { return std::make_unique<Win32Driver>(launch); }}),
                         [](const auto& parameter) { return parameter.param.name; });

} // namespace tessaly
