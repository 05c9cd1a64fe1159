#include "picker/ChartWhite.h"

#include "color/WhiteChart.h"

#include <algorithm>

QColor VelaColorPickerLib::chartWhite(int cct, int tint)
{
    WhiteChart& chart = WhiteChart::instance();
    const QImage& image = chart.whiteImage();
    const QRect rect = image.rect();
    const QPoint p = chart.pixelOf(cct, std::min(tint, chart.tintLimit(cct)), rect);
    const QColor q = QColor::fromRgb(image.pixel(std::clamp(p.x(), rect.left(), rect.right()),
                                                 std::clamp(p.y(), rect.top(), rect.bottom())));
    return QColor::fromHsvF(q.hueF(), q.saturationF(), 1.0);
}
