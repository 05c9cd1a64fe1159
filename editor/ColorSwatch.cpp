#include "editor/ColorSwatch.h"

#include "color/DisplayColor.h"
#include "color/VelaColor.h"

#include <QBrush>
#include <QFontMetrics>
#include <QPalette>

ColorSwatch::ColorSwatch(QWidget* parent)
    : QFrame(parent)
{
    setFrameShape(QFrame::Box);
    setLineWidth(1);
    const int line = QFontMetrics(font()).lineSpacing();
    setMinimumSize(4 * line, line + line / 2);
    setBackgroundRole(QPalette::Window); // also inside a table, which has another
    setAutoFillBackground(true);
    setAccessibleName(tr("Color"));
}

void ColorSwatch::setColor(const VelaColor& color)
{
    QPalette changed = palette();
    changed.setBrush(backgroundRole(), QBrush(toDisplayQColor(color), Qt::SolidPattern));
    setPalette(changed);
}
