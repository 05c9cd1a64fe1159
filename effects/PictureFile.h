#pragma once

#include <QImage>
#include <QString>
#include <QtGlobal>

/// Reads the picture files of effects, whatever a show names as such.
namespace PictureFile {

/// Pictures of more pixels are refused before anything is decoded: a file of a few kilobytes may
/// claim gigabytes.
constexpr int kMaxPixels = 64 * 1024 * 1024;

/// The picture, in any format that Qt has a reader for; a null one, and the `reason` in words, for
/// what is no plain file (a pipe would block for ever), no picture, or too large.
QImage read(const QString& path, QString* reason);

/// `image` with every pixel as QImage::pixel() gives it, at 32 bits each; `image` itself where it
/// is so already.
QImage toRgb32(const QImage& image);

} // namespace PictureFile
