#include "picker/RgbSlidersWidget.h"

#include "picker/ColorTrack.h"

#include <QSpinBox>

namespace VelaColorPickerLib {

namespace {

constexpr std::size_t kRed = 0;
constexpr std::size_t kGreen = 1;
constexpr std::size_t kBlue = 2;

} // namespace

RgbSlidersWidget::RgbSlidersWidget(QWidget* parent)
    : ColorSlidersWidget(parent)
{
    buildRow(kRed, {"red", tr("Red:"), tr("Red"), tr("Red, 0 to 255"), {}}, 255);
    buildRow(kGreen, {"green", tr("Green:"), tr("Green"), tr("Green, 0 to 255"), {}}, 255);
    buildRow(kBlue, {"blue", tr("Blue:"), tr("Blue"), tr("Blue, 0 to 255"), {}}, 255);
    setColor(Qt::white);

    connect(track(kRed), &QSlider::valueChanged, this, &RgbSlidersWidget::onRedSliderChanged);
    connect(spinBox(kRed), qOverload<int>(&QSpinBox::valueChanged), this,
            &RgbSlidersWidget::onRedSpinBoxChanged);
    connect(track(kGreen), &QSlider::valueChanged, this, &RgbSlidersWidget::onGreenSliderChanged);
    connect(spinBox(kGreen), qOverload<int>(&QSpinBox::valueChanged), this,
            &RgbSlidersWidget::onGreenSpinBoxChanged);
    connect(track(kBlue), &QSlider::valueChanged, this, &RgbSlidersWidget::onBlueSliderChanged);
    connect(spinBox(kBlue), qOverload<int>(&QSpinBox::valueChanged), this,
            &RgbSlidersWidget::onBlueSpinBoxChanged);
}

RgbSlidersWidget::Values RgbSlidersWidget::valuesOf(const VelaColor& color,
                                                    const Values& /*shown*/) const
{
    const QColor screen = color.toQColor(true);
    return {{screen.red(), screen.green(), screen.blue()}};
}

VelaColor RgbSlidersWidget::colorOf(const Values& values, const VelaColor& present) const
{
    VelaColor color = present;
    color.setRgb8(values[kRed], values[kGreen], values[kBlue]);
    color.setAlpha32(present.alpha32());
    return color;
}

void RgbSlidersWidget::onRedSliderChanged(int value)
{
    choose(kRed, value);
}

void RgbSlidersWidget::onGreenSliderChanged(int value)
{
    choose(kGreen, value);
}

void RgbSlidersWidget::onBlueSliderChanged(int value)
{
    choose(kBlue, value);
}

void RgbSlidersWidget::onRedSpinBoxChanged(int value)
{
    choose(kRed, value);
}

void RgbSlidersWidget::onGreenSpinBoxChanged(int value)
{
    choose(kGreen, value);
}

void RgbSlidersWidget::onBlueSpinBoxChanged(int value)
{
    choose(kBlue, value);
}

} // namespace VelaColorPickerLib
