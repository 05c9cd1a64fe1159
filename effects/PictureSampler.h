#pragma once

#include "effects/PixelView.h"
#include "effects/TransparentPixel.h"

#include <QRgb>

class QImage;

/// What a picture shows at a place.
struct PictureSample
{
    QRgb rgb = 0;       // its alpha says nothing
    double alpha = 1.0; // 0..1
    bool isOutside = false;

    bool operator==(const PictureSample& other) const
    {
        return rgb == other.rgb && alpha == other.alpha && isOutside == other.isOutside;
    }
};

/// Takes samples of a picture, which must outlive it, at any place, in pixels from its top left
/// one. Places that are not finite lie outside.
class PictureSampler
{
public:
    /// `surroundings` stands for every pixel outside when sampling smoothly.
    PictureSampler(const QImage& image, QRgb surroundings, const TransparentPixel& transparent)
        : m_pixels(image)
        , m_surroundings(surroundings)
        , m_transparent(transparent)
    {}
    /// The mean of the four pixels around, by distance; each channel is truncated.
    PictureSample smooth(double x, double y) const;
    /// The one pixel at or before the place, or outside.
    PictureSample plain(double x, double y) const;

private:
    QRgb pixelOrSurroundings(int x, int y) const
    {
        return m_pixels.contains(x, y) ? m_pixels.at(x, y) : m_surroundings;
    }
    double transparencyOf(QRgb pixel) const { return m_transparent.matches(pixel) ? 1.0 : 0.0; }

    PixelView m_pixels;
    QRgb m_surroundings;
    TransparentPixel m_transparent;
};
