#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/ProfileTable.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kMaxChannels = 8; // of any layout

bool isSamePoint(const QPointF& a, const QPointF& b)
{
    constexpr double kTolerance = 1e-12;
    return std::abs(a.x() - b.x()) <= kTolerance && std::abs(a.y() - b.y()) <= kTolerance;
}

/// The point of the gamut's edges nearest to `p`; `p` itself for a gamut without a finite edge.
QPointF nearestOnGamut(const QVector<QPointF>& corners, const QPointF& p)
{
    QPointF best = p;
    double bestDistance = std::numeric_limits<double>::infinity();
    const int count = corners.size();
    for (int i = 0; i < count; ++i) {
        const QPointF& a = corners.at(i);
        const QPointF& b = corners.at(i + 1 < count ? i + 1 : 0);
        const QPointF& end = isSamePoint(a, b) ? a : b;
        QPointF foot;
        const double distance = ColorUtils::distanceToSegment(a, end, p, &foot);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = foot;
        }
    }
    return best;
}

// A drive just outside 0..1 is taken as the bound: it is the rounding of the single-precision
// reciprocals.
bool isNearUnit(double drive)
{
    return drive > -5e-5 && drive < 1.00005;
}

double snapped(double drive)
{
    if (drive < 0.0) {
        return 0.0;
    }
    return drive > 1.0 ? 1.0 : drive;
}

/// The brightest mix of `N` emitters that hits the chromaticity of a = y/x and b = y/(1-x-y), into
/// `best`; untouched where there is none.
///
/// The optimum of this linear programme has at most two channels strictly between 0 and 1. So each
/// pair of channels is solved for against every way of switching the others fully on or off, but
/// for all off, which no optimum needs. The first of equally bright mixes stays. What depends on
/// the first channel, on the pair, or on the set of full channels alone is worked out once; each
/// operation is the plain form's, in its order, so that the result is the same to the last bit.
template <int N>
void brightestMix(const ColorProfile& profile, double a, double b, double* best)
{
    constexpr int kOthers = N - 2;
    constexpr int kPatterns = (1 << kOthers) - 1;
    const double* const X = profile.X.constData();
    const double* const Y = profile.Y.constData();
    const double* const Z = profile.Z.constData();

    double A[N];
    double B[N];
    double poison = 0.0;
    for (int k = 0; k < N; ++k) {
        A[k] = a * X[k] - Y[k];
        B[k] = b * Z[k] - Y[k];
        poison += 0.0 * A[k] + 0.0 * B[k];
    }
    if (!(poison == 0.0)) {
        return; // an infinity or NaN in the target: nothing can hit it
    }

    double bestLight = 0.0;
    for (int i = 0; i < N - 1; ++i) {
        const double pivot = static_cast<float>(B[i] / A[i]);
        const double inverseI = static_cast<float>(1.0 / A[i]);
        for (int j = i + 1; j < N; ++j) {
            const double inverseJ = static_cast<float>(1.0 / (B[j] - pivot * A[j]));
            int others[kOthers];
            double sumA[kPatterns + 1] = {0.0}; // by pattern, in ascending channels
            double sumB[kPatterns + 1] = {0.0};
            for (int k = 0, n = 0; k < N; ++k) {
                if (k == i || k == j) {
                    continue;
                }
                others[n] = k;
                for (int p = 0; p < (1 << n); ++p) {
                    sumA[p | (1 << n)] = sumA[p] + A[k];
                    sumB[p | (1 << n)] = sumB[p] + B[k];
                }
                ++n;
            }
            for (int p = 1; p <= kPatterns; ++p) {
                const double r1 = -sumA[p];
                const double r2 = -sumB[p];
                const double driveJ = (r2 - pivot * r1) * inverseJ;
                if (!isNearUnit(driveJ)) { // also false for NaN
                    continue;
                }
                const double driveI = (r1 - A[j] * driveJ) * inverseI;
                if (!isNearUnit(driveI)) {
                    continue;
                }
                double mix[N];
                mix[i] = snapped(driveI);
                mix[j] = snapped(driveJ);
                for (int n = 0; n < kOthers; ++n) {
                    mix[others[n]] = (p & (1 << n)) != 0 ? 1.0 : 0.0;
                }
                double light = 0.0;
                for (int k = 0; k < N; ++k) {
                    light += mix[k] * Y[k];
                }
                if (light > bestLight) {
                    bestLight = light;
                    std::copy(mix, mix + N, best);
                }
            }
        }
    }
}

} // namespace

namespace ColorUtils {

void solve(const XyY& target, double* out, int layout, TintweaveProfileID profileId, bool clip,
           int primarySet)
{
    const int channels = channelCount(layout);
    const ColorProfile& profile = *ProfileTable::instance().profile(profileId, layout, primarySet);
    QPointF xy(target.x, target.y);
    if (clip && !profile.gamut.containsPoint(xy, Qt::OddEvenFill)) {
        xy = nearestOnGamut(profile.gamutPoints, xy);
    }
    const double a = xy.y() / xy.x();
    const double b = xy.y() / (1.0 - xy.x() - xy.y());

    double best[kMaxChannels] = {};
    switch (std::min({channels, profile.X.size(), profile.Y.size(), profile.Z.size()})) {
    case 3:
        brightestMix<3>(profile, a, b, best);
        break;
    case 4:
        brightestMix<4>(profile, a, b, best);
        break;
    case 5:
        brightestMix<5>(profile, a, b, best);
        break;
    default: // one or two channels have no mix to find
        break;
    }
    for (int k = 0; k < channels; ++k) {
        out[k] = target.Y * best[k];
    }
}

void solveToLevels(const XyY& target, quint16* out, int layout, TintweaveProfileID profileId,
                   int curve, bool clip, int primarySet)
{
    double drives[kMaxChannels] = {};
    solve(target, drives, layout, profileId, clip, primarySet);
    quantize(channelCount(layout), drives, out, curve, QuantizeFormula);
}

} // namespace ColorUtils
