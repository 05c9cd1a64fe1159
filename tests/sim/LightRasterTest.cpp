#include "sim/LightRaster.h"

#include "sim/SimView.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsPixmapItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QPen>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWidget>
#include <QtTest>

#include <vector>

namespace {

enum class Layout { Grid, Scattered, Crowded, Stacked };
enum class Alpha { Opaque, Some, All };
enum class Ground { Bare, Plan, Background, PlanOnBackground, GlassPlan, GlassBackground };

QPixmap makePlan(int alpha)
{
    QImage plan(700, 500, QImage::Format_ARGB32);
    for (int y = 0; y < plan.height(); ++y) {
        for (int x = 0; x < plan.width(); ++x) {
            plan.setPixelColor(x, y,
                               QColor((x * 7) % 256, (y * 5) % 256, (x + 3 * y) % 256, alpha));
        }
    }
    return QPixmap::fromImage(plan);
}

/// A window with the view inset from its edges, as in the program.
struct Rig
{
    QWidget window;
    QGraphicsScene scene{0.0, 0.0, 700.0, 500.0};
    SimView view{&window};
    QGraphicsPixmapItem* plan = nullptr;
    std::vector<QAbstractGraphicsShapeItem*> lights;
    QRandomGenerator random{20240611};

    explicit Rig(Layout layout = Layout::Scattered, int count = 400, Ground ground = Ground::Bare,
                 bool rectangles = false)
    {
        auto* const box = new QVBoxLayout(&window);
        box->addWidget(&view);
        window.resize(420, 330);
        view.setScene(&scene);
        if (ground == Ground::Background || ground == Ground::PlanOnBackground) {
            scene.setBackgroundBrush(QColor(40, 60, 90));
        }
        if (ground == Ground::GlassBackground) {
            scene.setBackgroundBrush(QColor(200, 60, 90, 77));
        }
        if (ground == Ground::Plan || ground == Ground::PlanOnBackground) {
            plan = scene.addPixmap(makePlan(255));
        }
        if (ground == Ground::GlassPlan) {
            plan = scene.addPixmap(makePlan(100));
        }
        for (int i = 0; i < count; ++i) {
            QAbstractGraphicsShapeItem* item = nullptr;
            if (rectangles) {
                item = new QGraphicsRectItem(QRectF(0, 0, 10, 10));
            } else {
                item = new QGraphicsEllipseItem(QRectF(0, 0, 10, 10));
            }
            item->setPos(place(layout, i));
            item->setPen(QPen(Qt::black));
            scene.addItem(item);
            lights.push_back(item);
        }
        paintLights(Alpha::Opaque);
        view.setItems(lights, plan);
        window.show();
    }

    QPointF place(Layout layout, int i)
    {
        switch (layout) {
        case Layout::Grid: {
            const int row = i / 40;
            return QPointF(12.0 * (i % 40) + 10.0, 12.0 * row + 10.0);
        }
        case Layout::Scattered:
            return QPointF(random.bounded(720.0) - 10.0, random.bounded(520.0) - 10.0);
        case Layout::Crowded:
            return QPointF(random.bounded(60.0) + 100.0, random.bounded(60.0) + 100.0);
        case Layout::Stacked:
            break;
        }
        return QPointF(33.25, 44.5);
    }

    void paintLights(Alpha alpha)
    {
        for (std::size_t i = 0; i < lights.size(); ++i) {
            QColor color(static_cast<QRgb>(random.generate()) | 0xFF000000U);
            if (alpha == Alpha::All || (alpha == Alpha::Some && i % 3 == 0)) {
                color.setAlpha(random.bounded(256));
            }
            lights[i]->setBrush(color);
        }
    }

    void passColors()
    {
        for (std::size_t i = 0; i < lights.size(); ++i) {
            view.setLightColor(i, lights[i]->brush().color());
        }
        view.viewport()->update();
    }

    void zoom(double scale) { view.setTransform(QTransform::fromScale(scale, scale)); }

