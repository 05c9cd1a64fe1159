#pragma once

#include "color/VelaColor.h"

#include <QtGlobal>

/// The setting of a two-channel white: by temperature and intensity, or by the two levels.
struct WhiteLevels
{
    qint32 temperature = 255; // 0 all cool, 510 all warm, 255 both at full
    quint32 intensity = 50;   // percent
    quint32 warm = 127;       // 0..255
    quint32 cool = 127;       // 0..255
    quint32 inputType = 0;    // 0: temperature and intensity decide; else warm and cool

    /// Opaque RGB with warm in red and blue and cool in green, 8 bits each: the positions that a
    /// two-channel white fixture takes its channels from.
    VelaColor color() const;
};
