#pragma once

#include "picker/TrackRow.h"

namespace VelaColorPickerLib {

class TintPickerWidget;

/// The row of the tint: label, track and spin box, -32767 (towards magenta) to 32767 (towards
/// green).
class ColorTintSliderWidget final : public TrackRow
{
    Q_OBJECT
public:
    explicit ColorTintSliderWidget(QWidget* parent = nullptr);

    int tint() const;
    /// Limited to the range; emits nothing.
    void setTint(int tint);
    /// The temperature, in kelvin, of the whites along the track.
    void setColorTemp(int cct);

signals:
    void colorTintChanged(int tint);

public slots:
    void onTintPickerWidgetTintChanged(int tint);
    void on_colorTintSpinBox_valueChanged(int value);

private:
    ColorTintSliderWidget(TintPickerWidget* picker, QWidget* parent);

    TintPickerWidget* m_picker;
};

} // namespace VelaColorPickerLib
