#include "map/Controller.h"

#include "output/Talvis.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QSignalSpy>
#include <QVariant>
#include <QtTest>

#include <limits>

namespace {

QVariant field(const Controller& controller, const QString& name)
{
    const QHash<QString, QVariant> fields = {
        {QStringLiteral("type"), controller.type()},
        {QStringLiteral("uid"), controller.uid()},
        {QStringLiteral("name"), controller.name()},
        {QStringLiteral("missing"), controller.isMissing()},
        {QStringLiteral("serial"), controller.serialNumber()},
        {QStringLiteral("universe"), controller.universe()},
        {QStringLiteral("ip"), controller.ipString()},
        {QStringLiteral("hasAddress"), controller.hasAddress()},
        {QStringLiteral("mac"), controller.macAddress()},
        {QStringLiteral("buffer"), controller.dmxBufferSize()},
        {QStringLiteral("version"), controller.version()},
        {QStringLiteral("versionString"), controller.versionString()},
        {QStringLiteral("idString"), controller.idString()},
        {QStringLiteral("ports"), controller.portCount()},
        {QStringLiteral("lights"), controller.lightUidList().size()},
        {QStringLiteral("enabled"), controller.isOutputEnabled()},
    };
    return fields.value(name);
}

struct Built
{
    explicit Built(const QString& xml, int type = 2)
        : element(xml)
        , controller(type, nullptr, element.node())
    {}
    Element element;
    Controller controller;
};

/// "number/type/start code/flags/size" of each port.
QString ports(const Controller& controller)
{
    QStringList list;
    for (int i = 0; i < controller.portCount(); ++i) {
        list << QStringLiteral("%1/%2/%3/%4/%5")
                    .arg(controller.portNumber(i))
                    .arg(controller.portType(i))
                    .arg(controller.startCode(i), 0, 16)
                    .arg(controller.portFlags(i))
                    .arg(controller.portSize(i));
    }
    return list.join(QLatin1Char(' '));
}

} // namespace

class ControllerTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void withoutAnElementEveryDefaultStands();
    void keysAreRead_data();
    void keysAreRead();
    void readingEndsWithASignal();
    void portListsAreRead_data();
    void portListsAreRead();
    void tooManyPortsAreCut();
    void propertiesAreRead();
    void attachForwardsTheSignals();
    void attachRefusesNothing();
    void setAddressTells();
    void lightsAreAddedOnce();
    void theFirstOccurrenceIsRemoved();
    void theSpareBufferOnlyGrows();
    void aFailedAllocationIsReported();
    void lessThanIsBySortKey();
    void portSizesFollowTheLastChannel_data();
    void portSizesFollowTheLastChannel();
    void portSizesGoByIndexNotByNumber();
};

void ControllerTest::withoutAnElementEveryDefaultStands()
{
    const Controller controller(3, nullptr, static_cast<QDomNode*>(nullptr));
    QCOMPARE(controller.type(), 3);
    QCOMPARE(controller.uid(), quint64(0xFFFFFFFF));
    QCOMPARE(controller.name(), QStringLiteral("New Controller"));
    QCOMPARE(controller.dmxBufferSize(), 12);
    QVERIFY(controller.lightUidList().isEmpty());
    QVERIFY(!controller.hasAddress());
    QVERIFY(!controller.isMissing());
    QVERIFY(controller.isOutputEnabled());
    QCOMPARE(controller.ipString(), QStringLiteral("0.0.0.0"));
    QCOMPARE(controller.macAddress(), QStringLiteral("FF:FF:FF:FF:FF:FF"));
    QCOMPARE(controller.serialNumber(), quint64(0xFFFFFFFF));
    QCOMPARE(controller.version(), quint16(1));
    QCOMPARE(controller.universe(), 0U);
    QVERIFY(controller.versionString().isEmpty());
    QVERIFY(controller.idString().isEmpty());
    QCOMPARE(ports(controller), QStringLiteral("1/1/0/0/512"));
    QCOMPARE(Controller::numDmxChannels(), 512);
}

