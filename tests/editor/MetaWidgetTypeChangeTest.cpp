#include "tests/editor/EditorStage.h"

#include <QAbstractItemView>
#include <QMessageBox>
#include <QSignalSpy>

namespace {

constexpr char kEverything[] =
    "<gid>4097</gid><priority>7</priority><transparency>0.5</transparency>"
    "<begin>3000</begin><end>8000</end><fadein>200</fadein><fadeout>300</fadeout>"
    "<starttype>1</starttype><startlinkeid>2</startlinkeid><startfixedtime>11</startfixedtime>"
    "<startlinkstart>0</startlinkstart><startlinkoffset>-50</startlinkoffset>"
    "<endtype>2</endtype><endlinkeid>3</endlinkeid><endfixedtime>22</endfixedtime>"
    "<endlinkstart>0</endlinkstart><endlinkoffset>60</endlinkoffset>"
    "<endcyclecount>4</endcyclecount>";

QSettings store()
{
    return QSettings(QStringLiteral("Halden"), QStringLiteral("Pageant Forge"));
}

QString plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

} // namespace

/// An effect that becomes one of another type.
class MetaWidgetTypeChangeTest : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_questions = 0;
        store().clear();
    }

    void theQuestionReadsAsStated();
    void answers_data();
    void answers();
    void escapeMeansNo();
    void askedNoMore();
    void everythingButTheParametersIsKept();
    void whatNoPassWorksOutIsKeptToo();
    void theOldEffectGoesAndNobodyPointsAtIt();
    void theShowFollowsTheNewEffectsCycle();
    void theSameTypeIsNoChange();
    void aWhiteTypeLeavesItsBox();
    void theCellChangesTheTypeToo();
    void aCellThatIsAnsweredWithNoIsPutBack();
    void aSortedTableFindsTheRow();
    void aTypeThatCannotBeMadeLeavesTheShowInactive();
    void theRootIsInactiveWhileItIsChanged();
    void anEffectThatGoesUnderTheQuestion();
    void aShowThatGoesUnderTheQuestion();
    void theWheelChangesNothing();
    void theBoxBesideNewChangesNothing();
    void noEffectIsNoChange();

private:
    /// Chooses a type in a row's box with the keyboard, and answers the question with the button
    /// of that text; an empty one expects none.
    void choose(int row, const QString& type, const QString& answer)
    {
        QComboBox* const box = m_stage.typeBox(row);
        const int index = box->findText(type);
        QVERIFY(index >= 0);
        if (!answer.isEmpty()) {
            whenDialogOpens<QMessageBox>([this, answer](QMessageBox* question) {
                QVERIFY(question != nullptr);
                ++m_questions;
                const QList<QAbstractButton*> buttons = question->buttons();
                for (QAbstractButton* const button : buttons) {
                    if (plain(button->text()) == answer) {
                        QTest::mouseClick(button, Qt::LeftButton);
                        return;
                    }
                }
            });
        }
        QTest::mouseClick(box, Qt::LeftButton);
        QTRY_VERIFY(box->view()->isVisible());
        box->view()->setCurrentIndex(box->model()->index(index, 0));
        QTest::keyClick(box->view(), Qt::Key_Return);
    }
    QString type(quint32 eid) const { return m_stage.effect(eid)->type(); }

    EditorStage m_stage;
    int m_questions = 0;
};

void MetaWidgetTypeChangeTest::theQuestionReadsAsStated()
{
    m_stage.open(EditorStage::effectXml(1));
    bool seen = false;
    whenDialogOpens<QMessageBox>([&seen](QMessageBox* question) {
        QVERIFY(question != nullptr);
        QCOMPARE(question->text(), QStringLiteral("Confirm Effect Type Change"));
        QCOMPARE(question->informativeText(),
                 QStringLiteral("Are you sure that you want to change the effect type?\n"
                                "All parameter values will be discarded."));
        QStringList buttons;
        const QList<QAbstractButton*> all = question->buttons();
        for (const QAbstractButton* const button : all) {
            buttons.append(plain(button->text()));
        }
        buttons.sort();
        QCOMPARE(buttons, QStringList({QStringLiteral("No"), QStringLiteral("Yes"),
                                       QStringLiteral("Yes, and Don't Ask Again")}));
        QCOMPARE(plain(question->defaultButton()->text()), QStringLiteral("No"));
        seen = true;
    });
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Sweep"));
    QVERIFY(seen);
}

