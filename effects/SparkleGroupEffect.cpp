#include "effects/SparkleGroupEffect.h"

#include "color/Numeric.h"
#include "color/VelaColor.h"
#include "effects/EffectSupport.h"
#include "effects/SparkleBursts.h"
#include "engine/EffectXml.h"
#include "map/GroupLayout.h"
#include "map/Light.h"

#include <algorithm>

namespace {

/// Asked before it is set: QColor logs a line of its own about a name that it doesn't know.
QColor toQColor(const QString& text, Qt::GlobalColor fallback)
{
    return QColor::isValidColor(text) ? QColor(text) : QColor(fallback);
}

} // namespace

SparkleGroupEffect::SparkleGroupEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Sparkle Group"));
    SparkleGroupEffect::fromXml(element);
}

QDomElement SparkleGroupEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::Decay, m_decayRate);
    EffectXml::append(doc, element, EffectKey::Density, m_density);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_timeConstant);
    EffectXml::append(doc, element, EffectKey::SparkleColor, m_sparkleColor.name());
    EffectXml::append(doc, element, EffectKey::BgColor, m_bgColor.name());
    EffectXml::append(doc, element, EffectKey::SparkleTrans, m_sparkleTransparency);
    EffectXml::append(doc, element, EffectKey::BgTrans, m_bgTransparency);
    return element;
}

quint32 SparkleGroupEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_timeConstant);
}

SparkleGroupEffect::Rgb SparkleGroupEffect::componentsOf(const QColor& color)
{
    Rgb rgb;
    color.getRgb(&rgb.red, &rgb.green, &rgb.blue);
    return rgb;
}

bool SparkleGroupEffect::compile()
{
    m_layout = EffectSupport::findLayout(model(), gid());
    m_rowCount = m_layout != nullptr ? m_layout->rows : 0;
    m_levels.assign(static_cast<std::size_t>(m_rowCount), 0);
    SparkleBursts::seed();
    m_nextBurst = SparkleBursts::drawFirstWait(m_density);
    m_sparkleRgb = componentsOf(m_sparkleColor);
    m_bgRgb = componentsOf(m_bgColor);
    m_lastBurstMs = m_nowMs();
    m_lastDecayMs = m_lastBurstMs;
    setCompiled(true);
    return true;
}

VelaColor SparkleGroupEffect::colorOf(qint32 level) const
{
    if (level == 0) {
        return VelaColor(m_bgColor.rgb());
    }
    const double d = level / 1000.0;
    const auto mix = [d](qint32 spark, qint32 bg) {
        return truncI32((spark - bg) * d + bg) & 0xFF;
    };
    return VelaColor(qRgb(mix(m_sparkleRgb.red, m_bgRgb.red),
                          mix(m_sparkleRgb.green, m_bgRgb.green),
                          mix(m_sparkleRgb.blue, m_bgRgb.blue)));
}

void SparkleGroupEffect::updateLights()
{
    if (m_rowCount == 0 || m_layout == nullptr) {
        return;
    }
    const qint64 now = m_nowMs();
    if (m_nextBurst < now - m_lastBurstMs) {
        SparkleBursts::burst(m_levels, m_density);
        m_lastBurstMs = now;
        m_nextBurst = SparkleBursts::drawWait(m_timeConstant);
    }
    SparkleBursts::decay(m_levels, m_decayRate, now - m_lastDecayMs);
    m_lastDecayMs = now;

    const VelaColor resting = colorOf(0);
    const int layer = static_cast<int>(priority());
    const int rows = std::min(m_layout->rows, m_rowCount);
    for (int row = 0; row < rows; ++row) {
        const qint32 level = m_levels[static_cast<std::size_t>(row)];
        const VelaColor color = level == 0 ? resting : colorOf(level);
        Light* const* const lights = m_layout->lights[row];
        const int count = m_layout->counts[row];
        for (int i = 0; i < count; ++i) {
            if (lights[i] != nullptr) {
                lights[i]->mixColor(color, layer);
            }
        }
    }
}

void SparkleGroupEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::Decay:
            m_decayRate = EffectXml::toInt(value, 10);
            break;
        case EffectKey::Density:
            m_density = EffectXml::toInt(value, 10);
            break;
        case EffectKey::CycleTime:
            setTimeConstant(EffectXml::toDouble(value, 10.0));
            break;
        case EffectKey::SparkleColor:
            setSparkleColor(toQColor(value, Qt::white));
            break;
        case EffectKey::BgColor:
            setBgColor(toQColor(value, Qt::black));
            break;
        case EffectKey::SparkleTrans:
            m_sparkleTransparency = EffectXml::toBool(value, false);
            break;
        case EffectKey::BgTrans:
            m_bgTransparency = EffectXml::toBool(value, false);
            break;
        default:
            break;
        }
    }
}

void SparkleGroupEffect::setSparkleColor(const QColor& color)
{
    m_sparkleColor = color;
    compile();
}

void SparkleGroupEffect::setBgColor(const QColor& color)
{
    m_bgColor = color;
    compile();
}

void SparkleGroupEffect::setTimeConstant(double value)
{
    m_timeConstant = value;
    applyTimeRule();
}
