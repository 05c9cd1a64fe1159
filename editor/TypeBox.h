#pragma once

#include <QComboBox>

class QTableWidget;

/// The type of an effect, in the row of a table. It lies flat on its row until it has the mouse or
/// the focus, and leaves the wheel to the table: a turn must not change the type of an effect.
class TypeBox : public QComboBox
{
    Q_OBJECT
public:
    explicit TypeBox(QTableWidget* table);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QTableWidget* m_table = nullptr; // not owned; its viewport owns this
};
