#include "sim/LightSim.h"

#include "SimMap.h"
#include "map/Light.h"
#include "resources/Resources.h"
#include "sim/SimView.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QMetaMethod>
#include <QPen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QtTest>

#include <sys/stat.h>
#include <utility>

namespace {

SimView* viewOf(LightSim& sim)
{
    return sim.findChild<SimView*>();
}

QGraphicsScene* sceneOf(LightSim& sim)
{
    return viewOf(sim)->scene();
}

/// The item of a light that stands at (x, y), or null.
QGraphicsEllipseItem* itemAt(LightSim& sim, double x, double y)
{
    const QList<QGraphicsItem*> items = sceneOf(sim)->items();
    for (QGraphicsItem* const item : items) {
        auto* const ellipse = qgraphicsitem_cast<QGraphicsEllipseItem*>(item);
        if (ellipse != nullptr && ellipse->pos() == QPointF(x + 10.0, y + 10.0)) {
            return ellipse;
        }
    }
    return nullptr;
}

QGraphicsPixmapItem* planOf(LightSim& sim)
{
    const QList<QGraphicsItem*> items = sceneOf(sim)->items(Qt::AscendingOrder);
    return items.isEmpty() ? nullptr : qgraphicsitem_cast<QGraphicsPixmapItem*>(items.front());
}

double scaleOf(LightSim& sim)
{
    return viewOf(sim)->transform().m11();
}

void paint(Light* light, const QColor& color)
{
    light->reset();
    light->mixColor(VelaColor(color), 1);
    light->mixSimColor(color, 1);
}

bool makePlan(const QString& path, int width, int height)
{
    QImage plan(width, height, QImage::Format_RGB32);
    plan.fill(QColor(70, 80, 90));
    return plan.save(path);
}

} // namespace

class LightSimTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void declaresItsSignalAndSlotsInOrder();
    void takesTheNameGiven();
    void staysWithItsParent();
    void extentsDependOnTheOrderOfLights();
    void brokenPositionsStayOutOfTheExtents_data();
    void brokenPositionsStayOutOfTheExtents();
    void sceneIsAsLargeAsPlanOrLights_data();
    void sceneIsAsLargeAsPlanOrLights();
    void planLiesBelowTheLights();
    void planPathIsTakenAsItStands();
    void unreadablePlanLeavesOneLine_data();
    void unreadablePlanLeavesOneLine();
    void lightsAreBlackEllipsesBesideTheirPlace();
    void redrawsEveryCountPlusOneCalls_data();
    void redrawsEveryCountPlusOneCalls();
    void newRefreshCountStartsOver();
    void pausedWindowKeepsItsPicture();
    void lightNeverPaintedShowsBlack();
    void takesColorsBeforeTheReset();
    void zoomStepsAreThreeQuarters();
    void zoomKeepsTheMiddle();
    void endlessZoomStaysUsable_data();
    void endlessZoomStaysUsable();
    void firstShowFitsTheScene_data();
    void firstShowFitsTheScene();
    void fitsOnlyOnce();
    void fitBeforeTheFirstShowIsNotSpent();
    void emptyMapFitsToAVerySmallFactor();
    void emptyMapWithPlanIsAsLargeAsThePlan();
    void lightsFarOnTheNegativeSideLeaveTheScale();
    void hidingReportsAndAccepts();
    void reparentingWithSignalsBlockedIsSilent();
    void backgroundFillsTheScene();
    void quickPictureEqualsTheScenes_data();
    void quickPictureEqualsTheScenes();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

void LightSimTest::initTestCase()
{
    initForgeResources();
}

void LightSimTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void LightSimTest::cleanup()
{
    m_directory.reset();
}

