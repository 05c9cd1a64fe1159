#pragma once

#include "picker/ColorSelectorWidget.h"
#include "picker/Hsb.h"

#include <QImage>
#include <QPointF>
#include <QTransform>

class QMouseEvent;
class QPainter;

namespace VelaColorPickerLib {

/// A field of all values of two of hue, saturation and brightness, with a marker that is dragged.
/// Its places are points of the unit square, from the upper left pixel to the lower right one.
class GradientColorSelectorWidget : public ColorSelectorWidget
{
    Q_OBJECT
public:
    // 0..1 each
    double hue() const { return m_hsb.hue; }
    double saturation() const { return m_hsb.saturation; }
    double brightness() const { return m_hsb.brightness; }
    VelaColor color() const;
    /// Shows a colour; emits nothing. A grey leaves the hue, black the saturation too, and an
    /// invalid colour all as it is.
    void setColor(const VelaColor& color);
    /// Chooses a colour as the user does, with the signal: each component is limited to 0..1, and
    /// NaN is 0.
    void select(double hue, double saturation, double brightness);

    /// The place of a pixel; beyond the unit square for one beside the widget.
    QPointF pointAt(const QPoint& pixel) const;
    QPoint pixelOf(const QPointF& point) const;
    QPoint markerPixel() const;
    bool isOnMarker(const QPoint& pixel) const;

signals:
    void colorChanged(VelaColor color);

protected:
    explicit GradientColorSelectorWidget(QWidget* parent);

    virtual QPointF pointOf(const Hsb& hsb) const = 0;
    /// What a place stands for; its third component is that of `hsb`.
    virtual Hsb hsbAt(const QPointF& point, const Hsb& hsb) const = 0;
    /// What one step of an arrow key is, in the unit square.
    virtual QPointF keyStep() const = 0;
    virtual QImage fieldImage(const QSize& pixels, double ratio, const Hsb& hsb) const = 0;
    /// Whether both have the same picture.
    virtual bool isSameField(const Hsb& a, const Hsb& b) const = 0;

    const Hsb& hsb() const { return m_hsb; }
    /// The unit square to the widget.
    QTransform unitToWidget() const;
    /// In the unit square.
    void paintField(QPainter* painter);
    /// In the widget's pixels.
    void paintMarker(QPainter* painter) const;

    void moveTo(const QPoint& pixel) override;
    void moveBy(int columns, int rows) override;
    void moveToEnd(int columns, int rows) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void display(const Hsb& hsb);
    void selectPoint(const QPointF& point);

    Hsb m_hsb;
    double m_alpha = 1.0;
    QImage m_field; // at the widget's size in device pixels; null: to be painted
};

} // namespace VelaColorPickerLib
