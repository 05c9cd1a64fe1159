#include "editor/MetaWidget.h"

#include "editor/StateIcons.h"
#include "effects/RegisterEffects.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "tests/output/SilentSocket.h"

#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QObject>
#include <QPointer>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

#include <memory>

namespace {

struct RootDeleter
{
    void operator()(MetaEffect* root) const { root->deleteShow(); }
};
using Root = std::unique_ptr<MetaEffect, RootDeleter>;

QString effectXml(int eid, const QString& more, const char* type = "Fixed Color")
{
    return QStringLiteral("<effect><type>%1</type><name>E%2</name><eid>%2</eid>%3</effect>")
        .arg(QString::fromLatin1(type))
        .arg(eid)
        .arg(more);
}

qint64 iconKey(const QTableWidgetItem* item)
{
    return item->icon().cacheKey();
}

} // namespace

class MetaWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theTableStandsAsStated();
    void aRowShowsItsEffect();
    void everyTypeShowsItsName();
    void aGroupThatIsMissingReadsNone_data();
    void aGroupThatIsMissingReadsNone();
    void numbersSortAsNumbers_data();
    void numbersSortAsNumbers();
    void rebuildingShowsTheShowsOrderAgain();
    void rebuildingSetsTheRootsTimes();
    void rebuildingFollowsTheShow();
    void timesCarryTheIconOfTheirKind_data();
    void timesCarryTheIconOfTheirKind();
    void aPassIsShownWhereverARowWasSorted();
    void anUnchangedPassChangesNothing();
    void runningEffectsAreMarked();
    void aFrameWithoutAChangeTouchesNothing();
    void aSortedTableMarksTheRightRow();
    void anotherRootIsFollowed();
    void aFormerRootIsForgotten();
    void aRootThatGoesIsForgotten();
    void theRootsSignalsAreConnectedOnce();
    void anEffectThatGoesIsPassedOver();
    void noRootShowsNothing();
    void writingClearsTheModifiedFlag();
    void aNewTableIsNotModified();
    void rowsAreSelectedWholeAndSingly();
    void theDemoTakesTheOnlyEffect_data();
    void theDemoTakesTheOnlyEffect();
    void anEmptyTableSaysSo();
    void tenThousandEffectsAreShownSoon();

private:
    Root parse(const QString& children)
    {
        Root root(EffectFactory::parseShow(
            QStringLiteral("<effect><type>Meta Effect</type>%1</effect>").arg(children),
            m_model.get()));
        return root;
    }
    void open(const QString& children)
    {
        m_widget.reset();
        m_root = parse(children);
        m_widget = std::make_unique<MetaWidget>(m_root.get(), m_model.get(), nullptr);
        m_widget->rebuildTable();
    }
    QTableWidget* table() const
    {
        return m_widget->findChild<QTableWidget*>(QStringLiteral("effectTable"));
    }
    QTableWidgetItem* item(int row, int column) const { return table()->item(row, column); }
    QString text(int row, int column) const { return item(row, column)->text(); }
    double number(int row, int column) const
    {
        return item(row, column)->data(Qt::EditRole).toDouble();
    }
    QStringList column(int column) const
    {
        QStringList list;
        for (int row = 0; row < table()->rowCount(); ++row) {
            list.append(text(row, column));
        }
        return list;
    }
    QList<int> selectedRows() const
    {
        QList<int> rows;
        const QModelIndexList whole = table()->selectionModel()->selectedRows();
        for (const QModelIndex& index : whole) {
            rows.append(index.row());
        }
        return rows;
    }
    Effect* effect(int index) const { return m_root->effectList().at(index); }

    QTemporaryDir m_dir;
    std::unique_ptr<MapModel> m_model;
    Root m_root;
    std::unique_ptr<MetaWidget> m_widget;
};

