// Between the program's UTF-8 and Qt's UTF-16, and between twips and pixels. Pixels are Qt's device-independent ones:
// 96 to the inch, whatever the screen's scale.
#pragma once

#include <QString>
#include <cmath>
#include <string>
#include <string_view>

namespace tessaly::qt {

inline constexpr float TwipsInPixel = 15;

inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

inline int ToPixels(float twips) {
    return static_cast<int>(std::lround(twips / TwipsInPixel));
}

inline float ToTwips(int pixels) {
    return static_cast<float>(pixels) * TwipsInPixel;
}

} // namespace tessaly::qt
