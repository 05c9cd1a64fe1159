#include "picker/HsbSlidersWidget.h"

#include <QSpinBox>

namespace VelaColorPickerLib {

namespace {

enum Component : std::size_t { Hue, Saturation, Brightness };

} // namespace

HsbSlidersWidget::HsbSlidersWidget(QWidget* parent)
    : ColorSlidersWidget({{{tr("Hue:"), tr("Hue"), 359},
                           {tr("Saturation:"), tr("Saturation"), 255},
                           {tr("Brightness:"), tr("Brightness"), 255}}},
                         parent)
{
    connect(track(Hue), &ColorTrack::valueChanged, this, &HsbSlidersWidget::onHueSliderChanged);
    connect(spinBox(Hue), qOverload<int>(&QSpinBox::valueChanged), this,
            &HsbSlidersWidget::onHueSpinBoxChanged);
    connect(track(Saturation), &ColorTrack::valueChanged, this,
            &HsbSlidersWidget::onSaturationSliderChanged);
    connect(spinBox(Saturation), qOverload<int>(&QSpinBox::valueChanged), this,
            &HsbSlidersWidget::onSaturationSpinBoxChanged);
    connect(track(Brightness), &ColorTrack::valueChanged, this,
            &HsbSlidersWidget::onBrightnessSliderChanged);
    connect(spinBox(Brightness), qOverload<int>(&QSpinBox::valueChanged), this,
            &HsbSlidersWidget::onBrightnessSpinBoxChanged);
}

void HsbSlidersWidget::setHsb(int hue, int saturation, int brightness, double alpha)
{
    setAlpha(alpha);
    setValues({hue, saturation, brightness});
}

VelaColor HsbSlidersWidget::colorOf(const Values& values) const
{
    return VelaColor::fromHsv(values[Hue], values[Saturation], values[Brightness]);
}

void HsbSlidersWidget::onHueSliderChanged(int value)
{
    takeValue(Hue, value);
}

void HsbSlidersWidget::onSaturationSliderChanged(int value)
{
    takeValue(Saturation, value);
}

void HsbSlidersWidget::onBrightnessSliderChanged(int value)
{
    takeValue(Brightness, value);
}

void HsbSlidersWidget::onHueSpinBoxChanged(int value)
{
    takeValue(Hue, value);
}

void HsbSlidersWidget::onSaturationSpinBoxChanged(int value)
{
    takeValue(Saturation, value);
}

void HsbSlidersWidget::onBrightnessSpinBoxChanged(int value)
{
    takeValue(Brightness, value);
}

} // namespace VelaColorPickerLib
