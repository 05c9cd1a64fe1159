#include "effects/EffectSupport.h"

#include "color/DisplayColor.h"
#include "color/Numeric.h"
#include "engine/Effect.h"
#include "engine/EffectXml.h"
#include "map/Group.h"
#include "map/GroupLayout.h"
#include "map/Light.h"
#include "map/MapModel.h"

#include <algorithm>

namespace EffectSupport {

const GroupLayout* findLayout(MapModel* model, quint64 gid)
{
    Group* const group = model != nullptr ? model->group(gid) : nullptr;
    return group != nullptr ? group->layout() : nullptr;
}

quint32 toMilliseconds(double seconds)
{
    return truncU32(seconds * 1000.0);
}

quint32 phase(const Effect& effect, double seconds)
{
    const quint32 modulus = toMilliseconds(seconds);
    return modulus == 0 ? 0 : static_cast<quint32>(effect.elapsed()) % modulus;
}

double cyclePosition(const Effect& effect, double seconds)
{
    const quint32 position = phase(effect, seconds);
    return position == 0 ? 0.0 : position / (seconds * 1000.0);
}

void paintRow(const GroupLayout& layout, int row, const VelaColor& c, const QColor& q, int priority)
{
    Light::mixRow(layout.lights[row], layout.counts[row], c, q, priority);
}

void paintAllRows(const Effect& effect, const GroupLayout& layout, const VelaColor& c,
                  const QColor& q)
{
    const int priority = static_cast<int>(effect.priority());
    for (int row = 0; row < layout.rows; ++row) {
        paintRow(layout, row, c, q, priority);
    }
}

void fadeAlpha(const Effect& effect, VelaColor& c, QColor& q)
{
    const double transparency = effect.transparency();
    if (!(transparency > 0.0)) {
        return;
    }
    // A file may hold a transparency above 1.
    const double alpha = std::max(0.0, c.alphaF() * (1.0 - transparency));
    c.setAlphaF(alpha);
    q.setAlphaF(alpha);
}

QColor qInterpolate(const QColor& qa, const QColor& qb, double t)
{
    return toDisplayQColor(interpolate(VelaColor(qa), VelaColor(qb), t));
}

VelaColor toColor(const QString& text, const VelaColor& fallback)
{
    const VelaColor color(text);
    return color.isValid() ? color : fallback;
}

void append(QDomDocument& doc, QDomElement& effect, EffectKey key, const VelaColor& value)
{
    EffectXml::append(doc, effect, key, value.toString());
}

} // namespace EffectSupport

const QColor& ScreenColor::of(const VelaColor& c)
{
    if (c != m_color) {
        m_color = c;
        m_screen = toDisplayQColor(c);
    }
    return m_screen;
}
