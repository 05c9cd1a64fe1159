#pragma once

#include "color/VelaColor.h"
#include "map/Light.h"

#include <QColor>

#include <vector>

/// The saturated colours of the wheel at one alpha, by whole degrees, each worked out when it is
/// first asked for: thousands of lights share a few hundred of them, frame after frame.
class HuePalette
{
public:
    struct Shade
    {
        VelaColor color;
        QColor screen;
        quint64 round = 0;
    };

    HuePalette();

    /// For an effect of that transparency: alpha 1.0 - transparency, held within 0..1.
    void setTransparency(double transparency);
    /// What VelaColor::setHsv16 makes of the hue. Allocates where that refuses it, which is logged
    /// each time.
    const Shade& at(qint32 hue);

    /// Paints light i of `count` in the hue `hueOf(i)`; null entries are passed over.
    template <typename HueOf>
    void paint(Light* const* lights, int count, int priority, const HueOf& hueOf)
    {
        for (int first = 0; first < count;) {
            const qint32 hue = hueOf(first);
            int end = first + 1;
            while (end < count && hue < kRefusedHue && hueOf(end) == hue) {
                ++end;
            }
            const Shade& shade = at(hue);
            Light::mixRow(lights + first, end - first, shade.color, shade.screen, priority);
            first = end;
        }
    }

private:
    static constexpr qint32 kRefusedHue = 65536;

    std::vector<Shade> m_shades;
    quint64 m_round = 1; // of the present alpha
    double m_alpha = 1.0;
};
