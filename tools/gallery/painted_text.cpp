#include "tools/gallery/painted_text.h"

#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

namespace zorvanelink::gallery {
namespace {

// Draws nothing and keeps what it is told to write.
class Reader : public QPaintEngine {
  public:
    Reader() : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(QPaintEngineState const&) override {}
    void drawPath(QPainterPath const&) override {}
    void drawPixmap(QRectF const&, QPixmap const&, QRectF const&) override {}
    void drawTiledPixmap(QRectF const&, QPixmap const&, QPointF const&) override {}
    void drawImage(QRectF const&, QImage const&, QRectF const&, Qt::ImageConversionFlags) override {
    }
    void drawPolygon(QPointF const*, int, PolygonDrawMode) override {}
    void drawPolygon(QPoint const*, int, PolygonDrawMode) override {}

    void drawTextItem(QPointF const& at, QTextItem const& item) override {
        auto* const widget = dynamic_cast<QWidget*>(painter()->device());
        QTransform const& placed = painter()->deviceTransform();
        QRectF const lines(at.x(), at.y() - item.ascent(), item.width(),
                           item.ascent() + item.descent());
        QRect const whole = placed.mapRect(lines).toAlignedRect();
        QRegion where = systemClip() & whole;
        if (painter()->hasClipping()) {
            where &= placed.map(painter()->clipRegion());
        }
        if (widget == nullptr || where.isEmpty() || item.text().trimmed().isEmpty()) {
            return;
        }
        QColor color = painter()->pen().color();
        color.setAlphaF(color.alphaF() * painter()->opacity());
        found.push_back(
            {item.text(), where, whole.width() - where.boundingRect().width(), color, widget});
    }

    std::vector<PaintedText> found;
};

class Paper : public QPaintDevice {
  public:
    Paper(QWidget const& window, Reader& reader) : window_(window), reader_(reader) {}
    QPaintEngine* paintEngine() const override { return &reader_; }

  protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
            case PdmDevicePixelRatio:
                return 1;
            case PdmDevicePixelRatioScaled:
                return static_cast<int>(devicePixelRatioFScale());
            case PdmDpiX:
            case PdmPhysicalDpiX:
                return window_.logicalDpiX();
            case PdmDpiY:
            case PdmPhysicalDpiY:
                return window_.logicalDpiY();
            case PdmWidth:
                return window_.width();
            case PdmHeight:
                return window_.height();
            default:
                return QPaintDevice::metric(metric);
        }
    }

  private:
    QWidget const& window_;
    Reader& reader_;
};

}  // namespace

std::vector<PaintedText> PaintedTexts(QWidget& window) {
    Reader reader;
    Paper paper(window, reader);
    window.render(&paper);
    return std::move(reader.found);
}

}  // namespace zorvanelink::gallery
