#pragma once

#include "picker/GradientColorSelectorWidget.h"

#include <QRectF>

class QPaintEvent;

namespace VelaColorPickerLib {

/// Hue across (0 to 360 degrees), saturation down, at the colour's brightness, and a frame around
/// what the zoomed grid shows. Arrows go by a degree or 1/255, with Shift ten times as far; the
/// wheel zooms.
class HsbSpectrumWidget final : public GradientColorSelectorWidget
{
    Q_OBJECT
public:
    explicit HsbSpectrumWidget(QWidget* parent = nullptr);

    QRectF zoomArea() const { return m_zoomArea; }
    QSize sizeHint() const override;

public slots:
    /// In the unit square; a rectangle with nothing in it is not shown.
    void setZoomArea(QRectF rect);

protected:
    QPointF pointOf(const Hsb& hsb) const override;
    Hsb hsbAt(const QPointF& point, const Hsb& hsb) const override;
    QPointF keyStep() const override;
    QImage fieldImage(const QSize& pixels, double ratio, const Hsb& hsb) const override;
    bool isSameField(const Hsb& a, const Hsb& b) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRegion zoomFrame() const;

    QRectF m_zoomArea;
};

} // namespace VelaColorPickerLib
