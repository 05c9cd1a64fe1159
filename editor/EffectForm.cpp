#include "editor/EffectForm.h"

#include "color/VelaColor.h"
#include "editor/ColorChooser.h"
#include "editor/ColorSwatch.h"
#include "engine/Effect.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSet>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace {
enum Column : int { LabelColumn = 0, ControlColumn, RestColumn };
constexpr quint32 kMsPerSecond = 1000;
const char* const kMenuLetters = "EFHS"; // of the main window's menus

/// Where a text's mnemonic goes: the first letter of a word if one is free, else any free letter;
/// -1 if there is none.
int mnemonicPlace(const QString& text, const QSet<QChar>& taken)
{
    int place = -1;
    for (int i = 0; i < text.size(); ++i) {
        if (!text.at(i).isLetter() || taken.contains(text.at(i).toUpper())) {
            continue;
        }
        if (i == 0 || !text.at(i - 1).isLetter()) {
            return i;
        }
        if (place < 0) {
            place = i;
        }
    }
    return place;
}

/// Gives the text of `named`, a label or a button, a mnemonic of its own.
template <typename Named>
void addMnemonic(Named* named, QSet<QChar>* taken)
{
    QString text = named->text();
    const int place = mnemonicPlace(text, *taken);
    if (place >= 0) {
        taken->insert(text.at(place).toUpper());
        named->setText(text.insert(place, QLatin1Char('&')));
    }
}
} // namespace

EffectForm::EffectForm(const QString& title, const Effect* effect, MapModel* model, QWidget* parent)
    : QWidget(parent, Qt::WindowStaysOnTopHint)
    , m_model(model)
{
    if (effect == nullptr || model == nullptr) {
        qBadAlloc();
    }
    setWindowTitle(title);
    m_boxes = new QVBoxLayout(this);
    m_boxes->setContentsMargins(0, 0, 0, 0);
    m_boxes->setSpacing(2 * unit());
}

int EffectForm::unit() const
{
    return QFontMetrics(font()).lineSpacing() / 2;
}

void EffectForm::beginGroup(const QString& title)
{
    auto* box = new QGroupBox(title, this);
    m_grid = new QGridLayout(box);
    m_grid->setContentsMargins(unit(), unit(), unit(), unit());
    m_grid->setHorizontalSpacing(unit());
    m_grid->setVerticalSpacing(unit() / 2);
    m_grid->setColumnStretch(RestColumn, 1);
    m_boxes->addWidget(box);
}

void EffectForm::addLabelled(const QString& label, QWidget* widget)
{
    const int row = m_grid->rowCount();
    m_grid->addWidget(makeLabel(label, widget), row, LabelColumn, Qt::AlignVCenter);
    m_grid->addWidget(widget, row, ControlColumn, 1, 2, Qt::AlignLeft | Qt::AlignVCenter);
}

QLabel* EffectForm::makeLabel(const QString& label, QWidget* widget)
{
    auto* text = new QLabel(label, widget->parentWidget());
    text->setBuddy(widget);
    QString name = label;
    widget->setAccessibleName(name.remove(QLatin1Char(':')));
    return text;
}

QLineEdit* EffectForm::addLine(const QString& label, const QString& text)
{
    auto* line = new QLineEdit(text, m_grid->parentWidget());
    line->setFixedWidth(line->fontMetrics().horizontalAdvance(QStringLiteral("000000000.000")));
    line->setAlignment(Qt::AlignRight);
    addLabelled(label, line);
    return line;
}

QLineEdit* EffectForm::addWideLine(const QString& label, const QString& text)
{
    QLineEdit* const line = makeWideLine(text);
    const int row = m_grid->rowCount();
    m_grid->addWidget(makeLabel(label, line), row, LabelColumn, Qt::AlignVCenter);
    m_grid->addWidget(line, row, ControlColumn, 1, 2);
    return line;
}

QLineEdit* EffectForm::makeWideLine(const QString& text)
{
    auto* line = new QLineEdit(text, m_grid->parentWidget());
    line->setMinimumWidth(line->fontMetrics().averageCharWidth() * 24);
    return line;
}

QSpinBox* EffectForm::addSpin(const QString& label, int least, int most, int start, int value)
{
    QSpinBox* const spin = makeSpin(least, most, start, value);
    addLabelled(label, spin);
    return spin;
}

QSpinBox* EffectForm::makeSpin(int least, int most, int start, int value)
{
    auto* spin = new QSpinBox(m_grid->parentWidget());
    spin->setLocale(QLocale::c()); // its text is read as a number: no digits of other scripts
    spin->setRange(least, most);
    spin->setValue(start);
    spin->setValue(value);
    spin->setAlignment(Qt::AlignRight);
    return spin;
}

QCheckBox* EffectForm::addCheck(const QString& text, bool on)
{
    auto* check = new QCheckBox(text, m_grid->parentWidget());
    check->setChecked(on);
    m_grid->addWidget(check, m_grid->rowCount(), ControlColumn, 1, 2);
    return check;
}

