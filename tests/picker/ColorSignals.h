#pragma once

#include "color/VelaColor.h"

#include <QSignalSpy>

/// The colour that came with the last signal.
inline VelaColor lastColor(const QSignalSpy& spy)
{
    return spy.last().first().value<VelaColor>();
}
