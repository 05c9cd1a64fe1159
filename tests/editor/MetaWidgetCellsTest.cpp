#include "editor/GroupPicker.h"
#include "editor/StateIcons.h"
#include "map/Group.h"
#include "tests/editor/EditorStage.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QStyledItemDelegate>

#include <new>

namespace {

QStringList shortList()
{
    QStringList types = EffectFactory::effectTypeNames();
    for (const char* const name : {"Meta Effect", "Selection", "Sparkle Group", "White Fade",
                                   "Text", "White Fixed Color", "White Cross Fade"}) {
        types.removeAll(QString::fromLatin1(name));
    }
    return types;
}

QStringList entries(const QComboBox* box)
{
    QStringList list;
    for (int i = 0; i < box->count(); ++i) {
        list.append(box->itemText(i));
    }
    return list;
}

/// Notes the group that it was last compiled for.
class NotingEffect : public MetaEffect
{
public:
    using MetaEffect::MetaEffect;
    bool compile() override
    {
        compiledFor = gid();
        return MetaEffect::compile();
    }

    quint64 compiledFor = 0;
};

} // namespace

/// Rows: new effects, the cells that are typed into, their order, and their group.
class MetaWidgetCellsTest : public QObject
{
    Q_OBJECT
private slots:
    void theNewEffectBoxOffersTheShortList();
    void rowBoxesOfferTheirTypes_data();
    void rowBoxesOfferTheirTypes();
    void aNewEffectStandsAsStated();
    void aNewEffectTakesTheNextNumber_data();
    void aNewEffectTakesTheNextNumber();
    void aNewEffectInASortedTableIsFound();
    void aNewEffectAsksForItsGroup();
    void aCancelledPickerLeavesTheNewEffectWithoutAGroup();
    void aNewEffectThatCannotBeMadeIsFatal();

    void cellsAreTypedInto_data();
    void cellsAreTypedInto();
    void anyTextInAnyCell_data();
    void anyTextInAnyCell();
    void escapeLeavesTheCell();
    void anUnchangedCellIsNoEdit();
    void typedStartMovesWhatFollows();
    void typedEndDerivesTheDuration();
    void aTypedTimeUnlinks();
    void aTypedPriorityOrdersTheShow();
    void aTypedNumberSortsAsANumber();
    void aTypedCellOfASortedTableMovesItsRow();
    void theTitleFollowsTheName();
    void linksFollowTheName();
    void aFrameLeavesAnOpenEditorAlone();
    void otherColumnsAreNoEdits_data();
    void otherColumnsAreNoEdits();
    void fixedCellsOpenNoEditor_data();
    void fixedCellsOpenNoEditor();
    void headersSortBothWays();
    void aHeadersClickSortsInTheOrderItShows();

    void aClickOnTheGroupPicks();
    void pickingShowsOnTheRunningShow();
    void aCancelledPickerRestoresTheGroup_data();
    void aCancelledPickerRestoresTheGroup();
    void theGroupThatRemainsIsCompiledFor_data();
    void theGroupThatRemainsIsCompiledFor();
    void anAcceptedGroupThatIsMissingIsNoChange();
    void otherCellsPickNoGroup();
    void anEffectThatGoesUnderThePicker();
    void aShowThatGoesUnderThePicker();
    void aLinkGivenUpInAnotherRowIsOfferedAgain();
    void targetsStandInTheOrderOfPriority();
    void aNameOfAMegabyteIsShownCutAndEditedWhole();

private:
    EditorStage m_stage;
};

void MetaWidgetCellsTest::theNewEffectBoxOffersTheShortList()
{
    m_stage.open();
    const auto* box = m_stage.widget->findChild<QComboBox*>(QStringLiteral("effectTypeBox"));
    QCOMPARE(entries(box), shortList());
    QCOMPARE(box->count(), 12); // of eighteen
    QCOMPARE(m_stage.button("newEffectButton")->text(), QStringLiteral("New Effect"));
    QCOMPARE(m_stage.button("deleteEffectsButton")->text(),
             QStringLiteral("Delete Selected Effects"));
}

void MetaWidgetCellsTest::rowBoxesOfferTheirTypes_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<bool>("isExtra");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("a common one") << QByteArray("Streak") << false << true;
    QTest::newRow("white") << QByteArray("White Fixed Color") << true << true;
    QTest::newRow("white fade") << QByteArray("White Cross Fade") << true << true;
    QTest::newRow("text") << QByteArray("Text") << false << false;
    QTest::newRow("selection") << QByteArray("Selection") << false << false;
    QTest::newRow("timeline") << QByteArray("Meta Effect") << false << false;
}

