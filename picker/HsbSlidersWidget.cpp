#include "picker/HsbSlidersWidget.h"

#include "picker/ColorTrack.h"
#include "picker/Hsb.h"

#include <QSpinBox>

namespace VelaColorPickerLib {

namespace {

constexpr std::size_t kHue = 0;
constexpr std::size_t kSaturation = 1;
constexpr std::size_t kBrightness = 2;

} // namespace

HsbSlidersWidget::HsbSlidersWidget(QWidget* parent)
    : ColorSlidersWidget(parent)
{
    buildRow(kHue,
             {"hue", tr("Hue:"), tr("Hue"), tr("Hue, 0 to 359 degrees"), QStringLiteral("\u00B0")},
             359);
    buildRow(kSaturation,
             {"saturation", tr("Saturation:"), tr("Saturation"), tr("Saturation, 0 to 255"), {}},
             255);
    buildRow(kBrightness,
             {"brightness", tr("Brightness:"), tr("Brightness"), tr("Brightness, 0 to 255"), {}},
             255);
    setColor(Qt::white);

    connect(track(kHue), &QSlider::valueChanged, this, &HsbSlidersWidget::onHueSliderChanged);
    connect(spinBox(kHue), qOverload<int>(&QSpinBox::valueChanged), this,
            &HsbSlidersWidget::onHueSpinBoxChanged);
    connect(track(kSaturation), &QSlider::valueChanged, this,
            &HsbSlidersWidget::onSaturationSliderChanged);
    connect(spinBox(kSaturation), qOverload<int>(&QSpinBox::valueChanged), this,
            &HsbSlidersWidget::onSaturationSpinBoxChanged);
    connect(track(kBrightness), &QSlider::valueChanged, this,
            &HsbSlidersWidget::onBrightnessSliderChanged);
    connect(spinBox(kBrightness), qOverload<int>(&QSpinBox::valueChanged), this,
            &HsbSlidersWidget::onBrightnessSpinBoxChanged);
}

HsbSlidersWidget::Values HsbSlidersWidget::valuesOf(const VelaColor& color,
                                                    const Values& shown) const
{
    Hsb hsb = {shown[kHue] / 360.0, shown[kSaturation] / 255.0, shown[kBrightness] / 255.0};
    hsb.take(color);
    return {{hsb.hueDegrees(), hsb.saturation8(), hsb.brightness8()}};
}

VelaColor HsbSlidersWidget::colorOf(const Values& values, const VelaColor& present) const
{
    VelaColor color = VelaColor::fromHsv(values[kHue], values[kSaturation], values[kBrightness]);
    color.setAlpha32(present.alpha32());
    return color;
}

void HsbSlidersWidget::onHueSliderChanged(int value)
{
    choose(kHue, value);
}

void HsbSlidersWidget::onSaturationSliderChanged(int value)
{
    choose(kSaturation, value);
}

void HsbSlidersWidget::onBrightnessSliderChanged(int value)
{
    choose(kBrightness, value);
}

void HsbSlidersWidget::onHueSpinBoxChanged(int value)
{
    choose(kHue, value);
}

void HsbSlidersWidget::onSaturationSpinBoxChanged(int value)
{
    choose(kSaturation, value);
}

void HsbSlidersWidget::onBrightnessSpinBoxChanged(int value)
{
    choose(kBrightness, value);
}

} // namespace VelaColorPickerLib
