#pragma once

#include "color/VelaColor.h"
#include "picker/ColorSelectorWidget.h"

#include <QRectF>

namespace VelaColorPickerLib {

/// A grid of colour cells around a centre: a piece of a field, magnified. The higher the level, the
/// nearer the colours of neighbouring cells.
class ColorZoomWidget : public ColorSelectorWidget
{
    Q_OBJECT
public:
    static constexpr int kLevels = 9;
    /// Cells along each side.
    static constexpr int kGridSize = 11;

    explicit ColorZoomWidget(QWidget* parent = nullptr);

    /// 1..9
    int level() const { return m_level; }
    /// Limited to 1..9.
    void setLevel(int level);
    /// The piece of the field that the grid shows, in units of the field 0..1.
    virtual QRectF zoomArea() const = 0;

    QPoint markerPixel() const override;

signals:
    void levelChanged(int level);
    void zoomAreaChanged(const QRectF& zoomArea);

protected:
    /// The colour that a cell shows; column and row count from the middle cell, -5..5.
    virtual QColor cellColor(int column, int row) const = 0;
    /// The user chose a cell; the offsets may lie one beyond the grid.
    virtual void chooseCell(int column, int row) = 0;
    /// The user asked for that cell in the middle.
    virtual void centerOnCell(int column, int row) = 0;

    /// Where the marker is, from the middle cell.
    QPoint markerCell() const { return m_markerCell; }
    void setMarkerCell(const QPoint& cell);
    QImage paintField(const QSize& size) const override;
    void moveToPixel(const QPoint& pixel) override;
    void moveBySteps(int right, int down, bool large) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QPoint cellAt(const QPoint& pixel) const;

    int m_level = 1;
    int m_wheelAngle = 0;
    QPoint m_markerCell;
};

} // namespace VelaColorPickerLib
