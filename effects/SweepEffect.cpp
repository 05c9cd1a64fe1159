#include "effects/SweepEffect.h"

#include "color/Numeric.h"
#include "effects/EdgeColors.h"
#include "engine/EffectXml.h"
#include "map/Group.h"
#include "map/GroupLayout.h"
#include "map/MapModel.h"

SweepEffect::SweepEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Sweep"));
    SweepEffect::fromXml(element);
}

QDomElement SweepEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectSupport::append(doc, element, EffectKey::FgColor, m_fgColor);
    EffectSupport::append(doc, element, EffectKey::BgColor, m_bgColor);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_cycleSeconds);
    EffectXml::append(doc, element, EffectKey::Reverse, m_reverse);
    EffectXml::append(doc, element, EffectKey::FgTrans, m_fgTransparent);
    EffectXml::append(doc, element, EffectKey::BgTrans, m_bgTransparent);
    return element;
}

quint32 SweepEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_cycleSeconds);
}

bool SweepEffect::compile()
{
    Group* const group = model() != nullptr ? model()->group(gid()) : nullptr;
    m_layout = group != nullptr ? group->layout() : nullptr;
    if (group != nullptr) {
        m_positions = group->elementCount();
    }
    setCompiled(true);
    return true;
}

/// One position more than there are rows: at the end of a cycle the last row lies behind the edge.
double SweepEffect::edgePosition() const
{
    const quint32 cycle = cycleTime();
    return cycle == 0 ? 0.0
                      : EffectSupport::phase(*this, m_cycleSeconds) * (m_positions + 1.0) / cycle;
}

void SweepEffect::updateLights()
{
    if (m_positions == 0.0 || m_layout == nullptr) {
        return;
    }
    const EdgeColors colors({m_fgColor, m_fgScreen.of(m_fgColor)},
                            {m_bgColor, m_bgScreen.of(m_bgColor)}, m_fgTransparent, m_bgTransparent,
                            transparency());
    const PaintedColor passed = colors.foreground(1.0);
    const PaintedColor notReached = colors.background(1.0);
    const double position = edgePosition();
    const qint32 edge = truncI32(position);
    const int layer = static_cast<int>(priority());
    const auto paint = [&](int row, const PaintedColor& painted) {
        EffectSupport::paintRow(*m_layout, row, painted.color, painted.screen, layer);
    };
    for (int row = 0; row < m_layout->rows; ++row) {
        const qint32 place = m_reverse ? truncI32(m_positions - 1.0 - row) : row;
        if (place < edge) {
            paint(row, passed);
        } else if (place > edge) {
            paint(row, notReached);
        } else {
            const double t = 1.0 - (position - place);
            paint(row, colors.between(t, 1.0 - t));
        }
    }
}

void SweepEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::FgColor:
            m_fgColor = EffectSupport::toColor(value, Qt::green);
            SweepEffect::compile();
            break;
        case EffectKey::BgColor:
            m_bgColor = EffectSupport::toColor(value, Qt::black);
            SweepEffect::compile();
            break;
        case EffectKey::CycleTime:
            setCycleTime(EffectXml::toDouble(value, 10.0));
            break;
        case EffectKey::Reverse:
            m_reverse = EffectXml::toBool(value, false);
            break;
        case EffectKey::FgTrans:
            m_fgTransparent = EffectXml::toBool(value, false);
            break;
        case EffectKey::BgTrans:
            m_bgTransparent = EffectXml::toBool(value, false);
            break;
        default:
            break;
        }
    }
}

void SweepEffect::setCycleTime(double seconds)
{
    m_cycleSeconds = seconds;
    applyTimeRule();
}
