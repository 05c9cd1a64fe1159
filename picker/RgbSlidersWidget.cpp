#include "picker/RgbSlidersWidget.h"

#include <QSpinBox>

namespace VelaColorPickerLib {

namespace {

enum Component : std::size_t { Red, Green, Blue };

} // namespace

RgbSlidersWidget::RgbSlidersWidget(QWidget* parent)
    : ColorSlidersWidget({{{tr("Red:"), tr("Red"), 255},
                           {tr("Green:"), tr("Green"), 255},
                           {tr("Blue:"), tr("Blue"), 255}}},
                         parent)
{
    connect(track(Red), &ColorTrack::valueChanged, this, &RgbSlidersWidget::onRedSliderChanged);
    connect(spinBox(Red), qOverload<int>(&QSpinBox::valueChanged), this,
            &RgbSlidersWidget::onRedSpinBoxChanged);
    connect(track(Green), &ColorTrack::valueChanged, this, &RgbSlidersWidget::onGreenSliderChanged);
    connect(spinBox(Green), qOverload<int>(&QSpinBox::valueChanged), this,
            &RgbSlidersWidget::onGreenSpinBoxChanged);
    connect(track(Blue), &ColorTrack::valueChanged, this, &RgbSlidersWidget::onBlueSliderChanged);
    connect(spinBox(Blue), qOverload<int>(&QSpinBox::valueChanged), this,
            &RgbSlidersWidget::onBlueSpinBoxChanged);
}

void RgbSlidersWidget::setColor(const VelaColor& color)
{
    const QColor shown = color.toQColor(true);
    setAlpha(color.alphaF());
    setValues({shown.red(), shown.green(), shown.blue()});
}

VelaColor RgbSlidersWidget::colorOf(const Values& values) const
{
    VelaColor color;
    color.setRgb8(values[Red], values[Green], values[Blue]);
    return color;
}

void RgbSlidersWidget::onRedSliderChanged(int value)
{
    takeValue(Red, value);
}

void RgbSlidersWidget::onGreenSliderChanged(int value)
{
    takeValue(Green, value);
}

void RgbSlidersWidget::onBlueSliderChanged(int value)
{
    takeValue(Blue, value);
}

void RgbSlidersWidget::onRedSpinBoxChanged(int value)
{
    takeValue(Red, value);
}

void RgbSlidersWidget::onGreenSpinBoxChanged(int value)
{
    takeValue(Green, value);
}

void RgbSlidersWidget::onBlueSpinBoxChanged(int value)
{
    takeValue(Blue, value);
}

} // namespace VelaColorPickerLib
