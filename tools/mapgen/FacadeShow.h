#pragma once

#include "tools/mapgen/ShowEffect.h"

/// The groups of the facade that its shows paint.
struct FacadeGroups
{
    quint64 whole = 0;
    QVector<quint64> columns;   // left to right
    QVector<quint64> floors;    // from the ground
    QVector<quint64> bays;      // west wing, pavilion, east wing
    QVector<quint64> tiers;     // from the ground
    QVector<quint64> rings;     // from the middle
    quint64 columnChase = 0;    // left to right
    quint64 floorChase = 0;     // bottom to top
    quint64 bayChase = 0;       // columns within bays
    quint64 ringChase = 0;      // outward
    QVector<quint64> bayChases; // the columns of one bay
};

/// Three quarters of a minute from dusk to night and back.
ShowEffect facadeShow(const FacadeGroups& groups);
