#include "effects/XYSpiralEffect.h"

#include "color/Numeric.h"
#include "effects/EffectSupport.h"
#include "effects/PlanArea.h"
#include "engine/EffectXml.h"
#include "map/Light.h"

#include <algorithm>
#include <cmath>
#include <limits>

XYSpiralEffect::XYSpiralEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("XYSpiral"));
    XYSpiralEffect::fromXml(element);
}

QDomElement XYSpiralEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_cycleSeconds);
    EffectXml::append(doc, element, EffectKey::Twist, m_twist);
    EffectXml::append(doc, element, EffectKey::Number, m_arms);
    EffectXml::append(doc, element, EffectKey::Clockwise, m_clockwise);
    EffectXml::append(doc, element, EffectKey::CenterX, m_centerOffsetX);
    EffectXml::append(doc, element, EffectKey::CenterY, m_centerOffsetY);
    return element;
}

quint32 XYSpiralEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_cycleSeconds);
}

/// The hue's lead at that place from the centre, in map units.
quint16 XYSpiralEffect::phaseAt(double dx, double dy) const
{
    constexpr double kPi = 3.141592653589793;
    const qint32 twist = truncI32(m_twist);
    const qint32 radial = twist == 0 ? 0 : truncI32(std::sqrt(dy * dy + dx * dx) / twist * 40.0);
    const qint32 angular = truncI32(std::atan2(dy, dx) * (m_arms * 180.0) / kPi);
    // Unsigned, so that sums beyond the range wrap.
    const quint32 r = static_cast<quint32>(radial);
    const quint32 a = static_cast<quint32>(angular);
    quint32 phase = m_clockwise ? r - a : r + a;
    if (static_cast<qint32>(phase) < 0) {
        phase += (0U - phase - 1U) / 360U * 360U + 360U;
    }
    return static_cast<quint16>(phase & 0xFFFFU);
}

bool XYSpiralEffect::compile()
{
    setCompiled(true);
    const PlanArea area(model(), gid());
    m_palette.setLights(area.lights, area.count);
    if (!area.isFound) {
        return true;
    }
    const double centerX = m_centerOffsetX * PlanArea::kUnitsPerPixel + area.minX;
    const double centerY = m_centerOffsetY * PlanArea::kUnitsPerPixel + area.minY;
    m_phases.assign(static_cast<std::size_t>(area.count), 0);
    for (int i = 0; i < area.count; ++i) {
        if (area.lights[i] != nullptr) {
            const LightPosition place = area.lights[i]->position();
            m_phases[static_cast<std::size_t>(i)] = phaseAt(place.x - centerX, place.y - centerY);
        }
    }
    m_outputSizeText = area.sizeText();
    emit updateOutputSizeLabel(m_outputSizeText);
    return true;
}

void XYSpiralEffect::updateLights()
{
    if (m_palette.lightCount() == 0) {
        return;
    }
    const double rate = m_arms * 360.0 / (m_cycleSeconds * 1000.0); // degrees a millisecond
    const qint64 turned = truncI32(static_cast<double>(elapsed()) * rate);
    const quint16* const phases = m_phases.data();
    m_palette.paint(transparency(), static_cast<int>(priority()), [=](int i) {
        constexpr qint64 kHighest = std::numeric_limits<qint32>::max(); // refused, as any above
        return static_cast<qint32>(std::min(phases[i] + turned, kHighest));
    });
}

void XYSpiralEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::CycleTime:
            setCycleTime(EffectXml::toDouble(value, 10.0));
            break;
        case EffectKey::Twist: // written as a double, and read as what it seldom is
            setTwist(EffectXml::toUInt(value, 10));
            break;
        case EffectKey::Number:
            setArms(EffectXml::toInt(value, 2));
            break;
        case EffectKey::Clockwise:
            setClockwise(EffectXml::toBool(value, true));
            break;
        case EffectKey::CenterX:
            setCenterOffsetX(EffectXml::toDouble(value, 0.0));
            break;
        case EffectKey::CenterY:
            setCenterOffsetY(EffectXml::toDouble(value, 0.0));
            break;
        default:
            break;
        }
    }
}

void XYSpiralEffect::setCycleTime(double seconds)
{
    m_cycleSeconds = seconds;
    applyTimeRule();
}

void XYSpiralEffect::setTwist(double twist)
{
    m_twist = twist;
    XYSpiralEffect::compile();
}

void XYSpiralEffect::setArms(qint32 arms)
{
    m_arms = arms;
    XYSpiralEffect::compile();
}

void XYSpiralEffect::setClockwise(bool on)
{
    m_clockwise = on;
    XYSpiralEffect::compile();
}

void XYSpiralEffect::setCenterOffsetX(double pixels)
{
    m_centerOffsetX = pixels;
    XYSpiralEffect::compile();
}

void XYSpiralEffect::setCenterOffsetY(double pixels)
{
    m_centerOffsetY = pixels;
    XYSpiralEffect::compile();
}
