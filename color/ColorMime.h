#pragma once

#include <QString>
#include <QStringList>

class QMimeData;
class VelaColor;

/// How a swatch travels by drag and drop and by the clipboard.
namespace ColorMime {

/// The formats that are written, the colour's own first and that of older swatches last.
QStringList formats();
/// Puts a swatch into `data`, in all formats.
void writeColor(QMimeData* data, const VelaColor& color, const QString& name,
                const QString& colorId, const QString& originatingPreset);
/// Reads a swatch in the format of today or of older swatches; the texts are empty where `data` has
/// none. False, and nothing written, for data without a valid colour. Any target may be null.
bool readColor(const QMimeData* data, VelaColor* color, QString* name = nullptr,
               QString* colorId = nullptr, QString* originatingPreset = nullptr);

} // namespace ColorMime
