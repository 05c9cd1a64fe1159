#include "picker/PercentSlider.h"

#include "picker/ColorTrack.h"

#include <QSpinBox>

namespace VelaColorPickerLib {

namespace {

constexpr int kFull = 100;

ColorTrack* makeTrack()
{
    auto* const track = new ColorTrack;
    track->setObjectName(QStringLiteral("track"));
    track->setRange(0, kFull);
    track->setValue(kFull);
    track->setStops(2);
    track->setPageStep(10);
    return track;
}

} // namespace

PercentSlider::PercentSlider(const QString& label, const QString& name, const QString& toolTip,
                             QWidget* parent)
    : TrackRow(label, makeTrack(), parent)
{
    spinBox()->setObjectName(QStringLiteral("spinBox"));
    spinBox()->setSuffix(tr(" %"));
    describe(tr("%1 track").arg(name), name, toolTip);

    connect(track(), &QSlider::valueChanged, this, &PercentSlider::take);
    connect(spinBox(), qOverload<int>(&QSpinBox::valueChanged), this, &PercentSlider::take);
}

void PercentSlider::take(int percent)
{
    setPercent(percent);
    emit percentChanged(percent);
}

} // namespace VelaColorPickerLib