void MetaWidgetCellsTest::rowBoxesOfferTheirTypes()
{
    QFETCH(const QByteArray, type);
    QFETCH(const bool, isExtra);
    QFETCH(const bool, isListed);
    m_stage.open(EditorStage::effectXml(7, QString(), type.constData()));
    const QComboBox* const box = m_stage.typeBox(0);
    QStringList expected = shortList();
    if (isExtra) {
        expected.append(QString::fromLatin1(type));
    }
    QCOMPARE(entries(box), expected);
    QCOMPARE(box->currentIndex(), isListed ? expected.indexOf(QString::fromLatin1(type)) : -1);
    QCOMPARE(m_stage.text(0, MetaWidget::TypeColumn), QString::fromLatin1(type));
    QCOMPARE(box->property("eid").toUInt(), 7U);
}

void MetaWidgetCellsTest::aNewEffectStandsAsStated()
{
    m_stage.open();
    auto* box = m_stage.widget->findChild<QComboBox*>(QStringLiteral("effectTypeBox"));
    box->setFocus();
    QTest::keyClicks(box, QStringLiteral("Sweep"));
    QCOMPARE(box->currentText(), QStringLiteral("Sweep"));
    QVERIFY(!m_stage.widget->isModified()); // only chosen
    QCOMPARE(m_stage.table()->rowCount(), 0);
    whenDialogOpens<GroupPicker>([](GroupPicker* picker) { picker->accept(); });
    EditorStage::click(m_stage.button("newEffectButton"));
    QCOMPARE(m_stage.root->effectList().size(), 1);
    const Effect& effect = *m_stage.effect(1);
    QCOMPARE(effect.type(), QStringLiteral("Sweep"));
    QCOMPARE(effect.name(), QStringLiteral("Effect 1"));
    QCOMPARE(effect.startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(effect.startFixedTime(), 0U);
    QCOMPARE(effect.endType(), static_cast<int>(Effect::EndCycles));
    QCOMPARE(effect.endCycleCount(), 1U);
    QCOMPARE(effect.end(), effect.cycleTime()); // resolved at once
    QCOMPARE(m_stage.root->end(), effect.end());
    QVERIFY(effect.compiled());
    QCOMPARE(m_stage.text(0, MetaWidget::NameColumn), QStringLiteral("Effect 1"));
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("None"));
    QCOMPARE(m_stage.value(0, MetaWidget::EndColumn), QVariant(effect.end() / 1000.0));
    QCOMPARE(m_stage.item(0, MetaWidget::EndColumn)->icon().cacheKey(),
             StateIcons::ICON_CYCLE().cacheKey());
    QCOMPARE(m_stage.typeBox(0)->currentText(), QStringLiteral("Sweep"));
    QCOMPARE(m_stage.selectedRows(), QList<int>{0});
    QCOMPARE(m_stage.table()->currentColumn(), static_cast<int>(MetaWidget::EidColumn));
    QVERIFY(m_stage.widget->isModified());
    QVERIFY(m_stage.table()->isSortingEnabled());
}

void MetaWidgetCellsTest::aNewEffectTakesTheNextNumber_data()
{
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<quint32>("expected");
    QTest::newRow("first") << QStringList() << 1U;
    QTest::newRow("behind the greatest")
        << QStringList({QStringLiteral("3"), QStringLiteral("9"), QStringLiteral("5")}) << 10U;
    QTest::newRow("the unset number doesn't count")
        << QStringList({QStringLiteral("4"), QStringLiteral("4294967295")}) << 5U;
    QTest::newRow("none left above")
        << QStringList({QStringLiteral("1"), QStringLiteral("4294967294")}) << 2U;
}

void MetaWidgetCellsTest::aNewEffectTakesTheNextNumber()
{
    QFETCH(const QStringList, present);
    QFETCH(const quint32, expected);
    m_stage.open();
    for (const QString& eid : present) {
        Effect* const effect =
            EffectFactory::createEffect(QStringLiteral("Streak"), m_stage.model.get(), nullptr);
        effect->setEid(eid.toUInt());
        m_stage.root->appendEffect(effect);
    }
    m_stage.widget->rebuildTable();
    whenDialogOpens<GroupPicker>([](GroupPicker* picker) { picker->accept(); });
    EditorStage::click(m_stage.button("newEffectButton"));
    QVERIFY(m_stage.effect(expected) != nullptr);
    QCOMPARE(m_stage.effect(expected)->name(), QStringLiteral("Effect %1").arg(expected));
    QCOMPARE(m_stage.root->effectList().size(), present.size() + 1);
}

