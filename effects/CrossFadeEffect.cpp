#include "effects/CrossFadeEffect.h"

#include "engine/EffectXml.h"

CrossFadeEffect::CrossFadeEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Cross Fade"));
    CrossFadeEffect::fromXml(element);
}

QDomElement CrossFadeEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectSupport::append(doc, element, EffectKey::StartColor, m_startColor);
    EffectSupport::append(doc, element, EffectKey::EndColor, m_endColor);
    EffectXml::append(doc, element, EffectKey::StartTrans, m_startTrans);
    EffectXml::append(doc, element, EffectKey::EndTrans, m_endTrans);
    EffectXml::append(doc, element, EffectKey::Time, m_time);
    return element;
}

quint32 CrossFadeEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_time);
}

bool CrossFadeEffect::compile()
{
    m_layout = EffectSupport::findLayout(model(), gid());
    setCompiled(true);
    return true;
}

void CrossFadeEffect::updateLights()
{
    if (m_layout == nullptr) {
        return;
    }
    VelaColor a = m_startColor;
    VelaColor b = m_endColor;
    if (m_startTrans) {
        a.setAlphaF(0.0);
    }
    if (m_endTrans) {
        b.setAlphaF(0.0);
    }
    const double t = EffectSupport::cyclePosition(*this, m_time);
    VelaColor c = interpolate(a, b, t);
    QColor q = EffectSupport::qInterpolate(m_startScreen.of(a), m_endScreen.of(b), t);
    EffectSupport::fadeAlpha(*this, c, q);
    EffectSupport::paintAllRows(*this, *m_layout, c, q);
}

void CrossFadeEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::StartColor:
            m_startColor = EffectSupport::toColor(value, m_startColor);
            break;
        case EffectKey::EndColor:
            m_endColor = EffectSupport::toColor(value, m_endColor);
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

void CrossFadeEffect::setTime(double seconds)
{
    m_time = seconds;
    applyTimeRule();
}
