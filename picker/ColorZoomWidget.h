#pragma once

#include "color/VelaColor.h"
#include "picker/ColorSelectorWidget.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRectF>
#include <QSize>

class QPaintEvent;
class QPainter;

namespace VelaColorPickerLib {

/// A grid of colour cells around a centre, at one of nine zoom levels, with a marker on the chosen
/// cell. Cells are named by their column and row from the centre.
class ColorZoomWidget : public ColorSelectorWidget
{
    Q_OBJECT
public:
    /// The steps of one cell, in degrees of hue and 1/255 of saturation.
    struct Steps
    {
        int hue;
        int saturation;
    };
    static constexpr int kLevels = 9;

    /// Of a level 1..9, or of the nearest one.
    static Steps stepsOfLevel(int level);

    int level() const { return m_level; }
    /// Limited to 1..9.
    void setLevel(int level);
    /// Columns and rows, odd numbers so that there is a centre.
    QSize gridSize() const { return m_gridSize; }
    /// Limited to 1..63, even numbers to the next one.
    void setGridSize(const QSize& size);

    /// The colour that is chosen.
    VelaColor color() const { return m_color; }
    QPoint selectedCell() const { return m_selected; }
    virtual VelaColor cellColor(const QPoint& cell) const = 0;
    QRect cellRect(const QPoint& cell) const;
    /// The nearest one for a pixel beside the widget.
    QPoint cellAt(const QPoint& pixel) const;
    /// What the grid shows, in the unit square of the field that it is a piece of.
    virtual QRectF zoomArea() const = 0;

    QSize sizeHint() const override;

signals:
    void zoomAreaChanged(QRectF zoomArea);

protected:
    explicit ColorZoomWidget(QWidget* parent);

    /// The outermost cell in a direction.
    QPoint lastCell() const { return {m_gridSize.width() / 2, m_gridSize.height() / 2}; }
    QPoint limited(const QPoint& cell) const;
    Steps steps() const { return stepsOfLevel(m_level); }
    /// Moves the marker.
    void mark(const QPoint& cell, const VelaColor& color);
    /// The cells are others now.
    void refreshCells();

    int coarseSteps() const override { return 3; }
    void paintEvent(QPaintEvent* event) override;

private:
    void paintCells(const QSize& pixels);
    QRect markedRect() const;

    int m_level = 1;
    QSize m_gridSize = {11, 11};
    VelaColor m_color;
    QPoint m_selected;
    QImage m_field; // the cells at the widget's size in device pixels; null: to be painted
};

} // namespace VelaColorPickerLib
