#pragma once

#include "color/ColorUtils.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointF>
#include <QWheelEvent>
#include <QWidget>

// What a user does to a widget, and the whites of the tests.

inline QPointF whiteXy(int cct, int tint)
{
    double x = 0.0;
    double y = 0.0;
    ColorUtils::cctTintToXy(cct, tint, &x, &y);
    return {x, y};
}

/// `notches` of a mouse wheel over the middle of the widget, away from the user where positive.
inline void turnWheel(QWidget* widget, int notches, Qt::KeyboardModifiers modifiers = {})
{
    const QPoint middle = widget->rect().center();
    QWheelEvent event(middle, widget->mapToGlobal(middle), QPoint(), QPoint(0, 120 * notches),
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

/// A move with the left button held, which QTest::mouseMove does not do.
inline void dragTo(QWidget* widget, const QPoint& place)
{
    QMouseEvent event(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}
