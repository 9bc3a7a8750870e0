// Shows the help where the system has no browser for it. It blocks nothing and stays until the user closes it.
#pragma once

#include <QIcon>
#include <QTextBrowser>
#include <string>

namespace tessaly::qt {

class HelpWindow {
public:
    explicit HelpWindow(const QIcon& icon);

    // Shows the HTML file `path` and comes to the front.
    void Show(const std::string& path);

    QTextBrowser& Widget() { return mText; }

private:
    QTextBrowser mText;
};

} // namespace tessaly::qt
