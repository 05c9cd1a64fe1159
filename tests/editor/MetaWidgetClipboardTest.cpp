#include "tests/editor/EditorStage.h"

#include <QAction>
#include <QElapsedTimer>
#include <QMenu>
#include <QMimeData>

/// Copying, cutting, pasting, deleting, and the menu that offers them.
class MetaWidgetClipboardTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { setClipboard(QStringLiteral("nothing of ours")); }

    void copyWritesTheSelectedEffect();
    void copyWithoutASelectionClearsTheClipboard();
    void cutWritesAndDeletes();
    void cutMarksWithoutASelectionToo();
    void pasteAddsACopy();
    void pasteKeepsGroupAndLinks();
    void pasteIntoAnEmptyShow();
    void pasteRepairsLinksThatLeadNowhere();
    void pasteOfALinkToItsOwnNewNumber();
    void pasteSortsIntoTheTable();
    void pasteTakesANestedTimelineWhole();
    void pasteOffersTheCopyToLinkTo();
    void pasteIgnoresJunk_data();
    void pasteIgnoresJunk();
    void pasteOfAMegabyteOfEffects();
    void pasteWithoutText();
    void deleteRemovesTheSelectedEffect();
    void deleteInASortedTableHitsTheSelectedRow();
    void deleteWithoutASelectionKeepsTheEffects();
    void deleteDropsWhatLinkedToIt();
    void deleteOfARingMember();
    void deleteLeadsBackToTheBeginning_data();
    void deleteLeadsBackToTheBeginning();
    void deleteOfANestedTimelineFreesWhatItHolds();
    void deleteUnderAnOpenEditor();
    void selectAllLeavesTheSelection_data();
    void selectAllLeavesTheSelection();
    void theMenuOffersWhatItShould();
    void theMenuNeedsASelection_data();
    void theMenuNeedsASelection();
    void theMenuActs_data();
    void theMenuActs();

private:
    static void setClipboard(const QString& text) { QGuiApplication::clipboard()->setText(text); }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }
    static QString saved(const Effect* effect)
    {
        QString text;
        QTextStream stream(&text);
        effect->save(stream);
        return text;
    }
    /// Opens the menu over the table and hands it to `look`.
    void openMenu(const std::function<void(QMenu*)>& look) const
    {
        QTimer::singleShot(0, qApp, [look] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            look(menu);
            if (menu != nullptr) {
                menu->close();
            }
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(30, 10),
                                m_stage.table()->viewport()->mapToGlobal(QPoint(30, 10)));
        QApplication::sendEvent(m_stage.table()->viewport(), &event);
    }

    EditorStage m_stage;
};

void MetaWidgetClipboardTest::copyWritesTheSelectedEffect()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2, EditorStage::startsAt(1)));
    m_stage.clickCell(1, MetaWidget::NameColumn);
    m_stage.widget->handleCopyEffect();
    QCOMPARE(clipboard(), QStringLiteral("<EFFECT-ENTRY>\n") + saved(m_stage.effect(2)));
    QCOMPARE(m_stage.table()->rowCount(), 2);
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetClipboardTest::copyWithoutASelectionClearsTheClipboard()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.widget->handleCopyEffect();
    QCOMPARE(clipboard(), QString());
}

void MetaWidgetClipboardTest::cutWritesAndDeletes()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2) + EditorStage::effectXml(3));
    m_stage.clickCell(1, MetaWidget::NameColumn);
    const QString expected = QStringLiteral("<EFFECT-ENTRY>\n") + saved(m_stage.effect(2));
    const QPointer<Effect> cut(m_stage.effect(2));
    m_stage.widget->handleCutEffect();
    QCOMPARE(clipboard(), expected);
    QVERIFY(cut.isNull());
    QVERIFY(m_stage.effect(2) == nullptr);
    QCOMPARE(m_stage.column(MetaWidget::NameColumn),
             QStringList({QStringLiteral("E1"), QStringLiteral("E3")}));
    QVERIFY(m_stage.widget->isModified());
    QVERIFY(m_stage.table()->isSortingEnabled());
}