void MetaWidgetCellsTest::aNewEffectInASortedTableIsFound()
{
    // By name, "Effect 3" belongs between the two.
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<name>A</name>")) +
                 EditorStage::effectXml(2, QStringLiteral("<name>Z</name>")));
    m_stage.effect(1)->setName(QStringLiteral("A"));
    m_stage.effect(2)->setName(QStringLiteral("Z"));
    m_stage.widget->rebuildTable();
    m_stage.table()->sortItems(MetaWidget::NameColumn, Qt::DescendingOrder);
    whenDialogOpens<GroupPicker>([](GroupPicker* picker) { picker->accept(); });
    EditorStage::click(m_stage.button("newEffectButton"));
    QCOMPARE(m_stage.selectedRows().size(), 1);
    const int row = m_stage.selectedRows().first();
    QCOMPARE(m_stage.text(row, MetaWidget::EidColumn), QStringLiteral("3"));
    QVERIFY(m_stage.typeInto(row, MetaWidget::NameColumn, QStringLiteral("M")));
    QCOMPARE(m_stage.effect(3)->name(), QStringLiteral("M"));
    QCOMPARE(m_stage.effect(1)->name(), QStringLiteral("A"));
}

void MetaWidgetCellsTest::aNewEffectAsksForItsGroup()
{
    m_stage.open();
    whenDialogOpens<GroupPicker>([this](GroupPicker* picker) {
        QCOMPARE(m_stage.root->effectList().size(), 1); // there already, and shown
        QCOMPARE(m_stage.table()->rowCount(), 1);
        auto* list = picker->findChild<QTableWidget*>();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(list->item(0, 0)).center());
        QTest::mouseClick(picker->findChild<QPushButton*>(QStringLiteral("m_okButton")),
                          Qt::LeftButton);
    });
    EditorStage::click(m_stage.button("newEffectButton"));
    QCOMPARE(m_stage.effect(1)->gid(), EditorStage::kSteps);
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("Steps"));
}

void MetaWidgetCellsTest::aCancelledPickerLeavesTheNewEffectWithoutAGroup()
{
    m_stage.open();
    whenDialogOpens<GroupPicker>([](GroupPicker* picker) { picker->reject(); });
    EditorStage::click(m_stage.button("newEffectButton"));
    QCOMPARE(m_stage.root->effectList().size(), 1); // it stays
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("None"));
    QCOMPARE(m_stage.selectedRows(), QList<int>{0});
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetCellsTest::aNewEffectThatCannotBeMadeIsFatal()
{
    m_stage.open();
    auto* box = m_stage.widget->findChild<QComboBox*>(QStringLiteral("effectTypeBox"));
    box->addItem(QStringLiteral("Blizzard"));
    box->setCurrentText(QStringLiteral("Blizzard"));
    QTest::ignoreMessage(QtDebugMsg, "Unsupported Effect Type: Blizzard");
    QVERIFY_EXCEPTION_THROWN(m_stage.widget->handleNewEffectClicked(), std::bad_alloc);
    QCOMPARE(m_stage.table()->rowCount(), 0);
}

void MetaWidgetCellsTest::cellsAreTypedInto_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<quint32>("value"); // in milliseconds, or the priority
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, int column, const char* typed, quint32 value,
                        const char* shown) {
        QTest::newRow(name) << column << QString::fromLatin1(typed) << value
                            << QString::fromLatin1(shown);
    };
    row("priority", MetaWidget::PriorityColumn, "12", 12, "12");
    row("priority with a fraction", MetaWidget::PriorityColumn, "2.5", 0, "0");
    row("priority below 0", MetaWidget::PriorityColumn, "-1", 0, "0");
    row("priority in words", MetaWidget::PriorityColumn, "high", 0, "0");
    row("start", MetaWidget::StartColumn, "1.2349", 1234, "1.234"); // cut, not rounded
    row("start below 0", MetaWidget::StartColumn, "-3", 0, "0");
    row("start in words", MetaWidget::StartColumn, "soon", 0, "0");
    row("start with a comma", MetaWidget::StartColumn, "1,5", 0, "0");
    row("end", MetaWidget::EndColumn, "7.5", 7500, "7.5");
    row("end in words", MetaWidget::EndColumn, "late", 0, "0");
    row("fade in", MetaWidget::FadeInColumn, "0.25", 250, "0.25");
    row("fade in below 0", MetaWidget::FadeInColumn, "-2", 0, "0");
    row("fade in, long", MetaWidget::FadeInColumn, "1234.567", 1234567, "1234.57");
    row("fade out", MetaWidget::FadeOutColumn, "1e1", 10000, "10");
    row("fade out in words", MetaWidget::FadeOutColumn, "x", 0, "0");
}

