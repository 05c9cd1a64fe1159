#pragma once

#include <QTableWidget>

/// The table of a timeline's effects: says in grey what would fill it, and edits its cells as
/// plain text. What is typed stands in the cell until it is taken over or dropped, whatever the
/// program shows in that cell meanwhile.
class EffectTable : public QTableWidget
{
    Q_OBJECT
public:
    EffectTable(int rows, int columns, QWidget* parent);

    /// The column over whose items widgets lie: their text is not painted.
    void setCoveredColumn(int column);
    /// A cell is being typed into.
    bool isEditing() const { return state() == EditingState; }
    /// Ends the edit of an open cell as Return does; nothing without one.
    void takeOverEdit();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
