// A window of the same size with the same controls, and nothing in or behind them. That is the least that such a
// program does. What Tessaly's start takes longer than this one's is its own.
#include <initializer_list>

// In this order:
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

struct Child {
    const wchar_t* name;
    DWORD style;
    int left, top, width, height;
};

void AddChildren(HWND window, HINSTANCE instance) {
    RECT client{};
    GetClientRect(window, &client);
    const int margin = 8;
    const int tree = client.right * 27 / 100;
    const int pane = tree + 2 * margin;
    const int width = client.right - pane - margin;
    const int height = client.bottom - 90;
    const Child children[] = {
        {TOOLBARCLASSNAMEW, 0, 0, 0, 0, 0},
        {L"Static", 0, margin, 40, tree, 18},
        {WC_TREEVIEWW, WS_BORDER | TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT, margin, 60, tree, height},
        {L"Static", 0, pane, 40, width, 18},
        {L"RICHEDIT50W", WS_BORDER | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_AUTOVSCROLL, pane, 60, width, height},
        {STATUSCLASSNAMEW, SBARS_SIZEGRIP, 0, 0, 0, 0},
    };
    for (const Child& child : children) {
        CreateWindowExW(0, child.name, L"", WS_CHILD | WS_VISIBLE | child.style, child.left, child.top, child.width,
                        child.height, window, nullptr, instance, nullptr);
    }
}

HMENU Menu() {
    HMENU menu = CreateMenu();
    for (const wchar_t* text : {L"&File", L"&Compile", L"&Language", L"&Help"}) {
        HMENU drop = CreatePopupMenu();
        AppendMenuW(drop, MF_STRING, 1, L"&Item");
        AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(drop), text);
    }
    return menu;
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES | ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    LoadLibraryW(L"msftedit.dll");
    WNDCLASSW own{};
    own.lpfnWndProc = Procedure;
    own.hInstance = instance;
    own.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    own.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    own.lpszClassName = L"BareWindow";
    RegisterClassW(&own);
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    HWND window = CreateWindowExW(0, L"BareWindow", L"Bare window", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                                  area.right * 85 / 100, area.bottom * 85 / 100, nullptr, Menu(), instance, nullptr);
    AddChildren(window, instance);
    ShowWindow(window, show);
    for (MSG message; GetMessageW(&message, nullptr, 0, 0) > 0;) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
