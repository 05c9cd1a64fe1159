#include "map/Light.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QVariant>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

QVariant field(Light& light, const QString& name)
{
    const QHash<QString, QVariant> fields = {
        {QStringLiteral("uid"), light.uid()},
        {QStringLiteral("name"), light.name()},
        {QStringLiteral("controller"), light.controllerUid()},
        {QStringLiteral("fixtureCode"), light.fixtureCode()},
        {QStringLiteral("fixture"), light.fixtureUid()},
        {QStringLiteral("port"), light.port()},
        {QStringLiteral("lightNumber"), light.lightNumber()},
        {QStringLiteral("x"), light.position().x},
        {QStringLiteral("y"), light.position().y},
        {QStringLiteral("z"), light.position().z},
        {QStringLiteral("q0"), light.position().q0},
        {QStringLiteral("q1"), light.position().q1},
        {QStringLiteral("q2"), light.position().q2},
        {QStringLiteral("q3"), light.position().q3},
        {QStringLiteral("channel"), light.channel()},
        {QStringLiteral("address"), light.property(QStringLiteral("DMX Address"))},
        {QStringLiteral("serial"), light.serialNumber()},
        {QStringLiteral("profile"), light.tintweaveProfileId()},
        {QStringLiteral("mode"), light.tintweaveIoMode()},
        {QStringLiteral("resolution"), light.resolution()},
        {QStringLiteral("curve"), light.dimmingCurve()},
        {QStringLiteral("control"), light.controlMode()},
        {QStringLiteral("chemistry"), light.ledChemistry()},
        {QStringLiteral("halfFull"), light.halfFull()},
        {QStringLiteral("ioModeSet"), light.ioModeSet()},
        {QStringLiteral("forward"), light.forwardFlag()},
        {QStringLiteral("device"), light.deviceName()},
    };
    return fields.value(name);
}

QString properties(const QString& content)
{
    return QStringLiteral("<properties>%1</properties>").arg(content);
}

constexpr quint64 kNone = 0xFFFFFFFFU;

} // namespace

class LightElementTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void keysAreRead_data();
    void keysAreRead();
    void propertiesSettleFields_data();
    void propertiesSettleFields();
    void displayValuesAreKept();
    void addressComesFromChannelAlone_data();
    void addressComesFromChannelAlone();
    void startupChannelsGoIntoStartupColors_data();
    void startupChannelsGoIntoStartupColors();
    void startupChannelsBeyondTheLightAreRemoved();
    void channelCountFollowsTheTable_data();
    void channelCountFollowsTheTable();
    void footprintFollowsWidthAndHalfFull_data();
    void footprintFollowsWidthAndHalfFull();
    void profileComesFromTheDictionary_data();
    void profileComesFromTheDictionary();
    void lastChannelIsTheLastByte_data();
    void lastChannelIsTheLastByte();
    void equalListsGiveEqualLights();
    void positionsOutOfRangeDontCountForExtents_data();
    void positionsOutOfRangeDontCountForExtents();
};