void ControllerTest::keysAreRead_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char* xml, const char* name, const QVariant& expected) {
        QTest::newRow(xml) << QString::fromLatin1(xml) << QString::fromLatin1(name) << expected;
    };
    const quint64 none = 0xFFFFFFFF;
    row("<t>3</t>", "type", 3);
    row("<type>2</type><t>9</t>", "type", 9); // the last decides
    row("<t>x</t>", "type", 0);
    row("<s>1A</s>", "uid", quint64(26));
    row("<self>2b</self>", "uid", quint64(43));
    row("<s>x</s>", "uid", none);
    row("<n>Front</n>", "name", QStringLiteral("Front"));
    row("<name>Back</name>", "name", QStringLiteral("Back"));
    row("<c>1</c><controller>2</controller>", "uid", none);
    row("<l>1</l><light>2</light><l>x</l>", "lights", 2);
    row("<l>1</l><l>1</l>", "lights", 2); // repeats of a file stay
    row("<m>0</m>", "missing", false);
    row("<m>1</m>", "missing", true);
    row("<missing>-3</missing>", "missing", true);
    row("<m>no</m>", "missing", true);
    row("<m/>", "missing", true);
    row("<sn>1A</sn>", "serial", quint64(26)); // hexadecimal, unlike a light's
    row("<serialnumber>10</serialnumber>", "serial", quint64(16));
    row("<sn>g</sn>", "serial", none);
    row("<u>7</u>", "universe", 7U);
    row("<universenumber>4294967295</universenumber>", "universe", 4294967295U);
    row("<u>x</u>", "universe", 0U);
    row("<ip>10.1.2.3</ip>", "ip", QStringLiteral("10.1.2.3"));
    row("<ipaddress>127.1</ipaddress>", "ip", QStringLiteral("127.0.0.1"));
    row("<ip>front door</ip>", "ip", QStringLiteral("10.0.0.0"));
    row("<ip/>", "ip", QStringLiteral("10.0.0.0"));
    row("<ip>10.1.2.3</ip>", "hasAddress", true);
    row("<ip>x</ip>", "hasAddress", true);
    row("<ip>0.0.0.0</ip>", "hasAddress", false);
    row("<mac>02:00:00:00:00:01</mac>", "mac", QStringLiteral("02:00:00:00:00:01"));
    row("<macaddress>a:b:c:d:e:f</macaddress>", "mac", QStringLiteral("a:b:c:d:e:f"));
    row("<mac>02:00:00:00:01</mac>", "mac", QStringLiteral("00:00:00:00:00:00"));
    row("<mac>1:2:3:4:5:6:7</mac>", "mac", QStringLiteral("00:00:00:00:00:00"));
    row("<d>100</d>", "buffer", 100);
    row("<dmxbuffersize>x</dmxbuffersize>", "buffer", 512);
    row("<d>-5</d>", "buffer", 0);
    row("<d>2147483647</d>", "buffer", 65536);
    row("<v>2</v>", "version", quint16(2));
    row("<version>3</version>", "version", quint16(3));
    row("<v>x</v>", "version", quint16(1));
    row("<v>70000</v>", "version", quint16(1));
    row("<vs>v 1</vs>", "versionString", QStringLiteral("v 1"));
    row("<versionstring>v 2</versionstring>", "versionString", QStringLiteral("v 2"));
    row("<ids>id 1</ids>", "idString", QStringLiteral("id 1"));
    row("<idstring>id 2</idstring>", "idString", QStringLiteral("id 2"));
    row("<pn>9</pn><pt>3</pt><pf>1</pf><p/>", "ports", 1); // only inside of a list
}

void ControllerTest::keysAreRead()
{
    QFETCH(const QString, xml);
    QFETCH(const QString, name);
    QFETCH(const QVariant, expected);
    const Built built(xml);
    QCOMPARE(field(built.controller, name), expected);
}

void ControllerTest::readingEndsWithASignal()
{
    // Nothing can be connected while the constructor runs; what it ends with comes again here.
    Built built(QStringLiteral("<s>5</s>"));
    QSignalSpy updated(&built.controller, &Controller::updatedController);
    built.controller.addLight(1);
    QCOMPARE(updated.size(), 1);
    QCOMPARE(updated.first().first().toULongLong(), qulonglong(5));
}

void ControllerTest::portListsAreRead_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QString() << "1/1/0/0/512";
    QTest::newRow("an empty list") << "<pl/>"
                                   << "";
    QTest::newRow("two ports, long keys")
        << "<portlist><port><portnum>4</portnum><porttype>2</porttype><portflags>7</portflags>"
           "</port><port><portnum>9</portnum></port></portlist>"
        << "4/2/0/7/512 9/1/0/0/512";
    QTest::newRow("short keys") << "<pl><p><pn>4</pn><pt>3</pt><pf>5</pf></p></pl>"
                                << "4/3/fff0/5/512";
    QTest::newRow("a port without content") << "<pl><p/><p/></pl>"
                                            << "1/1/0/0/512 2/1/0/0/512";
    QTest::newRow("unreadable") << "<pl><p/><p><pn>x</pn><pt>x</pt><pf>x</pf></p></pl>"
                                << "1/1/0/0/512 1/1/0/0/512";
    QTest::newRow("a low byte of 0") << "<pl><p/><p><pn>256</pn><pt>512</pt></p></pl>"
                                     << "1/1/0/0/512 1/1/0/0/512";
    QTest::newRow("low bytes") << "<pl><p><pn>260</pn><pt>259</pt></p></pl>"
                               << "4/3/fff0/0/512";
    QTest::newRow("the start code follows the last type") << "<pl><p><pt>3</pt><pt>1</pt></p></pl>"
                                                          << "1/1/0/0/512";
    QTest::newRow("holes of other names and comments")
        << "<pl><q/><p><pn>8</pn></p><!-- a hole too --><p><pn>9</pn></p></pl>"
        << "1/1/0/0/512 8/1/0/0/512 3/1/0/0/512 9/1/0/0/512";
    QTest::newRow("a second list of the same length keeps what it does not say")
        << "<pl><p><pn>8</pn><pf>6</pf></p></pl><pl><p><pt>2</pt></p></pl>"
        << "8/2/0/6/512";
    QTest::newRow("a second list of another length starts anew")
        << "<pl><p><pn>8</pn><pf>6</pf></p></pl><pl><p/><p/></pl>"
        << "1/1/0/0/512 2/1/0/0/512";
}

