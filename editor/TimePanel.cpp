#include "editor/TimePanel.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

namespace {

enum Column : int { KindColumn = 0, ControlColumn };

constexpr int kLeastCycles = 1;
constexpr int kMostCycles = 1000;
constexpr int kTargetLetters = 8; // of the names of effects, at least

} // namespace

TimePanel::TimePanel(const QString& title, const QString& fixedText, const QString& cyclesText,
                     QWidget* parent)
    : QGroupBox(title, parent)
    , m_grid(new QGridLayout(this))
{
    const int unit = fontMetrics().lineSpacing() / 2;
    m_grid->setContentsMargins(unit, unit / 2, unit, unit / 2);
    m_grid->setHorizontalSpacing(unit);
    m_grid->setVerticalSpacing(unit / 2);
    m_grid->setColumnStretch(ControlColumn, 1);
    addFixedRow(fixedText);
    addLinkRows();
    if (!cyclesText.isEmpty()) {
        addCyclesRow(cyclesText);
    }
    auto* kinds = new QButtonGroup(this);
    kinds->addButton(m_fixedButton);
    kinds->addButton(m_linkedButton);
    if (m_cyclesButton != nullptr) {
        kinds->addButton(m_cyclesButton);
    }
    auto* sides = new QButtonGroup(this);
    sides->addButton(m_linkEndButton);
    sides->addButton(m_linkStartButton);
    clear();
}

void TimePanel::addFixedRow(const QString& text)
{
    m_fixedButton = new QRadioButton(text, this);
    m_fixedEdit = makeSecondsEdit(text.trimmed());
    QLabel* const unitLabel = makeLabel(tr("sec."), m_fixedEdit);
    m_ofFixed = {m_fixedEdit, unitLabel};
    auto* line = new QHBoxLayout;
    line->setSpacing(m_grid->horizontalSpacing());
    line->addWidget(m_fixedEdit);
    line->addWidget(unitLabel);
    line->addStretch();
    m_grid->addWidget(m_fixedButton, 0, KindColumn);
    m_grid->addLayout(line, 0, ControlColumn);
}

void TimePanel::addLinkRows()
{
    m_linkedButton = new QRadioButton(tr("Linked to the"), this);
    m_linkEndButton = new QRadioButton(tr("End"), this);
    m_linkStartButton = new QRadioButton(tr("Start"), this);
    m_targetBox = new QComboBox(this);
    m_targetBox->setAccessibleName(tr("Linked effect"));
    // Its width is not that of the names, which come and go.
    m_targetBox->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_targetBox->setMinimumContentsLength(kTargetLetters);
    m_targetBox->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QLabel* const of = makeLabel(tr("of Effect "), m_targetBox);
    m_offsetEdit = makeSecondsEdit(tr("Offset of the link"));
    QLabel* const offset = makeLabel(tr("with an offset of"), m_offsetEdit);
    QLabel* const unitLabel = makeLabel(tr("sec."), m_offsetEdit);
    m_ofLink = {m_linkEndButton, m_linkStartButton, of,       m_targetBox,
                offset,          m_offsetEdit,      unitLabel};

    auto* target = new QHBoxLayout;
    target->setSpacing(m_grid->horizontalSpacing());
    target->addWidget(m_linkEndButton);
    target->addWidget(m_linkStartButton);
    target->addWidget(of);
    target->addWidget(m_targetBox, 1);
    auto* distance = new QHBoxLayout;
    distance->setSpacing(m_grid->horizontalSpacing());
    distance->addWidget(offset);
    distance->addWidget(m_offsetEdit);
    distance->addWidget(unitLabel);
    distance->addStretch();
    m_grid->addWidget(m_linkedButton, 1, KindColumn);
    m_grid->addLayout(target, 1, ControlColumn);
    m_grid->addLayout(distance, 2, ControlColumn);
}

void TimePanel::addCyclesRow(const QString& text)
{
    m_cyclesButton = new QRadioButton(text, this);
    m_cyclesSpin = new QSpinBox(this);
    m_cyclesSpin->setRange(kLeastCycles, kMostCycles);
    m_cyclesSpin->setAlignment(Qt::AlignRight);
    m_cyclesSpin->setFixedWidth(m_fixedEdit->minimumWidth());
    m_cyclesSpin->setAccessibleName(tr("Cycles"));
    QLabel* const unitLabel = makeLabel(tr("Cycles"), m_cyclesSpin);
    m_ofCycles = {m_cyclesSpin, unitLabel};
    auto* line = new QHBoxLayout;
    line->setSpacing(m_grid->horizontalSpacing());
    line->addWidget(m_cyclesSpin);
    line->addWidget(unitLabel);
    line->addStretch();
    m_grid->addWidget(m_cyclesButton, 3, KindColumn);
    m_grid->addLayout(line, 3, ControlColumn);
}

