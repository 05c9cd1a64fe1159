#pragma once

#include <QColor>
#include <QPixmap>
#include <QRect>
#include <QSize>

class QPainter;
class VelaColor;

namespace VelaColorPickerLib {

/// Fills `rect` with the screen colour of `color` over the checkered ground.
void paintSwatch(QPainter* painter, const QRect& rect, const VelaColor& color);
/// A swatch of `size` logical pixels with a thin neutral outline: what a drag carries and what a
/// list shows in front of a name.
QPixmap swatchPixmap(const VelaColor& color, const QSize& size, qreal devicePixelRatio);
/// The outline that parts a swatch from any ground, light or dark.
QColor swatchOutline();

} // namespace VelaColorPickerLib
