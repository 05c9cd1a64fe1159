#pragma once

#include <QDomDocument>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <functional>

/// What the tests read out of a map file, by the rules of the file and with no code of its writer.
struct MapText
{
    struct Light
    {
        quint64 controller = 0;
        int port = 0;
        int channel = 0;
        quint64 serial = 0;
        double x = 0.0;
        double y = 0.0;
        int ioMode = 0;
        QHash<QString, int> properties;
    };
    struct Controller
    {
        int type = 0;
        int version = 0;
        bool missing = false;
        QString address;
        QVector<int> ports;
        QVector<quint64> lights;
    };
    struct Group
    {
        int type = 0;
        QVector<quint64> children;
    };

    bool read = false;
    QString imageFile;
    QHash<quint64, Light> lights;
    QHash<quint64, Controller> controllers;
    QHash<quint64, Group> groups;
    int elements = 0; // children of the root

    explicit MapText(const QByteArray& text)
    {
        QDomDocument document;
        if (!document.setContent(text) || document.childNodes().count() != 1 ||
            document.documentElement().tagName() != QLatin1String("map")) {
            return;
        }
        read = true;
        const QDomElement map = document.documentElement();
        for (QDomElement e = map.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
            ++elements;
            const QString kind = e.tagName();
            if (kind == QLatin1String("imagefile")) {
                imageFile = e.text();
            } else if (kind == QLatin1String("controller") || kind == QLatin1String("c")) {
                readController(e);
            } else if (kind == QLatin1String("light") || kind == QLatin1String("l")) {
                readLight(e);
            } else if (kind == QLatin1String("group") || kind == QLatin1String("g")) {
                readGroup(e);
            }
        }
    }

    /// Bytes on the data line, from the properties alone.
    static int footprint(const Light& light)
    {
        const int chemistry = light.properties.value(QStringLiteral("LED_CHEMISTRY"));
        const int mode = light.properties.value(QStringLiteral("COLOR_CONTROL_MODE")) +
                         light.properties.value(QStringLiteral("PLAINWEAVE_MODE"));
        int channels = 3;
        if (QSet<int>({1, 2, 13, 15}).contains(chemistry)) {
            channels = 4;
        } else if (chemistry == 3 || chemistry == 4) {
            channels = 5;
        } else if (chemistry == 5) {
            channels = 2;
        } else if (chemistry >= 7 && chemistry <= 11) {
            channels = 1;
        }
        if (mode == 1 || mode == 2 || mode == 4 || mode == 5) {
            channels = 3;
        }
        if (light.properties.value(QStringLiteral("CREST_INPUT_MODE"), 1) == 0) {
            channels = 2;
        }
        if (mode == 6) {
            channels = 1;
        }
        const int width =
            light.properties.value(QStringLiteral("INPUT_RESOLUTION"), 1) == 0 ? 2 : 1;
        const int halves = light.properties.value(QStringLiteral("HALF_FULL_MODE")) != 0 ? 2 : 1;
        return channels * width * halves;
    }

    /// The lights below a group, in order.
    QVector<quint64> lightsOf(quint64 group) const
    {
        const Group found = groups.value(group);
        if (found.type == 3) {
            return {group};
        }
        QVector<quint64> all;
        for (const quint64 child : found.children) {
            all += lightsOf(child);
        }
        return all;
    }

