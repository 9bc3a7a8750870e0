// A piece of another process's memory, for messages whose parameters are structures. Both processes must be of the same
// bitness, because the structures hold pointers.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>
#include <windows.h>

namespace tessaly::probe {

class RemoteMemory {
public:
    RemoteMemory(HWND window, std::size_t size) : mSize(size) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        mProcess = OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
        if (!mProcess) {
            throw std::runtime_error("the window's process cannot be opened");
        }
        mAddress = VirtualAllocEx(mProcess, nullptr, size, MEM_COMMIT, PAGE_READWRITE);
        if (!mAddress) {
            CloseHandle(mProcess);
            throw std::runtime_error("no memory in the window's process");
        }
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;
    ~RemoteMemory() {
        VirtualFreeEx(mProcess, mAddress, 0, MEM_RELEASE);
        CloseHandle(mProcess);
    }

    HANDLE Process() const { return mProcess; }
    void* At(std::size_t offset) const { return static_cast<char*>(mAddress) + offset; }

    void Write(std::size_t offset, const void* data, std::size_t size) const {
        if (offset + size > mSize || !WriteProcessMemory(mProcess, At(offset), data, size, nullptr)) {
            throw std::runtime_error("cannot write into the window's process");
        }
    }

    void Read(std::size_t offset, void* data, std::size_t size) const {
        if (offset + size > mSize || !ReadProcessMemory(mProcess, At(offset), data, size, nullptr)) {
            throw std::runtime_error("cannot read from the window's process");
        }
    }

    std::wstring ReadText(std::size_t offset, std::size_t count) const {
        std::vector<wchar_t> text(count + 1);
        Read(offset, text.data(), count * sizeof(wchar_t));
        return text.data();
    }

private:
    HANDLE mProcess = nullptr;
    void* mAddress = nullptr;
    std::size_t mSize;
};

} // namespace tessaly::probe
