#include "sim/LightSim.h"

#include "color/Numeric.h"
#include "map/MapModel.h"
#include "sim/SimView.h"

#include <QAbstractGraphicsShapeItem>
#include <QBrush>
#include <QDebug>
#include <QFileInfo>
#include <QFrame>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPixmap>
#include <QTransform>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kUnitZoom = 20.0;
constexpr double kZoomStep = 0.75;
constexpr double kMargin = 20.0;       // map units behind the outermost light
constexpr std::size_t kLookAhead = 12; // lights on their way into the cache

} // namespace

LightSim::LightSim(MapModel* model, QWidget* parent, const char* name)
    : SimDialog(parent)
    , m_model(model)
{
    if (name != nullptr && *name != '\0') {
        setObjectName(QString::fromUtf8(name));
    }
    const QList<Light*> lights = model->lightsHash().values();
    measureExtents(lights);
    m_layout = new QVBoxLayout(simFrame());
    m_layout->setContentsMargins(0, 0, 0, 0); // the plan fills the window
    m_view = new SimView(simFrame());
    m_layout->addWidget(m_view);
    buildScene(lights);
}

LightSim::~LightSim() = default;

void LightSim::measureExtents(const QList<Light*>& lights)
{
    for (const Light* const light : lights) {
        const LightPosition position = light->position();
        if (!SimLight::isPlaced(position)) {
            continue;
        }
        // The margin goes on with each new maximum, so the order of the lights counts.
        if (position.x > m_maxX) {
            m_maxX = position.x + kMargin;
        }
        if (position.y > m_maxY) {
            m_maxY = position.y + kMargin;
        }
        if (position.x < m_minX) {
            m_minX = position.x;
        }
        if (position.y < m_minY) {
            m_minY = position.y;
        }
    }
}

QPixmap LightSim::loadPlan() const
{
    const QString& path = m_model->imageFile();
    if (path.isEmpty()) {
        return QPixmap();
    }
    if (!QFileInfo(path).isFile()) { // opening a pipe would wait for ever
        qDebug("LightSim: plan image %s is no file", qUtf8Printable(path));
        return QPixmap();
    }
    QPixmap plan(path);
    if (plan.isNull()) {
        qDebug("LightSim: plan image %s can't be read", qUtf8Printable(path));
    }
    return plan;
}

void LightSim::buildScene(const QList<Light*>& lights)
{
    const QPixmap plan = loadPlan();
    double width = m_maxX;
    double height = m_maxY;
    if (!plan.isNull()) {
        width = plan.width() > m_maxX ? plan.width() : m_maxX + kMargin;
        height = plan.height() > m_maxY ? plan.height() : m_maxY + kMargin;
    }
    m_scene = new QGraphicsScene(0.0, 0.0, truncI32(width), truncI32(height), this);
    m_view->setScene(m_scene);
    QGraphicsPixmapItem* planItem = nullptr;
    if (!m_model->imageFile().isEmpty()) {
        planItem = m_scene->addPixmap(plan);
        planItem->setPos(0.0, 0.0);
        m_view->show();
    }
    std::vector<QAbstractGraphicsShapeItem*> items;
    items.reserve(static_cast<std::size_t>(lights.size()));
    m_simLights = std::vector<std::optional<SimLight>>(static_cast<std::size_t>(lights.size()));
    std::size_t index = 0;
    for (Light* const light : lights) {
        const LightShape shape = m_shapes.value(light->fixtureCode());
        std::optional<SimLight>& simLight = m_simLights[index++];
        simLight.emplace(light, m_scene, shape.shape, shape.width, shape.height);
        items.push_back(simLight->item());
    }
    m_view->setItems(std::move(items), planItem);
    m_scene->update();
}

void LightSim::setBackground(const QColor& color)
{
    if (m_scene != nullptr) {
        m_scene->setBackgroundBrush(QBrush(color, Qt::SolidPattern));
    }
}

void LightSim::updateLights()
{
    if (m_paused) {
        return;
    }
    // Compared before it is reset: a count of 1 redraws in every second call.
    if (m_refreshCounter < m_refreshCount) {
        ++m_refreshCounter;
        return;
    }
    m_refreshCounter = 0;
    bool changed = false;
    const std::size_t count = m_simLights.size();
    for (std::size_t i = 0; i < std::min(kLookAhead, count); ++i) {
        m_simLights[i]->prefetch();
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (i + kLookAhead < count) {
            m_simLights[i + kLookAhead]->prefetch();
        }
        if (m_simLights[i]->redraw()) {
            m_view->setLightColor(i, m_simLights[i]->color());
            changed = true;
        }
    }
    if (changed) {
        m_view->viewport()->update();
    }
}

void LightSim::setRefreshCount(int c)
{
    m_refreshCount = c < 1 ? 1 : c;
    m_refreshCounter = 0;
}

void LightSim::zoomIn()
{
    zoomTo(m_zoomFactor / kZoomStep);
}

void LightSim::zoomOut()
{
    zoomTo(m_zoomFactor * kZoomStep);
}

void LightSim::zoomFit()
{
    if (m_fitted) {
        return;
    }
    const QRect visible = m_view->visibleRegion().boundingRect();
    if (visible.isEmpty()) { // not shown yet: nothing to fit into
        return;
    }
    m_fitted = true;
    const double across = visible.width() * kUnitZoom / truncI32(m_maxX + m_minX + kMargin);
    const double down = visible.height() * kUnitZoom / truncI32(m_maxY + m_minY + kMargin);
    zoomTo(across < down ? across : down);
}

/// A factor that gives no picture (lights far on the negative side, endless zooming) is refused.
void LightSim::zoomTo(double factor)
{
    if (!(std::isnormal(factor) && factor > 0.0)) {
        return;
    }
    m_zoomFactor = factor;
    const double scale = m_zoomFactor / kUnitZoom;
    m_view->setTransform(QTransform::fromScale(scale, scale), false);
    m_scene->update();
}

void LightSim::hideEvent(QHideEvent* e)
{
    SimDialog::hideEvent(e);
    if (signalsBlocked()) {
        return;
    }
    emit simStateChanged(false);
    accept();
}

void LightSim::showEvent(QShowEvent* e)
{
    SimDialog::showEvent(e);
    zoomFit();
}
