#include "effects/ChasingRainbowEffect.h"

#include "color/DisplayColor.h"
#include "color/Numeric.h"
#include "effects/EffectSupport.h"
#include "effects/HueWheel.h"
#include "engine/EffectXml.h"
#include "map/GroupLayout.h"

ChasingRainbowEffect::ChasingRainbowEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Chasing Rainbow"));
    ChasingRainbowEffect::fromXml(element);
}

QDomElement ChasingRainbowEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectSupport::append(doc, element, EffectKey::StartColor, m_startColor);
    EffectXml::append(doc, element, EffectKey::ReverseColor, m_reverseColor);
    EffectXml::append(doc, element, EffectKey::ReverseDir, m_reverseDir);
    EffectXml::append(doc, element, EffectKey::GroupOffset, m_groupOffset);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_cycleSeconds);
    return element;
}

quint32 ChasingRainbowEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_cycleSeconds);
}

bool ChasingRainbowEffect::compile()
{
    m_layout = EffectSupport::findLayout(model(), gid());
    m_startColor.getHsv16(&m_startHue, &m_startSat, &m_startValue);
    setCompiled(true);
    return true;
}

double ChasingRainbowEffect::firstRowHue() const
{
    const double seconds = static_cast<double>(elapsed()) / 1000.0;
    const qint32 cycleHue = truncI32(seconds * (360.0 / m_cycleSeconds));
    if (m_reverseColor) {
        return HueWheel::raiseBelow0(static_cast<double>(m_startHue) - cycleHue);
    }
    // Unsigned on purpose: the -1 of a grey start colour becomes the greatest number.
    return HueWheel::dropAbove360(static_cast<quint32>(m_startHue) +
                                  static_cast<quint32>(cycleHue));
}

void ChasingRainbowEffect::updateLights()
{
    if (m_layout == nullptr || m_cycleSeconds == 0.0) {
        return;
    }
    const double baseHue = firstRowHue();
    // In 16 bits and in every frame, unlike fadeAlpha. A file may hold a transparency above 1.
    const int alpha = limitI32(m_startColor.alpha16() * (1.0 - transparency()), 0, 65535);
    const int profile = static_cast<int>(m_startColor.profileId());
    const int layer = static_cast<int>(priority());
    VelaColor work;
    QColor screen;
    qint32 shownHue = 0;
    for (int row = 0; row < m_layout->rows; ++row) {
        const double offset = row * m_groupOffset;
        const double h = m_reverseDir ? HueWheel::raiseBelow0(baseHue - offset)
                                      : HueWheel::dropAbove360(offset + baseHue);
        const qint32 hue = HueWheel::settable(truncI32(h));
        if (row == 0 || hue != shownHue) {
            shownHue = hue;
            work.setHsv16(hue, m_startSat, m_startValue, alpha, profile);
            screen = toDisplayQColor(work);
        }
        EffectSupport::paintRow(*m_layout, row, work, screen, layer);
    }
}

void ChasingRainbowEffect::updateEndTime()
{
    if (endType() == EndCycles) {
        setEnd(truncU32(m_cycleSeconds * 1000.0 * endCycleCount() + begin()));
    }
}

void ChasingRainbowEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::StartColor: {
            const VelaColor color(value);
            if (color.isValid()) {
                setStartColor(color);
            }
            break;
        }
        case EffectKey::ReverseColor:
            m_reverseColor = EffectXml::toBool(value, false);
            break;
        case EffectKey::ReverseDir:
            m_reverseDir = EffectXml::toBool(value, false);
            break;
        case EffectKey::GroupOffset:
            m_groupOffset = EffectXml::toDouble(value, 0.5);
            break;
        case EffectKey::CycleTime:
            setCycleTime(EffectXml::toDouble(value, 5.0));
            break;
        default:
            break;
        }
    }
}

void ChasingRainbowEffect::setCycleTime(double seconds)
{
    m_cycleSeconds = seconds;
    applyTimeRule();
}

void ChasingRainbowEffect::setStartColor(const VelaColor& color)
{
    m_startColor = color;
    compile();
}