    QImage picture(bool quick, qreal ratio = 1.0)
    {
        view.setQuickPainting(quick);
        QImage image(window.size() * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        window.render(&image);
        return image;
    }
};

QString firstDifference(const QImage& a, const QImage& b)
{
    int differing = 0;
    QString first;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y) && differing++ == 0) {
                first = QStringLiteral("(%1, %2): %3 instead of %4")
                            .arg(x)
                            .arg(y)
                            .arg(b.pixel(x, y), 8, 16)
                            .arg(a.pixel(x, y), 8, 16);
            }
        }
    }
    return differing == 0 ? QString()
                          : QStringLiteral("%1 pixels, first %2").arg(differing).arg(first);
}

} // namespace

Q_DECLARE_METATYPE(Layout)
Q_DECLARE_METATYPE(Alpha)
Q_DECLARE_METATYPE(Ground)

class LightRasterTest : public QObject
{
    Q_OBJECT

private slots:
    void paintsAsTheSceneDoes_data();
    void paintsAsTheSceneDoes();
    void followsScrolling_data();
    void followsScrolling();
    void followsSize();
    void followsNewColors();
    void followsBackgroundAndPalette();
    void paintsAtTwicePixelDensity();
    void scenePaintsPartsWhileNoRasterStands();
    void rasterServesPartsOnceItStands();
    void hiddenLightsDoNotShow();
    void lightsFarAwayDoNotShow();
    void refusesWhatIsNoBrushAndOutline();
    void sceneServesOtherDevices();
};

void LightRasterTest::paintsAsTheSceneDoes_data()
{
    QTest::addColumn<Layout>("layout");
    QTest::addColumn<double>("scale");
    QTest::addColumn<Alpha>("alpha");
    QTest::addColumn<Ground>("ground");
    QTest::addColumn<bool>("rectangles");

    const std::vector<std::pair<const char*, Layout>> layouts = {{"grid", Layout::Grid},
                                                                 {"scattered", Layout::Scattered},
                                                                 {"crowded", Layout::Crowded},
                                                                 {"stacked", Layout::Stacked}};
    const std::vector<double> scales = {0.0005, 0.003, 0.02, 0.1,      0.25,   0.31640625, 0.5,
                                        0.5625, 0.75,  0.99, 1.0,      1.0001, 1.5,        4.0 / 3,
                                        2.0,    2.5,   7.3,  16.0 / 9, 40.0};
    const std::vector<std::pair<const char*, Alpha>> alphas = {
        {"opaque", Alpha::Opaque}, {"some clear", Alpha::Some}, {"all clear", Alpha::All}};
    const std::vector<std::pair<const char*, Ground>> grounds = {
        {"bare", Ground::Bare},
        {"plan", Ground::Plan},
        {"background", Ground::Background},
        {"plan on background", Ground::PlanOnBackground},
        {"glass plan", Ground::GlassPlan},
        {"glass background", Ground::GlassBackground}};

    std::size_t turn = 0;
    for (const auto& layout : layouts) {
        for (const double scale : scales) {
            for (const auto& alpha : alphas) {
                const auto& ground = grounds[turn % grounds.size()];
                const bool rectangles = turn % 5 == 4;
                ++turn;
                QTest::addRow("%s, scale %g, %s, %s%s", layout.first, scale, alpha.first,
                              ground.first, rectangles ? ", rectangles" : "")
                    << layout.second << scale << alpha.second << ground.second << rectangles;
            }
        }
    }
}

void LightRasterTest::paintsAsTheSceneDoes()
{
    QFETCH(const Layout, layout);
    QFETCH(const double, scale);
    QFETCH(const Alpha, alpha);
    QFETCH(const Ground, ground);
    QFETCH(const bool, rectangles);

    Rig rig(layout, 400, ground, rectangles);
    rig.paintLights(alpha);
    rig.passColors();
    rig.zoom(scale);
    rig.view.centerOn(rig.lights[200]);
    const QImage plain = rig.picture(false);
    QVERIFY(!rig.view.wasPaintedQuickly());
    const QImage quick = rig.picture(true);
    QVERIFY(rig.view.wasPaintedQuickly());
    QCOMPARE(firstDifference(plain, quick), QString());
    if (scale >= 0.1) { // there was something to compare
        for (QAbstractGraphicsShapeItem* const light : rig.lights) {
            light->setVisible(false);
        }
        QVERIFY(rig.picture(false) != plain);
    }
}

