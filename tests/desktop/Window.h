// The main window in memory, and what a user can do with it.
#pragma once

#include "platform/desktop/Window.h"
#include "tests/desktop/Application.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"
#include "tests/desktop/SequentialFiles.h"

#include <string>
#include <string_view>

namespace tessaly::memory {

class Window final : public tessaly::Window {
public:
    // Icons are taken from `files`; a file whose content is empty is no picture.
    Window(Faults& faults, Application& application, const SequentialFiles& files);

    void SetCaption(std::string_view caption) override;
    Sizes CurrentSizes() const override;
    void SetMinimumSize(float width, float height) override;
    void SetIcon(const std::string& path) override;

    // The user presses a key: onKeyDown is raised, then the key reaches the control that has the focus now. F1 opens
    // the help file, and Tab moves the focus where the control has no use for it.
    void PressKey(int keyCode, int shift = 0);

    // Lets the keys that the program sent to itself arrive.
    void DeliverSentKeys();

    // The user changes the outer size, in twips, as far as the window lets him. Throws ImpossibleAction before the
    // window is shown.
    void Resize(float width, float height);

    // The user closes the window by its frame.
    void CloseByUser();

    // Somebody else takes the window away, whatever stands in front of it.
    void DestroyFromOutside() { Leave(); }

    // The user drops a file on the window.
    void DropFile(const std::string& path);

    // All that the user did has been done.
    void BeIdle() { TellIdle(); }

    // The user goes to another program.
    void GoToAnotherProgram() { Suspend(); }

    // The size before the window is shown, without an event.
    void SetInitialSize(float width, float height);

    bool IsShown() const { return mIsShown && !HasEnded(); }
    // On the screen.
    Extent Place() const { return {0, 0, mSize.width, mSize.height}; }
    Extent ClientPlace() const;

    const std::string& Caption() const { return mCaption; }
    const std::string& Icon() const { return mIcon; } // the path, "" at first

    Focus focus{controls};

private:
    void ShowFrame() override;
    void CloseFrame() override {}
    void CheckUsable(std::string_view action) const;
    void SetSize(const Size& size);

    Faults& mFaults;
    Application& mMemoryApplication;
    const SequentialFiles& mFiles;
    std::string mCaption;
    Size mSize;
    Size mMinimum;
    std::string mIcon;
    bool mIsShown = false;
};

} // namespace tessaly::memory
