#include "effects/FixedColorEffect.h"

#include "engine/EffectXml.h"

FixedColorEffect::FixedColorEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Fixed Color"));
    FixedColorEffect::fromXml(element);
}

QDomElement FixedColorEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectSupport::append(doc, element, EffectKey::Color, m_color);
    return element;
}

bool FixedColorEffect::compile()
{
    m_layout = EffectSupport::findLayout(model(), gid());
    setCompiled(true);
    return true;
}

void FixedColorEffect::updateLights()
{
    if (m_layout == nullptr) {
        return;
    }
    VelaColor c = m_color;
    QColor q = m_screen.of(m_color);
    EffectSupport::fadeAlpha(*this, c, q);
    EffectSupport::paintAllRows(*this, *m_layout, c, q);
}

void FixedColorEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (effectKey(node.nodeName()) == EffectKey::Color) {
            m_color = EffectSupport::toColor(EffectXml::valueOf(node), m_color);
        }
    }
}
