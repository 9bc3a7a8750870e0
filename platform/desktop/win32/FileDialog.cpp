// The dialogs change the working directory while they are shown, so it is put back.
#include "platform/desktop/win32/FileDialog.h"

#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/MsgBox.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <string>

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

} // namespace tessaly::win32