QLineEdit* TimePanel::makeSecondsEdit(const QString& name)
{
    auto* edit = new QLineEdit(this);
    edit->setAlignment(Qt::AlignRight);
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("0000000.0000")));
    edit->setAccessibleName(title() + QStringLiteral(": ") + name);
    return edit;
}

QLabel* TimePanel::makeLabel(const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text, this);
    label->setBuddy(buddy);
    return label;
}

int TimePanel::kindColumnWidth() const
{
    int width = m_fixedButton->sizeHint().width();
    width = qMax(width, m_linkedButton->sizeHint().width());
    if (m_cyclesButton != nullptr) {
        width = qMax(width, m_cyclesButton->sizeHint().width());
    }
    return width;
}

void TimePanel::setKindColumnWidth(int width)
{
    m_grid->setColumnMinimumWidth(KindColumn, width);
}

void TimePanel::showSettings(const Settings& settings)
{
    blockControls(true);
    setEnabled(true);
    m_fixedEdit->setText(settings.fixedTime);
    m_offsetEdit->setText(settings.offset);
    (settings.linkStart ? m_linkStartButton : m_linkEndButton)->setChecked(true);
    m_targetBox->clear();
    const bool hasTargets = !settings.targets.isEmpty();
    if (hasTargets) {
        m_targetBox->addItems(settings.targets);
        m_targetBox->setCurrentIndex(settings.target);
    } else {
        m_targetBox->addItem(tr("None Available"));
    }
    m_linkedButton->setEnabled(hasTargets);
    if (m_cyclesSpin != nullptr) {
        m_cyclesSpin->setValue(settings.cycles);
    }
    checkKind(settings.kind);
    enableFor(settings.kind);
    blockControls(false);
}

void TimePanel::clear()
{
    blockControls(true);
    m_fixedEdit->clear();
    m_offsetEdit->clear();
    m_targetBox->clear();
    if (m_cyclesSpin != nullptr) {
        m_cyclesSpin->setValue(kLeastCycles);
    }
    checkKind(Kind::None);
    enableFor(Kind::None);
    setEnabled(false);
    blockControls(false);
}

void TimePanel::enableFor(Kind kind)
{
    const auto enable = [](const QVector<QWidget*>& widgets, bool on) {
        for (QWidget* const widget : widgets) {
            widget->setEnabled(on);
        }
    };
    enable(m_ofFixed, kind == Kind::Fixed);
    enable(m_ofLink, kind == Kind::Linked);
    enable(m_ofCycles, kind == Kind::Cycles);
}

TimePanel::Kind TimePanel::shownKind() const
{
    if (m_fixedButton->isChecked()) {
        return Kind::Fixed;
    }
    if (m_linkedButton->isChecked()) {
        return Kind::Linked;
    }
    return m_cyclesButton != nullptr && m_cyclesButton->isChecked() ? Kind::Cycles : Kind::None;
}

void TimePanel::checkKind(Kind kind)
{
    QButtonGroup* const group = m_fixedButton->group();
    group->setExclusive(false); // or none of them could be unchecked
    m_fixedButton->setChecked(kind == Kind::Fixed);
    m_linkedButton->setChecked(kind == Kind::Linked);
    if (m_cyclesButton != nullptr) {
        m_cyclesButton->setChecked(kind == Kind::Cycles);
    }
    group->setExclusive(true);
}

void TimePanel::blockControls(bool on)
{
    for (QWidget* const control :
         {static_cast<QWidget*>(m_fixedButton), static_cast<QWidget*>(m_fixedEdit),
          static_cast<QWidget*>(m_linkedButton), static_cast<QWidget*>(m_linkEndButton),
          static_cast<QWidget*>(m_linkStartButton), static_cast<QWidget*>(m_targetBox),
          static_cast<QWidget*>(m_offsetEdit), static_cast<QWidget*>(m_cyclesButton),
          static_cast<QWidget*>(m_cyclesSpin)}) {
        if (control != nullptr) {
            control->blockSignals(on);
        }
    }
}