void LightElementTest::keysAreRead_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char* xml, const char* name, const QVariant& expected) {
        QTest::newRow(xml) << QString::fromLatin1(xml) << QString::fromLatin1(name) << expected;
    };
    row("<s>1A</s>", "uid", quint64(26));
    row("<self>ffffffffffffffff</self>", "uid", ~quint64(0));
    row("<s>xyz</s>", "uid", kNone);
    row("<s/>", "uid", kNone);
    row("<s>10000000000000000</s>", "uid", kNone);
    row("<s>1</s><self>2</self>", "uid", quint64(2));
    row("<n>Front</n>", "name", QStringLiteral("Front"));
    row("<name>Back</name>", "name", QStringLiteral("Back"));
    row("<n/>", "name", QString());
    row("<n><!--said--></n>", "name", QStringLiteral("said"));
    row("<n><b>deep</b></n>", "name", QString());
    row("<c>B</c>", "controller", quint64(11));
    row("<controller>10</controller>", "controller", quint64(16));
    row("<c>-</c>", "controller", kNone);
    row("<fc>1f</fc>", "fixtureCode", 31);
    row("<fixturecode>10</fixturecode>", "fixtureCode", 16);
    row("<fc>g</fc>", "fixtureCode", -1);
    row("<f>C</f>", "fixture", quint64(12));
    row("<fixture>D</fixture>", "fixture", quint64(13));
    row("<f>?</f>", "fixture", kNone);
    row("<pn>3</pn>", "port", quint8(3));
    row("<pn>259</pn>", "port", quint8(3));
    row("<pn>A</pn>", "port", quint8(0));
    row("<ln>42</ln>", "lightNumber", 42U);
    row("<lightnumber>43</lightnumber>", "lightNumber", 43U);
    row("<ln>no</ln>", "lightNumber", 0U);
    row("<x>1.5</x>", "x", 1.5);
    row("<y>-2.25</y>", "y", -2.25);
    row("<z>1e3</z>", "z", 1000.0);
    row("<x>left</x>", "x", 0.0);
    row("<q0>0.5</q0>", "q0", 0.5);
    row("<q1>0.25</q1>", "q1", 0.25);
    row("<q2>-0.5</q2>", "q2", -0.5);
    row("<q3>0.75</q3>", "q3", 0.75);
    row("<q3>?</q3>", "q3", 0.0);
    row("<x>1</x>", "q3", 1.0);
    row("<ch>7</ch>", "channel", 7);
    row("<channel>8</channel>", "channel", 8);
    row("<ch>7.5</ch>", "channel", 0);
    row("<ch>0</ch>", "address", QStringLiteral("1"));
    row("<ch>0</ch>", "channel", 0);
    row("<ch>2147483647</ch>", "address", QStringLiteral("2147483648"));
    row("<ch>-1</ch>", "channel", -1);
    row("<sn>4660</sn>", "serial", quint64(4660));
    row("<sn>1A</sn>", "serial", kNone); // decimal, unlike the uids
    row("<serialnumber>5</serialnumber>", "serial", kNone);
    row("<tintweaveprofileid>12</tintweaveprofileid>", "profile", 0); // never survives
    row("<tintweaveiomode>7</tintweaveiomode>", "mode", 7);
    row("<tintweaveiomode>-</tintweaveiomode>", "mode", 0);
    row("<q4>1</q4><l>2</l><light>3</light>", "uid", quint64(0));
}

void LightElementTest::keysAreRead()
{
    QFETCH(const QString, xml);
    QFETCH(const QString, name);
    QFETCH(const QVariant, expected);
    Element element(xml);
    Light light(element.node());
    QCOMPARE(field(light, name), expected);
}

void LightElementTest::propertiesSettleFields_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char* xml, const char* name, const QVariant& expected) {
        QTest::newRow(xml) << QString::fromLatin1(xml) << QString::fromLatin1(name) << expected;
    };
    row("<INPUT_RESOLUTION>0</INPUT_RESOLUTION>", "resolution", 0U);
    row("<INPUT_RESOLUTION>1</INPUT_RESOLUTION>", "resolution", 1U);
    row("<INPUT_RESOLUTION>wide</INPUT_RESOLUTION>", "resolution", 0U);
    row("<DIMMING_CURVE>2</DIMMING_CURVE>", "curve", 2U);
    row("<COLOR_CONTROL_MODE>4</COLOR_CONTROL_MODE>", "control", 4U);
    row("<PLAINWEAVE_MODE>5</PLAINWEAVE_MODE>", "control", 5U);
    row("<PLAINWEAVE_MODE>5</PLAINWEAVE_MODE><COLOR_CONTROL_MODE>1</COLOR_CONTROL_MODE>", "control",
        1U);
    row("<LED_CHEMISTRY>15</LED_CHEMISTRY>", "chemistry", 15U);
    row("<LED_CHEMISTRY>RGBW</LED_CHEMISTRY>", "chemistry", 2U); // already the display value
    row("<LED_CHEMISTRY>1</LED_CHEMISTRY><LED_CHEMISTRY>2</LED_CHEMISTRY>", "chemistry", 1U);
    row("<HALF_FULL_MODE>1</HALF_FULL_MODE>", "halfFull", true);
    row("<HALF_FULL_MODE>0</HALF_FULL_MODE>", "halfFull", false);
    row("<CREST_INPUT_MODE>0</CREST_INPUT_MODE>", "ioModeSet", 0U);
    row("<COLOR_CONTROL_MODE>1</COLOR_CONTROL_MODE>", "forward", false);
    row("<COLOR_CONTROL_MODE>2</COLOR_CONTROL_MODE>", "forward", true);
    row("<DEVICE_INFO>D.0001-P.0002-F.0007</DEVICE_INFO>", "resolution", 1U);
}