void MetaWidgetTypeChangeTest::answers_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("changes");
    QTest::addColumn<bool>("asksAgain");
    QTest::newRow("yes") << QStringLiteral("Yes") << true << true;
    QTest::newRow("always") << QStringLiteral("Yes, and Don't Ask Again") << true << false;
    QTest::newRow("no") << QStringLiteral("No") << false << true;
}

void MetaWidgetTypeChangeTest::answers()
{
    QFETCH(const QString, answer);
    QFETCH(const bool, changes);
    QFETCH(const bool, asksAgain);
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.root->setActive(true);
    choose(0, QStringLiteral("Sweep"), answer);
    QTRY_COMPARE(m_questions, 1);
    const QString expected = changes ? QStringLiteral("Sweep") : QStringLiteral("Fixed Color");
    QCOMPARE(type(1), expected);
    QCOMPARE(m_stage.text(0, MetaWidget::TypeColumn), expected);
    QCOMPARE(m_stage.typeBox(0)->currentText(), expected);
    QCOMPARE(m_stage.widget->isModified(), changes);
    QCOMPARE(store().value(QStringLiteral("askeffectchange"), true).toBool(), asksAgain);
    QCOMPARE(store().contains(QStringLiteral("askeffectchange")), !asksAgain);
    QVERIFY(m_stage.root->active());
    QVERIFY(!m_stage.table()->signalsBlocked());
    QVERIFY(m_stage.table()->isSortingEnabled());
    if (changes) {
        QCOMPARE(m_stage.selectedRows(), QList<int>{0});
        QCOMPARE(m_stage.table()->currentColumn(), static_cast<int>(MetaWidget::EidColumn));
        QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("E1 Parameters"));
    }
    // And again, with what was stored.
    choose(1, QStringLiteral("Sweep"), asksAgain ? QStringLiteral("Yes") : QString());
    QTRY_COMPARE(type(2), QStringLiteral("Sweep"));
    QCOMPARE(m_questions, asksAgain ? 2 : 1);
}

void MetaWidgetTypeChangeTest::escapeMeansNo()
{
    m_stage.open(EditorStage::effectXml(1));
    whenDialogOpens<QMessageBox>(
        [](QMessageBox* question) { QTest::keyClick(question, Qt::Key_Escape); });
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Sweep"));
    QCOMPARE(type(1), QStringLiteral("Fixed Color"));
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetTypeChangeTest::askedNoMore()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1));
    choose(0, QStringLiteral("Streak"), QString());
    QTRY_COMPARE(type(1), QStringLiteral("Streak"));
    store().setValue(QStringLiteral("askeffectchange"), true); // read at each change
    choose(0, QStringLiteral("Sweep"), QStringLiteral("No"));
    QTRY_COMPARE(m_questions, 1);
    QCOMPARE(type(1), QStringLiteral("Streak"));
}

