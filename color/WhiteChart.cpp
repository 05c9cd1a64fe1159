#include "color/WhiteChart.h"

#include "color/ColorUtils.h"
#include "color/Numeric.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr int kImageWidth = 1600;
constexpr int kCctStep = 10;
constexpr int kFirstLimitCct = 2000;
constexpr int kPlainLimitCct = 3050; // below it the table, up to kNoLimitCct a slope
constexpr int kNoLimitCct = 3100;
constexpr double kOnChartDistance = 0.001;

// The piece of the gamut picture that chartRect() is, in parts of the picture's size.
constexpr double kPieceLeft = 0.225;
constexpr double kPieceTop = 1.0 - 0.7307692307692307;
constexpr double kPieceWidth = 0.5083333333333334;
constexpr double kPieceHeight = 0.3538461538461538;

constexpr double kMainOpacity = 0.85;
constexpr double kWhiteOpacity = 0.25;
constexpr double kOffLocusSaturation = 0.85;

QPointF whitePoint(int cct, int tint)
{
    double x = 0.0;
    double y = 0.0;
    ColorUtils::cctTintToXy(cct, tint, &x, &y);
    return {x, y};
}

double distance(const QPointF& a, const QPointF& b)
{
    return ColorUtils::deltaUv(a.x(), a.y(), b.x(), b.y());
}

/// Where the line at height `y` crosses the polygon, from left to right.
void crossings(const QPolygonF& polygon, double y, std::vector<double>* xs)
{
    xs->clear();
    QPointF last = polygon.last();
    for (const QPointF& point : polygon) {
        if ((last.y() <= y) != (point.y() <= y)) {
            const double share = (y - last.y()) / (point.y() - last.y());
            xs->push_back(last.x() + (point.x() - last.x()) * share);
        }
        last = point;
    }
    std::sort(xs->begin(), xs->end());
}

quint64 bitsOf(double v)
{
    const double value = v + 0.0; // both zeros are equal colours
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

std::size_t hashOf(const VelaColor& color)
{
    constexpr quint64 kMultiplier = 0x9E3779B97F4A7C15ULL;
    quint64 hash = color.alpha32() ^ (static_cast<quint64>(color.profileId()) << 32U);
    const auto mix = [&hash](quint64 v) {
        hash = (hash ^ v) * kMultiplier;
        hash ^= hash >> 32U;
    };
    if (color.spec() == VelaColor::Yxy) {
        mix(bitsOf(color.capY()));
        mix(bitsOf(color.smallX()));
        mix(bitsOf(color.smallY()));
    } else {
        for (int i = 0; i < color.channelCount(); ++i) {
            mix(color.channel32(i));
        }
    }
    return static_cast<std::size_t>(hash);
}

} // namespace

WhiteChart& WhiteChart::instance()
{
    static WhiteChart* const chart = [] {
        auto* const made = new (std::nothrow) WhiteChart;
        if (made == nullptr) {
            qBadAlloc();
        }
        return made;
    }();
    return *chart;
}

WhiteChart::WhiteChart()
{
    buildOutline();
    buildTintLimits();
}

void WhiteChart::buildOutline()
{
    constexpr int kTintStep = 2 * ColorUtils::maximumTint() / 14; // the ends are straight
    const int coolest = ColorUtils::maximumCct();
    const int warmest = ColorUtils::minimumCct();
    const int low = ColorUtils::minimumTint();
    const int high = ColorUtils::maximumTint();
    for (int cct = warmest; cct <= coolest; cct += kCctStep) {
        m_outline.append(whitePoint(cct, low));
    }
    for (int tint = low + kTintStep; tint < high; tint += kTintStep) {
        m_outline.append(whitePoint(coolest, tint));
    }
    for (int cct = coolest; cct >= warmest; cct -= kCctStep) {
        m_outline.append(whitePoint(cct, high));
    }
    for (int tint = high - kTintStep; tint > low; tint -= kTintStep) {
        m_outline.append(whitePoint(warmest, tint));
    }

    const int height = truncI32(kImageWidth * std::abs(m_chartRect.height() / m_chartRect.width()));
    const QRect image(0, 0, kImageWidth, height);
    for (const QPointF& point : m_outline) {
        m_outlinePixels.append(pixelAt(point, image));
    }
}

void WhiteChart::buildTintLimits()
{
    constexpr int kStep = 50;
    constexpr int kMargin = 1638; // a twentieth of the full tint
    const QColor black(Qt::black);
    std::size_t entry = 0;
    for (int cct = kFirstLimitCct; cct < kPlainLimitCct; cct += kCctStep) {
        int tint = ColorUtils::maximumTint();
        for (; tint >= 0; tint -= kStep) {
            const QPointF xy = whitePoint(cct, tint);
            VelaColor color;
            color.setYxyF(1.0, xy.x(), xy.y(), 1.0, 0);
            if (color.toQColor(false) != black) { // inside the RGB gamut
                tint -= kMargin;
                break;
            }
        }
        m_tintLimits[entry] = tint;
        ++entry;
    }
}

