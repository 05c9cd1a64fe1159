#include "map/Group.h"
#include "map/GroupWalk.h"
#include "map/Light.h"
#include "map/MapModel.h"

#include <QDebug>

// A layout is made of two walks. The steps of a chase are the groups that one comes to below it
// through chases alone: nested chases flatten. The lights of a step are the leaves below it, in
// order, through groups of both kinds. No layout of a group in between is needed, nor kept.

Light* Group::leafLight() const
{
    return m_model == nullptr ? nullptr : m_model->light(m_uid);
}

void Group::reportCut(const Budget& budget)
{
    if (budget.isSpent && !m_hasLoggedLimit) {
        m_hasLoggedLimit = true;
        qDebug("%s: group %llx has too many entries and is cut", qPrintable(m_model->path()),
               m_uid);
    }
}

int Group::elementCount()
{
    if (m_type != Chasing) {
        return 1;
    }
    if (m_model == nullptr) {
        return -1;
    }
    Budget budget;
    int count = 0;
    walk(
        budget, [](const Group* group) { return group->m_type == Chasing; },
        [&count](const Group* /*group*/) {
            ++count;
            return 1;
        });
    reportCut(budget);
    return count;
}

void Group::resolve()
{
    Caches& cache = caches();
    if (cache.hasSteps) {
        return;
    }
    cache.hasSteps = true;
    if (m_type != Chasing) {
        return;
    }
    Budget budget;
    walk(
        budget, [](const Group* group) { return group->m_type == Chasing; },
        [&cache](Group* group) {
            cache.steps.push_back(group);
            return 1;
        });
    reportCut(budget);
}

/// Appends the lights of this group as one step, a null one for each leaf without its light.
void Group::collectLights(Budget& budget, std::vector<Light*>* lights)
{
    const auto takeLeaf = [lights](const Group* group) {
        if (group->m_type != Leaf) {
            return 0;
        }
        lights->push_back(group->leafLight());
        return 1;
    };
    if (m_type == Chasing || m_type == Synchronized) {
        walk(
            budget,
            [](const Group* group) {
                return group->m_type == Chasing || group->m_type == Synchronized;
            },
            takeLeaf);
    } else if (budget.entries > 0) {
        budget.entries -= takeLeaf(this);
    } else {
        budget.isSpent = true;
    }
}

void Group::buildLayout()
{
    resolve();
    Caches& cache = caches();
    Budget budget;
    const auto addRow = [&](Group* step) {
        const std::size_t before = cache.rowLights.size();
        step->collectLights(budget, &cache.rowLights);
        cache.rowCounts.push_back(static_cast<int>(cache.rowLights.size() - before));
    };
    if (m_type == Chasing) {
        m_isInWalk = true; // a step that holds this chase finds nothing in it
        for (Group* const step : cache.steps) {
            addRow(step);
        }
        m_isInWalk = false;
    } else if (m_type == Synchronized || m_type == Leaf) {
        addRow(this);
    }
    reportCut(budget);

    Light** row = cache.rowLights.data();
    for (const int count : cache.rowCounts) {
        cache.rows.push_back(count == 0 ? nullptr : row);
        row += count;
    }
    cache.layout.rows = static_cast<int>(cache.rowCounts.size());
    cache.layout.total = static_cast<int>(cache.rowLights.size());
    cache.layout.counts = cache.rowCounts.empty() ? nullptr : cache.rowCounts.data();
    cache.layout.lights = cache.rows.empty() ? nullptr : cache.rows.data();
}

const GroupLayout* Group::layout()
{
    Caches& cache = caches();
    if (!cache.hasLayout) {
        cache.hasLayout = true;
        buildLayout();
    }
    return &cache.layout;
}
