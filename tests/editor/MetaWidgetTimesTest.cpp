#include "editor/StateIcons.h"
#include "tests/editor/EditorStage.h"

#include <QLabel>

namespace {

/// One second long, fixed.
QString second(int eid, const QString& more = QString())
{
    return EditorStage::effectXml(eid, QStringLiteral("<endfixedtime>1000</endfixedtime>") + more);
}

} // namespace

/// The controls for an effect's start and end.
class MetaWidgetTimesTest : public QObject
{
    Q_OBJECT
private slots:
    void thePanelsReadAsStated();
    void withoutASelectionThePanelsAreEmptyAndOff();
    void settingsAreShown_data();
    void settingsAreShown();
    void showingIsNoEditing();
    void kindsEnableTheirControls();
    void oneEffectHasNoTargets();
    void aLinkWithoutATargetBecomesFixed();
    void onlyWhatCannotCloseARingIsOffered();
    void thePresentLinkIsSelected();
    void ringsOfAFileAreShown();

    void startFixed();
    void startLinked();
    void startLinkedToTheEntryThatIsShown();
    void startFixedTime_data();
    void startFixedTime();
    void startLinkSides();
    void startLinkEffect();
    void startLinkOffset_data();
    void startLinkOffset();
    void endFixed();
    void endLinked();
    void endCycles();
    void endFixedTime_data() { startFixedTime_data(); }
    void endFixedTime();
    void endLinkSides();
    void endLinkEffect();
    void endLinkOffset_data() { startLinkOffset_data(); }
    void endLinkOffset();
    void endCycleCount();
    void cyclesStayInTheirRange_data();
    void cyclesStayInTheirRange();

    void aToggleOffOnlyMarks();
    void anEntryThatIsGoneChangesNothing();
    void theFocusStaysWithTheControl();
    void theFocusComesForAnotherReason();
    void endOfTheEndLinkFocusesTheStartOffset();
    void aPassMovesWhatFollows();
    void anyTextInAnyField_data();
    void anyTextInAnyField();
    void keystrokesKeepTheCursor();
    void aSortedTableKeepsItsSelection();
    void aTargetThatIsDeletedIsOfferedNoMore();

private:
    void openAt(const QString& children, int row)
    {
        m_stage.open(children);
        m_stage.root->updateEffectTimes();
        m_stage.select(row);
        m_stage.widget->setModified(false);
    }
    /// Where the keyboard is.
    QWidget* focus() const { return m_stage.widget->focusWidget(); }
    /// Chooses an entry by the keyboard.
    static void choose(QComboBox* box, int index)
    {
        box->setFocus();
        box->setCurrentIndex(index > 0 ? index - 1 : 1);
        QTest::keyClick(box, index > 0 ? Qt::Key_Down : Qt::Key_Up);
    }

    EditorStage m_stage;
};

void MetaWidgetTimesTest::thePanelsReadAsStated()
{
    m_stage.open();
    const TimePanel& start = *m_stage.start();
    const TimePanel& end = *m_stage.end();
    QCOMPARE(start.title(), QStringLiteral("Start Time"));
    QCOMPARE(end.title(), QStringLiteral("End Time"));
    QCOMPARE(start.fixedButton()->text(), QStringLiteral("Fixed at "));
    QCOMPARE(end.fixedButton()->text(), QStringLiteral("Fixed duration of "));
    QCOMPARE(end.cyclesButton()->text(), QStringLiteral("A fixed Duration of "));
    QVERIFY(start.cyclesButton() == nullptr);
    for (const TimePanel* const panel : {&start, &end}) {
        QCOMPARE(panel->linkedButton()->text(), QStringLiteral("Linked to the"));
        QCOMPARE(panel->linkEndButton()->text(), QStringLiteral("End"));
        QCOMPARE(panel->linkStartButton()->text(), QStringLiteral("Start"));
        QStringList labels;
        const QList<QLabel*> all = panel->findChildren<QLabel*>();
        for (const QLabel* const label : all) {
            labels.append(label->text());
        }
        for (const char* const text : {"sec.", "of Effect ", "with an offset of"}) {
            QVERIFY2(labels.contains(QString::fromLatin1(text)), text);
        }
        QCOMPARE(labels.contains(QStringLiteral("Cycles")), panel == &end);
        QVERIFY(panel->linkEndButton()->x() < panel->linkStartButton()->x());
    }
    QCOMPARE(end.cyclesSpin()->minimum(), 1);
    QCOMPARE(end.cyclesSpin()->maximum(), 1000);
}

