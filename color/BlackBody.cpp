#include "color/ColorUtils.h"
#include "color/Numeric.h"

#include <QLineF>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// A point of the CIE 1976 u'v' plane.
struct Uv
{
    double u;
    double v;
};

/// One bin of temperature. p0 and p1: the Planckian locus at its ends; q0 and q1: the same ends at
/// full positive tint; c: the point through which its isotemperature lines run.
struct TemperatureBin
{
    int low;
    int high;
    int step;
    Uv p0;
    Uv p1;
    Uv q0;
    Uv q1;
    Uv c;
};

constexpr int kBinCount = 22;
// clang-format off
constexpr TemperatureBin kBins[kBinCount] = { // one bin a line
    {1900, 2000, 10, {0.313627, 0.539567}, {0.305048, 0.538599}, {0.312373, 0.569508}, {0.303289, 0.568482}, {0.331266, 0.093346}},
    {2000, 2100, 10, {0.305048, 0.538599}, {0.297243, 0.537412}, {0.303289, 0.568482}, {0.294959, 0.567216}, {0.331266, 0.093346}},
    {2100, 2200, 10, {0.297243, 0.537412}, {0.290123, 0.536041}, {0.294959, 0.567216}, {0.287302, 0.565741}, {0.297919, 0.352913}},
    {2200, 2300, 10, {0.290123, 0.536041}, {0.283615, 0.534515}, {0.287302, 0.565741}, {0.280248, 0.564087}, {0.297919, 0.352913}},
    {2300, 2400, 10, {0.283615, 0.534515}, {0.277652, 0.532861}, {0.280248, 0.564087}, {0.273735, 0.562280}, {0.297919, 0.352913}},
    {2400, 2500, 10, {0.277652, 0.532861}, {0.272177, 0.531102}, {0.273735, 0.562280}, {0.267707, 0.560342}, {0.297919, 0.352913}},
    {2500, 2700, 10, {0.272177, 0.531102}, {0.262498, 0.527351}, {0.267707, 0.560342}, {0.256939, 0.556169}, {0.297919, 0.352913}},
    {2700, 2850, 10, {0.262498, 0.527351}, {0.256190, 0.524401}, {0.256939, 0.556169}, {0.249834, 0.552846}, {0.295405, 0.352913}},
    {2850, 3000, 10, {0.256190, 0.524401}, {0.250571, 0.521385}, {0.249834, 0.552846}, {0.243442, 0.549414}, {0.293405, 0.352913}},
    {3000, 3250, 10, {0.250571, 0.521385}, {0.242486, 0.516305}, {0.243442, 0.549414}, {0.234146, 0.543572}, {0.293405, 0.352913}},
    {3250, 3500, 10, {0.242486, 0.516305}, {0.235712, 0.511262}, {0.234146, 0.543572}, {0.226262, 0.537702}, {0.293405, 0.352913}},
    {3500, 3750, 10, {0.235712, 0.511262}, {0.229987, 0.506337}, {0.226262, 0.537702}, {0.219535, 0.531914}, {0.292905, 0.352913}},
    {3750, 4000, 10, {0.229987, 0.506337}, {0.225111, 0.501581}, {0.219535, 0.531914}, {0.213761, 0.526283}, {0.292905, 0.352913}},
    {4000, 4500, 10, {0.225111, 0.501581}, {0.217311, 0.492686}, {0.213761, 0.526283}, {0.204464, 0.515678}, {0.283318, 0.374872}},
    {4500, 5000, 10, {0.217311, 0.492686}, {0.211424, 0.484674}, {0.204464, 0.515678}, {0.197409, 0.506075}, {0.283318, 0.374872}},
    {5000, 5500, 10, {0.211424, 0.484674}, {0.206882, 0.477526}, {0.197409, 0.506075}, {0.191960, 0.497502}, {0.281822, 0.377156}},
    {5500, 5700, 10, {0.206882, 0.477526}, {0.205352, 0.474895}, {0.191960, 0.497502}, {0.190127, 0.494348}, {0.281822, 0.377156}},
    {5700, 6000, 10, {0.205352, 0.474895}, {0.203308, 0.471177}, {0.190127, 0.494348}, {0.187677, 0.489892}, {0.281822, 0.377156}},
    {6000, 6500, 10, {0.203308, 0.471177}, {0.200449, 0.465543}, {0.187677, 0.489892}, {0.184260, 0.483158}, {0.281822, 0.377156}},
    {6500, 8000, 10, {0.200449, 0.465543}, {0.194625, 0.452115}, {0.184260, 0.483158}, {0.177339, 0.467206}, {0.283986, 0.374565}},
    {8000, 10000, 10, {0.194625, 0.452115}, {0.190319, 0.439897}, {0.177339, 0.467206}, {0.172280, 0.452854}, {0.293570, 0.365700}},
    {10000, 12500, 10, {0.190319, 0.439897}, {0.187398, 0.430014}, {0.172280, 0.452854}, {0.168890, 0.441383}, {0.299184, 0.361698}},
};
// clang-format on

constexpr double kFullTint = 32767.0;
constexpr double kIsotemperatureLength = 0.7; // from c, in u'v'
constexpr double kLocusLengthening = 1.5;     // of the chord p0 p1, beyond p1

double distance(Uv a, Uv b)
{
    return std::sqrt((b.u - a.u) * (b.u - a.u) + (b.v - a.v) * (b.v - a.v));
}

/// How far a point is from p0 on its way to p1, from its distances to both.
double share(double fromP0, double fromP1)
{
    return fromP0 / (fromP0 + fromP1);
}

