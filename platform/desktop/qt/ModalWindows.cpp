// Neither window hides itself: that is the program's answer to what it is told, but for the frame.
#include "platform/desktop/qt/ModalWindows.h"

#include "platform/desktop/Raise.h"
#include "platform/desktop/Window.h"
#include "platform/desktop/qt/Keys.h"

#include <QCloseEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <algorithm>
#include <utility>

namespace tessaly::qt {

namespace {

constexpr int NameWidth = 380;
constexpr int SplashMargin = 28;
constexpr int LogoSize = 96;

QIcon Logo() {
    QIcon logo;
    logo.addFile(":/logo-96.png");
    logo.addFile(":/logo-192.png");
    return logo;
}

void Enlarge(QWidget& widget, double factor) {
    QFont font = widget.font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * factor);
    widget.setFont(font);
}

} // namespace

Dialog::Dialog(QWidget& owner)
    : QDialog(&owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint) {
    setWindowModality(Qt::WindowModal); // the help stays usable
}

// Qt's own middle would be that of the owner and its frame without the frame of the dialog.
void Dialog::Run() {
    adjustSize();
    const QWidget& owner = *parentWidget();
    const QRect screen = owner.screen()->availableGeometry();
    QRect place(QPoint(), size());
    place.moveCenter(QRect(owner.mapToGlobal(QPoint()), owner.size()).center());
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    place.moveLeft(std::max(place.left(), screen.left()));
    place.moveTop(std::max(place.top(), screen.top()));
    setGeometry(place);
    exec();
}

void Dialog::reject() {
    Raise(onEscape);
}

void Dialog::closeEvent(QCloseEvent* event) {
    Raise(onClose);
    event->accept();
    hide();
}

void Dialog::keyPressEvent(QKeyEvent* event) {
    if (!onPress) {
        QDialog::keyPressEvent(event);
    } else if (!event->isAutoRepeat() && !IsModifierKey(VirtualKey(*event))) {
        onPress();
    }
    if (event->key() == Qt::Key_F1) { // the help comes up last, so that it is seen
        Raise(onHelp);
    }
}

NameWindow::NameWindow(QWidget& owner, std::function<void()> onHelp) : mDialog(owner) {
    mDialog.onHelp = std::move(onHelp);
    mLabel.setBuddy(&mName);
    mLabel.setWordWrap(true);
    mLabel.setMinimumWidth(NameWidth);
    mLayout.addWidget(&mLabel);
    mLayout.addWidget(&mName);
    mLayout.addWidget(&mButtons);
    mLayout.setSizeConstraint(QLayout::SetFixedSize);
    // A click on OK leaves the focus in the box, where a bad name is to be mended.
    for (QAbstractButton* const button : mButtons.buttons()) {
        button->setFocusPolicy(Qt::TabFocus);
    }
    mButtons.button(QDialogButtonBox::Ok)->setDefault(true);
    SetTexts({});
    QObject::connect(&mButtons, &QDialogButtonBox::accepted, &mDialog, [this] { Raise(onOk); });
    QObject::connect(&mButtons, &QDialogButtonBox::rejected, &mDialog, [this] { Raise(onCancel); });
    mDialog.onEscape = [this] { Raise(onCancel); };
    mDialog.onClose = [this] { Raise(onCancel); };
}

void NameWindow::SetTexts(const NameTexts& texts) {
    mDialog.SetCaption(texts.caption);
    ShowLabel(mLabel, texts.label);
    mButtons.button(QDialogButtonBox::Cancel)->setText(ToQt(texts.cancel));
}

void NameWindow::ShowModal() {
    mName.setFocus(Qt::OtherFocusReason);
    mDialog.Run();
}

SplashWindow::SplashWindow(QWidget& owner, std::function<void()> onHelp) : mDialog(owner) {
    mDialog.SetCaption("");
    mDialog.onHelp = std::move(onHelp);
    mFrame.setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    mDialogLayout.addWidget(&mFrame);
    mLayout.setContentsMargins(SplashMargin, SplashMargin, SplashMargin, SplashMargin);
    mLogo.setPixmap(Logo().pixmap(QSize(LogoSize, LogoSize), owner.devicePixelRatioF()));
    mLayout.addWidget(&mLogo, 0, Qt::AlignHCenter);
    for (QLabel& label : mLabels) {
        mLayout.addWidget(&label, 0, Qt::AlignHCenter);
    }
    Enlarge(mLabels[SplashLabels::ProductName], 1.5);
    mDialogLayout.setSizeConstraint(QLayout::SetFixedSize);
    mFrame.onClick = [this] { Raise(onFrameClick); };
    mDialog.onPress = [this] { Raise(onKeyPress); };
}

void SplashWindow::SetLabels(const SplashLabels& labels) {
    for (std::size_t place = 0; place < mLabels.size(); ++place) {
        ShowLabel(mLabels[place], labels.FromTop()[place]);
    }
}

void SplashWindow::Frame::mousePressEvent(QMouseEvent* event) {
    mIsPressed = event->button() == Qt::LeftButton;
}

void SplashWindow::Frame::mouseReleaseEvent(QMouseEvent* event) {
    if (std::exchange(mIsPressed, false) && event->button() == Qt::LeftButton && rect().contains(event->pos())) {
        Raise(onClick);
    }
}

} // namespace tessaly::qt