    /// Everything that no map of ours may get wrong, a line each.
    QStringList faults(int mostFrameBytes) const
    {
        QStringList list;
        QHash<quint64, int> timesDriven;
        for (auto it = controllers.cbegin(); it != controllers.cend(); ++it) {
            for (int i = 0; i < it->ports.size(); ++i) {
                if (it->ports.at(i) != i + 1) {
                    list << QStringLiteral("controller %1: port %2 is number %3")
                                .arg(it.key())
                                .arg(i)
                                .arg(it->ports.at(i));
                }
            }
            QHash<int, QVector<QPair<int, int>>> spans; // by port
            for (const quint64 uid : it->lights) {
                ++timesDriven[uid];
                const auto light = lights.constFind(uid);
                if (light == lights.constEnd()) {
                    list << QStringLiteral("controller %1: no light %2").arg(it.key()).arg(uid);
                    continue;
                }
                if (light->controller != it.key()) {
                    list << QStringLiteral("light %1 names another controller").arg(uid);
                }
                if (light->port < 0 || light->port >= it->ports.size()) {
                    list << QStringLiteral("light %1: no port %2").arg(uid).arg(light->port);
                }
                spans[light->port].append({light->channel, light->channel + footprint(*light)});
            }
            for (QVector<QPair<int, int>>& port : spans) {
                std::sort(port.begin(), port.end());
                for (int i = 0; i < port.size(); ++i) {
                    if (port.at(i).first < 0 || port.at(i).second > mostFrameBytes) {
                        list << QStringLiteral("controller %1: a light ends at %2")
                                    .arg(it.key())
                                    .arg(port.at(i).second);
                    }
                    if (i > 0 && port.at(i).first < port.at(i - 1).second) {
                        list << QStringLiteral("controller %1: lights overlap at %2")
                                    .arg(it.key())
                                    .arg(port.at(i).first);
                    }
                }
            }
        }
        QSet<quint64> serials;
        for (auto it = lights.cbegin(); it != lights.cend(); ++it) {
            if (timesDriven.value(it.key()) != 1) {
                list << QStringLiteral("light %1 is driven %2 times")
                            .arg(it.key())
                            .arg(timesDriven.value(it.key()));
            }
            if (groups.value(it.key()).type != 3) {
                list << QStringLiteral("light %1 has no leaf").arg(it.key());
            }
            serials.insert(it->serial);
        }
        if (serials.size() != lights.size()) {
            list << QStringLiteral("serial numbers are not unique");
        }
        for (auto it = groups.cbegin(); it != groups.cend(); ++it) {
            if (it->children.isEmpty()) {
                list << QStringLiteral("group %1 is empty").arg(it.key());
            }
            for (const quint64 child : it->children) {
                const bool known = it->type == 3 ? lights.contains(child) : groups.contains(child);
                if (!known || (it->type == 3 && child != it.key())) {
                    list << QStringLiteral("group %1: child %2").arg(it.key()).arg(child);
                }
            }
        }
        return list;
    }

private:
    static quint64 hex(const QDomElement& e) { return e.text().toULongLong(nullptr, 16); }
    static bool is(const QDomElement& e, const char* longKey, const char* shortKey)
    {
        return e.tagName() == QLatin1String(longKey) || e.tagName() == QLatin1String(shortKey);
    }

    void readController(const QDomElement& element)
    {
        Controller controller;
        quint64 self = 0;
        for (QDomElement e = element.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
            if (is(e, "type", "t")) {
                controller.type = e.text().toInt();
            } else if (is(e, "self", "s")) {
                self = hex(e);
            } else if (is(e, "ipaddress", "ip")) {
                controller.address = e.text();
            } else if (is(e, "version", "v")) {
                controller.version = e.text().toInt();
            } else if (is(e, "missing", "m")) {
                controller.missing = e.text().toInt() != 0;
            } else if (is(e, "light", "l")) {
                controller.lights.append(hex(e));
            } else if (is(e, "portlist", "pl")) {
                for (QDomElement port = e.firstChildElement(); !port.isNull();
                     port = port.nextSiblingElement()) {
                    controller.ports.append(port.firstChildElement().text().toInt());
                }
            }
        }
        controllers.insert(self, controller);
    }

    void readLight(const QDomElement& element)
    {
        Light light;
        quint64 self = 0;
        for (QDomElement e = element.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
            if (is(e, "self", "s")) {
                self = hex(e);
            } else if (is(e, "controller", "c")) {
                light.controller = hex(e);
            } else if (is(e, "pn", "pn")) {
                light.port = e.text().toInt();
            } else if (is(e, "channel", "ch")) {
                light.channel = e.text().toInt();
            } else if (is(e, "sn", "sn")) {
                light.serial = e.text().toULongLong();
            } else if (is(e, "x", "x")) {
                light.x = e.text().toDouble();
            } else if (is(e, "y", "y")) {
                light.y = e.text().toDouble();
            } else if (is(e, "tintweaveiomode", "tintweaveiomode")) {
                light.ioMode = e.text().toInt();
            } else if (is(e, "properties", "properties")) {
                for (QDomElement p = e.firstChildElement(); !p.isNull();
                     p = p.nextSiblingElement()) {
                    light.properties.insert(p.tagName(), p.text().toInt());
                }
            }
        }
        lights.insert(self, light);
    }

    void readGroup(const QDomElement& element)
    {
        Group group;
        quint64 self = 0;
        for (QDomElement e = element.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
            if (is(e, "type", "t")) {
                group.type = e.text().toInt();
            } else if (is(e, "self", "s")) {
                self = hex(e);
            } else if (is(e, "child", "c")) {
                group.children.append(hex(e));
            }
        }
        groups.insert(self, group);
    }
};
