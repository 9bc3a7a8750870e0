// The pictures of marks, in the colours of the user's theme.
#pragma once

#include "platform/desktop/Margin.h"

#include <QImage>
#include <QPalette>
#include <cmath>

namespace tessaly::qt {

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
    const std::vector<std::uint32_t> picture = MarkPicture(mark, pixels, Rgb(ColourOf(mark, palette)));
    QImage image(reinterpret_cast<const uchar*>(picture.data()), pixels, pixels, QImage::Format_ARGB32);
    image.setDevicePixelRatio(scale);
    return image.copy(); // the pixels are not its own
}

} // namespace tessaly::qt
