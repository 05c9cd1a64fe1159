#include "editor/EffectTable.h"
#include "editor/MetaWidget.h"
#include "editor/SortingPause.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"

#include <QComboBox>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>

#include <algorithm>

namespace {

/// Kept apart from the window's settings, which never write it.
constexpr char kAskKey[] = "askeffectchange";

QSettings makeStore()
{
    return QSettings(QStringLiteral("Halden"), QStringLiteral("Pageant Forge"));
}

/// What an effect keeps when it changes its type: all but its parameters.
struct KeptSettings
{
    explicit KeptSettings(const Effect& e)
        : name(e.name())
        , gid(e.gid())
        , transparency(e.transparency())
        , priority(e.priority())
        , begin(e.begin())
        , end(e.end())
        , fadein(e.fadein())
        , fadeout(e.fadeout())
        , eid(e.eid())
        , startType(e.startType())
        , startLinkEid(e.startLinkEid())
        , startFixedTime(e.startFixedTime())
        , startLinkStart(e.startLinkStart())
        , startLinkOffset(e.startLinkOffset())
        , endType(e.endType())
        , endLinkEid(e.endLinkEid())
        , endFixedTime(e.endFixedTime())
        , endLinkStart(e.endLinkStart())
        , endLinkOffset(e.endLinkOffset())
        , endCycleCount(e.endCycleCount())
    {}

    void apply(Effect* e) const
    {
        e->setName(name);
        e->setGid(gid);
        e->compile();
        e->setTransparency(transparency);
        e->setPriority(priority);
        e->setBegin(begin);
        e->setEnd(end);
        e->setFadein(fadein);
        e->setFadeout(fadeout);
        e->setEid(eid);
        e->setStartType(startType);
        e->setStartLinkEid(startLinkEid);
        e->setStartFixedTime(startFixedTime);
        e->setStartLinkStart(startLinkStart);
        e->setStartLinkOffset(startLinkOffset);
        e->setEndType(endType);
        e->setEndLinkEid(endLinkEid);
        e->setEndFixedTime(endFixedTime);
        e->setEndLinkStart(endLinkStart);
        e->setEndLinkOffset(endLinkOffset);
        e->setEndCycleCount(endCycleCount);
    }

    QString name;
    quint64 gid;
    double transparency;
    quint32 priority;
    quint32 begin;
    quint32 end;
    quint32 fadein;
    quint32 fadeout;
    quint32 eid;
    int startType;
    quint32 startLinkEid;
    quint32 startFixedTime;
    bool startLinkStart;
    double startLinkOffset;
    int endType;
    quint32 endLinkEid;
    quint32 endFixedTime;
    bool endLinkStart;
    double endLinkOffset;
    quint32 endCycleCount;
};

} // namespace

void MetaWidget::handleEffectTypeComboBoxChanged(const QString& /*type*/) {}

void MetaWidget::handleTableEffectTypeComboBoxChanged(const QString& type)
{
    // By the box itself where it is one of a row: the numbers of a broken file may repeat.
    const QObject* const box = sender();
    const auto row = std::find_if(m_rows.cbegin(), m_rows.cend(),
                                  [box](const Row& candidate) { return candidate.typeBox == box; });
    if (box != nullptr && row != m_rows.cend()) {
        handleEffectTypeChanged(row->effect, type);
    }
}

void MetaWidget::handleEffectTypeChanged(Effect* e, const QString& newType)
{
    if (e == nullptr || m_metaEffect == nullptr || m_inTypeChange) {
        return;
    }
    m_table->takeOverEdit(); // later it would close unheard
    const QPointer<MetaWidget> self(this);
    const QPointer<Effect> effect(e);
    m_inTypeChange = true;
    const TypeAnswer answer = askTypeChange(effect);
    if (self.isNull()) {
        return;
    }
    if (answer == TypeAnswer::No) {
        const Row* const row = rowOf(e);
        if (row != nullptr) {
            showType(*row);
        }
    } else if (answer == TypeAnswer::Yes && newType != e->type()) {
        changeType(e, newType);
    }
    m_inTypeChange = false;
}

/// Gone where the effect went while the question stood.
MetaWidget::TypeAnswer MetaWidget::askTypeChange(const QPointer<Effect>& effect)
{
    if (!makeStore().value(QLatin1String(kAskKey), true).toBool()) {
        return TypeAnswer::Yes;
    }
    const QPointer<MetaWidget> self(this);
    const QPointer<QMessageBox> box(new QMessageBox(this));
    box->setIcon(QMessageBox::Question);
    box->setText(tr("Confirm Effect Type Change"));
    box->setInformativeText(tr("Are you sure that you want to change the effect type?\n"
                               "All parameter values will be discarded."));
    QPushButton* const yes = box->addButton(tr("Yes"), QMessageBox::YesRole);
    QPushButton* const always =
        box->addButton(tr("Yes, and Don't Ask Again"), QMessageBox::YesRole);
    QPushButton* const no = box->addButton(tr("No"), QMessageBox::NoRole);
    box->setDefaultButton(no);
    box->setEscapeButton(no);
    box->exec();
    if (self.isNull() || box.isNull()) {
        return TypeAnswer::Gone;
    }
    const bool isAlways = box->clickedButton() == always;
    const bool isYes = isAlways || box->clickedButton() == yes;
    delete box;
    if (effect.isNull() || m_metaEffect == nullptr) {
        return TypeAnswer::Gone;
    }
    if (isAlways) {
        makeStore().setValue(QLatin1String(kAskKey), false);
    }
    return isYes ? TypeAnswer::Yes : TypeAnswer::No;
}

void MetaWidget::changeType(Effect* e, const QString& newType)
{
    const QSignalBlocker blocker(m_table);
    Row* const row = rowOf(e);
    MetaEffect* const root = m_metaEffect;
    root->setActive(false); // no frame paints a half-changed show
    const KeptSettings kept(*e);
    root->removeEffect(e);
    root->compile();
    destroyEffect(e);
    Effect* const changed = EffectFactory::createEffect(newType, m_model, nullptr);
    if (changed == nullptr) {
        return;
    }
    kept.apply(changed);
    changed->compile();
    connect(changed, &Effect::cycleTimeChanged, root, &MetaEffect::updateEffectTimes);
    root->appendEffect(changed);
    root->sortEffects();
    root->compile();
    m_modified = true;
    if (row != nullptr) {
        row->effect = changed;
    }
    root->updateEffectTimes();
    if (row != nullptr) {
        const SortingPause pause(m_table);
        selectRow(*row);
        showType(*row);
    }
    handleSelectionChanged();
    root->setActive(true);
}
