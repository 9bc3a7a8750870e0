// Whether there is a browser to show HTML. On some systems an editor is the first that takes such files.
#pragma once

#include "platform/system/Environment.h"

namespace tessaly::posix {

// Whether the system opens HTML files with a program that calls itself a browser. Asks xdg-mime, and looks up its
// answer in the folders for applications; false where there is no answer.
bool HtmlOpensInBrowser(const Environment& environment);

} // namespace tessaly::posix
