// The Qt desktop keeps the contracts.
#include "tests/contract/DesktopContract.h"
#include "tests/contract/qt/QtDriver.h"

namespace tessaly {

INSTANTIATE_TEST_SUITE_P(Qt, DesktopContract,
                         ::testing::Values(DesktopUnderTest{
                             "Qt", [](const Launch& launch) { return std::make_unique<QtDriver>(launch); }}),
                         [](const auto& parameter) { return parameter.param.name; });

} // namespace tessaly
