#include "picker/CCTPickerWidget.h"

#include "color/ColorUtils.h"
#include "picker/ChartWhite.h"

namespace VelaColorPickerLib {

CCTPickerWidget::CCTPickerWidget(QWidget* parent)
    : ColorTrack(parent)
{
    setRange(ColorUtils::minimumCct(), ColorUtils::maximumCct());
    setSingleStep(10); // the chromaticity moves in steps of 10 K
    setPageStep(100);
    setColorAt([this](int cct) { return chartWhite(cct, m_tint); });
    connect(this, &QSlider::valueChanged, this, &CCTPickerWidget::cctChanged);
}

void CCTPickerWidget::setTint(int tint)
{
    if (tint != m_tint) {
        m_tint = tint;
        refresh();
    }
}

} // namespace VelaColorPickerLib
