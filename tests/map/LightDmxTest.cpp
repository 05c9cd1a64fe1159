#include "color/ColorUtils.h"
#include "map/DmxCache.h"
#include "map/Light.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QtTest>

#include <limits>

namespace {

constexpr int kSize = 512;
constexpr char kStale = '\x55';

QString properties(const QString& content)
{
    return QStringLiteral("<properties>%1</properties>").arg(content);
}

/// Channels that reach a fixture of profile 0 as they are.
VelaColor channels(const QList<double>& levels, int layout)
{
    return VelaColor::fromNchannelF(QList<double>{1.0} + levels, static_cast<quint32>(layout), 0,
                                    false);
}

/// The bytes of `light` in a buffer that held others.
QByteArray written(Light& light, int size = kSize)
{
    QByteArray buffer(kSize, kStale);
    light.writeDmx(reinterpret_cast<quint8*>(buffer.data()), size);
    return buffer;
}

QByteArray at(int channel, const QByteArray& bytes)
{
    QByteArray buffer(kSize, kStale);
    return buffer.replace(channel, bytes.size(), bytes);
}

quint64 lookUps()
{
    return DmxCache::instance().lookUps();
}

} // namespace

class LightDmxTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void writesAtItsChannel();
    void writesUpToTheEndOfTheBuffer_data();
    void writesUpToTheEndOfTheBuffer();
    void writesNothingWhileInvalid();
    void layoutsDecideTheBytes_data();
    void layoutsDecideTheBytes();
    void curveAndModeReachTheConversion();
    void anUnchangedColourIsNotLookedUp();
    void resetBlackIsNotLookedUpAgain();
    void lightsOfOneKindShareTheirBytes();
    void lightsOfAnotherKindDont();
    void settlingTheLayoutForgetsTheLastColour();
    void aColourWrittenFromOutsideIsSeen();
    void nanIsConvertedEachTime();
    void unknownModesCurvesAndProfilesActAsZero();
};

void LightDmxTest::writesAtItsChannel()
{
    Element element(QStringLiteral("<ch>10</ch>"));
    Light light(element.node());
    light.mixColor(VelaColor(QColor(255, 128, 1)), 0);
    QCOMPARE(written(light), at(10, QByteArray("\xFF\x80\x01")));
}

void LightDmxTest::writesUpToTheEndOfTheBuffer_data()
{
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("writes");
    QTest::newRow("exactly to the end") << 509 << kSize << true;
    QTest::newRow("one byte more") << 510 << kSize << false;
    QTest::newRow("far beyond") << 5000 << kSize << false;
    QTest::newRow("near the greatest int") << std::numeric_limits<int>::max() << kSize << false;
    QTest::newRow("below 0") << -1 << kSize << false;
    QTest::newRow("far below 0") << std::numeric_limits<int>::min() + 1 << kSize << false;
    QTest::newRow("a smaller buffer") << 7 << 10 << true;
    QTest::newRow("a buffer too small") << 8 << 10 << false;
    QTest::newRow("no buffer") << 0 << 0 << false;
}

void LightDmxTest::writesUpToTheEndOfTheBuffer()
{
    QFETCH(const int, channel);
    QFETCH(const int, size);
    QFETCH(const bool, writes);
    Element element(QStringLiteral("<ch>%1</ch>").arg(channel));
    Light light(element.node());
    light.mixColor(VelaColor(QColor(1, 2, 3)), 0);
    const quint64 before = lookUps();
    QCOMPARE(written(light, size),
             writes ? at(channel, QByteArray("\x01\x02\x03")) : QByteArray(kSize, kStale));
    if (!writes) {
        QCOMPARE(lookUps(), before); // dropped before anything else
    }
}

void LightDmxTest::writesNothingWhileInvalid()
{
    Light light(static_cast<QDomNode*>(nullptr));
    QCOMPARE(written(light), QByteArray(kSize, kStale));
    light.mixColor(VelaColor(Qt::white), 0);
    QCOMPARE(written(light), at(0, QByteArray("\xFF\xFF\xFF")));
    light.mixColorRef().reset();
    QCOMPARE(written(light), QByteArray(kSize, kStale));
}

