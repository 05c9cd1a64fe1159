#pragma once

#include <QRgb>
#include <QtGlobal>

#include <memory>
#include <vector>

class Light;
class QImage;
class QRectF;
class QSize;

/// The pixels that the lights of a group show of each frame of a film: the whole group is stretched
/// over the whole picture, whatever its shape.
class SamplePoints
{
public:
    /// Three bytes a light: red, green, blue.
    using Buffer = std::unique_ptr<quint8[]>;
    static constexpr int kBytesPerLight = 3;

    /// `bounds` are the group's in map units, `picture` the size of the film's pictures. The
    /// coordinates are scaled by `scale` and moved by whole or broken pixels. A light whose place
    /// is not a number, as in a group without width, lies outside.
    void place(Light* const* lights, int count, const QRectF& bounds, const QSize& picture,
               double scale, double xOffset, double yOffset);
    void clear() { m_points.clear(); }
    /// A buffer for all points; null where there is no memory for it.
    Buffer makeBuffer() const;
    /// Fills `buffer`, if there is one, with what `image` shows; zeros outside of it.
    void sample(const QImage& image, const Buffer& buffer) const;

private:
    struct Point
    {
        qint32 x;
        qint32 y;
    };

    std::vector<Point> m_points; // by light
};
