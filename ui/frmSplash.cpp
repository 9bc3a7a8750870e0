// The About box. Any key and a click end it.
#include "ui/frmSplash.h"

#include "ui/Command.h"

#include <string>

namespace tessaly {

frmSplash::frmSplash(Desktop& desktop) : mWindow(desktop.NewSplashWindow()) {
    const auto unload = [this] { RunCommand([this] { mWindow->Hide(); }); };
    mWindow->onKeyPress = unload;
    mWindow->onFrameClick = unload;
    Form_Load(desktop.App());
}

void frmSplash::Form_Load(Application& app) {
    mWindow->LblVersion().SetCaption("Version " + std::to_string(app.Major()) + "." + std::to_string(app.Minor()) +
                                     "." + std::to_string(app.Revision()));
    mWindow->LblProductName().SetCaption(app.Title());
    mWindow->LblPlatform().SetCaption("Windows 95/NT tm");
    mWindow->LblCompany().SetCaption("Ostrel");
    mWindow->LblCopyright().SetCaption("Copyright (c) 2026 Ostrel");
    mWindow->LblCompanyProduct().SetCaption("Ostrel");
}

} // namespace tessaly
