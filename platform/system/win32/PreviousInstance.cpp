// Only that the mutex exists counts; nobody ever owns it.
#include "platform/system/PreviousInstance.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

namespace tessaly {

std::string InstanceName(const Environment& /*environment*/) {
    return "Tessaly";
}

PreviousInstanceTest::PreviousInstanceTest(const std::string& name) {
    const std::wstring path = L"Local\\" + win32::ToWide(name) + L".Running";
    const auto mutex = std::make_shared<win32::Handle>(CreateMutexW(nullptr, FALSE, path.c_str()));
    const DWORD error = GetLastError(); // said also when all went well
    // A copy that runs with more rights than this one may not be touched, but it is there.
    mFound = error == ERROR_ALREADY_EXISTS || (!*mutex && error == ERROR_ACCESS_DENIED);
    if (!*mutex && !mFound) {
        throw std::system_error(static_cast<int>(error), std::system_category(), "CreateMutexW");
    }
    mHeld = mutex;
}

} // namespace tessaly
