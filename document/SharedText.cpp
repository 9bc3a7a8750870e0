// Texts are copied once into a block of their own size; long ones are taken over as they are.
#include "document/SharedText.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tessaly {

namespace {

// Longer texts are moved, not copied. Else a file of one text of 100 MB takes 1.25 times as long to load, and 1.5 times
// the memory.
constexpr std::size_t LongText = std::size_t{64} * 1024;

} // namespace

SharedText::SharedText(std::string_view text) : mSize(text.size()) {
    if (!text.empty()) {
        auto bytes = std::make_shared_for_overwrite<char[]>(text.size());
        std::memcpy(bytes.get(), text.data(), text.size());
        mBytes = std::move(bytes);
    }
}

std::string& TextCollector::Begin() {
    mTail.clear();
    mBlock.reset();
    mSize = 0;
    mCapacity = 0;
    return mTail;
}

SharedText TextCollector::Share() {
    if (mSize == 0 && mTail.size() >= LongText) {
        auto text = std::make_shared<std::string>(std::move(mTail));
        mTail.clear();
        mSize = mCapacity = text->size();
        char* const bytes = text->data();
        mBlock = std::shared_ptr<char[]>(std::move(text), bytes);
        return {mBlock, mSize};
    }
    const std::size_t size = mSize + mTail.size();
    if (size > mCapacity) {
        const std::size_t capacity = mSize == 0 ? size : std::max(size, mCapacity * 2);
        auto larger = std::make_shared_for_overwrite<char[]>(capacity);
        std::copy_n(mBlock.get(), mSize, larger.get());
        mBlock = std::move(larger);
        mCapacity = capacity;
    }
    // Behind what others have: nobody looks there yet.
    std::copy_n(mTail.data(), mTail.size(), mBlock.get() + mSize);
    mTail.clear();
    mSize = size;
    return {mBlock, mSize};
}

} // namespace tessaly
