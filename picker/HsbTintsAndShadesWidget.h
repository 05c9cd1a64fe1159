#pragma once

#include "picker/GradientColorSelectorWidget.h"

namespace VelaColorPickerLib {

/// The tints and shades of one hue: saturation from left to right, brightness from bottom to top.
class HsbTintsAndShadesWidget final : public GradientColorSelectorWidget
{
    Q_OBJECT
public:
    explicit HsbTintsAndShadesWidget(QWidget* parent = nullptr);

protected:
    QImage paintField(const QSize& size) const override;
    QPointF markerPlace() const override;
    void moveToPlace(const QPointF& place) override;
    void valuesChanged() override;

private:
    double m_fieldHue = 0.0; // what the field was painted for
};

} // namespace VelaColorPickerLib