void LightElementTest::propertiesSettleFields()
{
    QFETCH(const QString, xml);
    QFETCH(const QString, name);
    QFETCH(const QVariant, expected);
    Element element(properties(xml));
    Light light(element.node());
    QCOMPARE(field(light, name), expected);
    QCOMPARE(light.footprint(),
             light.channelCount() * light.channelWidth() * (light.halfFull() ? 2 : 1));
}

void LightElementTest::displayValuesAreKept()
{
    Element element(properties(QStringLiteral(
        "<INPUT_RESOLUTION>0</INPUT_RESOLUTION><FOO>bar</FOO><LED_CHEMISTRY>99</LED_CHEMISTRY>")));
    const Light light(element.node());
    QCOMPARE(light.property(QStringLiteral("Resolution")), QStringLiteral("16-bit"));
    QCOMPARE(light.property(QStringLiteral("Unsupported Token: FOO")), QStringLiteral("bar"));
    QCOMPARE(light.property(QStringLiteral("Led Chemistry")), QStringLiteral("99"));
    QCOMPARE(light.property(QStringLiteral("Dimming Curve"), QStringLiteral("-")),
             QStringLiteral("-"));
}

void LightElementTest::addressComesFromChannelAlone_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("channel");
    QTest::addColumn<QString>("address");
    QTest::newRow("a token alone")
        << "<properties><DMX_OFFSET>7</DMX_OFFSET></properties>" << 0 << QString();
    QTest::newRow("a token behind a channel")
        << "<ch>4</ch><properties><DMX_OFFSET>7</DMX_OFFSET></properties>" << 4 << "5";
    QTest::newRow("a token ahead of a channel")
        << "<properties><DMX_OFFSET>7</DMX_OFFSET></properties><ch>4</ch>" << 4 << "5";
    QTest::newRow("anywhere in the token")
        << "<properties><MY_DMX_OFFSET_2>7</MY_DMX_OFFSET_2></properties>" << 0 << QString();
    QTest::newRow("two channels") << "<ch>4</ch><channel>6</channel>" << 6 << "7";
}

void LightElementTest::addressComesFromChannelAlone()
{
    QFETCH(const QString, xml);
    QFETCH(const int, channel);
    QFETCH(const QString, address);
    Element element(xml);
    const Light light(element.node());
    QCOMPARE(light.channel(), channel);
    QCOMPARE(light.property(QStringLiteral("DMX Address")), address);
    QVERIFY(light.property(QStringLiteral("Unsupported Token: MY_DMX_OFFSET_2")).isEmpty());
}

