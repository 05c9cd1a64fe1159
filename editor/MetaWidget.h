#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <functional>

class Effect;
class EffectForm;
class EffectTable;
class MapModel;
class MetaEffect;
class QComboBox;
class QFrame;
class QGroupBox;
class QMenu;
class QPoint;
class QPushButton;
class QStringListModel;
class QTableWidgetItem;
class QTextStream;
class TimePanel;

/// The editor of one timeline: a table with a row per effect, the controls for an effect's start
/// and end, room for the form of its parameters, and the show's modified flag. The only place where
/// effects are created, changed and deleted.
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
    /// A row for each effect of the root, and the root's end worked out anew. Selects nothing.
    void rebuildTable();
    /// Writes the root to `stream` and clears the modified flag.
    void writeShow(QTextStream& stream);
    /// Selects the effect of a show that has exactly one, and opens the colour dialog if that is of
    /// a fixed colour; nothing for any other show.
    void demoStart();
    /// Whether the show was changed since the last save, be it here or in an effect's form.
    bool isModified() const;
    void setModified(bool modified);

public slots:
    void handleCutEffect();
    void handleCopyEffect();
    /// Adds the effects of the clipboard's text. They keep their group and links; the show does
    /// not count as modified.
    void handlePasteEffect();
    void handleDeleteEffect();
    /// Leaves the selection as it is: rows are selected singly.
    void handleSelectAll();
    void handleNewEffectClicked();
    /// The box chooses the type of the next new effect only.
    void handleEffectTypeComboBoxChanged(const QString& type);
    /// Replaces `e` by a new effect of that type that keeps its place. A type that can't be made
    /// leaves the show without the effect, and the root inactive.
    void handleEffectTypeChanged(Effect* e, const QString& newType);
    void handleTableEffectTypeComboBoxChanged(const QString& type);
    void handleValueChanged(int r, int c);
    void handleCurrentChanged(int r, int c);
    void handleSelectionChanged();
    void handleContextMenuRequested(const QPoint& p);
    void handleClicked(int r, int c, int button, const QPoint& p);
    void handleHeaderClicked(int s);

    // Texts are seconds; one that is no number counts as 0.
    void handleStartFixedToggled(bool on);
    void handleStartLinkedToggled(bool on);
    void handleStartFixedTimeChanged(const QString& text);
    void handleStartLinkStartToggled(bool on);
    void handleStartLinkEndToggled(bool on);
    void handleStartLinkEffectActivated(int index);
    void handleStartLinkOffsetChanged(const QString& text);
    void handleEndFixedToggled(bool on);
    void handleEndLinkedToggled(bool on);
    void handleEndCyclesToggled(bool on);
    void handleEndFixedTimeChanged(const QString& text);
    void handleEndLinkStartToggled(bool on);
    void handleEndLinkEndToggled(bool on);
    void handleEndLinkEffectActivated(int index);
    void handleEndLinkOffsetChanged(const QString& text);
    void handleEndCyclesChanged(int count);

    /// Shows the times that a resolving pass has worked out.
    void handleUpdateEffectTimesComplete();
    /// Shows which effects run. Called on every frame; touches the table only on a change.
    void handleInternalUpdateLightsComplete();
    void disconnectMetaEffect(QObject* effect) const;
    void handleFlashEffectPreloadToggled(bool on);

signals:
    void pauseEffectEngine(bool pause);

private:
    /// An effect's row. Items keep their address when the table is sorted.
    struct Row
    {
        QPointer<Effect> effect;
        QTableWidgetItem* name = nullptr;
        QTableWidgetItem* type = nullptr;
        QTableWidgetItem* group = nullptr;
        QTableWidgetItem* start = nullptr;
        QTableWidgetItem* end = nullptr;
        QTableWidgetItem* eid = nullptr;
        QTableWidgetItem* running = nullptr;
        QComboBox* typeBox = nullptr;
        bool shownRunning = false;
    };
    enum class TypeAnswer { No, Yes, Gone };

    // Form.
    void setUpTable();
    void setUpTypes();
    void setUpForm();
    void setUpContextMenu();
    QWidget* makeTablePart();
    QWidget* makeParameterPart();
    void connectTable();
    void connectTimes();
    void fitMinimumSize();

    // Rows.
    void dropTableRows(int kept);
    void addTableRows(const QList<Effect*>& effects);
    void fillTableRow(int index, Effect* effect, const QString& groupName);
    QComboBox* typeBoxAt(int index);
    void offerTypes(QComboBox* box, const Effect& effect);
    void showType(const Row& row);
    void showGroup(const Effect& effect);
    static void showTimes(const Row& row);
    QString groupName(const Effect& effect) const;
    Effect* effectAtRow(int row) const;
    Row* rowOf(const Effect* effect);
    /// From the top.
    QList<Effect*> selectedEffects() const;
    void selectRow(const Row& row);
    void editCell(Effect& effect, int r, int c);

    // Selection.
    void showForm(Effect* effect);
    void dropForm();
    void watchParameters(const Effect* effect);
    void showTimeSettings(Effect& effect);
    void showSelectedTimes();
    void showStartSettings(Effect& effect, const QList<Effect*>& targets);
    void showEndSettings(Effect& effect, const QList<Effect*>& targets);
    void changeSelected(const std::function<void(Effect&)>& change, QWidget* control);

    // The show.
    quint32 freeEid() const;
    void chooseGroup(Effect* effect);
    void handleChangeGroup();
    void handleRename();
    static void destroyEffect(Effect* effect);
    void removeFromShow(Effect* effect);
    void finishRemoval();
    void toClipboard(bool cuts);
    TypeAnswer askTypeChange(const QPointer<Effect>& effect);
    void changeType(Effect* e, const QString& newType);

    EffectForm* m_parameterWidget = nullptr; // the present form, or null
    QMetaObject::Connection m_formsEffect;
    QPointer<const Effect> m_watchedEffect; // that of the form
    QString m_watchedParameters;            // what they were when it counted as unchanged
    QPointer<MetaEffect> m_metaEffect;      // not owned
    MapModel* m_model = nullptr;            // not owned
    QVector<QPointer<Effect>> m_startLinkTargets;
    QVector<QPointer<Effect>> m_endLinkTargets;
    QStringList m_typeNames;
    QMenu* m_contextMenu = nullptr;
    bool m_modified = false;
    bool m_inTypeChange = false;

    EffectTable* m_table = nullptr;
    QVector<Row> m_rows;
    QStringListModel* m_rowTypes = nullptr; // shared by the boxes of all rows
    QPushButton* m_newButton = nullptr;
    QPushButton* m_deleteButton = nullptr;
    QComboBox* m_newTypeBox = nullptr;
    TimePanel* m_startPanel = nullptr;
    TimePanel* m_endPanel = nullptr;
    QGroupBox* m_parameterBox = nullptr;
    QFrame* m_parameterFrame = nullptr;
    QWidget* m_parameterRoom = nullptr; // keeps the size of the largest form shown
};
