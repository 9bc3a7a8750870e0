// A block's user state holds the state of the scanner behind the line, and in which round its colours were made.
// New formats count as a change, which the document would add to the user's next one unless it is marked as done.
#include "platform/desktop/qt/Colouring.h"

#include <QTextBlock>
#include <QTextCharFormat>
#include <algorithm>

namespace tessaly::qt {

namespace {

constexpr int StateBits = 8;
constexpr int StateMask = (1 << StateBits) - 1;
constexpr int Rounds = 1 << 16;

CLineState StateOf(const QTextBlock& block) {
    return block.isValid() ? static_cast<CLineState>(block.userState() & StateMask) : CLineState::Code;
}

int RoundOf(const QTextBlock& block) {
    return block.userState() >> StateBits;
}

std::u16string_view View(const QString& text) {
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

} // namespace

Colouring::Colouring(QTextDocument& document) : mDocument(document) {
    QObject::connect(&document, &QTextDocument::contentsChange, &document,
                     [this](int position, int, int added) { FollowChange(position, added); });
}

void Colouring::SetDark(bool dark) {
    mIsDark = dark;
    mRound = (mRound + 1) % Rounds;
}

CLineState Colouring::StateBefore(int block) {
    const QTextBlock before = mDocument.findBlockByNumber(block - 1);
    if (before.isValid()) {
        Scan(before);
    }
    return StateOf(before);
}

void Colouring::Colour(const QTextBlock& first, const QTextBlock& last) {
    Scan(last);
    for (QTextBlock block = first; block.isValid() && block.blockNumber() <= last.blockNumber(); block = block.next()) {
        if (RoundOf(block) != mRound + 1) {
            SetFormats(block, StateOf(block.previous()));
        }
    }
}

// A line that changed keeps the lines below it as they are, unless its end has another state than before: then they
// are scanned as far as somebody looks.
void Colouring::FollowChange(int position, int added) {
    const QTextBlock first = mDocument.findBlock(position);
    QTextBlock last = mDocument.findBlock(position + added);
    last = last.isValid() ? last : mDocument.lastBlock();
    for (QTextBlock block = first; block.isValid() && block.blockNumber() <= last.blockNumber(); block = block.next()) {
        block.setUserState(0);
    }
    mScanned = std::min(mScanned, first.blockNumber());
}

// Gives all blocks up to `last` their states.
void Colouring::Scan(const QTextBlock& last) {
    QTextBlock block = mDocument.findBlockByNumber(mScanned);
    CLineState state = StateOf(block.previous());
    for (; block.isValid() && block.blockNumber() <= last.blockNumber(); block = block.next()) {
        state = ScanCLine(View(block.text()), state, mTokens);
        block.setUserState(static_cast<int>(state));
        mScanned = block.blockNumber() + 1;
    }
}

void Colouring::SetFormats(QTextBlock block, CLineState before) {
    const CLineState state = ScanCLine(View(block.text()), before, mTokens);
    QList<QTextLayout::FormatRange> formats;
    for (const CToken& token : mTokens) {
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(token.start);
        range.length = static_cast<int>(token.length);
        range.format.setForeground(QColor(TokenColour(token.kind, mIsDark)));
        formats.append(range);
    }
    block.layout()->setFormats(formats);
    mDocument.markContentsDirty(block.position(), block.length());
    block.setUserState(static_cast<int>(state) | ((mRound + 1) << StateBits));
}

} // namespace tessaly::qt
