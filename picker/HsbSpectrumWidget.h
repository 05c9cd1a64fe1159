#pragma once

#include "picker/GradientColorSelectorWidget.h"

#include <QRectF>

namespace VelaColorPickerLib {

/// Hue from left to right and saturation from top to bottom, at the brightness of the colour, with
/// a frame around the part that a zoomed view shows.
class HsbSpectrumWidget final : public GradientColorSelectorWidget
{
    Q_OBJECT
public:
    explicit HsbSpectrumWidget(QWidget* parent = nullptr);

    QRectF zoomArea() const { return m_zoomArea; }

public slots:
    /// In hue and saturation, each 0..1; a null rectangle frames nothing.
    void setZoomArea(const QRectF& rect);

protected:
    QImage paintField(const QSize& size) const override;
    void paintOverField(QPainter* painter) override;
    QPointF markerPlace() const override;
    void moveToPlace(const QPointF& place) override;
    void valuesChanged() override;

private:
    QRect zoomFrame() const;

    QRectF m_zoomArea;
    double m_fieldBrightness = 1.0; // what the field was painted for
};

} // namespace VelaColorPickerLib
