#include "picker/TintPickerWidget.h"

#include "color/ColorUtils.h"
#include "picker/ChartWhite.h"

namespace VelaColorPickerLib {

TintPickerWidget::TintPickerWidget(QWidget* parent)
    : ColorTrack(parent)
    , m_cct(ColorUtils::minimumCct())
{
    setRange(ColorUtils::minimumTint(), ColorUtils::maximumTint());
    setSingleStep(100);
    setPageStep(1000);
    setValue(0);
    setColorAt([this](int tint) { return chartWhite(m_cct, tint); });
    connect(this, &QSlider::valueChanged, this, &TintPickerWidget::tintChanged);
}

void TintPickerWidget::setCct(int cct)
{
    if (cct != m_cct) {
        m_cct = cct;
        refresh();
    }
}

} // namespace VelaColorPickerLib
