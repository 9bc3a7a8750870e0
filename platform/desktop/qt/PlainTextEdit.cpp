// In the document some characters stand as others, so that every text comes back as it was: those that Qt would make a
// paragraph of as lone surrogates, which no valid text has; control characters as their pictures; these as surrogates.
#include "platform/desktop/Flagged.h"
#include "platform/desktop/Tint.h"
#include "platform/desktop/qt/Keys.h"
#include "platform/desktop/qt/MenuItem.h"
#include "platform/desktop/qt/Pictures.h"
#include "platform/desktop/qt/RichTextBox.h"
#include "platform/text/ControlPictures.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace tessaly::qt {

namespace {

struct StandIn {
    char16_t character;
    char16_t surrogate;
};

constexpr std::array<StandIn, 3> StandIns = {{{0x2029, 0xDFFD}, {0xFDD0, 0xDFFE}, {0xFDD1, 0xDFFF}}};
constexpr char16_t FirstPictureStandIn = 0xDF00;

char16_t InDocument(char16_t unit) {
    if (HasControlPicture(unit)) {
        return ControlPicture(unit);
    }
    if (unit >= FirstControlPicture && unit <= LastControlPicture) {
        return static_cast<char16_t>(FirstPictureStandIn + unit - FirstControlPicture);
    }
    const auto standIn =
        std::find_if(StandIns.begin(), StandIns.end(), [unit](const StandIn& each) { return each.character == unit; });
    return standIn != StandIns.end() ? standIn->surrogate : unit;
}

// Of a unit that is no half of a pair.
char16_t OutOfDocument(char16_t unit) {
    if (unit >= FirstPictureStandIn && unit <= FirstPictureStandIn + LastControlPicture - FirstControlPicture) {
        return static_cast<char16_t>(FirstControlPicture + unit - FirstPictureStandIn);
    }
    const auto standIn =
        std::find_if(StandIns.begin(), StandIns.end(), [unit](const StandIn& each) { return each.surrogate == unit; });
    return standIn != StandIns.end() ? standIn->character : WithoutControlPicture(unit);
}

// Text from another program: its line breaks of every kind become LFs, and what is no character is replaced.
QString FromClipboard(const QString& text) {
    QString clean = QString::fromUtf8(text.toUtf8());
    clean.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const char16_t lineBreak : {u'\r', u'\u2028', u'\u2029'}) {
        clean.replace(QChar(lineBreak), LineFeed);
    }
    return ToDocument(clean);
}

} // namespace

QString ToDocument(QString text) {
    for (QChar& unit : text) {
        if (unit < u' ' || unit >= u'\x7F') { // nearly none
            unit = QChar(InDocument(unit.unicode()));
        }
    }
    return text;
}

// The text for what stands in the document. A stand-in is told from the second half of a character by what is in front.
QString FromDocument(QString text) {
    bool isBehindHigh = false;
    for (QChar& unit : text) {
        if (unit == QChar(QChar::ParagraphSeparator)) {
            unit = LineFeed;
        } else if (unit >= u'\x7F' && !isBehindHigh) {
            unit = QChar(OutOfDocument(unit.unicode()));
        }
        isBehindHigh = unit.isHighSurrogate();
    }
    return text;
}

PlainTextEdit::PlainTextEdit(QWidget* parent, const LineMarks& marks, const tessaly::RichTextBox& pane)
    : QPlainTextEdit(parent),
      mMarks(marks),
      mPane(pane),
      mFont(QFontDatabase::systemFont(QFontDatabase::FixedFont)) {
    setFont(mFont);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &PlainTextEdit::LayOutMargin);
    connect(this, &QPlainTextEdit::updateRequest, this, [this] { update(MarginPlace()); });
    LayOutMargin();
    UpdateColours();
}

QString PlainTextEdit::ExactText() const {
    return FromDocument(document()->toRawText());
}

void PlainTextEdit::SetGrey(bool grey) {
    mIsGrey = grey;
    QPalette colours;
    if (grey) {
        colours.setColor(QPalette::Base, colours.color(QPalette::Disabled, QPalette::Window));
    }
    viewport()->setPalette(colours);
    ShowMarks();
}

// A font may have its size in pixels.
void PlainTextEdit::SetZoom(int percent) {
    QFont font = mFont;
    if (mFont.pointSizeF() > 0) {
        font.setPointSizeF(mFont.pointSizeF() * percent / 100);
    } else {
        font.setPixelSize(std::max(mFont.pixelSize() * percent / 100, 1));
    }
    setFont(font);
}