void LightSimTest::declaresItsSignalAndSlotsInOrder()
{
    const QMetaObject& meta = LightSim::staticMetaObject;
    QList<QByteArray> own;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        own.append(meta.method(i).methodSignature());
    }
    const QList<QByteArray> expected = {"simStateChanged(bool)",
                                        "updateLights()",
                                        "zoomIn()",
                                        "zoomOut()",
                                        "zoomFit()",
                                        "setRefreshCount(int)",
                                        "hideEvent(QHideEvent*)",
                                        "showEvent(QShowEvent*)"};
    QCOMPARE(own, expected);
    QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta.method(meta.methodOffset()).parameterNames(), QList<QByteArray>{"b"});
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodType(), QMetaMethod::Slot);
    QCOMPARE(meta.method(meta.methodCount() - 1).access(), QMetaMethod::Protected);
}

void LightSimTest::takesTheNameGiven()
{
    SimMap map({});
    QCOMPARE(LightSim(map.model(), nullptr, "Sim").objectName(), QStringLiteral("Sim"));
    QCOMPARE(LightSim(map.model(), nullptr, nullptr).objectName(), QStringLiteral("SimDialog"));
    QCOMPARE(LightSim(map.model(), nullptr, "").objectName(), QStringLiteral("SimDialog"));
}

void LightSimTest::staysWithItsParent()
{
    SimMap map({});
    QWidget parent;
    LightSim child(map.model(), &parent, "Sim");
    QCOMPARE(child.parentWidget(), &parent);
    QVERIFY(child.isWindow());
    LightSim alone(map.model(), nullptr, "Sim");
    QVERIFY(alone.parentWidget() == nullptr);
}

void LightSimTest::extentsDependOnTheOrderOfLights()
{
    // 110 lies within the margin of 100, and so raises the maximum only if it comes first.
    bool lowFirst = false;
    bool highFirst = false;
    for (quint64 uid = 1; uid < 200 && !(lowFirst && highFirst); ++uid) {
        SimMapLight low(100.0, 300.0);
        low.uid = uid;
        SimMapLight high(110.0, 310.0);
        high.uid = uid * 7919 + 12345;
        if (uid % 2 == 0) { // whatever the hash's seed, both orders come up
            std::swap(low.uid, high.uid);
        }
        SimMap map({low, high});
        QVERIFY(map.isGood());
        const bool lowComesFirst = map.model()->lightsHash().values().front()->position().x < 105.0;
        LightSim sim(map.model(), nullptr, "Sim");
        QCOMPARE(sceneOf(sim)->sceneRect(),
                 lowComesFirst ? QRectF(0, 0, 120, 320) : QRectF(0, 0, 130, 330));
        (lowComesFirst ? lowFirst : highFirst) = true;
    }
    QVERIFY(lowFirst && highFirst);
}

void LightSimTest::brokenPositionsStayOutOfTheExtents_data()
{
    QTest::addColumn<QString>("x");
    QTest::addColumn<QString>("y");
    QTest::newRow("nan") << "nan"
                         << "50";
    QTest::newRow("both nan") << "nan"
                              << "nan";
    QTest::newRow("infinite") << "inf"
                              << "inf";
    QTest::newRow("negative infinite") << "50"
                                       << "-inf";
    QTest::newRow("huge") << "1e308"
                          << "50";
    QTest::newRow("negative huge") << "50"
                                   << "-1e308";
    QTest::newRow("beyond 32 bits") << "2147483647"
                                    << "3e9";
}

void LightSimTest::brokenPositionsStayOutOfTheExtents()
{
    QFETCH(const QString, x);
    QFETCH(const QString, y);
    SimMap map({SimMapLight(100.0, 60.0),
                SimMapLight(x.toLatin1().constData(), y.toLatin1().constData())});
    QVERIFY(map.isGood());
    QCOMPARE(map.model()->lightUids().size(), 2);
    LightSim sim(map.model(), nullptr, "Sim");
    QCOMPARE(sceneOf(sim)->sceneRect(), QRectF(0, 0, 120, 80));
    sim.show();
    QVERIFY(scaleOf(sim) > 0.5); // 276 or so over 100 + 100 + 20
    viewOf(sim)->setQuickPainting(false);
    const QImage plain = sim.grab().toImage();
    viewOf(sim)->setQuickPainting(true);
    QCOMPARE(sim.grab().toImage(), plain);
    sim.updateLights();
    sim.zoomIn();
    QVERIFY(!sim.grab().isNull());
}

