#pragma once

#include "color/VelaColor.h"
#include "picker/PercentSlider.h"

#include <QColor>

namespace VelaColorPickerLib {

/// How much of what lies below the colour it hides, from clear to opaque.
class OpacitySliderWidget : public PercentSlider
{
    Q_OBJECT
public:
    explicit OpacitySliderWidget(QWidget* parent = nullptr);

    /// Shows the alpha of `color` on a track of that colour. Emits nothing.
    void setColor(const VelaColor& color);

signals:
    /// 0..100 %
    void opacityChanged(int opacity);

private:
    QColor m_opaque = Qt::white;
};

} // namespace VelaColorPickerLib
