#include "color/ColorMime.h"

#include <QMimeData>

#include <algorithm>
#include <limits>

namespace {

const QLatin1String kColor("data/x-velacolor");
const QLatin1String kName("data/x-velacolor-name");
const QLatin1String kColorId("data/x-velacolor-vendorid");
const QLatin1String kPreset("data/x-velacolor-originatingPreset");
const QLatin1String kOldColor("x-sorrel3/color");

/// Far more than any colour's text.
constexpr int kLongestValue = 4096;

/// A line of `format` for each of `count` swatches, empty where there is none; all of it for one.
QStringList lines(const QMimeData& data, QLatin1String format, int count)
{
    const QString text = QString::fromUtf8(data.data(format));
    QStringList found = count == 1 ? QStringList(text) : text.split(QLatin1Char('\n'));
    while (found.size() < count) {
        found.append(QString());
    }
    return found;
}

/// The first `most` colours of `format`; none where any of them is no colour.
QVector<VelaColor> colors(const QMimeData& data, QLatin1String format, int most)
{
    QVector<VelaColor> found;
    const QByteArray text = data.data(format);
    for (int at = 0; at < text.size() && found.size() < most;) {
        const int end = text.indexOf('\n', at);
        const int length = (end < 0 ? text.size() : end) - at;
        const VelaColor color(QString::fromLatin1(text.mid(at, std::min(length, kLongestValue))));
        if (length > kLongestValue || !color.isValid()) {
            return {};
        }
        found.append(color);
        at += length + 1;
    }
    return found;
}

QVector<ColorMime::Swatch> swatches(const QMimeData* data, int most)
{
    QVector<ColorMime::Swatch> found;
    if (data == nullptr) {
        return found;
    }
    for (const QLatin1String format : {kColor, kOldColor}) {
        const QVector<VelaColor> read = colors(*data, format, most);
        if (read.isEmpty()) {
            continue;
        }
        const int count = data->data(format).trimmed().count('\n') + 1;
        const QStringList names = lines(*data, kName, count);
        const QStringList ids = lines(*data, kColorId, count);
        const QStringList presets = lines(*data, kPreset, count);
        for (int i = 0; i < read.size(); ++i) {
            found.append({read.at(i), names.at(i), ids.at(i), presets.at(i)});
        }
        break;
    }
    return found;
}

QString oneLine(QString text)
{
    return text.replace(QLatin1Char('\n'), QLatin1Char(' '));
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

void writeColors(QMimeData* data, const QVector<Swatch>& swatches)
{
    if (swatches.size() == 1) {
        const Swatch& only = swatches.first();
        writeColor(data, only.color, only.name, only.colorId, only.originatingPreset);
        return;
    }
    QStringList values;
    QStringList names;
    QStringList ids;
    QStringList presets;
    for (const Swatch& swatch : swatches) {
        if (swatch.color.isValid()) {
            values << swatch.color.toString();
            names << oneLine(swatch.name);
            ids << oneLine(swatch.colorId);
            presets << oneLine(swatch.originatingPreset);
        }
    }
    if (values.isEmpty()) {
        return;
    }
    const auto put = [data](QLatin1String format, const QStringList& lines) {
        data->setData(format, lines.join(QLatin1Char('\n')).toUtf8());
    };
    put(kColor, values); // plain ASCII, as every colour's text
    put(kName, names);
    put(kColorId, ids);
    put(kPreset, presets);
    put(kOldColor, values);
}

bool readColor(const QMimeData* data, VelaColor* color, QString* name, QString* colorId,
               QString* originatingPreset)
{
    const QVector<Swatch> read = swatches(data, 1);
    if (read.isEmpty()) {
        return false;
    }
    const auto give = [](auto* target, const auto& value) {
        if (target != nullptr) {
            *target = value;
        }
    };
    give(color, read.first().color);
    give(name, read.first().name);
    give(colorId, read.first().colorId);
    give(originatingPreset, read.first().originatingPreset);
    return true;
}

QVector<Swatch> readColors(const QMimeData* data)
{
    return swatches(data, std::numeric_limits<int>::max());
}

} // namespace ColorMime