void MetaWidgetClipboardTest::cutMarksWithoutASelectionToo()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.widget->handleCutEffect();
    QCOMPARE(m_stage.table()->rowCount(), 1);
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetClipboardTest::pasteAddsACopy()
{
    m_stage.open(EditorStage::effectXml(3,
                                        QStringLiteral("<priority>4</priority>"
                                                       "<endfixedtime>900</endfixedtime>"),
                                        "Sweep"));
    m_stage.clickCell(0, MetaWidget::NameColumn);
    m_stage.widget->handleCopyEffect();
    m_stage.widget->handlePasteEffect();
    m_stage.widget->handlePasteEffect();
    QCOMPARE(m_stage.column(MetaWidget::NameColumn),
             QStringList({QStringLiteral("E3"), QStringLiteral("Copy of E3"),
                          QStringLiteral("Copy of E3")}));
    QCOMPARE(m_stage.column(MetaWidget::EidColumn),
             QStringList({QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5")}));
    QCOMPARE(m_stage.effect(4)->type(), QStringLiteral("Sweep"));
    QCOMPARE(m_stage.effect(4)->priority(), 4U);
    QCOMPARE(m_stage.effect(4)->end(), 900U);
    QCOMPARE(m_stage.typeBox(1)->currentText(), QStringLiteral("Sweep"));
    QVERIFY(!m_stage.widget->isModified()); // pasting doesn't count
    QCOMPARE(m_stage.selectedRows(), QList<int>{0});
}

void MetaWidgetClipboardTest::pasteKeepsGroupAndLinks()
{
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<endfixedtime>2000</endfixedtime>")));
    setClipboard(QStringLiteral("<EFFECT-ENTRY>\n") +
                 EditorStage::effectXml(9, QStringLiteral("<gid>4097</gid>"
                                                          "<startlinkstart>0</startlinkstart>"
                                                          "<startlinkoffset>500</startlinkoffset>"
                                                          "<endfixedtime>100</endfixedtime>") +
                                               EditorStage::startsAt(1)));
    m_stage.widget->handlePasteEffect();
    const Effect& e = *m_stage.effect(2);
    QCOMPARE(e.gid(), EditorStage::kSteps);
    QCOMPARE(m_stage.text(1, MetaWidget::GroupColumn), QStringLiteral("Steps"));
    QCOMPARE(e.startType(), static_cast<int>(Effect::StartLinked));
    QCOMPARE(e.begin(), 2500U); // still behind what its source followed
    QCOMPARE(m_stage.root->end(), 2600U);
    QCOMPARE(m_stage.value(1, MetaWidget::StartColumn), QVariant(2.5));
}

void MetaWidgetClipboardTest::pasteIntoAnEmptyShow()
{
    m_stage.open();
    setClipboard(QStringLiteral("<EFFECT-ENTRY>\n") +
                 EditorStage::effectXml(70, EditorStage::startsAt(60) + EditorStage::endsAt(61)));
    m_stage.widget->handlePasteEffect();
    QCOMPARE(m_stage.root->effectList().size(), 1);
    const Effect& e = *m_stage.effect(1);
    QCOMPARE(e.startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(e.endType(), static_cast<int>(Effect::EndFixed));
    QCOMPARE(e.begin(), 0U);
    QCOMPARE(e.end(), 0U);
}

void MetaWidgetClipboardTest::pasteRepairsLinksThatLeadNowhere()
{
    m_stage.open(EditorStage::effectXml(1));
    setClipboard(EditorStage::effectXml(
        9, EditorStage::startsAt(55) + QStringLiteral("<startfixedtime>800</startfixedtime>")));
    m_stage.widget->handlePasteEffect();
    QCOMPARE(m_stage.effect(2)->startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(m_stage.effect(2)->startFixedTime(), 0U);
}

void MetaWidgetClipboardTest::pasteOfALinkToItsOwnNewNumber()
{
    // As number 2, each of these two follows itself or the other.
    m_stage.open(EditorStage::effectXml(1));
    setClipboard(QStringLiteral("<EFFECT-ENTRY>") +
                 EditorStage::effectXml(8, EditorStage::startsAt(2) + EditorStage::endsAt(3)) +
                 QStringLiteral("<EFFECT-ENTRY>") +
                 EditorStage::effectXml(9, EditorStage::startsAt(2) + EditorStage::endsAt(2)));
    m_stage.widget->handlePasteEffect();
    QCOMPARE(m_stage.root->effectList().size(), 3);
    for (int row = 0; row < 3; ++row) {
        m_stage.select(row);
        QVERIFY(m_stage.start()->isEnabled());
    }
    m_stage.root->updateEffectTimes(); // ends
}

void MetaWidgetClipboardTest::pasteSortsIntoTheTable()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.table()->sortItems(MetaWidget::NameColumn, Qt::DescendingOrder);
    m_stage.clickCell(0, MetaWidget::NameColumn);
    m_stage.widget->handleCopyEffect();
    m_stage.widget->handlePasteEffect();
    QCOMPARE(m_stage.table()->rowCount(), 3);
    for (int row = 0; row < 3; ++row) { // whatever its place, a row is of one effect
        const Effect* const e = m_stage.effect(m_stage.text(row, MetaWidget::EidColumn).toUInt());
        QVERIFY(e != nullptr);
        QCOMPARE(m_stage.text(row, MetaWidget::NameColumn), e->name());
        QCOMPARE(m_stage.typeBox(row)->property("eid").toUInt(), e->eid());
    }
    QVERIFY(m_stage.table()->isSortingEnabled());
}

void MetaWidgetClipboardTest::pasteTakesANestedTimelineWhole()
{
    m_stage.open();
    setClipboard(EditorStage::effectXml(4, EditorStage::effectXml(5) + EditorStage::effectXml(6),
                                        "Meta Effect"));
    m_stage.widget->handlePasteEffect();
    QCOMPARE(m_stage.table()->rowCount(), 1);
    const auto* const timeline = qobject_cast<MetaEffect*>(m_stage.effect(1));
    QVERIFY(timeline != nullptr);
    QCOMPARE(timeline->effectList().size(), 2);
    QCOMPARE(m_stage.text(0, MetaWidget::NameColumn), QStringLiteral("Copy of E4"));
    QCOMPARE(m_stage.typeBox(0)->currentIndex(), -1);
}

void MetaWidgetClipboardTest::pasteOffersTheCopyToLinkTo()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.clickCell(0, MetaWidget::NameColumn);
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("None Available"));
    m_stage.widget->handleCopyEffect();
    m_stage.widget->handlePasteEffect();
    QCOMPARE(EditorStage::targets(m_stage.start()), QStringLiteral("Copy of E1"));
    QVERIFY(m_stage.start()->linkedButton()->isEnabled());
}

void MetaWidgetClipboardTest::pasteIgnoresJunk_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("words") << QStringLiteral("a shopping list");
    QTest::newRow("half an element") << QStringLiteral("<EFFECT-ENTRY>\n<effect><type>Sweep</ty");
    QTest::newRow("a show file's beginning") << QStringLiteral("<?xml version=\"1.0\"?><effect>");
    QTest::newRow("an unknown type")
        << QStringLiteral("<effect><type>Blizzard</type><name>x</name></effect>");
    QTest::newRow("a megabyte") << QStringLiteral("<EFFECT-ENTRY>junk").repeated(60000);
    QTest::newRow("deep") << QStringLiteral("<effect>").repeated(100000);
}

void MetaWidgetClipboardTest::pasteIgnoresJunk()
{
    QFETCH(const QString, text);
    m_stage.open(EditorStage::effectXml(1));
    setClipboard(text);
    m_stage.widget->handlePasteEffect();
    QCOMPARE(m_stage.column(MetaWidget::NameColumn), QStringList(QStringLiteral("E1")));
    QVERIFY(!m_stage.widget->isModified());
    QVERIFY(m_stage.table()->isSortingEnabled());
}

void MetaWidgetClipboardTest::pasteOfAMegabyteOfEffects()
{
    const QString one = QStringLiteral("<EFFECT-ENTRY>") +
                        EditorStage::effectXml(1, EditorStage::startsAt(1), "Sweep");
    const int count = (1 << 20) / one.size();
    m_stage.open(EditorStage::effectXml(1));
    setClipboard(one.repeated(count));
    QElapsedTimer clock;
    clock.start();
    m_stage.widget->handlePasteEffect();
    const qint64 ms = clock.elapsed();
    QCOMPARE(m_stage.table()->rowCount(), count + 1);
    QCOMPARE(m_stage.root->effectList().last()->eid(), static_cast<quint32>(count + 1));
    qInfo("%d effects pasted in %lld ms", count, static_cast<long long>(ms));
    QVERIFY2(ms < 30000, qPrintable(QString::number(ms))); // far above what it takes
    m_stage.open(); // a table of this size takes its time to go, outside of the clock
}

void MetaWidgetClipboardTest::pasteWithoutText()
{
    m_stage.open(EditorStage::effectXml(1));
    QGuiApplication::clipboard()->clear();
    m_stage.widget->handlePasteEffect();
    auto* picture = new QMimeData;
    picture->setImageData(QImage(4, 4, QImage::Format_RGB32));
    QGuiApplication::clipboard()->setMimeData(picture);
    m_stage.widget->handlePasteEffect();
    QCOMPARE(m_stage.table()->rowCount(), 1);
}

void MetaWidgetClipboardTest::deleteRemovesTheSelectedEffect()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.clickCell(0, MetaWidget::NameColumn);
    const QPointer<Effect> gone(m_stage.effect(1));
    EditorStage::click(m_stage.button("deleteEffectsButton"));
    QVERIFY(gone.isNull());
    QCOMPARE(m_stage.root->effectList().size(), 1);
    QCOMPARE(m_stage.column(MetaWidget::NameColumn), QStringList(QStringLiteral("E2")));
    QVERIFY(m_stage.widget->isModified());
    QVERIFY(m_stage.root->compiled());
    QCOMPARE(clipboard(), QStringLiteral("nothing of ours"));
    // And on, down to nothing.
    m_stage.clickCell(0, MetaWidget::NameColumn);
    EditorStage::click(m_stage.button("deleteEffectsButton"));
    QCOMPARE(m_stage.table()->rowCount(), 0);
    QVERIFY(!m_stage.start()->isEnabled());
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Effect Parameters"));
}