int WhiteChart::tintLimit(int cct) const
{
    if (cct >= kNoLimitCct) {
        return ColorUtils::maximumTint();
    }
    if (cct < kPlainLimitCct) {
        const int limited = std::clamp(cct, kFirstLimitCct, 10000);
        return m_tintLimits[static_cast<std::size_t>((limited - kFirstLimitCct) / kCctStep)];
    }
    return truncI32(32767 - 1638 * ((kNoLimitCct - cct) / 50.0 * 1.1));
}

QPointF WhiteChart::nearestPoint(const QPointF& xy) const
{
    if (m_outline.containsPoint(xy, Qt::OddEvenFill)) {
        return xy;
    }
    QPointF best = m_outline.first();
    double bestDistance = std::numeric_limits<double>::infinity();
    QPointF last = m_outline.last();
    for (const QPointF& point : m_outline) {
        QPointF foot;
        const double away = ColorUtils::distanceToSegment(last, point, xy, &foot);
        if (away < bestDistance) {
            bestDistance = away;
            best = foot;
        }
        last = point;
    }
    return best;
}

QPoint WhiteChart::pixelOf(int cct, int tint, const QRect& image) const
{
    const int limitedCct = std::clamp(cct, ColorUtils::minimumCct(), ColorUtils::maximumCct());
    const int limitedTint = std::clamp(tint, ColorUtils::minimumTint(), ColorUtils::maximumTint());
    return pixelAt(whitePoint(limitedCct, limitedTint), image);
}

QPoint WhiteChart::pixelAt(const QPointF& xy, const QRect& image) const
{
    constexpr int kFar = 1000000;
    const double column =
        image.width() * (xy.x() - m_chartRect.left()) / std::abs(m_chartRect.width());
    const double row =
        image.height() * (m_chartRect.top() - xy.y()) / std::abs(m_chartRect.height());
    return {limitI32(std::floor(column + 0.5), -kFar, kFar),
            limitI32(std::floor(row + 0.5), -kFar, kFar)};
}

QPointF WhiteChart::chromaticityAt(const QPoint& pixel, const QRect& image) const
{
    const double top = m_chartRect.bottom() + std::abs(m_chartRect.height());
    return {m_chartRect.left() + std::abs(m_chartRect.width()) * pixel.x() / image.width(),
            top - std::abs(m_chartRect.height()) * pixel.y() / image.height()};
}

const QImage& WhiteChart::mainImage()
{
    buildImages();
    return m_mainImage;
}

const QImage& WhiteChart::whiteImage()
{
    buildImages();
    return m_whiteImage;
}

void WhiteChart::buildImages()
{
    if (!m_mainImage.isNull()) {
        return;
    }
    const int height = truncI32(kImageWidth * std::abs(m_chartRect.height() / m_chartRect.width()));
    const QImage picture(QStringLiteral(":/RGBGamut.png"));
    const QRectF piece(kPieceLeft * picture.width(), kPieceTop * picture.height(),
                       kPieceWidth * picture.width(), kPieceHeight * picture.height());
    QImage base(kImageWidth, height, QImage::Format_ARGB32_Premultiplied);
    base.fill(Qt::transparent); // what shows where the picture is missing
    QPainter basePainter(&base);
    basePainter.setRenderHint(QPainter::SmoothPixmapTransform);
    basePainter.drawImage(QRectF(base.rect()), picture, piece);
    basePainter.end();

    const QImage shade = shading(base.rect());
    const auto shaded = [&base, &shade](double opacity) {
        QImage image = base;
        QPainter painter(&image);
        painter.setOpacity(opacity);
        painter.drawImage(0, 0, shade);
        return image;
    };
    m_mainImage = shaded(kMainOpacity);
    m_whiteImage = shaded(kWhiteOpacity);
}

