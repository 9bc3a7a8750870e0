// The About box. Any key and a click end it.
#include "ui/frmSplash.h"

#include <string>

namespace tessaly {

frmSplash::frmSplash(Desktop& desktop) : mWindow(desktop.NewSplashWindow()) {
    const auto unload = [this] { mWindow->Hide(); };
    mWindow->onKeyPress = unload;
    mWindow->onFrameClick = unload;
    Form_Load(desktop.App());
}

void frmSplash::Form_Load(const Application& app) {
    mLabels.LblVersion = "Version " + std::to_string(app.majorVersion) + "." + std::to_string(app.minorVersion) + "." +
                         std::to_string(app.revision);
    mLabels.LblPlatform = "Windows 95/NT tm";
    mLabels.LblCompany = "Ostrel";
    mLabels.LblCopyright = "Copyright (c) 2026 Ostrel";
    mLabels.LblCompanyProduct = "Ostrel";
    SetProductName(app.title);
}

void frmSplash::SetProductName(std::string_view name) {
    mLabels.LblProductName = name;
    mWindow->SetLabels(mLabels);
}

} // namespace tessaly
