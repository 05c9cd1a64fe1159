#include "effects/RandomColorEffect.h"

#include "color/DisplayColor.h"
#include "color/Numeric.h"
#include "effects/EffectSupport.h"
#include "effects/FadeFactor.h"
#include "effects/HueWheel.h"
#include "engine/EffectXml.h"
#include "map/GroupLayout.h"

#include <QTime>

#include <algorithm>
#include <cstdlib>

namespace {

// From a hue to the next in degrees: neighbours never look alike.
constexpr int kLeastStep = 60;
constexpr int kSteps = 240;

} // namespace

RandomColorEffect::RandomColorEffect(MapModel* model, quint64 gid, QDomElement* element)
    : Effect(model, gid)
{
    setType(QStringLiteral("Random Color"));
    RandomColorEffect::fromXml(element);
}

QDomElement RandomColorEffect::toXml(QDomDocument doc) const
{
    QDomElement element = doc.createElement(effectKeyText(EffectKey::Effect));
    writeBase(doc, element);
    EffectSupport::append(doc, element, EffectKey::StartColor, m_startColor);
    EffectXml::append(doc, element, EffectKey::Time, m_time);
    EffectXml::append(doc, element, EffectKey::FadeTime, m_fadeTime);
    EffectXml::append(doc, element, EffectKey::CycleCount, m_cycleCount);
    EffectXml::append(doc, element, EffectKey::Offset, m_offset);
    return element;
}

quint32 RandomColorEffect::cycleTime() const
{
    return truncU32(m_cycleCount * (m_time * 1000.0));
}

bool RandomColorEffect::compile()
{
    m_layout = EffectSupport::findLayout(model(), gid());
    setCompiled(true);
    std::srand(static_cast<unsigned int>(QTime::currentTime().msec()));
    int hue = 0;
    m_startColor.getHsv16(&hue, &m_startSat, &m_startValue, &m_startAlpha);
    m_hues = std::vector<qint32>(std::min(m_cycleCount, kMostHues));
    for (std::size_t i = 0; i < m_hues.size(); ++i) {
        m_hues[i] = i == 0 ? hue : m_hues[i - 1] + std::rand() % kSteps + kLeastStep;
    }
    m_shades.fill(Shade());
    return true;
}

const RandomColorEffect::Shade& RandomColorEffect::shadeOf(std::size_t index)
{
    Shade& shade = m_shades[index % m_shades.size()];
    if (shade.index != index) {
        VelaColor color;
        color.setHsv16(HueWheel::settable(m_hues[index]), m_startSat, m_startValue, m_startAlpha,
                       static_cast<int>(m_startColor.profileId()));
        shade.index = index;
        shade.rgb = color.toRgb(true); // a mix of HSV colours reads them so
        shade.screen = toDisplayQColor(color);
    }
    return shade;
}

void RandomColorEffect::updateLights()
{
    if (m_layout == nullptr || m_time == 0.0 || m_hues.empty()) {
        return;
    }
    const double period = m_time * 1000.0;
    const quint32 periodMs = truncU32(period);
    const quint32 listMs = truncU32(m_cycleCount * m_time * 1000.0);
    // Unsigned on purpose: with a fade longer than the time it is past every phase.
    const quint32 holdMs = wrapU32((m_time - m_fadeTime) * 1000.0);
    const double fadeMs = m_fadeTime * 1000.0;
    const quint32 step = wrapU32(m_offset * 1000.0);
    const bool isFaded = transparency() > 0.0;
    // A file may hold a transparency above 1.
    const double alpha = std::max(0.0, m_startColor.alphaF() * (1.0 - transparency()));
    const int layer = static_cast<int>(priority());

    VelaColor c;
    QColor q;
    quint32 shownIndex = 0;
    double shownPart = 0.0;
    quint32 t = static_cast<quint32>(elapsed());
    for (int row = 0; row < m_layout->rows; ++row) {
        t += step;
        const quint32 p = periodMs == 0 ? 0 : t % periodMs;
        const quint32 index = listMs == 0 ? 0 : truncU32((t % listMs) / period);
        const double part = p > holdMs ? 1.0 - fadeFactor(period - p, fadeMs) : 0.0;
        if (row == 0 || index != shownIndex || part != shownPart) {
            shownIndex = index;
            shownPart = part;
            const std::size_t from = index % m_hues.size();
            const std::size_t to =
                index == m_cycleCount - 1 || from + 1 == m_hues.size() ? 0 : from + 1;
            const Shade first = shadeOf(from); // a copy: the other may take its place
            const Shade& second = part == 0.0 ? first : shadeOf(to);
            c = interpolate(first.rgb, second.rgb, part);
            q = EffectSupport::qInterpolate(first.screen, second.screen, part);
            if (isFaded) {
                c.setAlphaF(alpha);
                q.setAlphaF(alpha);
            }
        }
        EffectSupport::paintRow(*m_layout, row, c, q, layer);
    }
}

void RandomColorEffect::fromXml(QDomElement* element)
{
    if (element == nullptr) {
        return;
    }
    readBase(*element);
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString value = EffectXml::valueOf(node);
        switch (effectKey(node.nodeName())) {
        case EffectKey::StartColor:
            setStartColor(EffectSupport::toColor(value, Qt::green));
            break;
        case EffectKey::Time:
            setTime(EffectXml::toDouble(value, 5.0));
            break;
        case EffectKey::FadeTime:
            m_fadeTime = EffectXml::toDouble(value, 0.5);
            break;
        case EffectKey::CycleCount: // read as signed, held and written as unsigned
            setCycleCount(static_cast<quint32>(EffectXml::toInt(value, 10)));
            break;
        case EffectKey::Offset:
            m_offset = EffectXml::toDouble(value, 0.0);
            break;
        default:
            break;
        }
    }
}

void RandomColorEffect::setTime(double seconds)
{
    m_time = seconds;
    applyTimeRule();
}

void RandomColorEffect::setStartColor(const VelaColor& color)
{
    m_startColor = color;
    compile();
}

void RandomColorEffect::setCycleCount(quint32 count)
{
    m_cycleCount = count;
    compile();
    applyTimeRule();
}
