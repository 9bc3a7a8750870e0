#include "platform/desktop/win32/PopupMenu.h"

#include "platform/system/win32/Text.h"

namespace tessaly::win32 {

// The window is told that the keyboard goes to a menu and comes back. The ids of the rows count from 1.
void PopupMenu::ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) {
    const Owner<HMENU, &DestroyMenu> menu(CreatePopupMenu());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::string keys = rows[row].keys.empty() ? "" : "\t" + rows[row].keys;
        const UINT look = rows[row].text.empty() ? MF_SEPARATOR : rows[row].isEnabled ? MF_STRING : MF_GRAYED;
        AppendMenuW(menu.get(), look, row + 1, ToWide(rows[row].text + keys).c_str());
    }
    const BOOL chosen =
        TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y, mFrame.Handle(), nullptr);
    if (chosen > 0) {
        TellChoice(static_cast<std::size_t>(chosen) - 1);
    }
}

} // namespace tessaly::win32
