#include "editor/FlashEffectWidget.h"
#include "editor/SweepWidget.h"
#include "effects/SweepEffect.h"
#include "tests/editor/EditorStage.h"

#include <QFrame>
#include <QLabel>
#include <QSignalSpy>

/// What the editor shows of the selected effect.
class MetaWidgetFormsTest : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();

    void theFormIsThatOfTheSelectedEffect();
    void anotherSelectionReplacesTheForm();
    void theBoxAndItsFrameFitTheForm();
    void theRoomKeepsTheLargestForm();
    void aTimelineLeavesTheFormerForm();
    void noSelectionKeepsTheFormAndClearsTheTitle();
    void theTitleShowsEveryCharacter();
    void theCursorKeysSelect();
    void aFormGoesWithItsEffect();
    void aFormGoesWithItsShow();
    void aTypeChangeBringsAnotherForm();
    void aFormMayBeReplacedInTheMiddleOfItsWork();
    void aFormReplacedWhileItsFramesLoadStaysUntilThen();
    void aReplacedFormThatLoadsFramesStaysUntilThen();
    void loadingPicturesPausesTheEngine();
    void aMapThatIsLoadedLeavesTheForm();
    void severalSelectedRowsCountAsNone();
    void aRebuiltTableSelectsNothing();
    void aRebuiltTableTakesNoTypedText();
    void aRebuiltTableOffersEachRowItsTypes();
    void theDemoMakesTheForm();
    void theDemoAsksForTheColor();

private:
    static QString sweepXml(int eid) { return EditorStage::effectXml(eid, QString(), "Sweep"); }
    static int formCount();
    EffectForm* form() const { return m_stage.widget->findChild<EffectForm*>(); }
    bool edits(quint32 eid) const;

    EditorStage m_stage;
};

int MetaWidgetFormsTest::formCount()
{
    int count = 0;
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget* const widget : widgets) {
        count += qobject_cast<const EffectForm*>(widget) != nullptr ? 1 : 0;
    }
    return count;
}

/// Whether the form is of the sweep with this number, by trying it.
bool MetaWidgetFormsTest::edits(quint32 eid) const
{
    auto* const shown = qobject_cast<SweepWidget*>(form());
    const auto* const sweep = dynamic_cast<SweepEffect*>(m_stage.effect(eid));
    if (shown == nullptr || sweep == nullptr) {
        return false;
    }
    const bool before = sweep->reverse();
    shown->handleReverseChanged(!before);
    return sweep->reverse() != before;
}

void MetaWidgetFormsTest::cleanup()
{
    m_stage.widget.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(formCount(), 0);
}

void MetaWidgetFormsTest::theFormIsThatOfTheSelectedEffect()
{
    m_stage.open(sweepXml(1) + sweepXml(2));
    QVERIFY(form() == nullptr);
    m_stage.clickCell(1, MetaWidget::PriorityColumn);
    QVERIFY(edits(2));
    QVERIFY(form()->isVisible());
    QVERIFY(m_stage.parameterBox()->isAncestorOf(form()));
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("E2 Parameters"));
}

void MetaWidgetFormsTest::anotherSelectionReplacesTheForm()
{
    m_stage.open(EditorStage::effectXml(1) + sweepXml(2));
    m_stage.clickCell(0, MetaWidget::PriorityColumn);
    const QPointer<EffectForm> first(form());
    m_stage.clickCell(1, MetaWidget::PriorityColumn);
    QVERIFY(edits(2));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first.isNull());
    QCOMPARE(formCount(), 1);
}

void MetaWidgetFormsTest::theBoxAndItsFrameFitTheForm()
{
    m_stage.open(sweepXml(1));
    m_stage.select(0);
    const auto* frame = m_stage.widget->findChild<QFrame*>(QStringLiteral("parameterFrame"));
    const QSize needed = form()->minimumSize().expandedTo(form()->sizeHint());
    QVERIFY(!needed.isEmpty());
    QCOMPARE(frame->minimumSize(), needed);
    QCOMPARE(m_stage.parameterBox()->minimumSize(), needed + QSize(20, 20));
    QVERIFY(form()->width() >= needed.width());
    QVERIFY(form()->height() >= needed.height());
}

void MetaWidgetFormsTest::theRoomKeepsTheLargestForm()
{
    m_stage.open(EditorStage::effectXml(1, QString(), "Image Scroll") + EditorStage::effectXml(2));
    m_stage.select(0);
    QCoreApplication::processEvents();
    const QRect box = m_stage.parameterBox()->geometry();
    const QSize large = form()->sizeHint();
    m_stage.select(1);
    QCoreApplication::processEvents();
    QVERIFY(form()->sizeHint().height() < large.height());
    QCOMPARE(m_stage.parameterBox()->geometry(), box); // nothing jumps
}

void MetaWidgetFormsTest::aTimelineLeavesTheFormerForm()
{
    m_stage.open(sweepXml(1) + EditorStage::effectXml(2, QString(), "Meta Effect"));
    m_stage.select(0);
    const EffectForm* const former = form();
    m_stage.select(1);
    QCOMPARE(form(), former);
    QVERIFY(edits(1));
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("E2 Parameters"));
    QVERIFY(m_stage.start()->isEnabled());
}