void MetaWidgetCellsTest::cellsAreTypedInto()
{
    QFETCH(const int, column);
    QFETCH(const QString, typed);
    QFETCH(const quint32, value);
    QFETCH(const QString, shown);
    m_stage.open(EditorStage::effectXml(
        1, QStringLiteral("<priority>3</priority><startfixedtime>0</startfixedtime>"
                          "<endfixedtime>4000</endfixedtime><fadein>3000</fadein>"
                          "<fadeout>3000</fadeout><begin>0</begin><end>4000</end>")));
    QVERIFY(m_stage.typeInto(0, column, typed));
    const Effect& e = *m_stage.effect(1);
    const QMap<int, quint32> values = {{MetaWidget::PriorityColumn, e.priority()},
                                       {MetaWidget::StartColumn, e.startFixedTime()},
                                       {MetaWidget::EndColumn, e.endFixedTime()},
                                       {MetaWidget::FadeInColumn, e.fadein()},
                                       {MetaWidget::FadeOutColumn, e.fadeout()}};
    QCOMPARE(values.value(column), value);
    QCOMPARE(m_stage.text(0, column), shown);
    QVERIFY(m_stage.widget->isModified());
    QVERIFY(m_stage.table()->isSortingEnabled());
}

void MetaWidgetCellsTest::anyTextInAnyCell_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    for (const int column :
         {MetaWidget::NameColumn, MetaWidget::PriorityColumn, MetaWidget::StartColumn,
          MetaWidget::EndColumn, MetaWidget::FadeInColumn, MetaWidget::FadeOutColumn}) {
        int i = 0;
        for (const QString& typed :
             {QString(), QStringLiteral("nan"), QStringLiteral("inf"), QStringLiteral("-inf"),
              QStringLiteral("1e308"), QStringLiteral("-1e308"), QStringLiteral("4294967.296"),
              QStringLiteral("<effect>&\"']]>"), QString(QChar(0x1F)) + QChar(0xD800),
              QStringLiteral("9").repeated(5000)}) {
            QTest::addRow("column %d, text %d", column, i++) << column << typed;
        }
    }
}

void MetaWidgetCellsTest::anyTextInAnyCell()
{
    QFETCH(const int, column);
    QFETCH(const QString, typed);
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<endfixedtime>4000</endfixedtime>")) +
                 EditorStage::effectXml(2, EditorStage::startsAt(1)));
    QLineEdit* const editor = m_stage.openCell(0, column);
    QVERIFY(editor != nullptr);
    editor->setText(typed); // as from a clipboard
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    const Effect& e = *m_stage.effect(1);
    QCOMPARE(e.name() == typed, column == MetaWidget::NameColumn);
    QVERIFY(m_stage.widget->isModified());
    // Each row still shows its effect.
    for (int row = 0; row < 2; ++row) {
        const Effect& shown = *m_stage.effect(m_stage.text(row, MetaWidget::EidColumn).toUInt());
        QCOMPARE(m_stage.value(row, MetaWidget::StartColumn), QVariant(shown.begin() / 1000.0));
        QCOMPARE(m_stage.value(row, MetaWidget::EndColumn), QVariant(shown.end() / 1000.0));
        QCOMPARE(m_stage.value(row, MetaWidget::PriorityColumn), QVariant(shown.priority()));
    }
}