void MetaWidgetTimesTest::withoutASelectionThePanelsAreEmptyAndOff()
{
    openAt(second(1, EditorStage::startsAt(2)) + second(2), 0);
    QVERIFY(m_stage.start()->isEnabled());
    m_stage.table()->clearSelection();
    for (const TimePanel* const panel : {m_stage.start(), m_stage.end()}) {
        QVERIFY(!panel->isEnabled());
        QCOMPARE(panel->fixedEdit()->text(), QString());
        QCOMPARE(panel->offsetEdit()->text(), QString());
        QCOMPARE(panel->targetBox()->count(), 0);
        QCOMPARE(panel->shownKind(), TimePanel::Kind::None);
    }
    QCOMPARE(m_stage.end()->cyclesSpin()->value(), 1);
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Effect Parameters"));
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetTimesTest::settingsAreShown_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("start"); // fixed|side|target|offset, of the kind that is on
    QTest::addColumn<QString>("end");
    QTest::newRow("fixed") << QStringLiteral("<startfixedtime>1500</startfixedtime>"
                                             "<endfixedtime>250</endfixedtime>")
                           << QStringLiteral("fixed 1.5") << QStringLiteral("fixed 0.25");
    QTest::newRow("linked") << EditorStage::startsAt(2) +
                                   QStringLiteral("<startlinkstart>0</startlinkstart>"
                                                  "<startlinkoffset>500</startlinkoffset>") +
                                   EditorStage::endsAt(3) +
                                   QStringLiteral("<endlinkoffset>-1250</endlinkoffset>")
                            << QStringLiteral("end of E2, 0.5")
                            << QStringLiteral("start of E3, -1.25");
    QTest::newRow("cycles") << QStringLiteral(
                                   "<endtype>2</endtype><endcyclecount>12</endcyclecount>")
                            << QStringLiteral("fixed 0") << QStringLiteral("12 cycles");
    QTest::newRow("more cycles than the box holds")
        << QStringLiteral("<endtype>2</endtype><endcyclecount>4000000000</endcyclecount>")
        << QStringLiteral("fixed 0") << QStringLiteral("1000 cycles");
    QTest::newRow("unknown kinds") << QStringLiteral("<starttype>7</starttype><endtype>9</endtype>")
                                   << QStringLiteral("none") << QStringLiteral("none");
    QTest::newRow("the greatest time")
        << QStringLiteral("<startfixedtime>4294967295</startfixedtime>")
        << QStringLiteral("fixed 4294967.295") << QStringLiteral("fixed 0");
}

void MetaWidgetTimesTest::settingsAreShown()
{
    QFETCH(const QString, keys);
    QFETCH(const QString, start);
    QFETCH(const QString, end);
    const auto read = [](const TimePanel* panel) {
        switch (panel->shownKind()) {
        case TimePanel::Kind::Fixed:
            return QStringLiteral("fixed ") + panel->fixedEdit()->text();
        case TimePanel::Kind::Linked:
            return QStringLiteral("%1 of %2, %3")
                .arg(panel->linkStartButton()->isChecked() ? QStringLiteral("start")
                                                           : QStringLiteral("end"),
                     panel->targetBox()->currentText(), panel->offsetEdit()->text());
        case TimePanel::Kind::Cycles:
            return QStringLiteral("%1 cycles").arg(panel->cyclesSpin()->value());
        default:
            return QStringLiteral("none");
        }
    };
    m_stage.open(EditorStage::effectXml(1, keys) + second(2) + second(3));
    m_stage.select(0);
    QCOMPARE(read(m_stage.start()), start);
    QCOMPARE(read(m_stage.end()), end);
}