void ControllerTest::portListsAreRead()
{
    QFETCH(const QString, xml);
    QFETCH(const QString, expected);
    const Built built(xml);
    QCOMPARE(ports(built.controller), expected);
}

void ControllerTest::tooManyPortsAreCut()
{
    const Built built(QStringLiteral("<pl>") + QStringLiteral("<p/>").repeated(400) +
                      QStringLiteral("</pl>"));
    QCOMPARE(built.controller.portCount(), 255);
    QCOMPARE(built.controller.portNumber(254), quint8(255));
}

void ControllerTest::propertiesAreRead()
{
    const Built built(QStringLiteral("<properties><INPUT_RESOLUTION>0</INPUT_RESOLUTION>"
                                     "<INPUT_RESOLUTION>1</INPUT_RESOLUTION>"
                                     "<DMX_OFFSET>7</DMX_OFFSET><X>y</X></properties>"));
    QCOMPARE(built.controller.property(QStringLiteral("Resolution")), QStringLiteral("16-bit"));
    QCOMPARE(built.controller.property(QStringLiteral("DMX Address")), QStringLiteral("8"));
    QCOMPARE(built.controller.property(QStringLiteral("Unsupported Token: X")),
             QStringLiteral("y"));
    QCOMPARE(built.controller.property(QStringLiteral("none"), QStringLiteral("-")),
             QStringLiteral("-"));
}

void ControllerTest::attachForwardsTheSignals()
{
    TestModel owner;
    Built built(QStringLiteral("<s>5</s>"));
    QVERIFY(built.controller.attach(&owner.model));
    const MapModel& model = owner.model;
    QSignalSpy updated(&model, &MapModel::updatedController);
    QSignalSpy said(&model, &MapModel::msg);
    QSignalSpy frame(&model, &MapModel::signalSendDmxFrame);
    QSignalSpy broadcastFrame(&model, &MapModel::signalSendBroadcastDmxFrame);
    QSignalSpy port(&model, &MapModel::signalSendPortOut);
    QSignalSpy broadcastPort(&model, &MapModel::signalSendBroadcastPortOut);
    QSignalSpy value(&model, &MapModel::signalSendSetValue);
    Controller& from = built.controller;
    emit from.updatedController(5);
    emit from.msg(QStringLiteral("hello"));
    emit from.signalSendDmxFrame(QStringLiteral("ip"), 1, 2, QByteArray("a"));
    emit from.signalSendBroadcastDmxFrame(1, 2, 3, QByteArray("a"));
    emit from.signalSendPortOut(QStringLiteral("ip"), 1, 2, 3, 4, QByteArray("a"));
    emit from.signalSendBroadcastPortOut(1, 2, 3, 4, QByteArray("a"));
    emit from.signalSendSetValue(QStringLiteral("ip"), 1, QStringLiteral("k"), QStringLiteral("v"));
    for (const QSignalSpy* const spy :
         {&updated, &said, &frame, &broadcastFrame, &port, &broadcastPort, &value}) {
        QCOMPARE(spy->size(), 1);
    }
    QCOMPARE(port.first().at(3).toInt(), 3);
}

void ControllerTest::attachRefusesNothing()
{
    Built built{QString()};
    QVERIFY(!built.controller.attach(nullptr));
}

void ControllerTest::setAddressTells()
{
    Built built(QStringLiteral("<s>5</s>"));
    QSignalSpy updated(&built.controller, &Controller::updatedController);
    built.controller.setAddress(QHostAddress(QStringLiteral("10.9.8.7")));
    QCOMPARE(updated.size(), 1);
    QCOMPARE(built.controller.ipString(), QStringLiteral("10.9.8.7"));
    QVERIFY(built.controller.hasAddress());
    built.controller.setAddress(QHostAddress());
    QCOMPARE(built.controller.ipString(), QStringLiteral("0.0.0.0"));
}