/// The way, in u'v', from the locus to full tint at the share `w` of the bin.
double tintLength(const TemperatureBin& bin, double w)
{
    const Uv full = {bin.q0.u + (bin.q1.u - bin.q0.u) * w, bin.q0.v + (bin.q1.v - bin.q0.v) * w};
    const Uv locus = {bin.p0.u + (bin.p1.u - bin.p0.u) * w, bin.p0.v + (bin.p1.v - bin.p0.v) * w};
    return distance(full, locus);
}

/// The slope of the isotemperature line through `p`; meant to be without the quadrant.
double isotemperatureAngle(const TemperatureBin& bin, Uv p)
{
    return std::atan((bin.c.v - p.v) / (bin.c.u - p.u));
}

const TemperatureBin* binOf(int cct)
{
    for (const TemperatureBin& bin : kBins) {
        if (bin.low <= cct && cct < bin.high) {
            return &bin;
        }
    }
    return nullptr;
}

QLineF lengthened(Uv from, Uv to, double length)
{
    QLineF line(from.u, from.v, to.u, to.v);
    line.setLength(length);
    return line;
}

/// The bin whose locus the isotemperature line through `p` crosses, and where.
const TemperatureBin& crossedBin(Uv p, Uv* crossing)
{
    for (const TemperatureBin& bin : kBins) {
        QPointF m;
        const QLineF iso = lengthened(bin.c, p, kIsotemperatureLength);
        const QLineF locus =
            lengthened(bin.p0, bin.p1, distance(bin.p0, bin.p1) * kLocusLengthening);
        const QLineF::IntersectType kind = iso.intersects(locus, &m);
        *crossing = {m.x(), m.y()};
        if (kind == QLineF::BoundedIntersection) {
            return bin;
        }
    }
    return kBins[kBinCount - 1]; // taken with whatever crossing its lines have
}

/// Truncated towards zero; NaN gives 0.
int limited(double v)
{
    return limitI32(v, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
}

} // namespace

namespace ColorUtils {

QPointF xyToUv(double x, double y)
{
    const double w = 12.0 * y - 2.0 * x + 3.0;
    return {4.0 * x / w, 9.0 * y / w};
}

QPointF uvToXy(double u, double v)
{
    const double w = 6.0 * u - 16.0 * v + 12.0;
    return {9.0 * u / w, 4.0 * v / w};
}

bool cctTintToXy(int cct, int tint, double* x, double* y)
{
    *x = 0.0;
    *y = 0.0;
    const TemperatureBin* const bin = binOf(cct);
    if (bin == nullptr || cct > maximumCct()) {
        return false;
    }
    const int steps = (bin->high - bin->low) / bin->step;
    // The order of these operations decides at which kelvin a step falls.
    const int i = static_cast<int>(std::floor(static_cast<double>(cct - bin->low) /
                                              static_cast<double>(bin->high - bin->low) * steps));
    Uv p = {bin->p0.u + (bin->p1.u - bin->p0.u) * i / steps,
            bin->p0.v + (bin->p1.v - bin->p0.v) * i / steps};
    if (tint != 0) {
        const double length = tintLength(*bin, share(distance(bin->p0, p), distance(bin->p1, p)));
        const double angle = isotemperatureAngle(*bin, p);
        p.u -= std::cos(angle) * length * tint / kFullTint;
        p.v -= std::sin(angle) * length * tint / kFullTint;
    }
    const QPointF xy = uvToXy(p.u, p.v);
    *x = xy.x();
    *y = xy.y();
    return true;
}

bool cctToXy(int cct, double* x, double* y)
{
    return cctTintToXy(cct, 0, x, y);
}

bool xyToCctTint(double x, double y, int* cct, int* tint)
{
    if (!(x >= 0.0 && x <= 0.8 && y >= 0.0 && y <= 0.9)) {
        return false;
    }
    const QPointF uv = xyToUv(x, y);
    const Uv p = {uv.x(), uv.y()};
    if (!(p.u >= 0.0 && p.u <= 0.6 && p.v >= 0.0 && p.v <= 0.6)) {
        return false;
    }
    Uv m = {0.0, 0.0};
    const TemperatureBin& bin = crossedBin(p, &m);
    const double w = share(distance(bin.p0, m), distance(bin.p1, m));
    const int steps = (bin.high - bin.low) / bin.step;
    *cct = bin.low + bin.step * limited(std::floor(w * steps + 0.5));

    const double sign = distance(bin.c, p) > distance(bin.c, m) ? kFullTint : -kFullTint;
    const double length = tintLength(bin, w);
    const double angle = isotemperatureAngle(bin, m);
    const Uv n = {m.u + std::cos(angle) * (-length * sign / kFullTint),
                  m.v + std::sin(angle) * (-length * sign / kFullTint)};
    *tint = limited(distance(p, m) / distance(m, n) * sign);
    return true;
}

double deltaUv(double x0, double y0, double x1, double y1)
{
    const QPointF a = xyToUv(x0, y0);
    const QPointF b = xyToUv(x1, y1);
    const double du = b.x() - a.x();
    const double dv = (b.y() - a.y()) / 1.5;
    return std::sqrt(du * du + dv * dv);
}

double distanceToSegment(const QPointF& a, const QPointF& b, const QPointF& p, QPointF* nearest)
{
    const QPointF way = b - a;
    const double squared = QPointF::dotProduct(way, way);
    double t = 0.0;
    if (squared > 0.0) {
        t = std::min(std::max(QPointF::dotProduct(p - a, way) / squared, 0.0), 1.0);
    }
    const QPointF foot = t < 1.0 ? a + way * t : b;
    if (nearest != nullptr) {
        *nearest = foot;
    }
    const QPointF off = p - foot;
    return std::sqrt(QPointF::dotProduct(off, off));
}

} // namespace ColorUtils
