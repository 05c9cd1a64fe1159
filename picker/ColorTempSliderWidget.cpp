#include "picker/ColorTempSliderWidget.h"

#include "color/ColorUtils.h"
#include "picker/CCTPickerWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace VelaColorPickerLib {

ColorTempSliderWidget::ColorTempSliderWidget(QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(tr("Temperature:"), this))
    , m_picker(new CCTPickerWidget(this))
    , m_spinBox(new QSpinBox(this))
{
    m_spinBox->setObjectName(QStringLiteral("colorTempSpinBox"));
    m_spinBox->setRange(ColorUtils::minimumCct(), ColorUtils::maximumCct());
    m_spinBox->setSingleStep(m_picker->singleStep());
    m_spinBox->setSuffix(tr(" K"));
    m_spinBox->setAlignment(Qt::AlignRight);
    m_spinBox->setKeyboardTracking(false); // a number half typed is no temperature
    m_label->setBuddy(m_spinBox);

    const QString tip = tr("Correlated color temperature, from warm to cool");
    m_picker->setAccessibleName(tr("Color temperature track"));
    m_picker->setToolTip(tip);
    m_spinBox->setAccessibleName(tr("Color temperature"));
    m_spinBox->setToolTip(tip);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(fontMetrics().height() / 2);
    layout->addWidget(m_label);
    layout->addWidget(m_picker, 1);
    layout->addWidget(m_spinBox);
    setFocusProxy(m_picker);

    connect(m_picker, &CCTPickerWidget::cctChanged, this,
            &ColorTempSliderWidget::onCCTPickerWidgetTintChanged);
    QMetaObject::connectSlotsByName(this);
}

int ColorTempSliderWidget::colorTemp() const
{
    return m_spinBox->value();
}

void ColorTempSliderWidget::setColorTemp(int cct)
{
    const QSignalBlocker noTrackNews(m_picker);
    const QSignalBlocker noBoxNews(m_spinBox);
    m_picker->setValue(cct);
    m_spinBox->setValue(cct);
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
