// Colours that the user's theme does not name, and the pictures of marks.
#pragma once

#include "platform/desktop/Margin.h"

#include <QIcon>
#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <cmath>

namespace tessaly::qt {

// A colour that can be told from `background` and lets `text` be read on it.
inline QColor Between(const QPalette& palette, QPalette::ColorRole background, QPalette::ColorRole text) {
    const QColor from = palette.color(background);
    const QColor to = palette.color(text);
    const auto quarter = [](int first, int last) { return first + (last - first) / 4; };
    return {quarter(from.red(), to.red()), quarter(from.green(), to.green()), quarter(from.blue(), to.blue())};
}

// As 0xRRGGBB.
inline std::uint32_t Rgb(const QColor& colour) {
    return colour.rgb() & 0xFFFFFF;
}

inline QColor ColourOf(Mark mark, const QPalette& palette) {
    return {MarkColour(mark, Rgb(palette.color(QPalette::Base)), Rgb(palette.color(QPalette::Text)), false)};
}

// `side` pixels high and wide, each of which is `scale` ones of the screen.
inline QImage Picture(Mark mark, int side, qreal scale, const QPalette& palette) {
    const int pixels = static_cast<int>(std::lround(side * scale));
    const std::vector<std::uint32_t> picture =
        MarkPicture(mark, pixels, Rgb(ColourOf(mark, palette)), Rgb(palette.color(QPalette::Base)));
    QImage image(reinterpret_cast<const uchar*>(picture.data()), pixels, pixels, QImage::Format_ARGB32);
    image.setDevicePixelRatio(scale);
    return image.copy(); // the pixels are not its own
}

// The same as an icon, which keeps its colours where it is selected.
inline QIcon Icon(Mark mark, int side, qreal scale, const QPalette& palette) {
    QIcon icon;
    if (mark != Mark::None) {
        const QPixmap picture = QPixmap::fromImage(Picture(mark, side, scale, palette));
        icon.addPixmap(picture);
        icon.addPixmap(picture, QIcon::Selected);
    }
    return icon;
}

} // namespace tessaly::qt