void MetaWidgetTimesTest::showingIsNoEditing()
{
    const QString children =
        second(1, EditorStage::startsAt(2)) + second(2, QStringLiteral("<endtype>2</endtype>")) +
        EditorStage::effectXml(3, QStringLiteral("<endtype>2</endtype>"
                                                 "<endcyclecount>2000</endcyclecount>"));
    m_stage.open(children);
    QString before;
    QTextStream beforeStream(&before);
    m_stage.root->save(beforeStream);
    for (int row = 0; row < 3; ++row) {
        m_stage.clickCell(row, MetaWidget::NameColumn);
    }
    m_stage.table()->clearSelection();
    QString after;
    QTextStream afterStream(&after);
    m_stage.root->save(afterStream);
    QCOMPARE(after, before);
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetTimesTest::kindsEnableTheirControls()
{
    openAt(second(1) + second(2), 0);
    const auto states = [](const TimePanel* panel) {
        const bool link = panel->linkEndButton()->isEnabled();
        const bool same = panel->linkStartButton()->isEnabled() == link &&
                          panel->targetBox()->isEnabled() == link &&
                          panel->offsetEdit()->isEnabled() == link;
        QString text = panel->fixedEdit()->isEnabled() ? QStringLiteral("F") : QStringLiteral("-");
        text += !same ? QLatin1Char('?') : link ? QLatin1Char('L') : QLatin1Char('-');
        if (panel->cyclesSpin() != nullptr) {
            text += panel->cyclesSpin()->isEnabled() ? QLatin1Char('C') : QLatin1Char('-');
        }
        return text;
    };
    QCOMPARE(states(m_stage.start()), QStringLiteral("F-"));
    EditorStage::click(m_stage.start()->linkedButton());
    QCOMPARE(states(m_stage.start()), QStringLiteral("-L"));
    EditorStage::click(m_stage.start()->fixedButton());
    QCOMPARE(states(m_stage.start()), QStringLiteral("F-"));
    QCOMPARE(states(m_stage.end()), QStringLiteral("F--"));
    EditorStage::click(m_stage.end()->cyclesButton());
    QCOMPARE(states(m_stage.end()), QStringLiteral("--C"));
    EditorStage::click(m_stage.end()->linkedButton());
    QCOMPARE(states(m_stage.end()), QStringLiteral("-L-"));
    EditorStage::click(m_stage.end()->fixedButton());
    QCOMPARE(states(m_stage.end()), QStringLiteral("F--"));
    m_stage.select(1); // loaded, not clicked
    QCOMPARE(states(m_stage.start()), QStringLiteral("F-"));
    QCOMPARE(states(m_stage.end()), QStringLiteral("F--"));
}

void MetaWidgetTimesTest::oneEffectHasNoTargets()
{
    openAt(second(1), 0);
    for (const TimePanel* const panel : {m_stage.start(), m_stage.end()}) {
        QCOMPARE(EditorStage::targets(panel), QStringLiteral("None Available"));
        QVERIFY(!panel->linkedButton()->isEnabled());
        EditorStage::click(panel->linkedButton());
        QCOMPARE(panel->shownKind(), TimePanel::Kind::Fixed);
    }
    QCOMPARE(m_stage.effect(1)->startType(), static_cast<int>(Effect::StartFixed));
}

void MetaWidgetTimesTest::aLinkWithoutATargetBecomesFixed()
{
    m_stage.open(second(1, EditorStage::startsAt(9) + EditorStage::endsAt(9)));
    m_stage.select(0);
    QCOMPARE(m_stage.effect(1)->startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(m_stage.effect(1)->endType(), static_cast<int>(Effect::EndFixed));
    QCOMPARE(m_stage.effect(1)->startLinkEid(), 9U); // the fields stay
    QCOMPARE(m_stage.effect(1)->endLinkEid(), 9U);
    QVERIFY(m_stage.start()->fixedButton()->isChecked());
    QVERIFY(m_stage.end()->fixedButton()->isChecked());
}

void MetaWidgetTimesTest::onlyWhatCannotCloseARingIsOffered()
{
    // E2 hangs on E1, E3 by its end on E2; E4 is free.
    openAt(second(1) + second(2, EditorStage::startsAt(1)) + second(3, EditorStage::endsAt(2)) +
               second(4),
           0);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E4"));
    QCOMPARE(EditorStage::targets(m_stage.end()), QStringLiteral("E4"));
    m_stage.select(1);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E1 E4"));
    m_stage.select(2);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E1 E2 E4"));
    m_stage.select(3);
    QCOMPARE(EditorStage::targets(m_stage.end()), QStringLiteral("E1 E2 E3"));
    // Once E4 is linked to E3, E1 has none left.
    EditorStage::click(m_stage.start()->linkedButton());
    choose(m_stage.start()->targetBox(), 2);
    QCOMPARE(m_stage.effect(4)->startLinkEid(), 3U);
    m_stage.select(0);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("None Available"));
}

void MetaWidgetTimesTest::thePresentLinkIsSelected()
{
    openAt(second(1) + second(2) + second(3, EditorStage::startsAt(2) + EditorStage::endsAt(1)), 2);
    QCOMPARE(m_stage.start()->targetBox()->currentText(), QStringLiteral("E2"));
    QCOMPARE(m_stage.end()->targetBox()->currentText(), QStringLiteral("E1"));
    m_stage.select(1); // not linked: the first
    QCOMPARE(m_stage.start()->targetBox()->currentText(), QStringLiteral("E1"));
}

void MetaWidgetTimesTest::ringsOfAFileAreShown()
{
    m_stage.open(second(1, EditorStage::startsAt(2)) + second(2, EditorStage::startsAt(3)) +
                 second(3, EditorStage::startsAt(1)) + second(4));
    m_stage.select(0);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E4"));
    QVERIFY(m_stage.start()->linkedButton()->isChecked());
    QCOMPARE(m_stage.start()->targetBox()->currentIndex(), -1); // E2 is none to choose
    m_stage.select(3);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E1 E2 E3"));
    // Choosing one breaks the ring.
    m_stage.select(0);
    m_stage.start()->targetBox()->setFocus();
    QTest::keyClick(m_stage.start()->targetBox(), Qt::Key_Down);
    QCOMPARE(m_stage.effect(1)->startLinkEid(), 4U);
}

void MetaWidgetTimesTest::startFixed()
{
    openAt(second(1) + second(2, EditorStage::startsAt(1) +
                                     QStringLiteral("<startfixedtime>700</startfixedtime>")),
           1);
    EditorStage::click(m_stage.start()->fixedButton());
    QCOMPARE(m_stage.effect(2)->startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(m_stage.effect(2)->startFixedTime(), 700U); // from the edit
    QCOMPARE(m_stage.effect(2)->begin(), 700U);
    QCOMPARE(m_stage.item(1, MetaWidget::StartColumn)->icon().cacheKey(),
             StateIcons::ICON_NONE().cacheKey());
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.start()->fixedButton());
}

void MetaWidgetTimesTest::startLinked()
{
    openAt(second(1, QStringLiteral("<startfixedtime>3000</startfixedtime>")) +
               second(2, QStringLiteral("<startlinkeid>1</startlinkeid>"
                                        "<startlinkstart>0</startlinkstart>"
                                        "<startlinkoffset>250</startlinkoffset>")),
           1);
    EditorStage::click(m_stage.start()->linkedButton());
    const Effect& e = *m_stage.effect(2);
    QCOMPARE(e.startType(), static_cast<int>(Effect::StartLinked));
    QVERIFY(!e.startLinkStart());
    QCOMPARE(e.startLinkEid(), 1U);
    QCOMPARE(e.startLinkOffset(), 250.0);
    QCOMPARE(e.begin(), 4250U);
    QCOMPARE(m_stage.value(1, MetaWidget::StartColumn), QVariant(4.25));
    QCOMPARE(m_stage.item(1, MetaWidget::StartColumn)->icon().cacheKey(),
             StateIcons::ICON_LINK().cacheKey());
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.start()->linkedButton());
}

