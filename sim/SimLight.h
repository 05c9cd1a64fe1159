#pragma once

#include "map/Light.h"
#include "map/LightPosition.h"

#include <QBrush>
#include <QColor>
#include <QObject>

class QAbstractGraphicsShapeItem;
class QGraphicsScene;

/// Ties one light of the map to its item in the simulation's scene.
class SimLight : public QObject
{
    Q_OBJECT
public:
    /// Adds the item to `scene`: an ellipse whose top left corner stands 10 map units right of and
    /// below the light for `shape` 0, else a rectangle centred on that point. Sizes in map units,
    /// truncated. The item of a light that stands nowhere (see isPlaced) stays hidden.
    SimLight(Light* light, QGraphicsScene* scene, int shape, double width, double height);

    /// True where both coordinates are finite and fit a 32-bit integer with the margins of the
    /// simulation; other positions come from broken maps and count for nothing.
    static bool isPlaced(const LightPosition& position);

    /// Gives the item's brush the colour that the light has in this frame; its pen is black and it
    /// is visible from the start. True when the item has to be painted anew. The caller asks the
    /// view for that: item by item it costs more than the painting.
    bool redraw();
    /// Brings what redraw() touches into the cache.
    void prefetch() const
    {
        Light::prefetch(m_light);
        __builtin_prefetch(&m_brush.color(), 1);
    }

    Light* light() const { return m_light; }
    QAbstractGraphicsShapeItem* item() const { return m_item; }
    /// The colour of the last redraw; invalid for a light that was never painted.
    const QColor& color() const { return m_brush.color(); }

private:
    /// What of the simulated colour reaches the screen; settled by the fixture.
    enum class Tint : quint8 {
        Color,             // as it is
        Grey,              // one channel
        TwoChannelWhite,   // red and blue carry warm, green cool; a Yxy colour is kept
        GreyUnlessAbsolute // grey but for a Yxy colour
    };

    static Tint tintOf(const Light& light);
    QColor frameColor() const;

    Light* m_light = nullptr;                     // not owned
    QAbstractGraphicsShapeItem* m_item = nullptr; // owned by the scene
    QBrush m_brush;                               // shares its data with the item's brush
    Tint m_tint = Tint::Color;
};
