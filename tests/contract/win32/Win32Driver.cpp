// Nothing is asked of the product but its windows: what is seen is read from the controls.
#include "tests/contract/win32/Win32Driver.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <shlobj.h>
#include <utility>

namespace tessaly {

namespace {

// Of the key in the registry that the tests may write.
constexpr const char* RegistryPath = "SOFTWARE\\Tessaly contract";

constexpr LPARAM Released = static_cast<LPARAM>(0xC0000001);

// Holds modifier keys down for this thread.
class Held {
public:
    explicit Held(int shift) {
        GetKeyboardState(mBefore.data());
        std::array<BYTE, 256> keys = mBefore;
        // A key that is down has the highest bit.
        keys[VK_SHIFT] = static_cast<BYTE>((shift & 1) << 7);
        keys[VK_CONTROL] = static_cast<BYTE>((shift & 2) << 6);
        keys[VK_MENU] = static_cast<BYTE>((shift & 4) << 5);
        SetKeyboardState(keys.data());
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { SetKeyboardState(mBefore.data()); }

private:
    std::array<BYTE, 256> mBefore = {};
};

win32::Application::Settings SettingsOf(const Launch& launch, std::vector<std::string>& helpOpened) {
    return {launch.commandLine, [&helpOpened](HWND, const std::string& path) { helpOpened.push_back(path); }};
}

// An icon of 16 times 16 red pixels.
std::string IconFile() {
    constexpr std::uint32_t side = 16;
    const auto number = [](std::uint32_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i) {
            text += static_cast<char>(value >> (8 * i));
        }
        return text;
    };
    std::string image = number(40, 4) + number(side, 4) + number(side * 2, 4) + number(1, 2) + number(32, 2);
    image.resize(40);
    for (std::uint32_t pixel = 0; pixel < side * side; ++pixel) {
        image += number(0xFFFF0000, 4);
    }
    image.append(side * 4, '\0'); // the mask
    return number(0, 2) + number(1, 2) + number(1, 2) + number(side, 1) + number(side, 1) + number(0, 2) +
           number(1, 2) + number(32, 2) + number(static_cast<std::uint32_t>(image.size()), 4) + number(22, 4) + image;
}

} // namespace

void SetClipboard(std::string_view text) {
    const std::wstring wide = win32::ToWide(text);
    const std::size_t size = (wide.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(GlobalLock(memory), wide.c_str(), size);
    GlobalUnlock(memory);
    ASSERT_TRUE(WaitUntil([] { return OpenClipboard(nullptr) != 0; }));
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
}

Win32Driver::Win32Driver(const Launch& launch) {
    RegDeleteTreeA(HKEY_CURRENT_USER, RegistryPath);
    mDesktop = std::make_unique<win32::Desktop>(SettingsOf(launch, mHelpOpened));
    mFrame = mDesktop->Frame().Handle();
    mDesktop->CodeTree().SetExtent({0, 900, 3000, 4500});
    mDesktop->FuncBody().SetExtent({3300, 900, 6000, 4500});
}

// The end of the program must not reach the next one.
Win32Driver::~Win32Driver() {
    mDesktop.reset();
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        DispatchMessageW(&message);
    }
    RegDeleteTreeA(HKEY_CURRENT_USER, RegistryPath);
}

void Win32Driver::Settle() {
    mDesktop->Loop().RunWaiting();
}

void Win32Driver::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
    PostMessageW(window, message, wParam, lParam);
}

void Win32Driver::PressKey(int keyCode, int shift) {
    Settle();
    const Held held(shift);
    const HWND focus = GetFocus();
    const HWND target = focus != nullptr ? focus : mFrame;
    const bool isSystemKey = (shift & 4) != 0 || keyCode == KeyF10;
    Post(target, isSystemKey ? WM_SYSKEYDOWN : WM_KEYDOWN, static_cast<WPARAM>(keyCode), 1);
    Post(target, isSystemKey ? WM_SYSKEYUP : WM_KEYUP, static_cast<WPARAM>(keyCode), Released);
    Settle();
}

