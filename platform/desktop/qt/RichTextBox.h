// The editing pane. The document knows one kind of line break; what the breaks were is kept beside it.
#pragma once

#include "platform/desktop/Margin.h"
#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/qt/Colouring.h"
#include "platform/desktop/qt/Control.h"
#include "platform/text/LineBreaks.h"

#include <QPlainTextEdit>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::qt {

// An editor for plain text of which every character counts: those that Qt takes for line breaks of its own, and those
// that it changes on the way to the clipboard.
class PlainTextEdit final : public QPlainTextEdit {
public:
    // `marks` are those of its lines.
    PlainTextEdit(QWidget* parent, const LineMarks& marks);

    // The text, with LF as its only line break.
    QString ExactText() const;

    void SetGrey(bool grey);

    // Other lines are marked now, or the same ones elsewhere.
    void ShowMarks();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void UpdateColours();
    void LayOutMargin();
    void PaintMargin();
    QRect MarginPlace() const;

    const LineMarks& mMarks;
    Colouring mColouring{*document()};
    Margin mMargin;
    bool mIsGrey = false;
};

class RichTextBox final : public Control<tessaly::RichTextBox> {
public:
    explicit RichTextBox(Window& window);

    std::string Text() const override;
    void SetText(std::string_view text) override;
    float CharacterWidth() const override;
    void SetTabStops(const std::vector<float>& stops) override;
    std::size_t CaretPosition() const override { return static_cast<std::size_t>(mEdit.textCursor().position()); }
    void MoveCaret(std::size_t position) override;

    PlainTextEdit& Widget() { return mEdit; }
    const PlainTextEdit& Widget() const { return mEdit; }

private:
    void ShowAvailable(bool available) override;
    std::size_t LineCount() const override { return static_cast<std::size_t>(mEdit.blockCount()); }
    LineSpan SpanOf(std::size_t line) const override;
    void ShowMarks() override { mEdit.ShowMarks(); }
    int Length() const;
    void FollowChange(int position, int removed, int added);
    void TellChange();

    PlainTextEdit mEdit;
    BreakList mBreaks;
    int mBlockCount = 1;
    int mLength = 0;         // of the text, in characters of the document
    bool mIsSetting = false; // the program is putting in a text
    bool mIsChanged = false; // by the user, and not told yet
};

} // namespace tessaly::qt