/// Each pixel of the chart's area in the colour of its chromaticity, less saturated away from the
/// black-body locus; clear elsewhere.
QImage WhiteChart::shading(const QRect& image) const
{
    QImage shade(image.size(), QImage::Format_ARGB32_Premultiplied);
    shade.fill(Qt::transparent);

    // Pixels within reach of a locus point; the reach in pixels is a little more than needed.
    constexpr int kReach = 14;
    std::vector<bool> onLocus(static_cast<std::size_t>(image.width() * image.height()), false);
    const auto place = [&image](int column, int row) {
        return static_cast<std::size_t>(row * image.width() + column);
    };
    for (int cct = ColorUtils::minimumCct(); cct <= ColorUtils::maximumCct(); cct += kCctStep) {
        const QPointF locus = whitePoint(cct, 0);
        const QRect around = QRect(pixelAt(locus, image) - QPoint(kReach, kReach),
                                   QSize(2 * kReach + 1, 2 * kReach + 1))
                                 .intersected(image);
        for (int row = around.top(); row <= around.bottom(); ++row) {
            for (int column = around.left(); column <= around.right(); ++column) {
                const std::size_t at = place(column, row);
                if (!onLocus[at] &&
                    distance(chromaticityAt({column, row}, image), locus) < kOnChartDistance) {
                    onLocus[at] = true;
                }
            }
        }
    }

    std::vector<double> edges;
    for (int row = 0; row < image.height(); ++row) {
        crossings(m_outline, chromaticityAt({0, row}, image).y(), &edges);
        auto* const line = reinterpret_cast<QRgb*>(shade.scanLine(row));
        for (std::size_t i = 0; i + 1 < edges.size(); i += 2) {
            const QPointF left(edges[i], 0.0);
            const QPointF right(edges[i + 1], 0.0);
            const int first = std::max(pixelAt(left, image).x(), 0);
            const int last = std::min(pixelAt(right, image).x(), image.width() - 1);
            for (int column = first; column <= last; ++column) {
                const QPointF xy = chromaticityAt({column, row}, image);
                const QColor plain = VelaColor(xy.x(), xy.y()).toQColor(true).toHsv();
                const double factor = onLocus[place(column, row)] ? 1.0 : kOffLocusSaturation;
                line[column] = QColor::fromHsv(plain.hue(), truncI32(plain.saturation() * factor),
                                               plain.value(), 255)
                                   .rgb();
            }
        }
    }
    return shade;
}

bool WhiteChart::isOnChart(const VelaColor& color) const
{
    if (color.isBlack()) {
        return true;
    }
    const VelaColor xyY = color.toYxy(0, -1, -1);
    const QPointF xy(xyY.smallX(), xyY.smallY());
    return distance(xy, nearestPoint(xy)) < kOnChartDistance;
}

QColor WhiteChart::screenColor(const VelaColor& color)
{
    const KnownColor* const known = placeOf(color);
    if (known != nullptr && known->color.isValid()) {
        return known->screen;
    }
    const QColor screen = workOutScreenColor(color);
    remember(color, screen);
    return screen;
}

QColor WhiteChart::workOutScreenColor(const VelaColor& color)
{
    if (color.spec() == VelaColor::Yxy) {
        const QPointF xy(color.smallX(), color.smallY());
        if (distance(xy, nearestPoint(xy)) < kOnChartDistance) {
            return chartColor(color, color);
        }
    } else if (color.spec() == VelaColor::Nchannel && color.fromYxy() == 1 && isOnChart(color)) {
        return chartColor(color, color.toYxy(0, -1, -1));
    }
    return color.toQColor(true);
}

QColor WhiteChart::chartColor(const VelaColor& color, const VelaColor& xyY)
{
    const QString key = color.toString();
    const auto found = m_cache.constFind(key);
    if (found != m_cache.constEnd()) {
        return found.value();
    }
    int t = 0;
    int tint = 0;
    ColorUtils::xyToCctTint(xyY.smallX(), xyY.smallY(), &t, &tint);
    const QImage& image = whiteImage();
    const QRect rect = image.rect();
    const QPoint p = pixelOf(t, std::min(tint, tintLimit(t)), rect);
    const QColor q = QColor::fromRgb(image.pixel(std::clamp(p.x(), rect.left(), rect.right()),
                                                 std::clamp(p.y(), rect.top(), rect.bottom())));
    const double capY = xyY.capY();
    const double value = capY > 0.0 ? std::min(capY, 1.0) : 0.0; // 0 for NaN
    const QColor screen = QColor::fromHsvF(q.hueF(), q.saturationF(), value, color.alphaF());
    m_cache.insert(key, screen);
    return screen;
}

/// The place of `color`, or the free one where it would go; null while there are none.
WhiteChart::KnownColor* WhiteChart::placeOf(const VelaColor& color)
{
    if (m_known.empty()) {
        return nullptr;
    }
    const std::size_t mask = m_known.size() - 1;
    std::size_t at = hashOf(color) & mask;
    while (m_known[at].color.isValid() && m_known[at].color != color) {
        at = (at + 1) & mask;
    }
    return &m_known[at];
}

void WhiteChart::remember(const VelaColor& color, const QColor& screen)
{
    constexpr std::size_t kFirstSize = 256;
    constexpr std::size_t kGreatestSize = 65536;
    if (!(color == color)) { // an invalid colour, or one with a NaN, would never be found again
        return;
    }
    if (2 * (m_knownCount + 1) > m_known.size()) {
        const std::size_t size = std::max(kFirstSize, 2 * m_known.size());
        std::vector<KnownColor> old;
        old.swap(m_known);
        m_known.resize(std::min(size, kGreatestSize));
        m_knownCount = 0;
        if (size <= kGreatestSize) { // else start afresh: colours that no show repeats
            for (const KnownColor& known : old) {
                if (known.color.isValid()) {
                    *placeOf(known.color) = known;
                    ++m_knownCount;
                }
            }
        }
    }
    *placeOf(color) = {color, screen};
    ++m_knownCount;
}
