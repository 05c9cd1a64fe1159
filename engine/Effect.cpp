#include "engine/Effect.h"

#include "engine/EffectXml.h"

#include <QTextStream>

Effect::Effect(MapModel* model, quint64 gid)
    : m_model(model)
    , m_name(QStringLiteral("Unnamed Effect"))
    , m_type(QStringLiteral("Generic Effect"))
    , m_gid(gid)
    , m_lastMs(QDateTime::currentMSecsSinceEpoch())
    , m_currentMs(m_lastMs)
    , m_startMs(m_lastMs)
{}

Effect::~Effect() = default;

QList<quint64> Effect::groupIds() const
{
    return {m_gid};
}

void Effect::restart()
{
    m_startMs = m_currentMs;
}

void Effect::setOpacity(double alpha)
{
    Q_UNUSED(alpha)
}

void Effect::updateEndTime() {}

void Effect::tick(qint64 nowMs, uint frame)
{
    m_currentMs = nowMs;
    m_frame = frame;
    if (m_active) {
        updateLights();
    }
    m_lastMs = nowMs;
}

qint64 Effect::elapsedSinceLast() const
{
    return m_currentMs < m_lastMs ? 0 : m_currentMs - m_lastMs;
}

qint64 Effect::elapsed() const
{
    return m_currentMs < m_startMs ? 0 : m_currentMs - m_startMs;
}

void Effect::save(QTextStream& out) const
{
    const QDomDocument doc{QString()}; // a null document would not outlive the call
    toXml(doc).save(out, 0, QDomNode::EncodingFromTextStream);
}

void Effect::setBegin(quint32 ms)
{
    m_begin = ms;
    emit beginChanged();
}

void Effect::readBase(const QDomElement& element)
{
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        const EffectKey key = effectKey(node.nodeName());
        if (key > EffectKey::EndCycleCount || key == EffectKey::Unknown) {
            continue; // not of the base
        }
        const QString value = EffectXml::valueOf(node);
        switch (key) {
        case EffectKey::Type:
            m_type = value;
            break;
        case EffectKey::Name:
            m_name = value;
            break;
        case EffectKey::Eid:
            m_eid = EffectXml::toUInt(value, kNoEid);
            break;
        case EffectKey::Gid:
            m_gid = EffectXml::toUInt64(value, kNoGid);
            compile(); // the rest of the reading finds the group
            break;
        case EffectKey::Transparency:
            m_transparency = EffectXml::toDouble(value, 0.0);
            break;
        case EffectKey::Priority:
            m_priority = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::Begin:
            m_begin = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::End:
            m_end = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::Fadein:
            m_fadein = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::Fadeout:
            m_fadeout = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::StartType:
            m_startType = EffectXml::toInt(value, StartFixed);
            break;
        case EffectKey::StartFixedTime:
            m_startFixedTime = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::StartLinkEid:
            m_startLinkEid = EffectXml::toUInt(value, kNoEid);
            break;
        case EffectKey::StartLinkStart:
            m_startLinkStart = EffectXml::toBool(value, true);
            break;
        case EffectKey::StartLinkOffset:
            m_startLinkOffset = EffectXml::toDouble(value, 0.0);
            break;
        case EffectKey::EndType:
            m_endType = EffectXml::toInt(value, EndFixed);
            break;
        case EffectKey::EndFixedTime:
            m_endFixedTime = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::EndLinkEid:
            m_endLinkEid = EffectXml::toUInt(value, kNoEid);
            break;
        case EffectKey::EndLinkStart:
            m_endLinkStart = EffectXml::toBool(value, true);
            break;
        case EffectKey::EndLinkOffset:
            m_endLinkOffset = EffectXml::toDouble(value, 0.0);
            break;
        case EffectKey::EndCycleCount:
            m_endCycleCount = EffectXml::toUInt(value, 1);
            break;
        default:
            break;
        }
    }
}

void Effect::writeBase(QDomDocument& doc, QDomElement& element) const
{
    EffectXml::append(doc, element, EffectKey::Type, m_type);
    EffectXml::append(doc, element, EffectKey::Name, m_name);
    EffectXml::append(doc, element, EffectKey::Eid, m_eid);
    EffectXml::append(doc, element, EffectKey::Gid, m_gid);
    EffectXml::append(doc, element, EffectKey::Transparency, m_transparency);
    EffectXml::append(doc, element, EffectKey::Priority, m_priority);
    EffectXml::append(doc, element, EffectKey::Begin, m_begin);
    EffectXml::append(doc, element, EffectKey::End, m_end);
    EffectXml::append(doc, element, EffectKey::Fadein, m_fadein);
    EffectXml::append(doc, element, EffectKey::Fadeout, m_fadeout);
    EffectXml::append(doc, element, EffectKey::StartType, m_startType);
    EffectXml::append(doc, element, EffectKey::StartFixedTime, m_startFixedTime);
    EffectXml::append(doc, element, EffectKey::StartLinkEid, m_startLinkEid);
    EffectXml::append(doc, element, EffectKey::StartLinkStart, m_startLinkStart);
    EffectXml::append(doc, element, EffectKey::StartLinkOffset, m_startLinkOffset);
    EffectXml::append(doc, element, EffectKey::EndType, m_endType);
    EffectXml::append(doc, element, EffectKey::EndFixedTime, m_endFixedTime);
    EffectXml::append(doc, element, EffectKey::EndLinkEid, m_endLinkEid);
    EffectXml::append(doc, element, EffectKey::EndLinkStart, m_endLinkStart);
    EffectXml::append(doc, element, EffectKey::EndLinkOffset, m_endLinkOffset);
    EffectXml::append(doc, element, EffectKey::EndCycleCount, m_endCycleCount);
}

void Effect::applyTimeRule()
{
    if (m_endType == EndCycles) {
        updateEndTime();
    }
    emit cycleTimeChanged(cycleTime());
}
