// Colours the C text of a document, line by line and only where somebody looks. It changes what is drawn and nothing
// else: neither the text, nor what can be undone, nor any signal.
#pragma once

#include "syntax/Palette.h"

#include <QList>
#include <QTextDocument>
#include <QTextLayout>
#include <cstdint>
#include <vector>

class QTextBlock;

namespace tessaly::qt {

class Colouring {
public:
    explicit Colouring(QTextDocument& document);

    // Light colours for a dark background. What was coloured is to be drawn anew then.
    void SetDark(bool dark);

    // What this block, counted from 0, begins in. Those in front of it are scanned where nobody has looked yet.
    CLineState StateBefore(int block);

    // To be called before the blocks from `first` to `last` are drawn.
    void Colour(const QTextBlock& first, const QTextBlock& last);

private:
    void FollowChange(int position, int added);
    void Scan(const QTextBlock& last);
    void SetFormats(QTextBlock block, CLineState before);

    QTextDocument& mDocument;
    int mScanned = 0; // how many blocks at the front have the right state
    int mRound = 0;   // of colours: a block that was coloured in an earlier one is coloured again
    bool mIsDark = false;
    std::vector<CToken> mTokens; // kept for its memory
};

} // namespace tessaly::qt
