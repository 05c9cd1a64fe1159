#pragma once

#include "picker/ColorTrack.h"

namespace VelaColorPickerLib {

/// The tints of -32767..32767 as a track of whites of one temperature.
class TintPickerWidget final : public ColorTrack
{
    Q_OBJECT
public:
    explicit TintPickerWidget(QWidget* parent = nullptr);

    /// The temperature, in kelvin, of the whites that the track shows.
    void setCct(int cct);

signals:
    void tintChanged(int tint);

private:
    int m_cct;
};

} // namespace VelaColorPickerLib
