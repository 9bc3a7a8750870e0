// The messages to the editing pane: keys, the mouse in the margin, and painting. A rich edit control has keys for
// formats, too, which a plain text has no use for.
#include "platform/desktop/win32/RichTextBox.h"
#include "platform/desktop/win32/Spoken.h"
#include "platform/desktop/win32/Window.h"
#include "platform/system/win32/Text.h"
#include "platform/text/ControlPictures.h"
#include "platform/text/Utf16.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace tessaly::win32 {

namespace {

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

bool IsControlAlone() {
    return IsDown(VK_CONTROL) && !IsDown(VK_MENU);
}

bool IsPasteKey(WPARAM key) {
    return (key == 'V' && IsControlAlone() && !IsDown(VK_SHIFT)) ||
           (key == VK_INSERT && IsDown(VK_SHIFT) && !IsDown(VK_CONTROL));
}

// With Ctrl the control has many keys that format text. Only those that edit are left to it.
bool IsFormattingKey(WPARAM key) {
    constexpr std::wstring_view editing = L"ACVXYZ";
    const bool isLetterOrDigit = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
    const bool isSign = key >= VK_OEM_1 && key <= VK_OEM_102;
    return IsControlAlone() &&
           (isSign || (isLetterOrDigit && editing.find(static_cast<wchar_t>(key)) == std::wstring_view::npos));
}

// The code of a key for the program. Keyboards have the slash, which has a code of its own there, on many keys.
int KeyCodeOf(WPARAM key) {
    const SHORT slash = VkKeyScanW(L'/');
    const bool needsShift = (HIBYTE(slash) & 1) != 0;
    if (LOBYTE(slash) == key && (!needsShift || IsDown(VK_SHIFT))) {
        return KeySlash;
    }
    constexpr int none = 0xFF;
    return key == KeySlash ? none : static_cast<int>(key);
}

// Lets the control see the Shift key as not pressed, as long as it lives.
class WithoutShift {
public:
    WithoutShift() {
        GetKeyboardState(mBefore.data());
        std::array<BYTE, 256> keys = mBefore;
        keys[VK_SHIFT] = 0;
        SetKeyboardState(keys.data());
    }
    WithoutShift(const WithoutShift&) = delete;
    WithoutShift& operator=(const WithoutShift&) = delete;
    ~WithoutShift() { SetKeyboardState(mBefore.data()); }

private:
    std::array<BYTE, 256> mBefore = {};
};

// With LF as its only break; "" where there is no text.
std::u16string ClipboardText(HWND window) {
    std::wstring text;
    if (OpenClipboard(window) != 0) {
        HANDLE memory = GetClipboardData(CF_UNICODETEXT);
        if (const auto* const units = memory != nullptr ? static_cast<const wchar_t*>(GlobalLock(memory)) : nullptr) {
            text = units;
            GlobalUnlock(memory);
        }
        CloseClipboard();
    }
    return ToUtf16(BreakList().Set(ToUtf8(text)));
}

// Of `text` that is put in at `begin`.
tessaly::Place EndOf(std::u16string_view text, tessaly::Place begin) {
    const auto breaks = static_cast<std::size_t>(std::count(text.begin(), text.end(), u'\n'));
    const std::size_t column = breaks == 0 ? begin.column : 0;
    return {begin.line + breaks, column + text.size() - (text.rfind(u'\n') + 1)};
}

} // namespace

LRESULT RichTextBox::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_CHAR:
        return Key(message, wParam, lParam);
    case WM_PASTE:
        return PasteText();
    case WM_CUT:
    case WM_CLEAR:
        return DefaultOfEdit(message, wParam, lParam);
    case WM_UNDO:
    case EM_UNDO:
        return Undo() ? TRUE : FALSE;
    case EM_REDO:
        return Redo() ? TRUE : FALSE;
    case EM_CANUNDO:
        return CanUndo() ? TRUE : FALSE;
    case EM_CANREDO:
        return CanRedo() ? TRUE : FALSE;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_MOUSEWHEEL:
        if (const std::optional<LRESULT> answer = MouseMessage(message, wParam, lParam)) {
            return *answer;
        }
        return EdgeMessage(message, wParam, lParam);
    case WM_PAINT:
        return Paint(wParam, lParam);
    case WM_GETOBJECT: // a screen reader, which may have the text itself for the name
        NameByLabel(Handle());
        if (!std::exchange(mHasReader, true)) { // told each time, it would ask again
            ShowDescription(Description());
        }
        return Default(message, wParam, lParam);
    default:
        return EdgeMessage(message, wParam, lParam);
    }
}

