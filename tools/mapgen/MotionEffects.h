#pragma once

#include "tools/mapgen/ShowEffect.h"

#include <QPointF>

/// One colour of a custom rainbow, held for `hold` seconds, then fading to the next in `fade`.
struct RainbowStop
{
    QColor color;
    double hold = 1.0;
    double fade = 1.0;
};

/// A streak along the rows of a group, in rows. Its background is clear.
struct StreakSpec
{
    int width = 1;
    int forwardTail = 0;
    int reverseTail = 0;
    bool reverse = false;
    bool wrap = true;
};

/// The picture point under the middle of a group, in picture pixels, and the picture's scale.
struct ImagePlace
{
    double x = 0.0;
    double y = 0.0;
    double scale = 1.0;
};

/// The effects that move by themselves. Times of cycles are seconds.
namespace ShowEffects {

/// `step` is the hue from row to row in degrees.
ShowEffect chasingRainbow(const QString& name, const QColor& start, double cycle, double step);
/// `step` is the shift from row to row in seconds.
ShowEffect customRainbow(const QString& name, const QVector<RainbowStop>& stops, double step);
/// `time` a colour, of which `fade` go to the next; `step` as for a custom rainbow.
ShowEffect randomColor(const QString& name, const QColor& start, double time, double fade,
                       double step);
ShowEffect streak(const QString& name, const QColor& color, double cycle, StreakSpec spec);
/// Rows that the edge has not reached stay clear.
ShowEffect sweep(const QString& name, const QColor& color, double cycle, bool reverse = false);
/// Lights at rest stay clear.
ShowEffect sparkle(const QString& name, const QColor& color, int density, int decay);
ShowEffect sparkleGroup(const QString& name, const QColor& color, const QColor& background,
                        int density, int decay);
/// `clear`: black parts of the picture show what lies beneath.
ShowEffect imageScroll(const QString& name, const QString& file, double cycle, ImagePlace from,
                       ImagePlace to, bool clear = false);
/// `clear` as for a picture.
ShowEffect animation(const QString& name, const QString& folder, int framesPerSecond,
                     int frameCount, bool clear = false);
/// `centre` is in pixels of twelve map units from the group's top left corner; a `width` of 100
/// lays one rainbow between the middle and a corner.
ShowEffect burst(const QString& name, double cycle, int width, QPointF centre);
ShowEffect spiral(const QString& name, double cycle, int twist, int arms, QPointF centre,
                  bool clockwise = true);
ShowEffect text(const QString& name, const QString& words, const QColor& background, double cycle);
ShowEffect selection(const QString& name, const QColor& background);

} // namespace ShowEffects