void LightSimTest::sceneIsAsLargeAsPlanOrLights_data()
{
    QTest::addColumn<QSize>("plan");
    QTest::addColumn<QRectF>("scene");
    // The light at (100.75, 60.5) puts the maxima at 120.75 and 80.5.
    QTest::newRow("no plan") << QSize() << QRectF(0, 0, 120, 80);
    QTest::newRow("larger plan") << QSize(400, 300) << QRectF(0, 0, 400, 300);
    QTest::newRow("smaller plan") << QSize(50, 40) << QRectF(0, 0, 140, 100);
    QTest::newRow("wider plan") << QSize(400, 40) << QRectF(0, 0, 400, 100);
    QTest::newRow("one pixel larger") << QSize(121, 81) << QRectF(0, 0, 121, 81);
    QTest::newRow("a fraction smaller") << QSize(120, 80) << QRectF(0, 0, 140, 100);
}

void LightSimTest::sceneIsAsLargeAsPlanOrLights()
{
    QFETCH(const QSize, plan);
    QFETCH(const QRectF, scene);
    QString path;
    if (plan.isValid()) {
        path = m_directory->filePath(QStringLiteral("plan.png"));
        QVERIFY(makePlan(path, plan.width(), plan.height()));
    }
    SimMap map({SimMapLight(100.75, 60.5)}, path);
    LightSim sim(map.model(), nullptr, "Sim");
    QCOMPARE(sceneOf(sim)->sceneRect(), scene);
    QCOMPARE(sceneOf(sim)->items().size(), plan.isValid() ? 2 : 1);
}

void LightSimTest::planLiesBelowTheLights()
{
    const QString path = m_directory->filePath(QStringLiteral("plan.png"));
    QVERIFY(makePlan(path, 400, 300));
    SimMap map({SimMapLight(100.0, 60.0), SimMapLight(10.0, 20.0)}, path);
    LightSim sim(map.model(), nullptr, "Sim");
    QGraphicsPixmapItem* const plan = planOf(sim);
    QVERIFY(plan != nullptr);
    QCOMPARE(plan->pos(), QPointF());
    QCOMPARE(plan->pixmap().size(), QSize(400, 300));
}

void LightSimTest::planPathIsTakenAsItStands()
{
    QVERIFY(makePlan(m_directory->filePath(QStringLiteral("plan.png")), 400, 300));
    SimMap map({}, QStringLiteral("plan.png"));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_directory->path()));
    LightSim sim(map.model(), nullptr, "Sim");
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(sceneOf(sim)->sceneRect(), QRectF(0, 0, 400, 300));
}

void LightSimTest::unreadablePlanLeavesOneLine_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("missing") << "missing"
                             << "is no file";
    QTest::newRow("folder") << "folder"
                            << "is no file";
    QTest::newRow("pipe, which would block") << "pipe"
                                             << "is no file";
    QTest::newRow("no picture") << "text"
                                << "can't be read";
}

void LightSimTest::unreadablePlanLeavesOneLine()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, complaint);
    const QString path = m_directory->filePath(QStringLiteral("plan.png"));
    if (kind == QLatin1String("folder")) {
        QVERIFY(QDir().mkdir(path));
    } else if (kind == QLatin1String("pipe")) {
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    } else if (kind == QLatin1String("text")) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no picture at all");
    }
    SimMap map({SimMapLight(100.0, 60.0)}, path);
    const QString line = QStringLiteral("LightSim: plan image %1 %2").arg(path, complaint);
    QTest::ignoreMessage(QtDebugMsg, line.toUtf8().constData());
    LightSim sim(map.model(), nullptr, "Sim");
    QCOMPARE(sceneOf(sim)->sceneRect(), QRectF(0, 0, 120, 80));
    QVERIFY(planOf(sim) != nullptr); // the path isn't empty
    QVERIFY(planOf(sim)->pixmap().isNull());
}

