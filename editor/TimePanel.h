#pragma once

#include <QGroupBox>
#include <QString>
#include <QStringList>
#include <QVector>

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSpinBox;

/// The controls for one side of an effect's span: a fixed time, a link to another effect, or (for
/// the end) a number of cycles. It shows and relays; what is done with it is its owner's business.
class TimePanel : public QGroupBox
{
    Q_OBJECT
public:
    enum class Kind { None, Fixed, Linked, Cycles };

    struct Settings
    {
        Kind kind = Kind::None; // None checks nothing
        QString fixedTime;
        bool linkStart = true;
        QStringList targets; // empty: none is available
        int target = -1;     // -1: the present one is not among them
        QString offset;
        int cycles = 1;
    };

    /// `fixedText` stands beside the fixed time; an empty `cyclesText` leaves the cycles out.
    TimePanel(const QString& title, const QString& fixedText, const QString& cyclesText,
              QWidget* parent);

    /// Shows settings without a signal of a control, and enables the panel.
    void showSettings(const Settings& settings);
    /// Empties and disables the panel, for no effect at all. No signals.
    void clear();
    /// Enables the controls that belong to `kind` and disables the others.
    void enableFor(Kind kind);
    Kind shownKind() const;

    QRadioButton* fixedButton() const { return m_fixedButton; }
    QLineEdit* fixedEdit() const { return m_fixedEdit; }
    QRadioButton* linkedButton() const { return m_linkedButton; }
    QRadioButton* linkEndButton() const { return m_linkEndButton; }
    QRadioButton* linkStartButton() const { return m_linkStartButton; }
    QComboBox* targetBox() const { return m_targetBox; }
    QLineEdit* offsetEdit() const { return m_offsetEdit; }
    /// Null without cycles, as the spin box.
    QRadioButton* cyclesButton() const { return m_cyclesButton; }
    QSpinBox* cyclesSpin() const { return m_cyclesSpin; }
    /// Width of the column of the kinds, so that two panels can stand in line.
    int kindColumnWidth() const;
    void setKindColumnWidth(int width);

private:
    void addFixedRow(const QString& text);
    void addLinkRows();
    void addCyclesRow(const QString& text);
    QLineEdit* makeSecondsEdit(const QString& name);
    QLabel* makeLabel(const QString& text, QWidget* buddy);
    void checkKind(Kind kind);
    void blockControls(bool on);

    QGridLayout* m_grid = nullptr;
    QRadioButton* m_fixedButton = nullptr;
    QLineEdit* m_fixedEdit = nullptr;
    QRadioButton* m_linkedButton = nullptr;
    QRadioButton* m_linkEndButton = nullptr;
    QRadioButton* m_linkStartButton = nullptr;
    QComboBox* m_targetBox = nullptr;
    QLineEdit* m_offsetEdit = nullptr;
    QRadioButton* m_cyclesButton = nullptr;
    QSpinBox* m_cyclesSpin = nullptr;
    QVector<QWidget*> m_ofFixed; // what is enabled with a kind
    QVector<QWidget*> m_ofLink;
    QVector<QWidget*> m_ofCycles;
};
