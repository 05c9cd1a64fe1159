#include "effects/XYBurstEffect.h"

#include "color/Numeric.h"
#include "effects/EffectSupport.h"
#include "effects/HueWheel.h"
#include "effects/PlanArea.h"
#include "engine/EffectXml.h"
#include "map/Light.h"

#include <cmath>

namespace {

/// The same as HueWheel's, without std::fmod, which divides bit by bit, for any likely hue.
double raiseBelow0(double hue)
{
    constexpr double kFarBelow = -1e9;
    if (!(hue > kFarBelow)) {
        return HueWheel::raiseBelow0(hue);
    }
    const double rest = hue < 0.0 ? hue - truncI32(hue / 360.0) * 360.0 : hue;
    return rest < 0.0 ? rest + 360.0 : rest;
}

} // namespace

XYBurstEffect::XYBurstEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("XYBurst"));
    XYBurstEffect::fromXml(element);
}

QDomElement XYBurstEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_cycleSeconds);
    EffectXml::append(doc, element, EffectKey::Width, m_ringWidth);
    EffectXml::append(doc, element, EffectKey::CenterX, m_centerOffsetX);
    EffectXml::append(doc, element, EffectKey::CenterY, m_centerOffsetY);
    EffectXml::append(doc, element, EffectKey::CycleDir, m_cycleDir);
    EffectXml::append(doc, element, EffectKey::RainbowDir, m_rainbowDir);
    return element;
}

quint32 XYBurstEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_cycleSeconds);
}

bool XYBurstEffect::compile()
{
    setCompiled(true);
    const PlanArea area(model(), gid());
    m_palette.setLights(area.lights, area.count);
    if (!area.isFound) {
        return true;
    }
    const double centerX = m_centerOffsetX * PlanArea::kUnitsPerPixel + area.minX;
    const double centerY = m_centerOffsetY * PlanArea::kUnitsPerPixel + area.minY;
    const double w = (area.maxX - area.minX) * 0.5;
    const double h = (area.maxY - area.minY) * 0.5;
    const double maxDistance = std::sqrt(h * h + w * w);
    m_distances.assign(static_cast<std::size_t>(area.count), 0.0);
    for (int i = 0; i < area.count; ++i) {
        if (area.lights[i] == nullptr) {
            continue;
        }
        const LightPosition place = area.lights[i]->position();
        const double dx = place.x - centerX;
        const double dy = place.y - centerY;
        m_distances[static_cast<std::size_t>(i)] = std::sqrt(dy * dy + dx * dx) / maxDistance;
    }
    m_outputSizeText = area.sizeText();
    emit updateOutputSizeLabel(m_outputSizeText);
    return true;
}

void XYBurstEffect::updateLights()
{
    if (m_palette.lightCount() == 0) {
        return;
    }
    const qint32 passed = static_cast<qint32>(static_cast<quint32>(elapsed()));
    const qint32 turned = truncI32(1.0 / m_cycleSeconds * passed); // thousandths of a turn
    double hueAtCenter = turned / 1000.0 * 360.0;
    if (m_rainbowDir == m_cycleDir) {
        hueAtCenter = 360.0 - hueAtCenter;
    }
    const double span = 36000.0 / m_ringWidth; // degrees over the distance 1.0
    const double* const distances = m_distances.data();
    const int layer = static_cast<int>(priority());
    if (m_rainbowDir) { // negative hues stay: they are black
        m_palette.paint(transparency(), layer,
                        [=](int i) { return truncI32(span * distances[i] + hueAtCenter); });
    } else {
        m_palette.paint(transparency(), layer, [=](int i) {
            return truncI32(raiseBelow0(hueAtCenter - span * distances[i]));
        });
    }
}

void XYBurstEffect::fromXml(QDomElement* element)
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
        case EffectKey::Width:
            m_ringWidth = EffectXml::toUInt(value, 100);
            break;
        case EffectKey::CenterX:
            setCenterOffsetX(EffectXml::toDouble(value, 0.0));
            break;
        case EffectKey::CenterY:
            setCenterOffsetY(EffectXml::toDouble(value, 0.0));
            break;
        case EffectKey::CycleDir:
            m_cycleDir = EffectXml::toBool(value, false);
            break;
        case EffectKey::RainbowDir:
            m_rainbowDir = EffectXml::toBool(value, false);
            break;
        default:
            break;
        }
    }
}

void XYBurstEffect::setCycleTime(double seconds)
{
    m_cycleSeconds = seconds;
    applyTimeRule();
}

void XYBurstEffect::setCenterOffsetX(double pixels)
{
    m_centerOffsetX = pixels;
    XYBurstEffect::compile();
}

void XYBurstEffect::setCenterOffsetY(double pixels)
{
    m_centerOffsetY = pixels;
    XYBurstEffect::compile();
}
