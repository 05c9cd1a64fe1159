#pragma once

#include "sim/LightRaster.h"

#include <QBrush>
#include <QColor>
#include <QGraphicsView>
#include <QRgb>

#include <cstddef>
#include <vector>

class QAbstractGraphicsShapeItem;
class QGraphicsPixmapItem;
class QPaintEvent;

/// The view of the simulation's scene. It paints the scene as every view does, and equally to the
/// pixel but many times as fast out of a LightRaster, which it works out in the first full paint
/// after a zoom, a scroll or a new size. Where no raster can stand (another kind of paint device,
/// a translucent palette), and in paints of a part while none does, the scene paints itself.
class SimView : public QGraphicsView
{
    Q_OBJECT
public:
    explicit SimView(QWidget* parent = nullptr);

    /// The light items of the scene in painting order, alike but for place and brush, and the only
    /// other item, below them all; null for none. To be called whenever one of these changes in
    /// anything but its brush. Not owned.
    void setItems(std::vector<QAbstractGraphicsShapeItem*> lights, QGraphicsPixmapItem* plan);
    /// The colour that the brush of light `index` has got; invalid is black, as it is for a brush.
    void setLightColor(std::size_t index, const QColor& color)
    {
        m_colors[index] = color.rgba64().premultiplied().toArgb32();
        m_composed = false;
    }

    /// On unless switched off; off is for comparing.
    void setQuickPainting(bool on);
    bool isQuickPainting() const { return m_quick; }
    /// True when the last paint event was served by the raster.
    bool wasPaintedQuickly() const { return m_paintedQuickly; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool paintQuickly(const QPaintEvent& event);
    bool findGeometry(const QPainter& painter, LightRaster::Geometry* geometry) const;
    bool prepareRaster(const LightRaster::Geometry& geometry, const QRegion& exposed);
    void paintGround();

    std::vector<QAbstractGraphicsShapeItem*> m_lights; // not owned
    QGraphicsPixmapItem* m_plan = nullptr;             // not owned
    std::vector<QRgb> m_colors;                        // premultiplied, one a light
    LightRaster m_raster;
    LightRaster::Geometry m_refused; // no raster can stand here
    QBrush m_base;                   // what the ground was painted with
    QBrush m_background;
    bool m_grounded = false;
    bool m_composed = false;
    bool m_quick = true;
    bool m_paintedQuickly = false;
};