void MetaWidgetCellsTest::escapeLeavesTheCell()
{
    m_stage.open(EditorStage::effectXml(1));
    QLineEdit* const editor = m_stage.openCell(0, MetaWidget::NameColumn);
    QVERIFY(editor != nullptr);
    QTest::keyClicks(editor, QStringLiteral("Other"));
    QTest::keyClick(editor, Qt::Key_Escape);
    QCoreApplication::processEvents();
    QCOMPARE(m_stage.effect(1)->name(), QStringLiteral("E1"));
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetCellsTest::anUnchangedCellIsNoEdit()
{
    m_stage.open(EditorStage::effectXml(1, EditorStage::startsAt(2)) + EditorStage::effectXml(2));
    QLineEdit* const editor = m_stage.openCell(0, MetaWidget::StartColumn);
    QVERIFY(editor != nullptr);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(m_stage.effect(1)->startType(), static_cast<int>(Effect::StartLinked));
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetCellsTest::typedStartMovesWhatFollows()
{
    // E2 starts with the end of E1, a second of it.
    m_stage.open(
        EditorStage::effectXml(1, QStringLiteral("<endfixedtime>4000</endfixedtime>")) +
        EditorStage::effectXml(2, EditorStage::startsAt(1) +
                                      QStringLiteral("<startlinkstart>0</startlinkstart>"
                                                     "<endfixedtime>1000</endfixedtime>")));
    QVERIFY(m_stage.typeInto(0, MetaWidget::StartColumn, QStringLiteral("2")));
    QCOMPARE(m_stage.value(0, MetaWidget::EndColumn), QVariant(6.0));
    QCOMPARE(m_stage.value(1, MetaWidget::StartColumn), QVariant(6.0));
    QCOMPARE(m_stage.value(1, MetaWidget::EndColumn), QVariant(7.0));
    QCOMPARE(m_stage.root->end(), 7000U);
}

void MetaWidgetCellsTest::typedEndDerivesTheDuration()
{
    m_stage.open(EditorStage::effectXml(
        1, QStringLiteral("<begin>3000</begin><end>9000</end><startfixedtime>3000</startfixedtime>"
                          "<endfixedtime>6000</endfixedtime>")));
    QVERIFY(m_stage.typeInto(0, MetaWidget::EndColumn, QStringLiteral("7.5")));
    QCOMPARE(m_stage.effect(1)->endFixedTime(), 4500U);
    QCOMPARE(m_stage.effect(1)->end(), 7500U);
    QVERIFY(m_stage.typeInto(0, MetaWidget::EndColumn, QStringLiteral("1")));
    QCOMPARE(m_stage.effect(1)->endFixedTime(), 0U); // before the start: no length
    QCOMPARE(m_stage.effect(1)->end(), 3000U);
    QCOMPARE(m_stage.value(0, MetaWidget::EndColumn), QVariant(3.0));
}

void MetaWidgetCellsTest::aTypedTimeUnlinks()
{
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<endfixedtime>4000</endfixedtime>")) +
                 EditorStage::effectXml(2, EditorStage::startsAt(1) + EditorStage::endsAt(1)));
    m_stage.root->updateEffectTimes();
    m_stage.select(1);
    QVERIFY(m_stage.start()->linkedButton()->isChecked());
    QVERIFY(m_stage.typeInto(1, MetaWidget::StartColumn, QStringLiteral("1")));
    QCOMPARE(m_stage.effect(2)->startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(m_stage.item(1, MetaWidget::StartColumn)->icon().cacheKey(),
             StateIcons::ICON_NONE().cacheKey());
    QVERIFY(m_stage.start()->fixedButton()->isChecked()); // the panel tells the same
    QCOMPARE(m_stage.start()->fixedEdit()->text(), QStringLiteral("1"));
    QVERIFY(m_stage.end()->linkedButton()->isChecked());
    QVERIFY(m_stage.typeInto(1, MetaWidget::EndColumn, QStringLiteral("2")));
    QCOMPARE(m_stage.effect(2)->endType(), static_cast<int>(Effect::EndFixed));
    QVERIFY(m_stage.end()->fixedButton()->isChecked());
}

void MetaWidgetCellsTest::aTypedPriorityOrdersTheShow()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    QVERIFY(m_stage.typeInto(0, MetaWidget::PriorityColumn, QStringLiteral("5")));
    QCOMPARE(m_stage.root->effectList().first()->eid(), 2U); // painted earlier
    QCOMPARE(m_stage.root->effectList().last()->eid(), 1U);
}

void MetaWidgetCellsTest::aTypedNumberSortsAsANumber()
{
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<priority>9</priority>")) +
                 EditorStage::effectXml(2, QStringLiteral("<priority>8</priority>")));
    m_stage.table()->sortItems(MetaWidget::PriorityColumn, Qt::AscendingOrder);
    QVERIFY(m_stage.typeInto(0, MetaWidget::PriorityColumn, QStringLiteral("10")));
    QCOMPARE(m_stage.column(MetaWidget::NameColumn),
             QStringList({QStringLiteral("E1"), QStringLiteral("E2")}));
}

void MetaWidgetCellsTest::aTypedCellOfASortedTableMovesItsRow()
{
    m_stage.open(
        EditorStage::effectXml(1, QStringLiteral("<startfixedtime>1000</startfixedtime>")) +
        EditorStage::effectXml(2, QStringLiteral("<startfixedtime>2000</startfixedtime>")) +
        EditorStage::effectXml(3, QStringLiteral("<startfixedtime>3000</startfixedtime>")));
    m_stage.root->updateEffectTimes();
    m_stage.table()->sortItems(MetaWidget::StartColumn, Qt::AscendingOrder);
    QVERIFY(m_stage.typeInto(0, MetaWidget::StartColumn, QStringLiteral("2.5")));
    QCOMPARE(m_stage.column(MetaWidget::NameColumn),
             QStringList({QStringLiteral("E2"), QStringLiteral("E1"), QStringLiteral("E3")}));
    QCOMPARE(m_stage.selectedRows(), QList<int>{1}); // the selection goes along
    QCOMPARE(m_stage.effect(1)->begin(), 2500U);
    QCOMPARE(m_stage.effect(2)->begin(), 2000U);
    // And the next edit hits the row where it now is.
    QVERIFY(m_stage.typeInto(1, MetaWidget::FadeInColumn, QStringLiteral("1")));
    QCOMPARE(m_stage.effect(1)->fadein(), 1000U);
}

