#pragma once

#include <QDialog>
#include <QPointer>

class Effect;
class MapModel;
class QCheckBox;
class QTableWidget;
class QTableWidgetItem;

/// Asks for the group of an effect. A click on a row sets the effect's group at once, so that a
/// running show shows it; whoever opened the dialog puts the former one back when it is cancelled.
class GroupPicker : public QDialog
{
    Q_OBJECT
public:
    GroupPicker(MapModel* model, Effect* effect, QWidget* parent);

public slots:
    void handleOkButtonClicked();
    void handleClicked(QTableWidgetItem* item);
    void handleDoubleClicked(QTableWidgetItem* item);
    /// Lists the groups anew.
    void handleSyncClicked();

private:
    enum Column : int { NameColumn = 0, TypeColumn, GidColumn, ColumnCount };

    void setUpForm();
    void setUpTable();
    void listGroups();

    MapModel* m_model = nullptr; // not owned
    QPointer<Effect> m_effect;   // not owned; may go while the dialog is open
    QTableWidget* m_groupListView = nullptr;
    QCheckBox* m_syncBox = nullptr;
};
