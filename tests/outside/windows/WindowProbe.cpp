// Looks at the windows of another program from outside and acts on them as the system does. Each line of standard input
// is one command, its words divided by tabs; the answer is one line of JSON. Must be of the same bitness as that
// program. With an argument it writes the window style that it was started with into the file of that name.
#include "tests/contract/win32/ProbeText.h"
#include "tests/contract/win32/RemoteMemory.h"
#include "tests/outside/windows/ProbeJson.h"

#include <algorithm>
#include <commctrl.h>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <io.h>
#include <iostream>
#include <map>
#include <oleacc.h>
#include <psapi.h>
#include <shlobj.h>
#include <windows.h>
#include <winternl.h>

namespace tessaly::probe {
namespace {

using Words = std::vector<std::string>;

constexpr UINT AnswerTime = 20000;

HWND Window(const std::string& word) {
    HWND window = reinterpret_cast<HWND>(std::stoull(word));
    if (!IsWindow(window)) {
        throw std::runtime_error("no such window");
    }
    return window;
}

LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, const void* lParam = nullptr) {
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(window, message, wParam, reinterpret_cast<LPARAM>(lParam), SMTO_NORMAL, AnswerTime,
                             &result)) {
        throw std::runtime_error("the window does not answer");
    }
    return static_cast<LRESULT>(result);
}

std::string Number(std::int64_t number) {
    return std::to_string(number);
}
std::string Handle(HWND window) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(window));
}

// In pixels of the screen.
std::string Rectangle(const RECT& rect) {
    return Array({Number(rect.left), Number(rect.top), Number(rect.right), Number(rect.bottom)});
}

std::string OnScreen(HWND window, RECT rect) {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return Rectangle(rect);
}

std::wstring WideText(HWND window) {
    std::wstring text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size(), text.data())));
    return text;
}

std::string Text(HWND window) {
    return Quoted(Utf8(WideText(window)));
}

std::string Class(HWND window) {
    wchar_t name[256] = L"";
    GetClassNameW(window, name, 256);
    return Quoted(Utf8(name));
}

std::string Describe(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    RECT rect{};
    GetWindowRect(window, &rect);
    return Object({{"window", Handle(window)},
                   {"class", Class(window)},
                   {"text", Text(window)},
                   {"process", Number(process)},
                   {"id", Number(GetWindowLongW(window, GWL_ID))},
                   {"style", Number(static_cast<std::uint32_t>(GetWindowLongW(window, GWL_STYLE)))},
                   {"exStyle", Number(static_cast<std::uint32_t>(GetWindowLongW(window, GWL_EXSTYLE)))},
                   {"owner", Handle(GetWindow(window, GW_OWNER))},
                   {"visible", Bool(IsWindowVisible(window))},
                   {"enabled", Bool(IsWindowEnabled(window))},
                   {"rect", Rectangle(rect)}});
}

BOOL CALLBACK Collect(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::string DescribeAll(const std::vector<HWND>& windows, DWORD process) {
    std::vector<std::string> described;
    for (HWND window : windows) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (process != 0 && owner != process) {
            continue;
        }
        try {
            described.push_back(Describe(window));
        } catch (const std::runtime_error&) {
            if (IsWindow(window)) { // else it went away meanwhile
                throw;
            }
        }
    }
    return Array(described);
}

// windows PROCESS: its top-level windows that are visible
std::string Windows(const Words& words) {
    std::vector<HWND> windows;
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [](HWND window) { return !IsWindowVisible(window); });
    return DescribeAll(windows, static_cast<DWORD>(std::stoul(words.at(1))));
}

// children WINDOW
std::string Children(const Words& words) {
    std::vector<HWND> windows;
    EnumChildWindows(Window(words.at(1)), Collect, reinterpret_cast<LPARAM>(&windows));
    return DescribeAll(windows, 0);
}

// Copies a structure over, sends the message with its address and copies it back. A text is expected 512 bytes on.
constexpr std::size_t TextOffset = 512;
constexpr std::size_t TextCount = 2048;

template <typename Structure>
LRESULT SendStructure(const RemoteMemory& memory, HWND window, UINT message, WPARAM wParam, Structure& structure) {
    static_assert(sizeof structure <= TextOffset);
    memory.Write(0, &structure, sizeof structure);
    const LRESULT result = Send(window, message, wParam, memory.At(0));
    memory.Read(0, &structure, sizeof structure);
    return result;
}

constexpr std::size_t MemorySize = TextOffset + TextCount * sizeof(wchar_t);

