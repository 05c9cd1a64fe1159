#include "effects/WhiteCrossFadeEffect.h"

#include "color/DisplayColor.h"
#include "effects/EffectSupport.h"
#include "engine/EffectXml.h"

WhiteCrossFadeEffect::WhiteCrossFadeEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("White Cross Fade"));
    WhiteCrossFadeEffect::fromXml(element);
}

QDomElement WhiteCrossFadeEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::TemperatureStart, m_start.temperature);
    EffectXml::append(doc, element, EffectKey::IntensityStart, m_start.intensity);
    EffectXml::append(doc, element, EffectKey::InputTypeStart, m_start.inputType);
    EffectXml::append(doc, element, EffectKey::WarmStart, m_start.warm);
    EffectXml::append(doc, element, EffectKey::CoolStart, m_start.cool);
    EffectXml::append(doc, element, EffectKey::TemperatureEnd, m_end.temperature);
    EffectXml::append(doc, element, EffectKey::IntensityEnd, m_end.intensity);
    EffectXml::append(doc, element, EffectKey::InputTypeEnd, m_end.inputType);
    EffectXml::append(doc, element, EffectKey::WarmEnd, m_end.warm);
    EffectXml::append(doc, element, EffectKey::CoolEnd, m_end.cool);
    EffectXml::append(doc, element, EffectKey::StartTrans, m_startTrans);
    EffectXml::append(doc, element, EffectKey::EndTrans, m_endTrans);
    EffectXml::append(doc, element, EffectKey::Time, m_time);
    return element;
}

quint32 WhiteCrossFadeEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_time);
}

bool WhiteCrossFadeEffect::compile()
{
    m_layout = EffectSupport::findLayout(model(), gid());
    setCompiled(true);
    return true;
}

void WhiteCrossFadeEffect::updateLights()
{
    if (m_layout == nullptr) {
        return;
    }
    VelaColor a = m_start.color();
    VelaColor b = m_end.color();
    if (m_startTrans) {
        a.setAlphaF(0.0);
    }
    if (m_endTrans) {
        b.setAlphaF(0.0);
    }
    VelaColor c = interpolate(a, b, EffectSupport::cyclePosition(*this, m_time));
    QColor q = toDisplayQColor(c); // the mix shown, unlike CrossFadeEffect's mix of what is shown
    EffectSupport::fadeAlpha(*this, c, q);
    EffectSupport::paintAllRows(*this, *m_layout, c, q);
}

void WhiteCrossFadeEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::TemperatureStart:
            m_start.temperature = EffectXml::toInt(value, 255);
            break;
        case EffectKey::IntensityStart:
            m_start.intensity = EffectXml::toUInt(value, 50);
            break;
        case EffectKey::InputTypeStart:
            m_start.inputType = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::WarmStart:
            m_start.warm = EffectXml::toUInt(value, 127);
            break;
        case EffectKey::CoolStart: // read as signed, held and written as unsigned
            m_start.cool = static_cast<quint32>(EffectXml::toInt(value, 127));
            break;
        case EffectKey::TemperatureEnd:
            m_end.temperature = EffectXml::toInt(value, 255);
            break;
        case EffectKey::IntensityEnd:
            m_end.intensity = EffectXml::toUInt(value, 50);
            break;
        case EffectKey::InputTypeEnd:
            m_end.inputType = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::WarmEnd:
            m_end.warm = EffectXml::toUInt(value, 127);
            break;
        case EffectKey::CoolEnd:
            m_end.cool = static_cast<quint32>(EffectXml::toInt(value, 127));
            break;
        case EffectKey::StartTrans:
            m_startTrans = EffectXml::toBool(value, false);
            break;
        case EffectKey::EndTrans:
            m_endTrans = EffectXml::toBool(value, false);
            break;
        case EffectKey::Time:
            setTime(EffectXml::toDouble(value, 5.0));
            break;
        default:
            break;
        }
    }
}

void WhiteCrossFadeEffect::setTime(double seconds)
{
    m_time = seconds;
    applyTimeRule();
}