void LightElementTest::startupChannelsGoIntoStartupColors_data()
{
    // "Startup Colors" is four bytes wide, channel 1 on top: 0x01020304 is 16909060.
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("colors");
    const QString colors = QStringLiteral("<STARTUP_COLORS>16909060</STARTUP_COLORS>");
    QTest::newRow("first") << colors + "<STARTUP_CHANNEL_1>255</STARTUP_CHANNEL_1>"
                           << QString::number(0xFF020304U);
    QTest::newRow("second") << colors + "<STARTUP_CHANNEL_2>255</STARTUP_CHANNEL_2>"
                            << QString::number(0x01FF0304U);
    QTest::newRow("last") << colors + "<STARTUP_CHANNEL_4>0</STARTUP_CHANNEL_4>"
                          << QString::number(0x01020300U);
    QTest::newRow("low byte of a larger value")
        << colors + "<STARTUP_CHANNEL_3>300</STARTUP_CHANNEL_3>" << QString::number(0x01022C04U);
    QTest::newRow("two") << colors + "<STARTUP_CHANNEL_1>16</STARTUP_CHANNEL_1>"
                                     "<STARTUP_CHANNEL_2>32</STARTUP_CHANNEL_2>"
                         << QString::number(0x10200304U);
    QTest::newRow("beyond the width") << colors + "<STARTUP_CHANNEL_5>255</STARTUP_CHANNEL_5>"
                                      << "16909060";
    QTest::newRow("ahead of the colours")
        << "<STARTUP_CHANNEL_1>255</STARTUP_CHANNEL_1>" + colors << "16909060";
    QTest::newRow("without colours") << "<STARTUP_CHANNEL_1>255</STARTUP_CHANNEL_1>" << QString();
}

void LightElementTest::startupChannelsGoIntoStartupColors()
{
    QFETCH(const QString, xml);
    QFETCH(const QString, colors);
    Element element(properties(xml));
    const Light light(element.node());
    QCOMPARE(light.property(QStringLiteral("Startup Colors")), colors);
}

void LightElementTest::startupChannelsBeyondTheLightAreRemoved()
{
    QString list;
    for (int n = 1; n <= 8; ++n) {
        list += QStringLiteral("<STARTUP_CHANNEL_%1>9</STARTUP_CHANNEL_%1>").arg(n);
    }
    for (int repeat = 0; repeat < 2; ++repeat) { // the second light shares the list
        Element element(properties(list));
        const Light light(element.node());
        QCOMPARE(light.footprint(), 3);
        for (int n = 1; n <= 8; ++n) {
            const QString key = QStringLiteral("Startup Channel %1").arg(n);
            QCOMPARE(light.property(key).isEmpty(), n > 3 && n < 8);
        }
    }
}

void LightElementTest::channelCountFollowsTheTable_data()
{
    QTest::addColumn<int>("chemistry");
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("ioModeSet");
    QTest::addColumn<int>("count");
    const QHash<int, int> table = {{1, 4}, {2, 4}, {13, 4}, {15, 4}, {3, 5},  {4, 5},
                                   {5, 2}, {7, 1}, {8, 1},  {9, 1},  {10, 1}, {11, 1}};
    for (const int chemistry :
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 251, 252, 254, 255, 256, 300}) {
        QTest::addRow("chemistry %d", chemistry)
            << chemistry << 0 << 1 << table.value(chemistry, 3);
    }
    for (const int control : {1, 2, 4, 5}) {
        QTest::addRow("control mode %d", control) << 3 << control << 1 << 3;
        QTest::addRow("control mode %d and two channels", control) << 3 << control << 0 << 2;
    }
    QTest::newRow("control mode 3") << 3 << 3 << 1 << 5;
    QTest::newRow("control mode 6") << 3 << 6 << 1 << 1;
    QTest::newRow("control mode 6 and two channels") << 3 << 6 << 0 << 1;
    QTest::newRow("two channels") << 3 << 0 << 0 << 2;
}