void MetaWidgetTypeChangeTest::everythingButTheParametersIsKept()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1, QString::fromLatin1(kEverything) +
                                               QStringLiteral("<color>#ff0000</color>")) +
                 EditorStage::effectXml(2, QStringLiteral("<startfixedtime>1000</startfixedtime>"
                                                          "<endfixedtime>2050</endfixedtime>")));
    QSignalSpy passes(m_stage.root.get(), &MetaEffect::updateEffectTimesComplete);
    choose(1, QStringLiteral("Cross Fade"), QString()); // behind E2, by its priority
    QTRY_COMPARE(type(1), QStringLiteral("Cross Fade"));
    const Effect& e = *m_stage.effect(1);
    QCOMPARE(e.name(), QStringLiteral("E1"));
    QCOMPARE(e.gid(), EditorStage::kSteps);
    QCOMPARE(e.priority(), 7U);
    QCOMPARE(e.fadein(), 200U);
    QCOMPARE(e.fadeout(), 300U);
    QCOMPARE(e.eid(), 1U);
    QCOMPARE(e.startType(), 1);
    QCOMPARE(e.startLinkEid(), 2U);
    QCOMPARE(e.startFixedTime(), 11U);
    QVERIFY(!e.startLinkStart());
    QCOMPARE(e.startLinkOffset(), -50.0);
    QCOMPARE(e.endType(), 2);
    QCOMPARE(e.endLinkEid(), 3U);
    QCOMPARE(e.endFixedTime(), 22U);
    QVERIFY(!e.endLinkStart());
    QCOMPARE(e.endLinkOffset(), 60.0);
    QCOMPARE(e.endCycleCount(), 4U);
    QVERIFY(passes.count() > 0);
    QCOMPARE(e.begin(), 3000U); // the end of E2, 50 ms before
    QCOMPARE(e.end(), 3000U + 4 * e.cycleTime());
    QCOMPARE(m_stage.root->effectList().last()->eid(), 1U); // by priority
    // The parameters are the new type's own.
    std::unique_ptr<Effect> fresh(
        EffectFactory::createEffect(QStringLiteral("Cross Fade"), m_stage.model.get(), nullptr));
    QDomDocument document;
    const auto parameter = [&document](const Effect& effect, const char* name) {
        return effect.toXml(document).firstChildElement(QString::fromLatin1(name)).text();
    };
    QVERIFY(!parameter(*fresh, "startcolor").isEmpty());
    QCOMPARE(parameter(e, "startcolor"), parameter(*fresh, "startcolor"));
    QCOMPARE(m_stage.typeBox(1)->property("eid").toUInt(), 1U);
}

void MetaWidgetTypeChangeTest::whatNoPassWorksOutIsKeptToo()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(
        1, QStringLiteral("<gid>4096</gid><transparency>0.5</transparency><begin>3000</begin>"
                          "<end>8000</end><starttype>7</starttype><endtype>9</endtype>")));
    choose(0, QStringLiteral("Cross Fade"), QString());
    QTRY_COMPARE(type(1), QStringLiteral("Cross Fade"));
    const Effect& e = *m_stage.effect(1);
    QCOMPARE(e.transparency(), 0.5);
    QCOMPARE(e.begin(), 3000U);
    QCOMPARE(e.end(), 8000U);
    QCOMPARE(e.startType(), 7);
    QCOMPARE(e.endType(), 9);
    QVERIFY(e.compiled());
    QCOMPARE(m_stage.root->end(), 8000U);
}

void MetaWidgetTypeChangeTest::theOldEffectGoesAndNobodyPointsAtIt()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2, EditorStage::startsAt(1)));
    m_stage.select(1);
    const QPointer<Effect> old(m_stage.effect(1));
    choose(0, QStringLiteral("Streak"), QString());
    QTRY_VERIFY(old.isNull());
    m_stage.select(1);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("E1"));
    QVERIFY(m_stage.start()->linkedButton()->isChecked()); // the number stayed
    m_stage.widget->handleStartLinkEffectActivated(0);
    emit m_stage.root->internalUpdateLightsComplete();
    QVERIFY(m_stage.typeInto(0, MetaWidget::NameColumn, QStringLiteral("Dusk")));
    QCOMPARE(m_stage.effect(1)->name(), QStringLiteral("Dusk"));
}

