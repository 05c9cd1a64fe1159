#include "map/Light.h"

#include "map/MapModel.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QSignalSpy>
#include <QtTest>

class LightTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void withoutAnElementEveryDefaultStands();
    void resetMakesValidBlack();
    void resetLeavesTheCountOfAveragedColours();
    void attachForwardsThreeSignals();
    void attachingToAnotherModelLeavesTheFormer();
    void attachingToNothingKeepsTheModel();
    void carryOverKeepsAColourForTheNextFrame();
    void carryOverWithNothingKeptMakesTheColourInvalid();
    void setAlphaIsTheColours();
    void setAlphaOutOfRangeMakesTheColourInvalid();
    void lessThanOrders_data();
    void lessThanOrders();
    void lessThanIsFalseWithoutAController();
    void lightsLieInTheOrderOfTheirMaking();
};

void LightTest::withoutAnElementEveryDefaultStands()
{
    Light light(static_cast<QDomNode*>(nullptr));
    QCOMPARE(light.uid(), quint64(0));
    QCOMPARE(light.name(), QStringLiteral("Default Light"));
    QCOMPARE(light.lightNumber(), 0U);
    QCOMPARE(light.controllerUid(), quint64(0));
    QCOMPARE(light.port(), quint8(0));
    QCOMPARE(light.fixtureUid(), quint64(0));
    QCOMPARE(light.fixtureCode(), 0);
    QCOMPARE(light.position().x, 0.0);
    QCOMPARE(light.position().q0, 0.0);
    QCOMPARE(light.position().q3, 1.0);
    QCOMPARE(light.dimmingCurve(), 0U);
    QCOMPARE(light.resolution(), 1U);
    QCOMPARE(light.controlMode(), 0U);
    QCOMPARE(light.ledChemistry(), 0U);
    QVERIFY(light.deviceName().isEmpty());
    QCOMPARE(light.channel(), 0);
    QCOMPARE(light.serialNumber(), quint64(0xFFFFFFFF));
    QCOMPARE(light.footprint(), 3);
    QCOMPARE(light.channelCount(), 3);
    QCOMPARE(light.channelWidth(), 1);
    QVERIFY(!light.forwardFlag());
    QCOMPARE(light.tintweaveProfileId(), 0);
    QCOMPARE(light.tintweaveIoMode(), 0);
    QVERIFY(!light.halfFull());
    QCOMPARE(light.ioModeSet(), 1U);
    QCOMPARE(light.property(QStringLiteral("DMX Address"), QStringLiteral("none")),
             QStringLiteral("none"));
    QVERIFY(!light.isPainted());
    QVERIFY(!light.hasSimColor());
    QVERIFY(!light.mixColorRef().isValid());
}

void LightTest::resetMakesValidBlack()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.mixColor(VelaColor(Qt::red), 3);
    light.mixSimColor(Qt::red, 3);
    light.reset();
    const VelaColor mix = light.mixValue();
    QCOMPARE(mix.spec(), VelaColor::Rgb);
    QVERIFY(mix.isBlack());
    QCOMPARE(mix.alpha32(), 0xFFFFFFFFU);
    QCOMPARE(mix.channelLayout(), 1U);
    QCOMPARE(mix.profileId(), 0U);
    QVERIFY(mix.tintweave());
    QVERIFY(light.mixColorRef() == mix);
    QVERIFY(light.isPainted());
    QVERIFY(light.hasSimColor());
    QCOMPARE(light.simColor(), QColor(Qt::black));
    // The tops are back at 0: a layer of priority 0 is the first one again.
    light.mixColor(VelaColor(Qt::blue), 0);
    light.mixSimColor(Qt::blue, 0);
    QVERIFY(light.mixValue() == VelaColor(Qt::blue));
    QCOMPARE(light.simColor(), QColor(Qt::blue));
}

void LightTest::resetLeavesTheCountOfAveragedColours()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.mixColor(VelaColor(Qt::red), 1);
    light.mixColor(VelaColor(Qt::green), 1); // a count of 2
    light.reset();
    // The simulation's second colour takes its weight from that count: 1/2, not 1.
    light.mixSimColor(QColor(200, 0, 0), 1);
    light.mixSimColor(QColor(0, 0, 0), 1);
    QCOMPARE(light.simColor(), QColor(100, 0, 0));
}

void LightTest::attachForwardsThreeSignals()
{
    TestModel owner;
    Light light(static_cast<QDomNode*>(nullptr));
    light.attach(&owner.model);
    QSignalSpy updated(&owner.model, &MapModel::updatedLight);
    QSignalSpy moved(&owner.model, &MapModel::updatedLightPosition);
    QSignalSpy said(&owner.model, &MapModel::msg);
    emit light.updatedLight(5);
    emit light.updatedLightPosition(6);
    emit light.msg(QStringLiteral("seven"));
    QCOMPARE(updated.size(), 1);
    QCOMPARE(updated.first().first().toULongLong(), qulonglong(5));
    QCOMPARE(moved.size(), 1);
    QCOMPARE(moved.first().first().toULongLong(), qulonglong(6));
    QCOMPARE(said.size(), 1);
    QCOMPARE(said.first().first().toString(), QStringLiteral("seven"));
}

