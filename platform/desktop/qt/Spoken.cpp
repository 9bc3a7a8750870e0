// Qt's own interface of the pane does all but the attributes. Qt keeps the interfaces of a widget until that goes, and
// gives out the one that came last.
#include "platform/desktop/qt/Spoken.h"

#include "platform/desktop/Flagged.h"
#include "platform/desktop/Tint.h"
#include "platform/desktop/qt/RichTextBox.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <algorithm>

namespace tessaly::qt {

namespace {

// In the words that screen readers know. Qt passes no others on.
QString Attributes(const Spot& spot, const QColor& ink) {
    const QColor colour(TintOf(spot.kind, ink.rgb(), false).colour);
    QString attributes =
        QStringLiteral("background-color:rgb(%1,%2,%3);").arg(colour.red()).arg(colour.green()).arg(colour.blue());
    if (spot.kind == Spot::Kind::Lost) {
        attributes += QStringLiteral("invalid:spelling;");
    } else if (spot.kind == Spot::Kind::LoneBracket) {
        attributes += QStringLiteral("invalid:grammar;");
    }
    return attributes;
}

class SpokenPane final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    // `own` is what Qt has for the pane, and keeps as long as this.
    SpokenPane(PlainTextEdit& pane, QAccessibleInterface& own)
        : QAccessibleWidget(&pane, own.role()),
          mPane(pane),
          mOwn(own),
          mText(*own.textInterface()) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                                  : mOwn.interface_cast(type);
    }
    QAccessible::State state() const override { return mOwn.state(); }
    QString text(QAccessible::Text kind) const override { return mOwn.text(kind); }

    // Where they are others begins another run.
    QString attributes(int offset, int* start, int* end) const override {
        QString attributes = mText.attributes(offset, start, end);
        const QTextBlock block = mPane.document()->findBlock(offset);
        const auto add = [&](std::size_t markBegin, std::size_t markEnd, const QString& ofMark) {
            const int begin = static_cast<int>(markBegin);
            const int behind = static_cast<int>(markEnd);
            if (offset < begin) {
                *end = std::min(*end, begin);
            } else if (offset >= behind) {
                *start = std::max(*start, behind);
            } else {
                *start = std::max(*start, begin);
                *end = std::min(*end, behind);
                attributes += ofMark;
            }
        };
        for (const LineMark& mark : mPane.MarksShown()) {
            if (mark.begin < mark.end) {
                add(mark.begin, mark.end, QStringLiteral("invalid:grammar;"));
            }
        }
        const auto front = static_cast<std::size_t>(block.position());
        for (const Spot& spot : mPane.SpotsOf(block)) {
            add(front + spot.begin, front + spot.end, Attributes(spot, mPane.palette().color(QPalette::Text)));
        }
        return attributes;
    }

    void selection(int index, int* start, int* end) const override { mText.selection(index, start, end); }
    int selectionCount() const override { return mText.selectionCount(); }
    void addSelection(int start, int end) override { mText.addSelection(start, end); }
    void removeSelection(int index) override { mText.removeSelection(index); }
    void setSelection(int index, int start, int end) override { mText.setSelection(index, start, end); }
    int cursorPosition() const override { return mText.cursorPosition(); }
    void setCursorPosition(int position) override { mText.setCursorPosition(position); }
    QString text(int start, int end) const override { return mText.text(start, end); }
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override {
        return mText.textBeforeOffset(offset, type, start, end);
    }
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override {
        return mText.textAfterOffset(offset, type, start, end);
    }
    QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override {
        return mText.textAtOffset(offset, type, start, end);
    }
    int characterCount() const override { return mText.characterCount(); }
    QRect characterRect(int offset) const override { return mText.characterRect(offset); }
    int offsetAtPoint(const QPoint& point) const override { return mText.offsetAtPoint(point); }
    void scrollToSubstring(int start, int end) override { mText.scrollToSubstring(start, end); }

private:
    PlainTextEdit& mPane;
    QAccessibleInterface& mOwn;
    QAccessibleTextInterface& mText;
};

QAccessibleInterface* MakeSpoken(const QString& /*className*/, QObject* object) {
    static bool isAsking = false;
    auto* const pane = dynamic_cast<PlainTextEdit*>(object);
    if (pane == nullptr || isAsking) {
        return nullptr;
    }
    const Flagged asking(isAsking);
    return new SpokenPane(*pane, *QAccessible::queryAccessibleInterface(object));
}

} // namespace

void SpeakMarks() {
    QAccessible::installFactory(MakeSpoken);
}

} // namespace tessaly::qt