void LightElementTest::channelCountFollowsTheTable()
{
    QFETCH(const int, chemistry);
    QFETCH(const int, control);
    QFETCH(const int, ioModeSet);
    QFETCH(const int, count);
    Element element(properties(QStringLiteral("<LED_CHEMISTRY>%1</LED_CHEMISTRY>"
                                              "<COLOR_CONTROL_MODE>%2</COLOR_CONTROL_MODE>"
                                              "<CREST_INPUT_MODE>%3</CREST_INPUT_MODE>")
                                   .arg(chemistry)
                                   .arg(control)
                                   .arg(ioModeSet)));
    const Light light(element.node());
    QCOMPARE(light.channelCount(), count);
    QCOMPARE(light.footprint(), count);
}

void LightElementTest::footprintFollowsWidthAndHalfFull_data()
{
    QTest::addColumn<int>("resolution");
    QTest::addColumn<int>("halfFull");
    QTest::addColumn<int>("footprint"); // of five channels
    QTest::newRow("8-bit") << 1 << 0 << 5;
    QTest::newRow("16-bit") << 0 << 0 << 10;
    QTest::newRow("8-bit, doubled") << 1 << 1 << 10;
    QTest::newRow("16-bit, doubled") << 0 << 1 << 20;
    QTest::newRow("any resolution but 0 is 8-bit") << 16 << 0 << 5;
}

void LightElementTest::footprintFollowsWidthAndHalfFull()
{
    QFETCH(const int, resolution);
    QFETCH(const int, halfFull);
    QFETCH(const int, footprint);
    Element element(properties(QStringLiteral("<LED_CHEMISTRY>3</LED_CHEMISTRY>"
                                              "<INPUT_RESOLUTION>%1</INPUT_RESOLUTION>"
                                              "<HALF_FULL_MODE>%2</HALF_FULL_MODE>")
                                   .arg(resolution)
                                   .arg(halfFull)));
    const Light light(element.node());
    QCOMPARE(light.footprint(), footprint);
}

void LightElementTest::profileComesFromTheDictionary_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("profile");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("device");
    const QString four = QStringLiteral("<tintweaveprofileid>12</tintweaveprofileid>"
                                        "<tintweaveiomode>7</tintweaveiomode><sn>1048576</sn>");
    const QString crest = QStringLiteral("<LED_CHEMISTRY>15</LED_CHEMISTRY>");
    const auto control = [](int mode) {
        return QStringLiteral("<COLOR_CONTROL_MODE>%1</COLOR_CONTROL_MODE>").arg(mode);
    };
    QTest::newRow("four whites, control mode 0")
        << four + properties(crest) << 40 << 22 << "Generic 4-Ch";
    QTest::newRow("four whites, control mode 5")
        << four + properties(crest + control(5)) << 40 << 23 << "Generic 4-Ch";
    QTest::newRow("four whites, control mode 3")
        << four + properties(crest + control(3)) << 40 << 7 << "Generic 4-Ch";
    QTest::newRow("another chemistry of that device")
        << four + properties(QStringLiteral("<LED_CHEMISTRY>1</LED_CHEMISTRY>")) << 23 << 7
        << "Generic 4-Ch";
    QTest::newRow("a chemistry that the device hasn't")
        << four + properties(QStringLiteral("<LED_CHEMISTRY>7</LED_CHEMISTRY>")) << 0 << 7
        << "Generic 4-Ch";
    QTest::newRow("no chemistry, though the default reads RGB")
        << QStringLiteral("<sn>983040</sn>") << 0 << 0 << "Generic 3-Ch";
    QTest::newRow("no device") << QStringLiteral("<sn>5</sn>") + properties(crest) << 0 << 0
                               << QString();
    const QString product = QStringLiteral("<sn>8257536</sn>"); // 0x7E0000
    QTest::newRow("that product")
        << product + properties(crest + "<DEVICE_INFO>D.0421-P.0101-F.0004</DEVICE_INFO>") << 40
        << 22 << "Muslin Crest4";
    QTest::newRow("another product")
        << product + properties(crest + "<DEVICE_INFO>D.0421-P.0101-F.0005</DEVICE_INFO>") << 0 << 0
        << "Muslin Crest4";
    QTest::newRow("any product") << product + properties(crest) << 40 << 22 << "Muslin Crest4";
}

