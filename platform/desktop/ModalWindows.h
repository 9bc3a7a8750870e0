// The two small windows: the one that asks for a name and the one that tells about the program. What they do is
// decided elsewhere; here they are their controls.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly {

// A window that blocks the main window while it is shown. F1 in it opens the help, as in the main window.
class ModalWindow {
public:
    virtual ~ModalWindow() = default;

    // Shows the window in the middle of its owner, as far as the screen allows, and returns when it was hidden. Closing
    // it by its frame hides it.
    virtual void ShowModal() = 0;

    // Hides the window; its controls keep what they hold.
    virtual void Hide() = 0;
};

// None has a text at first.
struct NameTexts {
    std::string caption;
    std::string label;
    std::string cancel; // on the button
};

// A label, a single-line text box that has the focus at first, an OK button (also Enter) and a Cancel button (also
// Escape and the window's frame).
class NameWindow : public ModalWindow {
public:
    std::function<void()> onOk;
    std::function<void()> onCancel;

    virtual void SetTexts(const NameTexts& texts) = 0;

    // The text in the box.
    virtual std::string FuncVarName() const = 0;
};

// The texts of the labels in the splash window, which has no caption. The product's name is in large letters.
struct SplashLabels {
    std::string LblVersion;
    std::string LblPlatform;
    std::string LblCompany;
    std::string LblCopyright;
    std::string LblCompanyProduct;
    std::string LblProductName;

    // As they stand below each other.
    std::array<std::string_view, 6> FromTop() const {
        return {LblCompanyProduct, LblProductName, LblVersion, LblPlatform, LblCompany, LblCopyright};
    }
    static constexpr std::size_t ProductName = 1; // the place of that
};

class SplashWindow : public ModalWindow {
public:
    std::function<void()> onKeyPress;   // any key but a modifier, and but one that is still held down from before
    std::function<void()> onFrameClick; // a click with the left button on the frame around it all or on what is in it

    virtual void SetLabels(const SplashLabels& labels) = 0;
};

} // namespace tessaly
