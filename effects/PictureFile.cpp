#include "effects/PictureFile.h"

#include "effects/PixelView.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QSize>

namespace PictureFile {

QImage read(const QString& path, QString* reason)
{
    if (!QFileInfo(path).isFile()) {
        *reason = QStringLiteral("there is no such file");
        return QImage();
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *reason = file.errorString();
        return QImage();
    }
    QImageReader reader(&file);
    const QSize size = reader.size();
    const qint64 pixels = static_cast<qint64>(size.width()) * size.height();
    if (size.isValid() && pixels > kMaxPixels) {
        *reason =
            QStringLiteral("%1 x %2 pixels are too many").arg(size.width()).arg(size.height());
        return QImage();
    }
    // Every reader of Qt's own tells the size of what it can read.
    QImage image = size.isValid() ? reader.read() : QImage();
    if (image.isNull()) {
        *reason = size.isValid() ? reader.errorString() : QStringLiteral("it is no picture");
    }
    return image;
}

QImage toRgb32(const QImage& image)
{
    if (image.isNull() || PixelView::isDirect(image)) {
        return image;
    }
    QImage converted(image.size(), QImage::Format_ARGB32);
    if (converted.isNull()) {
        return image; // no memory; slower to sample, and the same
    }
    for (int y = 0; y < image.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(converted.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            line[x] = image.pixel(x, y);
        }
    }
    return converted;
}

} // namespace PictureFile