std::string TreeItem(const RemoteMemory& memory, HWND tree, HTREEITEM handle, int level) {
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_STATE;
    item.hItem = handle;
    item.stateMask = TVIS_SELECTED | TVIS_EXPANDED;
    item.pszText = static_cast<wchar_t*>(memory.At(TextOffset));
    item.cchTextMax = TextCount;
    SendStructure(memory, tree, TVM_GETITEMW, 0, item);
    RECT rect{};
    std::memcpy(&rect, &handle, sizeof handle); // the message takes the item where it puts the rectangle
    const bool shown = SendStructure(memory, tree, TVM_GETITEMRECT, TRUE, rect) != 0;
    return Object({{"text", Quoted(Utf8(memory.ReadText(TextOffset, TextCount)))},
                   {"level", Number(level)},
                   {"selected", Bool((item.state & TVIS_SELECTED) != 0)},
                   {"expanded", Bool((item.state & TVIS_EXPANDED) != 0)},
                   {"rect", shown ? OnScreen(tree, rect) : "null"}});
}

HTREEITEM Next(HWND tree, WPARAM relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(Send(tree, TVM_GETNEXTITEM, relation, item));
}

void CollectItems(const RemoteMemory& memory, HWND tree, HTREEITEM first, int level, std::vector<std::string>& items) {
    for (HTREEITEM item = first; item; item = Next(tree, TVGN_NEXT, item)) {
        items.push_back(TreeItem(memory, tree, item, level));
        CollectItems(memory, tree, Next(tree, TVGN_CHILD, item), level + 1, items);
    }
}

// tree WINDOW: its items from top to bottom
std::string Tree(const Words& words) {
    HWND tree = Window(words.at(1));
    const RemoteMemory memory(tree, MemorySize);
    std::vector<std::string> items;
    CollectItems(memory, tree, Next(tree, TVGN_ROOT, nullptr), 0, items);
    return Array(items);
}

// panels WINDOW: texts of a status bar
std::string Panels(const Words& words) {
    HWND bar = Window(words.at(1));
    const RemoteMemory memory(bar, MemorySize);
    std::vector<std::string> panels;
    const LRESULT count = Send(bar, SB_GETPARTS);
    for (LRESULT i = 0; i < count; ++i) {
        const std::size_t length = LOWORD(Send(bar, SB_GETTEXTLENGTHW, static_cast<WPARAM>(i)));
        if (length >= TextCount) {
            throw std::runtime_error("a panel's text is too long");
        }
        Send(bar, SB_GETTEXTW, static_cast<WPARAM>(i), memory.At(TextOffset));
        panels.push_back(Quoted(Utf8(memory.ReadText(TextOffset, length))));
    }
    return Array(panels);
}

std::string Cell(const RemoteMemory& memory, HWND list, WPARAM row, int column) {
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = static_cast<wchar_t*>(memory.At(TextOffset));
    item.cchTextMax = TextCount;
    SendStructure(memory, list, LVM_GETITEMTEXTW, row, item);
    return Quoted(Utf8(memory.ReadText(TextOffset, TextCount)));
}

// rows WINDOW: of a list with columns, their cells and the first one's place
std::string Rows(const Words& words) {
    HWND list = Window(words.at(1));
    const RemoteMemory memory(list, MemorySize);
    HWND head = reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
    const auto columns = static_cast<int>(Send(head, HDM_GETITEMCOUNT));
    const auto count = static_cast<WPARAM>(Send(list, LVM_GETITEMCOUNT));
    std::vector<std::string> rows;
    for (WPARAM row = 0; row < count; ++row) {
        std::vector<std::string> cells;
        for (int column = 0; column < columns; ++column) {
            cells.push_back(Cell(memory, list, row, column));
        }
        RECT rect{LVIR_LABEL, 0, 0, 0};
        SendStructure(memory, list, LVM_GETITEMRECT, row, rect);
        rows.push_back(Object({{"cells", Array(cells)}, {"rect", OnScreen(list, rect)}}));
    }
    return Array(rows);
}

// spoken WINDOW: what a screen reader says of it
std::string Spoken(const Words& words) {
    IAccessible* object = nullptr;
    if (FAILED(AccessibleObjectFromWindow(Window(words.at(1)), static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                          reinterpret_cast<void**>(&object)))) {
        throw std::runtime_error("there is nothing to be said");
    }
    VARIANT self = {};
    self.vt = VT_I4;
    BSTR name = nullptr;
    object->get_accName(self, &name);
    const std::string text = name != nullptr ? Utf8(name) : "";
    SysFreeString(name);
    object->Release();
    return Quoted(text);
}

