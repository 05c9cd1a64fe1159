#include "picker/IntensitySliderWidget.h"

#include "color/DisplayColor.h"
#include "picker/ColorIntensity.h"
#include "picker/ColorTrack.h"

#include <QtGlobal>

namespace VelaColorPickerLib {

IntensitySliderWidget::IntensitySliderWidget(QWidget* parent)
    : PercentSlider(tr("Intensity:"), tr("Intensity"), tr("Intensity of the color"), parent)
{
    // One end is dark, the other the full colour: what lies between is in proportion.
    track()->setColorAt([this](int percent) { return percent == 0 ? QColor(Qt::black) : m_full; });
    connect(this, &PercentSlider::percentChanged, this, &IntensitySliderWidget::intensityChanged);
}

void IntensitySliderWidget::setColor(const VelaColor& color, double intensity)
{
    setPercent(qRound(100.0 * intensity));
    QColor full = toDisplayQColor(withIntensity(color, 1.0));
    full.setAlpha(255);
    if (full != m_full) {
        m_full = full;
        track()->refresh();
    }
}

} // namespace VelaColorPickerLib
