#include "editor/MetaWidget.h"

#include "editor/EffectForm.h"
#include "editor/EffectTable.h"
#include "editor/FixedColorWidget.h"
#include "editor/FlashEffectWidget.h"
#include "editor/GroupPicker.h"
#include "editor/ParameterForms.h"
#include "editor/ShownText.h"
#include "editor/StateIcons.h"
#include "editor/TimePanel.h"
#include "engine/EffectKeys.h"
#include "engine/EffectXml.h"
#include "engine/MetaEffect.h"
#include "map/MapModel.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QDomElement>
#include <QDomNode>
#include <QFrame>
#include <QGroupBox>
#include <QHeaderView>
#include <QMenu>
#include <QSignalBlocker>
#include <QTextStream>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int kItemsPerRow = 7; // hidden columns don't count, and a row has eight others
constexpr int kFormMargin = 20;

/// A title in which every character stands for itself.
QString plainTitle(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// What a show file holds of an effect beyond what is common to all: all that a form changes, and
/// nothing that anyone else does.
QString parameters(const Effect& effect)
{
    QDomDocument document;
    const QDomElement element = effect.toXml(document);
    QString text;
    for (QDomNode key = element.firstChild(); !key.isNull(); key = key.nextSibling()) {
        const EffectKey known = effectKey(key.nodeName());
        if (known < EffectKey::Type || known > EffectKey::EndCycleCount) {
            text += key.nodeName() + QLatin1Char('=') + EffectXml::valueOf(key) + QLatin1Char('\n');
        }
    }
    return text;
}

} // namespace

