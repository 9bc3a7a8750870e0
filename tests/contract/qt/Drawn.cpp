// A paint engine that only takes down.
#include "tests/contract/qt/Drawn.h"

#include <QPaintEngine>
#include <QRegion>
#include <QWidget>

namespace tessaly {

namespace {

class Engine final : public QPaintEngine {
public:
    explicit Engine(Drawn& drawn) : QPaintEngine(AllFeatures), mDrawn(drawn) {}

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    Type type() const override { return User; }
    void drawPath(const QPainterPath& /*path*/) override {}
    void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
    void drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& /*part*/) override {
        mDrawn.pictures.push_back({place.top(), pixmap.toImage()});
    }
    void drawImage(const QRectF& place, const QImage& image, const QRectF& /*part*/,
                   Qt::ImageConversionFlags /*flags*/) override {
        mDrawn.pictures.push_back({place.top(), image});
    }
    void drawTextItem(const QPointF& place, const QTextItem& item) override {
        mDrawn.texts.push_back({place.y(), item.text()});
    }

private:
    Drawn& mDrawn;
};

class Device final : public QPaintDevice {
public:
    Device(Drawn& drawn, const QWidget& like) : mEngine(drawn), mLike(like) {}

    QPaintEngine* paintEngine() const override { return &mEngine; }

protected:
    int metric(PaintDeviceMetric what) const override {
        switch (what) {
        case PdmWidth:
            return mLike.width();
        case PdmHeight:
            return mLike.height();
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmNumColors:
            return 0;
        case PdmDepth:
            return 32;
        default:
            return 96; // dots to the inch
        }
    }

private:
    mutable Engine mEngine;
    const QWidget& mLike;
};

} // namespace

Drawn DrawnBy(QWidget& widget, const QRect& place) {
    Drawn drawn;
    Device device(drawn, widget);
    widget.render(&device, QPoint(), QRegion(place), QWidget::RenderFlags());
    return drawn;
}

} // namespace tessaly
