#pragma once

#include "picker/ColorSlidersWidget.h"

namespace VelaColorPickerLib {

/// Red, green and blue, 0..255 each, as the colour is shown on the screen. What it gives keeps the
/// alpha of the colour that was set.
class RgbSlidersWidget final : public ColorSlidersWidget
{
    Q_OBJECT
public:
    explicit RgbSlidersWidget(QWidget* parent = nullptr);

public slots:
    // Values beyond a row's range are limited to it.
    void onRedSliderChanged(int value);
    void onGreenSliderChanged(int value);
    void onBlueSliderChanged(int value);
    void onRedSpinBoxChanged(int value);
    void onGreenSpinBoxChanged(int value);
    void onBlueSpinBoxChanged(int value);

protected:
    Values valuesOf(const VelaColor& color, const Values& shown) const override;
    VelaColor colorOf(const Values& values, const VelaColor& present) const override;
};

} // namespace VelaColorPickerLib