void MetaWidgetCellsTest::theTitleFollowsTheName()
{
    m_stage.open(EditorStage::effectXml(1));
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Effect Parameters"));
    QVERIFY(m_stage.typeInto(0, MetaWidget::NameColumn, QStringLiteral("Dusk")));
    QCOMPARE(m_stage.effect(1)->name(), QStringLiteral("Dusk"));
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Dusk Parameters"));
}

void MetaWidgetCellsTest::linksFollowTheName()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    QVERIFY(m_stage.typeInto(0, MetaWidget::NameColumn, QStringLiteral("Dusk")));
    m_stage.select(1);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("Dusk"));
}

void MetaWidgetCellsTest::aFrameLeavesAnOpenEditorAlone()
{
    m_stage.open(EditorStage::effectXml(1));
    QLineEdit* const editor = m_stage.openCell(0, MetaWidget::NameColumn);
    QVERIFY(editor != nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Da"));
    m_stage.effect(1)->setActive(true); // its icon stands in this very cell
    emit m_stage.root->internalUpdateLightsComplete();
    m_stage.root->updateEffectTimes();
    QTest::keyClicks(editor, QStringLiteral("wn"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(m_stage.effect(1)->name(), QStringLiteral("Dawn"));
    QCOMPARE(m_stage.text(0, MetaWidget::RunningColumn), QStringLiteral("1"));
}

void MetaWidgetCellsTest::otherColumnsAreNoEdits_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isMarked");
    QTest::newRow("group") << static_cast<int>(MetaWidget::GroupColumn) << true;
    QTest::newRow("eid") << static_cast<int>(MetaWidget::EidColumn) << false;
    QTest::newRow("running") << static_cast<int>(MetaWidget::RunningColumn) << false;
}

void MetaWidgetCellsTest::otherColumnsAreNoEdits()
{
    QFETCH(const int, column);
    QFETCH(const bool, isMarked);
    m_stage.open(EditorStage::effectXml(1));
    QString before;
    QTextStream(&before) << m_stage.root->toXml(QDomDocument()).text();
    m_stage.widget->handleValueChanged(0, column);
    QString after;
    QTextStream(&after) << m_stage.root->toXml(QDomDocument()).text();
    QCOMPARE(after, before);
    QCOMPARE(m_stage.widget->isModified(), isMarked);
    m_stage.widget->handleValueChanged(5, 0); // no such row
    m_stage.widget->handleValueChanged(0, 99);
    QCOMPARE(m_stage.widget->isModified(), isMarked);
}

void MetaWidgetCellsTest::fixedCellsOpenNoEditor_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("type") << static_cast<int>(MetaWidget::TypeColumn);
    QTest::newRow("group") << static_cast<int>(MetaWidget::GroupColumn);
    QTest::newRow("eid") << static_cast<int>(MetaWidget::EidColumn);
    QTest::newRow("running") << static_cast<int>(MetaWidget::RunningColumn);
}

void MetaWidgetCellsTest::fixedCellsOpenNoEditor()
{
    QFETCH(const int, column);
    m_stage.open(EditorStage::effectXml(1));
    QVERIFY(!(m_stage.item(0, column)->flags() & Qt::ItemIsEditable));
}

void MetaWidgetCellsTest::headersSortBothWays()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(3) + EditorStage::effectXml(2));
    QHeaderView* const header = m_stage.table()->horizontalHeader();
    const QPoint place(header->sectionViewportPosition(0) + 20, header->height() / 2);
    QSet<QString> orders;
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QStringList sorted = m_stage.column(MetaWidget::NameColumn);
        sorted.sort();
        if (header->sortIndicatorOrder() == Qt::DescendingOrder) {
            std::reverse(sorted.begin(), sorted.end());
        }
        QCOMPARE(header->sortIndicatorSection(), 0);
        QCOMPARE(m_stage.column(MetaWidget::NameColumn), sorted);
        orders.insert(sorted.join(QLatin1Char(' ')));
    }
    QCOMPARE(orders.size(), 2);
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetCellsTest::aHeadersClickSortsInTheOrderItShows()
{
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<priority>7</priority>")) +
                 EditorStage::effectXml(2, QStringLiteral("<priority>9</priority>")) +
                 EditorStage::effectXml(3, QStringLiteral("<priority>8</priority>")));
    m_stage.table()->sortItems(MetaWidget::NameColumn, Qt::DescendingOrder);
    m_stage.widget->handleHeaderClicked(MetaWidget::PriorityColumn);
    QCOMPARE(m_stage.column(MetaWidget::PriorityColumn),
             QStringList({QStringLiteral("9"), QStringLiteral("8"), QStringLiteral("7")}));
    m_stage.table()->sortItems(MetaWidget::NameColumn, Qt::AscendingOrder);
    m_stage.widget->handleHeaderClicked(MetaWidget::PriorityColumn);
    QCOMPARE(m_stage.column(MetaWidget::PriorityColumn),
             QStringList({QStringLiteral("7"), QStringLiteral("8"), QStringLiteral("9")}));
}

