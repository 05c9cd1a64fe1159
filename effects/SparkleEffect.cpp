#include "effects/SparkleEffect.h"

#include "effects/SparkleBursts.h"
#include "engine/EffectXml.h"
#include "map/Group.h"
#include "map/Light.h"
#include "map/MapModel.h"

#include <algorithm>

namespace {

/// What a file makes of an alpha, held within 0..1; 0 for what is no number.
double heldAlpha(double alpha)
{
    return std::min(std::max(0.0, alpha), 1.0);
}

} // namespace

SparkleEffect::SparkleEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Sparkle"));
    SparkleEffect::fromXml(element);
}

QDomElement SparkleEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectXml::append(doc, element, EffectKey::Decay, m_decayRate);
    EffectXml::append(doc, element, EffectKey::Density, m_density);
    EffectXml::append(doc, element, EffectKey::CycleTime, m_timeConstant);
    EffectSupport::append(doc, element, EffectKey::SparkleColor, m_sparkleColor);
    EffectSupport::append(doc, element, EffectKey::BgColor, m_bgColor);
    EffectXml::append(doc, element, EffectKey::SparkleTrans, m_sparkleTransparency);
    EffectXml::append(doc, element, EffectKey::BgTrans, m_bgTransparency);
    return element;
}

quint32 SparkleEffect::cycleTime() const
{
    return EffectSupport::toMilliseconds(m_timeConstant);
}

bool SparkleEffect::compile()
{
    Group* const group = model() != nullptr ? model()->group(gid()) : nullptr;
    m_lightCount = 0;
    m_lights = group != nullptr ? group->lights(&m_lightCount) : nullptr;
    m_levels.assign(static_cast<std::size_t>(m_lightCount), 0);
    SparkleBursts::seed();
    m_nextBurst = SparkleBursts::drawFirstWait(m_density);
    setCompiled(true);
    return true;
}

void SparkleEffect::updateLights()
{
    if (m_lightCount == 0 || m_lights == nullptr) {
        return;
    }
    if (m_nextBurst < static_cast<quint32>(elapsed())) {
        SparkleBursts::burst(m_levels, m_density);
        restartFromLast();
        m_nextBurst = SparkleBursts::drawWait(m_timeConstant);
    }
    SparkleBursts::decay(m_levels, m_decayRate, elapsedSinceLast());

    Palette palette = {m_bgColor, m_sparkleColor, m_bgScreen.of(m_bgColor),
                       m_sparkleScreen.of(m_sparkleColor)};
    for (Shade& shade : m_shades) {
        shade.level = 0;
    }
    const int layer = static_cast<int>(priority());
    int i = 0;
    while (i < m_lightCount) {
        const qint32 level = m_levels[static_cast<std::size_t>(i)];
        if (m_lights[i] == nullptr) {
            ++i;
        } else if (level == 0) {
            const auto at = m_levels.cbegin() + i;
            const auto end =
                std::find_if(at, m_levels.cend(), [](qint32 other) { return other != 0; });
            i = paintResting(palette, i, i + static_cast<int>(end - at));
        } else {
            const Shade& shade = shadeOf(palette, level);
            m_lights[i]->mixColor(shade.color, layer);
            m_lights[i]->mixSimColor(shade.screen, layer);
            ++i;
        }
    }
}

/// Paints as many of the resting lights `from` to `to` as get the same colour, the first of which
/// is no null, and returns the next. A transparency compounds from one light to the next.
int SparkleEffect::paintResting(Palette& palette, int from, int to) const
{
    const auto restingAlpha = [&] {
        return m_bgTransparency ? 0.0 : heldAlpha((1.0 - transparency()) * palette.bg.alphaF());
    };
    const double alpha = restingAlpha();
    palette.bg.setAlphaF(alpha);
    palette.qBg.setAlphaF(alpha);
    const int end = restingAlpha() == alpha ? to : from + 1;
    Light::mixRow(m_lights + from, end - from, palette.bg, palette.qBg,
                  static_cast<int>(priority()));
    return end;
}

/// The colours of a sparkling light, and what they leave in the palette for the lights behind.
const SparkleEffect::Shade& SparkleEffect::shadeOf(Palette& palette, qint32 level)
{
    const double d = level / 1000.0;
    if (m_bgTransparency && !m_sparkleTransparency) {
        palette.bg.setAlphaF(d);
        palette.qBg.setAlphaF(d);
    } else if (m_sparkleTransparency && !m_bgTransparency) {
        palette.spark.setAlphaF(0.0);
        palette.qSpark.setAlphaF(0.0);
    }
    const quint32 bgAlpha = palette.bg.alpha32();
    const quint16 screenBgAlpha = palette.qBg.rgba64().alpha();
    Shade& shade = m_shades[static_cast<std::size_t>(level) % m_shades.size()];
    if (shade.level == level && shade.bgAlpha == bgAlpha && shade.screenBgAlpha == screenBgAlpha) {
        return shade;
    }
    shade.level = level;
    shade.bgAlpha = bgAlpha;
    shade.screenBgAlpha = screenBgAlpha;
    if (m_sparkleTransparency && m_bgTransparency) {
        shade.color = palette.bg;
        shade.color.setAlphaF(0.0);
        shade.screen = palette.qBg;
        shade.screen.setAlphaF(0.0);
    } else {
        shade.color = interpolate(palette.spark, palette.bg, 1.0 - d);
        shade.screen = EffectSupport::qInterpolate(palette.qSpark, palette.qBg, 1.0 - d);
    }
    if (transparency() > 0.0) {
        const double factor = 1.0 - transparency();
        shade.color.setAlphaF(heldAlpha(shade.color.alphaF() * factor));
        shade.screen.setAlphaF(heldAlpha(shade.screen.alphaF() * factor));
    }
    return shade;
}

void SparkleEffect::fromXml(QDomElement* element)
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
            m_sparkleColor = EffectSupport::toColor(value, Qt::white);
            compile();
            break;
        case EffectKey::BgColor:
            m_bgColor = EffectSupport::toColor(value, Qt::black);
            compile();
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

void SparkleEffect::setTimeConstant(double value)
{
    m_timeConstant = value;
    applyTimeRule();
}
