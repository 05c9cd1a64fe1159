#include "picker/HsbTintsAndShadesWidget.h"

#include "picker/HsbField.h"

namespace VelaColorPickerLib {

HsbTintsAndShadesWidget::HsbTintsAndShadesWidget(QWidget* parent)
    : GradientColorSelectorWidget(parent)
{
    setAccessibleName(tr("Tints and shades"));
    setAccessibleDescription(tr("Saturation from left to right, brightness from bottom to top"));
    setToolTip(tr("Drag the marker to a tint or shade of the hue. The arrow keys move it, with "
                  "Shift by more; the wheel changes the brightness, with Shift the saturation."));
}

QImage HsbTintsAndShadesWidget::paintField(const QSize& size) const
{
    return tintsAndShadesImage(size, hue());
}

QPointF HsbTintsAndShadesWidget::markerPlace() const
{
    return {saturation(), 1.0 - brightness()};
}

void HsbTintsAndShadesWidget::moveToPlace(const QPointF& place)
{
    select(hue(), place.x(), 1.0 - place.y());
}

void HsbTintsAndShadesWidget::valuesChanged()
{
    if (hue() != m_fieldHue) {
        m_fieldHue = hue();
        refreshField();
    }
}

} // namespace VelaColorPickerLib
