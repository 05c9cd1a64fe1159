#include "picker/DmxSliderWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace VelaColorPickerLib {

namespace {

constexpr int kFullLevel = 255;
constexpr int kTrackStops = 18; // one each 15 levels

} // namespace

DmxSliderWidget::DmxSliderWidget(QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(this))
    , m_slider(new ColorTrack(this))
    , m_spinBox(new QSpinBox(this))
{
    m_label->setTextFormat(Qt::PlainText);
    m_label->setBuddy(m_spinBox);
    m_slider->setRange(0, kFullLevel);
    m_slider->setStops(kTrackStops);
    m_spinBox->setRange(0, kFullLevel);
    m_spinBox->setAlignment(Qt::AlignRight);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(fontMetrics().height() / 2);
    layout->addWidget(m_label);
    layout->addWidget(m_slider, 1);
    layout->addWidget(m_spinBox);
    setFocusProxy(m_slider);

    connect(m_slider, &QSlider::valueChanged, this, &DmxSliderWidget::onSliderChanged);
    connect(m_spinBox, qOverload<int>(&QSpinBox::valueChanged), this,
            &DmxSliderWidget::onSpinBoxChanged);
}

QString DmxSliderWidget::name() const
{
    return m_label->text();
}

void DmxSliderWidget::setName(const QString& name)
{
    m_label->setText(name);
    m_slider->setAccessibleName(tr("%1 slider").arg(name));
    m_spinBox->setAccessibleName(name);
    const QString tip = tr("Level of the channel %1, 0 to 255").arg(name);
    m_slider->setToolTip(tip);
    m_spinBox->setToolTip(tip);
}

int DmxSliderWidget::value() const
{
    return m_spinBox->value();
}

void DmxSliderWidget::setValue(int value)
{
    const QSignalBlocker noSliderNews(m_slider);
    const QSignalBlocker noBoxNews(m_spinBox);
    m_slider->setValue(value);
    m_spinBox->setValue(value);
}

void DmxSliderWidget::setColorAt(const ColorTrack::ColorAt& colorAt)
{
    m_slider->setColorAt(colorAt);
}

void DmxSliderWidget::refreshTrack()
{
    m_slider->refresh();
}

void DmxSliderWidget::onSliderChanged(int value)
{
    setValue(value);
    emit valueChanged(this->value());
}

void DmxSliderWidget::onSpinBoxChanged(int value)
{
    setValue(value);
    emit valueChanged(this->value());
}

} // namespace VelaColorPickerLib