// What is underlined is drawn so and is no property of the text.
void PlainTextEdit::ShowMarks() {
    QList<QTextEdit::ExtraSelection> underlines;
    for (const LineMark& mark : MarksShown()) {
        if (mark.begin < mark.end) {
            QTextEdit::ExtraSelection underline;
            underline.cursor = QTextCursor(document());
            underline.cursor.setPosition(static_cast<int>(mark.begin));
            underline.cursor.setPosition(static_cast<int>(mark.end), QTextCursor::KeepAnchor);
            underline.cursor.setKeepPositionOnInsert(true);
            underline.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
            underline.format.setUnderlineColor(ColourOf(mark.mark, palette()));
            underlines.append(underline);
        }
    }
    setExtraSelections(underlines);
    update(MarginPlace());
}

void PlainTextEdit::ShowSpots(int block) {
    const QTextBlock shown = document()->findBlockByNumber(block);
    if (shown.isValid()) {
        const QRectF place = blockBoundingGeometry(shown).translated(contentOffset());
        viewport()->update(QRectF(0, place.top(), viewport()->width(), place.height()).toAlignedRect());
    }
}

// Below the text, which is painted next.
void PlainTextEdit::PaintSpots(const QRect& place) {
    QPainter painter(viewport());
    const std::uint32_t ink = Rgb(palette().color(QPalette::Text));
    const auto paint = [&](const QRectF& where, const Tint& tint) {
        QColor colour(tint.colour);
        colour.setAlpha(tint.opacity);
        painter.fillRect(where, colour);
        if (tint.hasFrame) {
            painter.setPen(QColor(ink));
            painter.drawRect(where.adjusted(0, 0, -1, -1));
        }
    };
    for (QTextBlock block = firstVisibleBlock(); block.isValid() && !mIsGrey; block = block.next()) {
        const QRectF line = blockBoundingGeometry(block).translated(contentOffset());
        if (line.top() > place.bottom()) {
            break;
        }
        if (static_cast<std::size_t>(block.blockNumber()) == mPane.CurrentLine()) {
            paint(QRectF(0, line.top(), viewport()->width(), line.height()), TintOfCurrentLine(ink, false));
        }
        const QTextLine text = block.layout()->lineAt(0);
        const auto columnAt = [&](int x) { return static_cast<std::size_t>(text.xToCursor(x - line.left())); };
        const auto seen = [&] { return LineSpan{columnAt(0), columnAt(viewport()->width())}; };
        for (const Spot& spot : SpotsOf(block, seen)) {
            const qreal left = text.cursorToX(static_cast<int>(spot.begin));
            const qreal right = text.cursorToX(static_cast<int>(spot.end));
            paint(QRectF(line.left() + left, line.top(), right - left, line.height()), TintOf(spot.kind, ink, false));
        }
    }
}

void PlainTextEdit::LayOutMargin() {
    const QFontMetrics metrics = fontMetrics();
    mMargin = tessaly::LayOutMargin(static_cast<std::size_t>(blockCount()), metrics.horizontalAdvance(u'0'),
                                    metrics.height());
    setViewportMargins(mMargin.width, 0, 0, 0);
    update(MarginPlace());
}

QRect PlainTextEdit::MarginPlace() const {
    const QRect text = viewport()->geometry();
    return {text.left() - mMargin.width, text.top(), mMargin.width, text.height()};
}

// The margin is part of the frame round the text.
bool PlainTextEdit::event(QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        return QCoreApplication::sendEvent(viewport(), event);
    }
    const bool result = QPlainTextEdit::event(event);
    if (event->type() == QEvent::Paint) {
        PaintMargin();
    }
    return result;
}

void PlainTextEdit::PaintMargin() {
    QPainter painter(this);
    const QRect place = MarginPlace();
    painter.setClipRect(place);
    if (mIsGrey) {
        painter.fillRect(place, viewport()->palette().color(QPalette::Base));
        return;
    }
    const MarginColours colours =
        ColoursOfMargin(Rgb(palette().color(QPalette::Base)), Rgb(palette().color(QPalette::Text)), false);
    painter.fillRect(place, QColor(colours.paper));
    painter.setPen(QColor(colours.number));
    QRectF line = blockBoundingGeometry(firstVisibleBlock()).translated(contentOffset());
    line.translate(0, place.top());
    for (QTextBlock block = firstVisibleBlock(); block.isValid() && line.top() <= place.bottom();
         block = block.next()) {
        line.setHeight(blockBoundingRect(block).height());
        const QRectF number(place.left(), line.top(), mMargin.numberEnd, line.height());
        painter.drawText(number, Qt::AlignRight | Qt::AlignTop, QString::number(block.blockNumber() + 1));
        if (const Mark mark = mMarks.On(static_cast<std::size_t>(block.blockNumber()) + 1); mark != Mark::None) {
            const QImage picture = Picture(mark, mMargin.side, devicePixelRatioF(), palette());
            painter.drawImage(QPointF(place.left() + mMargin.picture, line.center().y() - mMargin.side / 2.0), picture);
        }
        line.translate(0, line.height());
    }
}

