#include "effects/HuePalette.h"

#include "color/DisplayColor.h"

#include <algorithm>

namespace {

constexpr int kTurn = 360;
constexpr qint32 kAchromatic = -1;
// -359 to 359, for setHsv16 keeps the sign; then -1, which it does not take modulo; then what it
// refuses.
constexpr int kAchromaticSlot = 2 * kTurn - 1;
constexpr int kRefusedSlot = kAchromaticSlot + 1;
constexpr int kSlots = kRefusedSlot + 1;

} // namespace

HuePalette::HuePalette()
    : m_shades(kSlots)
{}

void HuePalette::setTransparency(double transparency)
{
    const double alpha =
        transparency > 0.0 ? std::max(0.0, 1.0 - transparency) : 1.0; // a file may hold any number
    if (alpha != m_alpha) {
        m_alpha = alpha;
        ++m_round;
    }
}

const HuePalette::Shade& HuePalette::at(qint32 hue)
{
    const bool isRefused = hue >= kRefusedHue;
    const int slot =
        isRefused ? kRefusedSlot : (hue == kAchromatic ? kAchromaticSlot : hue % kTurn + kTurn - 1);
    Shade& shade = m_shades[static_cast<std::size_t>(slot)];
    if (isRefused || shade.round != m_round) {
        shade.round = m_round;
        shade.color.setHsv16(hue, 65535, 65535, 65535, 0);
        shade.color.setAlphaF(m_alpha);
        shade.screen = toDisplayQColor(shade.color);
        shade.screen.setAlphaF(shade.color.alphaF());
    }
    return shade;
}
