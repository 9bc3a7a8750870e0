// What comes up beside the caret, in windows of the kind of tool tips: they are never active and take no keyboard.
#pragma once

#include "platform/desktop/Suggestions.h"
#include "platform/desktop/qt/RichTextBox.h"
#include "platform/desktop/qt/Window.h"

#include <QHelpEvent>
#include <QLabel>
#include <QTreeWidget>
#include <memory>
#include <vector>

namespace tessaly::qt {

class Suggestions final : public QObject, public tessaly::Suggestions {
public:
    Suggestions(Window& window, RichTextBox& pane);
    Suggestions(const Suggestions&) = delete;
    Suggestions& operator=(const Suggestions&) = delete;
    ~Suggestions() override = default;

    // Sees all that the user does while something is shown, and where the mouse rests in the pane.
    bool eventFilter(QObject* object, QEvent* event) override;

    // Null before something was shown in it.
    QTreeWidget* List() { return mList.get(); }
    QLabel* Hint() { return mHint.get(); }

private:
    void ShowNames(const std::vector<SuggestedName>& names, Place place) override;
    void ShowSelected(std::size_t row) override;
    void ShowHintText(const HintText& hint, Place place) override;
    void PutBeside(QWidget& what, Place place, Beside wished);
    void Watch();
    void ShowTip(const QHelpEvent& event);
    void MakeList();
    void MakeHint();

    Window& mWindow;
    RichTextBox& mPane;
    std::unique_ptr<QTreeWidget> mList;
    std::unique_ptr<QLabel> mHint;
};

} // namespace tessaly::qt
