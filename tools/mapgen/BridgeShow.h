#pragma once

#include "tools/mapgen/ShowEffect.h"

/// The groups of the bridge that its show paints.
struct BridgeGroups
{
    quint64 whole = 0;
    QVector<quint64> arches;
    quint64 allArches = 0;
    QVector<quint64> piers;
    quint64 allPiers = 0;
    QVector<quint64> towers;
    QVector<quint64> towerLevels; // of both towers, from below
    quint64 allTowers = 0;
    quint64 crowns = 0;
    quint64 feet = 0;
    quint64 floods = 0;
    QVector<quint64> roadSteps;
    quint64 road = 0;
    QVector<quint64> lamps;
    quint64 allLamps = 0;
    QVector<quint64> riverSteps;
    quint64 river = 0;
};

/// The blue hour on the bridge, a procession over it, and the night.
ShowEffect bridgeShow(const BridgeGroups& groups);
