#pragma once

#include <QString>
#include <QtGlobal>

class Light;
class MapModel;

/// The lights of a group and the rectangle of the plan that they span.
struct PlanArea
{
    static constexpr double kUnitsPerPixel = 12.0;

    bool isFound = false;           // whether the map has the group
    Light* const* lights = nullptr; // owned by the group; entries may be null
    int count = 0;
    // Map units; the minimum above the maximum without lights.
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;

    PlanArea(MapModel* model, quint64 gid);

    /// "width x height" in pixels.
    QString sizeText() const;
};
