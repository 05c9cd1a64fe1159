#include "color/BuiltInSwatches.h"

#include <QColor>
#include <QCoreApplication>

namespace {

struct White
{
    const char* name; // a temperature for the centre of a bin
    double x;
    double y;
};

constexpr int kBins = 8;
const White kWhites[] = {
    {"2700", 0.45766, 0.40983},
    {"3000", 0.43387, 0.40319},
    {"3500", 0.40775, 0.39292},
    {"4000", 0.38177, 0.37959},
    {"4500", 0.36128, 0.36686},
    {"5000", 0.34464, 0.35506},
    {"5700", 0.32867, 0.34246},
    {"6500", 0.3123, 0.32825},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Candle"), 0.50563, 0.4152},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Incandescent"), 0.44757, 0.40745},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Afternoon Daylight"), 0.33242, 0.34743},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Noon Daylight"), 0.31271, 0.32902},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "North Sky Daylight"), 0.29902, 0.31485},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Overcast Sky"), 0.28063, 0.28829},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Spring White"), 0.34724, 0.38528},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Summer White"), 0.41848, 0.42916},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Fall White"), 0.50459, 0.40021},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Winter White"), 0.28972, 0.31094},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Rose White"), 0.38549, 0.34874},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Violet White"), 0.31789, 0.29164},
};

struct Plain
{
    const char* name;
    QRgb rgb;
};

const Plain kPlain[] = {
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Red"), qRgb(255, 0, 0)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Orange"), qRgb(255, 127, 0)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Yellow"), qRgb(255, 255, 0)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Green"), qRgb(0, 255, 0)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Cyan"), qRgb(0, 255, 255)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Blue"), qRgb(0, 0, 255)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Violet"), qRgb(139, 0, 255)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Magenta"), qRgb(255, 0, 255)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "White"), qRgb(255, 255, 255)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Silver"), qRgb(192, 192, 192)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Gray"), qRgb(128, 128, 128)},
    {QT_TRANSLATE_NOOP("BuiltInSwatches", "Black"), qRgb(0, 0, 0)},
};

QString translated(const char* text)
{
    return QCoreApplication::translate("BuiltInSwatches", text);
}

} // namespace

QVector<BuiltInSwatch> builtInSwatches()
{
    QVector<BuiltInSwatch> swatches;
    for (const Plain& plain : kPlain) {
        swatches.append({translated(plain.name), VelaColor(QColor(plain.rgb))});
    }
    int bins = 0;
    for (const White& white : kWhites) {
        const QString name = bins++ < kBins
                                 ? QStringLiteral("%1 K %2").arg(QLatin1String(white.name),
                                                                 translated("/ center of ANSI bin"))
                                 : translated(white.name);
        swatches.append({name, VelaColor(white.x, white.y)});
    }
    return swatches;
}
