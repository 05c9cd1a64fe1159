#pragma once

#include "picker/ColorSlidersWidget.h"

namespace VelaColorPickerLib {

/// Red, green and blue of a colour, 0..255 each.
class RgbSlidersWidget final : public ColorSlidersWidget
{
    Q_OBJECT
public:
    explicit RgbSlidersWidget(QWidget* parent = nullptr);

    /// Shows a colour as red, green and blue; an invalid one as black. Emits nothing.
    void setColor(const VelaColor& color);

public slots:
    void onRedSliderChanged(int value);
    void onGreenSliderChanged(int value);
    void onBlueSliderChanged(int value);
    void onRedSpinBoxChanged(int value);
    void onGreenSpinBoxChanged(int value);
    void onBlueSpinBoxChanged(int value);

protected:
    VelaColor colorOf(const Values& values) const override;
};

} // namespace VelaColorPickerLib