void Win32Driver::Click(HWND window, POINT point) {
    Settle();
    const LPARAM place = MAKELPARAM(point.x, point.y);
    Post(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
    Post(window, WM_LBUTTONUP, 0, place);
    Settle();
}

void Win32Driver::Resize(float width, float height) {
    const int dpi = mDesktop->Frame().Dpi();
    SetWindowPos(mFrame, nullptr, 0, 0, win32::ToPixels(width, dpi), win32::ToPixels(height, dpi),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Settle();
}

void Win32Driver::CloseByUser() {
    Post(mFrame, WM_SYSCOMMAND, SC_CLOSE);
    Settle();
}

void Win32Driver::DestroyFromOutside() {
    DestroyWindow(mFrame);
}

// As Windows does: it does not ask where it ends the session by force.
void Win32Driver::EndSession(bool mayAsk) {
    if (!mayAsk || SendMessageW(mFrame, WM_QUERYENDSESSION, 0, 0) != 0) {
        SendMessageW(mFrame, WM_ENDSESSION, TRUE, 0);
    }
    Settle();
}

void Win32Driver::GoToAnotherWindow() {
    mOtherWindow = CreateWindowExW(0, WC_STATICW, L"another window", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr,
                                   nullptr, GetModuleHandleW(nullptr), nullptr);
    SetActiveWindow(mOtherWindow);
    Settle();
}

void Win32Driver::ComeBack() {
    DestroyWindow(mOtherWindow);
    SetActiveWindow(mFrame);
    Settle();
}

void Win32Driver::DropFile(const std::string& path) {
    const std::wstring wide = win32::ToWide(path);
    const std::size_t size = sizeof(DROPFILES) + (wide.size() + 2) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
    auto* const drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    std::memcpy(drop + 1, wide.c_str(), wide.size() * sizeof(wchar_t));
    GlobalUnlock(memory);
    Post(mFrame, WM_DROPFILES, reinterpret_cast<WPARAM>(memory));
    Settle();
}

bool Win32Driver::IsShown() const {
    return IsWindowVisible(mFrame) != 0;
}

bool Win32Driver::HasEnded() const {
    return IsWindow(mFrame) == 0;
}

bool Win32Driver::TakesInput() const {
    return IsWindowEnabled(mFrame) != 0;
}

std::string Win32Driver::Icon() const {
    return std::to_string(SendMessageW(mFrame, WM_GETICON, ICON_BIG, 0));
}

Extent Win32Driver::Shown(tessaly::Control& control) const {
    RECT rect = {};
    GetWindowRect(dynamic_cast<win32::Child&>(control).Handle(), &rect);
    MapWindowPoints(nullptr, mFrame, reinterpret_cast<POINT*>(&rect), 2);
    const int dpi = mDesktop->Frame().Dpi();
    return {win32::ToTwips(rect.left, dpi), win32::ToTwips(rect.top, dpi), win32::ToTwips(rect.right - rect.left, dpi),
            win32::ToTwips(rect.bottom - rect.top, dpi)};
}

void Win32Driver::ClickItem(TreeItem item) {
    const RECT text = PlaceOfItem(item);
    Click(Control(win32::ControlId::CodeTree), {text.left + 3, (text.top + text.bottom) / 2});
}

void Win32Driver::CollapseItem(TreeItem item) {
    const RECT text = PlaceOfItem(item);
    TVHITTESTINFO hit = {};
    hit.pt = {text.left, (text.top + text.bottom) / 2};
    while (hit.pt.x > 0 && (hit.flags & TVHT_ONITEMBUTTON) == 0) {
        --hit.pt.x;
        SendMessageW(Control(win32::ControlId::CodeTree), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    }
    Click(Control(win32::ControlId::CodeTree), hit.pt);
    EXPECT_FALSE(mDesktop->Tree().IsExpanded(item));
}

// Of its text.
RECT Win32Driver::PlaceOfItem(TreeItem item) {
    Settle(); // an item has its size when it has been painted
    const HTREEITEM shown = mDesktop->Tree().ShownItem(item);
    RECT rect = {};
    std::memcpy(&rect, &shown, sizeof shown);
    EXPECT_NE(SendMessageW(Control(win32::ControlId::CodeTree), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&rect)),
              0)
        << "the item cannot be seen";
    return rect;
}

void Win32Driver::ClickPane() {
    Click(Control(win32::ControlId::FuncBody), {10, 10});
}

// By keys, so that it is done as a user does it: the control counts in UTF-16.
void Win32Driver::SetCaret(std::size_t position) {
    const auto place = static_cast<LONG>(win32::ToWide(PaneShown().substr(0, position)).size());
    CHARRANGE range = {place, place};
    SendMessageW(Control(win32::ControlId::FuncBody), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

void Win32Driver::Type(std::string_view text) {
    Settle();
    for (const wchar_t unit : win32::ToWide(text)) {
        Post(GetFocus(), WM_CHAR, unit, 1);
        Settle();
    }
}

void Win32Driver::Paste(std::string_view text) {
    SetClipboard(text);
    PressKey('V', 2);
}

std::wstring Win32Driver::Shown() const {
    const HWND pane = Control(win32::ControlId::FuncBody);
    GETTEXTLENGTHEX length = {GTL_NUMCHARS | GTL_PRECISE, 1200};
    std::wstring text(
        static_cast<std::size_t>(SendMessageW(pane, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length), 0)) + 1,
        L'\0');
    GETTEXTEX request = {};
    request.cb = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    request.codepage = 1200;
    text.resize(static_cast<std::size_t>(
        SendMessageW(pane, EM_GETTEXTEX, reinterpret_cast<WPARAM>(&request), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::string Win32Driver::PaneShown() const {
    std::string shown = win32::ToUtf8(Shown());
    std::replace(shown.begin(), shown.end(), '\r', '\n');
    return shown;
}

float Win32Driver::PanelWidth(std::int32_t number) const {
    RECT rect = {};
    SendMessageW(Control(win32::ControlId::StatusBar1), SB_GETRECT, static_cast<WPARAM>(number) - 1,
                 reinterpret_cast<LPARAM>(&rect));
    return win32::ToTwips(rect.right - rect.left, mDesktop->Frame().Dpi());
}

std::string Win32Driver::PanelToolTip(std::int32_t number) const {
    NMTTDISPINFOW asked = {};
    asked.hdr.code = TTN_GETDISPINFOW;
    asked.hdr.idFrom = static_cast<UINT_PTR>(number) - 1;
    SendMessageW(Control(win32::ControlId::StatusBar1), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    return win32::ToUtf8(asked.lpszText);
}

std::string Win32Driver::ButtonTip(std::int32_t number) const {
    std::array<wchar_t, 100> text = {};
    SendMessageW(Control(win32::ControlId::VornToolBar), TB_GETBUTTONTEXTW,
                 static_cast<WPARAM>(win32::ControlId::FirstButton + number - 1),
                 reinterpret_cast<LPARAM>(text.data()));
    return win32::ToUtf8(text.data());
}

void Win32Driver::PressButton(std::int32_t number) {
    RECT rect = {};
    const HWND bar = Control(win32::ControlId::VornToolBar);
    ASSERT_NE(SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(number) - 1, reinterpret_cast<LPARAM>(&rect)), 0);
    Click(bar, {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
}

void Win32Driver::ChooseMenu(MenuItem& item) {
    const std::vector<const win32::MenuItem*> menus = mDesktop->MenuBar().Items(nullptr);
    for (std::size_t menu = 0; menu < menus.size() && IsShown(); ++menu) {
        std::vector<const win32::MenuItem*> items = mDesktop->MenuBar().Items(menus[menu]);
        std::erase(items, nullptr); // keys pass over a line
        const auto chosen = std::find(items.begin(), items.end(), &item);
        if (chosen != items.end()) {
            PostOpening(static_cast<std::ptrdiff_t>(menu));
            PostMenuKey(VK_DOWN, chosen - items.begin());
            PostMenuKey(VK_RETURN);
        }
    }
    if (!IsShown()) {
        Post(mFrame, WM_COMMAND, static_cast<WPARAM>(static_cast<win32::MenuItem&>(item).Id()));
    }
    Settle();
}

void Win32Driver::OpenMenuAndLeave(MenuItem& menu) {
    const std::vector<const win32::MenuItem*> menus = mDesktop->MenuBar().Items(nullptr);
    PostOpening(std::find(menus.begin(), menus.end(), &menu) - menus.begin());
    PostMenuKey(VK_ESCAPE, 2); // the drop-down, then the bar
    Settle();
}

// A menu has a loop of its own, so its keys must be there before it begins.
void Win32Driver::PostOpening(std::ptrdiff_t menu) {
    Post(mFrame, WM_SYSCOMMAND, SC_KEYMENU);
    PostMenuKey(VK_RIGHT, menu);
    PostMenuKey(VK_DOWN);
}

void Win32Driver::PostMenuKey(WPARAM key, std::ptrdiff_t times) {
    for (std::ptrdiff_t time = 0; time < times; ++time) {
        Post(mFrame, WM_KEYDOWN, key, 1);
        Post(mFrame, WM_KEYUP, key, Released);
    }
}

std::vector<std::string> Win32Driver::MenuNames(MenuItem* menu) const {
    std::vector<std::string> names;
    for (const win32::MenuItem* const item : mDesktop->MenuBar().Items(menu)) {
        names.push_back(item == nullptr ? "-" : item->Name());
    }
    return names;
}

std::string Win32Driver::FilePath(std::string_view name) const {
    return mFolder.Path(std::string(name));
}

std::string Win32Driver::FolderPath() const {
    return mFolder.Path("");
}

std::string Win32Driver::PicturePath() {
    mFolder.Write("picture.ico", IconFile());
    return mFolder.Path("picture.ico");
}

RegistryPlace Win32Driver::WritablePlace() const {
    return {Registry::CurrentUser, RegistryPath};
}

std::string Win32Driver::StartableCommand() const {
    return "\"" + ProgramBeside("TestChild.exe") + "\"  start \"" + mFolder.Path("start") + "\"  a  \"b c\" ";
}

std::string Win32Driver::UnstartableCommand() {
    mIsStartExpected = false;
    return "\"" + mFolder.Path("no-program.exe") + "\" argument";
}

// The program that was started tells how.
std::vector<SeenProcessStart> Win32Driver::Starts() const {
    std::string answer;
    const auto hasAnswered = [&] {
        try {
            answer = mFolder.Read("start");
        } catch (const std::runtime_error&) {
            return false; // not yet
        }
        return true;
    };
    if (!mIsStartExpected || !WaitUntil(hasAnswered)) {
        return {};
    }
    const std::size_t end = answer.find('\n');
    return {{answer.substr(end + 1), std::stoi(answer.substr(0, end))}};
}

} // namespace tessaly
