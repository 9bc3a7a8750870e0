// Buttons and images count from 1. A press does not take the focus from the pane.
#include "platform/desktop/qt/ToolBar.h"

#include <QIcon>
#include <array>
#include <stdexcept>
#include <utility>

namespace tessaly::qt {

namespace {

constexpr int PictureSize = 24;

struct Picture {
    std::string_view tag;
    const char* file; // with its size in pixels behind it
};

// The tags of the pictures tell what their buttons do.
constexpr std::array<Picture, 2> Pictures = {{{"Add", ":/add-"}, {"Delete", ":/delete-"}}};

// A number below 1 becomes one far behind the end.
const Picture& PictureAt(std::int32_t number) {
    return Pictures.at(static_cast<std::size_t>(number) - 1);
}

} // namespace

std::string ImageList::Tag(std::int32_t number) const {
    return std::string(PictureAt(number).tag);
}

ToolBar::ToolBar(QWidget* parent, Focus& focus) : Control(&focus, mBar, Keyboard::Used), mBar(parent) {
    mBar.setIconSize(QSize(PictureSize, PictureSize));
    mBar.setFocusPolicy(Qt::NoFocus);
    QAction button{QIcon(), QString()}; // measured with one
    mBar.addAction(&button);
    mHeight = ToTwips(mBar.sizeHint().height());
}

void ToolBar::Clear() {
    mButtons.clear(); // an action that goes takes its button along
}

void ToolBar::AddButton(std::int32_t image, std::string_view tag) {
    const Picture& picture = PictureAt(image);
    QIcon icon;
    for (const int size : {PictureSize, 2 * PictureSize}) {
        icon.addFile(picture.file + QString::number(size) + ".png");
    }
    auto action = std::make_unique<QAction>(icon, ToQt(tag));
    mBar.addAction(action.get());
    const auto number = static_cast<std::int32_t>(mButtons.size()) + 1;
    // Queued, because the handler may take the button away.
    QObject::connect(
        action.get(), &QAction::triggered, &mBar,
        [this, number] {
            const FocusEvents::Command command(WindowFocus().events, FocusEvents::Keyboard::IsTaken);
            if (onButtonClick && number <= ButtonCount()) {
                onButtonClick(number);
            }
        },
        Qt::QueuedConnection);
    mButtons.push_back({std::string(tag), std::move(action)});
    UpdateFocusPolicy();
}

void ToolBar::SetButtonTip(std::int32_t number, std::string_view tip) {
    At(number).action->setText(ToQt(tip));
}

std::string ToolBar::ButtonTag(std::int32_t number) const {
    return At(number).tag;
}

void ToolBar::TakeFocus() {
    ButtonWidget(1).setFocus(Qt::OtherFocusReason);
}

QWidget& ToolBar::ButtonWidget(std::int32_t number) const {
    return *mBar.widgetForAction(At(number).action.get());
}

void ToolBar::UpdateFocusPolicy() {
    for (const Button& button : mButtons) {
        mBar.widgetForAction(button.action.get())->setFocusPolicy(IsTabStop() ? Qt::TabFocus : Qt::NoFocus);
    }
}

// A number below 1 becomes one far behind the end.
const ToolBar::Button& ToolBar::At(std::int32_t number) const {
    return mButtons.at(static_cast<std::size_t>(number) - 1);
}

} // namespace tessaly::qt
