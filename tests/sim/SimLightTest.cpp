#include "sim/SimLight.h"

#include "color/DisplayColor.h"
#include "map/Light.h"
#include "resources/Resources.h"

#include <QDomDocument>
#include <QGraphicsEllipseItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPen>
#include <QtTest>

#include <limits>
#include <memory>

namespace {

std::unique_ptr<Light> makeLight(const QString& content)
{
    QDomDocument document;
    document.setContent(QStringLiteral("<light>%1</light>").arg(content));
    QDomNode element = document.documentElement();
    return std::make_unique<Light>(&element);
}

QString chemistry(int number)
{
    return QStringLiteral("<properties><LED_CHEMISTRY>%1</LED_CHEMISTRY></properties>").arg(number);
}

QString mode(int number)
{
    return QStringLiteral("<tintweaveiomode>%1</tintweaveiomode>").arg(number);
}

} // namespace

class SimLightTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void placesItsItem_data();
    void placesItsItem();
    void lightWithoutPlaceStaysHidden_data();
    void lightWithoutPlaceStaysHidden();
    void showsTheColorOrItsGrey_data();
    void showsTheColorOrItsGrey();
    void showsThePaintedColorWithoutASimulatedOne();
    void neverPaintedIsInvalid();
    void reportsWhetherAnythingChanged();
    void copiesOfTheBrushKeepTheirColor();
    void redrawRestoresTheBrush();
};

void SimLightTest::initTestCase()
{
    initForgeResources();
}

void SimLightTest::placesItsItem_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QPointF>("place");
    // The light stands at (100.5, 50).
    QTest::newRow("ellipse by its corner")
        << 0 << 10.0 << 10.0 << QRectF(0, 0, 10, 10) << QPointF(110.5, 60.0);
    QTest::newRow("ellipse, cut sizes")
        << 0 << 20.9 << 7.5 << QRectF(0, 0, 20, 7) << QPointF(110.5, 60.0);
    QTest::newRow("rectangle by its middle")
        << 1 << 10.0 << 4.0 << QRectF(0, 0, 10, 4) << QPointF(105.5, 58.0);
    QTest::newRow("rectangle, cut sizes, full place")
        << 7 << 5.5 << 3.0 << QRectF(0, 0, 5, 3) << QPointF(107.75, 58.5);
}

void SimLightTest::placesItsItem()
{
    QFETCH(const int, shape);
    QFETCH(const double, width);
    QFETCH(const double, height);
    QFETCH(const QRectF, rect);
    QFETCH(const QPointF, place);
    const auto light = makeLight(QStringLiteral("<x>100.5</x><y>50</y>"));
    QGraphicsScene scene;
    const SimLight simLight(light.get(), &scene, shape, width, height);
    QAbstractGraphicsShapeItem* const item = simLight.item();
    QCOMPARE(simLight.light(), light.get());
    QCOMPARE(item->scene(), &scene);
    QCOMPARE(item->pos(), place);
    if (shape == 0) {
        QVERIFY(qgraphicsitem_cast<QGraphicsEllipseItem*>(item) != nullptr);
        QCOMPARE(qgraphicsitem_cast<QGraphicsEllipseItem*>(item)->rect(), rect);
    } else {
        QVERIFY(qgraphicsitem_cast<QGraphicsRectItem*>(item) != nullptr);
        QCOMPARE(qgraphicsitem_cast<QGraphicsRectItem*>(item)->rect(), rect);
    }
    QCOMPARE(item->pen(), QPen(Qt::black));
    QCOMPARE(item->brush(), QBrush(Qt::black, Qt::SolidPattern));
    QVERIFY(item->isVisible());
}

void SimLightTest::lightWithoutPlaceStaysHidden_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<bool>("placed");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    QTest::newRow("origin") << 0.0 << 0.0 << true;
    QTest::newRow("far") << 2.0e9 << -2.0e9 << true;
    QTest::newRow("nan x") << nan << 0.0 << false;
    QTest::newRow("nan y") << 0.0 << nan << false;
    QTest::newRow("infinite") << infinite << 0.0 << false;
    QTest::newRow("negative infinite") << 0.0 << -infinite << false;
    QTest::newRow("huge") << 1e308 << 0.0 << false;
    QTest::newRow("no 32-bit integer") << 0.0 << 2147483648.0 << false;
}

