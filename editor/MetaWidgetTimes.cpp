#include "color/Numeric.h"
#include "editor/EffectTable.h"
#include "editor/LinkTargets.h"
#include "editor/MetaWidget.h"
#include "editor/ShownText.h"
#include "editor/SortingPause.h"
#include "editor/TimePanel.h"
#include "engine/MetaEffect.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include <limits>

namespace {

constexpr double kMsPerSecond = 1000.0;
constexpr int kTextDigits = 10; // milliseconds of the greatest time

QString seconds(double ms)
{
    return QString::number(ms / kMsPerSecond, 'g', kTextDigits);
}

/// Milliseconds of a text in seconds; 0 for one that is no number.
double milliseconds(const QString& text)
{
    return text.toDouble() * kMsPerSecond;
}

int spinValue(quint32 value)
{
    constexpr auto kMost = static_cast<quint32>(std::numeric_limits<int>::max());
    return static_cast<int>(qMin(value, kMost));
}

TimePanel::Kind startKind(const Effect& effect)
{
    switch (effect.startType()) {
    case Effect::StartFixed:
        return TimePanel::Kind::Fixed;
    case Effect::StartLinked:
        return TimePanel::Kind::Linked;
    default:
        return TimePanel::Kind::None;
    }
}

TimePanel::Kind endKind(const Effect& effect)
{
    switch (effect.endType()) {
    case Effect::EndFixed:
        return TimePanel::Kind::Fixed;
    case Effect::EndLinked:
        return TimePanel::Kind::Linked;
    case Effect::EndCycles:
        return TimePanel::Kind::Cycles;
    default:
        return TimePanel::Kind::None;
    }
}

/// Fills in the names of the effects that can be linked to and which of them is the present one.
/// Without one the first is offered, unless that would deny a link that holds.
void enterTargets(const QList<Effect*>& targets, quint32 eid, TimePanel::Settings* settings)
{
    for (const Effect* const target : targets) {
        if (target->eid() == eid && settings->target < 0) {
            settings->target = settings->targets.size();
        }
        settings->targets.append(shownText(target->name()));
    }
    if (settings->target < 0 && settings->kind != TimePanel::Kind::Linked) {
        settings->target = 0;
    }
}

QVector<QPointer<Effect>> entries(const QList<Effect*>& targets)
{
    QVector<QPointer<Effect>> list;
    list.reserve(targets.size());
    for (Effect* const target : targets) {
        list.append(target);
    }
    return list;
}

} // namespace

void MetaWidget::showTimeSettings(Effect& effect)
{
    QList<Effect*> targets;
    if (m_metaEffect != nullptr) {
        m_metaEffect->clearResolved();
        targets = linkTargets(*m_metaEffect, &effect);
    }
    showStartSettings(effect, targets);
    showEndSettings(effect, targets);
}

void MetaWidget::showSelectedTimes()
{
    const QList<Effect*> selected = selectedEffects();
    if (selected.size() == 1) {
        showTimeSettings(*selected.first());
    }
}

void MetaWidget::showStartSettings(Effect& effect, const QList<Effect*>& targets)
{
    m_startLinkTargets = entries(targets);
    if (targets.isEmpty() && effect.startType() == Effect::StartLinked) {
        effect.setStartType(Effect::StartFixed);
    }
    TimePanel::Settings settings;
    settings.kind = startKind(effect);
    settings.fixedTime = seconds(effect.startFixedTime());
    settings.linkStart = effect.startLinkStart();
    settings.offset = seconds(effect.startLinkOffset());
    enterTargets(targets, effect.startLinkEid(), &settings);
    m_startPanel->showSettings(settings);
}

void MetaWidget::showEndSettings(Effect& effect, const QList<Effect*>& targets)
{
    m_endLinkTargets = entries(targets);
    if (targets.isEmpty() && effect.endType() == Effect::EndLinked) {
        effect.setEndType(Effect::EndFixed);
    }
    TimePanel::Settings settings;
    settings.kind = endKind(effect);
    settings.fixedTime = seconds(effect.endFixedTime());
    settings.linkStart = effect.endLinkStart();
    settings.offset = seconds(effect.endLinkOffset());
    settings.cycles = spinValue(effect.endCycleCount());
    enterTargets(targets, effect.endLinkEid(), &settings);
    m_endPanel->showSettings(settings);
}

void MetaWidget::changeSelected(const std::function<void(Effect&)>& change, QWidget* control)
{
    const QList<Effect*> effects = selectedEffects();
    for (Effect* const effect : effects) {
        change(*effect);
    }
    if (m_metaEffect != nullptr) {
        m_metaEffect->updateEffectTimes();
    }
    control->setFocus(Qt::OtherFocusReason);
    m_modified = true;
}

void MetaWidget::handleStartFixedToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    m_startPanel->enableFor(TimePanel::Kind::Fixed);
    const quint32 time = truncU32(milliseconds(m_startPanel->fixedEdit()->text()));
    changeSelected(
        [time](Effect& effect) {
            effect.setStartType(Effect::StartFixed);
            effect.setStartFixedTime(time);
        },
        m_startPanel->fixedButton());
}

void MetaWidget::handleStartLinkedToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    m_startPanel->enableFor(TimePanel::Kind::Linked);
    const bool toStart = m_startPanel->linkStartButton()->isChecked();
    const double offset = milliseconds(m_startPanel->offsetEdit()->text());
    const Effect* const target =
        m_startLinkTargets.value(m_startPanel->targetBox()->currentIndex());
    changeSelected(
        [=](Effect& effect) {
            effect.setStartType(Effect::StartLinked);
            effect.setStartLinkStart(toStart);
            if (target != nullptr) {
                effect.setStartLinkEid(target->eid());
            }
            effect.setStartLinkOffset(offset);
        },
        m_startPanel->linkedButton());
}

