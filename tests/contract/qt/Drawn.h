// What a widget draws, taken down instead of painted: its texts and pictures.
#pragma once

#include <QImage>
#include <QPaintDevice>
#include <QRect>
#include <QString>
#include <memory>
#include <vector>

class QWidget;

namespace tessaly {

struct Drawn {
    struct Text {
        double baseline = 0;
        QString text;
    };
    struct Picture {
        double top = 0;
        QImage image;
    };

    // In the order of drawing. What is inside `place` and by the widget itself, not by those in it.
    std::vector<Text> texts;
    std::vector<Picture> pictures;
};

Drawn DrawnBy(QWidget& widget, const QRect& place);

} // namespace tessaly
