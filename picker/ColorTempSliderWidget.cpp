#include "picker/ColorTempSliderWidget.h"

#include "picker/CCTPickerWidget.h"

#include <QSpinBox>

namespace VelaColorPickerLib {

ColorTempSliderWidget::ColorTempSliderWidget(QWidget* parent)
    : ColorTempSliderWidget(new CCTPickerWidget, parent)
{}

ColorTempSliderWidget::ColorTempSliderWidget(CCTPickerWidget* picker, QWidget* parent)
    : TrackRow(tr("Temperature:"), picker, parent)
    , m_picker(picker)
{
    spinBox()->setObjectName(QStringLiteral("colorTempSpinBox"));
    spinBox()->setSuffix(tr(" K"));
    describe(tr("Color temperature track"), tr("Color temperature"),
             tr("Correlated color temperature, from warm to cool"));
    connect(m_picker, &CCTPickerWidget::cctChanged, this,
            &ColorTempSliderWidget::onCCTPickerWidgetTintChanged);
    QMetaObject::connectSlotsByName(this);
}

int ColorTempSliderWidget::colorTemp() const
{
    return shownValue();
}

void ColorTempSliderWidget::setColorTemp(int cct)
{
    showValue(cct);
}

void ColorTempSliderWidget::setTint(int tint)
{
    m_picker->setTint(tint);
}

void ColorTempSliderWidget::onCCTPickerWidgetTintChanged(int cct)
{
    setColorTemp(cct);
    emit colorTempChanged(colorTemp());
}

void ColorTempSliderWidget::on_colorTempSpinBox_valueChanged(int value)
{
    setColorTemp(value);
    emit colorTempChanged(colorTemp());
}

} // namespace VelaColorPickerLib