void MetaWidget::handleStartFixedTimeChanged(const QString& text)
{
    const quint32 time = truncU32(milliseconds(text));
    changeSelected([time](Effect& effect) { effect.setStartFixedTime(time); },
                   m_startPanel->fixedEdit());
}

void MetaWidget::handleStartLinkStartToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    changeSelected([](Effect& effect) { effect.setStartLinkStart(true); },
                   m_startPanel->linkStartButton());
}

void MetaWidget::handleStartLinkEndToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    changeSelected([](Effect& effect) { effect.setStartLinkStart(false); },
                   m_startPanel->linkEndButton());
}

void MetaWidget::handleStartLinkEffectActivated(int index)
{
    const Effect* const target = m_startLinkTargets.value(index);
    if (target == nullptr) {
        return;
    }
    changeSelected([target](Effect& effect) { effect.setStartLinkEid(target->eid()); },
                   m_startPanel->targetBox());
}

void MetaWidget::handleStartLinkOffsetChanged(const QString& text)
{
    const double offset = milliseconds(text);
    changeSelected([offset](Effect& effect) { effect.setStartLinkOffset(offset); },
                   m_startPanel->offsetEdit());
}

void MetaWidget::handleEndFixedToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    m_endPanel->enableFor(TimePanel::Kind::Fixed);
    const quint32 time = truncU32(milliseconds(m_endPanel->fixedEdit()->text()));
    changeSelected(
        [time](Effect& effect) {
            effect.setEndType(Effect::EndFixed);
            effect.setEndFixedTime(time);
        },
        m_endPanel->fixedButton());
}

void MetaWidget::handleEndLinkedToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    m_endPanel->enableFor(TimePanel::Kind::Linked);
    const bool toStart = m_endPanel->linkStartButton()->isChecked();
    const double offset = milliseconds(m_endPanel->offsetEdit()->text());
    const Effect* const target = m_endLinkTargets.value(m_endPanel->targetBox()->currentIndex());
    changeSelected(
        [=](Effect& effect) {
            effect.setEndType(Effect::EndLinked);
            effect.setEndLinkStart(toStart);
            if (target != nullptr) {
                effect.setEndLinkEid(target->eid());
            }
            effect.setEndLinkOffset(offset);
        },
        m_endPanel->linkedButton());
}

void MetaWidget::handleEndCyclesToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    m_endPanel->enableFor(TimePanel::Kind::Cycles);
    const auto count = static_cast<quint32>(m_endPanel->cyclesSpin()->value());
    changeSelected(
        [count](Effect& effect) {
            effect.setEndType(Effect::EndCycles);
            effect.setEndCycleCount(count);
        },
        m_endPanel->cyclesButton());
}

void MetaWidget::handleEndFixedTimeChanged(const QString& text)
{
    const quint32 time = truncU32(milliseconds(text));
    changeSelected([time](Effect& effect) { effect.setEndFixedTime(time); },
                   m_endPanel->fixedEdit());
}

void MetaWidget::handleEndLinkStartToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    changeSelected([](Effect& effect) { effect.setEndLinkStart(true); },
                   m_endPanel->linkStartButton());
}

void MetaWidget::handleEndLinkEndToggled(bool on)
{
    if (!on) {
        m_modified = true;
        return;
    }
    // The focus goes to the other panel, unlike everywhere else.
    changeSelected([](Effect& effect) { effect.setEndLinkStart(false); },
                   m_startPanel->offsetEdit());
}

void MetaWidget::handleEndLinkEffectActivated(int index)
{
    const Effect* const target = m_endLinkTargets.value(index);
    if (target == nullptr) {
        return;
    }
    changeSelected([target](Effect& effect) { effect.setEndLinkEid(target->eid()); },
                   m_endPanel->targetBox());
}

void MetaWidget::handleEndLinkOffsetChanged(const QString& text)
{
    const double offset = milliseconds(text);
    changeSelected([offset](Effect& effect) { effect.setEndLinkOffset(offset); },
                   m_endPanel->offsetEdit());
}

void MetaWidget::handleEndCyclesChanged(int count)
{
    const auto cycles = static_cast<quint32>(qMax(count, 0));
    changeSelected([cycles](Effect& effect) { effect.setEndCycleCount(cycles); },
                   m_endPanel->cyclesSpin());
}

void MetaWidget::handleUpdateEffectTimesComplete()
{
    {
        const QSignalBlocker blocker(m_table);
        const int sorted = m_table->horizontalHeader()->sortIndicatorSection();
        if (sorted == StartColumn || sorted == EndColumn) {
            const SortingPause pause(m_table); // a row must not move while it is being filled
            for (const Row& row : qAsConst(m_rows)) {
                showTimes(row);
            }
        } else {
            for (const Row& row : qAsConst(m_rows)) {
                showTimes(row);
            }
        }
    }
    // The pass may have given up a link that the panels still show.
    const QList<Effect*> selected = selectedEffects();
    if (selected.size() == 1 && m_startPanel->isEnabled()) {
        Effect& effect = *selected.first();
        if (m_startPanel->shownKind() != startKind(effect) ||
            m_endPanel->shownKind() != endKind(effect)) {
            showTimeSettings(effect);
        }
    }
}