void MetaWidgetTimesTest::startLinkedToTheEntryThatIsShown()
{
    openAt(second(1) + second(2) + second(3), 2); // never linked before
    EditorStage::click(m_stage.start()->linkedButton());
    QCOMPARE(m_stage.effect(3)->startLinkEid(), 1U);
    m_stage.start()->offsetEdit()->clear(); // unreadable
    EditorStage::click(m_stage.start()->fixedButton());
    EditorStage::click(m_stage.start()->linkedButton());
    QCOMPARE(m_stage.effect(3)->startLinkOffset(), 0.0);
}

void MetaWidgetTimesTest::startFixedTime_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<quint32>("ms");
    QTest::newRow("whole") << QStringLiteral("3") << 3000U;
    QTest::newRow("cut") << QStringLiteral("0.0019") << 1U;
    QTest::newRow("empty") << QString() << 0U;
    QTest::newRow("words") << QStringLiteral("abc") << 0U;
    QTest::newRow("comma") << QStringLiteral("1,5") << 0U;
    QTest::newRow("below 0") << QStringLiteral("-4") << 0U;
    QTest::newRow("exponent") << QStringLiteral("2e1") << 20000U;
}

void MetaWidgetTimesTest::startFixedTime()
{
    QFETCH(const QString, typed);
    QFETCH(const quint32, ms);
    openAt(second(1, QStringLiteral("<startfixedtime>500</startfixedtime>")), 0);
    EditorStage::typeText(m_stage.start()->fixedEdit(), typed);
    QCOMPARE(m_stage.effect(1)->startFixedTime(), ms);
    QCOMPARE(m_stage.effect(1)->begin(), ms);
    QCOMPARE(m_stage.value(0, MetaWidget::StartColumn), QVariant(ms / 1000.0));
    QCOMPARE(m_stage.start()->fixedEdit()->text(), typed); // what is typed stays
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.start()->fixedEdit());
}