void SimLightTest::lightWithoutPlaceStaysHidden()
{
    QFETCH(const double, x);
    QFETCH(const double, y);
    QFETCH(const bool, placed);
    LightPosition position;
    position.x = x;
    position.y = y;
    QCOMPARE(SimLight::isPlaced(position), placed);
    const auto light =
        makeLight(QStringLiteral("<x>%1</x><y>%2</y>").arg(x, 0, 'g', 17).arg(y, 0, 'g', 17));
    QGraphicsScene scene(0, 0, 100, 100);
    SimLight simLight(light.get(), &scene, 0, 10.0, 10.0);
    QCOMPARE(simLight.item()->isVisible(), placed);
    simLight.redraw();
    QCOMPARE(simLight.item()->isVisible(), placed);
}

void SimLightTest::showsTheColorOrItsGrey_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("isAbsolute"); // painted with a Yxy colour
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("shown");

    const QColor orange(200, 100, 50);
    // (11 * 200 + 16 * 100 + 5 * 50) / 32 = 4050 / 32 = 126.56
    const QColor orangeGrey(126, 126, 126);
    QTest::newRow("three colours") << QString() << false << orange << orange;
    QTest::newRow("three colours, absolute") << QString() << true << orange << orange;
    for (const int single : {7, 8, 9, 10, 11}) {
        QTest::addRow("one channel, chemistry %d", single)
            << chemistry(single) << false << orange << orangeGrey;
    }
    // No exception for absolute colours here.
    QTest::newRow("one channel, absolute") << chemistry(7) << true << orange << orangeGrey;
    QTest::newRow("one channel goes before mode 16")
        << chemistry(7) + mode(16) << false << orange << orangeGrey;

    // green 100 / 2 = 50: (11 * 200 + 16 * 50 + 5 * 50) / 32 = 3250 / 32 = 101.56
    const QColor orangeWhite(101, 101, 101);
    QTest::newRow("mode 16") << mode(16) << false << orange << orangeWhite;
    QTest::newRow("mode 20") << mode(20) << false << orange << orangeWhite;
    QTest::newRow("mode 16, absolute") << mode(16) << true << orange << orange;
    QTest::newRow("mode 20, absolute") << mode(20) << true << orange << orange;
    QTest::newRow("mode 17") << mode(17) << false << orange << orange;
    QTest::newRow("mode 16, warm only")
        << mode(16) << false << QColor(255, 0, 255) << QColor(127, 127, 127);
    // green 255 / 2 = 127 raises red and blue: 32 * 127 / 32
    QTest::newRow("mode 16, cool only")
        << mode(16) << false << QColor(0, 255, 0) << QColor(127, 127, 127);
    // green 7 / 2 = 3; red 3, blue 9: (33 + 48 + 45) / 32 = 3.9
    QTest::newRow("mode 16, integer half")
        << mode(16) << false << QColor(2, 7, 9) << QColor(3, 3, 3);
    QTest::newRow("mode 16, white")
        << mode(16) << false << QColor(255, 255, 255) << QColor(191, 191, 191);
    // Two channels by the input mode, but the mode of the file is 0 and stays what counts.
    QTest::newRow("effective mode 16 only")
        << QStringLiteral("<properties><CREST_INPUT_MODE>0</CREST_INPUT_MODE></properties>")
        << false << orange << orange;

    QTest::newRow("chemistry 15") << chemistry(15) << false << orange << orangeGrey;
    QTest::newRow("chemistry 15, absolute") << chemistry(15) << true << orange << orange;
    QTest::newRow("chemistry 15 with mode 16")
        << chemistry(15) + mode(16) << false << orange << orangeWhite;
    QTest::newRow("chemistry 15 with mode 16, absolute")
        << chemistry(15) + mode(16) << true << orange << orange;
    const QString profile26 = QStringLiteral("<sn>6881280</sn>") + chemistry(6);
    QTest::newRow("profile 26") << profile26 << false << orange << orangeGrey;
    QTest::newRow("profile 26, absolute") << profile26 << true << orange << orange;
    // (11 + 16 + 5) * 255 / 32
    QTest::newRow("grey of white")
        << chemistry(7) << false << QColor(255, 255, 255) << QColor(255, 255, 255);
}