// A key of which nobody knows goes on as one that was typed. Shift and Enter would put in a line separator, which is no
// line break in a file.
void PlainTextEdit::keyPressEvent(QKeyEvent* event) {
    if (IsMenuKey(*event)) {
        if (!isReadOnly()) {
            onMenu(PlaceForMenu(*viewport(), cursorRect().bottomLeft()));
        }
        return;
    }
    if (takeKey({VirtualKey(*event), ShiftState(event->modifiers()), 0})) {
        event->accept();
        return;
    }
    const auto command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier); // both are AltGr
    const QString typed = command == Qt::ControlModifier ? QString() : event->text();
    if (!typed.isEmpty() && typed.front() >= u' ' && typed.front() != u'\x7F' &&
        takeKey({0, 0, typed.front().unicode()})) {
        event->accept();
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && event->modifiers() == Qt::ShiftModifier) {
        QKeyEvent plain(event->type(), event->key(), Qt::NoModifier, event->text(), event->isAutoRepeat());
        QPlainTextEdit::keyPressEvent(&plain);
        event->setAccepted(plain.isAccepted());
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

QTextBlock PlainTextEdit::LastInView() const {
    QTextBlock last = firstVisibleBlock();
    const int lines = viewport()->height() / std::max(fontMetrics().lineSpacing(), 1) + 1;
    for (int line = 0; line < lines && last.next().isValid(); ++line) {
        last = last.next();
    }
    return last;
}

void PlainTextEdit::LayOutView() {
    const QTextBlock end = LastInView().next();
    for (QTextBlock block = firstVisibleBlock(); block != end; block = block.next()) {
        blockBoundingRect(block);
    }
}

// Only what is about to be seen is coloured, so a large text costs no more than a small one.
void PlainTextEdit::paintEvent(QPaintEvent* event) {
    mColouring.Colour(firstVisibleBlock(), LastInView());
    PaintSpots(event->rect());
    QPlainTextEdit::paintEvent(event);
}

void PlainTextEdit::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        UpdateColours();
    } else if (event->type() == QEvent::FontChange) {
        LayOutMargin();
    }
}

void PlainTextEdit::inputMethodEvent(QInputMethodEvent* event) {
    const Flagged composing(mIsComposing);
    QPlainTextEdit::inputMethodEvent(event);
}

// A click with Ctrl is told when it is over: by then it has selected nothing.
void PlainTextEdit::mouseReleaseEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && ShiftState(event->modifiers()) == 2 && !isReadOnly() &&
        !textCursor().hasSelection()) {
        onCtrlClick();
    }
}

void PlainTextEdit::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        onCtrlWheel(event->angleDelta().y());
        event->accept();
        return;
    }
    QPlainTextEdit::wheelEvent(event);
}

// Not every window system sends one for a key, so keys are seen to elsewhere.
void PlainTextEdit::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard || isReadOnly()) {
        return;
    }
    const QTextCursor clicked = cursorForPosition(event->pos());
    const QTextCursor caret = textCursor();
    if (clicked.position() < caret.selectionStart() || clicked.position() >= caret.selectionEnd()) {
        setTextCursor(clicked);
    }
    onMenu(event->globalPos());
}

// A file that is dragged here is for the window.
bool PlainTextEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText() && !source->hasUrls();
}

void PlainTextEdit::insertFromMimeData(const QMimeData* source) {
    if (!isReadOnly() && source->hasText()) {
        setFocus(Qt::OtherFocusReason); // text can be dropped here while the focus is elsewhere
        textCursor().insertText(FromClipboard(source->text()));
        ensureCursorVisible();
    }
}

QMimeData* PlainTextEdit::createMimeDataFromSelection() const {
    auto mime = std::make_unique<QMimeData>();
    mime->setText(FromDocument(textCursor().selectedText()));
    return mime.release(); // the clipboard's own from here on
}

void PlainTextEdit::UpdateColours() {
    mColouring.SetDark(IsDark(palette().color(QPalette::Base).rgb() & 0xFFFFFF));
    viewport()->update();
    ShowMarks();
}

} // namespace tessaly::qt
