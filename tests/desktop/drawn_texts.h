#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QStringList>
#include <QWidget>

namespace lineweir::test {

// A device that keeps of all that is painted on it the texts alone.
class TextPaper final : public QPaintDevice {
 public:
  explicit TextPaper(QSize size) : size_(size) {}

  QPaintEngine* paintEngine() const override { return &engine_; }
  const QStringList& texts() const { return engine_.texts; }

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmWidth:
        return size_.width();
      case PdmHeight:
        return size_.height();
      case PdmDpiX:
      case PdmDpiY:
      case PdmPhysicalDpiX:
      case PdmPhysicalDpiY:
        return 96;
      case PdmDepth:
        return 32;
      default:
        return QPaintDevice::metric(metric);
    }
  }

 private:
  struct Engine final : QPaintEngine {
    Engine() : QPaintEngine(AllFeatures) {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF&, const QTextItem& item) override { texts << item.text(); }
    Type type() const override { return User; }

    QStringList texts;
  };

  QSize size_;
  mutable Engine engine_;
};

inline QStringList drawn_texts(QWidget& widget) {
  TextPaper paper(widget.size());
  widget.render(&paper);
  return paper.texts();
}

}  // namespace lineweir::test