void MetaWidgetTimesTest::startLinkSides()
{
    openAt(second(1) + second(2, EditorStage::startsAt(1)), 1);
    QCOMPARE(m_stage.effect(2)->begin(), 0U);
    EditorStage::click(m_stage.start()->linkEndButton());
    QVERIFY(!m_stage.effect(2)->startLinkStart());
    QCOMPARE(m_stage.effect(2)->begin(), 1000U);
    QCOMPARE(focus(), m_stage.start()->linkEndButton());
    EditorStage::click(m_stage.start()->linkStartButton());
    QVERIFY(m_stage.effect(2)->startLinkStart());
    QCOMPARE(m_stage.effect(2)->begin(), 0U);
    QCOMPARE(focus(), m_stage.start()->linkStartButton());
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetTimesTest::startLinkEffect()
{
    openAt(second(1) + second(2, QStringLiteral("<startfixedtime>5000</startfixedtime>")) +
               second(3, EditorStage::startsAt(1)),
           2);
    choose(m_stage.start()->targetBox(), 1);
    QCOMPARE(m_stage.effect(3)->startLinkEid(), 2U);
    QCOMPARE(m_stage.effect(3)->begin(), 5000U);
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.start()->targetBox());
}

void MetaWidgetTimesTest::startLinkOffset_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("ms");
    QTest::newRow("ahead") << QStringLiteral("1.5") << 1500.0;
    QTest::newRow("before") << QStringLiteral("-0.5") << -500.0;
    QTest::newRow("not cut") << QStringLiteral("0.0005") << 0.5;
    QTest::newRow("words") << QStringLiteral("x") << 0.0;
    QTest::newRow("empty") << QString() << 0.0;
}

void MetaWidgetTimesTest::startLinkOffset()
{
    QFETCH(const QString, typed);
    QFETCH(const double, ms);
    openAt(second(1, QStringLiteral("<startfixedtime>2000</startfixedtime>")) +
               second(2, EditorStage::startsAt(1) +
                             QStringLiteral("<startlinkoffset>7</startlinkoffset>")),
           1);
    EditorStage::typeText(m_stage.start()->offsetEdit(), typed);
    QCOMPARE(m_stage.effect(2)->startLinkOffset(), ms);
    QCOMPARE(m_stage.effect(2)->begin(), static_cast<quint32>(2000.0 + ms));
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.start()->offsetEdit());
}

void MetaWidgetTimesTest::endFixed()
{
    openAt(second(1, QStringLiteral("<endtype>2</endtype><endfixedtime>700</endfixedtime>"
                                    "<startfixedtime>100</startfixedtime>")),
           0);
    EditorStage::click(m_stage.end()->fixedButton());
    QCOMPARE(m_stage.effect(1)->endType(), static_cast<int>(Effect::EndFixed));
    QCOMPARE(m_stage.effect(1)->endFixedTime(), 700U);
    QCOMPARE(m_stage.effect(1)->end(), 800U);
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.end()->fixedButton());
}

void MetaWidgetTimesTest::endLinked()
{
    openAt(second(1, QStringLiteral("<startfixedtime>3000</startfixedtime>")) +
               second(2, QStringLiteral("<endlinkeid>1</endlinkeid>"
                                        "<endlinkoffset>-250</endlinkoffset>")),
           1);
    EditorStage::click(m_stage.end()->linkedButton());
    const Effect& e = *m_stage.effect(2);
    QCOMPARE(e.endType(), static_cast<int>(Effect::EndLinked));
    QVERIFY(e.endLinkStart());
    QCOMPARE(e.endLinkEid(), 1U);
    QCOMPARE(e.endLinkOffset(), -250.0);
    QCOMPARE(e.end(), 2750U);
    QCOMPARE(m_stage.item(1, MetaWidget::EndColumn)->icon().cacheKey(),
             StateIcons::ICON_LINK().cacheKey());
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.end()->linkedButton());
}

