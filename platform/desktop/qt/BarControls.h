// The controls of the bar over the pane.
#pragma once

#include "platform/desktop/BarControls.h"
#include "platform/desktop/qt/Control.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <memory>
#include <string>
#include <string_view>

namespace tessaly::qt {

class TextBox final : public Control<tessaly::TextBox> {
public:
    explicit TextBox(Window& window);

    std::string Text() const override { return FromQt(mEdit.text()); }
    Size PreferredSize() const override { return {0, ToTwips(mEdit.sizeHint().height())}; }

    QLineEdit& Widget() { return mEdit; }

private:
    void ShowText(std::string_view text) override {
        mEdit.setText(ToQt(text));
        mEdit.selectAll();
    }

    QLineEdit mEdit;
};

class Button final : public Control<tessaly::Button> {
public:
    Button(Window& window, ButtonKind kind = ButtonKind::Push);

    void SetCaption(std::string_view caption) override;
    bool IsChecked() const override { return mButton->isChecked(); }
    Size PreferredSize() const override;

    QAbstractButton& Widget() { return *mButton; }

private:
    Button(Window& window, QAbstractButton* button);

    std::unique_ptr<QAbstractButton> mButton;
};

struct PaneBar {
    explicit PaneBar(Window& theWindow);

    Window& window;
    Label wantedLabel{window};
    TextBox wanted{window};
    Label count{window};
    Button matchCase{window, ButtonKind::Check};
    Button wholeWord{window, ButtonKind::Check};
    Button previous{window};
    Button next{window};
    Button close{window};
    Label replacementLabel{window};
    TextBox replacement{window};
    Button replaceOne{window};
    Button replaceAll{window};
    const BarControls controls{wantedLabel, wanted,           count,       matchCase,  wholeWord, previous, next,
                               close,       replacementLabel, replacement, replaceOne, replaceAll};
};

} // namespace tessaly::qt
