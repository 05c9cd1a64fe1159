#pragma once

#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/ProfileTable.h"

#include <QPointF>

#include <algorithm>
#include <cmath>

/// The solver written down step by step, with nothing worked out ahead: what the program's own
/// must equal to the last bit, and what its speed is measured against.
namespace PlainSolve {

constexpr int kMost = 8; // channels

inline QPointF clipped(const ColorProfile& profile, const QPointF& p)
{
    if (profile.gamut.containsPoint(p, Qt::OddEvenFill)) {
        return p;
    }
    QPointF best = p;
    double smallest = HUGE_VAL;
    for (int i = 0; i < profile.gamutPoints.size(); ++i) {
        const QPointF a = profile.gamutPoints.at(i);
        const QPointF b = profile.gamutPoints.at((i + 1) % profile.gamutPoints.size());
        QPointF foot;
        const double distance = ColorUtils::distanceToSegment(a, b, p, &foot);
        if (distance < smallest) {
            smallest = distance;
            best = foot;
        }
    }
    return best;
}

inline double snapped(double drive)
{
    if (drive > -5e-5 && drive < 0.0) {
        return 0.0;
    }
    if (drive > 1.0 && drive < 1.00005) {
        return 1.0;
    }
    return drive;
}

inline void solve(const ColorUtils::XyY& target, double* out, int layout, int profileId, bool clip,
                  int primarySet)
{
    const int channels = ColorUtils::channelCount(layout);
    const ColorProfile& profile = *ProfileTable::instance().profile(profileId, layout, primarySet);
    const int n = std::min({channels, profile.X.size(), profile.Y.size(), profile.Z.size()});
    QPointF xy(target.x, target.y);
    if (clip) {
        xy = clipped(profile, xy);
    }
    const double a = xy.y() / xy.x();
    const double b = xy.y() / (1.0 - xy.x() - xy.y());
    double A[kMost] = {};
    double B[kMost] = {};
    for (int k = 0; k < n; ++k) {
        A[k] = a * profile.X.at(k) - profile.Y.at(k);
        B[k] = b * profile.Z.at(k) - profile.Y.at(k);
    }

    double best[kMost] = {};
    double bestLight = 0.0;
    const int patterns = n < 3 ? 0 : (1 << (n - 2)) - 1;
    for (int i = 0; i < n; ++i) {
        for (int j = i + 1; j < n; ++j) {
            for (int p = 1; p <= patterns; ++p) {
                double c[kMost] = {};
                double sumA = 0.0;
                double sumB = 0.0;
                int bit = 0;
                for (int k = 0; k < n; ++k) {
                    if (k != i && k != j) {
                        c[k] = (p >> bit) & 1;
                        ++bit;
                        sumA += c[k] * A[k];
                        sumB += c[k] * B[k];
                    }
                }
                const double r1 = -sumA;
                const double r2 = -sumB;
                const float m = static_cast<float>(B[i] / A[i]);
                const float inverseJ =
                    static_cast<float>(1.0 / (B[j] - static_cast<double>(m) * A[j]));
                const float inverseI = static_cast<float>(1.0 / A[i]);
                const double driveJ =
                    (r2 - static_cast<double>(m) * r1) * static_cast<double>(inverseJ);
                const double driveI = (r1 - A[j] * driveJ) * static_cast<double>(inverseI);
                c[i] = snapped(driveI);
                c[j] = snapped(driveJ);
                bool valid = true;
                for (const double drive : c) {
                    valid = valid && drive >= 0.0 && drive <= 1.0; // false for NaN
                }
                if (!valid) {
                    continue;
                }
                double light = 0.0;
                for (int k = 0; k < n; ++k) {
                    light += c[k] * profile.Y.at(k);
                }
                if (light > bestLight) {
                    bestLight = light;
                    std::copy(c, c + n, best);
                }
            }
        }
    }
    for (int k = 0; k < channels; ++k) {
        out[k] = target.Y * best[k];
    }
}

} // namespace PlainSolve
