#include "effects/PlanArea.h"

#include "color/Numeric.h"
#include "map/Group.h"
#include "map/MapModel.h"

PlanArea::PlanArea(MapModel* model, quint64 gid)
{
    Group* const group = model != nullptr ? model->group(gid) : nullptr;
    if (group == nullptr) {
        return;
    }
    isFound = true;
    lights = group->lights(&count);
    group->bounds(&minX, &minY, &maxX, &maxY);
}

QString PlanArea::sizeText() const
{
    const auto pixels = [](double low, double high) { return truncI32(high - low) / 12 + 1; };
    return QStringLiteral("%1 x %2").arg(pixels(minX, maxX)).arg(pixels(minY, maxY));
}
