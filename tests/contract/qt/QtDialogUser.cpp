// A dialog is answered from within its own event loop, as soon as it is shown and has the keyboard.
#include "tests/contract/qt/QtDialogUser.h"

#include "platform/desktop/qt/Keys.h"
#include "platform/desktop/qt/ModalWindows.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <gtest/gtest.h>

namespace tessaly {

namespace {

void Key(const QWidget& window, Qt::Key key, const QString& text = {}) {
    QTest::sendKeyEvent(QTest::Click, window.windowHandle(), key, text, Qt::NoModifier);
}

void Click(QWidget& widget) {
    const QWidget& window = *widget.window();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      widget.mapTo(&window, widget.rect().center()));
}

// The key with this number on Windows.
int KeyOf(int keyCode) {
    const auto isIt = [keyCode](int key) {
        return qt::VirtualKey(QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier)) == keyCode;
    };
    int key = Qt::Key_Space;
    while (!isIt(key)) {
        key = key == Qt::Key_AsciiTilde ? static_cast<int>(Qt::Key_Escape) : key + 1;
        if (key > Qt::Key_F35) {
            ADD_FAILURE() << "no key has the number " << keyCode;
            break;
        }
    }
    return key;
}

QMessageBox::StandardButton ButtonOf(MsgResult result) {
    switch (result) {
    case MsgResult::Yes:
        return QMessageBox::Yes;
    case MsgResult::No:
        return QMessageBox::No;
    case MsgResult::Cancel:
        return QMessageBox::Cancel;
    case MsgResult::Ok:
        break;
    }
    return QMessageBox::Ok;
}

SeenMessageBox See(const QMessageBox& box) {
    const QMessageBox::StandardButtons buttons = box.standardButtons();
    const MsgButtons seen = buttons == QMessageBox::Ok                        ? MsgButtons::Ok
                            : buttons == (QMessageBox::Yes | QMessageBox::No) ? MsgButtons::YesNo
                                                                              : MsgButtons::YesNoCancel;
    const MsgIcon icon = box.icon() == QMessageBox::Critical      ? MsgIcon::Stop
                         : box.icon() == QMessageBox::Question    ? MsgIcon::Question
                         : box.icon() == QMessageBox::Warning     ? MsgIcon::Exclamation
                         : box.icon() == QMessageBox::Information ? MsgIcon::Information
                                                                  : MsgIcon::None;
    return {qt::FromQt(box.text()), qt::FromQt(box.windowTitle()), seen, icon};
}

// The description and the pattern of one of Qt's name filters.
QPair<QString, QString> SplitFilter(const QString& filter) {
    const qsizetype open = filter.lastIndexOf(u'(');
    return {filter.left(open).trimmed(), filter.mid(open + 1, filter.size() - open - 2)};
}

class NameUser final : public NameWindowUser {
public:
    explicit NameUser(qt::Dialog& dialog) : mDialog(dialog) {}

    void Type(std::string_view text) override {
        for (const QChar character : qt::ToQt(text)) {
            Key(mDialog, Qt::Key_unknown, character);
        }
    }
    void PressOk() override { Click(*Buttons().button(QDialogButtonBox::Ok)); }
    void PressCancel() override { Click(*Buttons().button(QDialogButtonBox::Cancel)); }
    void PressEnter() override { Key(mDialog, Qt::Key_Return, QStringLiteral("\r")); }
    void PressEscape() override { Key(mDialog, Qt::Key_Escape); }
    void PressF1() override { Key(mDialog, Qt::Key_F1); }
    void CloseByFrame() override { mDialog.close(); }
    bool IsShown() const override { return mDialog.isVisible(); }
    std::string Caption() const override { return qt::FromQt(mDialog.windowTitle()); }
    std::string Label() const override { return qt::FromQt(mDialog.findChild<QLabel*>()->text()); }
    std::string CancelCaption() const override {
        return qt::FromQt(Buttons().button(QDialogButtonBox::Cancel)->text());
    }

private:
    QDialogButtonBox& Buttons() const { return *mDialog.findChild<QDialogButtonBox*>(); }

    qt::Dialog& mDialog;
};

class SplashUser final : public SplashWindowUser {
public:
    explicit SplashUser(qt::Dialog& dialog) : mDialog(dialog) {}

