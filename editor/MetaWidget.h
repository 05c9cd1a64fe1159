#pragma once

#include <QHash>
#include <QIcon>
#include <QList>
#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

class Effect;
class MapModel;
class MetaEffect;
class QTableWidget;
class QTableWidgetItem;
class QTextStream;

/// The editor of one timeline: a table with a row per effect, and the show's modified flag.
class MetaWidget : public QWidget
{
    Q_OBJECT
public:
    enum Column : int {
        NameColumn = 0,
        TypeColumn,
        GroupColumn,
        PriorityColumn,
        StartColumn,
        EndColumn,
        FadeInColumn,
        FadeOutColumn,
        EidColumn,
        RunningColumn,
        ColumnCount
    };

    MetaWidget(MetaEffect* effect, MapModel* model, QWidget* parent);

    /// The root that is edited; null once that is gone.
    MetaEffect* metaEffect() const;
    /// Takes another root; the rows of the former one stay until rebuildTable().
    void setMetaEffect(MetaEffect* effect);
    /// A row for each effect of the root, and the root's end worked out anew.
    void rebuildTable();
    /// Writes the root to `stream` and clears the modified flag.
    void writeShow(QTextStream& stream);
    /// Selects the effect of a show that has exactly one; nothing for any other show.
    void demoStart();
    bool isModified() const { return m_modified; }
    void setModified(bool modified) { m_modified = modified; }

public slots:
    /// Shows the times that a resolving pass has worked out.
    void handleUpdateEffectTimesComplete();
    /// Shows which effects run. Called on every frame; touches the table only on a change.
    void handleInternalUpdateLightsComplete();
    void disconnectMetaEffect(QObject* effect) const;

signals:
    void pauseEffectEngine(bool pause);

private:
    /// What a frame needs of a row. Items keep their address when the table is sorted.
    struct Row
    {
        QPointer<Effect> effect;
        QTableWidgetItem* name = nullptr;
        QTableWidgetItem* start = nullptr;
        QTableWidgetItem* end = nullptr;
        QTableWidgetItem* running = nullptr;
        bool shownRunning = false;
    };

    void setUpTable();
    void addTableRow(Effect* effect, const QString& groupName);
    QString groupName(const Effect& effect) const;
    static void showTimes(const Row& row);
    const QIcon& typeIcon(int typeId);

    QPointer<MetaEffect> m_metaEffect; // not owned
    MapModel* m_model = nullptr;       // not owned
    QTableWidget* m_table = nullptr;
    QVector<Row> m_rows;
    QHash<int, QIcon> m_typeIcons; // by type number, shared by all rows
    bool m_modified = false;
};