void MetaWidgetTypeChangeTest::theShowFollowsTheNewEffectsCycle()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<endtype>2</endtype>")));
    choose(0, QStringLiteral("Sweep"), QString());
    QTRY_COMPARE(type(1), QStringLiteral("Sweep"));
    QSignalSpy passes(m_stage.root.get(), &MetaEffect::updateEffectTimesComplete);
    emit m_stage.effect(1)->cycleTimeChanged(5);
    QCOMPARE(passes.count(), 1);
}

void MetaWidgetTypeChangeTest::theSameTypeIsNoChange()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.root->setActive(true);
    const Effect* const before = m_stage.effect(1);
    bool asked = false;
    whenDialogOpens<QMessageBox>([&asked](QMessageBox* question) {
        asked = true; // ahead of the comparison
        const QList<QAbstractButton*> buttons = question->buttons();
        for (QAbstractButton* const button : buttons) {
            if (plain(button->text()) == QLatin1String("Yes")) {
                button->click();
            }
        }
    });
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Fixed Color"));
    QVERIFY(asked);
    QCOMPARE(m_stage.effect(1), before);
    QVERIFY(!m_stage.widget->isModified());
    QVERIFY(m_stage.root->active());
}

void MetaWidgetTypeChangeTest::aWhiteTypeLeavesItsBox()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1, QString(), "White Fixed Color"));
    QCOMPARE(m_stage.typeBox(0)->count(), 13);
    choose(0, QStringLiteral("Fixed Color"), QString());
    QTRY_COMPARE(type(1), QStringLiteral("Fixed Color"));
    QCoreApplication::processEvents();
    QCOMPARE(m_stage.typeBox(0)->count(), 12); // and there is no way back
    QCOMPARE(m_stage.typeBox(0)->currentText(), QStringLiteral("Fixed Color"));
    QCOMPARE(m_stage.typeBox(0)->findText(QStringLiteral("White Fixed Color")), -1);
}

void MetaWidgetTypeChangeTest::theCellChangesTheTypeToo()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.item(1, MetaWidget::TypeColumn)->setText(QStringLiteral("Sweep"));
    QCOMPARE(type(2), QStringLiteral("Sweep"));
    QCOMPARE(m_stage.typeBox(1)->currentText(), QStringLiteral("Sweep"));
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetTypeChangeTest::aCellThatIsAnsweredWithNoIsPutBack()
{
    m_stage.open(EditorStage::effectXml(1));
    whenDialogOpens<QMessageBox>([](QMessageBox* question) { question->reject(); });
    m_stage.item(0, MetaWidget::TypeColumn)->setText(QStringLiteral("Sweep"));
    QCOMPARE(type(1), QStringLiteral("Fixed Color"));
    QCOMPARE(m_stage.text(0, MetaWidget::TypeColumn), QStringLiteral("Fixed Color"));
    QCOMPARE(m_stage.typeBox(0)->currentText(), QStringLiteral("Fixed Color"));
    QVERIFY(m_stage.widget->isModified()); // an edited cell counts all the same
}

void MetaWidgetTypeChangeTest::aSortedTableFindsTheRow()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1, QString(), "Sweep") +
                 EditorStage::effectXml(2, QString(), "Fixed Color"));
    m_stage.table()->sortItems(MetaWidget::TypeColumn, Qt::AscendingOrder);
    QCOMPARE(m_stage.text(0, MetaWidget::NameColumn), QStringLiteral("E2"));
    choose(0, QStringLiteral("XYSpiral"), QString());
    QTRY_COMPARE(type(2), QStringLiteral("XYSpiral"));
    QCOMPARE(type(1), QStringLiteral("Sweep"));
    QCOMPARE(m_stage.column(MetaWidget::NameColumn), // sorted anew
             QStringList({QStringLiteral("E1"), QStringLiteral("E2")}));
    QCOMPARE(m_stage.selectedRows(), QList<int>{1});
    QCOMPARE(m_stage.typeBox(1)->currentText(), QStringLiteral("XYSpiral"));
}

