// The service is of COM, which most runs never need: it is set up when there is something to tell.
#include "platform/desktop/win32/Spoken.h"

#include "platform/system/win32/Library.h"

#include <array>
#include <oleacc.h>

namespace tessaly::win32 {

namespace {

constexpr GUID ServiceClass = {0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr GUID ServiceId = {0x6E26E776, 0x04F0, 0x495D, {0x80, 0xE4, 0x33, 0x30, 0x35, 0x2E, 0x31, 0x69}};
constexpr GUID NameId = {0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};
constexpr GUID DescriptionId = {0x4D48DFE4, 0xBD3F, 0x491F, {0xA6, 0x48, 0x49, 0x2D, 0x6F, 0x20, 0xC5, 0x88}};

Com<IAccPropServices> Service() {
    static const HRESULT started =
        LibraryFunction<decltype(&CoInitialize)>(L"ole32.dll", "CoInitialize")(nullptr); // for the whole run
    const auto create = LibraryFunction<decltype(&CoCreateInstance)>(L"ole32.dll", "CoCreateInstance");
    void* service = nullptr;
    if (FAILED(started) || FAILED(create(ServiceClass, nullptr, CLSCTX_INPROC_SERVER, ServiceId, &service))) {
        return nullptr;
    }
    return Com<IAccPropServices>(static_cast<IAccPropServices*>(service));
}

} // namespace

// The service raises no events of its own.
void DescribeControl(HWND control, LONG child, const std::wstring& description) {
    const Com<IAccPropServices> service = Service();
    if (!service) {
        return;
    }
    const auto part = static_cast<DWORD>(OBJID_CLIENT);
    if (description.empty()) {
        service->ClearHwndProps(control, part, static_cast<DWORD>(child), &DescriptionId, 1);
    } else {
        service->SetHwndPropStr(control, part, static_cast<DWORD>(child), DescriptionId, description.c_str());
    }
    NotifyWinEvent(EVENT_OBJECT_DESCRIPTIONCHANGE, control, OBJID_CLIENT, child);
}

void DescribeItem(HWND tree, HTREEITEM item, const std::wstring& description) {
    const LRESULT number = SendMessageW(tree, TVM_MAPHTREEITEMTOACCID, reinterpret_cast<WPARAM>(item), 0);
    if (number != 0) {
        DescribeControl(tree, static_cast<LONG>(number), description);
    }
}

void NameByLabel(HWND control) {
    std::array<wchar_t, 256> name = {};
    const int length = GetWindowTextW(GetWindow(control, GW_HWNDPREV), name.data(), static_cast<int>(name.size()));
    const Com<IAccPropServices> service = length > 0 ? Service() : nullptr;
    if (service) {
        service->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, NameId, name.data());
    }
}

} // namespace tessaly::win32
