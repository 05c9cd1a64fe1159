#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QStringList>
#include <QVector>

/// The emitters of one fixture profile in one primary set. Records live for the whole process.
struct ColorProfile
{
    // Tristimulus values (CIE 1931) of each channel at full drive, on an arbitrary common scale.
    QVector<double> X;
    QVector<double> Y;
    QVector<double> Z;
    /// xy of the fixture's pure red, green and blue, from its first three channels.
    QVector<QPointF> gamutPoints;
    QPolygonF gamut;
    int profileId = 0;
    /// Display names, one a channel; a name may be missing.
    QStringList channelNames;
};
