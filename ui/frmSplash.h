// The About box.
#pragma once

#include "platform/desktop/Desktop.h"

#include <memory>
#include <string_view>

namespace tessaly {

class frmSplash {
public:
    // Makes the window and loads it: version and title go into their labels.
    explicit frmSplash(Desktop& desktop);

    void SetProductName(std::string_view name);

    // Returns when a key was pressed in it or its frame was clicked.
    void ShowModal() { mWindow->ShowModal(); }

private:
    void Form_Load(const Application& app);

    SplashLabels mLabels;
    std::unique_ptr<SplashWindow> mWindow;
};

} // namespace tessaly
