// Paths go through std::filesystem as UTF-16.
#include "tests/unit/platform/system/win32/TestFolder.h"

#include "platform/system/win32/Text.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <windows.h>

namespace tessaly {

namespace fs = std::filesystem;

TestFolder::TestFolder() {
    const std::wstring stem = L"Tessaly Größe " + std::to_wstring(GetCurrentProcessId()) + L"-";
    for (int number = 0; mPath.empty(); ++number) {
        const fs::path path = fs::temp_directory_path() / (stem + std::to_wstring(number));
        mPath = fs::create_directory(path) ? path : fs::path();
    }
}

TestFolder::~TestFolder() {
    std::error_code ignored; // a process that was killed may still be on its way out
    for (const auto& entry : fs::directory_iterator(mPath, ignored)) {
        SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    WaitUntil([&] { return fs::remove_all(mPath, ignored) != static_cast<std::uintmax_t>(-1) && !ignored; });
}

std::string TestFolder::Path(const std::string& name) const {
    return win32::ToUtf8((mPath / win32::ToWide(name)).make_preferred().wstring());
}

void TestFolder::Write(const std::string& name, const std::string& bytes) const {
    std::ofstream file(mPath / win32::ToWide(name), std::ios::binary);
    if (!(file << bytes).flush()) {
        throw std::runtime_error("cannot write " + name);
    }
}

std::string TestFolder::Read(const std::string& name) const {
    std::ifstream file(mPath / win32::ToWide(name), std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + name);
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool TestFolder::Has(const std::string& name) const {
    return std::ifstream(mPath / win32::ToWide(name)).is_open();
}

std::vector<std::string> TestFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(mPath)) {
        names.push_back(win32::ToUtf8(entry.path().filename().wstring()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool WaitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

std::string ProgramBeside(const std::string& name) {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return win32::ToUtf8((fs::path(path).parent_path() / win32::ToWide(name)).wstring());
}

} // namespace tessaly
