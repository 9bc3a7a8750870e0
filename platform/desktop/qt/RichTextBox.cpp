// In the document the three characters that Qt would make a paragraph of stand as lone surrogates, which no valid text
// has: so every text comes back as it was.
#include "platform/desktop/qt/RichTextBox.h"

#include "platform/desktop/Tint.h"
#include "platform/desktop/qt/Keys.h"
#include "platform/desktop/qt/Pictures.h"

#include <QContextMenuEvent>
#include <QEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>
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
constexpr QChar LineFeed = u'\n';

// What the document takes for `text`, whose breaks are single LFs.
QString ToDocument(QString text) {
    for (const StandIn& standIn : StandIns) {
        text.replace(QChar(standIn.character), QChar(standIn.surrogate));
    }
    return text;
}

// The text for what stands in the document. A stand-in is told from the second half of a character by what is in front.
QString FromDocument(QString text) {
    bool isBehindHigh = false;
    for (QChar& unit : text) {
        const auto standIn = std::find_if(StandIns.begin(), StandIns.end(),
                                          [unit](const StandIn& each) { return each.surrogate == unit.unicode(); });
        if (unit == QChar(QChar::ParagraphSeparator)) {
            unit = LineFeed;
        } else if (standIn != StandIns.end() && !isBehindHigh) {
            unit = QChar(standIn->character);
        }
        isBehindHigh = unit.isHighSurrogate();
    }
    return text;
}

