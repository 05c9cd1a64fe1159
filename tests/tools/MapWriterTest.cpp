#include "tools/mapgen/MapWriter.h"

#include <QBuffer>
#include <QObject>
#include <QtTest>

namespace {

Installation small()
{
    Installation map;
    map.imageFile = QStringLiteral("plans/a & b.png");
    map.postSync = true;
    ControllerSpec controller;
    controller.uid = 0x1A;
    controller.name = QStringLiteral("Front");
    controller.address = QStringLiteral("10.1.2.3");
    controller.macAddress = QStringLiteral("02:00:00:00:00:01");
    controller.serialNumber = 0x810001;
    controller.version = 1;
    controller.universe = 12;
    controller.missing = true;
    controller.ports = {{1, 1, 0}, {2, 3, 5}};
    controller.lightUids = {0x2B};
    map.controllers.append(controller);
    LightSpec light;
    light.uid = 0x2B;
    light.name = QStringLiteral("Pixel <1>");
    light.controllerUid = 0x1A;
    light.port = 1;
    light.channel = 30;
    light.serialNumber = 4660;
    light.number = 7;
    light.fixtureCode = 0x2F;
    light.ioMode = 16;
    light.x = 10.5;
    light.y = 1234.56;
    light.properties = {{QStringLiteral("LED_CHEMISTRY"), 5}};
    map.lights.append(light);
    GroupSpec leaf;
    leaf.uid = 0x2B;
    leaf.kind = GroupSpec::Leaf;
    leaf.name = QStringLiteral("Pixel <1>");
    leaf.children = {0x2B};
    map.groups.append(leaf);
    return map;
}

QByteArray written(const Installation& map, MapWriter::Keys keys)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return MapWriter(keys).write(map, &buffer) ? buffer.data() : QByteArray("failed");
}

/// Takes a few bytes and then no more, as a full disk does.
class FullDevice : public QIODevice
{
public:
    FullDevice() { open(QIODevice::WriteOnly); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override
    {
        m_taken += size;
        return m_taken > 100 ? -1 : size;
    }

private:
    qint64 m_taken = 0;
};

} // namespace

class MapWriterTest : public QObject
{
    Q_OBJECT
private slots:
    void theLongKeysWriteThisText();
    void theShortKeysWriteThisText();
    void whatIsNotSetIsLeftOut();
    void aDeviceThatTakesNoMoreFails();
};

void MapWriterTest::theLongKeysWriteThisText()
{
    // Uids and a controller's serial number are hexadecimal, a light's serial number is decimal.
    const QByteArray expected =
        "<map>\n"
        "<version>1</version>\n"
        "<imagefile>plans/a &amp; b.png</imagefile>\n"
        "<postsync>1</postsync>\n"
        "<controller><type>2</type><self>1A</self><name>Front</name>"
        "<ipaddress>10.1.2.3</ipaddress><macaddress>02:00:00:00:00:01</macaddress>"
        "<serialnumber>810001</serialnumber><universenumber>12</universenumber>"
        "<version>1</version><dmxbuffersize>512</dmxbuffersize><missing>1</missing>"
        "<portlist><port><portnum>1</portnum><porttype>1</porttype><portflags>0</portflags></port>"
        "<port><portnum>2</portnum><porttype>3</porttype><portflags>5</portflags></port></portlist>"
        "<light>2B</light></controller>\n"
        "<light><self>2B</self><name>Pixel &lt;1&gt;</name><controller>1A</controller>"
        "<fixture>2B</fixture><fixturecode>2F</fixturecode><pn>1</pn><channel>30</channel>"
        "<sn>4660</sn><lightnumber>7</lightnumber><x>10.5</x><y>1234.56</y><z>0</z>"
        "<q0>0</q0><q1>0</q1><q2>0</q2><q3>1</q3><tintweaveiomode>16</tintweaveiomode>"
        "<properties><LED_CHEMISTRY>5</LED_CHEMISTRY></properties></light>\n"
        "<group><type>3</type><self>2B</self><name>Pixel "
        "&lt;1&gt;</name><child>2B</child></group>\n"
        "</map>\n";
    QCOMPARE(written(small(), MapWriter::Keys::Long), expected);
}

void MapWriterTest::theShortKeysWriteThisText()
{
    const QByteArray expected =
        "<map>\n"
        "<version>1</version>\n"
        "<imagefile>plans/a &amp; b.png</imagefile>\n"
        "<postsync>1</postsync>\n"
        "<c><t>2</t><s>1A</s><n>Front</n><ip>10.1.2.3</ip><mac>02:00:00:00:00:01</mac>"
        "<sn>810001</sn><u>12</u><v>1</v><d>512</d><m>1</m>"
        "<pl><p><pn>1</pn><pt>1</pt><pf>0</pf></p><p><pn>2</pn><pt>3</pt><pf>5</pf></p></pl>"
        "<l>2B</l></c>\n"
        "<l><s>2B</s><n>Pixel &lt;1&gt;</n><c>1A</c><f>2B</f><fc>2F</fc><pn>1</pn><ch>30</ch>"
        "<sn>4660</sn><ln>7</ln><x>10.5</x><y>1234.56</y><z>0</z>"
        "<q0>0</q0><q1>0</q1><q2>0</q2><q3>1</q3><tintweaveiomode>16</tintweaveiomode>"
        "<properties><LED_CHEMISTRY>5</LED_CHEMISTRY></properties></l>\n"
        "<g><t>3</t><s>2B</s><n>Pixel &lt;1&gt;</n><c>2B</c></g>\n"
        "</map>\n";
    QCOMPARE(written(small(), MapWriter::Keys::Short), expected);
}

void MapWriterTest::whatIsNotSetIsLeftOut()
{
    Installation map = small();
    map.postSync = false;
    map.controllers[0].kind = ControllerSpec::Broadcast;
    map.controllers[0].address.clear();
    map.controllers[0].macAddress.clear();
    map.lights[0].properties.clear();
    const QByteArray text = written(map, MapWriter::Keys::Long);
    QVERIFY(text.contains("<postsync>0</postsync>"));
    QVERIFY(text.contains("<controller><type>3</type><self>1A</self><name>Front</name>"
                          "<serialnumber>"));
    QVERIFY(text.contains("<tintweaveiomode>16</tintweaveiomode></light>"));
}

void MapWriterTest::aDeviceThatTakesNoMoreFails()
{
    FullDevice device;
    QVERIFY(!MapWriter().write(small(), &device));
}

QTEST_GUILESS_MAIN(MapWriterTest)
#include "MapWriterTest.moc"
