#pragma once

#include <QImage>
#include <QString>
#include <QVector>

/// A picture that lies beside a show: its path below the example's folder, without ".png".
struct NamedPicture
{
    QString path;
    QImage image;
};

/// The pictures that the shows of the examples play, small ones of about a pixel for every few
/// centimetres of an installation.
namespace Artwork {

constexpr int kFilmFrames = 12;

/// Hills under an evening sky, with a sun at one end and a moon at the other.
QImage hills();
/// One beat of a gull's wings on black, which is to be clear.
QVector<NamedPicture> gull(const QString& folder);
/// A round window of coloured glass.
QImage rosette();
/// A wheel of six vanes; its last frame leads on to its first.
QVector<NamedPicture> wheel(const QString& folder);

constexpr int kHillsWidth = 320;
constexpr int kHillsHeight = 56;
constexpr int kRosetteSize = 144;

} // namespace Artwork
