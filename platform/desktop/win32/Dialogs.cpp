// The dialogs change the working directory while they are shown, so it is put back. The numbers of buttons, icons and
// results of a message box are those of Windows.
#include "platform/desktop/win32/Dialogs.h"

#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::win32 {

namespace {

constexpr const wchar_t* Library = L"comdlg32.dll";

// Room for any path that Windows takes.
constexpr std::size_t PathRoom = 32768;

// The working directory, which the dialogs change while they are shown and the program must not, whatever happens.
class WorkingDirectory {
public:
    WorkingDirectory() : mPath(PathRoom, L'\0') {
        GetCurrentDirectoryW(static_cast<DWORD>(mPath.size()), mPath.data());
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    ~WorkingDirectory() { SetCurrentDirectoryW(mPath.c_str()); }

private:
    std::wstring mPath;
};

// "description|pattern|..." as the dialogs want it: NULs between, and one more at the end.
std::wstring DialogFilter(std::string_view filter) {
    std::wstring wide = ToWide(filter);
    std::replace(wide.begin(), wide.end(), L'|', L'\0');
    return wide + L'\0';
}

DWORD FilterCount(std::string_view filter) {
    return static_cast<DWORD>(std::count(filter.begin(), filter.end(), '|') + 1) / 2;
}

} // namespace

// Without a flag that asks for it no dialog questions what is chosen, and without a default extension none is added.
std::optional<std::string> FileDialog::Ask(Kind kind, const FileDialogSettings& settings) {
    using Dialog = BOOL(WINAPI*)(OPENFILENAMEW*);
    const auto dialog = LibraryFunction<Dialog>(Library, kind == Kind::Open ? "GetOpenFileNameW" : "GetSaveFileNameW");
    const WorkingDirectory kept;
    const std::wstring filter = DialogFilter(settings.filter);
    const auto wanted = static_cast<DWORD>(std::max(settings.filterIndex, 1));
    std::wstring path = ToWide(settings.fileName);
    path.resize(PathRoom, L'\0');
    const std::wstring title = ToWide(settings.title);
    OPENFILENAMEW data = {};
    data.lStructSize = sizeof data;
    data.hwndOwner = OwnerOfDialogs(mMainWindow);
    data.lpstrFilter = filter.c_str();
    data.nFilterIndex = std::min(wanted, FilterCount(settings.filter));
    data.lpstrFile = path.data();
    data.nMaxFile = static_cast<DWORD>(path.size());
    data.lpstrTitle = title.empty() ? nullptr : title.c_str();
    data.Flags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_NOCHANGEDIR;
    if ((settings.flags & HideReadOnly) != 0) {
        data.Flags |= OFN_HIDEREADONLY;
    }
    const auto lastError = LibraryFunction<decltype(&CommDlgExtendedError)>(Library, "CommDlgExtendedError");
    BOOL isChosen = dialog(&data);
    if (isChosen == 0 && lastError() == FNERR_INVALIDFILENAME) { // not shown at all: without the name, then
        path.assign(PathRoom, L'\0');
        data.lpstrFile = path.data();
        isChosen = dialog(&data);
    }
    return isChosen != 0 ? std::optional(ToUtf8(path.c_str())) : std::nullopt;
}

namespace {

constexpr int TextId = 0xFFFF; // of the text in every message box

int Width(const RECT& rect) {
    return rect.right - rect.left;
}

int Height(const RECT& rect) {
    return rect.bottom - rect.top;
}

RECT WindowRect(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

// As a static control shows it; lines are broken at `width` unless that is 0.
SIZE Measure(const std::wstring& text, HFONT font, int width) {
    HDC screen = GetDC(nullptr);
    HGDIOBJ before = SelectObject(screen, font);
    RECT rect = {0, 0, width, 0};
    const UINT breaks = width > 0 ? DT_WORDBREAK : 0U;
    DrawTextW(screen, text.c_str(), static_cast<int>(text.size()), &rect,
              DT_CALCRECT | DT_EXPANDTABS | DT_NOPREFIX | breaks);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return {Width(rect), Height(rect)};
}

SIZE MeasureLabel(HWND label, int width) {
    return Measure(WindowText(label), std::bit_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)), width);
}

// Of the whole window.
int WidthForCaption(HWND box) {
    const int dpi = WindowDpi(box);
    return Measure(WindowText(box), MakeCaptionFont(dpi).get(), 0).cx +
           MulDiv(AroundCaption, dpi, USER_DEFAULT_SCREEN_DPI);
}

// How much wider the box has to be.
int MissingWidth(HWND box, HWND label) {
    const int now = Width(WindowRect(box));
    const bool hasColumns = WindowText(label).find(L'\t') != std::wstring::npos;
    const int columns = hasColumns ? MeasureLabel(label, 0).cx - Width(WindowRect(label)) : 0;
    const int room = Width(WorkArea(box)) * 4 / 5 - now;
    return std::min(std::max(WidthForCaption(box) - now, columns), room);
}

std::vector<HWND> Children(HWND box, const wchar_t* windowClass, LONG_PTR style) {
    std::vector<HWND> found;
    for (HWND child = nullptr; (child = FindWindowExW(box, child, windowClass, nullptr)) != nullptr;) {
        if ((GetWindowLongPtrW(child, GWL_STYLE) & style) == style) {
            found.push_back(child);
        }
    }
    return found;
}

void MoveBy(HWND box, HWND child, int x, int y) {
    RECT rect = WindowRect(child);
    MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&rect), 2);
    SetWindowPos(child, nullptr, rect.left + x, rect.top + y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Some systems put the buttons into the middle, others to the right: they stay there.
void MoveButtons(HWND box, int wider, int lower) {
    const RECT frame = WindowRect(box);
    const std::vector<HWND> buttons = Children(box, L"Button", WS_VISIBLE);
    RECT all = {};
    for (HWND button : buttons) {
        const RECT rect = WindowRect(button);
        UnionRect(&all, &all, &rect);
    }
    const bool isRight = frame.right - all.right < (all.left - frame.left) / 2;
    for (HWND button : buttons) {
        MoveBy(box, button, isRight ? wider : wider / 2, -lower);
    }
}

// Makes the text wider, and lower by the lines that it needs no more but not lower than the icon, which keeps its place
// beside it. Returns by how much.
int WidenText(HWND box, HWND label, int wider) {
    const RECT text = WindowRect(label);
    const std::vector<HWND> icons = Children(box, L"Static", SS_ICON);
    const RECT icon = icons.empty() ? RECT{} : WindowRect(icons.front());
    const int needed = MeasureLabel(label, Width(text) + wider).cy;
    const int lower = std::max(0, Height(text) - std::max(needed, Height(icon)));
    SetWindowPos(label, nullptr, 0, 0, Width(text) + wider, Height(text) - lower,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (lower > 0 && !icons.empty()) {
        const int before = Height(text) - Height(icon);
        MoveBy(box, icons.front(), 0, MulDiv(icon.top - text.top, before - lower, before) - (icon.top - text.top));
    }
    return lower;
}

// Its middle stays where it was.
void ResizeBox(HWND box, int wider, int lower) {
    const RECT rect = WindowRect(box);
    const RECT work = WorkArea(box);
    const int width = Width(rect) + wider;
    const int left = std::max(work.left, std::min<LONG>(rect.left - wider / 2, work.right - width));
    SetWindowPos(box, nullptr, left, rect.top + lower / 2, width, Height(rect) - lower, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Widen(HWND box) {
    HWND label = GetDlgItem(box, TextId);
    const int wider = label != nullptr ? MissingWidth(box, label) : 0;
    if (wider > 0) {
        const int lower = WidenText(box, label, wider);
        MoveButtons(box, wider, lower);
        ResizeBox(box, wider, lower);
    }
}

bool IsDialog(HWND window) {
    std::array<wchar_t, 16> name = {};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == L"#32770";
}

// After each message that a window of the thread has been sent.
LRESULT CALLBACK AfterMessage(int code, WPARAM isOwn, LPARAM sent) noexcept {
    const auto& message = *std::bit_cast<const CWPRETSTRUCT*>(sent);
    try {
        if (code == HC_ACTION && message.message == WM_INITDIALOG && IsDialog(message.hwnd)) {
            Widen(message.hwnd);
        }
    } catch (const std::exception&) { // a narrow box is better than none
    }
    return CallNextHookEx(nullptr, code, isOwn, sent);
}

// While it lives, a message box that this thread shows is made wider where it is too narrow for its caption or for
// columns: before it is seen, up to four fifths of the work area. All others stay as Windows made them. That is done
// after WM_INITDIALOG: at HCBT_ACTIVATE, which some systems raise in the middle of it, not all is in its place.
class WideBox {
public:
    WideBox() noexcept : mHook(SetWindowsHookExW(WH_CALLWNDPROCRET, AfterMessage, nullptr, GetCurrentThreadId())) {}
    WideBox(const WideBox&) = delete;
    WideBox& operator=(const WideBox&) = delete;
    ~WideBox() {
        if (mHook != nullptr) {
            UnhookWindowsHookEx(mHook);
        }
    }

private:
    HHOOK mHook;
};

} // namespace

HWND OwnerOfDialogs(HWND mainWindow) {
    HWND top = GetLastActivePopup(mainWindow);
    return IsWindowVisible(top) != 0 ? top : nullptr;
}

MsgResult MsgBox::Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) {
    const UINT style = static_cast<UINT>(buttons) | static_cast<UINT>(icon) | MB_DEFBUTTON1;
    HWND owner = OwnerOfDialogs(mMainWindow);
    const UINT modality = owner != nullptr ? MB_APPLMODAL : MB_TASKMODAL;
    const WideBox wide;
    int result = 0;
    do { // some systems let a box be closed that has no button for that
        result = MessageBoxW(owner, ToWide(text).c_str(), ToWide(caption).c_str(), style | modality);
    } while (buttons == MsgButtons::YesNo && result == IDCANCEL);
    const bool isPressed = buttons != MsgButtons::Ok && result != 0;
    return isPressed ? static_cast<MsgResult>(result) : AnswerOfNobody(buttons);
}

} // namespace tessaly::win32
