#pragma once

#include "color/VelaColor.h"
#include "engine/EffectKeys.h"

#include <QColor>
#include <QtGlobal>

class Effect;
class MapModel;
class QDomDocument;
class QDomElement;
class QString;
struct GroupLayout;

/// What all effects share: their place in a cycle, painting, fading, and colours in a show file.
namespace EffectSupport {

/// The layout of the model's group of that id; null without one.
const GroupLayout* findLayout(MapModel* model, quint64 gid);

/// A length in seconds as whole milliseconds, truncated; 0 for what fits no 32 bits.
quint32 toMilliseconds(double seconds);
/// Milliseconds since the last start of the cycle of `seconds`; the cycle repeats without end. 0
/// for a cycle below a millisecond, negative or not finite.
quint32 phase(const Effect& effect, double seconds);
/// The same as a fraction of the cycle, 0.0 and up, below 1.0.
double cyclePosition(const Effect& effect, double seconds);

/// Paints every light of the row alike, null entries left out.
void paintRow(const GroupLayout& layout, int row, const VelaColor& c, const QColor& q,
              int priority);
/// paintRow over all rows, with the priority that the effect has in this frame.
void paintAllRows(const Effect& effect, const GroupLayout& layout, const VelaColor& c,
                  const QColor& q);
/// Scales the alpha of both by the effect's present transparency: alpha x (1.0 - transparency),
/// held within 0..1. At transparency 0.0 neither is touched.
void fadeAlpha(const Effect& effect, VelaColor& c, QColor& q);
/// The mix of two screen colours, as VelaColor mixes colours.
QColor qInterpolate(const QColor& qa, const QColor& qb, double t);

/// The colour of a file's text, or `fallback` for a text that gives an invalid one.
VelaColor toColor(const QString& text, const VelaColor& fallback);
void append(QDomDocument& doc, QDomElement& effect, EffectKey key, const VelaColor& value);

} // namespace EffectSupport

/// The screen colour of the colour asked for last. To find that of a white takes its text form,
/// which a frame must not build.
class ScreenColor
{
public:
    const QColor& of(const VelaColor& c);

private:
    VelaColor m_color;
    QColor m_screen;
};
