// The scenarios on the real controls of Windows.
#include "tests/contract/win32/Win32Driver.h"
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {

INSTANTIATE_TEST_SUITE_P(Win32, ProgramScenario,
                         ::testing::Values(DesktopUnderTest{
                             "Win32", [](const Launch& launch) { return std::make_unique<Win32Driver>(launch); }}),
                         [](const auto& parameter) { return parameter.param.name; });

} // namespace tessaly