MetaWidget::MetaWidget(MetaEffect* effect, MapModel* model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
{
    setUpTypes();
    setUpTable();
    setUpForm();
    setUpContextMenu();
    setMetaEffect(effect);
    handleSelectionChanged();
    connectTable();
    connectTimes();
}

MetaEffect* MetaWidget::metaEffect() const
{
    return m_metaEffect;
}

void MetaWidget::setMetaEffect(MetaEffect* effect)
{
    m_modified = isModified(); // the form's effect may go with the former root
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
    setModified(false);
}

bool MetaWidget::isModified() const
{
    return m_modified ||
           (m_watchedEffect != nullptr && parameters(*m_watchedEffect) != m_watchedParameters);
}

void MetaWidget::setModified(bool modified)
{
    m_modified = modified;
    watchParameters(m_watchedEffect);
}

/// Forms write into their effects without a word to anyone.
void MetaWidget::watchParameters(const Effect* effect)
{
    m_watchedEffect = effect;
    m_watchedParameters = effect != nullptr ? parameters(*effect) : QString();
}

void MetaWidget::demoStart()
{
    if (m_table->rowCount() != 1) {
        return;
    }
    m_table->setCurrentCell(0, EidColumn);
    QCoreApplication::processEvents();
    if (auto* const form = qobject_cast<FixedColorWidget*>(m_parameterWidget)) {
        form->chooseColorClicked();
    }
}

void MetaWidget::handleSelectAll()
{
    m_table->selectAll();
}

void MetaWidget::handleSelectionChanged()
{
    int count = m_table->selectedItems().size() / kItemsPerRow;
    if (count > 1) {
        const QSignalBlocker blocker(m_table);
        m_table->clearSelection();
        count = 0;
    }
    Effect* const effect = count == 1 ? selectedEffects().value(0) : nullptr;
    if (effect == nullptr) {
        m_startPanel->clear();
        m_endPanel->clear();
        m_startLinkTargets.clear();
        m_endLinkTargets.clear();
        m_parameterBox->setTitle(tr("Effect Parameters"));
        return;
    }
    m_parameterBox->setTitle(plainTitle(shownText(effect->name()) + tr(" Parameters")));
    showForm(effect);
    showTimeSettings(*effect);
}

/// An effect without a form leaves the former one in place.
void MetaWidget::showForm(Effect* effect)
{
    EffectForm* const form = makeParameterForm(effect, m_model, m_parameterFrame);
    if (form == nullptr) {
        return;
    }
    form->setParent(m_parameterFrame); // a part of this window, whatever flags it came with
    m_modified = isModified();         // by the former form
    watchParameters(effect);
    dropForm();
    m_parameterWidget = form;
    m_parameterFrame->layout()->addWidget(form);
    form->show();
    const QSize size = form->minimumSize().expandedTo(form->sizeHint());
    m_parameterFrame->setMinimumSize(size);
    m_parameterBox->setMinimumSize(size + QSize(kFormMargin, kFormMargin));
    fitMinimumSize();

    // A form must not outlive the effect it seems to edit.
    m_formsEffect = connect(effect, &QObject::destroyed, this, [this] { dropForm(); });
    if (auto* const animation = qobject_cast<FlashEffectWidget*>(form)) {
        connect(animation, &FlashEffectWidget::flashEffectPreloadToggled, this,
                &MetaWidget::handleFlashEffectPreloadToggled);
    }
}

/// The form may be in the middle of a slot of its own, and tells of its end: it goes later. A
/// dialog that it has opened belongs to the window and finds it gone.
void MetaWidget::dropForm()
{
    EffectForm* const form = m_parameterWidget;
    m_parameterWidget = nullptr;
    disconnect(m_formsEffect); // the next form must not go with this one's effect
    if (form != nullptr) {
        form->retire();
    }
}

/// The room for the form grows with the largest one and never shrinks, so that nothing else moves
/// when another effect is selected.
void MetaWidget::fitMinimumSize()
{
    const QSize needed =
        m_parameterBox->minimumSize().expandedTo(m_parameterBox->layout()->totalMinimumSize());
    m_parameterRoom->setMinimumSize(m_parameterRoom->minimumSize().expandedTo(needed));
    setMinimumSize(minimumSize().expandedTo(layout()->totalMinimumSize()));
}

void MetaWidget::handleFlashEffectPreloadToggled(bool on)
{
    emit pauseEffectEngine(on);
}

void MetaWidget::handleCurrentChanged(int r, int c)
{
    if (c == GroupColumn) {
        chooseGroup(effectAtRow(r));
    }
}

void MetaWidget::chooseGroup(Effect* effect)
{
    if (effect == nullptr) {
        return;
    }
    const quint64 formerGid = effect->gid();
    const QPointer<MetaWidget> self(this);
    const QPointer<Effect> chosen(effect);
    const QPointer<GroupPicker> picker(new GroupPicker(m_model, effect, this));
    const int answer = picker->exec();
    if (self.isNull()) {
        return;
    }
    delete picker;
    if (chosen.isNull()) {
        return;
    }
    if (answer != QDialog::Accepted) {
        if (m_model->group(formerGid) != nullptr) {
            effect->setGid(formerGid);
        }
        effect->compile();
    } else if (m_model->group(effect->gid()) != nullptr) {
        effect->compile();
        m_modified = true;
    }
    showGroup(*effect);
}

void MetaWidget::handleChangeGroup()
{
    chooseGroup(selectedEffects().value(0));
}

void MetaWidget::handleRename()
{
    // Once the menu is gone: the window gets the focus back then, and the editor would lose it.
    QTimer::singleShot(0, this, [this] {
        const Row* const row = rowOf(selectedEffects().value(0));
        if (row != nullptr) {
            m_table->setFocus(Qt::OtherFocusReason);
            m_table->editItem(row->name);
        }
    });
}

void MetaWidget::handleContextMenuRequested(const QPoint& p)
{
    const bool hasSelection = m_table->selectionModel()->hasSelection();
    for (QAction* const action : m_contextMenu->actions()) {
        if (action->data().toBool()) { // it works on the selection
            action->setEnabled(hasSelection);
        }
    }
    m_contextMenu->exec(m_table->viewport()->mapToGlobal(p));
}

void MetaWidget::handleClicked(int /*r*/, int /*c*/, int /*button*/, const QPoint& /*p*/) {}

void MetaWidget::handleHeaderClicked(int s)
{
    m_table->sortItems(s, m_table->horizontalHeader()->sortIndicatorOrder());
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
