// The menus of the main window.
#pragma once

#include "platform/desktop/MenuItem.h"
#include "platform/desktop/win32/Headers.h"

#include <memory>
#include <string>
#include <vector>

namespace tessaly::win32 {

class MenuItem final : public tessaly::MenuItem {
public:
    // Stands at the end of `menu`.
    MenuItem(HWND window, HMENU menu, int id, std::string_view name);

    std::string Name() const override { return mName; }
    std::string Caption() const override { return mCaption; }
    void SetCaption(std::string_view caption) override;
    bool IsChecked() const override;
    void SetChecked(bool checked) override;

    int Id() const { return mId; }

    // The drop-down; made when it is asked for the first time.
    HMENU DropDown();

    // Null where nobody asked for it yet.
    HMENU DropDownThatIsThere() const;

private:
    MENUITEMINFOW Info(UINT mask) const;
    void SetInfo(const MENUITEMINFOW& info);

    HWND mWindow;
    HMENU mMenu;
    UINT mPlace; // in the menu; items never go
    int mId;
    std::string mName;
    std::string mCaption;
};

class Menus {
public:
    // Makes the menu bar of `window`, which gets it when it is shown.
    explicit Menus(HWND window);
    Menus(const Menus&) = delete;
    Menus& operator=(const Menus&) = delete;
    ~Menus();

    // The window owns the bar from now on.
    void Attach();

    tessaly::MenuItem& Add(tessaly::MenuItem* parent, std::string_view name);
    static void AddSeparator(tessaly::MenuItem& parent);

    // The user has chosen the item with this id.
    void Choose(int id) const;

    // The items in the bar (null) or a drop-down, from top to bottom; null for a line.
    std::vector<const MenuItem*> Items(const tessaly::MenuItem* menu) const;

private:
    HWND mWindow;
    HMENU mBar;
    bool mIsAttached = false;
    std::vector<std::unique_ptr<MenuItem>> mItems;
};

} // namespace tessaly::win32
