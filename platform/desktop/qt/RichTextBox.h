// The editing pane. The document knows one kind of line break; what the breaks were is kept beside it.
#pragma once

#include "platform/desktop/Margin.h"
#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/qt/Colouring.h"
#include "platform/desktop/qt/Control.h"
#include "platform/desktop/qt/Text.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::qt {

inline constexpr QChar LineFeed = u'\n';

// Between a text with LF as its only break and what a document holds for it.
QString ToDocument(QString text);
QString FromDocument(QString text);

// An editor for plain text of which every character counts: those that Qt takes for line breaks of its own, and those
// that it changes on the way to the clipboard.
class PlainTextEdit final : public QPlainTextEdit {
public:
    // `marks` are those of its lines; `pane` is what it belongs to.
    PlainTextEdit(QWidget* parent, const LineMarks& marks, const tessaly::RichTextBox& pane);

    // The text, with LF as its only line break.
    QString ExactText() const;

    // Told of every key and typed character; true for one that the editor is not to get.
    std::function<bool(const PaneKey& key)> takeKey;

    // Told where on the screen a menu is asked for, that of a click with Ctrl, and of the wheel with Ctrl, by its
    // delta.
    std::function<void(QPoint place)> onMenu;
    std::function<void()> onCtrlClick;
    std::function<void(int delta)> onCtrlWheel;

    // While an input method is at work Qt tells of a change of all of the line, whatever there is.
    bool IsComposing() const { return mIsComposing; }

    // Lays out what is in view, so that the scroll bar below the text goes as far as that.
    void LayOutView();

    // In percent of the user's font.
    void SetZoom(int percent);

    // Not zoomed.
    const QFont& UsersFont() const { return mFont; }

    void SetGrey(bool grey);

    // What this block begins in.
    CLineState StateBefore(int block) const { return mColouring.StateBefore(block); }

    // Other lines are marked now, or the same ones elsewhere.
    void ShowMarks();

    // What is set apart in a block, and what is marked in all of them; nothing while it is grey.
    std::vector<Spot> SpotsOf(const QTextBlock& block, const std::function<LineSpan()>& seen = nullptr) const {
        return mPane.SpotsOf(static_cast<std::size_t>(block.blockNumber()), seen);
    }
    std::vector<LineMark> MarksShown() const { return mIsGrey ? std::vector<LineMark>() : mMarks.All(); }

    // What is set apart in this block is another thing now.
    void ShowSpots(int block);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void UpdateColours();
    QTextBlock LastInView() const;
    void LayOutMargin();
    void PaintMargin();
    void PaintSpots(const QRect& place);
    QRect MarginPlace() const;

    const LineMarks& mMarks;
    const tessaly::RichTextBox& mPane;
    mutable Colouring mColouring{*document()}; // goes on where somebody looks
    QFont mFont;
    Margin mMargin;
    bool mIsGrey = false;
    bool mIsComposing = false;
};

class RichTextBox final : public Control<tessaly::RichTextBox> {
public:
    explicit RichTextBox(Window& window);

    void SetText(std::string_view text) override;
    float CharacterWidth() const override;
    void SetTabStops(const std::vector<float>& stops) override;
    std::size_t Count() const override { return static_cast<std::size_t>(mEdit.blockCount()); }
    std::u16string Line(std::size_t index) const override;
    CLineState StateBefore(std::size_t index) const override { return mEdit.StateBefore(static_cast<int>(index)); }
    using tessaly::RichTextBox::Do;
    void Do(Clip step) override;

    // Of the character at a place, on the screen.
    QRect CharacterPlace(Place place) const;

    // The place of the character that is drawn there, in pixels of the viewport; no value for none. In the margin that
    // of the first one in view.
    std::optional<Place> PlaceUnder(QPoint point) const;

    PlainTextEdit& Widget() { return mEdit; }
    const PlainTextEdit& Widget() const { return mEdit; }

private:
    void ShowAvailable(bool available) override;
    std::string ShownText() const override;
    LineSpan SpanOf(std::size_t line) const override;
    std::size_t LineAt(std::size_t position) const override;
    Ends SelectedEnds() const override;
    void SelectEnds(const Ends& ends) override;
    PaneScroll Scrolled() const override;
    void ScrollTo(const PaneScroll& scroll) override;
    void ShowReplaced(std::size_t start, std::size_t end, std::u16string_view text) override;
    void ShowTogether(const std::function<void()>& work) override;
    void ShowSpots(std::optional<std::size_t> line) override;
    void ShowZoom() override;
    void ShowDescription(const std::string& description) override { mEdit.setAccessibleDescription(ToQt(description)); }
    void ShowTabStops();
    int Length() const;
    void FollowChange(int position, int added);
    void TellChange();

    PlainTextEdit mEdit;
    std::vector<float> mTabStops;
    QString mBefore;               // what the document held when its last change was told, each break an LF
    bool mIsSetting = false;       // the program changes the text
    std::optional<Ends> mToSelect; // when that is done
    bool mIsChanged = false;       // by the user, and not told yet
};

} // namespace tessaly::qt
