#pragma once

#include <QApplication>
#include <QDrag>
#include <QMouseEvent>
#include <QObject>
#include <QPoint>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <QtTest>

/// Presses at `from` and moves by more than a click's shake, both sent to `widget` (of a view, its
/// viewport). Gives the drag that `owner` started, null for none. Without a display there is nobody
/// to carry a drag anywhere: it has ended by itself, and lives until the next event loop.
inline QDrag* startDrag(QWidget* widget, QObject* owner, const QPoint& from)
{
    const auto send = [widget](QEvent::Type type, const QPoint& pos, Qt::MouseButton button) {
        QMouseEvent event(type, pos, widget->mapToGlobal(pos), button, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, from + QPoint(1, 0), Qt::NoButton);
    if (owner->findChild<QDrag*>() != nullptr) {
        return nullptr; // too early: that may still become a click
    }
    send(QEvent::MouseMove, from + QPoint(30, 4), Qt::NoButton);
    return owner->findChild<QDrag*>(QString(), Qt::FindDirectChildrenOnly);
}

/// Drags with the mouse from one place of a window to another on the screen, through the drag that
/// a widget in it starts: on a display alone. False where none started.
inline bool dragByHand(QWidget* window, const QPoint& from, const QPoint& toOnScreen)
{
    QWindow* const handle = window->windowHandle();
    const QPoint to = window->mapFromGlobal(toOnScreen);
    bool started = false;
    QTimer hand;
    hand.setInterval(20);
    int step = 0;
    // A drag runs its own loop until the button is let go.
    QObject::connect(&hand, &QTimer::timeout, window, [window, handle, to, &hand, &started, &step] {
        if (window->findChild<QDrag*>() == nullptr) {
            return;
        }
        started = true;
        ++step;
        if (step < 10) { // the window below answers meanwhile
            QTest::mouseMove(handle, to + QPoint(step, 0));
        } else if (step == 10) {
            QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, to + QPoint(9, 0));
            hand.stop();
        }
    });
    hand.start();
    QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(handle, from + QPoint(4, 4));
    QTest::mouseMove(handle, from + QPoint(24, 8));
    return started;
}
