#include "editor/ParameterForms.h"
#include "tests/editor/EditorStage.h"

#include <QFrame>
#include <QLabel>
#include <QSignalSpy>

namespace {

constexpr int kFixedColor = 0; // its type number

/// A form as the editor sees one: a widget with a size, and news about pictures being loaded.
class PlainForm : public QWidget
{
    Q_OBJECT
public:
    PlainForm(const Effect* effect, const QSize& size, QWidget* parent)
        : QWidget(parent)
        , m_effect(effect)
    {
        setMinimumSize(size);
        ++s_count;
    }
    ~PlainForm() override { --s_count; }

    const Effect* effect() const { return m_effect; }
    static int count() { return s_count; }

signals:
    void flashEffectPreloadToggled(bool on);

private:
    const Effect* m_effect; // not owned
    static int s_count;
};
int PlainForm::s_count = 0;

} // namespace

/// What the editor shows of the selected effect.
class MetaWidgetFormsTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theFormIsThatOfTheSelectedEffect();
    void anotherSelectionReplacesTheForm();
    void theBoxAndItsFrameFitTheForm();
    void theRoomKeepsTheLargestForm();
    void aTimelineLeavesTheFormerForm();
    void anUnknownTypeIsLogged();
    void noSelectionKeepsTheFormAndClearsTheTitle();
    void theTitleShowsEveryCharacter();
    void theCursorKeysSelect();
    void aFormGoesWithItsEffect();
    void aFormGoesWithItsShow();
    void aTypeChangeBringsAnotherForm();
    void aFormMayBeReplacedInTheMiddleOfItsWork();
    void loadingPicturesPausesTheEngine();
    void aMapThatIsLoadedLeavesTheForm();
    void severalSelectedRowsCountAsNone();
    void aRebuiltTableSelectsNothing();
    void aRebuiltTableTakesNoTypedText();
    void aRebuiltTableOffersEachRowItsTypes();
    void theDemoMakesTheForm();

private:
    PlainForm* form() const { return m_stage.widget->findChild<PlainForm*>(); }

    EditorStage m_stage;
    QSize m_size;
};

void MetaWidgetFormsTest::init()
{
    QCOMPARE(EffectFactory::typeNumber(QStringLiteral("Fixed Color")), kFixedColor);
    m_size = QSize(240, 180);
    const FormMaker maker = [this](Effect* effect, MapModel*, QWidget* parent) {
        return new PlainForm(effect, m_size, parent);
    };
    registerParameterForm(kFixedColor, maker);
    registerParameterForm(EffectFactory::typeNumber(QStringLiteral("Sweep")), maker);
}

void MetaWidgetFormsTest::cleanup()
{
    m_stage.widget.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(PlainForm::count(), 0);
}

void MetaWidgetFormsTest::theFormIsThatOfTheSelectedEffect()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    QVERIFY(form() == nullptr);
    m_stage.clickCell(1, MetaWidget::PriorityColumn);
    QVERIFY(form() != nullptr);
    QCOMPARE(form()->effect(), m_stage.effect(2));
    QVERIFY(form()->isVisible());
    QVERIFY(m_stage.parameterBox()->isAncestorOf(form()));
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("E2 Parameters"));
}

void MetaWidgetFormsTest::anotherSelectionReplacesTheForm()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2, QString(), "Sweep"));
    m_stage.clickCell(0, MetaWidget::PriorityColumn);
    const QPointer<PlainForm> first(form());
    m_stage.clickCell(1, MetaWidget::PriorityColumn);
    QCOMPARE(form()->effect(), m_stage.effect(2));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first.isNull());
    QCOMPARE(PlainForm::count(), 1);
}

void MetaWidgetFormsTest::theBoxAndItsFrameFitTheForm()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.select(0);
    const auto* frame = m_stage.widget->findChild<QFrame*>(QStringLiteral("parameterFrame"));
    QCOMPARE(frame->minimumSize(), QSize(240, 180));
    QCOMPARE(m_stage.parameterBox()->minimumSize(), QSize(260, 200));
    QVERIFY(form()->width() >= 240);
}

void MetaWidgetFormsTest::theRoomKeepsTheLargestForm()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2, QString(), "Sweep"));
    m_size = QSize(500, 400);
    m_stage.select(0);
    QCoreApplication::processEvents();
    const QRect box = m_stage.parameterBox()->geometry();
    m_size = QSize(100, 50);
    m_stage.select(1);
    QCoreApplication::processEvents();
    QCOMPARE(m_stage.parameterBox()->geometry(), box); // nothing jumps
}

