#pragma once

#include "tools/mapgen/ShowEffect.h"

#include <QPointF>

/// The groups of the ring that its show paints.
struct RingGroups
{
    quint64 whole = 0;
    quint64 armChase = 0;   // round the ring
    quint64 hoopChase = 0;  // outward
    QVector<quint64> hoops; // from within
    QPointF middle;         // from the top left light, in pixels of twelve map units
};

/// A minute of bursts, spirals and pictures.
ShowEffect ringShow(const RingGroups& groups);