void MetaWidgetCellsTest::aClickOnTheGroupPicks()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.table()->sortItems(MetaWidget::NameColumn, Qt::DescendingOrder);
    whenDialogOpens<GroupPicker>([](GroupPicker* picker) {
        QVERIFY(picker->isModal());
        auto* list = picker->findChild<QTableWidget*>();
        const QPoint place = list->visualItemRect(list->item(0, 0)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    });
    m_stage.clickCell(0, MetaWidget::GroupColumn);
    QCOMPARE(m_stage.effect(2)->gid(), EditorStage::kSteps);
    QVERIFY(m_stage.effect(1)->gid() != EditorStage::kSteps);
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("Steps"));
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetCellsTest::pickingShowsOnTheRunningShow()
{
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<gid>4096</gid>")));
    whenDialogOpens<GroupPicker>([this](GroupPicker* picker) {
        auto* list = picker->findChild<QTableWidget*>();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(list->item(0, 0)).center());
        QCOMPARE(m_stage.effect(1)->gid(), EditorStage::kSteps); // while it is open
        // Frames go on under it.
        m_stage.effect(1)->setActive(true);
        emit m_stage.root->internalUpdateLightsComplete();
        QCOMPARE(m_stage.text(0, MetaWidget::RunningColumn), QStringLiteral("1"));
        picker->reject();
    });
    m_stage.clickCell(0, MetaWidget::GroupColumn);
    QCOMPARE(m_stage.effect(1)->gid(), EditorStage::kFacade);
}

void MetaWidgetCellsTest::aCancelledPickerRestoresTheGroup_data()
{
    QTest::addColumn<quint64>("former");
    QTest::addColumn<quint64>("expected");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a group of the map")
        << EditorStage::kFacade << EditorStage::kFacade << QStringLiteral("Facade");
    QTest::newRow("a group that the map lost")
        << quint64(77) << EditorStage::kSteps << QStringLiteral("Steps");
}

void MetaWidgetCellsTest::aCancelledPickerRestoresTheGroup()
{
    QFETCH(const quint64, former);
    QFETCH(const quint64, expected);
    QFETCH(const QString, shown);
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<gid>%1</gid>").arg(former)));
    whenDialogOpens<GroupPicker>([](GroupPicker* picker) {
        auto* list = picker->findChild<QTableWidget*>();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(list->item(0, 0)).center());
        QTest::keyClick(picker, Qt::Key_Escape);
    });
    m_stage.clickCell(0, MetaWidget::GroupColumn);
    QCOMPARE(m_stage.effect(1)->gid(), expected);
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), shown);
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetCellsTest::theGroupThatRemainsIsCompiledFor_data()
{
    QTest::addColumn<bool>("isAccepted");
    QTest::addColumn<quint64>("expected");
    QTest::newRow("accepted") << true << EditorStage::kSteps;
    QTest::newRow("cancelled") << false << EditorStage::kFacade;
}

void MetaWidgetCellsTest::theGroupThatRemainsIsCompiledFor()
{
    QFETCH(const bool, isAccepted);
    QFETCH(const quint64, expected);
    m_stage.open();
    auto* const effect = new NotingEffect(m_stage.model.get(), EditorStage::kFacade, nullptr);
    m_stage.root->addEffect(effect);
    m_stage.widget->rebuildTable();
    whenDialogOpens<GroupPicker>([effect, isAccepted](GroupPicker* picker) {
        auto* list = picker->findChild<QTableWidget*>();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(list->item(0, 0)).center());
        QCOMPARE(effect->compiledFor, EditorStage::kSteps);
        effect->compiledFor = 0;
        picker->done(isAccepted ? QDialog::Accepted : QDialog::Rejected);
    });
    m_stage.clickCell(0, MetaWidget::GroupColumn);
    QCOMPARE(effect->gid(), expected);
    QCOMPARE(effect->compiledFor, expected);
}

void MetaWidgetCellsTest::anAcceptedGroupThatIsMissingIsNoChange()
{
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<gid>77</gid>")));
    whenDialogOpens<GroupPicker>([](GroupPicker* picker) {
        picker->findChild<QTableWidget*>()->clearSelection();
        QTest::mouseClick(picker->findChild<QPushButton*>(QStringLiteral("m_okButton")),
                          Qt::LeftButton);
    });
    m_stage.clickCell(0, MetaWidget::GroupColumn);
    QCOMPARE(m_stage.effect(1)->gid(), 77U);
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("None"));
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetCellsTest::otherCellsPickNoGroup()
{
    m_stage.open(EditorStage::effectXml(1));
    for (const int column : {MetaWidget::NameColumn, MetaWidget::PriorityColumn,
                             MetaWidget::StartColumn, MetaWidget::FadeOutColumn}) {
        m_stage.clickCell(0, column);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }
    m_stage.widget->handleCurrentChanged(7, MetaWidget::GroupColumn); // no such row
}

