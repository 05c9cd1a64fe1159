#include "map/Controller.h"
#include "map/Group.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "map/XmlDepth.h"

#include <QDebug>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// The key of an element, in its long or its short form.
bool isNamed(const QString& name, const char* longForm, QChar shortForm)
{
    return (name.size() == 1 && name.at(0) == shortForm) || name == QLatin1String(longForm);
}

void logRefusal(const QString& path, const QString& reason)
{
    qDebug("Map file %s refused: %s", qPrintable(path), qPrintable(reason));
}

/// Null with a line in the debug log where the file isn't one XML document that can be held.
QDomDocument parseMap(const QString& path)
{
    QDomDocument document(QStringLiteral("mydocument"));
    QFile file(path);
    // A pipe would never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        logRefusal(path, QStringLiteral("it can't be opened"));
        return {};
    }
    const QByteArray text = file.readAll();
    if (isXmlDeeperThan(text)) {
        logRefusal(path, QStringLiteral("its elements nest deeper than %1").arg(kMaxXmlDepth));
        return {};
    }
    QString error;
    int line = 0;
    int column = 0;
    if (!document.setContent(text, &error, &line, &column)) {
        logRefusal(path,
                   QStringLiteral("%1 (line %2, column %3)").arg(error).arg(line).arg(column));
        return {};
    }
    return document;
}

} // namespace

bool MapModel::load(const QString& path)
{
    m_path = path;
    m_bounds = QRect(0, 0, 0, 0);
    emit msg(QStringLiteral("Opening map file: ") + path);
    const QDomDocument document = parseMap(path);
    if (document.isNull()) {
        return false;
    }
    const int nodes = document.childNodes().count();
    emit msg(QStringLiteral("Doc has %1 children.").arg(nodes));
    const QDomElement root = document.firstChild().toElement();
    if (nodes != 1 || root.tagName() != QLatin1String("map")) {
        logRefusal(path, QStringLiteral("it isn't one element \"map\""));
        return false;
    }

    const int total = root.childNodes().count();
    const int step = std::max(total / 100, 1);
    emit msg(QStringLiteral("Map has %1 children.").arg(total));
    emit progressStarted(0, total, QStringLiteral("Loading Map"));
    int i = 0;
    for (QDomNode child = root.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isElement()) {
            loadElement(child.toElement());
        }
        if (i % step == 0) {
            emit progressUpdated(i);
        }
        ++i;
    }
    emit progressUpdated(total);

    m_frameControllers.clear();
    std::copy(m_controllers.cbegin(), m_controllers.cend(), std::back_inserter(m_frameControllers));
    if (!m_imageFile.isEmpty()) {
        emit newImageFile();
    }
    for (const quint64 uid : m_newControllers) {
        emit newController(uid);
    }
    for (const quint64 uid : m_newLights) {
        emit newLight(uid);
    }
    for (const quint64 uid : m_newGroups) {
        emit newGroup(uid);
    }
    for (Controller* const controller : m_frameControllers) {
        controller->computePortSizes();
    }
    m_newControllers = {};
    m_newLights = {};
    m_newGroups = {};
    return true;
}

/// One child of the root. Elements of other names are not ours.
void MapModel::loadElement(const QDomElement& element)
{
    const QString name = element.tagName();
    if (isNamed(name, "light", QLatin1Char('l'))) {
        loadLight(element);
    } else if (isNamed(name, "group", QLatin1Char('g'))) {
        loadGroup(element);
    } else if (isNamed(name, "controller", QLatin1Char('c'))) {
        loadController(element);
    } else if (name == QLatin1String("version")) {
        m_version = element.text();
    } else if (name == QLatin1String("imagefile")) {
        m_imageFile = element.text();
    } else if (name == QLatin1String("postsync")) {
        m_postSync = element.text().toInt() != 0;
    }
}

/// Builds the controller once for each child that names a type; the second of them finds the uid
/// taken.
void MapModel::loadController(QDomElement element)
{
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (!isNamed(child.tagName(), "type", QLatin1Char('t'))) {
            continue;
        }
        const int type = child.text().toInt();
        if (type == Controller::IpController) {
            emit msg(QStringLiteral("Loading a Talvis IP Controller."));
        } else if (type == Controller::BroadcastController) {
            emit msg(QStringLiteral("Loading a Talvis Broadcast Controller."));
        } else {
            continue;
        }
        auto controller = std::make_unique<Controller>(type, m_talvis.get(), &element);
        if (addController(controller.get())) {
            controller.release(); // NOLINT(bugprone-unused-return-value): the table owns it
        } else {
            m_refused.push_back(std::move(controller));
        }
    }
}

void MapModel::loadLight(QDomElement element)
{
    auto light = std::make_unique<Light>(&element);
    if (addLight(light.get())) {
        light.release(); // NOLINT(bugprone-unused-return-value): the table owns it
    }
}

void MapModel::loadGroup(QDomElement element)
{
    auto group = std::make_unique<Group>(&element);
    if (addGroup(group.get())) {
        group.release(); // NOLINT(bugprone-unused-return-value): the table owns it
    } else {
        m_refused.push_back(std::move(group));
    }
}
