#include "color/ColorMime.h"

#include "color/VelaColor.h"

#include <QMimeData>

namespace {

const QLatin1String kColor("data/x-velacolor");
const QLatin1String kName("data/x-velacolor-name");
const QLatin1String kColorId("data/x-velacolor-vendorid");
const QLatin1String kPreset("data/x-velacolor-originatingPreset");
const QLatin1String kOldColor("x-sorrel3/color");

void put(QString* target, const QMimeData& data, QLatin1String format)
{
    if (target != nullptr) {
        *target = QString::fromUtf8(data.data(format));
    }
}

} // namespace

namespace ColorMime {

QStringList formats()
{
    return {kColor, kName, kColorId, kPreset, kOldColor};
}

void writeColor(QMimeData* data, const VelaColor& color, const QString& name,
                const QString& colorId, const QString& originatingPreset)
{
    const QByteArray value = color.toString().toLatin1();
    data->setData(kColor, value);
    data->setData(kName, name.toUtf8());
    data->setData(kColorId, colorId.toUtf8());
    data->setData(kPreset, originatingPreset.toUtf8());
    data->setData(kOldColor, value);
}

bool readColor(const QMimeData* data, VelaColor* color, QString* name, QString* colorId,
               QString* originatingPreset)
{
    constexpr int kLongestValue = 4096; // far more than any colour's text
    if (data == nullptr) {
        return false;
    }
    for (const QLatin1String format : {kColor, kOldColor}) {
        if (!data->hasFormat(format)) {
            continue;
        }
        const QByteArray text = data->data(format);
        const VelaColor read(QString::fromLatin1(text.left(kLongestValue)));
        if (text.size() > kLongestValue || !read.isValid()) {
            continue;
        }
        if (color != nullptr) {
            *color = read;
        }
        put(name, *data, kName);
        put(colorId, *data, kColorId);
        put(originatingPreset, *data, kPreset);
        return true;
    }
    return false;
}

} // namespace ColorMime
