#include "effects/StreakEffect.h"

#include "color/Numeric.h"
#include "effects/EdgeColors.h"
#include "engine/EffectXml.h"
#include "map/Group.h"
#include "map/GroupLayout.h"
#include "map/MapModel.h"

StreakEffect::StreakEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Streak"));
    StreakEffect::fromXml(element);
}

QDomElement StreakEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectSupport::append(doc, element, EffectKey::FgColor, m_fgColor);
    EffectSupport::append(doc, element, EffectKey::BgColor, m_bgColor);
    EffectXml::append(doc, element, EffectKey::Width, m_width);
    EffectXml::append(doc, element, EffectKey::FwdTail, m_fTail);
    EffectXml::append(doc, element, EffectKey::RevTail, m_rTail);
    EffectXml::append(doc, element, EffectKey::Reverse, m_reverse);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_cycleSeconds);
    EffectXml::append(doc, element, EffectKey::FgTrans, m_fgTransparency);
    EffectXml::append(doc, element, EffectKey::BgTrans, m_bgTransparency);
    EffectXml::append(doc, element, EffectKey::Wrap, m_wrap);
    return element;
}

quint32 StreakEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_cycleSeconds);
}

bool StreakEffect::compile()
{
    Group* const group = model() != nullptr ? model()->group(gid()) : nullptr;
    m_layout = group != nullptr ? group->layout() : nullptr;
    if (group != nullptr) {
        m_positions = group->elementCount();
    }
    setCompiled(true);
    return true;
}

double StreakEffect::headPosition() const
{
    const quint32 cycle = cycleTime();
    if (cycle == 0) {
        return 0.0;
    }
    const quint32 passed = EffectSupport::phase(*this, m_cycleSeconds);
    // Without wrapping the head stops where the pulse reaches the last position.
    return m_wrap ? passed * m_positions / cycle : (m_positions - m_width + 1.0) * passed / cycle;
}

/// The row's place on the head's way: below 0 or past the end for a row that the pulse or a tail
/// reaches by wrapping.
qint32 StreakEffect::placeOf(int row, double head) const
{
    const qint32 place = m_reverse ? truncI32(m_positions - 1.0 - row) : row;
    if (!m_wrap) {
        return place;
    }
    const double behind = m_rTail - head; // what of the reverse tail hangs over the near end
    if (m_rTail > head && place >= truncI64(m_positions - behind)) {
        return truncI32(place - m_positions);
    }
    const double ahead = m_fTail + m_width; // the sum in 32 bits
    if (place <= truncI64(ahead - (m_positions - head)) && head > m_positions - m_width - m_fTail) {
        return truncI32(place + m_positions);
    }
    return place;
}

void StreakEffect::updateLights()
{
    if (m_positions == 0.0 || m_layout == nullptr) {
        return;
    }
    const EdgeColors colors({m_fgColor, m_fgScreen.of(m_fgColor)},
                            {m_bgColor, m_bgScreen.of(m_bgColor)}, m_fgTransparency,
                            m_bgTransparency, transparency());
    const PaintedColor pulse = colors.foreground(m_fgColor.alphaF());
    const PaintedColor background = colors.background(m_bgColor.alphaF());
    const double position = headPosition();
    const qint64 head = truncI32(position);
    const qint64 pulseEnd = head + m_width;
    const qint64 forwardEnd = pulseEnd + m_fTail;
    const qint64 reverseEnd = head - m_rTail;
    const int layer = static_cast<int>(priority());
    const auto paint = [&](int row, const PaintedColor& painted) {
        EffectSupport::paintRow(*m_layout, row, painted.color, painted.screen, layer);
    };
    for (int row = 0; row < m_layout->rows; ++row) {
        const qint32 place = placeOf(row, position);
        if (place >= head && place < pulseEnd) {
            paint(row, pulse);
        } else if (place > reverseEnd && place < head) {
            const double strength = 1.0 - static_cast<double>(head - place) / m_rTail;
            paint(row, colors.between(1.0 - strength, strength));
        } else if (place >= pulseEnd && place < forwardEnd) {
            const double strength = 1.0 - static_cast<double>(place - pulseEnd) / m_fTail;
            paint(row, colors.between(1.0 - strength, strength));
        } else {
            paint(row, background);
        }
    }
}

void StreakEffect::fromXml(QDomElement* element)
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
            StreakEffect::compile();
            break;
        case EffectKey::BgColor:
            m_bgColor = EffectSupport::toColor(value, Qt::black);
            StreakEffect::compile();
            break;
        case EffectKey::Width:
            m_width = EffectXml::toUInt(value, 4);
            break;
        case EffectKey::FwdTail:
            m_fTail = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::RevTail:
            m_rTail = EffectXml::toUInt(value, 0);
            break;
        case EffectKey::Reverse:
            m_reverse = EffectXml::toBool(value, false);
            break;
        case EffectKey::CycleTime:
            setCycleTime(EffectXml::toDouble(value, 10.0));
            break;
        case EffectKey::FgTrans:
            m_fgTransparency = EffectXml::toBool(value, false);
            break;
        case EffectKey::BgTrans:
            m_bgTransparency = EffectXml::toBool(value, false);
            break;
        case EffectKey::Wrap:
            m_wrap = EffectXml::toBool(value, false);
            break;
        default:
            break;
        }
    }
}

void StreakEffect::setCycleTime(double seconds)
{
    m_cycleSeconds = seconds;
    applyTimeRule();
}
