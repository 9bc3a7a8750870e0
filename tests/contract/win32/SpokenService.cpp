#include "tests/contract/win32/SpokenService.h"

#include <gtest/gtest.h>
#include <oleacc.h>

namespace tessaly {

namespace {

constexpr GUID ServiceClass = {0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr GUID NameId = {0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};
constexpr GUID DescriptionId = {0x4D48DFE4, 0xBD3F, 0x491F, {0xA6, 0x48, 0x49, 0x2D, 0x6F, 0x20, 0xC5, 0x88}};

} // namespace

// Counts no references: it lives as long as the test.
class SpokenService::Service final : public IAccPropServices, public IClassFactory {
public:
    HRESULT WINAPI QueryInterface(REFIID id, void** object) override {
        *object = IsEqualGUID(id, IID_IClassFactory) || IsEqualGUID(id, IID_IUnknown)
                      ? static_cast<void*>(static_cast<IClassFactory*>(this))
                      : static_cast<void*>(static_cast<IAccPropServices*>(this));
        return S_OK;
    }
    ULONG WINAPI AddRef() override { return 2; }
    ULONG WINAPI Release() override { return 1; }
    HRESULT WINAPI CreateInstance(IUnknown* /*outer*/, REFIID id, void** object) override {
        return QueryInterface(id, object);
    }
    HRESULT WINAPI LockServer(BOOL /*lock*/) override { return S_OK; }

    HRESULT WINAPI SetHwndPropStr(HWND window, DWORD part, DWORD child, MSAAPROPID property, LPCWSTR text) override {
        Tell(window, part, child, property, text);
        return S_OK;
    }
    HRESULT WINAPI ClearHwndProps(HWND window, DWORD part, DWORD child, const MSAAPROPID* properties,
                                  int count) override {
        EXPECT_EQ(count, 1);
        Tell(window, part, child, *properties, L"nothing");
        return S_OK;
    }
    HRESULT WINAPI SetPropValue(const BYTE*, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
    HRESULT WINAPI SetPropServer(const BYTE*, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI ClearProps(const BYTE*, DWORD, const MSAAPROPID*, int) override { return E_NOTIMPL; }
    HRESULT WINAPI SetHwndProp(HWND, DWORD, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
    HRESULT WINAPI SetHwndPropServer(HWND, DWORD, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI ComposeHwndIdentityString(HWND, DWORD, DWORD, BYTE**, DWORD*) override { return E_NOTIMPL; }
    HRESULT WINAPI DecomposeHwndIdentityString(const BYTE*, DWORD, HWND*, DWORD*, DWORD*) override { return E_NOTIMPL; }
    HRESULT WINAPI SetHmenuProp(HMENU, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
    HRESULT WINAPI SetHmenuPropStr(HMENU, DWORD, MSAAPROPID, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT WINAPI SetHmenuPropServer(HMENU, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI ClearHmenuProps(HMENU, DWORD, const MSAAPROPID*, int) override { return E_NOTIMPL; }
    HRESULT WINAPI ComposeHmenuIdentityString(HMENU, DWORD, BYTE**, DWORD*) override { return E_NOTIMPL; }
    HRESULT WINAPI DecomposeHmenuIdentityString(const BYTE*, DWORD, HMENU*, DWORD*) override { return E_NOTIMPL; }

    std::vector<ToldToReader> told;

private:
    void Tell(HWND window, DWORD part, DWORD child, const GUID& property, const std::wstring& text) {
        EXPECT_EQ(part, static_cast<DWORD>(OBJID_CLIENT));
        const bool isName = IsEqualGUID(property, NameId) != 0;
        EXPECT_TRUE(isName || IsEqualGUID(property, DescriptionId) != 0);
        told.push_back({window, child, isName, text});
    }
};

SpokenService::SpokenService() : mService(std::make_unique<Service>()) {
    CoInitialize(nullptr);
    EXPECT_TRUE(SUCCEEDED(CoRegisterClassObject(ServiceClass, static_cast<IClassFactory*>(mService.get()),
                                                CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &mRegistered)));
}

SpokenService::~SpokenService() {
    CoRevokeClassObject(mRegistered);
    CoUninitialize();
}

const std::vector<ToldToReader>& SpokenService::Told() const {
    return mService->told;
}

} // namespace tessaly
