#include "map/Controller.h"
#include "map/Group.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "map/MapReader.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

void logRefusal(const QString& path, const QString& reason)
{
    qDebug("Map file %s refused: %s", qPrintable(path), qPrintable(reason));
}

} // namespace

bool MapModel::load(const QString& path)
{
    m_path = path;
    m_bounds = QRect(0, 0, 0, 0);
    emit msg(QStringLiteral("Opening map file: ") + path);
    QFile file(path);
    // A pipe would never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        logRefusal(path, QStringLiteral("it can't be opened"));
        return false;
    }
    MapReader reader(m_talvis.get());
    if (!reader.read(file.readAll())) {
        logRefusal(path, reader.reason());
        return false;
    }
    emit msg(QStringLiteral("Doc has %1 children.").arg(reader.nodeCount()));
    if (!reader.isMap()) {
        logRefusal(path, QStringLiteral("it isn't one element \"map\""));
        return false;
    }

    const int total = reader.childCount();
    const int step = std::max(total / 100, 1);
    emit msg(QStringLiteral("Map has %1 children.").arg(total));
    emit progressStarted(0, total, QStringLiteral("Loading Map"));
    auto item = reader.items().begin();
    for (int i = 0; i < total; ++i) {
        for (; item != reader.items().end() && item->index == i; ++item) {
            enter(&*item);
        }
        if (i % step == 0) {
            emit progressUpdated(i);
        }
    }
    emit progressUpdated(total);
    finishLoad();
    return true;
}

/// Takes over what one child of the root came to.
void MapModel::enter(MapItem* item)
{
    switch (item->kind) {
    case MapItem::Kind::Version:
        m_version = item->text;
        break;
    case MapItem::Kind::ImageFile:
        m_imageFile = item->text;
        break;
    case MapItem::Kind::PostSync:
        m_postSync = item->text.toInt() != 0;
        break;
    case MapItem::Kind::Controller:
        emit msg(item->controllerType == Controller::IpController
                     ? QStringLiteral("Loading a Talvis IP Controller.")
                     : QStringLiteral("Loading a Talvis Broadcast Controller."));
        if (addController(static_cast<Controller*>(item->object.get()))) {
            item->object.release(); // NOLINT(bugprone-unused-return-value): the table owns it
        } else {
            m_refused.push_back(std::move(item->object));
        }
        break;
    case MapItem::Kind::Light:
        if (addLight(static_cast<Light*>(item->object.get()))) {
            item->object.release(); // NOLINT(bugprone-unused-return-value): the table owns it
        } else {
            item->object.reset();
        }
        break;
    case MapItem::Kind::Group:
        if (addGroup(static_cast<Group*>(item->object.get()))) {
            item->object.release(); // NOLINT(bugprone-unused-return-value): the table owns it
        } else {
            m_refused.push_back(std::move(item->object));
        }
        break;
    }
}

void MapModel::finishLoad()
{
    m_frameControllers.clear();
    for (Controller* const controller : qAsConst(m_controllers)) {
        m_frameControllers.push_back(controller);
    }
    if (!m_imageFile.isEmpty()) {
        emit newImageFile();
    }
    const QVector<quint64> controllers = std::exchange(m_newControllers, {});
    for (const quint64 uid : controllers) {
        emit newController(uid);
    }
    const QVector<quint64> lights = std::exchange(m_newLights, {});
    for (const quint64 uid : lights) {
        emit newLight(uid);
    }
    const QVector<quint64> groups = std::exchange(m_newGroups, {});
    for (const quint64 uid : groups) {
        emit newGroup(uid);
    }
    for (Controller* const controller : m_frameControllers) {
        controller->computePortSizes();
    }
}