void LightRasterTest::followsScrolling_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("1") << 1.0;
    QTest::newRow("1.77") << 16.0 / 9.0;
    QTest::newRow("3.3") << 3.3;
}

void LightRasterTest::followsScrolling()
{
    QFETCH(const double, scale);
    Rig rig(Layout::Scattered, 600, Ground::Plan);
    rig.zoom(scale);
    for (const int step : {0, 1, 7, 40, 111}) {
        rig.view.horizontalScrollBar()->setValue(step);
        rig.view.verticalScrollBar()->setValue(step / 2);
        const QImage plain = rig.picture(false);
        const QImage quick = rig.picture(true);
        QVERIFY(rig.view.wasPaintedQuickly());
        QCOMPARE(firstDifference(plain, quick), QString());
    }
}

void LightRasterTest::followsSize()
{
    Rig rig(Layout::Scattered, 600, Ground::Plan);
    rig.zoom(0.5625);
    for (const QSize size : {QSize(300, 300), QSize(777, 501), QSize(120, 90)}) {
        rig.window.resize(size);
        const QImage plain = rig.picture(false);
        const QImage quick = rig.picture(true);
        QVERIFY(rig.view.wasPaintedQuickly());
        QCOMPARE(firstDifference(plain, quick), QString());
    }
}

void LightRasterTest::followsNewColors()
{
    Rig rig(Layout::Crowded, 300, Ground::Plan);
    rig.zoom(0.75);
    for (const Alpha alpha :
         {Alpha::Opaque, Alpha::Opaque, Alpha::All, Alpha::Some, Alpha::Opaque}) {
        rig.paintLights(alpha);
        const QImage plain = rig.picture(false);
        rig.passColors();
        const QImage quick = rig.picture(true);
        QVERIFY(rig.view.wasPaintedQuickly());
        QCOMPARE(firstDifference(plain, quick), QString());
    }
}

void LightRasterTest::followsBackgroundAndPalette()
{
    Rig rig(Layout::Scattered, 200, Ground::Bare);
    const auto difference = [&rig] {
        const QImage plain = rig.picture(false);
        return firstDifference(plain, rig.picture(true));
    };
    QCOMPARE(difference(), QString());
    rig.scene.setBackgroundBrush(QColor(12, 200, 33));
    QCOMPARE(difference(), QString());
    QVERIFY(rig.view.wasPaintedQuickly());
    rig.scene.setBackgroundBrush(Qt::NoBrush);
    QPalette palette = rig.view.palette();
    palette.setColor(QPalette::Base, QColor(90, 20, 20));
    rig.view.setPalette(palette);
    QCOMPARE(difference(), QString());
    QVERIFY(rig.view.wasPaintedQuickly());
    palette.setColor(QPalette::Base, QColor(90, 20, 20, 100));
    rig.view.setPalette(palette);
    QCOMPARE(difference(), QString());
    QVERIFY(!rig.view.wasPaintedQuickly()); // what shines through is not the view's to know
}

void LightRasterTest::paintsAtTwicePixelDensity()
{
    for (const double scale : {0.3, 0.5, 1.0, 1.7}) {
        Rig rig(Layout::Scattered, 600, Ground::PlanOnBackground);
        rig.paintLights(Alpha::Some);
        rig.passColors();
        rig.zoom(scale);
        const QImage plain = rig.picture(false, 2.0);
        const QImage quick = rig.picture(true, 2.0);
        QVERIFY(rig.view.wasPaintedQuickly());
        QCOMPARE(firstDifference(plain, quick), QString());
    }
}