void MetaWidgetTest::initTestCase()
{
    initForgeResources();
    registerEffects();
    QFile file(m_dir.filePath(QStringLiteral("site.map")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<map><version>1</version><light><self>A1</self><x>1</x><y>1</y></light>"
               "<group><type>3</type><self>A1</self><child>A1</child></group>"
               "<group><type>2</type><self>1000</self><name>Facade</name><child>A1</child></group>"
               "</map>");
    file.close();
    m_model = std::make_unique<MapModel>(std::make_unique<SilentSocket>());
    QVERIFY(m_model->load(file.fileName()));
}

void MetaWidgetTest::init()
{
    open(QString());
}

void MetaWidgetTest::cleanup()
{
    m_widget.reset();
    m_root.reset();
}

void MetaWidgetTest::theTableStandsAsStated()
{
    QCOMPARE(m_widget->minimumSize(), QSize(976, 660));
    QCOMPARE(table()->columnCount(), 10);
    QStringList headers;
    for (int column = 0; column < 10; ++column) {
        headers.append(table()->horizontalHeaderItem(column)->text());
        QCOMPARE(table()->isColumnHidden(column), column >= 8);
    }
    QCOMPARE(headers, QStringList({QStringLiteral("Name"), QStringLiteral("Type"),
                                   QStringLiteral("Group"), QStringLiteral("Priority"),
                                   QStringLiteral("Start"), QStringLiteral("End"),
                                   QStringLiteral("Fade In"), QStringLiteral("Fade Out"),
                                   QStringLiteral("EID"), QStringLiteral("Running")}));
    QCOMPARE(table()->columnWidth(0), 80);
    QCOMPARE(table()->columnWidth(1), 120);
    QCOMPARE(table()->columnWidth(2), 100);
    QVERIFY(table()->horizontalHeader()->stretchLastSection());
    QVERIFY(table()->isSortingEnabled());
}

void MetaWidgetTest::aRowShowsItsEffect()
{
    open(effectXml(7, QStringLiteral("<gid>4096</gid><priority>12</priority><begin>1500</begin>"
                                     "<end>4250</end><fadein>250</fadein>"
                                     "<fadeout>1234567</fadeout>")));
    QCOMPARE(table()->rowCount(), 1);
    QCOMPARE(text(0, 0), QStringLiteral("E7"));
    QCOMPARE(iconKey(item(0, 0)), StateIcons::ICON_OPEN().cacheKey());
    QCOMPARE(text(0, 1), QStringLiteral("Fixed Color"));
    QCOMPARE(text(0, 2), QStringLiteral("Facade"));
    QCOMPARE(item(0, 3)->data(Qt::EditRole), QVariant(12U));
    QCOMPARE(item(0, 4)->data(Qt::EditRole), QVariant(1.5));
    QCOMPARE(item(0, 5)->data(Qt::EditRole), QVariant(4.25));
    QCOMPARE(text(0, 6), QStringLiteral("0.25"));
    QCOMPARE(text(0, 7), QStringLiteral("1234.57")); // six digits
    QCOMPARE(text(0, 8), QStringLiteral("7"));
    QCOMPARE(text(0, 9), QStringLiteral("0"));
}

void MetaWidgetTest::everyTypeShowsItsName()
{
    open(effectXml(1, QString(), "Cross Fade") + effectXml(2, QString(), "White Fixed Color") +
         effectXml(3, QString(), "Meta Effect"));
    QCOMPARE(column(MetaWidget::TypeColumn),
             QStringList({QStringLiteral("Cross Fade"), QStringLiteral("White Fixed Color"),
                          QStringLiteral("Meta Effect")}));
}

void MetaWidgetTest::aGroupThatIsMissingReadsNone_data()
{
    QTest::addColumn<QString>("gid");
    QTest::addColumn<QString>("shown");
    QTest::newRow("no group") << QString() << QStringLiteral("None");
    QTest::newRow("a group") << QStringLiteral("<gid>4096</gid>") << QStringLiteral("Facade");
    QTest::newRow("not of this map") << QStringLiteral("<gid>77</gid>") << QStringLiteral("None");
    QTest::newRow("beyond 32 bits")
        << QStringLiteral("<gid>4294971392</gid>") << QStringLiteral("None");
}

void MetaWidgetTest::aGroupThatIsMissingReadsNone()
{
    QFETCH(const QString, gid);
    QFETCH(const QString, shown);
    open(effectXml(1, gid));
    QCOMPARE(text(0, MetaWidget::GroupColumn), shown);
}

void MetaWidgetTest::numbersSortAsNumbers_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("key");
    QTest::newRow("priority") << static_cast<int>(MetaWidget::PriorityColumn)
                              << QStringLiteral("priority");
    QTest::newRow("start") << static_cast<int>(MetaWidget::StartColumn) << QStringLiteral("begin");
    QTest::newRow("end") << static_cast<int>(MetaWidget::EndColumn) << QStringLiteral("end");
}

