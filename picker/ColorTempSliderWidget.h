#pragma once

#include "picker/TrackRow.h"

namespace VelaColorPickerLib {

class CCTPickerWidget;

/// The row of the colour temperature: label, track and spin box, 1900..11000 K.
class ColorTempSliderWidget final : public TrackRow
{
    Q_OBJECT
public:
    explicit ColorTempSliderWidget(QWidget* parent = nullptr);

    /// In kelvin.
    int colorTemp() const;
    /// Limited to the range; emits nothing.
    void setColorTemp(int cct);
    /// The tint of the whites along the track.
    void setTint(int tint);

signals:
    void colorTempChanged(int colorTemp);

public slots:
    void onCCTPickerWidgetTintChanged(int cct);
    void on_colorTempSpinBox_valueChanged(int value);

private:
    ColorTempSliderWidget(CCTPickerWidget* picker, QWidget* parent);

    CCTPickerWidget* m_picker;
};

} // namespace VelaColorPickerLib
