#pragma once

#include <QPoint>
#include <QVector>
#include <QtGlobal>

#include <array>
#include <cmath>

/// A show of all effect types, and what its lights must show at a given time: worked out from the
/// effects' rules, with nothing of the program's own painting. The order of operations counts:
/// half of the hues fall on a half step of the 8 bits that are sent.
namespace EffectRules {

/// What runs over lights of its own, in the order of the channels.
enum Part : int {
    Clock,       // a fade from black to white in a cycle: when a frame was painted
    Calendar,    // the same, slowly: in which cycle
    Chosen,      // Selection, which covers all lights, below the rest
    Fixed,       // Fixed Color
    White,       // White Fixed Color
    Letters,     // Text
    Nested,      // Meta Effect with a Fixed Color in it
    Fade,        // Cross Fade
    WhiteFade,   // White Cross Fade
    Wheel,       // Chasing Rainbow
    SweepRows,   // Sweep
    StreakRows,  // Streak
    Picture,     // Image Scroll
    Burst,       // XYBurst
    Spiral,      // XYSpiral
    List,        // Custom Rainbow
    Film,        // Animation
    Random,      // Random Color
    Sparks,      // Sparkle
    GroupSparks, // Sparkle Group
    PartCount
};

constexpr std::array<int, PartCount> kLightsOfPart = {1, 1, 2, 3, 2, 2, 2, 2, 2, 4,
                                                      5, 8, 5, 3, 4, 3, 2, 3, 6, 3};

constexpr int lightsOf(Part part)
{
    return kLightsOfPart[static_cast<std::size_t>(part)];
}

constexpr int firstLight(Part part)
{
    int first = 0;
    for (int i = 0; i < part; ++i) {
        first += lightsOf(Part(i));
    }
    return first;
}

constexpr int kLights = firstLight(PartCount);
static_assert(3 * kLights <= 512, "a frame is one datagram");

/// Whether the part's lights are rows of their own; otherwise they are one row.
constexpr bool isChase(Part part)
{
    return part == Wheel || part == SweepRows || part == StreakRows || part == List ||
           part == Random || part == GroupSparks;
}

/// Map units; twelve are a pixel.
inline QPoint placeOf(Part part, int light)
{
    if (part == Spiral) { // north, east, south and west of (12, 12)
        const QPoint places[] = {{12, 0}, {24, 12}, {12, 24}, {0, 12}};
        return places[light];
    }
    if (part == Film) { // a film is stretched over both extents of the group
        return {12 * light, 12 * light};
    }
    return {12 * light, 0};
}

struct Rgb
{
    int r;
    int g;
    int b;
    bool operator==(const Rgb& other) const { return r == other.r && g == other.g && b == other.b; }
};

constexpr int kCycleMs = 5000; // of every effect that has one phase
constexpr int kCalendarMs = 250000;
constexpr Rgb kBackground = {9, 8, 7};
constexpr Rgb kFixed = {10, 20, 30};
constexpr Rgb kLetters = {0x20, 0x30, 0x40};
constexpr Rgb kNested = {90, 80, 70};
constexpr Rgb kFadeFrom = {200, 0, 40};
constexpr Rgb kFadeTo = {0, 100, 40};
constexpr double kWheelOffset = 60.0; // degrees a row
constexpr Rgb kPassed = {255, 0, 0};
constexpr Rgb kAhead = {0, 0, 255};
constexpr Rgb kPulse = {200, 100, 50};
constexpr Rgb kTrack = {5, 6, 7};
constexpr int kStreakWidth = 2;
constexpr int kForwardTail = 2;
constexpr int kReverseTail = 3;
constexpr int kPictureWidth = 5;
constexpr double kScrollFrom = 1.0; // the picture's column under the centre
constexpr double kScrollTo = 5.0;
constexpr int kRingWidth = 200;
constexpr Rgb kSpark = {250, 0, 0};
constexpr Rgb kNight = {0, 0, 100};

// The list: each colour is held, then fades to the next.
constexpr int kEntries = 3;
constexpr int kHoldMs = 600;
constexpr int kEntryFadeMs = 400;
constexpr int kListMs = kEntries * (kHoldMs + kEntryFadeMs);
constexpr int kListOffsetMs = 700; // from row to row

inline Rgb entryColor(int index)
{
    const Rgb colors[kEntries] = {{250, 0, 0}, {0, 200, 0}, {0, 0, 150}};
    return colors[index];
}

inline Rgb columnOf(int x)
{
    return {40 * x + 3, 255 - 30 * x, 17};
}

constexpr int kFilmFrames = 10;
constexpr int kFilmStepMs = 500;
constexpr int kFilmRate = 1000 / kFilmStepMs;

inline Rgb filmColor(int frame)
{
    return {20 * frame + 5, 7, 250 - 20 * frame};
}

constexpr int kRandomMs = 1000;
constexpr int kRandomColors = 3;

/// A component 0.0..1.0 as a light's 32 bits hold it and its 8 bits on the wire show it.
inline int wire(double component)
{
    const auto held = static_cast<quint32>(component * 4294967295.0 + 0.5);
    return static_cast<int>(std::floor(held / 4294967295.0 * 255.0 + 0.5));
}

/// An 8-bit component, widened to 32 bits.
inline double component(int value)
{
    return static_cast<quint32>(value) * 0x01010101U / 4294967295.0;
}

/// Two opaque colours mixed, `t` being the second one's share.
inline Rgb mix(const Rgb& a, const Rgb& b, double t)
{
    if (t == 0.0) {
        return a;
    }
    if (t == 1.0) {
        return b;
    }
    const auto part = [t](int from, int to) {
        return wire(component(from) * (1.0 - t) + component(to) * t);
    };
    return {part(a.r, b.r), part(a.g, b.g), part(a.b, b.b)};
}

/// The saturated colour of a hue in whole degrees, 0 and up.
inline Rgb hueColor(int degrees)
{
    const double h = degrees % 360 * 100 / 6000.0; // hundredths of a degree are held
    const int sector = static_cast<int>(h);
    const double f = h - sector;
    const int falling = wire(1.0 - f);
    const int rising = wire(1.0 - (1.0 - f));
    const Rgb sectors[] = {{255, rising, 0},  {falling, 255, 0}, {0, 255, rising},
                           {0, falling, 255}, {rising, 0, 255},  {255, 0, falling}};
    return sectors[sector];
}

/// The list's rows, `elapsed` ms into it. Already the first row is an offset ahead.
inline QVector<Rgb> listColors(int elapsed)
{
    QVector<Rgb> rows;
    for (int row = 0; row < lightsOf(List); ++row) {
        const int t = (elapsed + (row + 1) * kListOffsetMs) % kListMs;
        const int index = t / (kHoldMs + kEntryFadeMs);
        const int left = (index + 1) * (kHoldMs + kEntryFadeMs) - t;
        const double f = left <= kEntryFadeMs ? left / (kEntryFadeMs / 1000.0 * 1000.0) : 1.0;
        rows.append(mix(entryColor(index), entryColor((index + 1) % kEntries), 1.0 - f));
    }
    return rows;
}

inline Rgb sparkleColor(int level)
{
    return level == 0 ? kNight : mix(kSpark, kNight, 1.0 - level / 1000.0);
}

inline Rgb groupSparkleColor(int level)
{
    const double d = level / 1000.0;
    const auto part = [d](int spark, int night) { return int((spark - night) * d + night); };
    return {part(kSpark.r, kNight.r), part(kSpark.g, kNight.g), part(kSpark.b, kNight.b)};
}

inline Rgb sweepColor(int row, int ms)
{
    const double edge = ms % kCycleMs * (lightsOf(SweepRows) + 1.0) / kCycleMs;
    if (row == static_cast<int>(edge)) {
        return mix(kPassed, kAhead, 1.0 - (edge - row));
    }
    return row < edge ? kPassed : kAhead;
}

inline Rgb streakColor(int row, int ms)
{
    const double path = lightsOf(StreakRows) - kStreakWidth + 1.0;
    const int head = static_cast<int>(path * (ms % kCycleMs) / kCycleMs);
    const int front = head + kStreakWidth;
    if (row >= head && row < front) {
        return kPulse;
    }
    if (row > head - kReverseTail && row < head) {
        return mix(kPulse, kTrack, 1.0 - (1.0 - double(head - row) / kReverseTail));
    }
    if (row >= front && row < front + kForwardTail) {
        return mix(kPulse, kTrack, 1.0 - (1.0 - double(row - front) / kForwardTail));
    }
    return kTrack;
}

/// The lights lie a column apart; those left of the centre fall one column further to the left.
inline Rgb pictureColor(int light, int ms)
{
    const int offset = light - 2 - (light < 2 ? 1 : 0);
    const double t = double(ms % kCycleMs) / kCycleMs;
    const double x = (kScrollTo - kScrollFrom) * t + kScrollFrom + offset;
    return x >= 0.0 && x < kPictureWidth ? columnOf(static_cast<int>(x)) : kBackground;
}

/// What the lights of a part show `ms` after the show's start, for the parts that follow from the
/// time alone.
inline QVector<Rgb> expected(Part part, int ms)
{
    const int count = lightsOf(part);
    const double phase = ms % kCycleMs / double(kCycleMs);
    QVector<Rgb> lights;
    for (int light = 0; light < count; ++light) {
        switch (part) {
        case Clock:
            lights.append(mix({0, 0, 0}, {255, 255, 255}, phase));
            break;
        case Calendar:
            lights.append(mix({0, 0, 0}, {255, 255, 255}, ms % kCalendarMs / double(kCalendarMs)));
            break;
        case Chosen:
            lights.append(kBackground);
            break;
        case Fixed:
            lights.append(kFixed);
            break;
        case White: // all warm, which is red and blue, at 80 percent of 255
            lights.append({204, 0, 204});
            break;
        case Letters:
            lights.append(kLetters);
            break;
        case Nested:
            lights.append(kNested);
            break;
        case Fade:
            lights.append(mix(kFadeFrom, kFadeTo, phase));
            break;
        case WhiteFade: // from all cool, which is green, to all warm
            lights.append(mix({0, 255, 0}, {255, 0, 255}, phase));
            break;
        case Wheel: {
            const auto drop = [](double hue) {
                while (hue > 360.0) {
                    hue -= 360.0;
                }
                return hue;
            };
            const int turned = static_cast<int>(ms / 1000.0 * (360.0 / (kCycleMs / 1000.0)));
            lights.append(hueColor(static_cast<int>(drop(light * kWheelOffset + drop(turned)))));
            break;
        }
        case SweepRows:
            lights.append(sweepColor(light, ms));
            break;
        case StreakRows:
            lights.append(streakColor(light, ms));
            break;
        case Picture:
            lights.append(pictureColor(light, ms));
            break;
        case Burst: { // from its first light on: the three lie 0, 1 and 2 half extents from it
            const int steps = static_cast<int>(1.0 / (kCycleMs / 1000.0) * ms);
            const double hue = 36000.0 / kRingWidth * light + steps / 1000.0 * 360.0;
            lights.append(hueColor(static_cast<int>(hue)));
            break;
        }
        case Spiral: { // an arm without a twist: the hue is the angle, against the clock
            const int angles[] = {90, 0, 270, 180};
            const double rate = 360.0 / (kCycleMs / 1000.0 * 1000.0);
            lights.append(hueColor(angles[light] + static_cast<int>(ms * rate)));
            break;
        }
        default:
            break;
        }
    }
    return lights;
}

} // namespace EffectRules