void SimLightTest::showsTheColorOrItsGrey()
{
    QFETCH(const QString, content);
    QFETCH(const bool, isAbsolute);
    QFETCH(const QColor, color);
    QFETCH(const QColor, shown);
    const auto light = makeLight(content);
    if (content.contains(QLatin1String("6881280"))) {
        QCOMPARE(light->tintweaveProfileId(), 26);
    }
    QGraphicsScene scene;
    SimLight simLight(light.get(), &scene, 0, 10.0, 10.0);
    light->reset();
    light->mixColor(VelaColor(color), 1);
    light->mixSimColor(color, 1);
    if (isAbsolute) {
        VelaColor absolute;
        absolute.setYxyF(0.5, 0.4, 0.4);
        light->mixColorRef() = absolute;
    }
    QVERIFY(simLight.redraw());
    QCOMPARE(simLight.item()->brush().style(), Qt::SolidPattern);
    QCOMPARE(simLight.item()->brush().color().rgba(), shown.rgba());
    QCOMPARE(simLight.color().rgba(), shown.rgba());
}

void SimLightTest::showsThePaintedColorWithoutASimulatedOne()
{
    const auto light = makeLight(mode(16)); // whose grey is for simulated colours alone
    QGraphicsScene scene;
    SimLight simLight(light.get(), &scene, 0, 10.0, 10.0);
    light->mixColorRef() = VelaColor(QColor(10, 200, 30, 128));
    QVERIFY(!light->hasSimColor());
    simLight.redraw();
    QCOMPARE(simLight.item()->brush().color().rgba(), qRgba(10, 200, 30, 128));
    QCOMPARE(simLight.color(), toDisplayQColor(VelaColor(QColor(10, 200, 30, 128))));
}

void SimLightTest::neverPaintedIsInvalid()
{
    const auto light = makeLight(QString());
    QGraphicsScene scene;
    SimLight simLight(light.get(), &scene, 0, 10.0, 10.0);
    simLight.redraw();
    QVERIFY(!simLight.item()->brush().color().isValid());
    QCOMPARE(simLight.item()->brush().style(), Qt::SolidPattern);
    light->reset(); // from here on it has a valid black
    QVERIFY(light->hasSimColor());
    simLight.redraw();
    QCOMPARE(simLight.item()->brush().color(), QColor(Qt::black));
}

void SimLightTest::reportsWhetherAnythingChanged()
{
    const auto light = makeLight(QString());
    QGraphicsScene scene;
    SimLight simLight(light.get(), &scene, 0, 10.0, 10.0);
    const auto paint = [&light](const QColor& color) {
        light->reset();
        light->mixColor(VelaColor(color), 1);
        light->mixSimColor(color, 1);
    };
    paint(Qt::red);
    QVERIFY(simLight.redraw());
    QVERIFY(!simLight.redraw());
    paint(Qt::red);
    QVERIFY(!simLight.redraw());
    paint(Qt::green);
    QVERIFY(simLight.redraw());
}

void SimLightTest::copiesOfTheBrushKeepTheirColor()
{
    const auto light = makeLight(QString());
    QGraphicsScene scene;
    SimLight simLight(light.get(), &scene, 0, 10.0, 10.0);
    light->reset();
    light->mixColor(VelaColor(QColor(Qt::red)), 1);
    light->mixSimColor(Qt::red, 1);
    const QBrush before = simLight.item()->brush();
    simLight.redraw();
    const QBrush after = simLight.item()->brush();
    light->reset();
    simLight.redraw();
    QCOMPARE(before.color(), QColor(Qt::black));
    QCOMPARE(after.color(), QColor(Qt::red));
    QCOMPARE(simLight.item()->brush().color(), QColor(Qt::black));
}

void SimLightTest::redrawRestoresTheBrush()
{
    const auto light = makeLight(QString());
    QGraphicsScene scene;
    SimLight simLight(light.get(), &scene, 0, 10.0, 10.0);
    light->reset();
    simLight.redraw();
    simLight.item()->setBrush(Qt::yellow);
    QVERIFY(simLight.redraw());
    QCOMPARE(simLight.item()->pen(), QPen(Qt::black));
    QCOMPARE(simLight.item()->brush(), QBrush(Qt::black, Qt::SolidPattern));
    QVERIFY(simLight.item()->isVisible());
}

QTEST_MAIN(SimLightTest)
#include "SimLightTest.moc"