// No value for what the control is to do as always. It would select a sentence by a click with Ctrl, and zoom by the
// wheel with Ctrl.
std::optional<LRESULT> RichTextBox::MouseMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const WORD keys = LOWORD(wParam);
    if (message == WM_MOUSEWHEEL) {
        if ((keys & MK_CONTROL) == 0) {
            return std::nullopt;
        }
        TellCtrlWheel(GET_WHEEL_DELTA_WPARAM(wParam));
        return 0;
    }
    if (message == WM_LBUTTONUP) {
        const bool isCtrlClick = std::exchange(mIsCtrlClick, false);
        if (isCtrlClick) {
            ParentWindow().loop.Later([this] { Raise(onCtrlClick); });
        }
        return isCtrlClick ? std::optional<LRESULT>(0) : std::nullopt;
    }
    mIsCtrlClick = false;
    if (!mFuncBodyAvailable) {
        return 0;
    }
    const bool hasCtrl = (keys & (MK_CONTROL | MK_SHIFT)) == MK_CONTROL;
    if (message != WM_RBUTTONDOWN && !(hasCtrl && message == WM_LBUTTONDOWN)) {
        return std::nullopt;
    }
    TakeKeyboard();
    const std::size_t position =
        mFormat.PositionAt({static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
    const CHARRANGE selected = SelectedRange();
    const auto character = static_cast<LONG>(position);
    if (message == WM_LBUTTONDOWN || character < selected.cpMin || character >= selected.cpMax) {
        MoveCaret(position);
    }
    mIsCtrlClick = message == WM_LBUTTONDOWN;
    return 0;
}

// The margin is in the edge of the window, where a click is one into the pane and no more.
LRESULT RichTextBox::EdgeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT mouse = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    if (message == WM_NCHITTEST && mMargin.IsHit(mouse)) {
        return HTBORDER;
    }
    if (message == WM_NCLBUTTONDOWN && mMargin.IsHit(mouse)) {
        if (mFuncBodyAvailable) {
            TakeKeyboard();
        }
        return 0;
    }
    if ((message == WM_WINDOWPOSCHANGED || message == WM_SIZE) && mMargin.IsFollowing()) {
        return 0;
    }
    const LRESULT result = Default(message, wParam, lParam);
    if (message == WM_NCCALCSIZE) {
        // A rectangle stands in front of whatever else there is.
        mMargin.NcCalcSize(
            *reinterpret_cast<RECT*>(lParam)); // NOLINT(performance-no-int-to-ptr): so the message has it
    } else if (message == WM_NCPAINT) {
        mMargin.Paint();
    } else if (message == WM_PRINT && (lParam & PRF_NONCLIENT) != 0) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): so the message has it
        mMargin.PaintOn(reinterpret_cast<HDC>(wParam), mMargin.Place());
    }
    return result;
}

// Some keys bring a character behind them, which is not for the control either.
LRESULT RichTextBox::Key(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isChar = message == WM_CHAR;
    if (isChar && wParam <= L' ' && std::exchange(mHasTakenKey, false)) {
        return 0;
    }
    const auto character = static_cast<char16_t>(wParam);
    const bool isTyped = isChar && character >= u' ' && character != u'\x7F';
    const bool isTaken =
        isChar ? isTyped && TakesKey({0, 0, character}) : TakesKey({KeyCodeOf(wParam), ShiftState(), 0});
    mHasTakenKey = isTaken && !isChar;
    if (isTaken) {
        NoteTakenKey(Handle(), message, wParam, lParam);
        return 0;
    }
    if (!isChar && IsPasteKey(wParam)) {
        return PasteText();
    }
    // The characters that belong to keys with Ctrl: the keys themselves have done their work.
    const bool isCommand = isChar && IsControlAlone() && wParam < L' ';
    if (isCommand || (!isChar && IsFormattingKey(wParam))) {
        return 0;
    }
    if (wParam == VK_RETURN && IsDown(VK_SHIFT)) { // else it would break the line without ending the paragraph
        const WithoutShift released;
        return DefaultOfEdit(message, wParam, lParam);
    }
    return DefaultOfEdit(message, wParam, lParam);
}

