#include "editor/MetaWidget.h"

#include "editor/StateIcons.h"
#include "engine/MetaEffect.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QTextStream>
#include <QVBoxLayout>

namespace {
constexpr int kMinimumWidth = 976;
constexpr int kMinimumHeight = 660;
} // namespace

MetaWidget::MetaWidget(MetaEffect* effect, MapModel* model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
{
    setMinimumSize(kMinimumWidth, kMinimumHeight);
    setUpTable();
    const int unit = QFontMetrics(font()).lineSpacing() / 2;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * unit, 2 * unit, 2 * unit, unit);
    layout->addWidget(m_table);
    setMetaEffect(effect);
}

MetaEffect* MetaWidget::metaEffect() const
{
    return m_metaEffect;
}

void MetaWidget::setMetaEffect(MetaEffect* effect)
{
    if (m_metaEffect != nullptr) {
        m_metaEffect->disconnect(this);
    }
    m_metaEffect = effect;
    m_rows.clear(); // its effects may be gone before the table is rebuilt
    if (effect == nullptr) {
        return;
    }
    connect(effect, &QObject::destroyed, this, &MetaWidget::disconnectMetaEffect);
    connect(effect, &MetaEffect::updateEffectTimesComplete, this,
            &MetaWidget::handleUpdateEffectTimesComplete);
    connect(effect, &MetaEffect::internalUpdateLightsComplete, this,
            &MetaWidget::handleInternalUpdateLightsComplete);
}

void MetaWidget::disconnectMetaEffect(QObject* effect) const
{
    disconnect(effect, &QObject::destroyed, this, &MetaWidget::disconnectMetaEffect);
}

void MetaWidget::writeShow(QTextStream& stream)
{
    if (m_metaEffect != nullptr) {
        m_metaEffect->save(stream);
    }
    m_modified = false;
}

void MetaWidget::demoStart()
{
    if (m_table->rowCount() != 1) {
        return;
    }
    m_table->setCurrentCell(0, EidColumn);
    QCoreApplication::processEvents();
}

void MetaWidget::handleUpdateEffectTimesComplete()
{
    const QSignalBlocker blocker(m_table);
    const bool sorting = m_table->isSortingEnabled();
    m_table->setSortingEnabled(false); // a row must not move while it is being filled
    for (const Row& row : qAsConst(m_rows)) {
        if (row.effect != nullptr) {
            showTimes(row);
        }
    }
    m_table->setSortingEnabled(sorting);
}

void MetaWidget::handleInternalUpdateLightsComplete()
{
    for (Row& row : m_rows) {
        if (row.effect == nullptr || row.effect->active() == row.shownRunning) {
            continue;
        }
        const QSignalBlocker blocker(m_table);
        row.shownRunning = row.effect->active();
        row.name->setIcon(row.shownRunning ? StateIcons::ICON_CLOSE() : StateIcons::ICON_OPEN());
        row.running->setText(row.shownRunning ? QStringLiteral("1") : QStringLiteral("0"));
    }
}
