#include "sim/SimView.h"

#include <QAbstractGraphicsShapeItem>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <utility>

SimView::SimView(QWidget* parent)
    : QGraphicsView(parent)
{}

void SimView::setItems(std::vector<QAbstractGraphicsShapeItem*> lights, QGraphicsPixmapItem* plan)
{
    m_lights = std::move(lights);
    m_plan = plan;
    m_raster.clear();
    m_refused = LightRaster::Geometry();
    m_colors.resize(m_lights.size());
    for (std::size_t i = 0; i < m_lights.size(); ++i) {
        setLightColor(i, m_lights[i]->brush().color());
    }
    viewport()->update();
}

void SimView::setQuickPainting(bool on)
{
    m_quick = on;
    viewport()->update();
}

void SimView::paintEvent(QPaintEvent* event)
{
    m_paintedQuickly = m_quick && scene() != nullptr && !m_lights.empty() && paintQuickly(*event);
    if (!m_paintedQuickly) {
        QGraphicsView::paintEvent(event);
    }
}

bool SimView::paintQuickly(const QPaintEvent& event)
{
    QPainter painter(viewport());
    LightRaster::Geometry geometry;
    if (!findGeometry(painter, &geometry) || !prepareRaster(geometry, event.region())) {
        return false;
    }
    const QBrush base = viewport()->palette().brush(viewport()->backgroundRole());
    if (!m_grounded || m_base != base || m_background != scene()->backgroundBrush()) {
        m_base = base;
        m_background = scene()->backgroundBrush();
        paintGround();
    }
    if (!m_composed) {
        m_raster.compose(m_colors);
        m_composed = true;
    }
    painter.drawImage(QPoint(), m_raster.picture());
    return true;
}

bool SimView::findGeometry(const QPainter& painter, LightRaster::Geometry* geometry) const
{
    const QPaintEngine* const engine = painter.paintEngine();
    const QPaintDevice* const device = engine->paintDevice();
    const QBrush base = viewport()->palette().brush(viewport()->backgroundRole());
    if (engine->type() != QPaintEngine::Raster || device->depth() != 32 ||
        base.style() != Qt::SolidPattern || base.color().alpha() != 255) {
        return false;
    }
    geometry->format = QImage::Format_ARGB32_Premultiplied;
    if (device->devType() == QInternal::Image &&
        static_cast<const QImage*>(device)->format() != geometry->format) {
        geometry->format = QImage::Format_RGB32;
        if (static_cast<const QImage*>(device)->format() != geometry->format) {
            return false;
        }
    }
    geometry->view = viewportTransform();
    geometry->device = painter.deviceTransform();
    // In pixels: a device's width is told without its ratio.
    geometry->size = QSize(device->width(), device->height());
    const QRectF area = geometry->device.mapRect(QRectF(viewport()->rect()));
    geometry->area = area.toRect() & QRect(QPoint(), geometry->size);
    return geometry->device.type() <= QTransform::TxScale && QRectF(geometry->area) == area;
}

bool SimView::prepareRaster(const LightRaster::Geometry& geometry, const QRegion& exposed)
{
    if (m_raster.stands() && m_raster.geometry() == geometry) {
        return true;
    }
    // A scroll uncovers a strip, which the scene paints sooner than a raster is worked out.
    const bool whole = exposed.rectCount() == 1 && exposed.boundingRect() == viewport()->rect();
    if (!whole || m_refused == geometry) {
        return false;
    }
    m_grounded = false;
    m_composed = false;
    if (!m_raster.build(geometry, m_lights)) {
        m_refused = geometry;
        return false;
    }
    return true;
}

void SimView::paintGround()
{
    const LightRaster::Geometry& geometry = m_raster.geometry();
    QImage sheet = LightRaster::makeSheet(geometry);
    QPainter painter(&sheet);
    painter.fillRect(geometry.area, m_base);
    painter.setWorldTransform(geometry.view * geometry.device);
    drawBackground(&painter, mapToScene(viewport()->rect()).boundingRect());
    if (m_plan != nullptr && m_plan->isVisible()) {
        painter.setWorldTransform(m_plan->deviceTransform(geometry.view) * geometry.device);
        QStyleOptionGraphicsItem option;
        m_plan->paint(&painter, &option, viewport());
    }
    painter.end();
    QImage ground = sheet.copy(geometry.area);
    ground.setDevicePixelRatio(geometry.device.m11());
    m_raster.setGround(ground);
    m_grounded = true;
    m_composed = false;
}
