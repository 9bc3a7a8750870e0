// Nothing is asked of the product but its windows: what is seen is read from the controls.
#include "tests/contract/win32/Win32Driver.h"

#include "platform/desktop/Raise.h"
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <shlobj.h>
#include <utility>

namespace tessaly {

namespace {

// Of the key in the registry that the tests may write.
constexpr const char* RegistryPath = "SOFTWARE\\Tessaly contract";

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
    mDesktop = std::make_unique<win32::Desktop>();
    mDesktop->App().commandLine = launch.commandLine;
    dynamic_cast<win32::Application&>(mDesktop->App()).openHelp = [this](HWND, const std::string& path) {
        mHelpOpened.push_back(path);
    };
    mFrame = GetParent(HandleOf(mDesktop->CodeTree()));
    mDesktop->CodeTree().SetExtent({0, 900, 3000, 4500});
    mDesktop->FuncBody().SetExtent({3300, 900, 6000, 4500});
}

// The end of the program must not reach the next one.
Win32Driver::~Win32Driver() {
    mDesktop.reset();
    mOwnFiles.reset();
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        DispatchMessageW(&message);
    }
    RegDeleteTreeA(HKEY_CURRENT_USER, RegistryPath);
}

// A message wakes the loop that has nothing to do any more.
void Win32Driver::Settle() {
    win32::EventLoop& loop = mDesktop->Loop();
    bool isIdle = false;
    const auto onIdle = std::exchange(loop.onIdle, [&, onIdle = loop.onIdle] {
        Raise(onIdle);
        isIdle = true;
        PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
    });
    MSG next = {};
    loop.RunWhile([&] { return !isIdle || PeekMessageW(&next, nullptr, 0, 0, PM_NOREMOVE) != 0; }, loop.mainFilter);
    loop.onIdle = onIdle;
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
    const int dpi = win32::WindowDpi(mFrame);
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

void Win32Driver::GoToAnotherProgram() {
    SendMessageW(mFrame, WM_ACTIVATEAPP, FALSE, 0);
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

HWND Win32Driver::HandleOf(tessaly::Control& control) {
    return dynamic_cast<win32::Child&>(control).Handle();
}

std::string Win32Driver::Caption() const {
    return win32::ToUtf8(win32::WindowText(mFrame));
}

std::string Win32Driver::LabelText(Label& label) const {
    return win32::ToUtf8(win32::WindowText(HandleOf(label)));
}

void Win32Driver::Click(tessaly::Control& control) {
    RECT rect = {};
    GetClientRect(HandleOf(control), &rect);
    Click(HandleOf(control), {rect.right / 2, rect.bottom / 2});
}

// The ampersands of a button are doubled.
std::string Win32Driver::WordsOn(tessaly::Control& control) const {
    std::string words = win32::ToUtf8(win32::WindowText(HandleOf(control)));
    if (dynamic_cast<Button*>(&control) != nullptr) {
        for (std::size_t at = words.find("&&"); at != std::string::npos; at = words.find("&&", at + 1)) {
            words.erase(at, 1);
        }
    }
    return words;
}

std::string Win32Driver::Icon() const {
    return std::to_string(SendMessageW(mFrame, WM_GETICON, ICON_BIG, 0));
}

Extent Win32Driver::Shown(tessaly::Control& control) const {
    RECT rect = {};
    GetWindowRect(HandleOf(control), &rect);
    MapWindowPoints(nullptr, mFrame, reinterpret_cast<POINT*>(&rect), 2);
    const int dpi = win32::WindowDpi(mFrame);
    return {win32::ToTwips(rect.left, dpi), win32::ToTwips(rect.top, dpi), win32::ToTwips(rect.right - rect.left, dpi),
            win32::ToTwips(rect.bottom - rect.top, dpi)};
}

void Win32Driver::ClickItem(TreeItem item) {
    const RECT text = PlaceOfItem(item);
    Click(Tree(), {text.left + 3, (text.top + text.bottom) / 2});
}

void Win32Driver::CollapseItem(TreeItem item) {
    const RECT text = PlaceOfItem(item);
    TVHITTESTINFO hit = {};
    hit.pt = {text.left, (text.top + text.bottom) / 2};
    while (hit.pt.x > 0 && (hit.flags & TVHT_ONITEMBUTTON) == 0) {
        --hit.pt.x;
        SendMessageW(Tree(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    }
    Click(Tree(), hit.pt);
    EXPECT_FALSE(IsExpanded(item));
}

bool Win32Driver::IsExpanded(TreeItem item) const {
    const LRESULT state = SendMessageW(Tree(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(Node(item)), TVIS_EXPANDED);
    return (state & TVIS_EXPANDED) != 0;
}

// The control holds the number of each item.
HTREEITEM Win32Driver::Node(TreeItem item) const {
    HTREEITEM found = nullptr;
    ForEachNode([&](const TVITEMW& node, int) {
        if (node.lParam == static_cast<LPARAM>(item)) {
            found = node.hItem;
        }
    });
    return found;
}

std::vector<std::string> Win32Driver::TreeShown() const {
    std::vector<std::string> lines;
    ForEachNode([&](const TVITEMW& node, int level) {
        const bool isSelected =
            SendMessageW(Tree(), TVM_GETNEXTITEM, TVGN_CARET, 0) == std::bit_cast<LRESULT>(node.hItem);
        lines.push_back(std::string(static_cast<std::size_t>(2 * level), ' ') + win32::ToUtf8(node.pszText) +
                        (isSelected ? "*" : ""));
    });
    return lines;
}

// From top to bottom, with the level of each.
void Win32Driver::ForEachNode(const std::function<void(const TVITEMW& node, int level)>& look) const {
    const auto next = [this](UINT which, HTREEITEM from) {
        return std::bit_cast<HTREEITEM>(SendMessageW(Tree(), TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(from)));
    };
    int level = 0;
    for (HTREEITEM node = next(TVGN_ROOT, nullptr); node != nullptr;) {
        std::array<wchar_t, 300> text = {};
        TVITEMW item = {};
        item.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_PARAM;
        item.hItem = node;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        SendMessageW(Tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        look(item, level);
        HTREEITEM following = next(TVGN_CHILD, node);
        level += following != nullptr ? 1 : 0;
        while (following == nullptr && node != nullptr) {
            following = next(TVGN_NEXT, node);
            if (following == nullptr) {
                node = next(TVGN_PARENT, node);
                --level;
            }
        }
        node = following;
    }
}

// Of its text.
RECT Win32Driver::PlaceOfItem(TreeItem item) {
    Settle(); // an item has its size when it has been painted
    const HTREEITEM shown = Node(item);
    RECT rect = {};
    std::memcpy(&rect, &shown, sizeof shown);
    EXPECT_NE(SendMessageW(Tree(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&rect)), 0)
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
    return win32::ToTwips(rect.right - rect.left, win32::WindowDpi(mFrame));
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
    return "\"" + mFolder.Path("no-program.exe") + "\" argument";
}

// The program that was started tells how.
bool Win32Driver::HasStarted(const std::string& commandLine, std::int32_t windowStyle) const {
    return WaitUntil([&] {
        try {
            return mFolder.Read("start") == std::to_string(windowStyle) + "\n" + commandLine;
        } catch (const std::runtime_error&) {
            return false; // not yet
        }
    });
}

bool Win32Driver::HasStartedNothing() const {
    return GetFileAttributesW(win32::ToWide(mFolder.Path("start")).c_str()) == INVALID_FILE_ATTRIBUTES;
}

} // namespace tessaly