void MetaWidgetTest::numbersSortAsNumbers()
{
    QFETCH(const int, column);
    QFETCH(const QString, key);
    QString children;
    const QList<int> values = {90000, 100000, 9000};
    for (int i = 0; i < values.size(); ++i) {
        children += effectXml(i + 1, QStringLiteral("<%1>%2</%1>").arg(key).arg(values.at(i)));
    }
    open(children);
    table()->sortItems(column, Qt::AscendingOrder);
    QCOMPARE(this->column(MetaWidget::NameColumn),
             QStringList({QStringLiteral("E3"), QStringLiteral("E1"), QStringLiteral("E2")}));
}

void MetaWidgetTest::rebuildingShowsTheShowsOrderAgain()
{
    // Equal priorities keep the order of the file.
    open(effectXml(3, QString()) + effectXml(1, QString()) + effectXml(2, QString()));
    const QStringList order({QStringLiteral("E3"), QStringLiteral("E1"), QStringLiteral("E2")});
    QCOMPARE(column(MetaWidget::NameColumn), order);
    table()->sortItems(MetaWidget::NameColumn, Qt::AscendingOrder);
    QVERIFY(column(MetaWidget::NameColumn) != order);
    m_widget->rebuildTable();
    QCOMPARE(column(MetaWidget::NameColumn), order);
    QVERIFY(table()->isSortingEnabled());
    QVERIFY(!table()->signalsBlocked());
}

void MetaWidgetTest::rebuildingSetsTheRootsTimes()
{
    open(effectXml(1, QStringLiteral("<end>4000</end>")) +
         effectXml(2, QStringLiteral("<end>9000</end>")));
    m_root->setBegin(50);
    m_root->setEnd(1);
    QSignalSpy begun(m_root.get(), &Effect::beginChanged);
    m_widget->rebuildTable();
    QCOMPARE(m_root->begin(), 0U);
    QCOMPARE(m_root->end(), 9000U);
    QCOMPARE(begun.count(), 1);
}

void MetaWidgetTest::rebuildingFollowsTheShow()
{
    open(effectXml(1, QString()) + effectXml(2, QString()));
    QCOMPARE(table()->rowCount(), 2);
    Effect* const gone = effect(0);
    m_root->removeEffect(gone);
    delete gone;
    m_widget->rebuildTable();
    QCOMPARE(column(MetaWidget::NameColumn), QStringList(QStringLiteral("E2")));
}

void MetaWidgetTest::timesCarryTheIconOfTheirKind_data()
{
    QTest::addColumn<int>("startType");
    QTest::addColumn<int>("endType");
    QTest::newRow("fixed, fixed") << 0 << 0;
    QTest::newRow("linked, linked") << 1 << 1;
    QTest::newRow("fixed, cycles") << 0 << 2;
    QTest::newRow("linked, cycles") << 1 << 2;
    QTest::newRow("unknown kinds") << 5 << 9;
}

void MetaWidgetTest::timesCarryTheIconOfTheirKind()
{
    QFETCH(const int, startType);
    QFETCH(const int, endType);
    open(effectXml(1, QStringLiteral("<starttype>%1</starttype><endtype>%2</endtype>")
                          .arg(startType)
                          .arg(endType)));
    const qint64 link = StateIcons::ICON_LINK().cacheKey();
    const qint64 cycle = StateIcons::ICON_CYCLE().cacheKey();
    const qint64 none = StateIcons::ICON_NONE().cacheKey();
    QVERIFY(link != cycle && link != none && cycle != none);
    QCOMPARE(iconKey(item(0, MetaWidget::StartColumn)), startType == 1 ? link : none);
    QCOMPARE(iconKey(item(0, MetaWidget::EndColumn)),
             endType == 1 ? link : (endType == 2 ? cycle : none));
    // And back, when a pass finds it fixed.
    effect(0)->setStartType(Effect::StartFixed);
    effect(0)->setEndType(Effect::EndFixed);
    m_root->updateEffectTimes();
    QCOMPARE(iconKey(item(0, MetaWidget::StartColumn)), none);
    QCOMPARE(iconKey(item(0, MetaWidget::EndColumn)), none);
}

