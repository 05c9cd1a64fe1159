#pragma once

#include <QDomNode>
#include <QString>
#include <QStringList>

#include <functional>

class Effect;
class MapModel;
class MetaEffect;
class QDomDocument;
class QDomElement;

/// Type names, numbers and icons of the effects, and how a name becomes an object.
namespace EffectFactory {

constexpr int kTypeCount = 18;
constexpr int kMetaEffect = 7;

using Creator = Effect* (*)(MapModel* model, quint64 gid, QDomElement* element);
using DocumentReader = std::function<void(const QDomDocument& document)>;

/// Makes the type creatable; called by registerEffects() at start-up, a line a type. A timeline is
/// creatable from the first. A number without a type is ignored.
void registerCreator(int typeNumber, Creator creator);
/// -1 for an unknown name.
int typeNumber(const QString& typeName);
/// Empty for a number without a type.
QString typeName(int typeNumber);
/// Resource path; empty for a number without a type.
QString iconPath(int typeNumber);
/// The known type names, in no particular order.
QStringList effectTypeNames();
/// A new effect of that type without a group; `element` may be null. Null, with a line in the
/// debug log, for a name that isn't known or can't be created.
Effect* createEffect(const QString& typeName, MapModel* model, QDomElement* element);
/// The effect of an "effect" element, by its first "type" child; null where there is none.
Effect* createEffectFromXml(const QDomNode& node, MapModel* model);
/// Reads a show file. Null, with a line in the debug log, where it can't be read or isn't a show;
/// else `reader`, if there is one, is given the document, for what else it holds.
MetaEffect* loadShow(const QString& path, MapModel* model, const DocumentReader& reader = nullptr);
/// The same for the file's text.
MetaEffect* parseShow(const QString& text, MapModel* model, const DocumentReader& reader = nullptr);

} // namespace EffectFactory
