#include "sim/SimLight.h"

#include "color/DisplayColor.h"
#include "color/Numeric.h"
#include "color/VelaColor.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPen>

#include <algorithm>

namespace {

constexpr double kOffset = 10.0; // from a light's position to its item, in map units
constexpr double kReach = 2147483000.0;

QColor grey(int red, int green, int blue)
{
    const int level = (11 * red + 16 * green + 5 * blue) / 32;
    return QColor(level, level, level);
}

} // namespace

bool SimLight::isPlaced(const LightPosition& position)
{
    // NaN fails both comparisons
    return position.x > -kReach && position.x < kReach && position.y > -kReach &&
           position.y < kReach;
}

SimLight::SimLight(Light* light, QGraphicsScene* scene, int shape, double width, double height)
    : m_light(light)
    , m_brush(QColor(Qt::black), Qt::SolidPattern)
    , m_tint(tintOf(*light))
{
    const LightPosition position = light->position();
    const bool placed = isPlaced(position);
    const QRectF rect(0, 0, truncI32(width), truncI32(height));
    QPointF place(position.x + kOffset, position.y + kOffset);
    if (shape == 0) {
        m_item = new QGraphicsEllipseItem(rect);
    } else {
        m_item = new QGraphicsRectItem(rect);
        place -= QPointF(width * 0.5, height * 0.5);
    }
    if (placed) {
        m_item->setPos(place);
    }
    m_item->setPen(QPen(Qt::black));
    m_item->setBrush(m_brush);
    m_item->setVisible(placed);
    scene->addItem(m_item);
}

SimLight::Tint SimLight::tintOf(const Light& light)
{
    if (light.channelCount() == 1) {
        return Tint::Grey;
    }
    const int mode = light.tintweaveIoMode();
    if (mode == 16 || mode == 20) {
        return Tint::TwoChannelWhite;
    }
    if (light.tintweaveProfileId() == 26 || light.ledChemistry() == 15) {
        return Tint::GreyUnlessAbsolute;
    }
    return Tint::Color;
}

QColor SimLight::frameColor() const
{
    if (!m_light->hasSimColor()) {
        return m_light->isPainted() ? toDisplayQColor(m_light->mixValue()) : QColor();
    }
    const QColor& color = m_light->simColor();
    switch (m_tint) {
    case Tint::Color:
        break;
    case Tint::Grey:
        return grey(color.red(), color.green(), color.blue());
    case Tint::TwoChannelWhite:
        if (m_light->mixValue().spec() != VelaColor::Yxy) {
            const int green = color.green() / 2;
            return grey(std::max(green, color.red()), green, std::max(green, color.blue()));
        }
        break;
    case Tint::GreyUnlessAbsolute:
        if (m_light->mixValue().spec() != VelaColor::Yxy) {
            return grey(color.red(), color.green(), color.blue());
        }
        break;
    }
    return color;
}

bool SimLight::redraw()
{
    const QColor color = frameColor();
    QBrushData* const data = m_brush.data_ptr().data();
    const bool shared = data->ref.loadRelaxed() == 2; // by this object and the item alone
    if (shared && data->color == color) {
        return false;
    }
    if (shared) {
        // The item's brush takes the colour where it lies: a new brush each frame costs an
        // allocation, and setBrush a walk through the scene's books, for every light.
        data->color = color;
    } else {
        m_brush = QBrush(color, Qt::SolidPattern);
        m_item->setBrush(m_brush);
    }
    return true;
}
