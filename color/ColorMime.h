#pragma once

#include "color/VelaColor.h"

#include <QString>
#include <QStringList>
#include <QVector>

class QMimeData;

/// How swatches travel by drag and drop and by the clipboard. Several go in the same formats, a
/// line of each for each swatch.
namespace ColorMime {

struct Swatch
{
    VelaColor color;
    QString name;
    QString colorId;
    QString originatingPreset;
};

/// The formats that are written, the colour's own first and that of older swatches last.
QStringList formats();
/// Puts a swatch into `data`, in all formats.
void writeColor(QMimeData* data, const VelaColor& color, const QString& name,
                const QString& colorId, const QString& originatingPreset);
/// The same for several; one without a valid colour is left out.
void writeColors(QMimeData* data, const QVector<Swatch>& swatches);
/// Reads the first swatch in the format of today or of older swatches; the texts are empty where
/// `data` has none. False, and nothing written, for data without a valid colour. Any target may be
/// null.
bool readColor(const QMimeData* data, VelaColor* color, QString* name = nullptr,
               QString* colorId = nullptr, QString* originatingPreset = nullptr);
/// Reads all swatches; none where any of them is no colour.
QVector<Swatch> readColors(const QMimeData* data);

} // namespace ColorMime
