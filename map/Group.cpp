#include "map/Group.h"

#include "map/ElementText.h"
#include "map/GroupWalk.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "map/MapNode.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

enum Key : int { TypeKey, SelfKey, NameKey, ChildKey, UnknownKey };

constexpr ElementKey<Key> kKeys[] = {
    {"t", TypeKey}, {"type", TypeKey}, {"s", SelfKey},  {"self", SelfKey},
    {"n", NameKey}, {"name", NameKey}, {"c", ChildKey}, {"child", ChildKey},
};

} // namespace

Group::Group(QDomNode* element)
    : Group(MapTree(element).root())
{}

Group::Group(const MapNode& element)
    : m_name(QStringLiteral("New Group"))
{
    if (element.isNull()) {
        return;
    }
    for (MapNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const Key key = findElementKey(kKeys, child.name(), UnknownKey);
        if (key == UnknownKey) {
            continue;
        }
        const QString& text = child.firstValue();
        if (key == TypeKey) {
            m_type = readInt32(text, 0);
        } else if (key == NameKey) {
            m_name = text;
        } else if (key == SelfKey) {
            m_uid = readHex64(text, 0xFFFFFFFFU);
        } else {
            bool ok = false;
            const quint64 uid = readHex64(text, 0, &ok);
            if (ok) {
                m_children.append(uid);
            }
        }
    }
    emit updatedGroup(m_uid);
}

Group::~Group() = default;

QString Group::typeName(int type)
{
    switch (type) {
    case Chasing:
        return QStringLiteral("Chasing");
    case Synchronized:
        return QStringLiteral("Synchronized");
    case Leaf:
        return QStringLiteral("Leaf");
    default:
        return QStringLiteral("Unknown");
    }
}

bool Group::attach(MapModel* model)
{
    if (m_model != nullptr) {
        disconnect(this, &Group::msg, m_model, nullptr);
        disconnect(this, &Group::updatedGroup, m_model, nullptr);
        disconnect(m_model, &MapModel::updatedLight, this, nullptr);
    }
    m_model = model;
    if (model != nullptr) {
        connect(this, &Group::msg, model, &MapModel::msg);
        connect(this, &Group::updatedGroup, model, &MapModel::updatedGroup);
        connect(model, &MapModel::updatedLight, this, &Group::handleUpdatedLight);
    }
    return true;
}

void Group::hold(MapModel* model)
{
    m_model = model;
    m_isHeld = true;
}

Group::Caches& Group::caches()
{
    if (!m_caches) {
        m_caches = std::make_unique<Caches>();
    }
    return *m_caches;
}

QList<quint64> Group::lightUids()
{
    QList<quint64> uids;
    const auto takeLeaf = [&uids](const Group* group) {
        if (group->m_children.isEmpty()) {
            return 0;
        }
        uids.append(group->m_children.first());
        return 1;
    };
    if (m_type >= Leaf) {
        takeLeaf(this);
    } else {
        Budget budget;
        walk(
            budget, [](const Group* group) { return group->m_type < Leaf; }, takeLeaf);
        reportCut(budget);
    }
    return uids;
}

Light* const* Group::lights(int* count)
{
    Caches& cache = caches();
    if (!cache.hasFlatLights) {
        const QList<quint64> uids = lightUids();
        cache.flatLights.reserve(static_cast<std::size_t>(uids.size()));
        for (const quint64 uid : uids) {
            cache.flatLights.push_back(m_model == nullptr ? nullptr : m_model->light(uid));
        }
        cache.hasFlatLights = true;
    }
    if (count != nullptr) {
        *count = static_cast<int>(cache.flatLights.size());
    }
    return cache.flatLights.data();
}

void Group::bounds(double* xMin, double* yMin, double* xMax, double* yMax)
{
    Caches& cache = caches();
    if (!cache.boundsValid) {
        int count = 0;
        Light* const* const all = lights(&count);
        for (int i = 0; i < count; ++i) {
            const LightPosition place = all[i] == nullptr ? LightPosition() : all[i]->position();
            if (all[i] == nullptr || !place.countsForExtents()) {
                continue;
            }
            // Compared as they are, stored truncated.
            cache.xMin = place.x < cache.xMin ? std::trunc(place.x) : cache.xMin;
            cache.xMax = place.x > cache.xMax ? std::trunc(place.x) : cache.xMax;
            cache.yMin = place.y < cache.yMin ? std::trunc(place.y) : cache.yMin;
            cache.yMax = place.y > cache.yMax ? std::trunc(place.y) : cache.yMax;
        }
        cache.boundsValid = true;
    }
    *xMin = cache.xMin;
    *yMin = cache.yMin;
    *xMax = cache.xMax;
    *yMax = cache.yMax;
}

QList<GroupProfile*> Group::profileList()
{
    // One family has a two-channel input, which is a profile of its own.
    constexpr int kThreeWhites = 26;
    constexpr int kTwoWhites = 27;
    Caches& cache = caches();
    if (cache.profileView.isEmpty()) {
        int count = 0;
        Light* const* const all = lights(&count);
        std::vector<int> tallies;
        for (int i = 0; i < count; ++i) {
            const Light* const light = all[i];
            if (light == nullptr) {
                continue;
            }
            GroupProfile own{light->tintweaveProfileId(), quint8(light->forwardFlag() ? 1 : 0)};
            if (own.profileId == kThreeWhites && light->ioModeSet() == 0) {
                own.profileId = kTwoWhites;
            }
            const auto found = std::find_if(cache.profiles.begin(), cache.profiles.end(),
                                            [&own](const std::unique_ptr<GroupProfile>& known) {
                                                return known->profileId == own.profileId &&
                                                       known->forwardFlag == own.forwardFlag;
                                            });
            if (found == cache.profiles.end()) {
                cache.profiles.push_back(std::make_unique<GroupProfile>(own));
                cache.profileView.append(cache.profiles.back().get());
                tallies.push_back(1);
            } else {
                ++tallies[static_cast<std::size_t>(found - cache.profiles.begin())];
            }
        }
        cache.primary = GroupProfile();
        if (!tallies.empty()) {
            const auto most =
                std::max_element(tallies.begin(), tallies.end()); // the first of equals
            cache.primary = *cache.profiles[static_cast<std::size_t>(most - tallies.begin())];
        }
    }
    return cache.profileView;
}

GroupProfile Group::primaryProfile()
{
    if (caches().primary.profileId == -1) {
        profileList();
    }
    return caches().primary;
}

void Group::handleUpdatedLight(qulonglong uid)
{
    const Light* const light = uid == m_uid && m_model != nullptr ? m_model->light(m_uid) : nullptr;
    if (light == nullptr) {
        return;
    }
    m_name = light->name();
    emit updatedGroup(m_uid);
    if (m_isHeld) {
        emit m_model->updatedGroup(m_uid);
    }
}
