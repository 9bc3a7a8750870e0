// Only the Windows pane: colours leave no trace, a paste is plain text whatever the clipboard holds, and texts have any
// length.
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"
#include "tests/contract/win32/Win32Driver.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tessaly {
namespace {

// Other colours for all windows of the system, as long as it lives. The program is told as when the user chooses them.
class SystemColours {
public:
    SystemColours(COLORREF window, COLORREF windowText) {
        for (std::size_t i = 0; i < Elements.size(); ++i) {
            mBefore[i] = GetSysColor(Elements[i]);
        }
        Set({window, windowText});
    }
    SystemColours(const SystemColours&) = delete;
    SystemColours& operator=(const SystemColours&) = delete;
    ~SystemColours() { Set(mBefore); }

private:
    using Colours = std::array<COLORREF, 2>;
    static constexpr std::array<int, 2> Elements = {COLOR_WINDOW, COLOR_WINDOWTEXT};

    static void Set(const Colours& colours) {
        EXPECT_NE(SetSysColors(static_cast<int>(Elements.size()), Elements.data(), colours.data()), 0);
    }

    Colours mBefore = {};
};

// What this program reads its settings from: the entry for it in its table of imported functions. Wine knows no high
// contrast and cannot turn it on, so this stands in for it.
extern "C" decltype(&SystemParametersInfoW) importedSystemParametersInfo
#ifdef _WIN64
    __asm__("__imp_SystemParametersInfoW");
#else
    __asm__("__imp__SystemParametersInfoW@16");
#endif

class HighContrast {
public:
    HighContrast() {
        Real() = importedSystemParametersInfo;
        Import(Answer);
    }
    HighContrast(const HighContrast&) = delete;
    HighContrast& operator=(const HighContrast&) = delete;
    ~HighContrast() { Import(Real()); }

private:
    using Function = decltype(&SystemParametersInfoW);

    static Function& Real() {
        static Function function = nullptr;
        return function;
    }

    static BOOL WINAPI Answer(UINT action, UINT number, void* data, UINT update) {
        const BOOL result = Real()(action, number, data, update);
        if (action == SPI_GETHIGHCONTRAST) {
            static_cast<HIGHCONTRASTW*>(data)->dwFlags |= HCF_HIGHCONTRASTON;
        }
        return result;
    }

