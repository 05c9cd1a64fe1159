#include "effects/FixedWhiteEffect.h"

#include "color/DisplayColor.h"
#include "effects/EffectSupport.h"
#include "engine/EffectXml.h"

FixedWhiteEffect::FixedWhiteEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("White Fixed Color"));
    FixedWhiteEffect::fromXml(element);
}

QDomElement FixedWhiteEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::Temperature, m_white.temperature);
    EffectXml::append(doc, element, EffectKey::Intensity, m_white.intensity);
    EffectXml::append(doc, element, EffectKey::InputType, m_white.inputType);
    EffectXml::append(doc, element, EffectKey::Warm, m_white.warm);
    EffectXml::append(doc, element, EffectKey::Cool, m_white.cool);
    return element;
}

bool FixedWhiteEffect::compile()
{
    m_layout = EffectSupport::findLayout(model(), gid());
    setCompiled(true);
    return true;
}

void FixedWhiteEffect::updateLights()
{
    if (m_layout == nullptr) {
        return;
    }
    VelaColor c = m_white.color();
    QColor q = toDisplayQColor(c);
    EffectSupport::fadeAlpha(*this, c, q);
    EffectSupport::paintAllRows(*this, *m_layout, c, q);
}

void FixedWhiteEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::Temperature:
            m_white.temperature = EffectXml::toInt(value, 255);
            break;
        case EffectKey::Intensity:
            m_white.intensity = EffectXml::toUInt(value, 50);
            break;
        case EffectKey::InputType:
            m_white.inputType = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::Warm:
            m_white.warm = EffectXml::toUInt(value, 127);
            break;
        case EffectKey::Cool: // read as signed, held and written as unsigned
            m_white.cool = static_cast<quint32>(EffectXml::toInt(value, 127));
            break;
        default:
            break;
        }
    }
}