    void PressKey(int keyCode) override { Key(mDialog, static_cast<Qt::Key>(KeyOf(keyCode))); }
    void RepeatKey(int keyCode) override {
        QKeyEvent event(QEvent::KeyPress, KeyOf(keyCode), Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(mDialog.windowHandle(), &event);
    }
    void ClickFrame() override { ClickAt(Qt::LeftButton, {5, 5}); }
    void ClickLabel() override { Click(*mDialog.findChild<QLabel*>()); }
    void ClickFrameWithTheRightButton() override { ClickAt(Qt::RightButton, {5, 5}); }
    void CloseByFrame() override { mDialog.close(); }
    bool IsShown() const override { return mDialog.isVisible(); }
    Distance FromTheMiddleOfItsOwner() const override {
        const QPoint distance =
            mDialog.frameGeometry().center() - mDialog.parentWidget()->window()->frameGeometry().center();
        return {distance.x(), distance.y()};
    }
    std::vector<std::string> Labels() const override {
        std::vector<std::string> labels;
        for (const QLabel* const label : mDialog.findChildren<QLabel*>()) {
            if (label->pixmap().isNull()) {
                labels.push_back(qt::FromQt(label->text()));
            }
        }
        return labels;
    }

private:
    void ClickAt(Qt::MouseButton button, const QPoint& place) {
        const QFrame& frame = *mDialog.findChild<QFrame*>();
        QTest::mouseClick(mDialog.windowHandle(), button, Qt::NoModifier, frame.mapTo(&mDialog, place));
    }

    qt::Dialog& mDialog;
};

} // namespace

QtDialogUser::QtDialogUser() {
    qApp->installEventFilter(this);
}

bool QtDialogUser::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Show) {
        AnswerLater(dynamic_cast<QMessageBox*>(object));
        AnswerLater(dynamic_cast<QFileDialog*>(object));
        AnswerLater(dynamic_cast<qt::Dialog*>(object));
    }
    return QObject::eventFilter(object, event);
}

template <class Dialog>
void QtDialogUser::AnswerLater(Dialog* dialog) {
    if (dialog == nullptr) {
        return;
    }
    QTimer::singleShot(0, this, [this, shown = QPointer<Dialog>(dialog)] {
        QCoreApplication::processEvents(); // the keyboard comes to it
        if (shown) {
            Answer(*shown);
        }
    });
}

void QtDialogUser::Answer(QMessageBox& box) {
    mSeenBoxes.push_back(See(box));
    const SeenMessageBox seen = mSeenBoxes.back();
    const QPointer<QMessageBox> shown(&box);
    while (shown && shown->isVisible()) {
        std::optional<MsgResult> answer;
        if (!mAnswers.empty()) {
            answer = mAnswers.front();
            mAnswers.pop_front();
        } else if (decide) {
            answer = decide(seen);
        } else {
            ADD_FAILURE() << "a message box without a prepared answer: " << seen.text;
            box.done(QMessageBox::Cancel);
            return;
        }
        if (!answer) {
            Key(box, Qt::Key_Escape);
            if (shown && shown->isVisible()) {
                box.close();
            }
        } else if (QAbstractButton* const button = box.button(ButtonOf(*answer))) {
            Click(*button);
        } else {
            ADD_FAILURE() << "a press of a button that the message box has not: " << seen.text;
        }
    }
}

void QtDialogUser::Answer(QFileDialog& dialog) {
    auto* const nameBox = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    SeenFileDialog seen;
    seen.isSave = dialog.acceptMode() == QFileDialog::AcceptSave;
    seen.title = qt::FromQt(dialog.windowTitle());
    seen.fileName = qt::FromQt(nameBox->text());
    for (const QString& filter : dialog.nameFilters()) {
        const auto [description, pattern] = SplitFilter(filter);
        seen.filters.push_back(qt::FromQt(description));
        if (description == dialog.selectedNameFilter()) {
            seen.pattern = qt::FromQt(pattern);
        }
    }
    mSeenFiles.push_back(seen);
    if (mFiles.empty()) {
        ADD_FAILURE() << "a file dialog without a prepared answer";
        dialog.reject();
        return;
    }
    const std::optional<std::string> answer = mFiles.front();
    mFiles.pop_front();
    if (!answer) {
        Key(dialog, Qt::Key_Escape);
        return;
    }
    nameBox->setText(qt::ToQt(*answer));
    Q_EMIT nameBox->textEdited(nameBox->text()); // what is selected in the list gives way to what is typed
    Key(dialog, Qt::Key_Return, QStringLiteral("\r"));
}

void QtDialogUser::Answer(qt::Dialog& dialog) {
    if (dialog.findChild<QLineEdit*>() != nullptr && !mNames.empty()) {
        const auto script = std::move(mNames.front());
        mNames.pop_front();
        NameUser user(dialog);
        script(user);
    } else if (dialog.findChild<QLineEdit*>() == nullptr && !mSplashes.empty()) {
        const auto script = std::move(mSplashes.front());
        mSplashes.pop_front();
        SplashUser user(dialog);
        script(user);
    } else {
        ADD_FAILURE() << "a modal window without a prepared script";
    }
    if (dialog.isVisible()) {
        ADD_FAILURE() << "a modal window that its script left open";
        dialog.hide();
    }
}

} // namespace tessaly