// Throws std::bad_alloc unless the document of `text` will fit into memory: Qt itself ends the program where it does
// not. Measured with lines of every length: up to 500 bytes for a line, 3 for a character, and 37 for each that is
// seen, which at worst is all of the longest line. As much as an edit and reading back may take is added.
void CheckMemory(const QString& text) {
    constexpr std::size_t line = 640;
    constexpr std::size_t character = 8;
    constexpr std::size_t seen = 40;
    std::size_t lines = 0;
    qsizetype longest = 0;
    for (qsizetype start = 0; start <= text.size(); ++lines) {
        const qsizetype found = text.indexOf(LineFeed, start);
        const qsizetype end = found < 0 ? text.size() : found;
        longest = std::max(longest, end - start);
        start = end + 1;
    }
    ::operator delete(::operator new(line* lines + character * static_cast<std::size_t>(text.size()) +
                                     seen * static_cast<std::size_t>(longest)));
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

PlainTextEdit::PlainTextEdit(QWidget* parent, const LineMarks& marks, const tessaly::RichTextBox& pane)
    : QPlainTextEdit(parent),
      mMarks(marks),
      mPane(pane) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
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

// What is underlined is drawn so and is no property of the text.
void PlainTextEdit::ShowMarks() {
    QList<QTextEdit::ExtraSelection> underlines;
    for (const LineMark& mark : mIsGrey ? std::vector<LineMark>() : mMarks.All()) {
        if (mark.begin < mark.end) {
            QTextEdit::ExtraSelection underline;
            underline.cursor = QTextCursor(document());
            underline.cursor.setPosition(static_cast<int>(mark.begin));
            underline.cursor.setPosition(static_cast<int>(mark.end), QTextCursor::KeepAnchor);
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
        const auto number = static_cast<std::size_t>(block.blockNumber());
        if (number == mPane.CurrentLine()) {
            paint(QRectF(0, line.top(), viewport()->width(), line.height()), TintOfCurrentLine(ink, false));
        }
        const QTextLine text = block.layout()->lineAt(0);
        for (const Spot& spot : mPane.SpotsOf(number)) {
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

// Only what is about to be seen is coloured, so a large text costs no more than a small one.
void PlainTextEdit::paintEvent(QPaintEvent* event) {
    QTextBlock last = firstVisibleBlock();
    const int lines = viewport()->height() / std::max(fontMetrics().lineSpacing(), 1) + 1;
    for (int line = 0; line < lines && last.next().isValid(); ++line) {
        last = last.next();
    }
    mColouring.Colour(firstVisibleBlock(), last);
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

// Qt knows nothing of what can be undone here.
void PlainTextEdit::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* const menu = createStandardContextMenu(event->pos());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto& [name, key] : {std::pair("edit-undo", 'Z'), std::pair("edit-redo", 'Y')}) {
        if (QAction* const action = menu->findChild<QAction*>(name)) {
            action->setEnabled(!isReadOnly());
            connect(action, &QAction::triggered, this, [this, key = int{key}] { takeKey({key, 2, 0}); });
        }
    }
    menu->popup(event->globalPos());
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

RichTextBox::RichTextBox(Window& window) : Control(window, mEdit), mEdit(&window.Area(), Marks(), *this) {
    mEdit.setUndoRedoEnabled(false); // the pane has a history of its own
    mEdit.takeKey = [this](const PaneKey& key) { return TakesKey(key); };
    QObject::connect(mEdit.document(), &QTextDocument::contentsChange, &mEdit,
                     [this](int position, int, int added) { FollowChange(position, added); });
    QObject::connect(mEdit.document(), &QTextDocument::contentsChanged, &mEdit, [this] { TellChange(); });
    QObject::connect(&mEdit, &QPlainTextEdit::cursorPositionChanged, &mEdit, [this] {
        if (!mIsSetting) {
            LookAtCaret();
        }
    });
}

std::string RichTextBox::ShownText() const {
    return FromQt(mEdit.ExactText());
}

void RichTextBox::SetText(std::string_view text) {
    BreakList breaks;
    QString shown = ToDocument(ToQt(breaks.Set(text)));
    CheckMemory(shown);
    mIsSetting = true;
    mEdit.setPlainText(shown);
    mIsSetting = false;
    mBefore = std::move(shown);
    NoteNewText(std::move(breaks));
}

// The document's own last break is no character of the text.
int RichTextBox::Length() const {
    return mEdit.document()->characterCount() - 1;
}

std::u16string RichTextBox::Line(std::size_t index) const {
    return FromDocument(mEdit.document()->findBlockByNumber(static_cast<int>(index)).text()).toStdU16String();
}

QRect RichTextBox::CharacterPlace(Place place) const {
    const LineSpan span = SpanOf(place.line + 1);
    QTextCursor cursor(mEdit.document());
    cursor.setPosition(static_cast<int>(std::min(span.begin + place.column, span.end)));
    const QRect inView = mEdit.cursorRect(cursor);
    return {mEdit.viewport()->mapToGlobal(inView.topLeft()), inView.size()};
}

LineSpan RichTextBox::SpanOf(std::size_t line) const {
    const QTextBlock block = mEdit.document()->findBlockByNumber(static_cast<int>(line) - 1);
    const auto begin = static_cast<std::size_t>(block.position());
    return {begin, begin + static_cast<std::size_t>(block.length()) - 1};
}

std::size_t RichTextBox::LineAt(std::size_t position) const {
    return static_cast<std::size_t>(mEdit.document()->findBlock(static_cast<int>(position)).blockNumber());
}

Ends RichTextBox::SelectedEnds() const {
    const QTextCursor cursor = mEdit.textCursor();
    return {static_cast<std::size_t>(cursor.anchor()), static_cast<std::size_t>(cursor.position())};
}

// While the text is being changed its lines are not laid out, and Qt must not look where the caret is.
void RichTextBox::SelectEnds(const Ends& ends) {
    if (mIsSetting) {
        mToSelect = ends;
        return;
    }
    QTextCursor cursor = mEdit.textCursor();
    cursor.setPosition(static_cast<int>(ends.anchor));
    cursor.setPosition(static_cast<int>(ends.caret), QTextCursor::KeepAnchor);
    mEdit.setTextCursor(cursor);
    mEdit.ensureCursorVisible();
}

// No line is broken, so each is one step of the scroll bar.
std::size_t RichTextBox::FirstLine() const {
    return static_cast<std::size_t>(mEdit.verticalScrollBar()->value());
}

void RichTextBox::ScrollTo(std::size_t line) {
    mEdit.verticalScrollBar()->setValue(static_cast<int>(line));
}

void RichTextBox::ShowReplaced(std::size_t start, std::size_t end, std::u16string_view text) {
    const QString shown =
        ToDocument(QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size())));
    QTextCursor cursor(mEdit.document());
    cursor.setPosition(static_cast<int>(start));
    cursor.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
    cursor.insertText(shown);
    mBefore.replace(static_cast<qsizetype>(start), static_cast<qsizetype>(end - start), shown);
}

// As one change of the document, so that it lays out and draws once.
void RichTextBox::ShowTogether(const std::function<void()>& work) {
    class Together {
    public:
        Together(QTextDocument* document, bool& isSetting) : mCursor(document), mIsSetting(isSetting) {
            mIsSetting = true;
            mCursor.beginEditBlock();
        }
        Together(const Together&) = delete;
        Together& operator=(const Together&) = delete;
        ~Together() {
            mCursor.endEditBlock();
            mIsSetting = false;
        }

    private:
        QTextCursor mCursor;
        bool& mIsSetting;
    };
    {
        const Together together(mEdit.document(), mIsSetting);
        work();
    }
    if (const std::optional<Ends> ends = std::exchange(mToSelect, std::nullopt)) {
        SelectEnds(*ends);
    }
    mWindow.UpdateFocusInUse();
}

void RichTextBox::ShowAvailable(bool available) {
    mEdit.setReadOnly(!available);
    mEdit.SetGrey(!available);
    mEdit.setFocusPolicy(available ? Qt::StrongFocus : Qt::NoFocus);
}

float RichTextBox::CharacterWidth() const {
    return static_cast<float>(QFontMetricsF(mEdit.font()).horizontalAdvance(u'0')) * TwipsInPixel;
}

// Behind the last stop they go on as far apart as the last two are.
void RichTextBox::SetTabStops(const std::vector<float>& stops) {
    QTextOption option = mEdit.document()->defaultTextOption();
    QList<QTextOption::Tab> tabs;
    for (const float stop : stops) {
        if (stop > 0) {
            tabs.append(QTextOption::Tab(stop / TwipsInPixel, QTextOption::LeftTab));
        }
    }
    option.setTabs(tabs);
    if (stops.size() >= 2 && stops.back() > stops[stops.size() - 2]) {
        option.setTabStopDistance((stops.back() - stops[stops.size() - 2]) / TwipsInPixel);
    }
    mEdit.document()->setDefaultTextOption(option);
}

// Qt tells where, but not how the text was before. It may count the document's own last break.
void RichTextBox::FollowChange(int position, int added) {
    if (mIsSetting) {
        return;
    }
    const int count = std::min(added, Length() - position);
    QTextCursor cursor(mEdit.document());
    cursor.setPosition(position);
    cursor.setPosition(position + count, QTextCursor::KeepAnchor);
    QString now = cursor.selectedText();
    now.replace(QChar(QChar::ParagraphSeparator), LineFeed);
    const qsizetype gone = mBefore.size() - Length() + count;
    const QString before = mBefore.mid(position, gone);
    mBefore.replace(position, gone, now);
    NoteEdit(static_cast<std::size_t>(position), FromDocument(before).toStdU16String(),
             FromDocument(now).toStdU16String());
    mIsChanged = true;
}

void RichTextBox::TellChange() {
    if (!std::exchange(mIsChanged, false)) {
        return;
    }
    mWindow.UpdateFocusInUse();
    LookAtCaret();
    Raise(onChange);
}

} // namespace tessaly::qt
