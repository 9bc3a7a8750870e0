// Colours that the user's theme does not name.
#pragma once

#include <QPalette>

namespace tessaly::qt {

// A colour that can be told from `background` and lets `text` be read on it.
inline QColor Between(const QPalette& palette, QPalette::ColorRole background, QPalette::ColorRole text) {
    const QColor from = palette.color(background);
    const QColor to = palette.color(text);
    const auto quarter = [](int first, int last) { return first + (last - first) / 4; };
    return {quarter(from.red(), to.red()), quarter(from.green(), to.green()), quarter(from.blue(), to.blue())};
}

} // namespace tessaly::qt
