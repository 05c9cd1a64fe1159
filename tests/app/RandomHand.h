#pragma once

#include "tests/app/EventLog.h"
#include "tests/app/RandomFiles.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QWheelEvent>
#include <QtTest>

/// Random events for a single widget, as a mouse and a keyboard make them. Each is noted in the
/// log beforehand.
class RandomHand : public QObject
{
protected:
    explicit RandomHand(unsigned seed)
        : m_chance(seed)
    {}

    // Words for the log.
    static QString called(const QWidget* widget)
    {
        QString text = QString::fromLatin1(widget->metaObject()->className()) + QLatin1Char(' ') +
                       widget->objectName();
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            text += QLatin1Char(' ') + button->text();
        }
        return text;
    }
    void note(const QString& what, const QWidget* widget)
    {
        EventLog::instance().add(QString(m_depth, QLatin1Char('>')) + QLatin1Char(' ') + what +
                                 QLatin1Char(' ') + called(widget));
    }
    void note(const QString& what)
    {
        EventLog::instance().add(QString(m_depth, QLatin1Char('>')) + QLatin1Char(' ') + what);
    }

    static bool isControl(const QWidget* widget)
    {
        return qobject_cast<const QAbstractButton*>(widget) != nullptr ||
               qobject_cast<const QLineEdit*>(widget) != nullptr ||
               qobject_cast<const QComboBox*>(widget) != nullptr ||
               qobject_cast<const QAbstractSpinBox*>(widget) != nullptr ||
               qobject_cast<const QAbstractSlider*>(widget) != nullptr ||
               qobject_cast<const QAbstractItemView*>(widget) != nullptr ||
               widget->focusPolicy() != Qt::NoFocus;
    }

    void useWidget(QWidget* widget)
    {
        QWidget* target = widget;
        if (auto* const area = qobject_cast<QAbstractScrollArea*>(widget)) {
            target = area->viewport();
        }
        const QPoint place(m_chance.below(target->width()), m_chance.below(target->height()));
        const int dice = m_chance.below(100);
        if (qobject_cast<QLineEdit*>(widget) != nullptr ||
            qobject_cast<QAbstractSpinBox*>(widget) != nullptr) {
            if (dice < 70) {
                typeAndFinish(widget);
                return;
            }
        }
        if (dice < 55) {
            click(target, place);
        } else if (dice < 60) {
            note(QStringLiteral("double click"), widget);
            QTest::mouseDClick(target, Qt::LeftButton, Qt::NoModifier, place);
            QTest::mouseRelease(target, Qt::LeftButton, Qt::NoModifier, place);
        } else if (dice < 75) {
            drag(target, place);
        } else if (dice < 85) {
            wheel(target, place);
        } else if (dice < 90) {
            contextMenu(target, place);
        } else {
            pressKey(widget);
        }
    }

    virtual void click(QWidget* target, const QPoint& place)
    {
        note(QStringLiteral("click"), target);
        const bool isCheck = qobject_cast<QCheckBox*>(target) != nullptr; // its box is on the left
        QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier,
                          isCheck ? QPoint(8, target->height() / 2) : place);
    }

    /// Of what is typed, `widget` may be gone at the end.
    void typeAndFinish(QWidget* widget)
    {
        widget->setFocus(Qt::MouseFocusReason);
        const QPointer<QWidget> guard(widget);
        type(widget);
        if (!guard.isNull() && m_chance.percent(50)) {
            finish(widget);
        }
    }

    void type(QWidget* widget)
    {
        const QString text = RandomFiles::text(&m_chance);
        note(QStringLiteral("type \"%1\" of %2 into").arg(text.left(30)).arg(text.size()), widget);
        const QPointer<QWidget> guard(widget);
        if (m_chance.percent(80)) {
            QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        }
        if (guard.isNull()) {
            return;
        }
        if (m_chance.percent(10) && !text.isEmpty()) {
            const QSignalBlocker blocker(QGuiApplication::clipboard());
            QGuiApplication::clipboard()->setText(text);
            QTest::keyClick(widget, Qt::Key_V, Qt::ControlModifier);
        } else if (text.isEmpty()) {
            QTest::keyClick(widget, Qt::Key_Delete);
        } else {
            QInputMethodEvent event;
            event.setCommitString(text);
            QApplication::sendEvent(widget, &event);
        }
    }

    void finish(QWidget* widget)
    {
        const Qt::Key key = m_chance.of(QList<Qt::Key>{Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab,
                                                       Qt::Key_Escape, Qt::Key_Backtab});
        note(QStringLiteral("key %1").arg(key, 0, 16), widget);
        QTest::keyClick(widget, key);
    }

    void pressKey(QWidget* widget)
    {
        static const QList<Qt::Key> kKeys = {
            Qt::Key_Tab,   Qt::Key_Backtab, Qt::Key_Return,   Qt::Key_Escape, Qt::Key_Left,
            Qt::Key_Right, Qt::Key_Up,      Qt::Key_Down,     Qt::Key_Delete, Qt::Key_Backspace,
            Qt::Key_Home,  Qt::Key_End,     Qt::Key_PageDown, Qt::Key_Space,  Qt::Key_F2,
            Qt::Key_A,     Qt::Key_7,       Qt::Key_Period,   Qt::Key_Minus,  Qt::Key_E};
        static const QList<Qt::Key> kShortcuts = {Qt::Key_A, Qt::Key_C, Qt::Key_X,
                                                  Qt::Key_V, Qt::Key_Z, Qt::Key_S,
                                                  Qt::Key_N, Qt::Key_O, Qt::Key_L};
        if (m_chance.percent(50) && widget->focusPolicy() != Qt::NoFocus) {
            widget->setFocus(Qt::MouseFocusReason);
        }
        QWidget* const focus = QApplication::focusWidget(); // a widget can't have keys without
        QWidget* const target =
            focus != nullptr && focus->window() == widget->window() ? focus : widget->window();
        if (m_chance.percent(25)) {
            const Qt::Key key = m_chance.of(kShortcuts);
            note(QStringLiteral("Ctrl+%1").arg(QChar(key)), target);
            QTest::keyClick(target, key, Qt::ControlModifier);
        } else {
            const Qt::Key key = m_chance.of(kKeys);
            note(QStringLiteral("key %1").arg(key, 0, 16), target);
            QTest::keyClick(target, key);
        }
    }

    void drag(QWidget* target, const QPoint& from)
    {
        note(QStringLiteral("drag"), target);
        const QPointer<QWidget> guard(target);
        QTest::mousePress(target, Qt::LeftButton, Qt::NoModifier, from);
        QPoint place = from;
        const int moves = m_chance.between(1, 4);
        for (int i = 0; i < moves && !guard.isNull(); ++i) {
            place = QPoint(m_chance.between(-20, target->width() + 20),
                           m_chance.between(-20, target->height() + 20));
            QMouseEvent event(QEvent::MouseMove, place, target->mapToGlobal(place), Qt::NoButton,
                              Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(target, &event);
        }
        if (!guard.isNull()) {
            QTest::mouseRelease(target, Qt::LeftButton, Qt::NoModifier, place);
        }
    }

    void wheel(QWidget* target, const QPoint& place)
    {
        note(QStringLiteral("wheel"), target);
        const int delta = 120 * m_chance.between(-3, 3);
        QWheelEvent event(place, target->mapToGlobal(place), QPoint(), QPoint(0, delta),
                          Qt::NoButton, m_chance.percent(10) ? Qt::ControlModifier : Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &event);
    }

    void contextMenu(QWidget* widget, const QPoint& place)
    {
        note(QStringLiteral("context menu"), widget);
        QTest::mouseClick(widget, Qt::RightButton, Qt::NoModifier, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
        QApplication::sendEvent(widget, &event);
    }

    // Popups.
    void usePopup(QWidget* popup)
    {
        const int dice = m_chance.below(10);
        if (dice < 2) {
            note(QStringLiteral("escape"), popup);
            QTest::keyClick(popup, Qt::Key_Escape);
        } else if (dice < 5) {
            const Qt::Key key = m_chance.of(
                QList<Qt::Key>{Qt::Key_Down, Qt::Key_Up, Qt::Key_Right, Qt::Key_Return});
            QWidget* const view = popup->findChild<QAbstractItemView*>();
            note(QStringLiteral("key %1").arg(key, 0, 16), popup);
            QTest::keyClick(view != nullptr ? view : popup, key);
        } else if (auto* const menu = qobject_cast<QMenu*>(popup)) {
            const QList<QAction*> actions = menu->actions();
            if (actions.isEmpty()) {
                menu->close();
                return;
            }
            QAction* const action = m_chance.of(actions);
            if (!mayChoose(*action)) {
                return;
            }
            note(QStringLiteral("choose ") + action->text());
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                              menu->actionGeometry(action).center());
        } else if (auto* const view = popup->findChild<QAbstractItemView*>()) {
            const int row = m_chance.below(view->model()->rowCount());
            note(QStringLiteral("choose row %1").arg(row), popup);
            view->setCurrentIndex(view->model()->index(row, 0));
            QTest::keyClick(view, Qt::Key_Return);
        } else {
            note(QStringLiteral("close"), popup);
            popup->close();
        }
    }

    /// A user who leaves all the time never comes far.
    bool mayChoose(const QAction& action)
    {
        return action.objectName() != QLatin1String("exitAction") || m_chance.percent(15);
    }

    Chance m_chance;
    int m_depth = 0; // of event loops
};