void MetaWidgetClipboardTest::deleteInASortedTableHitsTheSelectedRow()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2) + EditorStage::effectXml(3));
    m_stage.table()->sortItems(MetaWidget::NameColumn, Qt::DescendingOrder);
    m_stage.clickCell(0, MetaWidget::NameColumn);
    m_stage.widget->handleDeleteEffect();
    QVERIFY(m_stage.effect(3) == nullptr);
    QCOMPARE(m_stage.column(MetaWidget::NameColumn),
             QStringList({QStringLiteral("E2"), QStringLiteral("E1")}));
}

void MetaWidgetClipboardTest::deleteWithoutASelectionKeepsTheEffects()
{
    m_stage.open(EditorStage::effectXml(1));
    EditorStage::click(m_stage.button("deleteEffectsButton"));
    QCOMPARE(m_stage.table()->rowCount(), 1);
    QVERIFY(m_stage.widget->isModified()); // all the same
}

void MetaWidgetClipboardTest::deleteDropsWhatLinkedToIt()
{
    m_stage.open(
        EditorStage::effectXml(1, QStringLiteral("<startfixedtime>3000</startfixedtime>")) +
        EditorStage::effectXml(2, EditorStage::startsAt(1) + EditorStage::endsAt(1)));
    m_stage.root->updateEffectTimes();
    QCOMPARE(m_stage.effect(2)->begin(), 3000U);
    m_stage.clickCell(0, MetaWidget::NameColumn);
    m_stage.widget->handleDeleteEffect();
    m_stage.root->updateEffectTimes();
    QCOMPARE(m_stage.effect(2)->startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(m_stage.effect(2)->endType(), static_cast<int>(Effect::EndFixed));
    QCOMPARE(m_stage.effect(2)->begin(), 0U);
    QCOMPARE(m_stage.value(0, MetaWidget::StartColumn), QVariant(0.0));
}

void MetaWidgetClipboardTest::deleteOfARingMember()
{
    m_stage.open(EditorStage::effectXml(1, EditorStage::startsAt(2)) +
                 EditorStage::effectXml(2, EditorStage::startsAt(3)) +
                 EditorStage::effectXml(3, EditorStage::startsAt(1)));
    m_stage.clickCell(1, MetaWidget::NameColumn);
    m_stage.widget->handleDeleteEffect();
    m_stage.root->updateEffectTimes();
    QCOMPARE(m_stage.effect(1)->startType(), static_cast<int>(Effect::StartFixed));
    QCOMPARE(m_stage.effect(3)->startType(), static_cast<int>(Effect::StartLinked));
}

void MetaWidgetClipboardTest::deleteLeadsBackToTheBeginning_data()
{
    QTest::addColumn<bool>("cuts");
    QTest::newRow("delete") << false;
    QTest::newRow("cut") << true;
}

void MetaWidgetClipboardTest::deleteLeadsBackToTheBeginning()
{
    QFETCH(const bool, cuts);
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<endfixedtime>9000</endfixedtime>")) +
                 EditorStage::effectXml(2, QStringLiteral("<endfixedtime>9000</endfixedtime>")));
    m_stage.root->updateEffectTimes();
    m_stage.root->setActive(true);
    m_stage.root->setStartMs(1000000);
    m_stage.root->tick(qint64(1003000), 1);
    m_stage.root->tick(qint64(1003025), 2);
    QCOMPARE(m_stage.root->elapsed(), qint64(3025));
    m_stage.select(0);
    if (cuts) {
        m_stage.widget->handleCutEffect();
    } else {
        m_stage.widget->handleDeleteEffect();
    }
    QCOMPARE(m_stage.root->startMs(), qint64(1003025)); // the last frame, of 0 s now
}

