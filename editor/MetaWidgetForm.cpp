#include "editor/EffectTable.h"
#include "editor/MetaWidget.h"
#include "editor/TimePanel.h"
#include "engine/EffectFactory.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStringListModel>
#include <QVBoxLayout>

namespace {

constexpr int kMinimumWidth = 976;
constexpr int kMinimumHeight = 660;
constexpr int kNameWidth = 80;
constexpr int kTypeWidth = 120;
constexpr int kGroupWidth = 100;
// Of the other columns, in digits.
constexpr int kNumberDigits = 7;
constexpr int kTimeDigits = 9;
constexpr int kLeastRows = 5;    // seen at a time, however large the font
constexpr int kFormLetters = 30; // of the room for forms, before the first one
// How the width is shared out.
constexpr int kTableShare = 2;
constexpr int kFormShare = 1;

} // namespace

void MetaWidget::setUpTypes()
{
    m_typeNames = EffectFactory::effectTypeNames();
    for (const char* const name :
         {"Meta Effect", "Selection", "Sparkle Group", "White Fade", "Text"}) {
        m_typeNames.removeAll(QString::fromLatin1(name));
    }
    QStringList shortList = m_typeNames;
    shortList.removeAll(QStringLiteral("White Fixed Color"));
    shortList.removeAll(QStringLiteral("White Cross Fade"));
    m_rowTypes = new QStringListModel(shortList, this);
}

void MetaWidget::setUpForm()
{
    const int unit = QFontMetrics(font()).lineSpacing() / 2;
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2 * unit, 2 * unit, 2 * unit, unit);
    layout->setSpacing(2 * unit);
    layout->addWidget(makeTablePart(), kTableShare);
    layout->addWidget(makeParameterPart(), kFormShare);
    setMinimumSize(kMinimumWidth, kMinimumHeight);
    fitMinimumSize();
}

QWidget* MetaWidget::makeTablePart()
{
    const int unit = QFontMetrics(font()).lineSpacing() / 2;
    m_newButton = new QPushButton(tr("New Effect"), this);
    m_newButton->setObjectName(QStringLiteral("newEffectButton"));
    m_newTypeBox = new QComboBox(this);
    m_newTypeBox->setObjectName(QStringLiteral("effectTypeBox"));
    m_newTypeBox->setAccessibleName(tr("Type of the new effect"));
    m_newTypeBox->setToolTip(tr("Type of the new effect"));
    const QStringList types = m_rowTypes->stringList();
    for (const QString& type : types) {
        m_newTypeBox->addItem(QIcon(EffectFactory::iconPath(EffectFactory::typeNumber(type))),
                              type);
    }
    m_newTypeBox->setMaxVisibleItems(types.size());
    m_deleteButton = new QPushButton(tr("Delete Selected Effects"), this);
    m_deleteButton->setObjectName(QStringLiteral("deleteEffectsButton"));
    m_startPanel = new TimePanel(tr("Start Time"), tr("Fixed at "), QString(), this);
    m_startPanel->setObjectName(QStringLiteral("startPanel"));
    m_endPanel =
        new TimePanel(tr("End Time"), tr("Fixed duration of "), tr("A fixed Duration of "), this);
    m_endPanel->setObjectName(QStringLiteral("endPanel"));
    const int width = qMax(m_startPanel->kindColumnWidth(), m_endPanel->kindColumnWidth());
    m_startPanel->setKindColumnWidth(width);
    m_endPanel->setKindColumnWidth(width);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(unit);
    buttons->addWidget(m_newButton);
    buttons->addWidget(m_newTypeBox);
    buttons->addStretch();
    buttons->addWidget(m_deleteButton);
    auto* part = new QWidget(this);
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(unit);
    column->addWidget(m_table, 1);
    column->addLayout(buttons);
    column->addSpacing(unit);
    column->addWidget(m_startPanel);
    column->addWidget(m_endPanel);
    // The eye goes from the table to the buttons and on downwards.
    setTabOrder(m_table, m_newButton);
    setTabOrder(m_newButton, m_newTypeBox);
    setTabOrder(m_newTypeBox, m_deleteButton);
    return part;
}

QWidget* MetaWidget::makeParameterPart()
{
    const int unit = QFontMetrics(font()).lineSpacing() / 2;
    m_parameterRoom = new QWidget(this);
    m_parameterRoom->setObjectName(QStringLiteral("parameterRoom"));
    m_parameterRoom->setMinimumWidth(QFontMetrics(font()).averageCharWidth() * kFormLetters);
    m_parameterBox = new QGroupBox(m_parameterRoom);
    m_parameterBox->setObjectName(QStringLiteral("parameterBox"));
    m_parameterFrame = new QFrame(m_parameterBox);
    m_parameterFrame->setObjectName(QStringLiteral("parameterFrame"));
    auto* frameLayout = new QVBoxLayout(m_parameterFrame);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    auto* boxLayout = new QVBoxLayout(m_parameterBox);
    boxLayout->setContentsMargins(unit, unit, unit, unit);
    boxLayout->addWidget(m_parameterFrame);
    auto* roomLayout = new QVBoxLayout(m_parameterRoom);
    roomLayout->setContentsMargins(0, 0, 0, 0);
    roomLayout->addWidget(m_parameterBox);
    return m_parameterRoom;
}