void MetaWidgetTypeChangeTest::aTypeThatCannotBeMadeLeavesTheShowInactive()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.select(0);
    m_stage.root->setActive(true);
    QTest::ignoreMessage(QtDebugMsg, "Unsupported Effect Type: Blizzard");
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Blizzard"));
    QVERIFY(!m_stage.root->active());
    QVERIFY(m_stage.effect(1) == nullptr);
    // The row that is left over is of nothing, and harmless.
    emit m_stage.root->internalUpdateLightsComplete();
    m_stage.root->updateEffectTimes();
    m_stage.select(1);
    m_stage.select(0);
    m_stage.widget->handleValueChanged(0, MetaWidget::NameColumn);
    m_stage.clickCell(0, MetaWidget::GroupColumn);
    m_stage.widget->handleCopyEffect();
    m_stage.widget->handleDeleteEffect();
    QCOMPARE(m_stage.root->effectList().size(), 1);
    QVERIFY(!m_stage.start()->isEnabled());
    // The next change works, and brings the show back.
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(2), QStringLiteral("Sweep"));
    QCOMPARE(type(2), QStringLiteral("Sweep"));
    QVERIFY(m_stage.root->active());
}

void MetaWidgetTypeChangeTest::theRootIsInactiveWhileItIsChanged()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1));
    m_stage.root->setActive(true);
    bool wasActive = true;
    connect(m_stage.effect(1), &QObject::destroyed, this,
            [&] { wasActive = m_stage.root->active(); });
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Sweep"));
    QVERIFY(!wasActive);
    QVERIFY(m_stage.root->active());
}

void MetaWidgetTypeChangeTest::anEffectThatGoesUnderTheQuestion()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    whenDialogOpens<QMessageBox>([this](QMessageBox* question) {
        Effect* const gone = m_stage.effect(1);
        m_stage.root->removeEffect(gone);
        delete gone;
        question->buttons().first()->click();
    });
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Sweep"));
    QCOMPARE(m_stage.root->effectList().size(), 1);
    // And the guard is lifted.
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(2), QStringLiteral("Sweep"));
    QCOMPARE(type(2), QStringLiteral("Sweep"));
}

void MetaWidgetTypeChangeTest::aShowThatGoesUnderTheQuestion()
{
    m_stage.open(EditorStage::effectXml(1));
    whenDialogOpens<QMessageBox>([this](QMessageBox* question) {
        Root other = m_stage.parse(EditorStage::effectXml(5));
        m_stage.widget->setMetaEffect(other.get());
        m_stage.widget->rebuildTable();
        m_stage.root = std::move(other);
        question->buttons().first()->click();
    });
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Sweep"));
    QCOMPARE(type(5), QStringLiteral("Fixed Color"));
}

void MetaWidgetTypeChangeTest::theWheelChangesNothing()
{
    store().setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1));
    QComboBox* const box = m_stage.typeBox(0);
    QWheelEvent turn(QPointF(5, 5), box->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -240),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &turn);
    QCOMPARE(type(1), QStringLiteral("Fixed Color"));
}

void MetaWidgetTypeChangeTest::theBoxBesideNewChangesNothing()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.select(0);
    auto* box = m_stage.widget->findChild<QComboBox*>(QStringLiteral("effectTypeBox"));
    box->setFocus();
    QTest::keyClick(box, Qt::Key_End);
    QCOMPARE(type(1), QStringLiteral("Fixed Color"));
    m_stage.widget->handleEffectTypeComboBoxChanged(QStringLiteral("Sweep"));
    QCOMPARE(type(1), QStringLiteral("Fixed Color"));
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetTypeChangeTest::noEffectIsNoChange()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.widget->handleEffectTypeChanged(nullptr, QStringLiteral("Sweep"));
    m_stage.widget->handleTableEffectTypeComboBoxChanged(QStringLiteral("Sweep")); // of no row
    QCOMPARE(type(1), QStringLiteral("Fixed Color"));
}

QTEST_MAIN(MetaWidgetTypeChangeTest)
#include "MetaWidgetTypeChangeTest.moc"
