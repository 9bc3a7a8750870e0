// In the document the three characters that Qt would make a paragraph of stand as lone surrogates, which no valid text
// has: so every text comes back as it was.
#include "platform/desktop/qt/RichTextBox.h"

#include <QEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
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

PlainTextEdit::PlainTextEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setLineWrapMode(QPlainTextEdit::NoWrap);
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
}

// Shift and Enter would put in a line separator, which is no line break in a file.
void PlainTextEdit::keyPressEvent(QKeyEvent* event) {
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
    QPlainTextEdit::paintEvent(event);
}

void PlainTextEdit::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        UpdateColours();
    }
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
}

RichTextBox::RichTextBox(Window& window) : Control(window, mEdit), mEdit(&window.Area()) {
    QObject::connect(mEdit.document(), &QTextDocument::contentsChange, &mEdit,
                     [this](int position, int removed, int added) { FollowChange(position, removed, added); });
    QObject::connect(mEdit.document(), &QTextDocument::contentsChanged, &mEdit, [this] { TellChange(); });
}

std::string RichTextBox::Text() const {
    return mBreaks.Apply(FromQt(mEdit.ExactText()));
}

void RichTextBox::SetText(std::string_view text) {
    BreakList breaks;
    const QString shown = ToDocument(ToQt(breaks.Set(text)));
    CheckMemory(shown);
    mIsSetting = true;
    mEdit.setPlainText(shown);
    mIsSetting = false;
    mBreaks = std::move(breaks);
    mBlockCount = mEdit.blockCount();
    Raise(onChange);
}

void RichTextBox::MoveCaret(std::size_t position) {
    QTextCursor cursor = mEdit.textCursor();
    const auto end = static_cast<std::size_t>(mEdit.document()->characterCount()) - 1; // the last one is Qt's own
    cursor.setPosition(static_cast<int>(std::min(position, end)));
    mEdit.setTextCursor(cursor);
    mEdit.ensureCursorVisible();
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

// Where only breaks went in or out beside others, the last of the row are taken for those that came or went.
void RichTextBox::FollowChange(int position, int removed, int added) {
    if (mIsSetting) {
        return;
    }
    const QTextDocument& document = *mEdit.document();
    const int end = document.characterCount() - 1; // in front of the document's own last break
    int behind = std::min(position + added, end);
    const int addedBreaks = document.findBlock(behind).blockNumber() - document.findBlock(position).blockNumber();
    const int removedBreaks = addedBreaks - (mEdit.blockCount() - mBlockCount);
    int first = document.findBlock(position).blockNumber();
    if ((removed == 0 && added == addedBreaks) || (added == 0 && removed == removedBreaks)) {
        while (behind < end && document.characterAt(behind) == QChar(QChar::ParagraphSeparator)) {
            ++behind;
            ++first;
        }
    }
    mBreaks.Replace(static_cast<std::size_t>(first), static_cast<std::size_t>(removedBreaks),
                    static_cast<std::size_t>(addedBreaks));
    mBlockCount = mEdit.blockCount();
    mIsChanged = true;
}

void RichTextBox::TellChange() {
    if (!std::exchange(mIsChanged, false)) {
        return;
    }
    mWindow.UpdateFocusInUse();
    Raise(onChange);
}

} // namespace tessaly::qt
