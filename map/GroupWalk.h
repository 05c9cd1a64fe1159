#pragma once

#include "map/Group.h"
#include "map/MapModel.h"

#include <limits>
#include <memory>
#include <utility>
#include <vector>

/// What a group works out on first use and keeps.
struct Group::Caches
{
    bool hasSteps = false;
    std::vector<Group*> steps; // of a chase; not owned

    bool hasLayout = false;
    GroupLayout layout; // points into the three below
    std::vector<int> rowCounts;
    std::vector<Light**> rows;
    std::vector<Light*> rowLights; // not owned

    bool hasFlatLights = false;
    std::vector<Light*> flatLights; // not owned

    bool boundsValid = false;
    double xMin = std::numeric_limits<int>::max();
    double yMin = std::numeric_limits<int>::max();
    double xMax = -std::numeric_limits<int>::max();
    double yMax = -std::numeric_limits<int>::max();

    std::vector<std::unique_ptr<GroupProfile>> profiles;
    QList<GroupProfile*> profileView;
    GroupProfile primary;
};

/// What is left of the work that one question may make.
struct Group::Budget
{
    int entries = kMaxEntries;
    int visits = 4 * kMaxEntries; // for groups that hold each other over and over, but no light
    bool isSpent = false;
};

/// Visits the groups below this one in order, depth first. Goes below a group where
/// `descends(group)`, else calls `takes(group)`, which answers how many entries it took. Missing
/// groups, and those that hold the very group being visited, are passed over.
template <typename Descends, typename Takes>
void Group::walk(Budget& budget, Descends descends, Takes takes)
{
    if (m_model == nullptr) {
        return;
    }
    std::vector<std::pair<Group*, int>> path; // group and its next child
    const auto enter = [&path](Group* group) {
        group->m_isInWalk = true;
        path.emplace_back(group, 0);
    };
    enter(this);
    while (!path.empty()) {
        Group* const group = path.back().first;
        const int next = path.back().second++;
        if (budget.isSpent || next >= group->m_children.size()) {
            group->m_isInWalk = false;
            path.pop_back();
            continue;
        }
        budget.isSpent = --budget.visits <= 0;
        Group* const child = m_model->group(group->m_children.at(next));
        if (child == nullptr || child->m_isInWalk) {
            continue;
        }
        if (descends(child)) {
            enter(child);
        } else if (budget.entries > 0) {
            budget.entries -= takes(child);
        } else {
            budget.isSpent = true;
        }
    }
}
