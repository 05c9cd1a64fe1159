#pragma once

#include "color/VelaColor.h"

#include <QColor>

#include <array>
#include <vector>

class Light;

/// Paints lights in saturated colours of the wheel, by whole degrees. Thousands of lights share a
/// few hundred of them: each is worked out once for an alpha, and lights of one hue are painted
/// together, in whatever order their hues come.
class HuePalette
{
public:
    HuePalette();

    /// Room for as many lights as a frame paints; frames allocate none.
    void setLights(Light* const* lights, int count);
    int lightCount() const { return static_cast<int>(m_slots.size()); }

    /// Paints light i in the hue `hueOf(i)`, a qint32 as VelaColor::setHsv16 takes it; null entries
    /// are passed over. `transparency` is that of the effect: alpha is 1.0 less that, held within
    /// 0..1. For each light whose hue setHsv16 refuses, that logs its warning.
    template <typename HueOf>
    void paint(double transparency, int priority, const HueOf& hueOf)
    {
        m_counts.fill(0);
        const int count = lightCount();
        for (int i = 0; i < count; ++i) {
            const quint16 slot = slotOf(hueOf(i));
            m_slots[static_cast<std::size_t>(i)] = slot;
            ++m_counts[slot];
        }
        paintSlots(transparency, priority);
    }

private:
    struct Shade
    {
        VelaColor color;
        QColor screen;
        quint64 round = 0; // of the alpha that it was worked out for
    };

    static constexpr qint32 kTurn = 360;
    static constexpr qint32 kAchromatic = -1;
    static constexpr qint32 kRefused = 65536;
    // -359 to 359, for setHsv16 keeps the sign; then -1, which it does not take modulo 360; then
    // all that it refuses.
    static constexpr quint16 kAchromaticSlot = 2 * kTurn - 1;
    static constexpr quint16 kRefusedSlot = kAchromaticSlot + 1;
    static constexpr std::size_t kSlots = kRefusedSlot + 1;

    static quint16 slotOf(qint32 hue)
    {
        if (hue >= kRefused) {
            return kRefusedSlot;
        }
        return hue == kAchromatic ? kAchromaticSlot : static_cast<quint16>(hue % kTurn + kTurn - 1);
    }
    static qint32 hueOfSlot(quint16 slot);
    void paintSlots(double transparency, int priority);
    const Shade& shadeOf(quint16 slot);

    Light* const* m_lights = nullptr; // owned by their group
    std::vector<quint16> m_slots;     // of each light in this frame
    std::vector<Light*> m_sorted;     // by slot
    std::array<int, kSlots> m_counts = {};
    std::vector<Shade> m_shades;
    quint64 m_round = 1;
    double m_alpha = 1.0;
};
