#pragma once

#include <QList>
#include <QPointF>
#include <QString>
#include <QtGlobal>

class Curve;
class VelaColor;
struct ColorProfile;

/// The maths of colour: curves, drive levels, black body, fixture profiles, the solver.
namespace ColorUtils {

/// A fixture profile id, 0..46.
using TintweaveProfileID = int;

/// CIE Yxy with Y as a drive level 0..1 (not a luminance).
struct XyY
{
    double Y = 0.0;
    double x = 0.0;
    double y = 0.0;
};

/// How drive levels become bytes: through the curves' tables, or through their formulas.
enum QuantizeKind : int { QuantizeTables = 1, QuantizeFormula = 3 };

// --- Curves and channel levels (Curve.cpp, ChannelLevels.cpp)

/// The curve of `id` (0 linear, 1 normal, 2 tungsten); null for any other. Built at first use, on
/// the main thread.
const Curve* curve(int id);
/// `forward` reads the curve, else its inverse; a null curve or table is the identity.
void lut8Lookup(const Curve* curve, quint8 value, quint8* out, bool forward);
void lut16Lookup(const Curve* curve, quint16 value, quint16* out);
/// Channel level 0..65535 to linear drive 0..1.
double linearizeNormal(quint16 level);
double linearizeTungsten(quint16 level);
/// Linear 0..65535 to channel level at 16 bits / at 8 bits; ids other than 1 and 2 act as linear.
void delinearize16(int curveId, const quint16* in, quint16* out, int count);
void delinearize8(int curveId, const quint16* in, quint8* out, int count);
/// Drive levels 0..1 to 16-bit channel levels.
void quantize(int count, const double* drives, quint16* out, int curveId, int kind);
/// `count` drive levels 0..1 to `count` x `width` bytes; width 2 is high byte first, a width other
/// than 1 or 2 writes nothing. `forward` picks the direction of the 8-bit table.
void writeChannels(int count, int width, const double* drives, quint8* bytes, int curveId, int kind,
                   bool forward);

// --- Drives to chromaticity (ChannelDrives.cpp)

/// `out->Y` is the largest linearised drive. Black gives zeros; a colour without drives gives NaN
/// chromaticity. Ids other than 1 and 2 act as linear.
void channelDrivesToXyY(const VelaColor& color, const ColorProfile& profile, XyY* out, int curveId);

// --- Black body and distances (BlackBody.cpp)

constexpr int minimumCct()
{
    return 1900;
}
constexpr int maximumCct()
{
    return 11000;
}
constexpr int minimumTint()
{
    return -32767;
}
constexpr int maximumTint()
{
    return 32767;
}
/// CIE 1931 xy to correlated colour temperature in kelvin and tint -32767..32767. False, with the
/// outputs untouched, outside the plane's range.
bool xyToCctTint(double x, double y, int* cct, int* tint);
/// False, with x = y = 0, for a temperature outside 1900..11000 K.
bool cctTintToXy(int cct, int tint, double* x, double* y);
bool cctToXy(int cct, double* x, double* y);
/// CIE 1931 xy to CIE 1976 u'v' and back.
QPointF xyToUv(double x, double y);
QPointF uvToXy(double u, double v);
/// Distance of two chromaticities (xy) in the CIE 1960 plane.
double deltaUv(double x0, double y0, double x1, double y1);
/// Distance from `p` to the segment `a` `b`; `nearest` (may be null) takes the foot point.
double distanceToSegment(const QPointF& a, const QPointF& b, const QPointF& p, QPointF* nearest);

// --- Fixture and mode tables (FixtureTable.cpp, ModeTable.cpp)

/// Channels of a layout id 1..11; 0 for any other.
int channelCount(int layout);
/// For ids outside 0..46 the values of id 0.
int layoutOfProfile(TintweaveProfileID id);
int curveOfProfile(TintweaveProfileID id);
int nativeModeOfProfile(TintweaveProfileID id);
QString nameOfProfile(TintweaveProfileID id);
QList<int> modesOfProfile(TintweaveProfileID id);
/// 0..46 in order, without 4 when the flag is false.
QList<int> allProfiles(bool includeSingleChannel);

// --- Solver and channel mapping (Solver.cpp, ChannelMap.cpp)

/// The brightest mix of the profile's emitters with the chromaticity of `target`, scaled by its Y.
/// `out` takes channelCount(layout) drive levels 0..1; all zeros where no mix exists. `clip` moves
/// a target outside the gamut to its nearest edge. primarySet 0 is calibrated, 1 nominal.
void solve(const XyY& target, double* out, int layout, TintweaveProfileID profileId, bool clip,
           int primarySet);
/// As solve, then to 16-bit levels through the formula of `curve`.
void solveToLevels(const XyY& target, quint16* out, int layout, TintweaveProfileID profileId,
                   int curve, bool clip, int primarySet);
/// Fills `channelCount` x `byteWidth` bytes for a fixture. Unknown modes and profiles act as 0.
/// Allocates nothing.
void mapToChannels(const VelaColor& color, bool tintweave, int channelCount, int byteWidth,
                   quint8* out, int curveDirect, int curveSolved, TintweaveProfileID profileId,
                   int mode);

} // namespace ColorUtils