void MetaWidget::setUpTable()
{
    m_table = new EffectTable(0, ColumnCount, this);
    m_table->setObjectName(QStringLiteral("effectTable")); // tests find it by this name
    m_table->setHorizontalHeaderLabels({tr("Name"), tr("Type"), tr("Group"), tr("Priority"),
                                        tr("Start"), tr("End"), tr("Fade In"), tr("Fade Out"),
                                        tr("EID"), tr("Running")});
    for (int column = 0; column < ColumnCount; ++column) { // as their columns
        m_table->horizontalHeaderItem(column)->setTextAlignment(
            (column < PriorityColumn ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    }
    m_table->setAccessibleName(tr("Effects"));
    m_table->setCoveredColumn(TypeColumn);
    m_table->setColumnHidden(EidColumn, true);
    m_table->setColumnHidden(RunningColumn, true);
    m_table->setColumnWidth(NameColumn, kNameWidth);
    m_table->setColumnWidth(TypeColumn, kTypeWidth);
    m_table->setColumnWidth(GroupColumn, kGroupWidth);
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int column = PriorityColumn; column < FadeOutColumn; ++column) {
        const bool hasIcon = column == StartColumn || column == EndColumn;
        m_table->setColumnWidth(column, digit * (hasIcon ? kTimeDigits : kNumberDigits));
    }
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->verticalHeader()->hide();
    const int rowHeight = fontMetrics().lineSpacing() * 8 / 5;
    m_table->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_table->setMinimumHeight(m_table->horizontalHeader()->sizeHint().height() +
                              kLeastRows * rowHeight);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setTabKeyNavigation(false); // tab leads on to the buttons
    m_table->setWordWrap(false);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    m_table->sortItems(-1, Qt::AscendingOrder);
    m_table->setSortingEnabled(true);
}

void MetaWidget::setUpContextMenu()
{
    m_contextMenu = new QMenu(this);
    const auto add = [this](const QString& text, auto slot, bool needsSelection) {
        QAction* const action = m_contextMenu->addAction(text);
        action->setData(needsSelection);
        connect(action, &QAction::triggered, this, slot);
    };
    add(tr("Cut Selected Effects"), &MetaWidget::handleCutEffect, true);
    add(tr("Copy Selected Effects"), &MetaWidget::handleCopyEffect, true);
    add(tr("Paste Selected Effects"), &MetaWidget::handlePasteEffect, true);
    add(tr("Delete Selected Effects"), &MetaWidget::handleDeleteEffect, true);
    m_contextMenu->addSeparator();
    add(tr("New Effect"), &MetaWidget::handleNewEffectClicked, false);
    add(tr("Select All"), &MetaWidget::handleSelectAll, false);
    add(tr("Change Group..."), &MetaWidget::handleChangeGroup, true);
    add(tr("Rename"), &MetaWidget::handleRename, true);
}

void MetaWidget::connectTable()
{
    connect(m_newButton, &QPushButton::clicked, this, &MetaWidget::handleNewEffectClicked);
    connect(m_deleteButton, &QPushButton::clicked, this, &MetaWidget::handleDeleteEffect);
    connect(m_newTypeBox, &QComboBox::currentTextChanged, this,
            &MetaWidget::handleEffectTypeComboBoxChanged);
    connect(m_table, &QTableWidget::cellChanged, this, &MetaWidget::handleValueChanged);
    connect(m_table, &QTableWidget::cellClicked, this, &MetaWidget::handleCurrentChanged);
    connect(m_table, &QTableWidget::itemSelectionChanged, this,
            &MetaWidget::handleSelectionChanged);
    connect(m_table, &QWidget::customContextMenuRequested, this,
            &MetaWidget::handleContextMenuRequested);
    connect(m_table->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &MetaWidget::handleHeaderClicked);
}

void MetaWidget::connectTimes()
{
    const TimePanel& start = *m_startPanel;
    connect(start.fixedButton(), &QRadioButton::toggled, this,
            &MetaWidget::handleStartFixedToggled);
    connect(start.linkedButton(), &QRadioButton::toggled, this,
            &MetaWidget::handleStartLinkedToggled);
    connect(start.fixedEdit(), &QLineEdit::textChanged, this,
            &MetaWidget::handleStartFixedTimeChanged);
    connect(start.linkStartButton(), &QRadioButton::toggled, this,
            &MetaWidget::handleStartLinkStartToggled);
    connect(start.linkEndButton(), &QRadioButton::toggled, this,
            &MetaWidget::handleStartLinkEndToggled);
    connect(start.targetBox(), qOverload<int>(&QComboBox::activated), this,
            &MetaWidget::handleStartLinkEffectActivated);
    connect(start.offsetEdit(), &QLineEdit::textChanged, this,
            &MetaWidget::handleStartLinkOffsetChanged);

    const TimePanel& end = *m_endPanel;
    connect(end.fixedButton(), &QRadioButton::toggled, this, &MetaWidget::handleEndFixedToggled);
    connect(end.linkedButton(), &QRadioButton::toggled, this, &MetaWidget::handleEndLinkedToggled);
    connect(end.cyclesButton(), &QRadioButton::toggled, this, &MetaWidget::handleEndCyclesToggled);
    connect(end.fixedEdit(), &QLineEdit::textChanged, this, &MetaWidget::handleEndFixedTimeChanged);
    connect(end.linkStartButton(), &QRadioButton::toggled, this,
            &MetaWidget::handleEndLinkStartToggled);
    connect(end.linkEndButton(), &QRadioButton::toggled, this,
            &MetaWidget::handleEndLinkEndToggled);
    connect(end.targetBox(), qOverload<int>(&QComboBox::activated), this,
            &MetaWidget::handleEndLinkEffectActivated);
    connect(end.offsetEdit(), &QLineEdit::textChanged, this,
            &MetaWidget::handleEndLinkOffsetChanged);
    connect(end.cyclesSpin(), qOverload<int>(&QSpinBox::valueChanged), this,
            &MetaWidget::handleEndCyclesChanged);
}
