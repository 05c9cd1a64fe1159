#pragma once

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <QtTest>

/// Opens the context menu of `widget` (of a view, its viewport) by the mouse and chooses the entry
/// `text`, none where that is empty. Gives the texts of all entries, disabled ones in brackets.
inline QStringList chooseFromContextMenu(QWidget* widget, const QPoint& pos, const QString& text)
{
    QStringList texts;
    QTimer::singleShot(0, widget, [&texts, text] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr) {
            return;
        }
        const QList<QAction*> actions = menu->actions();
        for (QAction* const action : actions) {
            texts.append(action->isEnabled()
                             ? action->text()
                             : QLatin1Char('(') + action->text() + QLatin1Char(')'));
            if (action->text() == text) {
                menu->setActiveAction(action);
            }
        }
        QTest::keyClick(menu, text.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, widget->mapToGlobal(pos));
    QApplication::sendEvent(widget, &event);
    return texts;
}
