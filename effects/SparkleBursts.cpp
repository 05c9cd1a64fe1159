#include "effects/SparkleBursts.h"

#include "color/Numeric.h"

#include <QTime>

#include <algorithm>
#include <cstdlib>

namespace {

/// 0 to modulus - 1, and 0 for a modulus that leaves nothing to draw from.
qint32 draw(qint64 modulus)
{
    return static_cast<qint32>(std::rand() % std::max<qint64>(modulus, 1));
}

} // namespace

namespace SparkleBursts {

void seed()
{
    std::srand(static_cast<unsigned int>(QTime::currentTime().msec()));
}

quint32 drawFirstWait(qint32 density)
{
    return static_cast<quint32>(draw(density > 0 ? 1000 / density : 0));
}

quint32 drawWait(double timeConstant)
{
    return static_cast<quint32>(draw(truncI32(1000.0 / timeConstant)));
}

void burst(std::vector<qint32>& levels, qint32 density)
{
    const qint64 count = static_cast<qint64>(levels.size());
    const int sparkles = std::min(draw(qint64(density) + 1), kMostInBurst);
    for (int i = 0; i < sparkles; ++i) {
        levels[static_cast<std::size_t>(draw(count))] = kFresh;
    }
}

void decay(std::vector<qint32>& levels, qint32 rate, qint64 elapsedMs)
{
    // At most a tenth of the 32-bit range, so that no level falls past the least integer.
    const qint32 share =
        static_cast<qint32>(static_cast<quint32>(rate) * static_cast<quint32>(elapsedMs) / 10U);
    for (qint32& level : levels) {
        level = std::max(level - share, 0);
    }
}

} // namespace SparkleBursts
