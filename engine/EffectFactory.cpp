#include "engine/EffectFactory.h"

#include "color/XmlDepth.h"
#include "engine/EffectXml.h"
#include "engine/MetaEffect.h"

#include <QDebug>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QTextStream>

#include <array>

namespace EffectFactory {
namespace {

struct TypeRow
{
    const char* name;
    const char* icon;
};

/// The index is the type's number, in files and in the program.
constexpr TypeRow kTypes[kTypeCount] = {
    {"Fixed Color", ":/icons/fixedColor.svg"},
    {"Chasing Rainbow", ":/icons/chase.svg"},
    {"Cross Fade", ":/icons/crossFade.svg"},
    {"Custom Rainbow", ":/icons/chasingNodeEffect.svg"},
    {"White Fixed Color", ":/icons/whiteWash.svg"},
    {"Animation", ":/icons/videoEffect.svg"},
    {"Image Scroll", ":/icons/imageFade.svg"},
    {"Meta Effect", ":/icons/sparkle.svg"},
    {"Random Color", ":/icons/randomColor.svg"},
    {"Sparkle", ":/icons/sparkle.svg"},
    {"Sparkle Group", ":/icons/sparkle.svg"},
    {"Streak", ":/icons/streak.svg"},
    {"Sweep", ":/icons/sweep.svg"},
    {"White Cross Fade", ":/icons/sparkle.svg"},
    {"XYBurst", ":/icons/burst.svg"},
    {"XYSpiral", ":/icons/spiral.svg"},
    {"Text", ":/icons/text.svg"},
    {"Selection", ":/icons/sparkle.svg"},
};

bool isType(int number)
{
    return number >= 0 && number < kTypeCount;
}

const QHash<QString, int>& typeNumbers()
{
    static const QHash<QString, int> numbers = [] {
        QHash<QString, int> table;
        for (int number = 0; number < kTypeCount; ++number) {
            table.insert(QString::fromLatin1(kTypes[number].name), number);
        }
        return table;
    }();
    return numbers;
}

Effect* createMetaEffect(MapModel* model, quint64 gid, QDomElement* element)
{
    return new MetaEffect(model, gid, element);
}

std::array<Creator, kTypeCount>& creators()
{
    static std::array<Creator, kTypeCount> table = [] {
        std::array<Creator, kTypeCount> fresh = {};
        fresh[kMetaEffect] = createMetaEffect;
        return fresh;
    }();
    return table;
}

MetaEffect* refuse(const QString& source, const QString& reason)
{
    qDebug("Show refused: %s: %s", qUtf8Printable(source), qUtf8Printable(reason));
    return nullptr;
}

/// `source` names the show in the debug log.
MetaEffect* parse(const QString& text, MapModel* model, const QString& source,
                  const DocumentReader& reader)
{
    // A declaration is a second root, but also names an encoding, which no longer holds: ahead of
    // the nesting, which must be judged as the document will read it.
    if (text.startsWith(QLatin1String("<?"))) {
        return refuse(source, QStringLiteral("it opens with a declaration"));
    }
    if (xmlShape(text.toUtf8()) == XmlShape::TooDeep) {
        return refuse(source, QStringLiteral("its elements nest deeper than %1").arg(kMaxXmlDepth));
    }
    QDomDocument doc(QStringLiteral("mydocument"));
    QString error;
    int line = 0;
    int column = 0;
    if (!doc.setContent(text, &error, &line, &column)) {
        return refuse(source,
                      QStringLiteral("%1 in line %2, column %3").arg(error).arg(line).arg(column));
    }
    if (doc.childNodes().count() != 1) {
        return refuse(source, QStringLiteral("more than the one root element"));
    }
    QDomElement root = doc.firstChild().toElement();
    if (root.isNull() || root.tagName() != effectKeyText(EffectKey::Effect)) {
        return refuse(source, QStringLiteral("the root element is not \"effect\""));
    }
    auto* const show = new MetaEffect(model, Effect::kNoGid, &root);
    if (reader) {
        reader(doc);
    }
    return show;
}

} // namespace

void registerCreator(int typeNumber, Creator creator)
{
    if (isType(typeNumber)) {
        creators()[static_cast<std::size_t>(typeNumber)] = creator;
    }
}

int typeNumber(const QString& typeName)
{
    return typeNumbers().value(typeName, -1);
}

QString typeName(int typeNumber)
{
    return isType(typeNumber) ? QString::fromLatin1(kTypes[typeNumber].name) : QString();
}

QString iconPath(int typeNumber)
{
    return isType(typeNumber) ? QString::fromLatin1(kTypes[typeNumber].icon) : QString();
}

QStringList effectTypeNames()
{
    return typeNumbers().keys();
}

Effect* createEffect(const QString& typeName, MapModel* model, QDomElement* element)
{
    const int number = typeNumber(typeName);
    const Creator creator = isType(number) ? creators()[static_cast<std::size_t>(number)] : nullptr;
    if (creator == nullptr) {
        qDebug("Unsupported Effect Type: %s", qUtf8Printable(typeName));
        return nullptr;
    }
    return creator(model, Effect::kNoGid, element);
}

Effect* createEffectFromXml(const QDomNode& node, MapModel* model)
{
    QDomElement element = node.toElement();
    if (element.isNull() || element.tagName() != effectKeyText(EffectKey::Effect)) {
        return nullptr;
    }
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.nodeName() == effectKeyText(EffectKey::Type)) {
            return createEffect(EffectXml::valueOf(child), model, &element);
        }
    }
    return nullptr;
}

MetaEffect* loadShow(const QString& path, MapModel* model, const DocumentReader& reader)
{
    if (!QFileInfo(path).isFile()) { // opening a pipe would wait for ever
        return refuse(path, QStringLiteral("no such file"));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return refuse(path, file.errorString());
    }
    QTextStream in(&file);
    in.setCodec("UTF-8");
    const QString text = in.readAll();
    file.close();
    return parse(text, model, path, reader);
}

MetaEffect* parseShow(const QString& text, MapModel* model, const DocumentReader& reader)
{
    return parse(text, model, QStringLiteral("(text)"), reader);
}

} // namespace EffectFactory
