#include "picker/ColorTintSliderWidget.h"

#include "picker/TintPickerWidget.h"

#include <QSpinBox>

namespace VelaColorPickerLib {

ColorTintSliderWidget::ColorTintSliderWidget(QWidget* parent)
    : ColorTintSliderWidget(new TintPickerWidget, parent)
{}

ColorTintSliderWidget::ColorTintSliderWidget(TintPickerWidget* picker, QWidget* parent)
    : TrackRow(tr("Tint:"), picker, parent)
    , m_picker(picker)
{
    spinBox()->setObjectName(QStringLiteral("colorTintSpinBox"));
    describe(tr("Tint track"), tr("Tint"),
             tr("Tint: below zero towards magenta, above it towards green"));
    connect(m_picker, &TintPickerWidget::tintChanged, this,
            &ColorTintSliderWidget::onTintPickerWidgetTintChanged);
    QMetaObject::connectSlotsByName(this);
}

int ColorTintSliderWidget::tint() const
{
    return shownValue();
}

void ColorTintSliderWidget::setTint(int tint)
{
    showValue(tint);
}

void ColorTintSliderWidget::setColorTemp(int cct)
{
    m_picker->setCct(cct);
}

void ColorTintSliderWidget::onTintPickerWidgetTintChanged(int tint)
{
    setTint(tint);
    emit colorTintChanged(this->tint());
}

void ColorTintSliderWidget::on_colorTintSpinBox_valueChanged(int value)
{
    setTint(value);
    emit colorTintChanged(tint());
}

} // namespace VelaColorPickerLib
