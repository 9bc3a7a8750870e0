// A menu or an item of one.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tessaly {

class MenuItem {
public:
    // Raised when the user chooses the item. A menu that only opens a drop-down raises nothing.
    std::function<void()> onClick;

    virtual ~MenuItem() = default;

    // The name that it was made with, such as "mnuFile".
    virtual std::string Name() const = 0;

    // An ampersand marks the access key.
    virtual std::string Caption() const = 0;
    virtual void SetCaption(std::string_view caption) = 0;

    virtual bool IsChecked() const = 0;
    virtual void SetChecked(bool checked) = 0;
};

} // namespace tessaly
