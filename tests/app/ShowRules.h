#pragma once

#include "color/Numeric.h"
#include "editor/EffectForm.h"
#include "editor/LinkTargets.h"
#include "editor/MetaWidget.h"
#include "editor/ParameterForms.h"
#include "editor/ShownText.h"
#include "editor/TimePanel.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/Group.h"
#include "map/MapModel.h"
#include "tests/app/WindowBench.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QLineEdit>
#include <QSet>
#include <QTextStream>

#include <cmath>

/// What must hold of a window and its show between any two events. Each function returns what is
/// wrong, or an empty text.
class ShowRules
{
public:
    explicit ShowRules(const WindowBench& bench)
        : m_bench(bench)
        , m_editor(bench.editor())
        , m_root(bench.editor()->metaEffect())
        , m_table(bench.table())
    {}

    /// What only an edit changes, and no repair of links or choice of a group.
    static uint fingerprint(const MetaEffect& root)
    {
        uint sum = 0; // the order of equal priorities is none of the user's doing
        const QList<Effect*> effects = root.effectList();
        for (const Effect* const effect : effects) {
            uint one = qHash(effect->eid());
            one = 31 * one + qHash(effect->name());
            one = 31 * one + qHash(effect->type());
            one = 31 * one + effect->priority();
            one = 31 * one + effect->fadein();
            one = 31 * one + effect->fadeout();
            sum += one;
        }
        return sum;
    }

    QString all()
    {
        if (m_root == nullptr) {
            return QStringLiteral("no show");
        }
        QString wrong = title();
        for (const auto rule : {&ShowRules::rows, &ShowRules::selection, &ShowRules::form}) {
            wrong = wrong.isEmpty() ? (this->*rule)() : wrong;
        }
        if (wrong.isEmpty()) {
            m_root->updateEffectTimes(); // what is wrong with links is repaired by the next pass
            wrong = times();
        }
        for (const auto rule : {&ShowRules::rowTimes, &ShowRules::panels, &ShowRules::file}) {
            wrong = wrong.isEmpty() ? (this->*rule)() : wrong;
        }
        return wrong;
    }

private:
    template <typename... Parts>
    static QString say(const char* text, const Parts&... parts)
    {
        QString line = QString::fromLatin1(text);
        const QStringList list = {toText(parts)...};
        for (const QString& part : list) {
            line += QStringLiteral(" \"%1\"").arg(part.left(60));
        }
        return line;
    }
    static QString toText(const QString& text) { return text; }
    template <typename Number>
    static QString toText(Number number)
    {
        return QString::number(number);
    }

    QString title()
    {
        const QString base = QStringLiteral("Orrin Pageant Forge");
        const QString title = m_bench.window->windowTitle();
        const bool isBare = title == base || title == base + QLatin1Char(' ');
        const bool isFile = title.startsWith(base + QLatin1Char(' ')) &&
                            title.endsWith(QLatin1String(".sho"), Qt::CaseInsensitive);
        return isBare || isFile ? QString() : say("title", title);
    }

    /// A row for each effect, which shows its settings.
    QString rows()
    {
        const QList<Effect*> effects = m_root->effectList();
        if (effects.size() != m_table->rowCount()) {
            return say("effects, rows", effects.size(), m_table->rowCount());
        }
        QSet<quint32> eids;
        QHash<QString, const Effect*> byEid;
        for (const Effect* const effect : effects) {
            if (eids.contains(effect->eid())) {
                return say("eid twice", effect->eid());
            }
            eids.insert(effect->eid());
            byEid.insert(QString::number(effect->eid()), effect);
        }
        for (int row = 0; row < m_table->rowCount(); ++row) {
            const Effect* const effect = byEid.take(cell(row, MetaWidget::EidColumn));
            if (effect == nullptr) {
                return say("row without an effect", row, cell(row, MetaWidget::EidColumn));
            }
            const QString wrong = oneRow(row, *effect);
            if (!wrong.isEmpty()) {
                return wrong;
            }
        }
        return {};
    }

