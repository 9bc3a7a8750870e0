// The text is kept beside the document: Qt tells where it was changed, but not how it was before.
#include "platform/desktop/qt/RichTextBox.h"

#include "platform/desktop/Flagged.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>
#include <algorithm>
#include <utility>

namespace tessaly::qt {

namespace {

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

// Leaves what differs, no half of a character. The answer: how much is gone in front of it.
qsizetype TakeOffSame(QString& one, QString& other) {
    qsizetype front = std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first - one.begin();
    front -= front > 0 && one[front - 1].isHighSurrogate() ? 1 : 0;
    one.remove(0, front);
    other.remove(0, front);
    qsizetype back = std::mismatch(one.rbegin(), one.rend(), other.rbegin(), other.rend()).first - one.rbegin();
    back -= back > 0 && one[one.size() - back].isLowSurrogate() ? 1 : 0;
    one.chop(back);
    other.chop(back);
    return front;
}

} // namespace

RichTextBox::RichTextBox(Window& window) : Control(window, mEdit), mEdit(&window.Area(), Marks(), *this) {
    mEdit.setUndoRedoEnabled(false); // the pane has a history of its own
    mEdit.takeKey = [this](const PaneKey& key) { return TakesKey(key); };
    mEdit.onMenu = [this](QPoint place) {
        mWindow.UpdateFocusInUse();
        Raise(onMenu, ScreenPlace{place.x(), place.y()});
    };
    mEdit.onCtrlClick = [this] { Raise(onCtrlClick); };
    mEdit.onCtrlWheel = [this](int delta) { TellCtrlWheel(delta); };
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
    {
        const Flagged setting(mIsSetting);
        mEdit.setPlainText(shown);
    }
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

// What is nearest may be far away, or below a scroll bar.
std::optional<Place> RichTextBox::PlaceUnder(QPoint point) const {
    const QRect view = mEdit.viewport()->rect();
    const QTextCursor nearest = mEdit.cursorForPosition(point);
    const QRect caret = mEdit.cursorRect(nearest);
    const int reach = mEdit.fontMetrics().horizontalAdvance(u'0');
    const bool isInMargin = point.x() < 0;
    if (point.x() > view.right() || point.y() > view.bottom() || point.y() < caret.top() ||
        point.y() > caret.bottom() || (!isInMargin && std::abs(point.x() - caret.center().x()) > reach)) {
        return std::nullopt;
    }
    return Place{static_cast<std::size_t>(nearest.blockNumber()), static_cast<std::size_t>(nearest.positionInBlock())};
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
PaneScroll RichTextBox::Scrolled() const {
    return {static_cast<std::size_t>(mEdit.verticalScrollBar()->value()), mEdit.horizontalScrollBar()->value()};
}

void RichTextBox::ScrollTo(const PaneScroll& scroll) {
    mEdit.verticalScrollBar()->setValue(static_cast<int>(scroll.firstLine));
    mEdit.LayOutView();
    mEdit.horizontalScrollBar()->setValue(scroll.across);
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
        explicit Together(QTextDocument* document) : mCursor(document) { mCursor.beginEditBlock(); }
        Together(const Together&) = delete;
        Together& operator=(const Together&) = delete;
        ~Together() { mCursor.endEditBlock(); }

    private:
        QTextCursor mCursor;
    };
    {
        const Flagged setting(mIsSetting);
        const Together together(mEdit.document());
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

void RichTextBox::Do(Clip step) {
    if (step == Clip::Paste) {
        mEdit.paste();
    } else if (step == Clip::Cut) {
        mEdit.cut();
    } else {
        mEdit.copy();
    }
}

void RichTextBox::ShowSpots(std::optional<std::size_t> line) {
    if (line) {
        mEdit.ShowSpots(static_cast<int>(*line));
    } else {
        mEdit.ShowMarks();
        mEdit.viewport()->update();
    }
}

float RichTextBox::CharacterWidth() const {
    return static_cast<float>(QFontMetricsF(mEdit.UsersFont()).horizontalAdvance(u'0')) * TwipsInPixel;
}

void RichTextBox::SetTabStops(const std::vector<float>& stops) {
    mTabStops = stops;
    ShowTabStops();
}

void RichTextBox::ShowZoom() {
    mEdit.SetZoom(Zoom());
    ShowTabStops();
}

// Behind the last stop they go on as far apart as the last two are.
void RichTextBox::ShowTabStops() {
    const qreal zoom = Zoom() / 100.0;
    const std::vector<float>& stops = mTabStops;
    QTextOption option = mEdit.document()->defaultTextOption();
    QList<QTextOption::Tab> tabs;
    for (const float stop : stops) {
        if (stop > 0) {
            tabs.append(QTextOption::Tab(zoom * stop / TwipsInPixel, QTextOption::LeftTab));
        }
    }
    option.setTabs(tabs);
    if (stops.size() >= 2 && stops.back() > stops[stops.size() - 2]) {
        option.setTabStopDistance(zoom * (stops.back() - stops[stops.size() - 2]) / TwipsInPixel);
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
    QString before = mBefore.mid(position, gone);
    mBefore.replace(position, gone, now);
    if (mEdit.IsComposing()) {
        position += static_cast<int>(TakeOffSame(before, now));
        if (before.isEmpty() && now.isEmpty()) {
            return;
        }
    }
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
