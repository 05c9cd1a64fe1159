#pragma once

#include "picker/ColorTrack.h"

namespace VelaColorPickerLib {

/// The temperatures of 1900..11000 K as a track of whites of one tint.
class CCTPickerWidget final : public ColorTrack
{
    Q_OBJECT
public:
    explicit CCTPickerWidget(QWidget* parent = nullptr);

    /// The tint of the whites that the track shows.
    void setTint(int tint);

signals:
    void cctChanged(int cct);

private:
    int m_tint = 0;
};

} // namespace VelaColorPickerLib
