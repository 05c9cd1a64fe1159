#pragma once

#include "picker/ColorSlidersWidget.h"

namespace VelaColorPickerLib {

/// Hue in degrees 0..359, and saturation and brightness, 0..255 each.
class HsbSlidersWidget final : public ColorSlidersWidget
{
    Q_OBJECT
public:
    explicit HsbSlidersWidget(QWidget* parent = nullptr);

    /// Each limited to its range; alpha 0..1. Emits nothing.
    void setHsb(int hue, int saturation, int brightness, double alpha);

public slots:
    void onHueSliderChanged(int value);
    void onSaturationSliderChanged(int value);
    void onBrightnessSliderChanged(int value);
    void onHueSpinBoxChanged(int value);
    void onSaturationSpinBoxChanged(int value);
    void onBrightnessSpinBoxChanged(int value);

protected:
    VelaColor colorOf(const Values& values) const override;
};

} // namespace VelaColorPickerLib
