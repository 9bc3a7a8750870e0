// The scenarios on the real controls of Windows.
#include "tests/scenarios/ProgramScenario.h"
#include "tests/win32/Win32Driver.h"

namespace tessaly {

INSTANTIATE_TEST_SUITE_P(Win32, ProgramScenario,
                         ::testing::Values(DesktopUnderTest{
                             "Win32", [](const Launch& launch) { return std::make_unique<Win32Driver>(launch); }}),
                         [](const auto& parameter) { return parameter.param.name; });

} // namespace tessaly