    QString oneRow(int row, const Effect& effect)
    {
        const Group* const group = m_bench.model()->group(effect.gid());
        const QString groupName = group != nullptr ? group->name() : QStringLiteral("None");
        const auto seconds = [](quint32 ms) { return QString::number(ms / 1000.0, 'g', 6); };
        const QList<QPair<int, QString>> expected = {
            {MetaWidget::NameColumn, effect.name()},
            {MetaWidget::TypeColumn, effect.type()},
            {MetaWidget::GroupColumn, groupName},
            {MetaWidget::PriorityColumn, QString::number(effect.priority())},
            {MetaWidget::FadeInColumn, seconds(effect.fadein())},
            {MetaWidget::FadeOutColumn, seconds(effect.fadeout())}};
        for (const auto& entry : expected) {
            if (cell(row, entry.first) != entry.second) {
                return say("cell", row, entry.first, cell(row, entry.first), entry.second);
            }
        }
        const auto* const box =
            qobject_cast<QComboBox*>(m_table->cellWidget(row, MetaWidget::TypeColumn));
        if (box == nullptr || (box->currentIndex() >= 0 && box->currentText() != effect.type())) {
            return say("type box", row, effect.type());
        }
        const QString running = cell(row, MetaWidget::RunningColumn);
        return running == QLatin1String("0") || running == QLatin1String("1")
                   ? QString()
                   : say("running", running);
    }

    /// One row or none, with what it counts as.
    QString selection()
    {
        const int items = m_table->selectedItems().size();
        if (items != 0 && items != kItemsInRow) {
            return say("selected items", items);
        }
        const auto* const box = m_editor->findChild<QGroupBox*>(QStringLiteral("parameterBox"));
        const Effect* const effect = selected();
        if ((effect == nullptr) != (items == 0)) {
            return say("selected, but no effect", items);
        }
        const QString title =
            effect == nullptr
                ? QStringLiteral("Effect Parameters")
                : shownText(effect->name()).replace(QLatin1Char('&'), QLatin1String("&&")) +
                      QStringLiteral(" Parameters");
        if (box->title() != title) {
            return say("parameter box", box->title(), title);
        }
        for (const char* const name : {"startPanel", "endPanel"}) {
            const auto* const panel = m_editor->findChild<TimePanel*>(QString::fromLatin1(name));
            if (!panel->isEnabledTo(m_editor) != (effect == nullptr)) {
                return say("panel enabled", QString::fromLatin1(name), items);
            }
        }
        return {};
    }

    /// At most one form, of an effect that is there.
    QString form()
    {
        const auto* const frame = m_editor->findChild<QWidget*>(QStringLiteral("parameterFrame"));
        const QList<EffectForm*> forms =
            frame->findChildren<EffectForm*>(QString(), Qt::FindDirectChildrenOnly);
        if (forms.size() > 1) {
            return say("forms", forms.size());
        }
        QSet<QString> kinds;
        const QList<Effect*> effects = m_root->effectList();
        for (Effect* const effect : effects) {
            kinds.insert(formOf(effect));
        }
        const QString shown = forms.isEmpty()
                                  ? QString()
                                  : QString::fromLatin1(forms.first()->metaObject()->className());
        if (!forms.isEmpty() && !kinds.contains(shown)) {
            return say("form of no effect", shown);
        }
        Effect* const effect = selected();
        if (effect != nullptr && effect->typeId() != EffectFactory::kMetaEffect &&
            shown != formOf(effect)) {
            return say("form", shown, effect->type());
        }
        return {};
    }

