// A text that several holders share, and the collector that hands such texts out.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tessaly {

// The bytes are never changed once they are shared; there may be more behind them that others have.
class SharedText {
public:
    SharedText() = default;
    explicit SharedText(std::string_view text);
    SharedText(std::shared_ptr<const char[]> bytes, std::size_t size) : mBytes(std::move(bytes)), mSize(size) {}

    std::string_view View() const { return {mBytes.get(), mSize}; }

private:
    std::shared_ptr<const char[]> mBytes;
    std::size_t mSize = 0;
};

// Collects a text piece by piece. A shared text can still be continued without a copy each time. A thousand texts, each
// the front of the next, take the memory of a few.
class TextCollector {
public:
    // Starts a new text; returns its Tail.
    std::string& Begin();

    // Where the next pieces are to be appended; nothing but appending is allowed.
    std::string& Tail() { return mTail; }

    // The whole text so far, good until the next call of anything here.
    std::string_view View() { return mSize == 0 ? std::string_view(mTail) : Share().View(); }
    SharedText Share();

private:
    std::string mTail; // not yet in the block; keeps its room for the next text
    std::shared_ptr<char[]> mBlock;
    std::size_t mSize = 0;
    std::size_t mCapacity = 0;
};

} // namespace tessaly
