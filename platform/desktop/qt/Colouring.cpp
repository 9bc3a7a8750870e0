// A block's user state holds the state of the scanner behind the line, and in which round its colours were made.
// New formats count as a change, which the document would add to the user's next one unless it is marked as done.
#include "platform/desktop/qt/Colouring.h"

#include <QTextBlock>
#include <QTextCharFormat>
#include <algorithm>
#include <array>

namespace tessaly::qt {

namespace {

constexpr int StateBits = 8;
constexpr int StateMask = (1 << StateBits) - 1;
constexpr int Rounds = 1 << 16;

struct Colours {
    QRgb light; // on a light background
    QRgb dark;
};

// By CTokenKind.
constexpr std::array<Colours, 6> TokenColours = {{
    {0x00309A, 0x82AAFF}, // Keyword
    {0x00707A, 0x5FD0D0}, // Type
    {0xA31515, 0xE6A07C}, // String
    {0x1F7A1F, 0x86C06C}, // Comment
    {0x7A3E9D, 0xC792EA}, // Number
    {0x8A5A00, 0xE5C07B}, // Preprocessor
}};

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
        const Colours& colours = TokenColours.at(static_cast<std::size_t>(token.kind));
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(token.start);
        range.length = static_cast<int>(token.length);
        range.format.setForeground(QColor(mIsDark ? colours.dark : colours.light));
        formats.append(range);
    }
    block.layout()->setFormats(formats);
    mDocument.markContentsDirty(block.position(), block.length());
    block.setUserState(static_cast<int>(state) | ((mRound + 1) << StateBits));
}

} // namespace tessaly::qt
