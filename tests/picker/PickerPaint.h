#pragma once

#include <QColor>
#include <QEvent>
#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QImage>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>

// What painted fields are compared by.

/// The 8-bit colour of a hue in degrees, a saturation and a value 0..1, as a float of 1.0 fills the
/// byte 255: the textbook hexagon, each component cut off to 8 bits.
inline QColor hsvColor(double degrees, double saturation, double value)
{
    const auto component = [=](double offset) {
        const double k = std::fmod(offset + degrees / 60.0, 6.0);
        const double c = value - value * saturation * std::clamp(std::min(k, 4.0 - k), 0.0, 1.0);
        return std::min(255, static_cast<int>(std::floor(c * 256.0)));
    };
    return QColor(component(5.0), component(3.0), component(1.0));
}

inline bool isNearColor(const QColor& a, const QColor& b, int tolerance)
{
    return std::abs(a.red() - b.red()) <= tolerance &&
           std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

/// A font whose line is `height` pixels high, of whatever fonts there are: sizes follow the line,
/// so that pictures of widgets without text are the same with any font.
inline QFont fontOfHeight(int height)
{
    QStringList families = QFontDatabase().families();
    families.prepend(QFont().family());
    for (const QString& family : qAsConst(families)) {
        QFont font(family);
        for (int size = height / 2; size <= height * 2; ++size) {
            font.setPixelSize(size);
            if (QFontMetrics(font).height() == height) {
                return font;
            }
        }
    }
    return QFont();
}

/// Notes what a widget is asked to paint.
class PaintWatch : public QObject
{
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++events;
            region += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
    int pixels() const
    {
        int sum = 0;
        for (const QRect& rect : region) {
            sum += rect.width() * rect.height();
        }
        return sum;
    }
    int events = 0;
    QRegion region;
};
