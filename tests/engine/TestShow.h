#pragma once

#include "color/VelaColor.h"
#include "engine/Effect.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "tests/output/SilentSocket.h"

#include <QColor>
#include <QDomDocument>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QTextStream>
#include <QVector>
#include <QtTest>

#include <functional>
#include <memory>

namespace QTest {
template <>
inline char* toString(const VelaColor& color)
{
    return qstrdup(qPrintable(color.toString()));
}
} // namespace QTest

namespace TestShow {

/// The moment at which the tests' timelines begin.
constexpr qint64 kStartMs = 1600000000000;

/// A group's element in a map file.
inline QString group(quint64 uid, int type, const QVector<quint64>& children)
{
    QString text = QStringLiteral("<group><type>%1</type><self>%2</self>")
                       .arg(type)
                       .arg(QString::number(uid, 16));
    for (const quint64 child : children) {
        text += QStringLiteral("<child>%1</child>").arg(QString::number(child, 16));
    }
    return text + QStringLiteral("</group>");
}

/// A map of lights 1 to `lights`, a leaf of the same uid for each, the controller 0xC0 that drives
/// them all, and the groups given. Nothing is served: a frame's end only resets the lights.
class TestMap
{
public:
    explicit TestMap(int lights, const QString& groups = QString())
        : m_model(std::make_unique<MapModel>(std::make_unique<SilentSocket>()))
    {
        QString text = QStringLiteral("<map><controller><type>2</type><self>C0</self>");
        for (int uid = 1; uid <= lights; ++uid) {
            text += QStringLiteral("<light>%1</light>").arg(QString::number(uid, 16));
        }
        text += QStringLiteral("</controller>");
        for (int uid = 1; uid <= lights; ++uid) {
            text += QStringLiteral("<light><self>%1</self><controller>C0</controller></light>")
                        .arg(QString::number(uid, 16));
            text += group(static_cast<quint64>(uid), 3, {static_cast<quint64>(uid)});
        }
        text += groups + QStringLiteral("</map>");
        QFile file(m_dir.filePath(QStringLiteral("test.map")));
        const bool written =
            file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) == text.toUtf8().size();
        file.close();
        m_loaded = written && m_model->load(file.fileName());
        m_model->setSimulateOnly(true);
        endFrame();
    }
    bool isLoaded() const { return m_loaded; }
    MapModel* model() { return m_model.get(); }
    Light* light(quint64 uid) { return m_model->light(uid); }
    VelaColor mix(quint64 uid) { return light(uid)->mixColorRef(); }
    QColor sim(quint64 uid) { return light(uid)->simColor(); }
    void endFrame() { m_model->updateLights(); }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<MapModel> m_model;
    bool m_loaded = false;
};

/// An effect that notes what it is told.
class ProbeEffect : public Effect
{
public:
    struct Frame
    {
        qint64 elapsed;
        double transparency;
        quint32 priority;
        uint frame;
    };

    explicit ProbeEffect(MapModel* model = nullptr, QDomElement* element = nullptr)
        : Effect(model, kNoGid)
    {
        ProbeEffect::fromXml(element);
    }
    ProbeEffect(quint32 from, quint32 to)
        : ProbeEffect()
    {
        setBegin(from);
        setEnd(to);
    }
    QDomElement toXml(QDomDocument doc) const override
    {
        QDomElement element = doc.createElement(QStringLiteral("effect"));
        writeBase(doc, element);
        return element;
    }
    int typeId() const override { return 99; }
    quint32 cycleTime() const override { return cycle; }
    bool compile() override
    {
        ++compiles;
        nameAtCompile = name();
        gidAtCompile = gid();
        setCompiled(true);
        return true;
    }
    void updateLights() override
    {
        frames.append({elapsed(), transparency(), priority(), frame()});
        if (onFrame) {
            onFrame();
        }
    }
    void updateEndTime() override { ++endUpdates; }
    void fromXml(QDomElement* element) override
    {
        if (element != nullptr) {
            readBase(*element);
        }
    }
    void changeCycle(quint32 ms)
    {
        cycle = ms;
        applyTimeRule();
    }

    quint32 cycle = 1000;
    int compiles = 0;
    int endUpdates = 0;
    QString nameAtCompile;
    quint64 gidAtCompile = 0;
    QVector<Frame> frames;
    std::function<void()> onFrame;
};

/// The effect's text in a show file.
inline QString textOf(const Effect& effect)
{
    QString text;
    QTextStream out(&text);
    effect.save(out);
    out.flush();
    return text;
}

/// The lines of the base keys of an effect without a place of its own.
inline QString baseText(const QString& type, const QString& name, quint64 gid = Effect::kNoGid)
{
    return QStringLiteral("<type>%1</type>\n"
                          "<name>%2</name>\n"
                          "<eid>4294967295</eid>\n"
                          "<gid>%3</gid>\n"
                          "<transparency>0</transparency>\n"
                          "<priority>0</priority>\n"
                          "<begin>0</begin>\n"
                          "<end>0</end>\n"
                          "<fadein>0</fadein>\n"
                          "<fadeout>0</fadeout>\n"
                          "<starttype>0</starttype>\n"
                          "<startfixedtime>0</startfixedtime>\n"
                          "<startlinkeid>4294967295</startlinkeid>\n"
                          "<startlinkstart>1</startlinkstart>\n"
                          "<startlinkoffset>0</startlinkoffset>\n"
                          "<endtype>0</endtype>\n"
                          "<endfixedtime>0</endfixedtime>\n"
                          "<endlinkeid>4294967295</endlinkeid>\n"
                          "<endlinkstart>1</endlinkstart>\n"
                          "<endlinkoffset>0</endlinkoffset>\n"
                          "<endcyclecount>1</endcyclecount>\n")
        .arg(type, name)
        .arg(gid);
}

/// An "effect" element that holds `keys`.
inline QDomElement elementOf(const QString& keys)
{
    QDomDocument doc;
    doc.setContent(QStringLiteral("<effect>") + keys + QStringLiteral("</effect>"));
    return doc.documentElement();
}

} // namespace TestShow