void LightRasterTest::scenePaintsPartsWhileNoRasterStands()
{
    Rig rig;
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    rig.zoom(0.75);
    rig.view.viewport()->repaint(QRect(10, 10, 40, 40));
    // The zoom asked for a full paint, which this may have joined.
    rig.view.viewport()->repaint();
    QVERIFY(rig.view.wasPaintedQuickly());
    rig.view.horizontalScrollBar()->setValue(rig.view.horizontalScrollBar()->value() + 1);
    QImage image(rig.window.size(), QImage::Format_RGB32);
    rig.view.viewport()->render(&image, QPoint(), QRegion(5, 5, 30, 30));
    QVERIFY(!rig.view.wasPaintedQuickly());
}

void LightRasterTest::rasterServesPartsOnceItStands()
{
    Rig rig(Layout::Scattered, 600, Ground::Plan);
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    rig.view.viewport()->repaint();
    QVERIFY(rig.view.wasPaintedQuickly());
    rig.view.viewport()->repaint(QRect(10, 10, 40, 40));
    QVERIFY(rig.view.wasPaintedQuickly());
}

void LightRasterTest::hiddenLightsDoNotShow()
{
    Rig rig(Layout::Grid, 100);
    rig.view.centerOn(rig.lights[20]);
    const QImage all = rig.picture(true);
    rig.lights[20]->setVisible(false);
    rig.view.setItems(rig.lights, rig.plan);
    const QImage quick = rig.picture(true);
    QVERIFY(rig.view.wasPaintedQuickly());
    QVERIFY(all != quick);
    QCOMPARE(firstDifference(rig.picture(false), quick), QString());
}

void LightRasterTest::lightsFarAwayDoNotShow()
{
    Rig rig(Layout::Grid, 100);
    rig.lights[3]->setPos(2147480000.0, 0.0);
    rig.lights[4]->setPos(-2147480000.0, -2147480000.0);
    rig.view.setItems(rig.lights, rig.plan);
    const QImage quick = rig.picture(true);
    QVERIFY(rig.view.wasPaintedQuickly());
    QCOMPARE(firstDifference(rig.picture(false), quick), QString());
}

void LightRasterTest::refusesWhatIsNoBrushAndOutline()
{
    QGraphicsScene scene(0, 0, 100, 100);
    QGraphicsEllipseItem* const item = scene.addEllipse(QRectF(0, 0, 10, 10));
    LightRaster::Geometry geometry;
    geometry.size = QSize(100, 100);
    geometry.area = QRect(10, 10, 80, 80);
    geometry.format = QImage::Format_RGB32;

    LightRaster raster;
    QVERIFY(!raster.build(geometry, {}));
    QVERIFY(raster.build(geometry, {item}));
    QVERIFY(raster.stands());

    geometry.view.rotate(30.0);
    QVERIFY(!raster.build(geometry, {item}));
    QVERIFY(!raster.stands());
    geometry.view = QTransform::fromScale(0.0, 0.0);
    QVERIFY(!raster.build(geometry, {item}));
    geometry.view = QTransform();
    geometry.area = QRect(50, 50, 80, 80); // reaches out of the device
    QVERIFY(!raster.build(geometry, {item}));
    geometry.area = QRect();
    QVERIFY(!raster.build(geometry, {item}));

    geometry.area = QRect(0, 0, 100, 100);
    QGraphicsEllipseItem* const larger = scene.addEllipse(QRectF(0, 0, 10, 10));
    larger->setScale(2.0);
    QVERIFY(!raster.build(geometry, {item, larger}));
    item->setPen(QPen(Qt::red)); // leaves red of any colour below: no measure of its blending
    QVERIFY(!raster.build(geometry, {item}));
}

void LightRasterTest::sceneServesOtherDevices()
{
    Rig rig;
    rig.view.setQuickPainting(true);
    QImage image(rig.window.size(), QImage::Format_RGB16);
    rig.window.render(&image);
    QVERIFY(!rig.view.wasPaintedQuickly());
}

QTEST_MAIN(LightRasterTest)
#include "LightRasterTest.moc"
