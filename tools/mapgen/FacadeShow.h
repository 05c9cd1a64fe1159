#pragma once

#include "tools/mapgen/ShowEffect.h"

/// The groups of the facade that its show paints.
struct FacadeGroups
{
    quint64 whole = 0;
    QVector<quint64> columns; // left to right
    QVector<quint64> floors;  // from the ground
    QVector<quint64> bays;    // west wing, pavilion, east wing
    QVector<quint64> tiers;   // from the ground
    QVector<quint64> rings;   // from the middle
};

/// Three quarters of a minute from dusk to night and back.
ShowEffect facadeShow(const FacadeGroups& groups);