void MetaWidgetTimesTest::endCycles()
{
    openAt(second(1, QStringLiteral("<endcyclecount>3</endcyclecount>")), 0);
    EditorStage::click(m_stage.end()->cyclesButton());
    QCOMPARE(m_stage.effect(1)->endType(), static_cast<int>(Effect::EndCycles));
    QCOMPARE(m_stage.effect(1)->endCycleCount(), 3U);
    QCOMPARE(m_stage.effect(1)->end(), 3000U); // a cycle of a second
    QCOMPARE(m_stage.item(0, MetaWidget::EndColumn)->icon().cacheKey(),
             StateIcons::ICON_CYCLE().cacheKey());
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.end()->cyclesButton());
}

void MetaWidgetTimesTest::endFixedTime()
{
    QFETCH(const QString, typed);
    QFETCH(const quint32, ms);
    openAt(second(1, QStringLiteral("<startfixedtime>500</startfixedtime>")), 0);
    EditorStage::typeText(m_stage.end()->fixedEdit(), typed);
    QCOMPARE(m_stage.effect(1)->endFixedTime(), ms);
    QCOMPARE(m_stage.effect(1)->end(), 500U + ms);
    QCOMPARE(m_stage.root->end(), 500U + ms);
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.end()->fixedEdit());
}

void MetaWidgetTimesTest::endLinkSides()
{
    openAt(second(1) + second(2, EditorStage::endsAt(1)), 1);
    EditorStage::click(m_stage.end()->linkEndButton());
    QVERIFY(!m_stage.effect(2)->endLinkStart());
    QCOMPARE(m_stage.effect(2)->end(), 1000U);
    EditorStage::click(m_stage.end()->linkStartButton());
    QVERIFY(m_stage.effect(2)->endLinkStart());
    QCOMPARE(m_stage.effect(2)->end(), 0U);
    QCOMPARE(focus(), m_stage.end()->linkStartButton());
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetTimesTest::endLinkEffect()
{
    openAt(second(1) + second(2, QStringLiteral("<startfixedtime>5000</startfixedtime>")) +
               second(3, EditorStage::endsAt(1)),
           2);
    choose(m_stage.end()->targetBox(), 1);
    QCOMPARE(m_stage.effect(3)->endLinkEid(), 2U);
    QCOMPARE(m_stage.effect(3)->end(), 5000U);
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.end()->targetBox());
}

void MetaWidgetTimesTest::endLinkOffset()
{
    QFETCH(const QString, typed);
    QFETCH(const double, ms);
    openAt(
        second(1, QStringLiteral("<startfixedtime>2000</startfixedtime>")) +
            second(2, EditorStage::endsAt(1) + QStringLiteral("<endlinkoffset>7</endlinkoffset>")),
        1);
    EditorStage::typeText(m_stage.end()->offsetEdit(), typed);
    QCOMPARE(m_stage.effect(2)->endLinkOffset(), ms);
    QCOMPARE(m_stage.effect(2)->end(), static_cast<quint32>(2000.0 + ms));
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), m_stage.end()->offsetEdit());
}

void MetaWidgetTimesTest::endCycleCount()
{
    openAt(second(1, QStringLiteral("<endtype>2</endtype>")), 0);
    QSpinBox* const spin = m_stage.end()->cyclesSpin();
    spin->setFocus();
    QTest::keyClick(spin, Qt::Key_Up);
    QCOMPARE(m_stage.effect(1)->endCycleCount(), 2U);
    QCOMPARE(m_stage.effect(1)->end(), 2000U);
    QCOMPARE(m_stage.value(0, MetaWidget::EndColumn), QVariant(2.0));
    QVERIFY(m_stage.widget->isModified());
    QCOMPARE(focus(), spin);
}

void MetaWidgetTimesTest::cyclesStayInTheirRange_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<quint32>("count");
    QTest::newRow("lowest") << QStringLiteral("1") << 1U;
    QTest::newRow("zero") << QStringLiteral("0") << 1U;
    QTest::newRow("below 0") << QStringLiteral("-5") << 5U; // the sign is not taken
    QTest::newRow("highest") << QStringLiteral("1000") << 1000U;
    QTest::newRow("above") << QStringLiteral("1001") << 100U; // nor the fourth digit
    QTest::newRow("words") << QStringLiteral("many") << 1U;
}

