#include "picker/ColorTintSliderWidget.h"

#include "color/ColorUtils.h"
#include "picker/TintPickerWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace VelaColorPickerLib {

ColorTintSliderWidget::ColorTintSliderWidget(QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(tr("Tint:"), this))
    , m_picker(new TintPickerWidget(this))
    , m_spinBox(new QSpinBox(this))
{
    m_spinBox->setObjectName(QStringLiteral("colorTintSpinBox"));
    m_spinBox->setRange(ColorUtils::minimumTint(), ColorUtils::maximumTint());
    m_spinBox->setSingleStep(m_picker->singleStep());
    m_spinBox->setAlignment(Qt::AlignRight);
    m_spinBox->setKeyboardTracking(false); // a number half typed is no tint
    m_label->setBuddy(m_spinBox);

    const QString tip = tr("Tint: below zero towards magenta, above it towards green");
    m_picker->setAccessibleName(tr("Tint track"));
    m_picker->setToolTip(tip);
    m_spinBox->setAccessibleName(tr("Tint"));
    m_spinBox->setToolTip(tip);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(fontMetrics().height() / 2);
    layout->addWidget(m_label);
    layout->addWidget(m_picker, 1);
    layout->addWidget(m_spinBox);
    setFocusProxy(m_picker);

    connect(m_picker, &TintPickerWidget::tintChanged, this,
            &ColorTintSliderWidget::onTintPickerWidgetTintChanged);
    QMetaObject::connectSlotsByName(this);
}

int ColorTintSliderWidget::tint() const
{
    return m_spinBox->value();
}

void ColorTintSliderWidget::setTint(int tint)
{
    const QSignalBlocker noTrackNews(m_picker);
    const QSignalBlocker noBoxNews(m_spinBox);
    m_picker->setValue(tint);
    m_spinBox->setValue(tint);
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