// measure WINDOW message|caption: width and height of its text in that font of the system, no line broken
std::string Measure(const Words& words) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    HFONT font = CreateFontIndirectW(words.at(2) == "caption" ? &metrics.lfCaptionFont : &metrics.lfMessageFont);
    HDC screen = GetDC(nullptr);
    HGDIOBJ before = SelectObject(screen, font);
    RECT rect{};
    const std::wstring text = WideText(Window(words.at(1)));
    DrawTextW(screen, text.c_str(), -1, &rect, DT_CALCRECT | DT_EXPANDTABS | DT_NOPREFIX);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    DeleteObject(font);
    return Array({Number(rect.right), Number(rect.bottom)});
}

// buttons WINDOW: of a tool bar
std::string Buttons(const Words& words) {
    HWND bar = Window(words.at(1));
    const RemoteMemory memory(bar, MemorySize);
    std::vector<std::string> buttons;
    const LRESULT count = Send(bar, TB_BUTTONCOUNT);
    for (LRESULT i = 0; i < count; ++i) {
        TBBUTTON button{};
        SendStructure(memory, bar, TB_GETBUTTON, static_cast<WPARAM>(i), button);
        const wchar_t empty = L'\0';
        memory.Write(TextOffset, &empty, sizeof empty);
        Send(bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand), memory.At(TextOffset));
        RECT rect{};
        SendStructure(memory, bar, TB_GETITEMRECT, static_cast<WPARAM>(i), rect);
        buttons.push_back(Object({{"id", Number(button.idCommand)},
                                  {"image", Number(button.iBitmap)},
                                  {"text", Quoted(Utf8(memory.ReadText(TextOffset, TextCount)))},
                                  {"enabled", Bool((button.fsState & TBSTATE_ENABLED) != 0)},
                                  {"rect", OnScreen(bar, rect)}}));
    }
    return Array(buttons);
}

std::wstring Beside(const wchar_t* name) {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring file = path;
    return file.substr(0, file.rfind(L'\\') + 1) + name;
}

// menu WINDOW: all menus of the window's program, read by a library that is loaded into it
std::string Menu(const Words& words) {
    HANDLE mapping =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, MenuProbeSize, L"TessalyMenuProbe");
    void* view = mapping ? MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0) : nullptr;
    if (!view) {
        throw std::runtime_error("no shared memory");
    }
    const std::wstring library = Beside(L"menu_probe.dll");
    const RemoteMemory memory(Window(words.at(1)), (library.size() + 1) * sizeof(wchar_t));
    memory.Write(0, library.c_str(), (library.size() + 1) * sizeof(wchar_t));
    const auto load = reinterpret_cast<LPTHREAD_START_ROUTINE>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), "LoadLibraryW")));
    HANDLE thread = CreateRemoteThread(memory.Process(), nullptr, 0, load, memory.At(0), 0, nullptr);
    const bool done = thread && WaitForSingleObject(thread, AnswerTime) == WAIT_OBJECT_0;
    std::string answer = static_cast<const char*>(view);
    CloseHandle(thread);
    UnmapViewOfFile(view);
    CloseHandle(mapping);
    if (!done || answer.empty()) {
        throw std::runtime_error("the menus could not be read");
    }
    return answer;
}

// focus WINDOW: which window of its thread has the keyboard, whether its menus have it, which window of the screen is
// in front, and the number of WINDOW on the display
std::string Focus(const Words& words) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    HWND window = Window(words.at(1));
    if (!GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info)) {
        throw std::runtime_error("the window's thread cannot be asked");
    }
    const bool isInMenu = (info.flags & GUI_INMENUMODE) != 0;
    // Wine keeps with each window the number that the display knows it by.
    const HANDLE onDisplay = GetPropW(window, L"__wine_x11_whole_window");
    return Object({{"focus", Handle(info.hwndFocus)},
                   {"menu", Bool(isInMenu)},
                   {"front", Handle(GetForegroundWindow())},
                   {"display", Number(reinterpret_cast<std::intptr_t>(onDisplay))}});
}

// send WINDOW MESSAGE WPARAM LPARAM: numbers only
std::string SendNumbers(const Words& words) {
    const auto lParam = static_cast<std::uintptr_t>(std::stoll(words.at(4)));
    return Number(Send(Window(words.at(1)), static_cast<UINT>(std::stoul(words.at(2))),
                       static_cast<WPARAM>(std::stoll(words.at(3))), reinterpret_cast<const void*>(lParam)));
}