void MetaWidgetTest::aPassIsShownWhereverARowWasSorted()
{
    open(effectXml(1, QStringLiteral("<startfixedtime>2000</startfixedtime>"
                                     "<endfixedtime>500</endfixedtime>")) +
         effectXml(2, QStringLiteral("<starttype>1</starttype><startlinkeid>1</startlinkeid>"
                                     "<startlinkstart>0</startlinkstart><endtype>2</endtype>"
                                     "<endcyclecount>3</endcyclecount>")));
    table()->sortItems(MetaWidget::NameColumn, Qt::DescendingOrder);
    QCOMPARE(text(0, MetaWidget::NameColumn), QStringLiteral("E2"));
    QCOMPARE(number(0, MetaWidget::StartColumn), 0.0); // as the file has it
    QSignalSpy changed(table(), &QTableWidget::cellChanged);
    m_root->updateEffectTimes();
    // E1 from 2 to 2.5 s; E2 from there for three cycles of one second.
    QCOMPARE(number(1, MetaWidget::StartColumn), 2.0);
    QCOMPARE(number(1, MetaWidget::EndColumn), 2.5);
    QCOMPARE(number(0, MetaWidget::StartColumn), 2.5);
    QCOMPARE(number(0, MetaWidget::EndColumn), 5.5);
    QCOMPARE(text(0, MetaWidget::NameColumn), QStringLiteral("E2"));
    QVERIFY(table()->isSortingEnabled());
    QCOMPARE(changed.count(), 0); // showing is no editing
    QVERIFY(!m_widget->isModified());
}

void MetaWidgetTest::anUnchangedPassChangesNothing()
{
    open(effectXml(1, QStringLiteral("<startfixedtime>2000</startfixedtime><endtype>2</endtype>")));
    m_root->updateEffectTimes();
    QSignalSpy changed(table()->model(), &QAbstractItemModel::dataChanged);
    m_root->updateEffectTimes();
    QCOMPARE(changed.count(), 0);
}

void MetaWidgetTest::runningEffectsAreMarked()
{
    open(effectXml(1, QString()) + effectXml(2, QString()));
    effect(0)->setActive(true);
    emit m_root->internalUpdateLightsComplete();
    QCOMPARE(text(0, MetaWidget::RunningColumn), QStringLiteral("1"));
    QCOMPARE(iconKey(item(0, MetaWidget::NameColumn)), StateIcons::ICON_CLOSE().cacheKey());
    QCOMPARE(text(1, MetaWidget::RunningColumn), QStringLiteral("0"));
    QCOMPARE(iconKey(item(1, MetaWidget::NameColumn)), StateIcons::ICON_OPEN().cacheKey());
    effect(0)->setActive(false);
    effect(1)->setActive(true);
    emit m_root->internalUpdateLightsComplete();
    QCOMPARE(text(0, MetaWidget::RunningColumn), QStringLiteral("0"));
    QCOMPARE(iconKey(item(0, MetaWidget::NameColumn)), StateIcons::ICON_OPEN().cacheKey());
    QCOMPARE(text(1, MetaWidget::RunningColumn), QStringLiteral("1"));
    QCOMPARE(iconKey(item(1, MetaWidget::NameColumn)), StateIcons::ICON_CLOSE().cacheKey());
}

void MetaWidgetTest::aFrameWithoutAChangeTouchesNothing()
{
    open(effectXml(1, QString()) + effectXml(2, QString()));
    effect(0)->setActive(true);
    emit m_root->internalUpdateLightsComplete();
    QSignalSpy model(table()->model(), &QAbstractItemModel::dataChanged);
    QSignalSpy cells(table(), &QTableWidget::cellChanged);
    for (int frame = 0; frame < 10; ++frame) {
        emit m_root->internalUpdateLightsComplete();
    }
    QCOMPARE(model.count(), 0);
    effect(0)->setActive(false);
    emit m_root->internalUpdateLightsComplete();
    QVERIFY(model.count() > 0);
    QCOMPARE(cells.count(), 0); // blocked: the frame is no editing
}