void MetaWidgetFormsTest::noSelectionKeepsTheFormAndClearsTheTitle()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.select(0);
    m_stage.table()->clearSelection();
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Effect Parameters"));
    QVERIFY(!m_stage.start()->isEnabled());
    QVERIFY(!m_stage.end()->isEnabled());
}

void MetaWidgetFormsTest::theTitleShowsEveryCharacter()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.effect(1)->setName(QStringLiteral("Dusk & Dawn"));
    m_stage.widget->rebuildTable();
    m_stage.select(0);
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Dusk && Dawn Parameters"));
}

void MetaWidgetFormsTest::theCursorKeysSelect()
{
    m_stage.open(sweepXml(1) + sweepXml(2) + sweepXml(3));
    m_stage.table()->setFocus();
    m_stage.select(0); // by its hidden column, as a new effect is
    QTest::keyClick(m_stage.table(), Qt::Key_Down);
    QCOMPARE(m_stage.selectedRows(), QList<int>{1});
    QVERIFY(edits(2));
    QTest::keyClick(m_stage.table(), Qt::Key_Down);
    QVERIFY(edits(3));
    QTest::keyClick(m_stage.table(), Qt::Key_Up);
    QVERIFY(edits(2));
}

void MetaWidgetFormsTest::aFormGoesWithItsEffect()
{
    m_stage.open(sweepXml(1) + sweepXml(2));
    m_stage.select(0);
    m_stage.widget->handleDeleteEffect();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(m_stage.effect(1) == nullptr);
    QVERIFY(form() == nullptr || edits(2)); // that of what is selected now, if anything is
}

void MetaWidgetFormsTest::aFormGoesWithItsShow()
{
    m_stage.open(sweepXml(1));
    m_stage.select(0);
    Root other = m_stage.parse(sweepXml(5));
    m_stage.widget->setMetaEffect(other.get());
    m_stage.widget->rebuildTable();
    m_stage.root = std::move(other);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(formCount(), 0);
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Effect Parameters"));
    m_stage.select(0);
    QVERIFY(edits(5));
}

void MetaWidgetFormsTest::aTypeChangeBringsAnotherForm()
{
    QSettings(QStringLiteral("Halden"), QStringLiteral("Pageant Forge"))
        .setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1));
    m_stage.select(0);
    const QPointer<EffectForm> first(form());
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Sweep"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first.isNull());
    QVERIFY(edits(1));
}

void MetaWidgetFormsTest::aFormMayBeReplacedInTheMiddleOfItsWork()
{
    m_stage.open(EditorStage::effectXml(1, QString(), "Animation") + sweepXml(2));
    m_stage.select(0);
    const QPointer<FlashEffectWidget> first(qobject_cast<FlashEffectWidget*>(form()));
    QVERIFY(!first.isNull());
    connect(first, &FlashEffectWidget::flashEffectPreloadToggled, this,
            [this] { m_stage.select(1); });
    const QSignalSpy pauses(m_stage.widget.get(), &MetaWidget::pauseEffectEngine);
    first->preloadToggled(true);
    QVERIFY(!first.isNull());
    QVERIFY(edits(2));
    QCOMPARE(pauses.count(), 2); // and not left paused
    QCOMPARE(pauses.at(1).at(0).toBool(), false);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first.isNull());
}

void MetaWidgetFormsTest::aFormReplacedWhileItsFramesLoadStaysUntilThen()
{
    m_stage.open(EditorStage::effectXml(1, QString(), "Animation") + sweepXml(2));
    for (const bool begins : {true, false}) {
        m_stage.select(0);
        const QPointer<FlashEffectWidget> film(qobject_cast<FlashEffectWidget*>(form()));
        QVERIFY(!film.isNull());
        if (!begins) {
            film->handleInitializeProgressDialog(3);
        }
        // As what was typed into a cell is taken over.
        QMetaObject::invokeMethod(
            this, [this] { m_stage.select(1); }, Qt::QueuedConnection);
        if (begins) {
            film->handleInitializeProgressDialog(3);
        } else {
            film->handleUpdateProgressDialog(1);
        }
        QVERIFY(edits(2));
        QVERIFY(!film.isNull()); // a line of it may still have to return from its signal
        QVERIFY(!film->isVisible());
        film->handleUpdateProgressDialog(2);
        film->handleUpdateProgressDialog(3);
        QVERIFY(!film.isNull());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(film.isNull());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }
}

void MetaWidgetFormsTest::aReplacedFormThatLoadsFramesStaysUntilThen()
{
    m_stage.open(EditorStage::effectXml(1, QString(), "Animation") + sweepXml(2));
    m_stage.select(0);
    const QPointer<FlashEffectWidget> film(qobject_cast<FlashEffectWidget*>(form()));
    QVERIFY(!film.isNull());
    bool isWhole = false;
    QTimer::singleShot(0, this, [this, &film, &isWhole] {
        // An event within this one replaces the form, as one that takes the keyboard from a cell.
        QMetaObject::invokeMethod(
            this, [this] { m_stage.select(1); }, Qt::QueuedConnection);
        QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
        film->handleInitializeProgressDialog(1);
        isWhole = !film.isNull();
        if (isWhole) {
            film->handleUpdateProgressDialog(1);
            isWhole = !film.isNull();
        }
    });
    QTRY_VERIFY(film.isNull());
    QVERIFY(isWhole);
}