void LightSimTest::lightsAreBlackEllipsesBesideTheirPlace()
{
    SimMap map({SimMapLight(100.0, 60.0), SimMapLight(-5.5, 20.25)});
    LightSim sim(map.model(), nullptr, "Sim");
    QCOMPARE(sceneOf(sim)->items().size(), 2);
    for (const QPointF& place : {QPointF(100.0, 60.0), QPointF(-5.5, 20.25)}) {
        const QGraphicsEllipseItem* const item = itemAt(sim, place.x(), place.y());
        QVERIFY(item != nullptr);
        QCOMPARE(item->rect(), QRectF(0, 0, 10, 10));
        QCOMPARE(item->pen(), QPen(Qt::black));
        QCOMPARE(item->brush(), QBrush(Qt::black, Qt::SolidPattern));
        QVERIFY(item->isVisible());
    }
}

void LightSimTest::redrawsEveryCountPlusOneCalls_data()
{
    QTest::addColumn<int>("count"); // 1000: never set
    QTest::addColumn<int>("period");
    QTest::newRow("never set") << 1000 << 1;
    QTest::newRow("1") << 1 << 2;
    QTest::newRow("3") << 3 << 4;
    QTest::newRow("100") << 100 << 101;
    QTest::newRow("0 acts as 1") << 0 << 2;
    QTest::newRow("-5 acts as 1") << -5 << 2;
}

