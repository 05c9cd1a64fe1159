#pragma once

#include "color/VelaColor.h"

#include <QRgb>
#include <QtGlobal>

/// Which pixels of a picture count as transparent: those that equal a colour exactly, with layout,
/// profile and all. None by default, and none where no pixel can equal the colour.
class TransparentPixel
{
public:
    TransparentPixel() = default;
    explicit TransparentPixel(const VelaColor& color)
    {
        if (color.spec() != VelaColor::Rgb) {
            return;
        }
        const QRgb pixel = qRgb(color.red8(), color.green8(), color.blue8());
        if (VelaColor(pixel) == color) {
            m_rgb = pixel & kMask;
        }
    }
    /// The alpha of `pixel` is not looked at.
    bool matches(QRgb pixel) const { return (pixel & kMask) == m_rgb; }

private:
    static constexpr QRgb kMask = 0x00FFFFFFU;
    static constexpr QRgb kNone = 0xFFFFFFFFU;

    QRgb m_rgb = kNone;
};
