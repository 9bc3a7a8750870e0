// A library that is loaded into the program under test and writes down its menus: Wine lets no other process read them.
// It answers in the shared memory "TessalyMenuProbe" and is gone again when it is loaded.
#include "tests/contract/win32/ProbeText.h"
#include "tests/outside/windows/ProbeJson.h"

#include <windows.h>

namespace tessaly::probe {
namespace {

std::string ItemText(HMENU menu, UINT position) {
    wchar_t text[512] = L"";
    GetMenuStringW(menu, position, text, 512, MF_BYPOSITION);
    return Utf8(text);
}

// On the screen: of an item of the bar, which is `window`'s, or of a menu that is open; else "null".
std::string Place(HWND window, HMENU menu, UINT position) {
    RECT rect{};
    if (!GetMenuItemRect(window, menu, position, &rect)) {
        return "null";
    }
    return Array(
        {std::to_string(rect.left), std::to_string(rect.top), std::to_string(rect.right), std::to_string(rect.bottom)});
}

std::string Items(HWND window, HMENU menu) {
    std::vector<std::string> items;
    for (UINT i = 0; i < static_cast<UINT>(GetMenuItemCount(menu)); ++i) {
        const UINT state = GetMenuState(menu, i, MF_BYPOSITION);
        HMENU drop = GetSubMenu(menu, static_cast<int>(i));
        items.push_back(Object({{"text", Quoted(ItemText(menu, i))},
                                {"id", std::to_string(drop ? 0 : GetMenuItemID(menu, static_cast<int>(i)))},
                                {"checked", Bool((state & MF_CHECKED) != 0)},
                                {"enabled", Bool((state & (MF_GRAYED | MF_DISABLED)) == 0)},
                                {"separator", Bool(!drop && (state & MF_SEPARATOR) != 0)},
                                {"rect", Place(window, menu, i)},
                                {"items", drop ? Items(nullptr, drop) : "[]"}}));
    }
    return Array(items);
}

BOOL CALLBACK FindMenu(HWND window, LPARAM found) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId() || !GetMenu(window)) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void Answer() {
    HANDLE mapping = OpenFileMappingW(FILE_MAP_WRITE, FALSE, L"TessalyMenuProbe");
    if (!mapping) {
        return;
    }
    if (void* view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0)) {
        HWND window = nullptr;
        EnumWindows(FindMenu, reinterpret_cast<LPARAM>(&window));
        lstrcpynA(static_cast<char*>(view), (window ? Items(window, GetMenu(window)) : "[]").c_str(), MenuProbeSize);
        UnmapViewOfFile(view);
    }
    CloseHandle(mapping);
}

} // namespace
} // namespace tessaly::probe

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        tessaly::probe::Answer();
    }
    return FALSE; // unloads it at once
}
