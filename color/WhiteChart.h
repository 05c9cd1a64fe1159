#pragma once

#include "color/VelaColor.h"

#include <QColor>
#include <QHash>
#include <QImage>
#include <QPoint>
#include <QPolygon>
#include <QPolygonF>
#include <QRect>
#include <QRectF>
#include <QString>

#include <array>
#include <vector>

/// How whites look on the screen: a chart of correlated colour temperature and tint over the CIE
/// 1931 xy plane. One instance, made by the first call of instance() and never freed; main thread
/// only.
class WhiteChart
{
public:
    WhiteChart(const WhiteChart&) = delete;
    WhiteChart& operator=(const WhiteChart&) = delete;

    static WhiteChart& instance();

    /// The screen's colour for a Yxy or Nchannel colour: near the whites the chart's hue and
    /// saturation at the value Y (limited to 0..1), elsewhere plain conversion with clipping. A
    /// colour asked for before costs one look-up and allocates nothing.
    QColor screenColor(const VelaColor& color);
    /// Black, or within 0.001 (CIE 1960) of the chart's area.
    bool isOnChart(const VelaColor& color) const;
    /// The highest tint that the chart shows at a temperature in kelvin, any value.
    int tintLimit(int cct) const;
    /// `xy` itself inside the chart's area, else the nearest point of its edge.
    QPointF nearestPoint(const QPointF& xy) const;

    /// The pixel of `image`, an image of chartRect(), that shows a temperature and tint, both
    /// limited to their ranges. May lie outside of the image.
    QPoint pixelOf(int cct, int tint, const QRect& image) const;
    /// The same for a chromaticity; NaN and far values are limited to a million pixels.
    QPoint pixelAt(const QPointF& xy, const QRect& image) const;
    /// The reverse: the chromaticity at a pixel.
    QPointF chromaticityAt(const QPoint& pixel, const QRect& image) const;

    /// The chart's area in the xy plane.
    const QPolygonF& outline() const { return m_outline; }
    /// The same in pixels of mainImage().
    const QPolygon& outlinePixels() const { return m_outlinePixels; }
    /// What the images show; y grows upward, so that the height is negative.
    QRectF chartRect() const { return m_chartRect; }
    /// What the picture of the RGB gamut shows.
    QRectF fullRect() const { return m_fullRect; }
    /// 1600 pixels wide; both are built on the first need of either, in about a quarter of a
    /// second.
    const QImage& mainImage();
    const QImage& whiteImage();

private:
    static constexpr int kTintLimitCount = 106;

    struct KnownColor
    {
        VelaColor color; // invalid: a free place
        QColor screen;
    };

    WhiteChart();
    void buildOutline();
    void buildTintLimits();
    void buildImages();
    QImage shading(const QRect& image) const;

    QColor workOutScreenColor(const VelaColor& color);
    QColor chartColor(const VelaColor& color, const VelaColor& xyY);
    KnownColor* placeOf(const VelaColor& color);
    void remember(const VelaColor& color, const QColor& screen);

    QPolygonF m_outline;
    QPolygon m_outlinePixels;
    const QRectF m_chartRect{QPointF(0.235, 0.475), QPointF(0.54, 0.245)};
    const QRectF m_fullRect{QPointF(0.1, 0.65), QPointF(0.7, 0.0)};
    QImage m_mainImage;
    QImage m_whiteImage;
    std::array<qint32, kTintLimitCount> m_tintLimits = {}; // from 2000 K, one each 10 K
    QHash<QString, QColor> m_cache;                        // by VelaColor::toString()
    /// In front of it all, by the exact colour, so that a frame builds no text: open addressing,
    /// a power of two of places, at most half of them taken.
    std::vector<KnownColor> m_known;
    std::size_t m_knownCount = 0;
};
