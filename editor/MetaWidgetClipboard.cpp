#include "editor/EffectClipboard.h"
#include "editor/EffectTable.h"
#include "editor/MetaWidget.h"
#include "editor/SortingPause.h"
#include "engine/MetaEffect.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalBlocker>
#include <QTextStream>

/// A timeline's own list does not own what it holds.
void MetaWidget::destroyEffect(Effect* effect)
{
    if (auto* const timeline = qobject_cast<MetaEffect*>(effect)) {
        timeline->deleteShow();
    } else {
        delete effect;
    }
}

void MetaWidget::handleCopyEffect()
{
    toClipboard(false);
}

void MetaWidget::handleCutEffect()
{
    toClipboard(true);
}

void MetaWidget::toClipboard(bool cuts)
{
    const QList<Effect*> effects = selectedEffects();
    QString text;
    QTextStream stream(&text);
    {
        const QSignalBlocker blocker(m_table);
        const SortingPause pause(m_table);
        for (Effect* const effect : effects) {
            EffectClipboard::append(stream, *effect);
            if (cuts) {
                removeFromShow(effect);
            }
        }
    }
    stream.flush();
    auto* content = new QMimeData;
    content->setText(text);
    QGuiApplication::clipboard()->setMimeData(content);
    if (cuts) {
        finishRemoval();
    }
}

void MetaWidget::handleDeleteEffect()
{
    const QList<Effect*> effects = selectedEffects();
    {
        const QSignalBlocker blocker(m_table);
        const SortingPause pause(m_table);
        for (Effect* const effect : effects) {
            removeFromShow(effect);
        }
    }
    finishRemoval();
}

/// Frees the effect. Sorting is off and the table's signals are blocked.
void MetaWidget::removeFromShow(Effect* effect)
{
    if (m_metaEffect != nullptr) {
        m_metaEffect->removeEffect(effect);
    }
    const Row* const row = rowOf(effect);
    if (row != nullptr) {
        m_table->removeRow(m_table->row(row->eid));
        m_rows.removeAt(static_cast<int>(row - m_rows.constData()));
    }
    destroyEffect(effect);
}

void MetaWidget::finishRemoval()
{
    handleSelectionChanged();
    if (m_metaEffect != nullptr) {
        m_metaEffect->compile();
    }
    m_modified = true;
}

void MetaWidget::handlePasteEffect()
{
    const QMimeData* const content = QGuiApplication::clipboard()->mimeData();
    if (m_metaEffect == nullptr || content == nullptr) {
        return;
    }
    const QList<Effect*> effects = EffectClipboard::read(content->text(), m_model);
    for (Effect* const effect : effects) {
        effect->setEid(freeEid());
        effect->setName(tr("Copy of ") + effect->name());
        m_metaEffect->addEffect(effect);
    }
    {
        const QSignalBlocker blocker(m_table);
        m_table->setSortingEnabled(false);
        addTableRows(effects);
        m_table->sortItems(-1, Qt::AscendingOrder);
        m_table->setSortingEnabled(true);
    }
    m_metaEffect->updateEffectTimes();
    showSelectedTimes(); // there is more to link to
}