void MetaWidgetFormsTest::aTimelineLeavesTheFormerForm()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2, QString(), "Meta Effect"));
    m_stage.select(0);
    const PlainForm* const former = form();
    m_stage.select(1);
    QCOMPARE(form(), former);
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("E2 Parameters"));
    QVERIFY(m_stage.start()->isEnabled());
}

void MetaWidgetFormsTest::anUnknownTypeIsLogged()
{
    registerParameterForm(kFixedColor, FormMaker());
    m_stage.open(EditorStage::effectXml(1));
    QTest::ignoreMessage(QtDebugMsg, "Invalid Effect Type: 0");
    m_stage.select(0);
    QVERIFY(form() == nullptr);
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("E1 Parameters"));
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
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2) + EditorStage::effectXml(3));
    m_stage.table()->setFocus();
    m_stage.select(0); // by its hidden column, as a new effect is
    QTest::keyClick(m_stage.table(), Qt::Key_Down);
    QCOMPARE(m_stage.selectedRows(), QList<int>{1});
    QCOMPARE(form()->effect(), m_stage.effect(2));
    QTest::keyClick(m_stage.table(), Qt::Key_Down);
    QCOMPARE(form()->effect(), m_stage.effect(3));
    QTest::keyClick(m_stage.table(), Qt::Key_Up);
    QCOMPARE(form()->effect(), m_stage.effect(2));
}

void MetaWidgetFormsTest::aFormGoesWithItsEffect()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.select(0);
    m_stage.widget->handleDeleteEffect();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const PlainForm* const next = form(); // that of what is selected now, if anything is
    QVERIFY(next == nullptr || next->effect() == m_stage.effect(2));
}

void MetaWidgetFormsTest::aFormGoesWithItsShow()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.select(0);
    Root other = m_stage.parse(EditorStage::effectXml(5));
    m_stage.widget->setMetaEffect(other.get());
    m_stage.widget->rebuildTable();
    m_stage.root = std::move(other);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(PlainForm::count(), 0);
    QCOMPARE(m_stage.parameterBox()->title(), QStringLiteral("Effect Parameters"));
    m_stage.select(0);
    QCOMPARE(form()->effect(), m_stage.effect(5));
}

void MetaWidgetFormsTest::aTypeChangeBringsAnotherForm()
{
    QSettings(QStringLiteral("Halden"), QStringLiteral("Pageant Forge"))
        .setValue(QStringLiteral("askeffectchange"), false);
    m_stage.open(EditorStage::effectXml(1));
    m_stage.select(0);
    const QPointer<PlainForm> first(form());
    m_stage.widget->handleEffectTypeChanged(m_stage.effect(1), QStringLiteral("Sweep"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first.isNull());
    QCOMPARE(form()->effect(), m_stage.effect(1));
}

void MetaWidgetFormsTest::aFormMayBeReplacedInTheMiddleOfItsWork()
{
    m_stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    m_stage.select(0);
    const QPointer<PlainForm> first(form());
    connect(first, &PlainForm::flashEffectPreloadToggled, this, [this] { m_stage.select(1); });
    emit first->flashEffectPreloadToggled(true); // as from within one of its dialogs
    QVERIFY(!first.isNull());
    QCOMPARE(form()->effect(), m_stage.effect(2));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first.isNull());
}

void MetaWidgetFormsTest::loadingPicturesPausesTheEngine()
{
    m_stage.open(EditorStage::effectXml(1));
    m_stage.select(0);
    QSignalSpy pauses(m_stage.widget.get(), &MetaWidget::pauseEffectEngine);
    emit form()->flashEffectPreloadToggled(true);
    emit form()->flashEffectPreloadToggled(false);
    QCOMPARE(pauses.count(), 2);
    QCOMPARE(pauses.at(0).at(0).toBool(), true);
    QCOMPARE(pauses.at(1).at(0).toBool(), false);
}

void MetaWidgetFormsTest::aMapThatIsLoadedLeavesTheForm()
{
    m_stage.open(EditorStage::effectXml(1, QStringLiteral("<gid>4096</gid>")));
    m_stage.select(0);
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("Facade"));
    QVERIFY(m_stage.loadMap(QStringLiteral("<map><version>1</version></map>")));
    m_stage.effect(1)->compile();
    m_stage.widget->rebuildTable();
    QCOMPARE(m_stage.text(0, MetaWidget::GroupColumn), QStringLiteral("None"));
    m_stage.select(0);
    QCOMPARE(form()->effect(), m_stage.effect(1));
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
    m_stage.open(EditorStage::effectXml(1));
    m_stage.widget->demoStart();
    QVERIFY(form() != nullptr); // one without a colour to choose
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

QTEST_MAIN(MetaWidgetFormsTest)
#include "MetaWidgetFormsTest.moc"