    /// Begin and end as the settings state them, and links to what is there.
    QString times()
    {
        quint32 greatest = 0;
        const QList<Effect*> effects = m_root->effectList();
        for (const Effect* const effect : effects) {
            greatest = std::max(greatest, effect->end());
            const Effect* const startTarget = m_root->effectByEid(effect->startLinkEid());
            const Effect* const endTarget = m_root->effectByEid(effect->endLinkEid());
            if (effect->startType() == Effect::StartLinked && startTarget == nullptr) {
                return say("start linked to nothing", effect->eid(), effect->startLinkEid());
            }
            if (effect->endType() == Effect::EndLinked && endTarget == nullptr) {
                return say("end linked to nothing", effect->eid(), effect->endLinkEid());
            }
            if (dependsOnItself(effect) || countsItself(*effect)) {
                continue; // the times before the pass count
            }
            quint32 begin = effect->begin();
            if (effect->startType() == Effect::StartFixed) {
                begin = effect->startFixedTime();
            } else if (effect->startType() == Effect::StartLinked) {
                begin = linked(startTarget, effect->startLinkStart(), effect->startLinkOffset());
            }
            quint32 end = effect->end();
            if (effect->endType() == Effect::EndFixed) {
                end = begin + effect->endFixedTime();
            } else if (effect->endType() == Effect::EndLinked) {
                end = linked(endTarget, effect->endLinkStart(), effect->endLinkOffset());
            } else if (effect->endType() == Effect::EndCycles) {
                end = begin +
                      truncU32(static_cast<double>(effect->endCycleCount()) * effect->cycleTime());
            }
            if (effect->begin() != begin || effect->end() != end) {
                return say("times", effect->eid(), effect->begin(), begin, effect->end(), end);
            }
        }
        if (m_root->begin() != 0 || m_root->end() != greatest) {
            return say("root's times", m_root->begin(), m_root->end(), greatest);
        }
        return {};
    }

    QString rowTimes()
    {
        for (int row = 0; row < m_table->rowCount(); ++row) {
            const Effect* const effect =
                m_root->effectByEid(cell(row, MetaWidget::EidColumn).toUInt());
            const double start =
                m_table->item(row, MetaWidget::StartColumn)->data(Qt::EditRole).toDouble();
            const double end =
                m_table->item(row, MetaWidget::EndColumn)->data(Qt::EditRole).toDouble();
            // Both are worked out in the same way. NOLINTNEXTLINE(clang-diagnostic-float-equal)
            if (start < effect->begin() / 1000.0 || start > effect->begin() / 1000.0 ||
                end < effect->end() / 1000.0 || end > effect->end() / 1000.0) {
                return say("row's times", row, start, effect->begin(), end, effect->end());
            }
        }
        return {};
    }

    /// What the controls of the selected effect say of it.
    QString panels()
    {
        const Effect* const effect = selected();
        if (effect == nullptr) {
            return {};
        }
        const auto* const start = m_editor->findChild<TimePanel*>(QStringLiteral("startPanel"));
        const auto* const end = m_editor->findChild<TimePanel*>(QStringLiteral("endPanel"));
        QStringList names;
        const QList<Effect*> targets = linkTargets(*m_root, effect);
        for (const Effect* const target : targets) {
            names.append(shownText(target->name()));
        }
        if (names.isEmpty()) {
            names.append(QStringLiteral("None Available"));
        }
        for (const TimePanel* const panel : {start, end}) {
            QStringList offered;
            for (int i = 0; i < panel->targetBox()->count(); ++i) {
                offered.append(panel->targetBox()->itemText(i));
            }
            if (offered != names) {
                return say("link targets", panel->title(), offered.join(QLatin1Char('|')),
                           names.join(QLatin1Char('|')));
            }
        }
        using Kind = TimePanel::Kind;
        const bool isStartLinked = effect->startType() == Effect::StartLinked;
        if ((start->shownKind() == Kind::Linked) != isStartLinked ||
            (end->shownKind() == Kind::Linked) != (effect->endType() == Effect::EndLinked) ||
            (end->shownKind() == Kind::Cycles) != (effect->endType() == Effect::EndCycles)) {
            return say("kind shown", effect->startType(), effect->endType());
        }
        if (start->shownKind() == Kind::Fixed && !shows(start, effect->startFixedTime())) {
            return say("start shown", start->fixedEdit()->text(), effect->startFixedTime());
        }
        if (end->shownKind() == Kind::Fixed && !shows(end, effect->endFixedTime())) {
            return say("end shown", end->fixedEdit()->text(), effect->endFixedTime());
        }
        return {};
    }

