#pragma once

#include "color/VelaColor.h"
#include "picker/PercentSlider.h"

#include <QColor>

namespace VelaColorPickerLib {

/// How bright the colour is, from dark to full.
class IntensitySliderWidget : public PercentSlider
{
    Q_OBJECT
public:
    explicit IntensitySliderWidget(QWidget* parent = nullptr);

    /// Shows `intensity`, 0..1, on a track of the tones of `color`. Emits nothing.
    void setColor(const VelaColor& color, double intensity);

signals:
    /// 0..100 %
    void intensityChanged(int intensity);

private:
    QColor m_full = Qt::white;
};

} // namespace VelaColorPickerLib
