// The two small windows. Their controls stand in Qt's layouts, so that they fit the user's font and every language.
#pragma once

#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/qt/Text.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <array>
#include <functional>

namespace tessaly::qt {

// A dialog whose ways out are told to somebody, who decides.
class Dialog final : public QDialog {
public:
    explicit Dialog(QWidget& owner);

    // An empty one is a blank: the name of the program would stand in its place.
    void SetCaption(std::string_view caption) { setWindowTitle(caption.empty() ? QStringLiteral(" ") : ToQt(caption)); }

    std::function<void()> onEscape;
    std::function<void()> onClose; // by the frame; the dialog is hidden whatever this does
    std::function<void()> onHelp;  // F1
    std::function<void()> onPress; // any key but a modifier; a dialog with this has no other use for keys

    // Shows it in the middle of its owner, and returns when it is hidden.
    void Run();

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

class NameWindow final : public tessaly::NameWindow {
public:
    NameWindow(QWidget& owner, std::function<void()> onHelp);

    void ShowModal() override;
    void Hide() override { mDialog.hide(); }
    void SetTexts(const NameTexts& texts) override;
    std::string FuncVarName() const override { return FromQt(mName.text()); }

private:
    Dialog mDialog;
    QVBoxLayout mLayout{&mDialog};
    QLabel mLabel{&mDialog};
    QLineEdit mName{&mDialog};
    QDialogButtonBox mButtons{QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &mDialog};
};

class SplashWindow final : public tessaly::SplashWindow {
public:
    SplashWindow(QWidget& owner, std::function<void()> onHelp);

    void ShowModal() override { mDialog.Run(); }
    void Hide() override { mDialog.hide(); }
    void SetLabels(const SplashLabels& labels) override;

private:
    // Tells of clicks on itself and on the labels in it.
    class Frame final : public QFrame {
    public:
        using QFrame::QFrame;
        std::function<void()> onClick;

    protected:
        void mousePressEvent(QMouseEvent* event) override;
        void mouseReleaseEvent(QMouseEvent* event) override;

    private:
        bool mIsPressed = false;
    };

    Dialog mDialog;
    QVBoxLayout mDialogLayout{&mDialog};
    Frame mFrame{&mDialog};
    QVBoxLayout mLayout{&mFrame};
    QLabel mLogo{&mFrame};
    std::array<QLabel, 6> mLabels; // from the top
};

} // namespace tessaly::qt