// post WINDOW MESSAGE WPARAM LPARAM
std::string Post(const Words& words) {
    return Bool(PostMessageW(Window(words.at(1)), static_cast<UINT>(std::stoul(words.at(2))),
                             static_cast<WPARAM>(std::stoll(words.at(3))),
                             static_cast<LPARAM>(std::stoll(words.at(4)))));
}

// settext WINDOW TEXT
std::string SetText(const Words& words) {
    Send(Window(words.at(1)), WM_SETTEXT, 0, Wide(words.at(2)).c_str());
    return "true";
}

// drop WINDOW FILE: the dropped file's name stays in the program's memory, which is the program's to free
std::string Drop(const Words& words) {
    HWND window = Window(words.at(1));
    const std::wstring file = Wide(words.at(2));
    std::vector<char> data(sizeof(DROPFILES) + (file.size() + 2) * sizeof(wchar_t));
    DROPFILES head{};
    head.pFiles = sizeof head;
    head.fWide = TRUE;
    std::memcpy(data.data(), &head, sizeof head);
    std::memcpy(data.data() + sizeof head, file.data(), file.size() * sizeof(wchar_t));
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    HANDLE handle = OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
    void* address = VirtualAllocEx(handle, nullptr, data.size(), MEM_COMMIT, PAGE_READWRITE);
    const bool written = WriteProcessMemory(handle, address, data.data(), data.size(), nullptr);
    CloseHandle(handle);
    return Bool(written && PostMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(address), 0));
}

void SetValue(HKEY key, const std::wstring& name, const std::string& type, const std::string& value) {
    const std::wstring text = Wide(value);
    const auto number = static_cast<DWORD>(type == "number" ? std::stoul(value) : 0);
    const bool isNumber = type == "number";
    const void* const data = isNumber ? static_cast<const void*>(&number) : text.c_str();
    const std::size_t size = isNumber ? sizeof number : (text.size() + 1) * sizeof(wchar_t);
    const LSTATUS status = RegSetValueExW(key, name.c_str(), 0, isNumber ? REG_DWORD : REG_SZ,
                                          static_cast<const BYTE*>(data), static_cast<DWORD>(size));
    if (status != ERROR_SUCCESS) {
        throw std::runtime_error("cannot write a value: error " + Number(status));
    }
}

// registry KEY [NAME text|number VALUE]...: the key below HKEY_LOCAL_MACHINE then has these values alone; without any
// it is not there
std::string Registry(const Words& words) {
    const std::wstring path = Wide(words.at(1));
    LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, path.c_str());
    HKEY key = nullptr;
    if ((status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND) && words.size() > 2) {
        status =
            RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    }
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
        throw std::runtime_error("cannot write the key: error " + Number(status));
    }
    for (std::size_t i = 2; i + 2 < words.size(); i += 3) {
        SetValue(key, Wide(words[i]), words[i + 1], words[i + 2]);
    }
    RegCloseKey(key);
    return "true";
}

// The processes that were started, which stay known after their end.
using Processes = std::map<DWORD, HANDLE>;

// start COMMAND-LINE [FOLDER]: as it stands, and where; answers the process
std::string Start(Processes& processes, const Words& words) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::wstring commandLine = Wide(words.at(1));
    const std::wstring folder = words.size() > 2 ? Wide(words[2]) : L"";
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        folder.empty() ? nullptr : folder.c_str(), &startup, &process)) {
        throw std::runtime_error("cannot start it: error " + Number(GetLastError()));
    }
    CloseHandle(process.hThread);
    processes[process.dwProcessId] = process.hProcess;
    return Number(process.dwProcessId);
}

// status PROCESS: its exit status, or null while it runs
std::string Status(const Processes& processes, const Words& words) {
    HANDLE process = processes.at(static_cast<DWORD>(std::stoul(words.at(1))));
    DWORD status = 0;
    if (WaitForSingleObject(process, 0) != WAIT_OBJECT_0 || !GetExitCodeProcess(process, &status)) {
        return "null";
    }
    return Number(status);
}

