#include "map/MapModel.h"

#include "color/Numeric.h"
#include "map/Controller.h"
#include "map/Group.h"
#include "map/Light.h"
#include "output/Talvis.h"
#include "output/TalvisSocket.h"

#include <QTime>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int kReserved = 15000;

} // namespace

MapModel::MapModel(QObject* parent)
    : QObject(parent)
{
    {
        const Talvis first; // says its own five syncs, which controllers expect
    }
    start();
    m_talvis = std::make_unique<Talvis>();
}

MapModel::MapModel(std::unique_ptr<TalvisSocket> socket, QObject* parent)
    : QObject(parent)
{
    TalvisSocket* const kept = socket.release(); // owned by one Talvis after the other
    {
        const Talvis first(kept, nullptr);
        kept->setParent(nullptr);
    }
    start();
    m_talvis = std::make_unique<Talvis>(kept, nullptr);
}

MapModel::~MapModel()
{
    qDeleteAll(m_lights);
    qDeleteAll(m_groups);
    qDeleteAll(m_controllers);
}

void MapModel::start()
{
    m_lights.reserve(kReserved);
    m_groups.reserve(kReserved);
    m_controllers.reserve(kReserved);
    std::srand(static_cast<unsigned>(QTime::currentTime().msec()));
    connect(this, &MapModel::updatedLight, this, [this](qulonglong uid) {
        Group* const leaf = group(uid);
        if (leaf != nullptr) {
            leaf->handleUpdatedLight(uid);
        }
    });
}

Light* MapModel::light(quint64 uid) const
{
    return m_lights.value(uid);
}

Group* MapModel::group(quint64 uid) const
{
    return m_groups.value(uid);
}

Controller* MapModel::controller(quint64 uid) const
{
    return m_controllers.value(uid);
}

QHash<quint64, Light*> MapModel::lightsHash() const
{
    return m_lights;
}

QHash<quint64, Group*> MapModel::groupsHash() const
{
    return m_groups;
}

QHash<quint64, Controller*> MapModel::controllersHash() const
{
    return m_controllers;
}

QList<quint64> MapModel::lightUids() const
{
    return m_lights.keys();
}

QList<quint64> MapModel::groupUids() const
{
    return m_groups.keys();
}

QList<quint64> MapModel::controllerUids() const
{
    return m_controllers.keys();
}

bool MapModel::clear()
{
    const int total = m_lights.size() + m_groups.size() + m_controllers.size();
    const int step = std::max(total / 100, 1);
    int count = 0;
    const auto advance = [&] {
        ++count;
        if (count % step == 0) {
            emit progressUpdated(count);
        }
    };
    emit progressStarted(0, total, QStringLiteral("Clearing Map..."));
    m_frameLights.clear();
    m_frameControllers.clear();
    const QList<quint64> lights = m_lights.keys();
    for (const quint64 uid : lights) {
        delete m_lights.take(uid);
        emit deletedLight(uid);
        advance();
    }
    const QList<quint64> groups = m_groups.keys();
    for (const quint64 uid : groups) {
        delete m_groups.take(uid);
        emit deletedGroup(uid);
        advance();
    }
    const QList<quint64> controllers = m_controllers.keys();
    for (const quint64 uid : controllers) {
        delete m_controllers.take(uid);
        advance();
    }
    m_refused.clear();
    m_imageFile.clear();
    emit progressUpdated(total);
    emit clearedMap();
    return true;
}

void MapModel::updateLights()
{
    if (m_simulateOnly) {
        for (Light* const light : m_frameLights) {
            light->reset();
        }
        return;
    }
    for (Controller* const controller : m_frameControllers) {
        controller->updateLights();
    }
    if (m_syncArmed && m_postSync && !m_frameControllers.empty()) {
        m_talvis->sendSync();
    }
}

bool MapModel::addController(Controller* controller)
{
    const quint64 uid = controller->uid();
    if (m_controllers.contains(uid)) {
        emit msg(QStringLiteral("loadController: uid already exists"));
        return false;
    }
    controller->attach(this);
    m_controllers.insert(uid, controller);
    m_newControllers.append(uid);
    return true;
}

bool MapModel::addLight(Light* light)
{
    const quint64 uid = light->uid();
    if (m_lights.contains(uid)) {
        emit msg(QStringLiteral("loadLight: uid already exists"));
        return false;
    }
    light->hold(this);
    m_lights.insert(uid, light);
    m_frameLights.push_back(light);
    m_newLights.append(uid);
    const LightPosition place = light->position();
    if (place.countsForExtents()) {
        if (place.x > m_bounds.width()) {
            m_bounds.setWidth(truncI32(place.x));
        }
        if (place.y > m_bounds.height()) {
            m_bounds.setHeight(truncI32(place.y));
        }
    }
    return true;
}

bool MapModel::addGroup(Group* group)
{
    const quint64 uid = group->uid();
    if (m_groups.contains(uid)) {
        emit msg(QStringLiteral("loadGroup: uid already exists"));
        return false;
    }
    group->hold(this);
    m_groups.insert(uid, group);
    m_newGroups.append(uid);
    return true;
}