EffectForm::ColorRow EffectForm::addColor(const QString& label, const VelaColor& color,
                                          const QString& check, bool isChecked)
{
    QWidget* const box = m_grid->parentWidget();
    const int row = m_grid->rowCount();
    ColorRow made;
    made.swatch = new ColorSwatch(box);
    made.swatch->setColor(color);
    made.swatch->setAccessibleName(label);
    made.button = new QPushButton(tr("Choose Color"), box);
    made.button->setAutoDefault(false);
    made.button->setAccessibleName(tr("Choose Color") + QStringLiteral(": ") + label);
    auto* text = new QLabel(label, box);
    text->setBuddy(made.button);
    auto* line = new QHBoxLayout;
    line->setSpacing(unit());
    line->addWidget(made.swatch);
    line->addWidget(made.button);
    if (!check.isEmpty()) {
        made.check = new QCheckBox(check, box);
        made.check->setChecked(isChecked);
        made.check->setAccessibleName(label + QLatin1Char(' ') + check);
        line->addWidget(made.check);
    }
    line->addStretch();
    m_grid->addWidget(text, row, LabelColumn, Qt::AlignVCenter);
    m_grid->addLayout(line, row, ControlColumn, 1, 2);
    return made;
}

QLabel* EffectForm::addValue(const QString& label, const QString& text, const QString& widest)
{
    auto* value = new QLabel(text, m_grid->parentWidget());
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(widest));
    addLabelled(label, value);
    return value;
}

EffectForm::Place EffectForm::addPlace(const QString& name, int most, int x, int y, double scale)
{
    QWidget* const box = m_grid->parentWidget();
    Place made;
    made.x = makeSpin(-most, most, 0, x);
    made.y = makeSpin(-most, most, 0, y);
    made.scale = new QLineEdit(text(scale), box);
    made.scale->setFixedWidth(
        made.scale->fontMetrics().horizontalAdvance(QStringLiteral("00000.000")));
    made.scale->setAlignment(Qt::AlignRight);
    auto* line = new QHBoxLayout;
    line->setSpacing(unit());
    const auto add = [&](const QString& label, QWidget* control) {
        line->addWidget(makeLabel(label, control));
        line->addWidget(control);
        control->setAccessibleName(name + QLatin1Char(' ') + control->accessibleName());
    };
    add(tr("X:"), made.x);
    add(tr("Y:"), made.y);
    add(tr("Scale:"), made.scale);
    line->addStretch();
    const int row = m_grid->rowCount();
    m_grid->addWidget(new QLabel(name, box), row, LabelColumn, Qt::AlignVCenter);
    m_grid->addLayout(line, row, ControlColumn, 1, 2);
    return made;
}

void EffectForm::addWidget(QWidget* widget, Qt::Alignment alignment)
{
    m_grid->addWidget(widget, m_grid->rowCount(), LabelColumn, 1, 3, alignment);
}

void EffectForm::finishLayout()
{
    addMnemonics();
    int widest = 0;
    for (const QLabel* const label : findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            widest = std::max(widest, label->sizeHint().width());
        }
    }
    for (QGridLayout* const grid : findChildren<QGridLayout*>()) {
        grid->setColumnMinimumWidth(LabelColumn, widest);
    }
    m_boxes->addStretch();
}

/// In the order in which the keyboard passes through the controls.
void EffectForm::addMnemonics()
{
    QHash<const QWidget*, QLabel*> labels; // by control
    for (QLabel* const label : findChildren<QLabel*>()) {
        labels.insert(label->buddy(), label);
    }
    QSet<QChar> taken;
    for (const char* letter = kMenuLetters; *letter != '\0'; ++letter) {
        taken.insert(QLatin1Char(*letter));
    }
    for (QWidget* control = nextInFocusChain(); control != this;
         control = control->nextInFocusChain()) {
        if (!isAncestorOf(control) || (control->focusPolicy() & Qt::TabFocus) == 0) {
            continue;
        }
        if (QLabel* const label = labels.value(control)) {
            addMnemonic(label, &taken);
        } else if (auto* const button = qobject_cast<QAbstractButton*>(control)) {
            addMnemonic(button, &taken);
        }
    }
}

EffectForm::Work::Work(EffectForm* form)
    : m_form(form)
{
    ++form->m_works;
    if (form->m_isRetired) {
        QCoreApplication::removePostedEvents(form, QEvent::DeferredDelete); // not yet
    }
}

EffectForm::Work::~Work()
{
    if (m_form != nullptr && --m_form->m_works == 0 && m_form->m_isRetired) {
        m_form->deleteLater();
    }
}

void EffectForm::retire()
{
    hide();
    setParent(nullptr);
    m_isRetired = true;
    if (m_works == 0) {
        deleteLater();
    }
}

void EffectForm::choose(const Effect* effect, const VelaColor& current,
                        const std::function<void(const VelaColor&)>& handler)
{
    if (effect != nullptr) {
        chooseColor(*effect, m_model, current, this, handler);
    }
}

int EffectForm::spinValue(quint32 value)
{
    constexpr auto kMost = static_cast<quint32>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(value, kMost));
}

QString EffectForm::transTip()
{
    return tr("Transparent: shows what lies beneath");
}

QString EffectForm::rowOffsetTip()
{
    return tr("How far each row of lights is ahead of the row before");
}

QString EffectForm::text(double value)
{
    return QString::number(value, 'g', 6);
}

QString EffectForm::wholeSeconds(quint32 ms)
{
    return QString::number(ms / kMsPerSecond);
}