void LightTest::attachingToAnotherModelLeavesTheFormer()
{
    TestModel former;
    TestModel later;
    Light light(static_cast<QDomNode*>(nullptr));
    light.attach(&former.model);
    light.attach(&later.model);
    QSignalSpy old(&former.model, &MapModel::updatedLight);
    QSignalSpy updated(&later.model, &MapModel::updatedLight);
    emit light.updatedLight(5);
    QCOMPARE(old.size(), 0);
    QCOMPARE(updated.size(), 1);
}

void LightTest::attachingToNothingKeepsTheModel()
{
    TestModel owner("<controller><type>2</type><self>1</self><ip>10.0.0.1</ip></controller>"
                    "<controller><type>2</type><self>2</self><ip>10.0.0.2</ip></controller>");
    Element first(QStringLiteral("<c>1</c>"));
    Element second(QStringLiteral("<c>2</c>"));
    Light low(first.node());
    const Light high(second.node());
    low.attach(&owner.model);
    low.attach(nullptr);
    QSignalSpy updated(&owner.model, &MapModel::updatedLight);
    emit low.updatedLight(5);
    QCOMPARE(updated.size(), 0);
    QVERIFY(low.lessThan(high)); // which asks the model
}

void LightTest::carryOverKeepsAColourForTheNextFrame()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.mixColor(VelaColor::fromRgbF(1.0, 0.0, 0.0, 0.5), 1);
    const VelaColor stored = light.mixValue();
    light.carryOver(true);
    QVERIFY(light.mixValue().isBlack());
    light.mixColor(VelaColor(Qt::blue), 1);
    light.carryOver(false);
    QVERIFY(light.mixValue() == composite(stored, VelaColor(Qt::blue)));
}

void LightTest::carryOverWithNothingKeptMakesTheColourInvalid()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.mixColor(VelaColor(Qt::blue), 1);
    light.carryOver(false); // an invalid colour is opaque
    QVERIFY(!light.isPainted());
}

void LightTest::setAlphaIsTheColours()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.reset();
    light.setAlpha(0.5);
    QCOMPARE(light.mixValue().alpha32(), 0x80000000U); // truncate(0.5 x 4294967295 + 0.5)
    QVERIFY(light.mixValue().isBlack());
}

void LightTest::setAlphaOutOfRangeMakesTheColourInvalid()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.reset();
    light.setAlpha(1.5);
    QVERIFY(!light.isPainted());
}

void LightTest::lessThanOrders_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("by address, unsigned") << "<c>1</c><pn>9</pn>"
                                          << "<c>2</c><pn>1</pn>"; // 10.0.0.1 and 200.0.0.1
    QTest::newRow("then by port") << "<c>1</c><pn>1</pn><ch>9</ch>"
                                  << "<c>1</c><pn>2</pn><ch>0</ch>";
    QTest::newRow("then by DMX address, as a number") << "<c>1</c><ch>8</ch><sn>9</sn>"
                                                      << "<c>1</c><ch>100</ch><sn>1</sn>";
    QTest::newRow("then by serial number") << "<c>1</c><ch>8</ch><sn>9</sn>"
                                           << "<c>1</c><ch>8</ch><sn>10</sn>";
}

void LightTest::lessThanOrders()
{
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    TestModel owner("<controller><type>2</type><self>1</self><ip>10.0.0.1</ip></controller>"
                    "<controller><type>2</type><self>2</self><ip>200.0.0.1</ip></controller>");
    Element lowElement(first);
    Element highElement(second);
    Light low(lowElement.node());
    Light high(highElement.node());
    low.attach(&owner.model);
    high.attach(&owner.model);
    QVERIFY(low.lessThan(high));
    QVERIFY(!high.lessThan(low));
    QVERIFY(!low.lessThan(low));
}

void LightTest::lessThanIsFalseWithoutAController()
{
    TestModel owner("<controller><type>2</type><self>1</self></controller>");
    Element known(QStringLiteral("<c>1</c><sn>1</sn>"));
    Element unknown(QStringLiteral("<c>7</c><sn>2</sn>"));
    Light light(known.node());
    Light stray(unknown.node());
    QVERIFY(!light.lessThan(stray)); // no model either
    light.attach(&owner.model);
    stray.attach(&owner.model);
    QVERIFY(!light.lessThan(stray));
    QVERIFY(!stray.lessThan(light));
}

void LightTest::lightsLieInTheOrderOfTheirMaking()
{
    std::vector<std::unique_ptr<Light>> lights;
    for (int i = 0; i < 3000; ++i) { // more than one piece of memory
        lights.push_back(std::make_unique<Light>(static_cast<QDomNode*>(nullptr)));
    }
    lights[1].reset();
    lights[5].reset();
    lights.push_back(std::make_unique<Light>(static_cast<QDomNode*>(nullptr)));
    for (const auto& light : lights) {
        if (light) {
            QCOMPARE(light->name(), QStringLiteral("Default Light"));
            QCOMPARE(reinterpret_cast<quintptr>(light.get()) % 64, quintptr(0));
        }
    }
    lights.clear();
    const Light again(static_cast<QDomNode*>(nullptr));
    QCOMPARE(again.uid(), quint64(0));
}

QTEST_GUILESS_MAIN(LightTest)

#include "LightTest.moc"
