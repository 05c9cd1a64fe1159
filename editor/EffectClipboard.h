#pragma once

#include <QList>
#include <QString>

class Effect;
class MapModel;
class QTextStream;

/// Effects as text: each behind a line of its own that says where it begins.
namespace EffectClipboard {

/// Writes the mark and then the effect, as a show file holds it.
void append(QTextStream& out, const Effect& effect);
/// The effects of a text, in its order; the caller owns them. Whatever is no effect is passed
/// over, with one line in the debug log for the whole text.
QList<Effect*> read(const QString& text, MapModel* model);

} // namespace EffectClipboard