void LightDmxTest::layoutsDecideTheBytes_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<QByteArray>("bytes");
    const QString wide = QStringLiteral("<INPUT_RESOLUTION>0</INPUT_RESOLUTION>");
    const QString doubled = QStringLiteral("<HALF_FULL_MODE>1</HALF_FULL_MODE>");
    const QString triple = QStringLiteral("<LED_CHEMISTRY>254</LED_CHEMISTRY>");
    const VelaColor rgb(QColor(0x10, 0x20, 0x30));
    // Levels of 16 bits that read the same at 8: 0x10 is 4112 / 65535.
    const VelaColor four =
        channels({0x1010 / 65535.0, 0x2020 / 65535.0, 0x3030 / 65535.0, 0x4040 / 65535.0}, 3);
    const VelaColor five = channels(
        {0x1010 / 65535.0, 0x2020 / 65535.0, 0x3030 / 65535.0, 0x4040 / 65535.0, 0x5050 / 65535.0},
        2);
    QTest::newRow("RGB") << QString() << rgb << QByteArray::fromHex("102030");
    QTest::newRow("RGB, 16-bit") << wide << rgb << QByteArray::fromHex("101020203030");
    QTest::newRow("doubled") << doubled << rgb << QByteArray::fromHex("102030102030");
    QTest::newRow("doubled, 16-bit")
        << doubled + wide << rgb << QByteArray::fromHex("101020203030101020203030");
    QTest::newRow("four channels") << QStringLiteral("<LED_CHEMISTRY>1</LED_CHEMISTRY>") << four
                                   << QByteArray::fromHex("10203040");
    QTest::newRow("last one three times")
        << doubled + triple << four << QByteArray::fromHex("102030404040");
    QTest::newRow("last one three times, 16-bit")
        << doubled + triple + wide << four << QByteArray::fromHex("101020203030404040404040");
    QTest::newRow("that chemistry without doubling")
        << triple << rgb << QByteArray::fromHex("102030");
    QTest::newRow("251 has no last channel") << QStringLiteral("<LED_CHEMISTRY>251</LED_CHEMISTRY>")
                                             << rgb << QByteArray::fromHex("102000");
    QTest::newRow("252 has no last channel") << QStringLiteral("<LED_CHEMISTRY>252</LED_CHEMISTRY>")
                                             << rgb << QByteArray::fromHex("102000");
    QTest::newRow("251, 16-bit") << QStringLiteral("<LED_CHEMISTRY>251</LED_CHEMISTRY>") + wide
                                 << rgb << QByteArray::fromHex("101020200000");
    QTest::newRow("251, doubled") << QStringLiteral("<LED_CHEMISTRY>251</LED_CHEMISTRY>") + doubled
                                  << rgb << QByteArray::fromHex("102000102000");
    QTest::newRow("the widest, twenty bytes")
        << QStringLiteral("<LED_CHEMISTRY>3</LED_CHEMISTRY>") + wide + doubled << five
        << QByteArray::fromHex("1010202030304040505010102020303040405050");
    QTest::newRow("sixteen bytes")
        << QStringLiteral("<LED_CHEMISTRY>1</LED_CHEMISTRY>") + wide + doubled << four
        << QByteArray::fromHex("10102020303040401010202030304040");
    QTest::newRow("one channel, triple chemistry")
        << doubled + triple + QStringLiteral("<COLOR_CONTROL_MODE>6</COLOR_CONTROL_MODE>") << four
        << QByteArray::fromHex("1020");
}

void LightDmxTest::layoutsDecideTheBytes()
{
    QFETCH(const QString, xml);
    QFETCH(const VelaColor, color);
    QFETCH(const QByteArray, bytes);
    Element element(QStringLiteral("<ch>100</ch>") + properties(xml));
    for (int repeat = 0; repeat < 2; ++repeat) { // converted, then from the cache
        Light light(element.node());
        light.mixColor(color, 0);
        QCOMPARE(light.footprint(), bytes.size());
        QCOMPARE(written(light), at(100, bytes));
        QCOMPARE(written(light), at(100, bytes)); // and unchanged
    }
}

void LightDmxTest::curveAndModeReachTheConversion()
{
    // Two channels by the input mode: mode 16, whatever the file's mode says. A direct colour
    // passes its first two levels, at 16 bits and through no curve.
    Element element(QStringLiteral("<tintweaveiomode>9</tintweaveiomode>") +
                    properties(QStringLiteral("<CREST_INPUT_MODE>0</CREST_INPUT_MODE>"
                                              "<DIMMING_CURVE>2</DIMMING_CURVE>"
                                              "<COLOR_CONTROL_MODE>3</COLOR_CONTROL_MODE>")));
    Light light(element.node());
    const VelaColor color = VelaColor::fromRgb(200, 100, 50);
    light.mixColor(color, 0);
    quint8 expected[16] = {};
    ColorUtils::mapToChannels(color, true, 2, 1, expected, 0, 2, 0, 16);
    QCOMPARE(light.tintweaveIoMode(), 9);
    QCOMPARE(written(light), at(0, QByteArray(reinterpret_cast<const char*>(expected), 2)));
}

void LightDmxTest::anUnchangedColourIsNotLookedUp()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.mixColor(VelaColor(QColor(9, 8, 7)), 0);
    const quint64 before = lookUps();
    written(light);
    QCOMPARE(lookUps(), before + 1);
    written(light);
    light.reset();
    light.mixColor(VelaColor(QColor(9, 8, 7)), 0);
    QCOMPARE(written(light), at(0, QByteArray("\x09\x08\x07")));
    QCOMPARE(lookUps(), before + 1);
    light.reset();
    light.mixColorRef() = VelaColor(QColor(9, 8, 7)); // the same by another way
    written(light);
    QCOMPARE(lookUps(), before + 1);
}

