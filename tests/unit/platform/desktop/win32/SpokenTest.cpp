// What screen readers are told. Wine has neither the service nor numbers of items: both are played here.
#include "tests/contract/win32/Win32Driver.h"

#include <gtest/gtest.h>
#include <oleacc.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

constexpr GUID ServiceClass = {0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr GUID DescriptionId = {0x4D48DFE4, 0xBD3F, 0x491F, {0xA6, 0x48, 0x49, 0x2D, 0x6F, 0x20, 0xC5, 0x88}};
constexpr DWORD NumberOfItem = 7;

// What the service was told of a window, or of an item in it.
struct Told {
    HWND window;
    DWORD child;
    bool isName; // else a description
    std::wstring text;

    bool operator==(const Told&) const = default;
};

std::vector<Told> toldToService;

constexpr GUID NameId = {0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};

// Counts no references: it lives as long as the test.
class Service final : public IAccPropServices, public IClassFactory {
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

private:
    static void Tell(HWND window, DWORD part, DWORD child, const GUID& property, const std::wstring& text) {
        EXPECT_EQ(part, static_cast<DWORD>(OBJID_CLIENT));
        const bool isName = IsEqualGUID(property, NameId) != 0;
        EXPECT_TRUE(isName || IsEqualGUID(property, DescriptionId) != 0);
        toldToService.push_back({window, child, isName, text});
    }
};

// The service in the system's place, as long as it lives.
class SpokenTest : public testing::Test {
protected:
    void SetUp() override {
        toldToService.clear();
        CoInitialize(nullptr);
        ASSERT_TRUE(SUCCEEDED(CoRegisterClassObject(ServiceClass, static_cast<IClassFactory*>(&mService),
                                                    CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &mRegistered)));
    }
    void TearDown() override {
        CoRevokeClassObject(mRegistered);
        CoUninitialize();
    }

private:
    Service mService;
    DWORD mRegistered = 0;
};

WNDPROC treeProcedure = nullptr;

LRESULT CALLBACK AnswerNumber(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == TVM_MAPHTREEITEMTOACCID ? static_cast<LRESULT>(NumberOfItem)
                                              : CallWindowProcW(treeProcedure, window, message, wParam, lParam);
}

TEST_F(SpokenTest, TheServiceOfTheSystemIsToldOfMarks) {
    Win32Driver user{Launch{}};
    TreeView& tree = user.TheDesktop().CodeTree();
    HWND control = user.Control(win32::ControlId::CodeTree);
    treeProcedure =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(AnswerNumber)));
    const TreeItem item = tree.Add(TreeItem::None, "a", "A");
    tree.SetMark(item, Mark::Error, "2 \xC3\xA4rrors");
    tree.SetMark(item, Mark::None, "");
    SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(treeProcedure));
    EXPECT_EQ(toldToService, (std::vector<Told>{{control, NumberOfItem, false, L"2 \u00E4rrors"},
                                                {control, NumberOfItem, false, L"nothing"}}));
}

TEST_F(SpokenTest, ThePaneHasTheNameOfItsLabelAndNotItsText) {
    Win32Driver user{Launch{}};
    user.TheDesktop().FuncLabel().SetCaption("Funktionen");
    user.TheDesktop().FuncBody().SetText("int a;");
    HWND pane = user.Control(win32::ControlId::FuncBody);
    SendMessageW(pane, WM_GETOBJECT, 0, OBJID_CLIENT); // as the library of screen readers asks
    ASSERT_FALSE(toldToService.empty());
    EXPECT_EQ(toldToService.back(), (Told{pane, CHILDID_SELF, true, L"Funktionen"}));
}

} // namespace
} // namespace tessaly
