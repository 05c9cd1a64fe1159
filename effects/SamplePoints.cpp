#include "effects/SamplePoints.h"

#include "color/Numeric.h"
#include "effects/PixelView.h"
#include "map/Light.h"

#include <QImage>
#include <QRectF>
#include <QSize>

#include <new>

void SamplePoints::place(Light* const* lights, int count, const QRectF& bounds,
                         const QSize& picture, double scale, double xOffset, double yOffset)
{
    m_points.assign(static_cast<std::size_t>(count), {0, 0});
    for (int i = 0; i < count; ++i) {
        if (lights[i] == nullptr) {
            continue;
        }
        const LightPosition at = lights[i]->position();
        Point& point = m_points[static_cast<std::size_t>(i)];
        point.x = truncI32(
            ((at.x - bounds.left()) / bounds.width()) * scale * (picture.width() - 1) + xOffset);
        point.y = truncI32(
            ((at.y - bounds.top()) / bounds.height()) * scale * (picture.height() - 1) + yOffset);
    }
}

SamplePoints::Buffer SamplePoints::makeBuffer() const
{
    return Buffer(new (std::nothrow) quint8[m_points.size() * kBytesPerLight]());
}

void SamplePoints::sample(const QImage& image, const Buffer& buffer) const
{
    if (buffer == nullptr) {
        return;
    }
    const PixelView pixels(image);
    quint8* out = buffer.get();
    for (const Point& point : m_points) {
        const QRgb pixel = pixels.contains(point.x, point.y) ? pixels.at(point.x, point.y) : 0;
        *out++ = static_cast<quint8>(qRed(pixel));
        *out++ = static_cast<quint8>(qGreen(pixel));
        *out++ = static_cast<quint8>(qBlue(pixel));
    }
}
