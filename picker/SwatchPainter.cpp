#include "picker/SwatchPainter.h"

#include "color/DisplayColor.h"
#include "color/VelaColor.h"

#include <QPainter>

namespace VelaColorPickerLib {

void paintSwatch(QPainter* painter, const QRect& rect, const VelaColor& color)
{
    const QColor shown = toDisplayQColor(color);
    if (shown.alpha() < 255) {
        const QPixmap ground(QStringLiteral(":/images/TransparentBackground.png"));
        painter->drawTiledPixmap(rect, ground);
    }
    painter->fillRect(rect, shown);
}

QPixmap swatchPixmap(const VelaColor& color, const QSize& size, qreal devicePixelRatio)
{
    QPixmap pixmap(size * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const QRect area(QPoint(0, 0), size);
    paintSwatch(&painter, area, color);
    painter.setPen(QPen(swatchOutline(), 1.0));
    painter.drawRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5));
    return pixmap;
}

QColor swatchOutline()
{
    return QColor(118, 118, 118);
}

} // namespace VelaColorPickerLib
