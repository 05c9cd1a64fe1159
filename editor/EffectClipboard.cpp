#include "editor/EffectClipboard.h"

#include "color/XmlDepth.h"
#include "engine/Effect.h"
#include "engine/EffectFactory.h"

#include <QDomDocument>
#include <QStringList>
#include <QTextStream>

namespace EffectClipboard {
namespace {

QString mark()
{
    return QStringLiteral("<EFFECT-ENTRY>");
}

/// Null where the text isn't the element of one effect.
Effect* readOne(const QString& text, MapModel* model)
{
    if (xmlShape(text.toUtf8()) == XmlShape::TooDeep) {
        return nullptr;
    }
    QDomDocument doc;
    if (!doc.setContent(text) || doc.childNodes().count() != 1) {
        return nullptr;
    }
    return EffectFactory::createEffectFromXml(doc.firstChild(), model);
}

} // namespace

void append(QTextStream& out, const Effect& effect)
{
    out << mark() << '\n';
    effect.save(out);
}

QList<Effect*> read(const QString& text, MapModel* model)
{
    QList<Effect*> effects;
    int refused = 0;
    const QStringList parts = text.split(mark(), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        Effect* const effect = readOne(part, model);
        if (effect != nullptr) {
            effects.append(effect);
        } else {
            ++refused;
        }
    }
    if (refused > 0) {
        qDebug("Clipboard: %d of %d parts are no effects", refused, static_cast<int>(parts.size()));
    }
    return effects;
}

} // namespace EffectClipboard
