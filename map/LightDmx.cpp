#include "color/ColorUtils.h"
#include "map/DmxCache.h"
#include "map/Light.h"

#include <algorithm>
#include <cstddef>

/// Makes bytes() those of the painted colour; false for an invalid one. `tag` is that colour's.
bool Light::refreshBytes(quint64 tag)
{
    const VelaColor& color = mixValue();
    if (!color.isValid()) {
        return false;
    }
    if (color != m_lastColor) {
        m_lastColor = color;
        DmxCache& cache = DmxCache::instance();
        quint8* const own = m_frame.footprint <= kInlineBytes ? m_frame.bytes : m_wideBytes;
        const DmxCache::Block* const block = cache.find(color, m_cacheForm, tag);
        if (block != nullptr) {
            std::copy_n(block->begin(), m_frame.footprint, own);
        } else {
            DmxCache::Block fresh{};
            convert(color, fresh.data());
            std::copy_n(fresh.begin(), m_frame.footprint, own);
            cache.insert(color, m_cacheForm, fresh, tag);
        }
    }
    m_frame.sentTag = tag;
    return true;
}

void Light::convert(const VelaColor& color, quint8* block) const
{
    // Two chemistries lack their last emitter; a third drives its last one three times over.
    constexpr quint32 kDarkLast = 251;
    constexpr quint32 kDarkLastToo = 252;
    constexpr quint32 kTripleLast = 254;
    const quint32 chemistry = m_settings.ledChemistry;
    const bool halfFull = m_settings.halfFull;
    const std::ptrdiff_t width = m_channelWidth;
    const std::ptrdiff_t pixel = width * m_channelCount;
    const int channels = halfFull && chemistry == kTripleLast ? 4 : m_channelCount;
    ColorUtils::mapToChannels(color, forwardFlag(), channels, m_channelWidth, block, 0,
                              static_cast<int>(m_settings.dimmingCurve), m_profileId,
                              effectiveMode());
    if (chemistry == kDarkLast || chemistry == kDarkLastToo) {
        std::fill_n(block + pixel - width, width, quint8(0));
    }
    if (halfFull && chemistry == kTripleLast) {
        std::copy_n(block + 3 * width, width, block + 4 * width);
        std::copy_n(block + 3 * width, width, block + 5 * width);
    } else if (halfFull) {
        std::copy_n(block, pixel, block + pixel);
    }
}