// Plain text, whatever else the clipboard holds. The control would show no pictures of control characters.
LRESULT RichTextBox::PasteText() {
    if (!mFuncBodyAvailable) {
        return 0;
    }
    const std::u16string text = ClipboardText(Handle());
    if (std::none_of(text.begin(), text.end(), HasControlPicture)) {
        return DefaultOfEdit(EM_PASTESPECIAL, CF_UNICODETEXT, 0);
    }
    const Selection selected = Selected();
    const tessaly::Place end = EndOf(text, selected.Begin());
    Do({{{selected.Begin(), selected.End(), text}}, {end, end}});
    return 0;
}

// What it does begins at the selection, or at the caret behind it, and ends at the caret.
LRESULT RichTextBox::DefaultOfEdit(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    ShowTogether([&] {
        mEdit->start = mEdit->start.value_or(SelectedRange().cpMin);
        result = Default(message, wParam, lParam);
    });
    return result;
}

// While the control is at work with an edit it would paint what has not been read and coloured yet, too much of it, and
// then nothing any more when it has been.
void RichTextBox::ShowTogether(const std::function<void()>& work) {
    if (mEdit) {
        work();
        return;
    }
    const Sight before = WhatIsSeen();
    const RegionOwner unpainted(CreateRectRgn(0, 0, 0, 0));
    const bool isAllPainted = GetUpdateRgn(Handle(), unpainted.get(), FALSE) == NULLREGION;
    mEdit.emplace();
    try {
        work();
    } catch (const std::exception&) {
        mEdit.reset();
        InvalidateRect(Handle(), nullptr, TRUE);
        throw;
    }
    const Edit edit = *std::exchange(mEdit, std::nullopt);
    if (edit.toPaint) {
        if (isAllPainted && edit.start && IsInOneLine(before, WhatIsSeen())) {
            const RECT line = mFormat.LineRect(static_cast<std::size_t>(before.selection.cpMin));
            const RegionOwner lineRegion(CreateRectRgnIndirect(&line));
            CombineRgn(edit.toPaint.get(), edit.toPaint.get(), lineRegion.get(), RGN_AND);
        }
        InvalidateRgn(Handle(), edit.toPaint.get(), FALSE);
    }
    if (Count() != before.lines) {
        mMargin.FollowEdit();
    }
    LookAtCaret();
}

// Windows has a window painted when nothing else is to be done: what is left over waits for that, and no key for it.
LRESULT RichTextBox::Paint(WPARAM wParam, LPARAM lParam) {
    if (mEdit) {
        HoldPaintingBack();
        return 0;
    }
    if (mFormat.IsAtWork()) { // it has all painted that it changes
        RedrawWindow(Handle(), nullptr, nullptr, RDW_VALIDATE | RDW_NOERASE | RDW_NOFRAME | RDW_NOCHILDREN);
        return 0;
    }
    HideCaret(Handle()); // once: to take it away and bring it back takes some systems as long as a line of text
    const std::optional<RECT> left = mFuncBodyAvailable ? mFormat.FormatView() : std::nullopt;
    const RegionOwner painted(CreateRectRgn(0, 0, 0, 0));
    GetUpdateRgn(Handle(), painted.get(), FALSE);
    const LRESULT result = Default(WM_PAINT, wParam, lParam);
    mSpots.Paint(painted.get(), mMargin.LineHeight());
    mMargin.PaintUnderlines(painted.get());
    ShowCaret(Handle());
    mMargin.Follow();
    if (left) {
        InvalidateRect(Handle(), &*left, FALSE);
    }
    return result;
}

void RichTextBox::HoldPaintingBack() {
    RegionOwner asked(CreateRectRgn(0, 0, 0, 0));
    GetUpdateRgn(Handle(), asked.get(), FALSE);
    ValidateRect(Handle(), nullptr);
    if (mEdit->toPaint) {
        CombineRgn(asked.get(), asked.get(), mEdit->toPaint.get(), RGN_OR);
    }
    mEdit->toPaint = std::move(asked);
}

RichTextBox::Sight RichTextBox::WhatIsSeen() const {
    return {Count(), SelectedRange(), mFormat.PlaceOf(0)};
}

bool RichTextBox::IsInOneLine(const Sight& before, const Sight& now) {
    const auto isCaret = [](const CHARRANGE& selection) { return selection.cpMin == selection.cpMax; };
    return before.lines == now.lines && isCaret(before.selection) && isCaret(now.selection) &&
           before.text.x == now.text.x && before.text.y == now.text.y;
}

} // namespace tessaly::win32
