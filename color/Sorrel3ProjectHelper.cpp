#include "color/Sorrel3ProjectHelper.h"

#include "color/XmlText.h"

#include <QDomDocument>

#include <utility>

namespace {

constexpr int kSampleSize = 12;
constexpr double kSampleRatio = 0.96;

const QLatin1String kList("ColorLibrary");
const QLatin1String kColor("Color");
const QLatin1String kName("name");
const QLatin1String kIsUser("isUserLibrary");
const QLatin1String kUid("uid");
const QLatin1String kValue("value");
const QLatin1String kPreset("originatingPreset");
const QLatin1String kColorId("colorId");

} // namespace

Sorrel3ProjectHelper::Sorrel3ProjectHelper(ListNaming naming, QObject* parent)
    : QObject(parent)
    , m_naming(std::move(naming))
{}

void Sorrel3ProjectHelper::read(const QDomDocument& document, QString* error, QStringList* sample,
                                double ratio)
{
    QString ignored;
    QString& wrong = error != nullptr ? *error : ignored;
    const QString none = QStringLiteral("empty attribute");
    const QDomNodeList lists = document.elementsByTagName(kList);
    const int count = lists.size(); // counted by a walk over the whole document
    for (int i = 0; i < count; ++i) {
        const QDomNode node = lists.at(i);
        if (node.isNull()) {
            wrong = tr("Found NULL VelaColorLibrary node");
            continue;
        }
        const QDomElement list = node.toElement();
        if (list.isNull()) {
            wrong = tr("Found NULL VelaColorLibrary element");
            continue;
        }
        const bool isUser = list.attribute(kIsUser).toInt() != 0;
        const QString listId = m_naming(writableXml(list.attribute(kName)));
        emit insertList(listId, isUser);
        QDomElement color = list.firstChildElement(kColor);
        if (color.isNull()) {
            wrong = tr("Found NULL VelaColorLibrary element");
        } else if (color.tagName() != kColor) {
            wrong = tr("Expected VelaColorLibrary element");
        }
        int read = 0;
        for (; !color.isNull(); color = color.nextSiblingElement(kColor)) {
            const QString uid = color.attribute(kUid);
            emit insertColor(uid, color.attribute(kName, none), color.attribute(kValue, none),
                             color.attribute(kPreset), listId, color.attribute(kColorId));
            if (sample != nullptr && wrong.isEmpty() && read < kSampleSize &&
                ratio < kSampleRatio) {
                sample->append(uid);
            }
            ++read;
        }
        emit listRead(listId);
    }
}

QDomElement Sorrel3ProjectHelper::listElement(QDomDocument& document, const QString& name,
                                              bool isUserLibrary, const QList<Swatch>& swatches)
{
    QDomElement list = document.createElement(kList);
    for (const Swatch& swatch : swatches) {
        QDomElement color = document.createElement(kColor);
        color.setAttribute(kName, swatch.name);
        color.setAttribute(kUid, swatch.uid);
        color.setAttribute(kValue, swatch.value);
        color.setAttribute(kPreset, swatch.originatingPreset);
        color.setAttribute(kColorId, swatch.colorId);
        list.appendChild(color);
    }
    list.setAttribute(kName, name);
    list.setAttribute(kIsUser, isUserLibrary ? 1 : 0);
    return list;
}
