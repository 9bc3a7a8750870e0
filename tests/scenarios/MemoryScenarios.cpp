// The scenarios on the desktop in memory; and once more where the folder of copies cannot be made, which changes
// nothing else.
#include "tests/contract/MemoryDriver.h"
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {
namespace {

std::unique_ptr<DesktopDriver> StartWithoutCopies(const Launch& launch) {
    auto driver = std::make_unique<MemoryDriver>(launch);
    static_cast<memory::PrivateFiles&>(driver->OwnFiles()).refused.insert(driver->FilePath("recovery"));
    return driver;
}

const DesktopUnderTest Desktops[] = {
    {"Memory", [](const Launch& launch) { return std::make_unique<MemoryDriver>(launch); }},
    {std::string(WithoutCopies), StartWithoutCopies},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory, ProgramScenario, ::testing::ValuesIn(Desktops),
                         [](const auto& parameter) { return parameter.param.name; });

} // namespace tessaly
