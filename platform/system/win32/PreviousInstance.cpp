// Only that the mutex exists counts; nobody ever owns it.
#include "platform/system/win32/PreviousInstance.h"

#include "platform/system/win32/Text.h"

namespace tessaly::win32 {

PreviousInstanceTest::PreviousInstanceTest(const std::string& name) {
    const std::wstring path = L"Local\\" + ToWide(name) + L".Running";
    mMutex = Handle(CreateMutexW(nullptr, FALSE, path.c_str()));
    const DWORD error = GetLastError(); // said also when all went well
    // A copy that runs with more rights than this one may not be touched, but it is there.
    mFound = error == ERROR_ALREADY_EXISTS || (!mMutex && error == ERROR_ACCESS_DENIED);
    if (!mMutex && !mFound) {
        throw std::system_error(static_cast<int>(error), std::system_category(), "CreateMutexW");
    }
}

} // namespace tessaly::win32
