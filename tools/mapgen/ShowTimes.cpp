#include "tools/mapgen/ShowTimes.h"

#include <QHash>

#include <algorithm>
#include <cstddef>

namespace {

quint32 truncated(double time)
{
    return time >= 0.0 ? static_cast<quint32>(time) : 0;
}

/// The times of one timeline's children, each worked out behind those that it links to.
class Resolver
{
public:
    explicit Resolver(std::vector<ShowEffect>* effects)
        : m_effects(*effects)
        , m_states(effects->size(), State::Open)
    {
        for (std::size_t i = 0; i < m_effects.size(); ++i) {
            m_places.insert(m_effects[i].eid, i);
        }
    }

    bool resolve(std::size_t place)
    {
        if (m_states[place] != State::Open) {
            return m_states[place] == State::Done; // a chain that comes back to itself is Busy
        }
        m_states[place] = State::Busy;
        ShowEffect& effect = m_effects[place];
        double other = 0.0;
        if (effect.startRule == ShowEffect::Linked) {
            if (!timeOf(effect.startLinkEid, effect.startLinkStart, &other)) {
                return false;
            }
            effect.begin = truncated(other + effect.startLinkOffset);
        } else {
            effect.begin = effect.startFixedTime;
        }
        if (effect.endRule == ShowEffect::Linked) {
            if (!timeOf(effect.endLinkEid, effect.endLinkStart, &other)) {
                return false;
            }
            effect.end = truncated(other + effect.endLinkOffset);
        } else if (effect.endRule == ShowEffect::Cycles) {
            effect.end = effect.begin + truncated(static_cast<double>(effect.endCycleCount) *
                                                  static_cast<double>(effect.cycleTime));
        } else {
            effect.end = effect.begin + effect.endFixedTime;
        }
        m_states[place] = State::Done;
        return true;
    }

private:
    enum class State { Open, Busy, Done };

    bool timeOf(quint32 eid, bool start, double* time)
    {
        const auto found = m_places.constFind(eid);
        if (found == m_places.constEnd() || !resolve(found.value())) {
            return false;
        }
        const ShowEffect& other = m_effects[found.value()];
        *time = start ? other.begin : other.end;
        return true;
    }

    std::vector<ShowEffect>& m_effects;
    std::vector<State> m_states;
    QHash<quint32, std::size_t> m_places;
};

} // namespace

bool resolveTimes(ShowEffect* timeline)
{
    for (ShowEffect& child : timeline->children) {
        if (!child.children.empty() && !resolveTimes(&child)) {
            return false;
        }
    }
    Resolver resolver(&timeline->children);
    quint32 last = 0;
    for (std::size_t i = 0; i < timeline->children.size(); ++i) {
        if (!resolver.resolve(i)) {
            return false;
        }
        last = std::max(last, timeline->children[i].end);
    }
    timeline->begin = 0;
    timeline->end = last;
    timeline->cycleTime = last;
    return true;
}
