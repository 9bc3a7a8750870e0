// Each pixel of a picture is as opaque as the share of its 16 points that lie in the shape.
#include "platform/desktop/Margin.h"

#include "syntax/Palette.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

// Between two colours, `step` sixteenths of the way.
std::uint32_t Between(std::uint32_t from, std::uint32_t to, int step) {
    std::uint32_t colour = 0;
    for (const int shift : {16, 8, 0}) {
        const int first = static_cast<int>(from >> shift & 0xFF);
        const int last = static_cast<int>(to >> shift & 0xFF);
        colour |= static_cast<std::uint32_t>(first + (last - first) * step / 16) << shift;
    }
    return colour;
}

enum class Part { Outside, Shape, Sign };

// All shapes lie between -1 and 1, with y downwards.
Part PartOfError(float x, float y) {
    constexpr float arm = 0.5F;
    constexpr float thickness = 0.17F;
    if (x * x + y * y > 0.95F) {
        return Part::Outside;
    }
    const bool isInCross = std::max(std::abs(x), std::abs(y)) < arm && std::abs(std::abs(x) - std::abs(y)) < thickness;
    return isInCross ? Part::Sign : Part::Shape;
}

Part PartOfWarning(float x, float y) {
    constexpr float top = -0.95F;
    constexpr float bottom = 0.85F;
    if (y > bottom || std::abs(x) > (y - top) / (bottom - top)) {
        return Part::Outside;
    }
    const bool isInStroke = y > -0.35F && y < 0.3F;
    const bool isInDot = y > 0.45F && y < 0.7F;
    return std::abs(x) < 0.13F && (isInStroke || isInDot) ? Part::Sign : Part::Shape;
}

} // namespace

Margin LayOutMargin(std::size_t lines, int digitWidth, int lineHeight) {
    int digits = 3;
    for (std::size_t rest = lines / 1000; rest > 0; rest /= 10) {
        ++digits;
    }
    Margin margin;
    const int gap = std::max(digitWidth / 2, 2);
    margin.side = std::max(lineHeight * 3 / 4, 8);
    margin.picture = gap / 2;
    margin.numberEnd = margin.picture + margin.side + gap + digits * digitWidth;
    margin.width = margin.numberEnd + gap;
    return margin;
}

MarginColours ColoursOfMargin(std::uint32_t paper, std::uint32_t ink, bool isHighContrast) {
    return isHighContrast ? MarginColours{paper, ink} : MarginColours{Between(paper, ink, 1), Between(paper, ink, 10)};
}

std::uint32_t MarkColour(Mark mark, std::uint32_t paper, std::uint32_t ink, bool isHighContrast) {
    if (isHighContrast) {
        return ink;
    }
    const bool isOnDark = IsDark(paper);
    return mark == Mark::Error ? (isOnDark ? 0xFF7B72 : 0xC8201C) : (isOnDark ? 0xE3B341 : 0xA86200);
}

std::vector<std::uint32_t> MarkPicture(Mark mark, int side, std::uint32_t colour, std::uint32_t paper) {
    constexpr int points = 4; // in each direction
    const auto scale = [side](int place) {
        return (static_cast<float>(place) + 0.5F) * 2 / static_cast<float>(side * points) - 1;
    };
    std::vector<std::uint32_t> pixels;
    for (int pixel = 0; pixel < side * side; ++pixel) {
        int inside = 0;
        int inSign = 0;
        for (int point = 0; point < points * points; ++point) {
            const float x = scale(pixel % side * points + point % points);
            const float y = scale(pixel / side * points + point / points);
            const Part part = mark == Mark::Error ? PartOfError(x, y) : PartOfWarning(x, y);
            inside += part == Part::Outside ? 0 : 1;
            inSign += part == Part::Sign ? 1 : 0;
        }
        const auto opacity = static_cast<std::uint32_t>(inside * 255 / (points * points));
        pixels.push_back(opacity << 24 | Between(colour, paper, inSign * 16 / std::max(inside, 1)));
    }
    return pixels;
}

} // namespace tessaly
