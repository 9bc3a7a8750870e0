// A press does not take the focus from the pane.
#include "platform/desktop/qt/ToolBar.h"

#include <QIcon>
#include <array>

namespace tessaly::qt {

namespace {

constexpr int PictureSize = 24;

// Of the images, each with its size in pixels behind it.
constexpr std::array<const char*, 2> Pictures = {":/add-", ":/delete-"};

} // namespace

ToolBar::ToolBar(Window& window) : Control(window, mBar), mBar(&window.Area()) {
    mBar.setIconSize(QSize(PictureSize, PictureSize));
    mBar.setFocusPolicy(Qt::NoFocus);
    QAction button{QIcon(), QString()}; // measured with one
    mBar.addAction(&button);
    mHeight = ToTwips(mBar.sizeHint().height());
}

void ToolBar::RemoveButtons() {
    mActions.clear(); // an action that goes takes its button along
}

void ToolBar::ShowButton(std::int32_t image, std::string_view tag) {
    QIcon icon;
    for (const int size : {PictureSize, 2 * PictureSize}) {
        icon.addFile(Pictures[static_cast<std::size_t>(image) - 1] + QString::number(size) + ".png");
    }
    mActions.push_back(std::make_unique<QAction>(icon, ToQt(tag)));
    QAction& action = *mActions.back();
    mBar.addAction(&action);
    mBar.widgetForAction(&action)->setFocusPolicy(Qt::TabFocus);
    const auto number = static_cast<std::int32_t>(mActions.size());
    // Queued, because the handler may take the button away.
    QObject::connect(
        &action, &QAction::triggered, &mBar, [this, number] { RaiseClick(number); }, Qt::QueuedConnection);
}

void ToolBar::ShowTip(std::int32_t number, std::string_view tip) {
    mActions[static_cast<std::size_t>(number) - 1]->setText(ToQt(tip));
}

void ToolBar::TakeKeyboard() {
    mBar.widgetForAction(mActions.front().get())->setFocus(Qt::OtherFocusReason);
}

} // namespace tessaly::qt