void LightSimTest::redrawsEveryCountPlusOneCalls()
{
    QFETCH(const int, count);
    QFETCH(const int, period);
    SimMap map({SimMapLight(100.0, 60.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    if (count != 1000) {
        sim.setRefreshCount(count);
    }
    const QGraphicsEllipseItem* const item = itemAt(sim, 100.0, 60.0);
    QColor shown = Qt::black;
    for (int call = 1; call <= 3 * period + 1; ++call) {
        const QColor color(call % 256, 7, 200);
        paint(map.model()->light(1), color);
        sim.updateLights();
        if (call % period == 0) {
            shown = color;
        }
        QCOMPARE(item->brush().color().rgba(), shown.rgba());
    }
}

void LightSimTest::newRefreshCountStartsOver()
{
    SimMap map({SimMapLight(100.0, 60.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    const QGraphicsEllipseItem* const item = itemAt(sim, 100.0, 60.0);
    paint(map.model()->light(1), Qt::red);
    sim.setRefreshCount(2);
    sim.updateLights();
    sim.updateLights();
    sim.setRefreshCount(2);
    sim.updateLights();
    sim.updateLights();
    QCOMPARE(item->brush().color(), QColor(Qt::black));
    sim.updateLights();
    QCOMPARE(item->brush().color(), QColor(Qt::red));
}

void LightSimTest::pausedWindowKeepsItsPicture()
{
    SimMap map({SimMapLight(100.0, 60.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    const QGraphicsEllipseItem* const item = itemAt(sim, 100.0, 60.0);
    sim.setRefreshCount(1);
    paint(map.model()->light(1), Qt::red);
    sim.setPaused(true);
    for (int i = 0; i < 5; ++i) {
        sim.updateLights();
    }
    QCOMPARE(item->brush().color(), QColor(Qt::black));
    sim.setPaused(false);
    sim.updateLights(); // the paused calls did not count
    QCOMPARE(item->brush().color(), QColor(Qt::black));
    sim.updateLights();
    QCOMPARE(item->brush().color(), QColor(Qt::red));
}

void LightSimTest::lightNeverPaintedShowsBlack()
{
    SimMap map({SimMapLight(100.0, 60.0)});
    QVERIFY(!map.model()->light(1)->hasSimColor());
    QVERIFY(!map.model()->light(1)->isPainted());
    LightSim sim(map.model(), nullptr, "Sim");
    sim.setBackground(Qt::white);
    sim.updateLights();
    QVERIFY(!itemAt(sim, 100.0, 60.0)->brush().color().isValid());
    QCOMPARE(itemAt(sim, 100.0, 60.0)->brush().style(), Qt::SolidPattern);
    sim.show();
    for (const bool quick : {false, true}) {
        viewOf(sim)->setQuickPainting(quick);
        const QImage image = viewOf(sim)->viewport()->grab().toImage();
        QCOMPARE(viewOf(sim)->wasPaintedQuickly(), quick);
        QCOMPARE(image.pixel(viewOf(sim)->mapFromScene(QPointF(115.0, 75.0))), 0xFF000000U);
    }
}

void LightSimTest::takesColorsBeforeTheReset()
{
    SimMap map({SimMapLight(100.0, 60.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    paint(map.model()->light(1), QColor(10, 200, 30));
    sim.updateLights();
    map.model()->setSimulateOnly(true);
    map.model()->updateLights();
    QCOMPARE(itemAt(sim, 100.0, 60.0)->brush().color().rgba(), qRgb(10, 200, 30));
    sim.updateLights(); // after the reset: a valid black
    QCOMPARE(itemAt(sim, 100.0, 60.0)->brush().color(), QColor(Qt::black));
}

void LightSimTest::zoomStepsAreThreeQuarters()
{
    SimMap map({SimMapLight(100.0, 60.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    QCOMPARE(scaleOf(sim), 1.0);
    sim.zoomIn();
    QCOMPARE(scaleOf(sim), 20.0 / 0.75 / 20.0);
    QCOMPARE(viewOf(sim)->transform().m22(), 20.0 / 0.75 / 20.0);
    sim.zoomIn();
    QCOMPARE(scaleOf(sim), 20.0 / 0.75 / 0.75 / 20.0);
    sim.zoomOut();
    sim.zoomOut();
    sim.zoomOut();
    QCOMPARE(scaleOf(sim), 20.0 / 0.75 / 0.75 * 0.75 * 0.75 * 0.75 / 20.0);
    QCOMPARE(viewOf(sim)->transform().type(), QTransform::TxScale);
}

void LightSimTest::zoomKeepsTheMiddle()
{
    SimMap map({SimMapLight(2000.0, 1500.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    sim.show();
    SimView* const view = viewOf(sim);
    sim.zoomIn();
    sim.zoomIn();
    sim.zoomIn();
    sim.zoomIn();
    sim.zoomIn();
    sim.zoomIn();
    view->centerOn(700.0, 900.0);
    const auto middle = [view] { return view->mapToScene(view->viewport()->rect().center()); };
    const QPointF before = middle();
    sim.zoomIn();
    sim.zoomIn();
    const double pixel = 2.0 / scaleOf(sim) + 2.0;
    QVERIFY(qAbs(middle().x() - before.x()) < pixel);
    QVERIFY(qAbs(middle().y() - before.y()) < pixel);
}

void LightSimTest::endlessZoomStaysUsable_data()
{
    QTest::addColumn<bool>("in");
    QTest::newRow("in") << true;
    QTest::newRow("out") << false;
}

void LightSimTest::endlessZoomStaysUsable()
{
    QFETCH(const bool, in);
    SimMap map({SimMapLight(100.0, 60.0), SimMapLight(10.0, 70.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    sim.show();
    for (int i = 0; i < 5000; ++i) {
        in ? sim.zoomIn() : sim.zoomOut();
        if (i % 50 == 0) {
            QVERIFY(!sim.grab().isNull());
        }
    }
    const double scale = scaleOf(sim);
    QVERIFY(qIsFinite(scale) && scale > 0.0);
    in ? sim.zoomOut() : sim.zoomIn(); // and back
    QVERIFY(in ? scaleOf(sim) < scale : scaleOf(sim) > scale);
}

void LightSimTest::firstShowFitsTheScene_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::newRow("wide") << 900.4 << 100.0;
    QTest::newRow("high") << 100.0 << 2000.9;
    QTest::newRow("square") << 500.0 << 500.0;
}

void LightSimTest::firstShowFitsTheScene()
{
    QFETCH(const double, x);
    QFETCH(const double, y);
    SimMap map({SimMapLight(x, y)});
    LightSim sim(map.model(), nullptr, "Sim");
    sim.resize(500, 400);
    sim.show();
    const QRect visible = viewOf(sim)->visibleRegion().boundingRect();
    QVERIFY(visible.width() > 400);
    // One light: the maximum is its place and 20, the minimum its place.
    const double across = visible.width() * 20.0 / std::trunc(x + 20.0 + x + 20.0);
    const double down = visible.height() * 20.0 / std::trunc(y + 20.0 + y + 20.0);
    QCOMPARE(scaleOf(sim), std::min(across, down) / 20.0);
}

void LightSimTest::fitsOnlyOnce()
{
    SimMap map({SimMapLight(900.0, 700.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    sim.show();
    const double fitted = scaleOf(sim);
    QVERIFY(fitted < 1.0);
    sim.resize(900, 800);
    sim.zoomFit();
    QCOMPARE(scaleOf(sim), fitted);
    sim.hide();
    sim.show();
    QCOMPARE(scaleOf(sim), fitted);
}

void LightSimTest::fitBeforeTheFirstShowIsNotSpent()
{
    SimMap map({SimMapLight(900.0, 700.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    sim.zoomFit(); // nothing of the view is visible
    QCOMPARE(scaleOf(sim), 1.0);
    sim.show();
    QVERIFY(scaleOf(sim) < 1.0);
}

void LightSimTest::emptyMapFitsToAVerySmallFactor()
{
    SimMap map({});
    QVERIFY(map.isGood());
    LightSim sim(map.model(), nullptr, "Sim");
    QVERIFY(sceneOf(sim)->items().isEmpty());
    sim.show();
    const QRect visible = viewOf(sim)->visibleRegion().boundingRect();
    const double across = visible.width() * 20.0 / 10000020.0;
    const double down = visible.height() * 20.0 / 10000020.0;
    QCOMPARE(scaleOf(sim), std::min(across, down) / 20.0);
    sim.updateLights();
    QVERIFY(!sim.grab().isNull());
    QCOMPARE(sceneOf(sim)->sceneRect().size(), QSizeF(0.0, 0.0));
}

void LightSimTest::emptyMapWithPlanIsAsLargeAsThePlan()
{
    const QString path = m_directory->filePath(QStringLiteral("plan.png"));
    QVERIFY(makePlan(path, 400, 300));
    SimMap map({}, path);
    LightSim sim(map.model(), nullptr, "Sim");
    QCOMPARE(sceneOf(sim)->sceneRect(), QRectF(0, 0, 400, 300));
    QCOMPARE(sceneOf(sim)->items().size(), 1);
}

void LightSimTest::lightsFarOnTheNegativeSideLeaveTheScale()
{
    SimMap map({SimMapLight(-500.0, -400.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    sim.show(); // 0 - 500 + 20: a negative factor would mirror the plan
    QCOMPARE(scaleOf(sim), 1.0);
    QVERIFY(!sim.grab().isNull());
}

void LightSimTest::hidingReportsAndAccepts()
{
    SimMap map({SimMapLight(100.0, 60.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    sim.show();
    QSignalSpy changed(&sim, &LightSim::simStateChanged);
    QSignalSpy accepted(&sim, &QDialog::accepted);
    sim.hide();
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.front().front().toBool(), false);
    QCOMPARE(accepted.size(), 1);
    QCOMPARE(sim.result(), static_cast<int>(QDialog::Accepted));
    sim.show();
    QVERIFY(sim.isVisible());
    QCOMPARE(changed.size(), 1); // only hiding reports
    sim.close();
    QCOMPARE(changed.size(), 2);
    QVERIFY(!sim.isVisible());
}

void LightSimTest::reparentingWithSignalsBlockedIsSilent()
{
    SimMap map({SimMapLight(100.0, 60.0)});
    QWidget parent;
    parent.show();
    LightSim sim(map.model(), nullptr, "Sim");
    sim.show();
    sim.setResult(QDialog::Rejected);
    QSignalSpy changed(&sim, &LightSim::simStateChanged);
    const double scale = scaleOf(sim);
    {
        const QSignalBlocker blocker(&sim);
        sim.setParent(&parent, sim.windowFlags());
    }
    sim.show();
    QVERIFY(changed.isEmpty());
    QCOMPARE(sim.result(), static_cast<int>(QDialog::Rejected));
    QVERIFY(sim.isVisible());
    QCOMPARE(scaleOf(sim), scale);
    {
        const QSignalBlocker blocker(&sim);
        sim.setParent(nullptr, sim.windowFlags());
    }
    sim.show();
    QVERIFY(changed.isEmpty());
    QVERIFY(sim.isVisible());
    sim.hide();
    QCOMPARE(changed.size(), 1);
}

void LightSimTest::backgroundFillsTheScene()
{
    SimMap map({SimMapLight(100.0, 60.0)});
    LightSim sim(map.model(), nullptr, "Sim");
    sim.setBackground(QColor(1, 2, 3));
    QCOMPARE(sceneOf(sim)->backgroundBrush(), QBrush(QColor(1, 2, 3), Qt::SolidPattern));
    sim.show();
    QCOMPARE(viewOf(sim)->viewport()->grab().toImage().pixel(2, 2), qRgb(1, 2, 3));
}

void LightSimTest::quickPictureEqualsTheScenes_data()
{
    QTest::addColumn<bool>("withPlan");
    QTest::addColumn<int>("steps");
    for (const bool withPlan : {false, true}) {
        for (const int steps : {-4, -1, 0, 1, 5}) {
            QTest::addRow("%s, %d steps", withPlan ? "plan" : "bare", steps) << withPlan << steps;
        }
    }
}

void LightSimTest::quickPictureEqualsTheScenes()
{
    QFETCH(const bool, withPlan);
    QFETCH(const int, steps);
    const QString path = m_directory->filePath(QStringLiteral("plan.png"));
    QVERIFY(makePlan(path, 600, 500));
    std::vector<SimMapLight> lights;
    lights.reserve(1000);
    for (int i = 0; i < 1000; ++i) {
        lights.emplace_back((i * 37) % 560 + 0.3 * (i % 7), (i * 61) % 470 + 0.7 * (i % 3));
    }
    SimMap map(lights, withPlan ? path : QString());
    LightSim sim(map.model(), nullptr, "Sim");
    sim.resize(500, 450);
    sim.setBackground(QColor(30, 30, 40));
    sim.show();
    for (int i = 0; i < qAbs(steps); ++i) {
        steps < 0 ? sim.zoomOut() : sim.zoomIn();
    }
    for (int frame = 0; frame < 3; ++frame) {
        const QList<quint64> uids = map.model()->lightUids();
        for (const quint64 uid : uids) {
            const int n = static_cast<int>(uid) * (frame + 3);
            paint(map.model()->light(uid), QColor(n % 256, (n * 3) % 256, (n * 7) % 256));
        }
        sim.updateLights();
        viewOf(sim)->setQuickPainting(false);
        const QImage plain = sim.grab().toImage();
        viewOf(sim)->setQuickPainting(true);
        const QImage quick = sim.grab().toImage();
        QVERIFY(viewOf(sim)->wasPaintedQuickly());
        QCOMPARE(quick, plain);
    }
}

QTEST_MAIN(LightSimTest)
#include "LightSimTest.moc"
