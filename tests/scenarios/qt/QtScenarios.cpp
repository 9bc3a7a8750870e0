// The scenarios on the Qt desktop.
#include "tests/contract/qt/QtDriver.h"
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {

INSTANTIATE_TEST_SUITE_P(Qt, ProgramScenario,
                         ::testing::Values(DesktopUnderTest{
                             "Qt", [](const Launch& launch) { return std::make_unique<QtDriver>(launch); }}),
                         [](const auto& parameter) { return parameter.param.name; });

} // namespace tessaly