// GDI objects of a process. Wine tells none, but has its table of them where Windows has one: from the block that
// describes a process. Wine's own is of the process alone, and a type is 0 where there is no object.
std::size_t GdiObjects(HANDLE process) {
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type;
        std::uint8_t flags;
        std::uint64_t pointer;
    };
    constexpr std::size_t mostObjects = 0x4000;
    constexpr std::size_t tableInBlock = sizeof(void*) == 8 ? 0xF8 : 0x94;
    PROCESS_BASIC_INFORMATION information{};
    const char* table = nullptr;
    std::vector<Entry> entries(mostObjects);
    if (NtQueryInformationProcess(process, ProcessBasicInformation, &information, sizeof information, nullptr) != 0 ||
        !ReadProcessMemory(process, reinterpret_cast<const char*>(information.PebBaseAddress) + tableInBlock, &table,
                           sizeof table, nullptr) ||
        !ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(Entry), nullptr)) {
        throw std::runtime_error("the GDI objects cannot be counted");
    }
    return static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(), [](const Entry& entry) { return entry.type != 0; }));
}

// gdi PROCESS: how many GDI objects it has. That they are counted at all is tried out with one of the probe's own.
std::string Gdi(const Processes& processes, const Words& words) {
    HANDLE self = GetCurrentProcess();
    const std::size_t before = GdiObjects(self);
    HPEN pen = CreatePen(PS_SOLID, 1, 0);
    const std::size_t withOneMore = GdiObjects(self);
    DeleteObject(pen);
    if (withOneMore != before + 1 || GdiObjects(self) != before) {
        throw std::runtime_error("the GDI objects are counted in a wrong way");
    }
    return Number(static_cast<std::int64_t>(GdiObjects(processes.at(static_cast<DWORD>(std::stoul(words.at(1)))))));
}

// kill PROCESS
std::string Kill(const Processes& processes, const Words& words) {
    return Bool(TerminateProcess(processes.at(static_cast<DWORD>(std::stoul(words.at(1)))), 99));
}

// hold FILE: open for reading, so that nobody may write it, as long as the probe runs or until `release`
std::string Hold(HANDLE& held, const Words& words) {
    held = CreateFileW(Wide(words.at(1)).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    return Bool(held != INVALID_HANDLE_VALUE);
}

using Command = std::function<std::string(const Words&)>;

std::map<std::string, Command> Commands(Processes& processes, HANDLE& held) {
    return {{"windows", Windows},
            {"children", Children},
            {"tree", Tree},
            {"panels", Panels},
            {"buttons", Buttons},
            {"rows", Rows},
            {"spoken", Spoken},
            {"measure", Measure},
            {"menu", Menu},
            {"focus", Focus},
            {"text", [](const Words& words) { return Text(Window(words.at(1))); }},
            {"send", SendNumbers},
            {"post", Post},
            {"settext", SetText},
            {"drop", Drop},
            {"hold", [&](const Words& words) { return Hold(held, words); }},
            {"release", [&](const Words&) { return Bool(CloseHandle(held)); }},
            {"registry", Registry},
            {"start", [&](const Words& words) { return Start(processes, words); }},
            {"status", [&](const Words& words) { return Status(processes, words); }},
            {"gdi", [&](const Words& words) { return Gdi(processes, words); }},
            {"kill", [&](const Words& words) { return Kill(processes, words); }}};
}

Words Split(const std::string& line) {
    Words words(1);
    for (const char c : line) {
        if (c == '\t') {
            words.emplace_back();
        } else if (c != '\r') {
            words.back() += c;
        }
    }
    return words;
}

void Serve() {
    Processes processes;
    HANDLE held = INVALID_HANDLE_VALUE;
    const std::map<std::string, Command> commands = Commands(processes, held);
    for (std::string line; std::getline(std::cin, line);) {
        const Words words = Split(line);
        try {
            std::cout << Object({{"answer", commands.at(words[0])(words)}}) << std::endl;
        } catch (const std::exception& error) {
            std::cout << Object({{"error", Quoted(error.what())}}) << std::endl;
        }
    }
}

// The window style that the program was told to start with, or -1. The file appears when it is complete.
void TellStyle(const std::string& path) {
    STARTUPINFOW startup{};
    GetStartupInfoW(&startup);
    const std::string half = path + ".half";
    std::ofstream(half) << ((startup.dwFlags & STARTF_USESHOWWINDOW) != 0 ? startup.wShowWindow : -1);
    MoveFileA(half.c_str(), path.c_str());
}

} // namespace
} // namespace tessaly::probe

int main(int count, char** arguments) {
    if (count > 1) { // started in the place of a batch file
        tessaly::probe::TellStyle(arguments[1]);
        return 0;
    }
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    tessaly::probe::Serve();
    return 0;
}