    static void Import(Function function) {
        DWORD access = 0;
        VirtualProtect(&importedSystemParametersInfo, sizeof function, PAGE_READWRITE, &access);
        importedSystemParametersInfo = function;
        VirtualProtect(&importedSystemParametersInfo, sizeof function, access, &access);
    }
};

// The control takes only the beginning of the next `count` texts that are streamed in, and tells this error or none.
class ShortStreams {
public:
    ShortStreams(HWND pane, int count, DWORD error) : mPane(pane) {
        State() = {count, error, nullptr, nullptr, {}};
        State().procedure =
            reinterpret_cast<WNDPROC>(SetWindowLongPtrW(pane, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
    }
    ShortStreams(const ShortStreams&) = delete;
    ShortStreams& operator=(const ShortStreams&) = delete;
    ~ShortStreams() { SetWindowLongPtrW(mPane, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(State().procedure)); }

private:
    struct Streams {
        int left = 0;
        DWORD error = 0;
        WNDPROC procedure = nullptr;
        EDITSTREAMCALLBACK callback = nullptr;
        bool isBegun = false;
    };

    static Streams& State() {
        static Streams state;
        return state;
    }

    static LRESULT CALLBACK Procedure(HWND pane, UINT message, WPARAM wParam, LPARAM lParam) {
        const bool isShort = message == EM_STREAMIN && State().left > 0;
        auto& stream = *reinterpret_cast<EDITSTREAM*>(lParam);
        if (isShort) {
            --State().left;
            State().isBegun = false;
            State().callback = stream.pfnCallback;
            stream.pfnCallback = Begin;
        }
        const LRESULT result = CallWindowProcW(State().procedure, pane, message, wParam, lParam);
        if (isShort) {
            stream.dwError = State().error;
        }
        return result;
    }

    static DWORD CALLBACK Begin(DWORD_PTR cookie, BYTE* buffer, LONG room, LONG* count) {
        if (std::exchange(State().isBegun, true)) {
            *count = 0;
            return 0;
        }
        return State().callback(cookie, buffer, std::min<LONG>(room, 3 * sizeof(wchar_t)), count);
    }

    HWND mPane;
};

class Win32PaneTest : public testing::Test {
protected:
    // The pane shows this text and has the focus, the caret at `caret`.
    void Edit(const std::string& text, std::size_t caret) {
        Desktop().MainWindow().Show();
        Desktop().FuncBody().SetText(text);
        user.ClickPane();
        user.SetCaret(caret);
        Paint();
    }

    tessaly::Desktop& Desktop() { return user.TheDesktop(); }
    HWND Pane() const { return user.Control(win32::ControlId::FuncBody); }
    void Paint() const { UpdateWindow(Pane()); }

    CHARRANGE Selection() const {
        CHARRANGE selection = {};
        SendMessageW(Pane(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
        return selection;
    }

    void Select(LONG start, LONG end) const {
        CHARRANGE range = {start, end};
        SendMessageW(Pane(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    }

    long FirstInView() const { return static_cast<long>(SendMessageW(Pane(), EM_GETFIRSTVISIBLELINE, 0, 0)); }

    // Where the text begins, in pixels of the pane.
    POINTL TextPlace() const {
        POINTL place = {};
        SendMessageW(Pane(), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), 0);
        return place;
    }

    // How the character at `place` looks, read without moving the selection.
    win32::Com<ITextFont> FontAt(long place) const {
        constexpr GUID textDocumentId = {0x8CC497C0, 0xA1DF, 0x11CE, {0x80, 0x98, 0x00, 0xAA, 0x00, 0x47, 0xBE, 0x5D}};
        IUnknown* ole = nullptr;
        SendMessageW(Pane(), EM_GETOLEINTERFACE, 0, reinterpret_cast<LPARAM>(&ole));
        const win32::Com<IUnknown> oleOwner(ole);
        void* found = nullptr;
        EXPECT_EQ(ole->QueryInterface(textDocumentId, &found), S_OK);
        const win32::Com<ITextDocument> document(static_cast<ITextDocument*>(found));
        ITextRange* range = nullptr;
        EXPECT_EQ(document->Range(place, place + 1, &range), S_OK);
        const win32::Com<ITextRange> rangeOwner(range);
        ITextFont* font = nullptr;
        EXPECT_EQ(range->GetFont(&font), S_OK);
        return win32::Com<ITextFont>(font);
    }

    // Its colour; -1 for that of the user's windows.
    long ColourAt(long place) const {
        long colour = 0;
        EXPECT_EQ(FontAt(place)->GetForeColor(&colour), S_OK);
        const bool isOfWindows = colour == tomAutoColor || colour == static_cast<long>(GetSysColor(COLOR_WINDOWTEXT));
        return isOfWindows ? -1 : colour;
    }

    // All fonts that the text has, and what would be typed behind it.
    std::set<std::wstring> Fonts() const {
        std::set<std::wstring> fonts;
        const auto length = static_cast<long>(win32::ToWide(user.PaneShown()).size());
        for (long place = 0; place <= length; ++place) {
            const win32::Com<ITextFont> font = FontAt(place);
            BSTR name = nullptr;
            float size = 0;
            EXPECT_EQ(font->GetName(&name), S_OK);
            EXPECT_EQ(font->GetSize(&size), S_OK);
            fonts.insert(std::wstring(name) + L" " + std::to_wstring(std::lround(size * 100)));
            SysFreeString(name);
        }
        return fonts;
    }

    // The brightness of a keyword's colour, up to 255; -1 when keywords have no colour of their own.
    int KeywordBrightness() const {
        const auto colour = static_cast<COLORREF>(ColourAt(0));
        return ColourAt(0) == -1 ? -1 : std::max({GetRValue(colour), GetGValue(colour), GetBValue(colour)});
    }

    // The colour that most of the pane has on the screen.
    COLORREF Background() const {
        const HDC pane = GetDC(Pane());
        RECT rect = {};
        GetClientRect(Pane(), &rect);
        const COLORREF colour = GetPixel(pane, rect.right - 30, rect.bottom - 30);
        ReleaseDC(Pane(), pane);
        return colour;
    }

    Win32Driver user{{}};
};

std::string Lines(int count) {
    std::string text;
    for (int line = 0; line < count; ++line) {
        text += "    int value" + std::to_string(line) + " = 0; /* comment */\r\n";
    }
    return text;
}

TEST_F(Win32PaneTest, KeywordsStringsCommentsNumbersAndDirectivesHaveColoursOfTheirOwn) {
    Edit("#define X\nreturn int \"s\" 12 /* c */ name", 0);
    std::vector<long> colours;
    for (const LONG place : {0, 10, 17, 21, 25, 28}) {
        colours.push_back(ColourAt(place));
    }
    std::sort(colours.begin(), colours.end());
    EXPECT_EQ(std::unique(colours.begin(), colours.end()) - colours.begin(), 6);
    EXPECT_NE(colours.front(), -1);
    EXPECT_EQ(ColourAt(37), -1);
    EXPECT_EQ(ColourAt(10), RGB(0x00, 0x00, 0xB0)) << "the colour of keywords on every desktop";
}

// Lists and tips come up beside the character.
TEST_F(Win32PaneTest, TheLastLineIsAsHighAsTheOthers) {
    user.TheDesktop().MainWindow().Show();
    user.TheDesktop().FuncBody().SetText("a\nb");
    const auto& pane = dynamic_cast<const win32::RichTextBox&>(user.TheDesktop().FuncBody());
    const RECT first = pane.CharacterPlace({0, 0});
    const RECT last = pane.CharacterPlace({1, 0});
    EXPECT_EQ(last.bottom - last.top, first.bottom - first.top);
    POINT below = {last.left + 2, last.bottom + 3 * (last.bottom - last.top)};
    ScreenToClient(Pane(), &below);
    EXPECT_EQ(pane.PlaceUnder(below), std::nullopt);
}

TEST_F(Win32PaneTest, NoCharacterIsDrawnBelowTheScrollBars) {
    user.TheDesktop().MainWindow().Show();
    user.TheDesktop().FuncBody().SetText(std::string(1000, 'a') + Lines(100));
    const auto& pane = dynamic_cast<const win32::RichTextBox&>(user.TheDesktop().FuncBody());
    RECT client = {};
    GetClientRect(Pane(), &client);
    EXPECT_TRUE(pane.PlaceUnder({client.right - 3, 3}));
    EXPECT_EQ(pane.PlaceUnder({client.right + 3, 3}), std::nullopt);
    EXPECT_EQ(pane.PlaceUnder({1, client.bottom + 3}), std::nullopt);
}

// One font for all of a text, whichever way it came.
TEST_F(Win32PaneTest, WhatIsTypedAnywhereHasTheFontForCode) {
    const std::set<std::wstring> font = {win32::CodeFontName() + L" 1000"};
    Edit("", 0);
    EXPECT_EQ(Fonts(), font) << "an empty text";
    user.Type("ab");
    EXPECT_EQ(Fonts(), font) << "in an empty text";
    Edit("int a;", 6);
    user.Type("xy");
    EXPECT_EQ(Fonts(), font) << "at the end";
    user.PressEnter();
    EXPECT_EQ(Fonts(), font) << "a new last line";
    user.Type("z");
    EXPECT_EQ(Fonts(), font) << "in the new last line";
    user.Paste("1\n2\n");
    EXPECT_EQ(Fonts(), font) << "pasted lines";
    user.Type("z");
    EXPECT_EQ(Fonts(), font) << "behind pasted lines";
    user.SelectAll();
    user.Backspace();
    EXPECT_EQ(Fonts(), font) << "emptied";
    user.Type("z");
    EXPECT_EQ(Fonts(), font) << "in an emptied text";
    user.Undo();
    EXPECT_EQ(Fonts(), font) << "undone";
}

TEST_F(Win32PaneTest, ATextThatWasUnavailableHasTheFontForCode) {
    const std::set<std::wstring> font = {win32::CodeFontName() + L" 1000"};
    Desktop().FuncBody().SetFuncBodyAvailable(false);
    Edit("int a;", 0);
    Desktop().FuncBody().SetFuncBodyAvailable(true);
    user.SetCaret(6);
    user.Type("\t");
    EXPECT_EQ(Fonts(), font);
}

TEST_F(Win32PaneTest, AtAnotherResolutionAllOfATextHasOneFont) {
    const RECT frame = {0, 0, 1200, 800};
    for (const std::string text : {"", "int a;", "int a;\n"}) {
        Edit(text, 0);
        user.SetCaret(text.size());
        for (const int dpi : {192, 96}) {
            SendMessageW(user.Frame(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&frame));
            user.Settle();
            user.Type("x");
            user.PressEnter();
            EXPECT_EQ(Fonts(), (std::set<std::wstring>{win32::CodeFontName() + (dpi == 192 ? L" 2000" : L" 1000")}))
                << dpi << " \"" << text << "\"";
        }
    }
}

TEST_F(Win32PaneTest, OnADarkBackgroundTheColoursAreBright) {
    Edit("return", 0);
    const int onWhite = KeywordBrightness();
    ASSERT_NE(onWhite, -1);
    {
        const SystemColours dark(RGB(16, 16, 16), RGB(240, 240, 240));
        user.Settle();
        Paint();
        EXPECT_EQ(Background(), RGB(16, 16, 16));
        EXPECT_GT(KeywordBrightness(), 240);
    }
    user.Settle();
    Paint();
    EXPECT_EQ(KeywordBrightness(), onWhite) << "the user has gone back to white";
}

TEST_F(Win32PaneTest, WithHighContrastTheTextHasTheUsersColoursAlone) {
    Edit("return", 0);
    ASSERT_NE(KeywordBrightness(), -1);
    {
        const HighContrast highContrast;
        SendMessageW(user.Frame(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
        Paint();
        EXPECT_EQ(KeywordBrightness(), -1);
        user.Type("int i; ");
        Paint();
        EXPECT_EQ(KeywordBrightness(), -1);
    }
    SendMessageW(user.Frame(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
    Paint();
    EXPECT_NE(KeywordBrightness(), -1);
}

TEST_F(Win32PaneTest, WhatIsTypedIsColouredAtOnce) {
    Edit("x", 0);
    user.Type("int ");
    Paint();
    EXPECT_NE(ColourAt(0), -1);
    EXPECT_EQ(ColourAt(4), -1);
    user.SetCaret(3);
    user.Type("s");
    Paint();
    EXPECT_EQ(ColourAt(0), -1);
}

TEST_F(Win32PaneTest, ACommentThatIsOpenedColoursTheLinesBelowUntilItsEnd) {
    Edit("\nint a;\nint b; /* */\nint c;", 0);
    const long keyword = ColourAt(1);
    user.Type("/*");
    Paint();
    EXPECT_NE(ColourAt(3), keyword);
    EXPECT_EQ(ColourAt(3), ColourAt(0));
    EXPECT_EQ(ColourAt(3), ColourAt(7));
    EXPECT_EQ(ColourAt(24), keyword);
    user.Backspace();
    Paint();
    EXPECT_EQ(ColourAt(2), keyword);
}

TEST_F(Win32PaneTest, UndoTakesBackTheTypingAndNothingElse) {
    Edit("int a;\nint b;", 6);
    user.Type(" // c");
    Paint();
    const long comment = ColourAt(8);
    EXPECT_NE(comment, -1);
    while (SendMessageW(Pane(), EM_CANUNDO, 0, 0) != 0) {
        const std::string before = user.PaneShown();
        user.Undo();
        ASSERT_NE(user.PaneShown(), before) << "an undo that undid no typing";
    }
    EXPECT_EQ(user.PaneShown(), "int a;\nint b;");
    user.PressKey('Y', 2);
    Paint();
    EXPECT_NE(user.PaneShown(), "int a;\nint b;");
}

TEST_F(Win32PaneTest, OpeningATextAndColouringItLeavesNothingToUndo) {
    Edit(Lines(100), 0);
    EXPECT_EQ(SendMessageW(Pane(), EM_CANUNDO, 0, 0), 0);
}

TEST_F(Win32PaneTest, ColouringRaisesNoChange) {
    Edit("x", 1);
    int changes = 0;
    Desktop().FuncBody().onChange = [&] { ++changes; };
    user.Type("\"");
    Paint();
    EXPECT_EQ(changes, 1);
}

TEST_F(Win32PaneTest, ColouringKeepsTheSelectionAndWhatIsInView) {
    Edit(Lines(300), 0);
    SendMessageW(Pane(), EM_LINESCROLL, 0, 100);
    const auto inView = static_cast<LONG>(win32::ToWide(user.PaneShown()).find(L"int value105"));
    Select(inView, inView + 4);
    Paint();
    const long first = FirstInView();
    ASSERT_GT(first, 90);
    Desktop().FuncBody().SetTabStops({500}); // all that is in view must be formatted again
    InvalidateRect(Pane(), nullptr, TRUE);
    Paint();
    EXPECT_EQ(FirstInView(), first);
    EXPECT_EQ(Selection().cpMin, inView);
    EXPECT_EQ(Selection().cpMax, inView + 4);
}

TEST_F(Win32PaneTest, TypingInAVeryLongTextScrollsNothing) {
    Edit(Lines(9000), 0);
    const auto inView = static_cast<LONG>(win32::ToWide(user.PaneShown()).find(L"int value8000"));
    Select(inView, inView);
    SendMessageW(Pane(), EM_SCROLLCARET, 0, 0);
    const long first = FirstInView();
    ASSERT_GT(first, 7900);
    const long keyword = ColourAt(inView);
    const POINTL place = TextPlace();
    for (const wchar_t key : {L'/', L'*'}) {
        SendMessageW(Pane(), WM_CHAR, static_cast<WPARAM>(key), 1);
        InvalidateRect(Pane(), nullptr, FALSE);
        Paint();
    }
    EXPECT_EQ(FirstInView(), first);
    EXPECT_EQ(TextPlace().y, place.y) << "by pixels, too";
    EXPECT_NE(ColourAt(inView + 3), keyword) << "it is in view, and in a comment";
}

TEST_F(Win32PaneTest, WhatHasChangedItsColourIsToBePaintedAtOnce) {
    Edit("\nint a;\nint b;", 0);
    const long keyword = ColourAt(1);
    const auto press = [this](UINT message, WPARAM key) {
        SendMessageW(Pane(), message, key, 1);
        Paint();
    };
    for (int round = 0; round < 3; ++round) {
        press(WM_CHAR, L'/');
        press(WM_CHAR, L'*');
        EXPECT_NE(ColourAt(10), keyword) << "with the key that opens the comment, not with the next one";
        press(WM_KEYDOWN, VK_BACK);
        EXPECT_EQ(ColourAt(9), keyword);
        press(WM_KEYDOWN, VK_BACK);
    }
}

TEST_F(Win32PaneTest, AKeyThatChangesManyLinesColoursThemWhenNothingElseIsToBeDone) {
    std::string text;
    for (int line = 0; line < 100; ++line) {
        text += "\nint a;";
    }
    Edit(text, 0);
    const long keyword = ColourAt(1);
    const long inView = 1 + 15 * 7;
    ASSERT_EQ(ColourAt(inView), keyword);
    for (const wchar_t key : {L'/', L'*'}) {
        SendMessageW(Pane(), WM_CHAR, static_cast<WPARAM>(key), 1);
        Paint();
    }
    EXPECT_EQ(ColourAt(3), ColourAt(0));
    EXPECT_EQ(ColourAt(inView + 2), keyword) << "the next key does not wait for all of them";
    EXPECT_NE(GetUpdateRect(Pane(), nullptr, FALSE), 0);
    user.Settle();
    EXPECT_EQ(ColourAt(inView + 2), ColourAt(0));
    EXPECT_EQ(ColourAt(10), ColourAt(0)) << "and the lines in front of it";
    user.Backspace();
    EXPECT_EQ(ColourAt(inView + 1), keyword);
    EXPECT_EQ(ColourAt(2), keyword);
    EXPECT_EQ(GetUpdateRect(Pane(), nullptr, FALSE), 0) << "all is done";
}

TEST_F(Win32PaneTest, AnotherTextIsNotColouredWithWhatWasLeftOfTheLast) {
    Edit(Lines(50), 0);
    SendMessageW(Pane(), WM_CHAR, L'"', 1);
    SendMessageW(Pane(), WM_CHAR, L'/', 1);
    SendMessageW(Pane(), WM_CHAR, L'*', 1);
    Paint();
    Desktop().FuncBody().SetText("int a;");
    Desktop().FuncBody().SetFuncBodyAvailable(false);
    user.Settle();
    Desktop().FuncBody().SetFuncBodyAvailable(true);
    user.Settle();
    EXPECT_NE(ColourAt(0), -1);
    EXPECT_EQ(ColourAt(4), -1);
}

TEST_F(Win32PaneTest, AKeyHasItsLineAlonePainted) {
    Edit(Lines(50), 0);
    SendMessageW(Pane(), WM_CHAR, L'x', 1);
    RECT rect = {};
    ASSERT_NE(GetUpdateRect(Pane(), &rect, FALSE), 0);
    const auto heightOf = [](const RECT& of) { return of.bottom - of.top; };
    RECT client = {};
    GetClientRect(Pane(), &client);
    EXPECT_LT(heightOf(rect), heightOf(client) / 4);
    Paint();
    EXPECT_EQ(GetUpdateRect(Pane(), &rect, FALSE), 0);
}

TEST_F(Win32PaneTest, WhatWasToBePaintedBeforeAKeyStillIsBehindIt) {
    Edit(Lines(50), 0);
    RECT client = {};
    GetClientRect(Pane(), &client);
    InvalidateRect(Pane(), nullptr, TRUE);
    SendMessageW(Pane(), WM_CHAR, L'x', 1);
    RECT rect = {};
    ASSERT_NE(GetUpdateRect(Pane(), &rect, FALSE), 0);
    EXPECT_EQ(rect.bottom, client.bottom);
    EXPECT_EQ(rect.top, client.top);
}

TEST_F(Win32PaneTest, ScrollingColoursWhatComesIntoView) {
    Edit(Lines(2000), 0);
    const auto below = static_cast<LONG>(win32::ToWide(user.PaneShown()).find(L"int value1500"));
    EXPECT_EQ(ColourAt(below), -1) << "nobody has looked there yet";
    SendMessageW(Pane(), EM_LINESCROLL, 0, 1495);
    const long first = FirstInView();
    Paint();
    EXPECT_NE(ColourAt(below), -1);
    EXPECT_EQ(FirstInView(), first) << "the caret is not in view, and stays there";
}

TEST_F(Win32PaneTest, ATextLongerThanAnyOldLimitIsKeptWhole) {
    const std::string text = Lines(3000); // more than 64 KB
    Edit(text, 0);
    user.Type("x");
    EXPECT_EQ(Desktop().FuncBody().Text(), "x" + text);
    SetClipboard(std::string(70000, 'y'));
    user.PressKey('V', 2);
    EXPECT_EQ(Desktop().FuncBody().Text().size(), text.size() + 70001);
}

TEST_F(Win32PaneTest, APasteBringsPlainTextOfSeveralSources) {
    const char rtf[] = "{\\rtf1\\ansi{\\colortbl;\\red255\\green0\\blue0;}\\cf1\\b rich}";
    ASSERT_NE(OpenClipboard(nullptr), 0);
    EmptyClipboard();
    const auto put = [](UINT format, const void* bytes, std::size_t size) {
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(GlobalLock(memory), bytes, size);
        GlobalUnlock(memory);
        SetClipboardData(format, memory);
    };
    put(RegisterClipboardFormatW(L"Rich Text Format"), rtf, sizeof rtf);
    put(CF_UNICODETEXT, L"plain", sizeof L"plain");
    CloseClipboard();
    Edit("", 0);
    for (const auto& paste : std::vector<std::function<void()>>{
             [this] { user.PressKey('V', 2); },
             [this] { user.PressKey(VK_INSERT, 1); },
             [this] { SendMessageW(Pane(), WM_PASTE, 0, 0); },
         }) {
        paste();
    }
    EXPECT_EQ(user.PaneShown(), "plainplainplain");
    Paint();
    EXPECT_EQ(ColourAt(0), -1);
}

TEST_F(Win32PaneTest, KeysThatFormatTextDoNothing) {
    Edit("text", 0);
    user.SelectAll();
    int changes = 0;
    Desktop().FuncBody().onChange = [&] { ++changes; };
    for (const int key : {'E', 'R', 'J', 'L', 'B', 'I', 'U', '1', '2', '5'}) {
        user.PressKey(key, 2);
    }
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(Desktop().FuncBody().Text(), "text");
    EXPECT_EQ(SendMessageW(Pane(), EM_CANUNDO, 0, 0), 0);
}

TEST_F(Win32PaneTest, EnterWithShiftIsALineBreakLikeAnother) {
    Edit("ab", 1);
    user.PressKey(VK_RETURN, 1);
    EXPECT_EQ(Desktop().FuncBody().Text(), "a\r\nb");
}

TEST_F(Win32PaneTest, ControlCharactersComeBackAlsoAfterAnEdit) {
    const std::string text("a\0b\x07"
                           "c\x0B"
                           "d\x0C"
                           "e",
                           9);
    Edit(text, 0);
    EXPECT_EQ(Desktop().FuncBody().Text(), text);
    user.Type("x");
    EXPECT_EQ(Desktop().FuncBody().Text(), "x" + text);
}

TEST_F(Win32PaneTest, ATextThatTheControlDoesNotTakeLeavesTheOldOne) {
    for (const DWORD error : {DWORD{ERROR_SUCCESS}, DWORD{ERROR_NOT_ENOUGH_MEMORY}}) {
        Edit("int a;\rb", 3);
        user.Type("x");
        int changes = 0;
        Desktop().FuncBody().onChange = [&] { ++changes; };
        {
            const ShortStreams once(Pane(), 1, error);
            EXPECT_THROW(Desktop().FuncBody().SetText("other\r\ntext\r\n"), std::runtime_error);
        }
        EXPECT_EQ(changes, 0);
        EXPECT_TRUE(Desktop().FuncBody().FuncBodyAvailable());
        EXPECT_EQ(Desktop().FuncBody().Text(), "intx a;\rb");
        EXPECT_EQ(user.PaneShown(), "intx a;\nb");
        user.Undo();
        EXPECT_EQ(Desktop().FuncBody().Text(), "int a;\rb");
        EXPECT_EQ(user.PaneShown(), "int a;\nb");
        EXPECT_TRUE(Desktop().FuncBody().Redo());
        user.Backspace();
        EXPECT_EQ(Desktop().FuncBody().Text(), "int a;\rb") << "the caret is where it was";
        Paint();
        EXPECT_NE(ColourAt(0), -1);
        EXPECT_EQ(ColourAt(7), -1);
        Desktop().FuncBody().onChange = nullptr;
    }
}

TEST_F(Win32PaneTest, AControlThatTakesNoTextAnyMoreLosesNone) {
    Edit("int a;\rb", 3);
    user.Type("x");
    {
        const ShortStreams twice(Pane(), 2, ERROR_SUCCESS);
        EXPECT_THROW(Desktop().FuncBody().SetText("other"), std::runtime_error);
    }
    user.Type("y");
    user.Paste("z");
    EXPECT_EQ(Desktop().FuncBody().Text(), "intx a;\rb");
    Desktop().FuncBody().SetText("new");
    user.Type("y");
    EXPECT_EQ(Desktop().FuncBody().Text(), "ynew");
}

TEST_F(Win32PaneTest, APaneThatCannotShowItsTextStaysUnavailable) {
    Edit("", 0);
    Desktop().FuncBody().SetFuncBodyAvailable(false);
    Desktop().FuncBody().SetText("int a;\rb");
    {
        const ShortStreams once(Pane(), 1, ERROR_SUCCESS);
        EXPECT_THROW(Desktop().FuncBody().SetFuncBodyAvailable(true), std::runtime_error);
    }
    EXPECT_FALSE(Desktop().FuncBody().FuncBodyAvailable());
    EXPECT_EQ(user.PaneShown(), "");
    EXPECT_EQ(Desktop().FuncBody().Text(), "int a;\rb");
    user.Type("x");
    EXPECT_EQ(Desktop().FuncBody().Text(), "int a;\rb");
    Desktop().FuncBody().SetFuncBodyAvailable(true);
    EXPECT_EQ(user.PaneShown(), "int a;\nb");
}

TEST_F(Win32PaneTest, AnUnavailablePaneIsShownEmpty) {
    Edit("text", 2);
    Desktop().FuncBody().SetFuncBodyAvailable(false);
    EXPECT_EQ(user.PaneShown(), "");
    EXPECT_EQ(Desktop().FuncBody().Text(), "text");
    Desktop().FuncBody().SetFuncBodyAvailable(true);
    EXPECT_EQ(user.PaneShown(), "text");
}

TEST_F(Win32PaneTest, TheScrollBarsAreThereAsLongAsTextCanBeSeen) {
    const auto bars = [this] { return GetWindowLongW(Pane(), GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL); };
    Edit("x", 0);
    EXPECT_EQ(bars(), WS_VSCROLL | WS_HSCROLL);
    Desktop().FuncBody().SetFuncBodyAvailable(false);
    EXPECT_EQ(bars(), 0);
    Desktop().FuncBody().SetText("y");
    Desktop().FuncBody().SetFuncBodyAvailable(true);
    Paint();
    EXPECT_EQ(bars(), WS_VSCROLL | WS_HSCROLL);
    user.Type("z");
    EXPECT_EQ(bars(), WS_VSCROLL | WS_HSCROLL);
}

TEST_F(Win32PaneTest, EveryCharacterIsAsWideAsThePaneSays) {
    Edit("iiiiWWWWx", 0);
    const auto left = [this](LONG place) {
        POINTL point = {};
        SendMessageW(Pane(), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&point), place);
        return point.x;
    };
    EXPECT_NEAR(win32::ToTwips(left(8) - left(0), 96), 8 * Desktop().FuncBody().CharacterWidth(), 15);
}

TEST_F(Win32PaneTest, ATabReachesTheStopsThatWereSet) {
    Desktop().FuncBody().SetTabStops({0, 900, 1800});
    Edit("\ta\n\t\tb", 0);
    const auto left = [this](LONG place) {
        POINTL point = {};
        SendMessageW(Pane(), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&point), place);
        return point.x;
    };
    EXPECT_NEAR(left(1) - left(0), 60, 1);
    EXPECT_NEAR(left(5) - left(3), 120, 1);
}

// Some systems take a time for it that grows with the square of the lines.
TEST_F(Win32PaneTest, AWiderMarginDoesNotHaveAllOfTheTextLaidOutAgain) {
    std::string text;
    for (int line = 0; line < 3000; ++line) {
        text += "    total += samples[" + std::to_string(line) + "];\n";
    }
    Edit("", 0);
    const auto time = [&] {
        const DWORD start = GetTickCount();
        Desktop().FuncBody().SetText(text);
        user.Settle();
        return GetTickCount() - start;
    };
    const DWORD wider = time();
    const DWORD asWide = time();
    EXPECT_LT(wider, 4 * asWide + 500);
    EXPECT_EQ(user.MarginShown().front(), "1");
}

} // namespace
} // namespace tessaly
