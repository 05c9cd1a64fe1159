#include "color/GammaAnchors.h"

#include <cstddef>

namespace {

/// Half up; `v` is not negative.
constexpr int roundedUp(double v)
{
    return static_cast<int>(v + 0.5);
}

/// The quadratic of the normal curve at the levels of the 8-bit values, in steps of 4: the levels
/// have 14 bits.
constexpr GammaAnchors makeNormal()
{
    GammaAnchors anchors{};
    for (int i = 0; i < 256; ++i) {
        const double x = 257.0 * i;
        const double level = 1.425e-5 * x * x + 0.065898 * x;
        anchors[static_cast<std::size_t>(i)] = static_cast<quint16>(4 * roundedUp(level / 4.0));
    }
    return anchors;
}

constexpr int kTungstenLowEnd = 16;
constexpr quint16 kTungstenLow[kTungstenLowEnd] = {0,  1,  2,  3,  4,  5,  7,  9,
                                                   11, 14, 17, 20, 24, 28, 33, 38};
constexpr int kTungstenHighBegin = 250;
constexpr quint16 kTungstenHigh[256 - kTungstenHighBegin] = {62522, 63095, 63670,
                                                             64247, 64880, 65535};

/// The measured ends, and between them the two quadratics that the 8-bit levels are solved from.
constexpr GammaAnchors makeTungsten()
{
    GammaAnchors anchors{};
    for (int i = 0; i < 256; ++i) {
        int level = 0;
        if (i < kTungstenLowEnd) {
            level = kTungstenLow[i];
        } else if (i >= kTungstenHighBegin) {
            level = kTungstenHigh[i - kTungstenHighBegin];
        } else {
            level = roundedUp(0.221829 * i * i - 1.002 * i + 4.339);
            if (level > 321) {
                level = roundedUp(1.31 * i * i - 83.603 * i + 1573.0);
            }
        }
        anchors[static_cast<std::size_t>(i)] = static_cast<quint16>(level);
    }
    return anchors;
}

constexpr GammaAnchors kNormal = makeNormal();
constexpr GammaAnchors kTungsten = makeTungsten();

} // namespace

const GammaAnchors& normalGammaAnchors()
{
    return kNormal;
}

const GammaAnchors& tungstenGammaAnchors()
{
    return kTungsten;
}
