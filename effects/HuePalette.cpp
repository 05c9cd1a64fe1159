#include "effects/HuePalette.h"

#include "color/DisplayColor.h"
#include "map/Light.h"

#include <algorithm>

HuePalette::HuePalette()
    : m_shades(kSlots)
{}

void HuePalette::setLights(Light* const* lights, int count)
{
    m_lights = lights;
    m_slots.assign(static_cast<std::size_t>(count), 0);
    m_sorted.assign(static_cast<std::size_t>(count), nullptr);
}

qint32 HuePalette::hueOfSlot(quint16 slot)
{
    if (slot == kRefusedSlot) {
        return kRefused;
    }
    if (slot == kAchromaticSlot) {
        return kAchromatic;
    }
    const qint32 hue = slot - kTurn + 1;
    return hue < 0 ? hue - kTurn : hue; // a turn further down -1 is a hue like others
}

void HuePalette::paintSlots(double transparency, int priority)
{
    // A file may hold any number.
    const double alpha = transparency > 0.0 ? std::max(0.0, 1.0 - transparency) : 1.0;
    if (alpha != m_alpha) {
        m_alpha = alpha;
        ++m_round;
    }
    std::array<int, kSlots> ends = {};
    int end = 0;
    for (std::size_t slot = 0; slot < kSlots; ++slot) {
        ends[slot] = end;
        end += m_counts[slot];
    }
    for (std::size_t i = 0; i < m_slots.size(); ++i) {
        int& place = ends[m_slots[i]];
        m_sorted[static_cast<std::size_t>(place)] = m_lights[i];
        ++place;
    }
    for (quint16 slot = 0; slot < kSlots; ++slot) {
        const int count = m_counts[slot];
        if (count > 0) {
            const Shade& shade = shadeOf(slot);
            Light::mixRow(m_sorted.data() + ends[slot] - count, count, shade.color, shade.screen,
                          priority);
        }
    }
}

const HuePalette::Shade& HuePalette::shadeOf(quint16 slot)
{
    Shade& shade = m_shades[slot];
    if (slot != kRefusedSlot && shade.round == m_round) {
        return shade;
    }
    shade.round = m_round;
    const int warnings = slot == kRefusedSlot ? m_counts[slot] : 1;
    for (int i = 0; i < warnings; ++i) {
        shade.color.setHsv16(hueOfSlot(slot), 65535, 65535, 65535, 0);
    }
    shade.color.setAlphaF(m_alpha);
    shade.screen = toDisplayQColor(shade.color);
    shade.screen.setAlphaF(shade.color.alphaF());
    return shade;
}
