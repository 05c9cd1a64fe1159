#include "color/DisplayColor.h"

#include "color/VelaColor.h"
#include "color/WhiteChart.h"

QColor toDisplayQColor(const VelaColor& color)
{
    switch (color.spec()) {
    case VelaColor::Yxy:
    case VelaColor::Nchannel:
        return WhiteChart::instance().screenColor(color);
    case VelaColor::Rgb:
    case VelaColor::Hsv:
    case VelaColor::Invalid:
        break;
    }
    return color.toQColor(true);
}