void MetaWidgetFormsTest::loadingPicturesPausesTheEngine()
{
    m_stage.open(EditorStage::effectXml(1, QString(), "Animation"));
    m_stage.select(0);
    QSignalSpy pauses(m_stage.widget.get(), &MetaWidget::pauseEffectEngine);
    auto* const film = qobject_cast<FlashEffectWidget*>(form());
    QVERIFY(film != nullptr);
    film->preloadToggled(true);
    QCOMPARE(pauses.count(), 2);
    QCOMPARE(pauses.at(0).at(0).toBool(), true);
    QCOMPARE(pauses.at(1).at(0).toBool(), false);
}

void MetaWidgetFormsTest::aMapThatIsLoadedLeavesTheForm()
{
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<gid>4096</gid>"), "Sweep"));
    m_stage.select(0);
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("Facade"));
    QVERIFY(m_stage.loadMap(QStringLiteral("<map><version>1</version></map>")));
    m_stage.effect(1)->compile();
    m_stage.widget->rebuildTable();
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("None"));
    m_stage.select(0);
    QVERIFY(edits(1));
    QVERIFY(m_stage.loadMap(EditorStage::mapXml()));
}

void MetaWidgetFormsTest::severalSelectedRowsCountAsNone()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.table()->setSelectionMode(QAbstractItemView::MultiSelection);
    m_stage.table()->selectAll();
    QCOMPARE(m_stage.selectedRows().size(), 0);
    QVERIFY(!m_stage.start()->isEnabled());
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Effect Parameters"));
}

void MetaWidgetFormsTest::aRebuiltTableSelectsNothing()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.select(0);
    m_stage.widget->rebuildTable();
    QCOMPARE(m_stage.selectedRows().size(), 0);
    QVERIFY(!m_stage.start()->isEnabled());
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Effect Parameters"));
}

void MetaWidgetFormsTest::aRebuiltTableTakesNoTypedText()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    QLineEdit* const editor = m_stage.openCell(0, MetaWidget::NameColumn);
    QVERIFY(editor != nullptr);
    QTest::keyClicks(editor, QStringLiteral("Lost"));
    Root other = m_stage.parse(EditorStage::effectXml(5) + EditorStage::effectXml(6));
    m_stage.widget->setMetaEffect(other.get());
    m_stage.widget->rebuildTable();
    m_stage.root = std::move(other);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_stage.column(MetaWidget::NameColumn),
             QStringList({QStringLiteral("E5"), QStringLiteral("E6")}));
    QCOMPARE(m_stage.effect(5)->name(), QStringLiteral("E5"));
    QVERIFY(m_stage.table()->viewport()->findChildren<QLineEdit*>().isEmpty());
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetFormsTest::aRebuiltTableOffersEachRowItsTypes()
{
    m_stage.open(EditorStage::effectXml(1, QString(), "White Fixed Color") +
                 EditorStage::effectXml(2, QString(), "Sweep") +
                 EditorStage::effectXml(3, QString(), "Text"));
    m_stage.table()->sortItems(MetaWidget::NameColumn, Qt::DescendingOrder);
    Root other = m_stage.parse(EditorStage::effectXml(7, QString(), "White Cross Fade") +
                               EditorStage::effectXml(8, QString(), "Streak"));
    m_stage.widget->setMetaEffect(other.get());
    m_stage.widget->rebuildTable();
    m_stage.root = std::move(other);
    QCOMPARE(m_stage.table()->rowCount(), 2);
    QCOMPARE(m_stage.typeBox(0)->currentText(), QStringLiteral("White Cross Fade"));
    QCOMPARE(m_stage.typeBox(0)->count(), 13);
    QCOMPARE(m_stage.typeBox(0)->property("eid").toUInt(), 7U);
    QCOMPARE(m_stage.typeBox(1)->currentText(), QStringLiteral("Streak"));
    QCOMPARE(m_stage.typeBox(1)->count(), 12);
    QCOMPARE(m_stage.typeBox(1)->property("eid").toUInt(), 8U);
    QCOMPARE(m_stage.table()->currentRow(), -1);
}

void MetaWidgetFormsTest::theDemoMakesTheForm()
{
    m_stage.open(sweepXml(1));
    m_stage.widget->demoStart();
    QVERIFY(edits(1)); // one without a colour to choose
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void MetaWidgetFormsTest::theDemoAsksForTheColor()
{
    m_stage.open(EditorStage::effectXml(1));
    QString title;
    whenDialogOpens<QDialog>([&title](QDialog* dialog) { title = dialog->windowTitle(); });
    m_stage.widget->demoStart();
    QCOMPARE(title, QStringLiteral("Select Color"));
}

QTEST_MAIN(MetaWidgetFormsTest)
#include "MetaWidgetFormsTest.moc"