void LightElementTest::profileComesFromTheDictionary()
{
    QFETCH(const QString, xml);
    QFETCH(const int, profile);
    QFETCH(const int, mode);
    QFETCH(const QString, device);
    Element element(xml);
    const Light light(element.node());
    QCOMPARE(light.tintweaveProfileId(), profile);
    QCOMPARE(light.tintweaveIoMode(), mode);
    QCOMPARE(light.deviceName(), device);
}

void LightElementTest::lastChannelIsTheLastByte_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("last");
    QTest::newRow("first channel") << "<ch>0</ch>" << 2;
    QTest::newRow("further on") << "<ch>18</ch>" << 20;
    QTest::newRow("below 0") << "<ch>-10</ch>" << -8;
    QTest::newRow("beyond the range of int")
        << "<ch>2147483647</ch>" << std::numeric_limits<int>::max();
}

void LightElementTest::lastChannelIsTheLastByte()
{
    QFETCH(const QString, xml);
    QFETCH(const int, last);
    Element element(xml);
    Light light(element.node());
    QCOMPARE(light.lastChannel(), last);
    QCOMPARE(light.lastChannel(), last);
}

void LightElementTest::equalListsGiveEqualLights()
{
    // More lists than are kept in mind, each met again, one light with a list of its own behind it.
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 12; ++i) {
            Element element(properties(QStringLiteral("<LED_CHEMISTRY>%1</LED_CHEMISTRY>"
                                                      "<INPUT_RESOLUTION>%2</INPUT_RESOLUTION>"
                                                      "<STARTUP_CHANNEL_6>1</STARTUP_CHANNEL_6>")
                                           .arg(i)
                                           .arg(i % 2)) +
                            QStringLiteral("<ch>%1</ch>").arg(i) +
                            properties(QStringLiteral("<LED_CHEMISTRY>13</LED_CHEMISTRY>"
                                                      "<DIMMING_CURVE>1</DIMMING_CURVE>")));
            const Light light(element.node());
            QCOMPARE(light.ledChemistry(), quint32(i)); // the first of a name wins
            QCOMPARE(light.resolution(), quint32(i % 2));
            QCOMPARE(light.dimmingCurve(), 1U);
            QCOMPARE(light.channel(), i);
            QCOMPARE(light.property(QStringLiteral("Resolution")),
                     i % 2 == 1 ? QStringLiteral("8-bit") : QStringLiteral("16-bit"));
            QCOMPARE(light.property(QStringLiteral("Startup Channel 6")).isEmpty(),
                     light.footprint() < 6);
        }
    }
}

void LightElementTest::positionsOutOfRangeDontCountForExtents_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("counts");
    QTest::newRow("a place") << "12.5" << true;
    QTest::newRow("the highest whole number") << "2147483647" << true;
    QTest::newRow("above it") << "2147483648" << false;
    QTest::newRow("nan") << "nan" << false;
    QTest::newRow("inf") << "inf" << false;
    QTest::newRow("minus inf") << "-inf" << false;
    QTest::newRow("huge") << "1e308" << false;
}

void LightElementTest::positionsOutOfRangeDontCountForExtents()
{
    QFETCH(const QString, text);
    QFETCH(const bool, counts);
    Element element(QStringLiteral("<x>%1</x><y>1</y>").arg(text));
    const Light light(element.node());
    QCOMPARE(light.position().countsForExtents(), counts);
    Element other(QStringLiteral("<y>%1</y><x>1</x>").arg(text));
    QCOMPARE(Light(other.node()).position().countsForExtents(), counts);
}

QTEST_GUILESS_MAIN(LightElementTest)

#include "LightElementTest.moc"
