// Of a Yes/No box Qt would take the Escape key for a No; here it has to be answered.
#include "platform/qt/QtMsgBox.h"

#include "platform/qt/QtText.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>

namespace tessaly {

namespace {

class Box final : public QMessageBox {
public:
    Box(QWidget* parent, bool canBeClosed) : QMessageBox(parent), mCanBeClosed(canBeClosed) {
        if (!canBeClosed) {
            setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        }
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        if (mCanBeClosed) {
            QMessageBox::closeEvent(event);
        } else {
            event->ignore();
        }
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (mCanBeClosed || event->key() != Qt::Key_Escape) {
            QMessageBox::keyPressEvent(event);
        }
    }

private:
    bool mCanBeClosed;
};

QMessageBox::StandardButtons ButtonsOf(MsgButtons buttons) {
    return buttons == MsgButtons::Ok      ? QMessageBox::Ok
           : buttons == MsgButtons::YesNo ? QMessageBox::Yes | QMessageBox::No
                                          : QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
}

QMessageBox::Icon IconOf(MsgIcon icon) {
    switch (icon) {
    case MsgIcon::Stop:
        return QMessageBox::Critical;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

MsgResult QtMsgBox::Show(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) {
    QWidget* const onTop = QApplication::activeModalWidget();
    Box box(onTop != nullptr ? onTop : &mWindow, buttons != MsgButtons::YesNo);
    box.setWindowTitle(ToQt(caption));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(text));
    box.setIcon(IconOf(icon));
    box.setStandardButtons(ButtonsOf(buttons));
    box.setDefaultButton(buttons == MsgButtons::Ok ? QMessageBox::Ok : QMessageBox::Yes);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MsgResult::Yes;
    case QMessageBox::No:
        return MsgResult::No;
    case QMessageBox::Cancel:
        return MsgResult::Cancel;
    default:
        return MsgResult::Ok;
    }
}

} // namespace tessaly
