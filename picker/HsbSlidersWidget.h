#pragma once

#include "picker/ColorSlidersWidget.h"

namespace VelaColorPickerLib {

/// Hue in degrees, 0..359, saturation and brightness, 0..255 each. What it gives keeps the
/// alpha of the colour that was set.
class HsbSlidersWidget final : public ColorSlidersWidget
{
    Q_OBJECT
public:
    explicit HsbSlidersWidget(QWidget* parent = nullptr);

public slots:
    // Values beyond a row's range are limited to it.
    void onHueSliderChanged(int value);
    void onSaturationSliderChanged(int value);
    void onBrightnessSliderChanged(int value);
    void onHueSpinBoxChanged(int value);
    void onSaturationSpinBoxChanged(int value);
    void onBrightnessSpinBoxChanged(int value);

protected:
    Values valuesOf(const VelaColor& color, const Values& shown) const override;
    VelaColor colorOf(const Values& values, const VelaColor& present) const override;
};

} // namespace VelaColorPickerLib