void MetaWidgetTest::aSortedTableMarksTheRightRow()
{
    open(effectXml(1, QString()) + effectXml(2, QString()));
    table()->sortItems(MetaWidget::NameColumn, Qt::DescendingOrder);
    effect(0)->setActive(true);
    emit m_root->internalUpdateLightsComplete();
    QCOMPARE(text(1, MetaWidget::NameColumn), QStringLiteral("E1"));
    QCOMPARE(text(1, MetaWidget::RunningColumn), QStringLiteral("1"));
    QCOMPARE(text(0, MetaWidget::RunningColumn), QStringLiteral("0"));
}

void MetaWidgetTest::anotherRootIsFollowed()
{
    Root other = parse(effectXml(5, QString()));
    m_widget->setMetaEffect(other.get());
    QCOMPARE(m_widget->metaEffect(), other.get());
    m_widget->rebuildTable();
    QCOMPARE(column(MetaWidget::NameColumn), QStringList(QStringLiteral("E5")));
    other->effectList().at(0)->setActive(true);
    emit other->internalUpdateLightsComplete();
    QCOMPARE(text(0, MetaWidget::RunningColumn), QStringLiteral("1"));
    other->effectList().at(0)->setStartFixedTime(3000);
    other->updateEffectTimes();
    QCOMPARE(number(0, MetaWidget::StartColumn), 3.0);
    m_widget.reset(); // ahead of its root
}

void MetaWidgetTest::aFormerRootIsForgotten()
{
    open(effectXml(1, QString()));
    Root other = parse(effectXml(5, QString()));
    m_widget->setMetaEffect(other.get());
    // Between the two calls the rows are of effects that may be gone.
    effect(0)->setActive(true);
    emit m_root->internalUpdateLightsComplete();
    m_root.reset();
    emit other->internalUpdateLightsComplete();
    other->updateEffectTimes();
    QCOMPARE(text(0, MetaWidget::RunningColumn), QStringLiteral("0"));
    QCOMPARE(m_widget->metaEffect(), other.get());
    m_widget.reset();
}

void MetaWidgetTest::aRootThatGoesIsForgotten()
{
    open(effectXml(1, QString()));
    m_root.reset();
    QVERIFY(m_widget->metaEffect() == nullptr);
    m_widget->rebuildTable();
    QCOMPARE(table()->rowCount(), 0);
    QString text;
    QTextStream stream(&text);
    m_widget->writeShow(stream);
    QCOMPARE(text, QString());
}

void MetaWidgetTest::theRootsSignalsAreConnectedOnce()
{
    class OpenRoot : public MetaEffect
    {
    public:
        using MetaEffect::MetaEffect;
        QList<int> counts() const
        {
            return {receivers(SIGNAL(destroyed(QObject*))),
                    receivers(SIGNAL(updateEffectTimesComplete())),
                    receivers(SIGNAL(internalUpdateLightsComplete()))};
        }
    };
    OpenRoot root(m_model.get(), 0, nullptr);
    MetaWidget widget(&root, m_model.get(), nullptr);
    QCOMPARE(root.counts(), QList<int>({1, 1, 1}));
    widget.setMetaEffect(&root);
    QCOMPARE(root.counts(), QList<int>({1, 1, 1}));
    widget.disconnectMetaEffect(&root); // that of its end alone
    QCOMPARE(root.counts(), QList<int>({0, 1, 1}));
    widget.setMetaEffect(nullptr);
    QCOMPARE(root.counts(), QList<int>({0, 0, 0}));
}

void MetaWidgetTest::anEffectThatGoesIsPassedOver()
{
    open(effectXml(1, QString()) + effectXml(2, QString()));
    Effect* const gone = effect(0);
    m_root->removeEffect(gone);
    delete gone;
    effect(0)->setActive(true);
    effect(0)->setStartFixedTime(1000);
    m_root->updateEffectTimes();
    emit m_root->internalUpdateLightsComplete();
    QCOMPARE(text(1, MetaWidget::RunningColumn), QStringLiteral("1"));
    QCOMPARE(number(1, MetaWidget::StartColumn), 1.0);
}