void MetaWidgetTimesTest::cyclesStayInTheirRange()
{
    QFETCH(const QString, typed);
    QFETCH(const quint32, count);
    openAt(second(1, QStringLiteral("<endtype>2</endtype>")), 0);
    QSpinBox* const spin = m_stage.end()->cyclesSpin();
    spin->setFocus();
    spin->selectAll();
    QTest::keyClicks(spin, typed);
    QTest::keyClick(spin, Qt::Key_Return);
    QCOMPARE(m_stage.effect(1)->endCycleCount(), count);
    QCOMPARE(spin->value(), static_cast<int>(count));
}

void MetaWidgetTimesTest::aToggleOffOnlyMarks()
{
    openAt(second(1) + second(2, EditorStage::startsAt(1)), 1);
    const auto text = [this] {
        QString saved;
        QTextStream stream(&saved);
        m_stage.root->save(stream);
        return saved;
    };
    const QString before = text();
    MetaWidget& widget = *m_stage.widget;
    using Slot = void (MetaWidget::*)(bool);
    for (const Slot slot :
         {&MetaWidget::handleStartFixedToggled, &MetaWidget::handleStartLinkedToggled,
          &MetaWidget::handleStartLinkStartToggled, &MetaWidget::handleStartLinkEndToggled,
          &MetaWidget::handleEndFixedToggled, &MetaWidget::handleEndLinkedToggled,
          &MetaWidget::handleEndCyclesToggled, &MetaWidget::handleEndLinkStartToggled,
          &MetaWidget::handleEndLinkEndToggled}) {
        widget.setModified(false);
        m_stage.table()->setFocus();
        (widget.*slot)(false);
        QVERIFY(widget.isModified());
        QCOMPARE(text(), before);
        QCOMPARE(focus(), m_stage.table());
    }
}

void MetaWidgetTimesTest::anEntryThatIsGoneChangesNothing()
{
    openAt(second(1) + second(2, EditorStage::startsAt(1) + EditorStage::endsAt(1)), 1);
    for (const int index : {-1, 5}) {
        m_stage.widget->handleStartLinkEffectActivated(index);
        m_stage.widget->handleEndLinkEffectActivated(index);
    }
    QCOMPARE(m_stage.effect(2)->startLinkEid(), 1U);
    QCOMPARE(m_stage.effect(2)->endLinkEid(), 1U);
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetTimesTest::theFocusStaysWithTheControl()
{
    openAt(second(1) + second(2, EditorStage::startsAt(1)), 1);
    m_stage.table()->setFocus();
    m_stage.widget->handleStartLinkOffsetChanged(QStringLiteral("1")); // from elsewhere
    QCOMPARE(focus(), m_stage.start()->offsetEdit());
}

void MetaWidgetTimesTest::theFocusComesForAnotherReason()
{
    class Watch : public QObject
    {
    public:
        bool eventFilter(QObject* /*watched*/, QEvent* event) override
        {
            if (event->type() == QEvent::FocusIn) {
                reasons.append(static_cast<QFocusEvent*>(event)->reason());
            }
            return false;
        }

        QList<Qt::FocusReason> reasons;
    };
    openAt(second(1), 0);
    m_stage.table()->setFocus();
    Watch watch;
    m_stage.end()->fixedEdit()->installEventFilter(&watch);
    m_stage.widget->handleEndFixedTimeChanged(QStringLiteral("2"));
    QCOMPARE(watch.reasons, QList<Qt::FocusReason>{Qt::OtherFocusReason});
}

void MetaWidgetTimesTest::endOfTheEndLinkFocusesTheStartOffset()
{
    openAt(second(1) + second(2, EditorStage::startsAt(1) + EditorStage::endsAt(1)), 1);
    EditorStage::click(m_stage.end()->linkEndButton());
    QCOMPARE(focus(), m_stage.start()->offsetEdit());
    QVERIFY(m_stage.end()->linkEndButton()->isChecked());
    QCOMPARE(m_stage.effect(2)->startLinkOffset(), 0.0);
}

void MetaWidgetTimesTest::aPassMovesWhatFollows()
{
    const QString follows = QStringLiteral("<startlinkstart>0</startlinkstart>");
    openAt(second(1) + second(2, EditorStage::startsAt(1) + follows) +
               second(3, EditorStage::startsAt(2) + follows),
           0);
    QCOMPARE(m_stage.effect(3)->begin(), 2000U);
    EditorStage::typeText(m_stage.end()->fixedEdit(), QStringLiteral("10"));
    QCOMPARE(m_stage.effect(3)->begin(), 11000U);
    QCOMPARE(m_stage.value(2, MetaWidget::StartColumn), QVariant(11.0));
    QCOMPARE(m_stage.root->end(), 12000U);
}

void MetaWidgetTimesTest::anyTextInAnyField_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nan") << QStringLiteral("nan");
    QTest::newRow("inf") << QStringLiteral("inf");
    QTest::newRow("-inf") << QStringLiteral("-inf");
    QTest::newRow("huge") << QStringLiteral("1e308");
    QTest::newRow("very low") << QStringLiteral("-1e308");
    QTest::newRow("one too many") << QStringLiteral("4294967.296");
    QTest::newRow("markup") << QStringLiteral("<effect>&\"']]>");
    QTest::newRow("half a pair") << QString(QChar(0xD800));
    QTest::newRow("long") << QStringLiteral("8").repeated(30000);
}