    /// The text that a save would write reads back as a show of as many effects.
    QString file()
    {
        QString text;
        QTextStream stream(&text);
        m_root->save(stream);
        stream.flush();
        MapModel noMap;
        MetaEffect* const read = EffectFactory::parseShow(text, &noMap);
        if (read == nullptr) {
            return say("the saved show can't be read");
        }
        const int count = read->effectList().size();
        read->deleteShow();
        return count == m_root->effectList().size()
                   ? QString()
                   : say("effects read back", count, m_root->effectList().size());
    }

    static constexpr int kItemsInRow = 8; // that are not hidden

    QString cell(int row, int column) const { return m_table->item(row, column)->text(); }
    Effect* selected() const
    {
        const QModelIndexList rows = m_table->selectionModel()->selectedRows(MetaWidget::EidColumn);
        return rows.size() == 1
                   ? m_root->effectByEid(rows.first().data(Qt::EditRole).toString().toUInt())
                   : nullptr;
    }
    /// The class of a type's form; empty without one.
    QString formOf(Effect* effect) const
    {
        static QHash<int, QString> names;
        const auto known = names.constFind(effect->typeId());
        if (known != names.cend()) {
            return *known;
        }
        const std::unique_ptr<QWidget> form(makeParameterForm(effect, m_bench.model(), nullptr));
        const QString name =
            form != nullptr ? QString::fromLatin1(form->metaObject()->className()) : QString();
        names.insert(effect->typeId(), name);
        return name;
    }
    static quint32 linked(const Effect* target, bool toStart, double offset)
    {
        const double t = (toStart ? target->begin() : target->end()) + offset;
        return t >= 0.0 ? truncU32(t) : 0;
    }
    /// A cycle of a timeline is its own length: each pass makes it longer.
    static bool countsItself(const Effect& effect)
    {
        return effect.endType() == Effect::EndCycles &&
               effect.typeId() == EffectFactory::kMetaEffect;
    }
    /// Follows the links from there.
    bool dependsOnItself(const Effect* effect) const
    {
        QSet<const Effect*> seen;
        QList<const Effect*> open = {effect};
        QSet<const Effect*> onWay;
        return closesRing(effect, &onWay, &seen);
    }
    bool closesRing(const Effect* effect, QSet<const Effect*>* onWay,
                    QSet<const Effect*>* seen) const
    {
        if (effect == nullptr || seen->contains(effect)) {
            return false;
        }
        if (onWay->contains(effect)) {
            return true;
        }
        onWay->insert(effect);
        const bool closes =
            (effect->startType() == Effect::StartLinked &&
             closesRing(m_root->effectByEid(effect->startLinkEid()), onWay, seen)) ||
            (effect->endType() == Effect::EndLinked &&
             closesRing(m_root->effectByEid(effect->endLinkEid()), onWay, seen));
        onWay->remove(effect);
        seen->insert(effect);
        return closes;
    }
    /// A text of ten digits can be a millisecond off, and is taken as it was typed.
    static bool shows(const TimePanel* panel, quint32 time)
    {
        const double ms = panel->fixedEdit()->text().toDouble() * 1000.0;
        const double shown = truncU32(ms);
        return std::abs(shown - static_cast<double>(time)) <= 1.0;
    }

    const WindowBench& m_bench;
    MetaWidget* m_editor;
    MetaEffect* m_root;
    QTableWidget* m_table;
};