void MetaWidgetTest::noRootShowsNothing()
{
    MetaWidget widget(nullptr, m_model.get(), nullptr);
    widget.rebuildTable();
    QCOMPARE(widget.findChild<QTableWidget*>()->rowCount(), 0);
    QVERIFY(widget.metaEffect() == nullptr);
}

void MetaWidgetTest::writingClearsTheModifiedFlag()
{
    open(effectXml(1, QString()));
    m_widget->setModified(true);
    QString text;
    QTextStream stream(&text);
    m_widget->writeShow(stream);
    QString expected;
    QTextStream plain(&expected);
    m_root->save(plain);
    QCOMPARE(text, expected);
    QVERIFY(text.startsWith(QStringLiteral("<effect>\n<type>Meta Effect</type>")));
    QVERIFY(!m_widget->isModified());
}

void MetaWidgetTest::aNewTableIsNotModified()
{
    open(effectXml(1, QString()));
    QVERIFY(!m_widget->isModified());
    m_widget->setModified(true);
    m_widget->rebuildTable();
    m_widget->setMetaEffect(m_root.get());
    QVERIFY(m_widget->isModified()); // only a save clears it
}

void MetaWidgetTest::rowsAreSelectedWholeAndSingly()
{
    open(effectXml(1, QString()) + effectXml(2, QString()));
    m_widget->show();
    const auto click = [this](int row, Qt::KeyboardModifiers keys) {
        const QRect cell = table()->visualItemRect(item(row, MetaWidget::PriorityColumn));
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, keys, cell.center());
    };
    click(0, Qt::NoModifier);
    QCOMPARE(selectedRows(), QList<int>{0});
    QVERIFY(item(0, MetaWidget::EidColumn)->isSelected()); // the hidden ones too
    click(1, Qt::ControlModifier);
    QCOMPARE(selectedRows(), QList<int>{1});
    table()->selectAll(); // changes nothing
    QCOMPARE(selectedRows(), QList<int>{1});
}

void MetaWidgetTest::theDemoTakesTheOnlyEffect_data()
{
    QTest::addColumn<int>("effects");
    QTest::addColumn<int>("row");
    QTest::newRow("none") << 0 << -1;
    QTest::newRow("one") << 1 << 0;
    QTest::newRow("two") << 2 << -1;
}

void MetaWidgetTest::theDemoTakesTheOnlyEffect()
{
    QFETCH(const int, effects);
    QFETCH(const int, row);
    QString children;
    for (int i = 1; i <= effects; ++i) {
        children += effectXml(i, QString(), "Sweep"); // a fixed colour would be asked for
    }
    open(children);
    m_widget->demoStart();
    QCOMPARE(table()->currentRow(), row);
    QCOMPARE(selectedRows(), row == 0 ? QList<int>{0} : QList<int>{});
}

void MetaWidgetTest::anEmptyTableSaysSo()
{
    m_widget->resize(1000, 700);
    const auto isBlank = [this] {
        const QImage image = table()->viewport()->grab().toImage();
        const QRgb ground = image.pixel(2, 2);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != ground) {
                    return false;
                }
            }
        }
        return true;
    };
    QVERIFY(!isBlank());
    QCOMPARE(table()->rowCount(), 0); // painted, not a row
}

void MetaWidgetTest::tenThousandEffectsAreShownSoon()
{
    QString children;
    for (int i = 1; i <= 10000; ++i) {
        children += effectXml(i, QStringLiteral("<endfixedtime>%1</endfixedtime>").arg(i));
    }
    QElapsedTimer clock;
    open(children);
    clock.start();
    m_widget->rebuildTable();
    const qint64 ms = clock.elapsed();
    QCOMPARE(table()->rowCount(), 10000);
    QCOMPARE(text(9999, MetaWidget::NameColumn), QStringLiteral("E10000"));
    qInfo("rebuilt in %lld ms", static_cast<long long>(ms));
    QVERIFY2(ms < 3000, qPrintable(QString::number(ms))); // far above what it takes
}

QTEST_MAIN(MetaWidgetTest)
#include "MetaWidgetTest.moc"
