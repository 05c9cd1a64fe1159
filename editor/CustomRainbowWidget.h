#pragma once

#include "editor/EffectForm.h"

#include <QPointer>

class CustomRainbowEffect;
class QMenu;
class QPoint;
class QTableWidget;
class QTableWidgetItem;
struct CustomRainbowEntry;

/// The form of a CustomRainbowEffect: a table with a row per colour.
class CustomRainbowWidget : public EffectForm
{
    Q_OBJECT
public:
    CustomRainbowWidget(CustomRainbowEffect* effect, MapModel* model, QWidget* parent);

public slots:
    /// On the colour column: asks for the row's colour.
    void handleTableDoubleClicked(QTableWidgetItem* item);
    /// The colour of the row that is being edited.
    void handleGotNewColor(const VelaColor& color);
    /// Column 1: how long the colour holds; column 2: how long it fades; both in seconds.
    void handleEntryChanged(int row, int col);
    void handleNewEntryClicked();
    void handleCustomContextMenuRequested(const QPoint& point);
    /// Removes the current row's colour.
    void handleDeleteColor();
    void handleGroupOffsetChanged(const QString& s);
    void handleCycleTimeChanged(uint i);

signals:
    void propertyChanged(const QString& name, const QString& value);

private:
    enum Column : int { ColorColumn = 0, HoldColumn, FadeColumn, ColumnCount };

    void addRow(const CustomRainbowEntry& entry);

    QPointer<CustomRainbowEffect> m_effect; // not owned
    QTableWidget* m_table = nullptr;
    QLabel* m_cycleTime = nullptr;
    QMenu* m_menu = nullptr;
    int m_editedRow = -1; // of the open colour dialog
};
