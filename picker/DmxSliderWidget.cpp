#include "picker/DmxSliderWidget.h"

#include <QLabel>
#include <QSpinBox>

namespace VelaColorPickerLib {

namespace {

constexpr int kFullLevel = 255;
constexpr int kTrackStops = 18; // one each 15 levels

ColorTrack* makeTrack()
{
    auto* const track = new ColorTrack;
    track->setRange(0, kFullLevel);
    track->setStops(kTrackStops);
    return track;
}

} // namespace

DmxSliderWidget::DmxSliderWidget(QWidget* parent)
    : TrackRow(QString(), makeTrack(), parent)
{
    spinBox()->setKeyboardTracking(true); // the lights follow each digit
    connect(track(), &QSlider::valueChanged, this, &DmxSliderWidget::onSliderChanged);
    connect(spinBox(), qOverload<int>(&QSpinBox::valueChanged), this,
            &DmxSliderWidget::onSpinBoxChanged);
}

QString DmxSliderWidget::name() const
{
    return label()->text();
}

void DmxSliderWidget::setName(const QString& name)
{
    label()->setText(name);
    describe(tr("%1 slider").arg(name), name, tr("Level of the channel %1, 0 to 255").arg(name));
}

void DmxSliderWidget::setColorAt(const ColorTrack::ColorAt& colorAt)
{
    track()->setColorAt(colorAt);
}

void DmxSliderWidget::refreshTrack()
{
    track()->refresh();
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
