// Children are not clipped: a frame around others leaves its inside to the window.
#include "platform/desktop/win32/ModalWindows.h"

#include "platform/desktop/Window.h"
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessaly::win32 {

namespace {

constexpr DWORD ModalStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD ExtendedModalStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

// In twips. The label for the name has room for two lines: some languages need them.
constexpr Size NameClient = {5400, 1800};
constexpr Extent LabelPlace = {150, 150, 5100, 480};
constexpr Extent BoxPlace = {150, 660, 5100, 345};
constexpr Extent OkPlace = {2580, 1245, 1260, 375};
constexpr Extent CancelPlace = {3990, 1245, 1260, 375};

constexpr Size SplashClient = {6600, 3450};
constexpr Extent FramePlace = {120, 30, 6360, 3300};
constexpr Extent LogoPlace = {360, 420, 1440, 1440};
constexpr std::pair<int, Extent> SplashLabelPlaces[] = {
    {ControlId::LblCompanyProduct, {2100, 360, 4200, 270}}, {ControlId::LblProductName, {2100, 660, 4200, 840}},
    {ControlId::LblVersion, {2100, 1560, 4200, 270}},       {ControlId::LblPlatform, {2100, 1860, 4200, 270}},
    {ControlId::LblCompany, {2100, 2460, 4200, 270}},       {ControlId::LblCopyright, {2100, 2760, 4200, 270}}};

constexpr float LargeFont = 2; // times the normal one

// In the LPARAM of a key message: the key was down before.
constexpr LPARAM IsRepeated = 1 << 30;

// The number of the text in Windows' own message boxes, so that the button speaks the language of theirs.
constexpr UINT OkText = 800;

std::wstring SystemText(UINT number, const wchar_t* otherwise) {
    std::array<wchar_t, 64> text = {};
    const int length = LoadStringW(GetModuleHandleW(L"user32.dll"), number, text.data(), static_cast<int>(text.size()));
    return length > 0 ? text.data() : otherwise;
}

// An ampersand in it is one: a label has no access key here.
constexpr Child::Kind LabelKind(int id) {
    return {WC_STATICW, SS_LEFT | SS_NOPREFIX, 0, id};
}

void ShowText(const Child& control, std::string_view text) {
    SetWindowTextW(control.Handle(), ToWide(text).c_str());
}

// The picture that is drawn for this resolution or the next higher one.
std::wstring LogoResource(int dpi) {
    return L"logo_" + std::to_wstring(dpi <= 96 ? 96 : dpi <= 144 ? 144 : 192);
}

RECT Pixels(const Extent& extent, int dpi) {
    return {ToPixels(extent.left, dpi), ToPixels(extent.top, dpi), ToPixels(extent.left + extent.width, dpi),
            ToPixels(extent.top + extent.height, dpi)};
}

} // namespace

ModalWindow::ModalWindow(EventLoop& theLoop, HWND owner, const wchar_t* className, const Size& client)
    : Parent(theLoop, mControls),
      mOwner(owner),
      mClient(client) {
    Create(className, ModalStyle, ExtendedModalStyle, {}, owner);
}

void ModalWindow::Run() {
    Resize(WindowDpi(mOwner));
    PutInTheMiddle();
    mIsShown = true;
    const bool ownerWasEnabled = EnableWindow(mOwner, FALSE) == 0;
    ShowWindow(Handle(), SW_SHOW);
    SetFocus(FirstFocus() != nullptr ? FirstFocus() : Handle());
    loop.RunWhile([this] { return mIsShown && Handle() != nullptr; }, [this](MSG& message) { return Take(message); });
    // Enabled first: Windows gives the activity of a window that goes to one that can have it.
    EnableWindow(mOwner, ownerWasEnabled ? TRUE : FALSE);
    if (Handle() != nullptr) {
        ShowWindow(Handle(), SW_HIDE);
    }
    SetActiveWindow(mOwner);
}

bool ModalWindow::Take(MSG& message) {
    const bool isTaken = TakeMessage(message);
    if (message.message == WM_KEYDOWN && message.wParam == VK_F1) {
        Raise(loop.onHelp);
    }
    return isTaken || (Handle() != nullptr && IsDialogMessageW(Handle(), &message) != 0);
}

void ModalWindow::End() {
    mIsShown = false;
    PostMessageW(Handle(), WM_NULL, 0, 0); // the loop looks again
}

void ModalWindow::Resize(int dpi) {
    if (dpi != Dpi()) {
        SetDpi(dpi);
        Rescaled();
    }
    const SIZE client = {ToPixels(mClient.width, dpi), ToPixels(mClient.height, dpi)};
    const SIZE size = FrameSize(client, ModalStyle, ExtendedModalStyle, false, dpi);
    SetWindowPos(Handle(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ModalWindow::PutInTheMiddle() {
    RECT owner = {};
    GetWindowRect(mOwner, &owner);
    RECT own = {};
    GetWindowRect(Handle(), &own);
    const RECT screen = WorkArea(mOwner);
    const LONG width = own.right - own.left;
    const LONG height = own.bottom - own.top;
    const LONG left =
        std::clamp((owner.left + owner.right - width) / 2, screen.left, std::max(screen.left, screen.right - width));
    const LONG top =
        std::clamp((owner.top + owner.bottom - height) / 2, screen.top, std::max(screen.top, screen.bottom - height));
    SetWindowPos(Handle(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT ModalWindow::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CLOSE:
        Closed();
        End();
        return 0;
    case WM_COMMAND:
        Commanded(LOWORD(wParam));
        return 0;
    case DM_GETDEFID: // so that Enter is OK wherever the focus is
        return MAKELRESULT(IDOK, DC_HASDEFID);
    case WM_SETFOCUS: // also when the window becomes active again
        if (mControls.Owner() != nullptr) {
            mControls.Owner()->TakeKeyboard();
        }
        return 0;
    case WM_DPICHANGED:
        Resize(HIWORD(wParam));
        return 0;
    default:
        return OwnMessage(message, lParam) ? 0 : DefWindowProcW(Handle(), message, wParam, lParam);
    }
}

NameWindow::NameWindow(EventLoop& theLoop, HWND owner)
    : win32::ModalWindow(theLoop, owner, L"UserFuncVarFrm", NameClient),
      mLabel(*this, LabelKind(ControlId::NameLabel), Keyboard::Unused),
      mBox(*this, {WC_EDITW, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, ControlId::FuncVarName}, Keyboard::Used),
      mOk(*this, {WC_BUTTONW, BS_DEFPUSHBUTTON | WS_TABSTOP, 0, IDOK, SystemText(OkText, L"OK")}, Keyboard::Used),
      mCancel(*this, {WC_BUTTONW, BS_PUSHBUTTON | WS_TABSTOP, 0, IDCANCEL}, Keyboard::Used) {
    mLabel.SetExtent(LabelPlace);
    mBox.SetExtent(BoxPlace);
    mOk.SetExtent(OkPlace);
    mCancel.SetExtent(CancelPlace);
}

void NameWindow::SetTexts(const NameTexts& texts) {
    SetWindowTextW(Handle(), ToWide(texts.caption).c_str());
    ShowText(mLabel, texts.label);
    ShowText(mCancel, texts.cancel);
}

std::string NameWindow::FuncVarName() const {
    return ToUtf8(WindowText(mBox.Handle()));
}

void NameWindow::Closed() {
    Raise(onCancel);
}

void NameWindow::Commanded(int id) {
    if (id == IDOK) {
        Raise(onOk);
    } else if (id == IDCANCEL) {
        Raise(onCancel);
    }
}

SplashWindow::SplashWindow(EventLoop& theLoop, HWND owner)
    : win32::ModalWindow(theLoop, owner, L"frmSplash", SplashClient),
      mFrame(*this, {WC_BUTTONW, BS_GROUPBOX, 0, ControlId::Frame1}, Keyboard::Unused) {
    mFrame.SetExtent(FramePlace);
    Parent& window = *this;
    for (const auto& [id, place] : SplashLabelPlaces) {
        mLabels.emplace_back(window, LabelKind(id), Keyboard::Unused).SetExtent(place);
    }
    Rescaled();
}

void SplashWindow::SetLabels(const SplashLabels& labels) {
    for (std::size_t place = 0; place < mLabels.size(); ++place) {
        ShowText(mLabels[place], labels.FromTop()[place]);
    }
}

void SplashWindow::Rescaled() {
    FontOwner font = MakeMessageFont(Dpi(), LargeFont);
    SendMessageW(mLabels[SplashLabels::ProductName].Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    mLargeFont = std::move(font);
    mLogo = LoadPictureResource(LogoResource(Dpi()));
}

// A key that is still down from the menu is none.
bool SplashWindow::TakeMessage(MSG& message) {
    const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    if (!isKey || IsModifierKey(static_cast<int>(message.wParam))) {
        return false;
    }
    if ((message.lParam & IsRepeated) == 0) {
        Raise(onKeyPress);
    }
    return true;
}

// Labels and the frame leave clicks to the window behind them.
bool SplashWindow::OwnMessage(UINT message, LPARAM lParam) {
    if (message == WM_PAINT) {
        Paint();
        return true;
    }
    if (message != WM_LBUTTONDOWN && message != WM_LBUTTONUP) {
        return false;
    }
    const RECT frame = Pixels(FramePlace, Dpi());
    const POINT point = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    const bool isIn = PtInRect(&frame, point) != 0;
    const bool wasPressed = std::exchange(mIsPressed, isIn && message == WM_LBUTTONDOWN);
    if (wasPressed && isIn && message == WM_LBUTTONUP) {
        Raise(onFrameClick);
    }
    return true;
}

void SplashWindow::Paint() {
    PAINTSTRUCT paint = {};
    HDC target = BeginPaint(Handle(), &paint);
    if (mLogo) {
        DrawPicture(target, mLogo.get(), Pixels(LogoPlace, Dpi()));
    }
    EndPaint(Handle(), &paint);
}

} // namespace tessaly::win32
