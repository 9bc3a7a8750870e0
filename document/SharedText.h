// A text that several holders share. It is the front of a string that may go on growing behind it: a reader
// that has handed out what it has so far can append more without copying, and without changing this text.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace tessaly {

class SharedText {
public:
    SharedText() = default;

    explicit SharedText(std::string text)
        : mWhole(std::make_shared<const std::string>(std::move(text))),
          mSize(mWhole->size()) {}

    // All that `whole` holds now. Whoever still writes to it may only append.
    explicit SharedText(std::shared_ptr<const std::string> whole) : mWhole(std::move(whole)), mSize(mWhole->size()) {}

    std::string_view View() const { return mWhole ? std::string_view(*mWhole).substr(0, mSize) : std::string_view(); }

private:
    std::shared_ptr<const std::string> mWhole;
    std::size_t mSize = 0;
};

} // namespace tessaly
