#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>

class ColorSwatch;
class Effect;
class MapModel;
class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QVBoxLayout;
class VelaColor;

/// What the parameter forms of all effects share: group boxes of labelled controls whose columns
/// stand in line, and the colour dialog. A form writes each change into its effect at once; a text
/// that is no number writes 0.
class EffectForm : public QWidget
{
    Q_OBJECT
public:
    /// Takes the form out of its window and deletes it, once nothing of it is at work.
    void retire();

signals:
    void valueChanged(const QString& name, const QString& value);

protected:
    /// While it lives the form lets events in, as progress that is to be seen must. They may retire
    /// the form, which then stays until the event that it works on is done: controls of it are yet
    /// to return from their signals.
    class Work
    {
    public:
        explicit Work(EffectForm* form);
        ~Work();
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

    private:
        QPointer<EffectForm> m_form; // goes at once where its window does
    };

    /// A swatch with its button and, where one was asked for, its check box.
    struct ColorRow
    {
        ColorSwatch* swatch = nullptr;
        QPushButton* button = nullptr;
        QCheckBox* check = nullptr;
    };

    /// The controls of addPlace().
    struct Place
    {
        QSpinBox* x = nullptr;
        QSpinBox* y = nullptr;
        QLineEdit* scale = nullptr;
    };

    /// `title` is the kind of effect in words. A null effect or model is fatal.
    EffectForm(const QString& title, const Effect* effect, MapModel* model, QWidget* parent);

    MapModel* model() const { return m_model; }
    /// What follows is put into a new box of this title.
    void beginGroup(const QString& title);
    QLineEdit* addLine(const QString& label, const QString& text);
    /// A line for a path: as wide as the form allows.
    QLineEdit* addWideLine(const QString& label, const QString& text);
    /// The same, for addWidget().
    QLineEdit* makeWideLine(const QString& text);
    /// Shows `value` within the range, which leaves the effect's own as it is.
    QSpinBox* addSpin(const QString& label, int least, int most, int start, int value);
    QCheckBox* addCheck(const QString& text, bool on);
    /// No check box where `check` is empty.
    ColorRow addColor(const QString& label, const VelaColor& color, const QString& check = {},
                      bool isChecked = false);
    /// A text that changes; `widest` reserves its room.
    QLabel* addValue(const QString& label, const QString& text, const QString& widest);
    /// A place in a picture and its scale in one row behind `name`; places reach from -`most` to
    /// `most`.
    Place addPlace(const QString& name, int most, int x, int y, double scale);
    /// Any widget over the whole width of the box.
    void addWidget(QWidget* widget, Qt::Alignment alignment = {});
    /// Any widget behind a label of its own.
    void addLabelled(const QString& label, QWidget* widget);
    /// Brings the label columns of all boxes in line and gives the controls their mnemonics. Last
    /// of all.
    void finishLayout();
    /// Half a line, the unit of all distances.
    int unit() const;

    /// Asks for a colour; see chooseColor(). Nothing for a null effect.
    void choose(const Effect* effect, const VelaColor& current,
                const std::function<void(const VelaColor&)>& handler);

    /// A count of rows or colours for a spin box, which holds less.
    static int spinValue(quint32 value);
    /// What a "Trans" check box does.
    static QString transTip();
    /// What an offset in seconds between rows does.
    static QString rowOffsetTip();
    /// The text of a line that holds a double.
    static QString text(double value);
    /// The text of a line that holds whole seconds of a cycle, `ms` in milliseconds.
    static QString wholeSeconds(quint32 ms);

private:
    /// The text in front of `widget`, which it names for assistive tools, too.
    static QLabel* makeLabel(const QString& label, QWidget* widget);
    QSpinBox* makeSpin(int least, int most, int start, int value);
    void addMnemonics();

    MapModel* m_model = nullptr; // not owned
    int m_works = 0;
    bool m_isRetired = false;
    QVBoxLayout* m_boxes = nullptr;
    QGridLayout* m_grid = nullptr; // of the box that is being filled
};