void MetaWidgetClipboardTest::deleteOfANestedTimelineFreesWhatItHolds()
{
    m_stage.open(EditorStage::effectXml(1, EditorStage::effectXml(2), "Meta Effect"));
    const QPointer<Effect> inner(
        qobject_cast<MetaEffect*>(m_stage.effect(1))->effectList().first());
    m_stage.clickCell(0, MetaWidget::NameColumn);
    m_stage.widget->handleDeleteEffect();
    QVERIFY(inner.isNull());
}

void MetaWidgetClipboardTest::deleteUnderAnOpenEditor()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    QLineEdit* const editor = m_stage.openCell(0, MetaWidget::StartColumn);
    QVERIFY(editor != nullptr);
    QTest::keyClicks(editor, QStringLiteral("5"));
    m_stage.widget->handleDeleteEffect();
    QCoreApplication::processEvents();
    QCOMPARE(m_stage.column(MetaWidget::NameColumn), QStringList(QStringLiteral("E2")));
    QCOMPARE(m_stage.effect(2)->startFixedTime(), 0U);
}

void MetaWidgetClipboardTest::selectAllLeavesTheSelection_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("none") << -1;
    QTest::newRow("a row") << 1;
}

void MetaWidgetClipboardTest::selectAllLeavesTheSelection()
{
    QFETCH(const int, row);
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    if (row >= 0) {
        m_stage.clickCell(row, MetaWidget::NameColumn);
    }
    const QList<int> before = m_stage.selectedRows();
    m_stage.widget->handleSelectAll();
    QTest::keyClick(m_stage.table(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(m_stage.selectedRows(), before);
}

void MetaWidgetClipboardTest::theMenuOffersWhatItShould()
{
    m_stage.open(EditorStage::effectXml(1));
    QStringList texts;
    openMenu([&](QMenu* menu) {
        QVERIFY(menu != nullptr);
        QCOMPARE(menu->pos(), m_stage.table()->viewport()->mapToGlobal(QPoint(30, 10)));
        const QList<QAction*> actions = menu->actions();
        for (const QAction* const action : actions) {
            texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        }
    });
    QCOMPARE(texts, QStringList({QStringLiteral("Cut Selected Effects"),
                                 QStringLiteral("Copy Selected Effects"),
                                 QStringLiteral("Paste Selected Effects"),
                                 QStringLiteral("Delete Selected Effects"), QStringLiteral("-"),
                                 QStringLiteral("New Effect"), QStringLiteral("Select All"),
                                 QStringLiteral("Change Group..."), QStringLiteral("Rename")}));
}

void MetaWidgetClipboardTest::theMenuNeedsASelection_data()
{
    QTest::addColumn<bool>("isSelected");
    QTest::newRow("selected") << true;
    QTest::newRow("nothing selected") << false;
}

void MetaWidgetClipboardTest::theMenuNeedsASelection()
{
    QFETCH(const bool, isSelected);
    m_stage.open(EditorStage::effectXml(1));
    if (isSelected) {
        m_stage.clickCell(0, MetaWidget::NameColumn);
    }
    bool looked = false;
    openMenu([&](QMenu* menu) {
        QVERIFY(menu != nullptr);
        const QList<QAction*> actions = menu->actions();
        for (int i = 0; i < 4; ++i) { // paste too
            QCOMPARE(actions.at(i)->isEnabled(), isSelected);
        }
        QVERIFY(actions.at(5)->isEnabled());
        QVERIFY(actions.at(6)->isEnabled());
        QCOMPARE(actions.at(7)->isEnabled(), isSelected);
        QCOMPARE(actions.at(8)->isEnabled(), isSelected);
        looked = true;
    });
    QVERIFY(looked);
}

void MetaWidgetClipboardTest::theMenuActs_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("names"); // of the rows after it
    QTest::newRow("cut") << QStringLiteral("Cut Selected Effects") << QStringLiteral("E2");
    QTest::newRow("copy") << QStringLiteral("Copy Selected Effects") << QStringLiteral("E1 E2");
    QTest::newRow("paste") << QStringLiteral("Paste Selected Effects")
                           << QStringLiteral("E1 E2 Copy of E9");
    QTest::newRow("delete") << QStringLiteral("Delete Selected Effects") << QStringLiteral("E2");
    QTest::newRow("new") << QStringLiteral("New Effect") << QStringLiteral("E1 E2 Effect 3");
    QTest::newRow("select all") << QStringLiteral("Select All") << QStringLiteral("E1 E2");
    QTest::newRow("group") << QStringLiteral("Change Group...") << QStringLiteral("E1 E2");
    QTest::newRow("rename") << QStringLiteral("Rename") << QStringLiteral("Dusk E2");
}

void MetaWidgetClipboardTest::theMenuActs()
{
    QFETCH(const QString, entry);
    QFETCH(const QString, names);
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    setClipboard(EditorStage::effectXml(9));
    m_stage.clickCell(0, MetaWidget::NameColumn);
    bool picked = false;
    if (entry == QLatin1String("New Effect") || entry == QLatin1String("Change Group...")) {
        whenDialogOpens<QDialog>([&picked](QDialog* dialog) {
            picked = dialog->windowTitle() == QLatin1String("Group Picker");
            dialog->findChild<QPushButton*>(QStringLiteral("m_okButton"))->click();
        });
    } else {
        picked = true;
    }
    const QString before = clipboard();
    openMenu([&entry](QMenu* menu) {
        QVERIFY(menu != nullptr);
        const QList<QAction*> actions = menu->actions();
        for (QAction* const action : actions) {
            if (action->text() == entry) {
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Return);
                return;
            }
        }
        QFAIL("no such entry");
    });
    if (entry == QLatin1String("Rename")) {
        QApplication::setActiveWindow(m_stage.widget.get());
        QTRY_VERIFY(m_stage.table()->viewport()->findChild<QLineEdit*>() != nullptr);
        auto* const editor = m_stage.table()->viewport()->findChild<QLineEdit*>();
        QTest::keyClicks(editor, QStringLiteral("Dusk"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    QVERIFY(picked);
    QCOMPARE(m_stage.column(MetaWidget::NameColumn).join(QLatin1Char(' ')), names);
    QCOMPARE(clipboard() != before,
             entry.startsWith(QLatin1String("Cut")) || entry.startsWith(QLatin1String("Copy")));
    QCOMPARE(m_stage.effect(1) != nullptr && m_stage.effect(1)->gid() == EditorStage::kSteps,
             entry == QLatin1String("Change Group..."));
}

QTEST_MAIN(MetaWidgetClipboardTest)
#include "MetaWidgetClipboardTest.moc"