void MetaWidgetCellsTest::anEffectThatGoesUnderThePicker()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2, EditorStage::startsAt(1)));
    m_stage.select(1); // of the follower
    whenDialogOpens<GroupPicker>([this](GroupPicker* picker) {
        Effect* const gone = m_stage.effect(1);
        m_stage.root->removeEffect(gone);
        delete gone;
        m_stage.root->updateEffectTimes();
        QTest::mouseClick(picker->findChild<QPushButton*>(QStringLiteral("m_okButton")),
                          Qt::LeftButton);
    });
    m_stage.clickCell(0, MetaWidget::GroupColumn);
    QCOMPARE(m_stage.effect(2)->startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(m_stage.effect(2)->begin(), 0U);
}

void MetaWidgetCellsTest::aShowThatGoesUnderThePicker()
{
    m_stage.open(EditorStage::effectXml(1));
    whenDialogOpens<GroupPicker>([this](GroupPicker* picker) {
        Root other = m_stage.parse(EditorStage::effectXml(5));
        m_stage.widget->setMetaEffect(other.get());
        m_stage.widget->rebuildTable();
        m_stage.root = std::move(other);
        picker->accept();
    });
    m_stage.clickCell(0, MetaWidget::GroupColumn);
    QCOMPARE(m_stage.column(MetaWidget::NameColumn), QStringList(QStringLiteral("E5")));
}

void MetaWidgetCellsTest::aLinkGivenUpInAnotherRowIsOfferedAgain()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2, EditorStage::startsAt(1)) +
                 EditorStage::effectXml(3));
    QLineEdit* const editor = m_stage.openCell(1, MetaWidget::StartColumn);
    QVERIFY(editor != nullptr);
    m_stage.typeText(editor, QStringLiteral("5"));
    m_stage.select(0); // the selection changes before the cell takes over what was typed
    QCoreApplication::processEvents();
    QCOMPARE(m_stage.effect(2)->startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(m_stage.effect(2)->startFixedTime(), 5000U);
    QCOMPARE(m_stage.selectedRows(), QList<int>{0});
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E2 E3"));
    QCOMPARE(EditorStage::targets(m_stage.end()), QStringLiteral("E2 E3"));
}

void MetaWidgetCellsTest::targetsStandInTheOrderOfPriority()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2) + EditorStage::effectXml(3));
    m_stage.select(0);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E2 E3"));
    QLineEdit* const editor = m_stage.openCell(1, MetaWidget::PriorityColumn);
    QVERIFY(editor != nullptr);
    m_stage.typeText(editor, QStringLiteral("7"));
    m_stage.select(0); // takes over what was typed
    QCoreApplication::processEvents();
    QCOMPARE(m_stage.effect(2)->priority(), 7U);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E3 E2"));
    QVERIFY(m_stage.typeInto(0, MetaWidget::PriorityColumn, QStringLiteral("3")));
    QVERIFY(m_stage.typeInto(2, MetaWidget::PriorityColumn, QStringLiteral("9")));
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E1 E2"));
}

void MetaWidgetCellsTest::aNameOfAMegabyteIsShownCutAndEditedWhole()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    const QString name(1 << 20, QLatin1Char('x'));
    m_stage.effect(2)->setName(name);
    m_stage.widget->rebuildTable();
    const QModelIndex cell = m_stage.table()->model()->index(1, MetaWidget::NameColumn);
    const auto* const delegate =
        qobject_cast<QStyledItemDelegate*>(m_stage.table()->itemDelegate());
    QCOMPARE(delegate->displayText(cell.data(), QLocale()).size(), 501);
    m_stage.select(0);
    QCOMPARE(m_stage.start()->targetBox()->itemText(0).size(), 501);
    m_stage.select(1);
    QVERIFY(m_stage.parameterBox()->title().startsWith(QStringLiteral("xxx")));
    QVERIFY(m_stage.parameterBox()->title().size() < 600);
    QLineEdit* const editor = m_stage.openCell(1, MetaWidget::NameColumn);
    QVERIFY(editor != nullptr);
    QVERIFY(editor->text() == name);
    QTest::keyClick(editor, Qt::Key_Home);
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QVERIFY(m_stage.effect(2)->name() == name.mid(1));
}

QTEST_MAIN(MetaWidgetCellsTest)
#include "MetaWidgetCellsTest.moc"
