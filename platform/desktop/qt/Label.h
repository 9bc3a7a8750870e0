// A label. It shows its text as it stands: neither markup nor access keys have a meaning.
#pragma once

#include "platform/desktop/Label.h"
#include "platform/desktop/qt/Control.h"

#include <QLabel>
#include <string>
#include <string_view>

namespace tessaly::qt {

class Label final : public Control<tessaly::Label> {
public:
    explicit Label(QWidget* parent, Focus* focus = nullptr);

    std::string Caption() const override { return mCaption; }
    void SetCaption(std::string_view caption) override;
    float PreferredHeight() const override { return ToTwips(mLabel.fontMetrics().height()); }

    // The caption is the name of `control` for a screen reader.
    void SetBuddy(QWidget& control) { mLabel.setBuddy(&control); }

    QLabel& Widget() { return mLabel; }

private:
    QLabel mLabel;
    std::string mCaption;
};

} // namespace tessaly::qt