void MetaWidgetTimesTest::anyTextInAnyField()
{
    QFETCH(const QString, text);
    openAt(second(1) + second(2, EditorStage::startsAt(1) + EditorStage::endsAt(1)) + second(3), 1);
    m_stage.start()->offsetEdit()->setText(text);
    m_stage.end()->offsetEdit()->setText(text);
    m_stage.select(2);
    m_stage.start()->fixedEdit()->setText(text);
    m_stage.end()->fixedEdit()->setText(text);
    // Whatever came of it, the table shows it, and the show can be saved.
    for (int row = 0; row < 3; ++row) {
        const Effect& e = *m_stage.effect(static_cast<quint32>(row + 1));
        QCOMPARE(m_stage.value(row, MetaWidget::StartColumn), QVariant(e.begin() / 1000.0));
        QCOMPARE(m_stage.value(row, MetaWidget::EndColumn), QVariant(e.end() / 1000.0));
    }
    QString saved;
    QTextStream stream(&saved);
    m_stage.widget->writeShow(stream);
    QDomDocument document;
    QVERIFY(document.setContent(saved));
}

void MetaWidgetTimesTest::keystrokesKeepTheCursor()
{
    openAt(second(1) + second(2), 0);
    QLineEdit* const edit = m_stage.start()->fixedEdit();
    edit->setFocus();
    edit->setText(QStringLiteral("15"));
    edit->setCursorPosition(1);
    QTest::keyClicks(edit, QStringLiteral(".2"));
    QCOMPARE(edit->text(), QStringLiteral("1.25"));
    QCOMPARE(m_stage.effect(1)->startFixedTime(), 1250U);
}

void MetaWidgetTimesTest::aSortedTableKeepsItsSelection()
{
    openAt(second(1) + second(2, QStringLiteral("<startfixedtime>2000</startfixedtime>")), 0);
    m_stage.table()->sortItems(MetaWidget::StartColumn, Qt::AscendingOrder);
    EditorStage::typeText(m_stage.start()->fixedEdit(), QStringLiteral("5.5"));
    QCOMPARE(m_stage.column(MetaWidget::NameColumn),
             QStringList({QStringLiteral("E2"), QStringLiteral("E1")}));
    QCOMPARE(m_stage.selectedRows(), QList<int>{1});
    QCOMPARE(m_stage.effect(1)->startFixedTime(), 5500U); // every keystroke hit the same effect
    QCOMPARE(m_stage.effect(2)->startFixedTime(), 2000U);
}

void MetaWidgetTimesTest::aTargetThatIsDeletedIsOfferedNoMore()
{
    openAt(second(1) + second(2) + second(3, EditorStage::startsAt(1)), 2);
    Effect* const gone = m_stage.effect(1);
    m_stage.root->removeEffect(gone);
    delete gone;
    m_stage.widget->handleStartLinkEffectActivated(0); // its entry still stands
    QVERIFY(!m_stage.widget->isModified());
    m_stage.root->updateEffectTimes();
    QCOMPARE(m_stage.effect(3)->startType(), static_cast<int>(Effect::StartFixed));
    QVERIFY(m_stage.start()->fixedButton()->isChecked()); // the panel follows the pass
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E2"));
}

QTEST_MAIN(MetaWidgetTimesTest)
#include "MetaWidgetTimesTest.moc"
