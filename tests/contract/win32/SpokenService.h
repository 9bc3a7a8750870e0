// The service that keeps for screen readers what they are told, in the place of the system's: Wine has none.
#pragma once

#include "platform/desktop/win32/Headers.h"

#include <memory>
#include <string>
#include <vector>

namespace tessaly {

// What the service was told of a window, or of an item in it.
struct ToldToReader {
    HWND window = nullptr;
    DWORD child = 0;
    bool isName = false; // else a description
    std::wstring text;   // "nothing" where it was taken away

    bool operator==(const ToldToReader&) const = default;
};

// There as long as it lives.
class SpokenService {
public:
    SpokenService();
    SpokenService(const SpokenService&) = delete;
    SpokenService& operator=(const SpokenService&) = delete;
    ~SpokenService();

    const std::vector<ToldToReader>& Told() const;

private:
    class Service;
    std::unique_ptr<Service> mService;
    DWORD mRegistered = 0;
};

} // namespace tessaly