void ControllerTest::lightsAreAddedOnce()
{
    Built built(QStringLiteral("<s>5</s><l>1</l>"));
    QSignalSpy updated(&built.controller, &Controller::updatedController);
    built.controller.addLight(2);
    built.controller.addLight(1);
    built.controller.addLight(2);
    QCOMPARE(built.controller.lightUidList(), (QList<quint64>{1, 2}));
    QCOMPARE(updated.size(), 3);
}

void ControllerTest::theFirstOccurrenceIsRemoved()
{
    Built built(QStringLiteral("<s>5</s><l>1</l><l>2</l><l>1</l>"));
    QSignalSpy updated(&built.controller, &Controller::updatedController);
    built.controller.removeLight(1);
    QCOMPARE(built.controller.lightUidList(), (QList<quint64>{2, 1}));
    built.controller.removeLight(7);
    QCOMPARE(built.controller.lightUidList(), (QList<quint64>{2, 1}));
    QCOMPARE(updated.size(), 2);
}

void ControllerTest::theSpareBufferOnlyGrows()
{
    Built built{QString()};
    built.controller.setDMXBufSize(11);
    QCOMPARE(built.controller.dmxBufferSize(), 12);
    built.controller.setDMXBufSize(-1);
    QCOMPARE(built.controller.dmxBufferSize(), 12);
    built.controller.setDMXBufSize(600);
    QCOMPARE(built.controller.dmxBufferSize(), 600);
}

void ControllerTest::aFailedAllocationIsReported()
{
    Built built{QString()};
    QSignalSpy said(&built.controller, &Controller::msg);
    built.controller.setDMXBufSize(std::numeric_limits<int>::max());
    QCOMPARE(built.controller.dmxBufferSize(), std::numeric_limits<int>::max());
    for (const QList<QVariant>& message : qAsConst(said)) { // where the system refused
        QCOMPARE(message.first().toString(),
                 QStringLiteral("Unable to allocate memory for DMX buffer."));
    }
}

void ControllerTest::lessThanIsBySortKey()
{
    Built low{QString()};
    Built high{QString()};
    QVERIFY(!low.controller.lessThan(high.controller));
    high.controller.setSortKey(1);
    QVERIFY(low.controller.lessThan(high.controller));
    QVERIFY(!high.controller.lessThan(low.controller));
}

void ControllerTest::portSizesFollowTheLastChannel_data()
{
    QTest::addColumn<QByteArray>("lights");
    QTest::addColumn<QString>("sizes"); // of two ports
    const auto at = [](int last) { return lightXml("1", 0, last - 2); };
    QTest::newRow("no light") << QByteArray() << "0 0";
    QTest::newRow("last channel 20") << at(20) << "24 0";
    QTest::newRow("last channel 23") << at(23) << "24 0";
    QTest::newRow("last channel 24") << at(24) << "40 0";
    QTest::newRow("last channel 500") << at(500) << "516 0";
    QTest::newRow("the greatest of a port")
        << lightXml("1", 0, 90) + lightXml("2", 0, 3) + lightXml("3", 1, 60) << "108 78";
    QTest::newRow("another port") << lightXml("1", 1, 0) << "0 24";
    QTest::newRow("a port beyond the table") << lightXml("1", 2, 0) << "0 0";
    QTest::newRow("a channel below 0") << lightXml("1", 0, -50) << "24 0";
    QTest::newRow("the greatest channel") << lightXml("1", 0, 2147483647) << "2147483663 0";
}

void ControllerTest::portSizesFollowTheLastChannel()
{
    QFETCH(const QByteArray, lights);
    QFETCH(const QString, sizes);
    const TestModel map("<controller><type>2</type><self>c</self><version>2</version>"
                        "<light>1</light><light>2</light><light>3</light><pl><p/><p/></pl>"
                        "</controller>" +
                        lights);
    const Controller* const controller = map.model.controller(0xc);
    QCOMPARE(QStringLiteral("%1 %2").arg(controller->portSize(0)).arg(controller->portSize(1)),
             sizes);
}

void ControllerTest::portSizesGoByIndexNotByNumber()
{
    // A light of port 1 sizes no port of a controller whose only port is numbered 2.
    const TestModel map("<controller><type>2</type><self>c</self><light>1</light>"
                        "<pl><p><pn>2</pn></p></pl></controller>" +
                        lightXml("1", 1, 0));
    QCOMPARE(map.model.controller(0xc)->portSize(0), 0U);
}

QTEST_GUILESS_MAIN(ControllerTest)

#include "ControllerTest.moc"
