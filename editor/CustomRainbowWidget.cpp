#include "editor/CustomRainbowWidget.h"

#include "color/VelaColor.h"
#include "editor/ColorSwatch.h"
#include "effects/CustomRainbowEffect.h"

#include <QColor>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

namespace {

constexpr double kMsPerSecond = 1000.0;
constexpr int kShownRows = 6;

QString seconds(quint32 ms)
{
    return QString::number(ms / kMsPerSecond, 'g', 6);
}

/// Says what would fill it while it is empty.
class ColorTable : public QTableWidget
{
public:
    using QTableWidget::QTableWidget;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QTableWidget::paintEvent(event);
        if (rowCount() == 0) {
            QPainter painter(viewport());
            QColor grey = palette().color(QPalette::Text); // to be read on any ground
            grey.setAlphaF(0.6);
            painter.setPen(grey);
            painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap,
                             CustomRainbowWidget::tr("No colors yet. Press New Color."));
        }
    }
};

} // namespace

CustomRainbowWidget::CustomRainbowWidget(CustomRainbowEffect* effect, MapModel* model,
                                         QWidget* parent)
    : EffectForm(tr("Custom Rainbow"), effect, model, parent)
    , m_effect(effect)
{
    beginGroup(tr("Colors"));
    m_table = new ColorTable(0, ColumnCount, this);
    m_table->setHorizontalHeaderLabels({tr("Color"), tr("Hold"), tr("Fade")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    for (const int column : {HoldColumn, FadeColumn}) { // as their numbers
        m_table->horizontalHeaderItem(column)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    m_table->verticalHeader()->hide();
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    m_table->setAccessibleName(tr("Colors"));
    m_table->setToolTip(tr("Double-click a color to choose another; hold and fade in seconds"));
    m_table->setMinimumHeight((kShownRows + 2) * QFontMetrics(font()).lineSpacing() * 3 / 2);
    for (const CustomRainbowEntry* const entry : effect->entryList()) {
        addRow(*entry);
    }
    addWidget(m_table);
    auto* newColor = new QPushButton(tr("New Color"), this);
    newColor->setAutoDefault(false);
    addWidget(newColor, Qt::AlignLeft);
    beginGroup(tr("Timing"));
    m_cycleTime = addValue(tr("Cycle Time (sec):"), seconds(effect->cycleTime()),
                           QStringLiteral("4294967.29"));
    QLineEdit* const offset =
        addLine(tr("Light-to-Light Offset (sec):"), text(effect->groupOffset()));
    offset->setToolTip(rowOffsetTip());
    finishLayout();

    m_menu = new QMenu(tr("Popup Menu"), this);
    using Self = CustomRainbowWidget;
    connect(m_menu->addAction(tr("Delete")), &QAction::triggered, this, &Self::handleDeleteColor);
    connect(m_table, &QTableWidget::itemDoubleClicked, this, &Self::handleTableDoubleClicked);
    connect(m_table, &QTableWidget::cellChanged, this, &Self::handleEntryChanged);
    connect(m_table, &QTableWidget::customContextMenuRequested, this,
            &Self::handleCustomContextMenuRequested);
    connect(newColor, &QPushButton::clicked, this, &Self::handleNewEntryClicked);
    connect(offset, &QLineEdit::textChanged, this, &Self::handleGroupOffsetChanged);
    connect(effect, &Effect::cycleTimeChanged, this, &Self::handleCycleTimeChanged);
}

void CustomRainbowWidget::addRow(const CustomRainbowEntry& entry)
{
    const QSignalBlocker blocker(m_table);
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    auto* color = new QTableWidgetItem;
    color->setFlags(color->flags() & ~Qt::ItemIsEditable);
    m_table->setItem(row, ColorColumn, color);
    const auto setTime = [&](int column, double seconds) {
        auto* const item = new QTableWidgetItem(text(seconds));
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_table->setItem(row, column, item);
    };
    setTime(HoldColumn, entry.duration);
    setTime(FadeColumn, entry.fade);
    auto* swatch = new ColorSwatch(m_table);
    swatch->setAttribute(Qt::WA_TransparentForMouseEvents); // clicks are the table's
    swatch->setMinimumSize(0, 0);
    swatch->setColor(entry.color);
    m_table->setCellWidget(row, ColorColumn, swatch);
}

void CustomRainbowWidget::handleTableDoubleClicked(QTableWidgetItem* item)
{
    if (item == nullptr || item->column() != ColorColumn || m_effect == nullptr) {
        return;
    }
    m_editedRow = item->row();
    choose(m_effect, m_effect->color(m_editedRow),
           [this](const VelaColor& c) { handleGotNewColor(c); });
}

void CustomRainbowWidget::handleGotNewColor(const VelaColor& color)
{
    if (auto* const swatch =
            dynamic_cast<ColorSwatch*>(m_table->cellWidget(m_editedRow, ColorColumn))) {
        swatch->setColor(color);
    }
    if (m_effect != nullptr) {
        m_effect->setColor(m_editedRow, color);
    }
}

void CustomRainbowWidget::handleEntryChanged(int row, int col)
{
    const QTableWidgetItem* const item = m_table->item(row, col);
    if (m_effect == nullptr || item == nullptr) {
        return;
    }
    if (col == HoldColumn) {
        m_effect->setDuration(row, item->text().toDouble());
    } else if (col == FadeColumn) {
        m_effect->setFade(row, item->text().toDouble());
    }
}

void CustomRainbowWidget::handleNewEntryClicked()
{
    if (m_effect == nullptr) {
        return;
    }
    const CustomRainbowEntry entry;
    m_effect->addEntry(entry);
    addRow(entry);
    m_table->scrollToBottom();
}

void CustomRainbowWidget::handleCustomContextMenuRequested(const QPoint& point)
{
    m_menu->exec(m_table->viewport()->mapToGlobal(point));
}

void CustomRainbowWidget::handleDeleteColor()
{
    const int row = m_table->currentRow();
    if (m_effect == nullptr || row < 0) {
        return;
    }
    m_effect->removeEntry(row);
    m_table->removeRow(row);
}

void CustomRainbowWidget::handleGroupOffsetChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setGroupOffset(s.toDouble());
    }
}

void CustomRainbowWidget::handleCycleTimeChanged(uint i)
{
    m_cycleTime->setText(seconds(i));
}
