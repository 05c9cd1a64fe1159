#pragma once

#include "color/VelaColor.h"
#include "picker/ColorSelectorWidget.h"

#include <QPointF>

namespace VelaColorPickerLib {

/// A field that shows two of hue, saturation and brightness along its sides.
class GradientColorSelectorWidget : public ColorSelectorWidget
{
    Q_OBJECT
public:
    explicit GradientColorSelectorWidget(QWidget* parent = nullptr);

    // 0..1
    double hue() const { return m_hue; }
    double saturation() const { return m_saturation; }
    double brightness() const { return m_brightness; }
    /// Each limited to 0..1. Emits nothing.
    void setHsb(double hue, double saturation, double brightness, double alpha);

    QPoint markerPixel() const override;

signals:
    void colorChanged(const VelaColor& color);

protected:
    /// The marker's place: 0..1 from left to right and from top to bottom.
    virtual QPointF markerPlace() const = 0;
    /// The user moved the marker to `place`, which may lie outside of 0..1: calls select().
    virtual void moveToPlace(const QPointF& place) = 0;
    /// After a change of hue, saturation or brightness.
    virtual void valuesChanged();

    /// Takes the values, each limited to 0..1, and emits their colour.
    void select(double hue, double saturation, double brightness);
    QPointF placeOf(const QPoint& pixel) const;
    void moveToPixel(const QPoint& pixel) override;
    void moveBySteps(int right, int down, bool large) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Up and down; with Shift, or by a wheel that tilts, to the sides.
    void wheelEvent(QWheelEvent* event) override;

private:
    double m_hue = 0.0;
    double m_saturation = 0.0;
    double m_brightness = 1.0;
    double m_alpha = 1.0;
};

} // namespace VelaColorPickerLib
