#include "picker/OpacitySliderWidget.h"

#include "color/DisplayColor.h"
#include "picker/ColorTrack.h"

#include <QtGlobal>

namespace VelaColorPickerLib {

OpacitySliderWidget::OpacitySliderWidget(QWidget* parent)
    : PercentSlider(tr("Opacity:"), tr("Opacity"), tr("Opacity of the color"), parent)
{
    track()->setColorAt([this](int percent) {
        QColor color = m_opaque;
        color.setAlpha(percent == 0 ? 0 : 255);
        return color;
    });
    connect(this, &PercentSlider::percentChanged, this, &OpacitySliderWidget::opacityChanged);
}

void OpacitySliderWidget::setColor(const VelaColor& color)
{
    setPercent(qRound(100.0 * color.alphaF()));
    QColor opaque = toDisplayQColor(color);
    opaque.setAlpha(255);
    if (opaque != m_opaque) {
        m_opaque = opaque;
        track()->refresh();
    }
}

} // namespace VelaColorPickerLib