void LightDmxTest::resetBlackIsNotLookedUpAgain()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.reset();
    QCOMPARE(written(light), at(0, QByteArray(3, '\0')));
    const quint64 before = lookUps();
    for (int frame = 0; frame < 3; ++frame) {
        light.reset();
        QCOMPARE(written(light), at(0, QByteArray(3, '\0')));
    }
    QCOMPARE(lookUps(), before);
}

void LightDmxTest::lightsOfOneKindShareTheirBytes()
{
    DmxCache& cache = DmxCache::instance();
    Element element(QStringLiteral("<sn>5</sn><ch>3</ch>"));
    Light first(static_cast<QDomNode*>(nullptr));
    Light second(element.node());
    const VelaColor color(QColor(71, 72, 73));
    first.mixColor(color, 0);
    second.mixColor(color, 0);
    written(first);
    const int size = cache.size();
    QCOMPARE(written(second), at(3, QByteArray("\x47\x48\x49")));
    QCOMPARE(cache.size(), size);
}

void LightDmxTest::lightsOfAnotherKindDont()
{
    DmxCache& cache = DmxCache::instance();
    const VelaColor color(QColor(81, 82, 83));
    Light plain(static_cast<QDomNode*>(nullptr));
    plain.mixColor(color, 0);
    written(plain);
    // Each differs from the plain light in one field of the key.
    const QStringList lists = {
        QStringLiteral("<INPUT_RESOLUTION>0</INPUT_RESOLUTION>"),
        QStringLiteral("<HALF_FULL_MODE>1</HALF_FULL_MODE>"),
        QStringLiteral("<DIMMING_CURVE>1</DIMMING_CURVE>"),
        QStringLiteral("<LED_CHEMISTRY>12</LED_CHEMISTRY>"),
        QStringLiteral("<LED_CHEMISTRY>1</LED_CHEMISTRY>"),
        QStringLiteral("<COLOR_CONTROL_MODE>2</COLOR_CONTROL_MODE>"),
    };
    for (const QString& list : lists) {
        const int size = cache.size();
        Element element(properties(list));
        Light light(element.node());
        light.mixColor(color, 0);
        written(light);
        QCOMPARE(cache.size(), size + 1);
    }
    Element mode(QStringLiteral("<tintweaveiomode>5</tintweaveiomode>"));
    Light light(mode.node());
    light.mixColor(color, 0);
    const int size = cache.size();
    written(light);
    QCOMPARE(cache.size(), size + 1);
}

void LightDmxTest::settlingTheLayoutForgetsTheLastColour()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.mixColor(VelaColor(QColor(4, 5, 6)), 0);
    written(light);
    const quint64 before = lookUps();
    light.lastChannel();
    QCOMPARE(written(light), at(0, QByteArray("\x04\x05\x06")));
    QCOMPARE(lookUps(), before + 1);
}

void LightDmxTest::aColourWrittenFromOutsideIsSeen()
{
    Light light(static_cast<QDomNode*>(nullptr));
    light.mixColor(VelaColor(QColor(1, 2, 3)), 0);
    written(light);
    light.mixColorRef() = VelaColor(QColor(7, 8, 9));
    QCOMPARE(written(light), at(0, QByteArray("\x07\x08\x09")));
    light.mixColorRef() = VelaColor(QColor(1, 2, 4));
    QCOMPARE(written(light), at(0, QByteArray("\x01\x02\x04")));
    light.reset();
    light.mixColorRef().setRgb8(5, 5, 5);
    QCOMPARE(written(light), at(0, QByteArray("\x05\x05\x05")));
    light.reset();
    light.mixColor(VelaColor(QColor(1, 2, 3)), 0); // the first of all again
    QCOMPARE(written(light), at(0, QByteArray("\x01\x02\x03")));
}

void LightDmxTest::nanIsConvertedEachTime()
{
    Light light(static_cast<QDomNode*>(nullptr));
    VelaColor color;
    color.setYxy(std::numeric_limits<double>::quiet_NaN(), 0.3, 0.3, 65535);
    light.mixColor(color, 0);
    const quint64 before = lookUps();
    const QByteArray first = written(light);
    QCOMPARE(written(light), first);
    QCOMPARE(lookUps(), before + 2);
}

void LightDmxTest::unknownModesCurvesAndProfilesActAsZero()
{
    const VelaColor color(QColor(33, 66, 99));
    Element element(QStringLiteral("<tintweaveiomode>-77</tintweaveiomode>") +
                    properties(QStringLiteral("<DIMMING_CURVE>4000000000</DIMMING_CURVE>"
                                              "<LED_CHEMISTRY>4000000000</LED_CHEMISTRY>")));
    Light light(element.node());
    light.mixColor(color, 0);
    QCOMPARE(written(light), at(0, QByteArray("\x21\x42\x63")));
}

QTEST_GUILESS_MAIN(LightDmxTest)

#include "LightDmxTest.moc"
