// A dialog runs a loop of its own inside a call. A timer of the user looks at it there, and acts once it is at rest.
#include "tests/contract/win32/DialogUser.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"
#include "tests/unit/platform/system/win32/TestFolder.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <utility>

namespace tessaly {

namespace {

constexpr UINT TimerPeriod = 10; // milliseconds between two looks
constexpr int PatientLooks = 200;
constexpr UINT Reached = WM_APP; // to the helper: what was posted before has been handled; LPARAM is an event

// Controls of the file dialogs, as <dlgs.h> numbers them.
constexpr int FilterBox = 0x470;
constexpr int NameEdit = 0x480;
constexpr int NameBox = 0x47C;
constexpr int ReadOnlyBox = 0x410;

std::string TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return win32::ToUtf8(text);
}

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 64> name = {};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

bool IsVisible(HWND window) {
    return IsWindow(window) != 0 && (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

template <class Windows>
BOOL CALLBACK Collect(HWND window, LPARAM windows) {
    reinterpret_cast<Windows*>(windows)->push_back(window);
    return TRUE;
}

std::vector<HWND> ThreadWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), Collect<std::vector<HWND>>, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

std::vector<HWND> Children(HWND window) {
    std::vector<HWND> children;
    EnumChildWindows(window, Collect<std::vector<HWND>>, reinterpret_cast<LPARAM>(&children));
    return children;
}

bool HasButton(HWND box, MsgResult button) {
    return GetDlgItem(box, static_cast<int>(button)) != nullptr;
}

MsgIcon IconOf(HWND label) {
    const auto shown = SendMessageW(label, STM_GETICON, 0, 0);
    const std::pair<const wchar_t*, MsgIcon> icons[] = {{IDI_HAND, MsgIcon::Stop},
                                                        {IDI_QUESTION, MsgIcon::Question},
                                                        {IDI_EXCLAMATION, MsgIcon::Exclamation},
                                                        {IDI_ASTERISK, MsgIcon::Information}};
    for (const auto& [name, icon] : icons) {
        if (shown != 0 && shown == reinterpret_cast<LRESULT>(LoadIconW(nullptr, name))) {
            return icon;
        }
    }
    return MsgIcon::None;
}

SeenMessageBox Describe(HWND box) {
    SeenMessageBox seen;
    seen.caption = TextOf(box);
    const bool hasCancel = HasButton(box, MsgResult::Cancel);
    seen.buttons = !HasButton(box, MsgResult::Yes) ? MsgButtons::Ok
                   : hasCancel                     ? MsgButtons::YesNoCancel
                                                   : MsgButtons::YesNo;
    for (const HWND child : Children(box)) {
        if (ClassOf(child) != L"Static") {
            continue;
        }
        if ((GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
            seen.icon = IconOf(child);
        } else {
            seen.text = TextOf(child);
        }
    }
    return seen;
}

HWND NameControl(HWND dialog) {
    const HWND edit = GetDlgItem(dialog, NameEdit);
    return IsVisible(edit) ? edit : GetDlgItem(dialog, NameBox);
}

SeenFileDialog DescribeFileDialog(HWND dialog) {
    SeenFileDialog seen;
    seen.isSave = TextOf(GetDlgItem(dialog, IDOK)).find("ave") != std::string::npos;
    seen.title = TextOf(dialog);
    seen.fileName = TextOf(NameControl(dialog));
    seen.hasReadOnlyBox = IsVisible(GetDlgItem(dialog, ReadOnlyBox));
    const HWND filters = GetDlgItem(dialog, FilterBox);
    const auto count = SendMessageW(filters, CB_GETCOUNT, 0, 0);
    for (LRESULT number = 0; number < count; ++number) {
        std::wstring text(
            static_cast<std::size_t>(SendMessageW(filters, CB_GETLBTEXTLEN, static_cast<WPARAM>(number), 0)) + 1,
            L'\0');
        SendMessageW(filters, CB_GETLBTEXT, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(text.data()));
        seen.filters.push_back(win32::ToUtf8(text.c_str()));
    }
    // The system that the tests run on keeps the pattern with the description, in small letters, which for names of
    // files are the same.
    const auto shown = static_cast<WPARAM>(SendMessageW(filters, CB_GETCURSEL, 0, 0));
    std::wstring pattern = reinterpret_cast<const wchar_t*>(SendMessageW(filters, CB_GETITEMDATA, shown, 0));
    CharUpperW(pattern.data());
    seen.pattern = win32::ToUtf8(pattern);
    return seen;
}

void Press(HWND dialog, int button) {
    PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
}

// What both small windows' users do: everything by messages to the window's thread, whose end is waited for.
class WindowUser {
public:
    WindowUser(HWND window, HWND helper) : mWindow(window), mHelper(helper) {}

    void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
        PostMessageW(window, message, wParam, lParam);
    }

    // Waits until all posted messages are handled, or the window is gone.
    void Settle() const {
        const win32::Handle reached(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        HANDLE copy = nullptr; // for the helper, which may come to it late
        DuplicateHandle(GetCurrentProcess(), reached.Get(), GetCurrentProcess(), &copy, 0, FALSE,
                        DUPLICATE_SAME_ACCESS);
        PostMessageW(mHelper, Reached, 0, reinterpret_cast<LPARAM>(copy));
        WaitUntil([&] { return WaitForSingleObject(reached.Get(), 0) == WAIT_OBJECT_0 || !IsVisible(mWindow); });
    }

    void Key(WPARAM key) const {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(mWindow, nullptr), &info);
        const HWND focus = info.hwndFocus != nullptr ? info.hwndFocus : mWindow;
        Post(focus, WM_KEYDOWN, key, 1);
        Post(focus, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
        Settle();
    }

    void Click(HWND window, POINT point) const {
        const LPARAM place = MAKELPARAM(point.x, point.y);
        Post(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
        Post(window, WM_LBUTTONUP, 0, place);
        Settle();
    }

    void Close() const {
        Post(mWindow, WM_SYSCOMMAND, SC_CLOSE, 0);
        Settle();
    }

    HWND Window() const { return mWindow; }
    HWND Control(int id) const { return GetDlgItem(mWindow, id); }

private:
    HWND mWindow;
    HWND mHelper;
};

class Win32NameWindowUser final : public NameWindowUser, private WindowUser {
public:
    using WindowUser::WindowUser;

    void Type(std::string_view text) override {
        for (const wchar_t character : win32::ToWide(text)) {
            Post(Control(win32::ControlId::FuncVarName), WM_CHAR, character, 1);
        }
        Settle();
    }
    void PressOk() override { Click(Control(IDOK), {5, 5}); }
    void PressCancel() override { Click(Control(IDCANCEL), {5, 5}); }
    void PressEnter() override { Key(VK_RETURN); }
    void PressEscape() override { Key(VK_ESCAPE); }
    void PressF1() override { Key(VK_F1); }
    void CloseByFrame() override { Close(); }
    bool IsShown() const override { return IsVisible(Window()); }
    std::string Caption() const override { return TextOf(Window()); }
    std::string Label() const override { return TextOf(Control(win32::ControlId::NameLabel)); }
    std::string CancelCaption() const override { return TextOf(Control(IDCANCEL)); }
};

class Win32SplashWindowUser final : public SplashWindowUser, private WindowUser {
public:
    using WindowUser::WindowUser;

    void PressKey(int keyCode) override { Key(static_cast<WPARAM>(keyCode)); }
    void RepeatKey(int keyCode) override {
        Post(Window(), WM_KEYDOWN, static_cast<WPARAM>(keyCode), 0x40000001);
        Settle();
    }
    void ClickFrame() override { Click(Window(), In(win32::ControlId::Frame1)); }
    void ClickLabel() override { Click(Window(), In(win32::ControlId::LblVersion)); }
    void ClickFrameWithTheRightButton() override {
        const POINT point = In(win32::ControlId::Frame1);
        Post(Window(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(point.x, point.y));
        Post(Window(), WM_RBUTTONUP, 0, MAKELPARAM(point.x, point.y));
        Settle();
    }
    void CloseByFrame() override { Close(); }
    bool IsShown() const override { return IsVisible(Window()); }
    Distance FromTheMiddleOfItsOwner() const override {
        RECT own = {};
        GetWindowRect(Window(), &own);
        RECT owner = {};
        GetWindowRect(GetWindow(Window(), GW_OWNER), &owner);
        return {(own.left + own.right - owner.left - owner.right) / 2,
                (own.top + own.bottom - owner.top - owner.bottom) / 2};
    }
    std::vector<std::string> Labels() const override {
        std::vector<std::string> labels;
        for (int id = win32::ControlId::LblVersion; id <= win32::ControlId::LblProductName; ++id) {
            labels.push_back(TextOf(Control(id)));
        }
        return labels;
    }

private:
    // A place in one of the window's parts; they leave clicks to the window behind them.
    POINT In(int part) const {
        RECT rect = {};
        GetWindowRect(Control(part), &rect);
        MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&rect), 2);
        return {rect.left + 5, rect.top + 5};
    }
};

} // namespace

DialogUser::DialogUser() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = Procedure;
    windowClass.lpszClassName = L"TessalyDialogUser";
    windowClass.hInstance = GetModuleHandleW(nullptr);
    RegisterClassW(&windowClass);
    mHelper = CreateWindowW(windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, windowClass.hInstance,
                            nullptr);
    SetWindowLongPtrW(mHelper, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetTimer(mHelper, 1, TimerPeriod, nullptr);
}

DialogUser::~DialogUser() {
    if (mScript.joinable()) {
        mScript.join();
    }
    DestroyWindow(mHelper);
    EXPECT_TRUE(mBoxAnswers.empty()) << "a message box that was expected did not come";
    EXPECT_TRUE(mFileAnswers.empty()) << "a file dialog that was expected did not come";
    EXPECT_TRUE(mNameScripts.empty() && mSplashScripts.empty()) << "a window that was expected did not come";
}

void DialogUser::WillUseName(std::function<void(NameWindowUser&)> script) {
    mNameScripts.emplace_back([this, script = std::move(script)](HWND window) {
        Win32NameWindowUser user(window, mHelper);
        script(user);
    });
}

void DialogUser::WillUseSplash(std::function<void(SplashWindowUser&)> script) {
    mSplashScripts.emplace_back([this, script = std::move(script)](HWND window) {
        Win32SplashWindowUser user(window, mHelper);
        script(user);
    });
}

LRESULT CALLBACK DialogUser::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == Reached) {
        const win32::Handle reached(reinterpret_cast<HANDLE>(lParam));
        SetEvent(reached.Get());
        return 0;
    }
    if (message == WM_TIMER) {
        reinterpret_cast<DialogUser*>(GetWindowLongPtrW(window, GWLP_USERDATA))->Look();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void DialogUser::Look() {
    const std::vector<HWND> windows = ThreadWindows();
    std::erase_if(mSeen, [](HWND window) { return !IsVisible(window); });
    for (const HWND window : windows) {
        const std::wstring name = ClassOf(window);
        if (!IsVisible(window) || IsWindowEnabled(window) == 0) {
            continue;
        }
        if (name == L"#32770" && GetDlgItem(window, FilterBox) != nullptr) {
            LookAtFileDialog(window);
        } else if (name == L"#32770") {
            LookAtBox(window);
        } else if (name == L"UserFuncVarFrm") {
            RunScript(window, mNameScripts);
        } else if (name == L"frmSplash") {
            RunScript(window, mSplashScripts);
        }
    }
}

// One answer a look: a box that did not go by the first one gets the next.
void DialogUser::LookAtBox(HWND box) {
    if (std::find(mSeen.begin(), mSeen.end(), box) == mSeen.end()) {
        mSeen.push_back(box);
        const SeenMessageBox seen = Describe(box);
        // For the user a box that comes again when it was closed has never gone.
        if (!mWasClosed || !(seen == mBoxes.back())) {
            mBoxes.push_back(seen);
        }
    }
    if (mBoxAnswers.empty()) {
        ADD_FAILURE() << "a message box that nobody expected: " << mBoxes.back().text;
        for (const MsgResult button : {MsgResult::Cancel, MsgResult::No, MsgResult::Ok}) {
            Press(box, static_cast<int>(button));
        }
        return;
    }
    const std::optional<MsgResult> answer = mBoxAnswers.front();
    mBoxAnswers.pop_front();
    mWasClosed = !answer && mBoxes.back().buttons == MsgButtons::YesNo;
    if (answer) {
        EXPECT_TRUE(HasButton(box, *answer));
        Press(box, static_cast<int>(*answer));
    } else {
        PostMessageW(box, WM_SYSCOMMAND, SC_CLOSE, 0);
    }
}

void DialogUser::LookAtFileDialog(HWND dialog) {
    if (std::find(mSeen.begin(), mSeen.end(), dialog) != mSeen.end()) {
        return;
    }
    mSeen.push_back(dialog);
    mFiles.push_back(DescribeFileDialog(dialog));
    if (mFileAnswers.empty()) {
        ADD_FAILURE() << "a file dialog that nobody expected";
        Press(dialog, IDCANCEL);
        return;
    }
    const std::optional<std::string> answer = mFileAnswers.front();
    mFileAnswers.pop_front();
    if (answer) {
        SetWindowTextW(NameControl(dialog), win32::ToWide(*answer).c_str());
    }
    Press(dialog, answer ? IDOK : IDCANCEL);
}

// A script that is over may still see its window for a moment, but not for long.
void DialogUser::RunScript(HWND window, std::deque<Script>& scripts) {
    if (mIsScriptRunning) {
        return;
    }
    if (scripts.empty()) {
        if (++mLooksWithoutScript > PatientLooks) {
            ADD_FAILURE() << "a window that nobody expected, or that its script left open";
            PostMessageW(window, WM_CLOSE, 0, 0);
            mLooksWithoutScript = 0;
        }
        return;
    }
    mLooksWithoutScript = 0;
    if (mScript.joinable()) {
        mScript.join();
    }
    mIsScriptRunning = true;
    mScript = std::thread([this, window, script = std::move(scripts.front())] {
        script(window);
        mIsScriptRunning = false;
    });
    scripts.pop_front();
}

} // namespace tessaly
