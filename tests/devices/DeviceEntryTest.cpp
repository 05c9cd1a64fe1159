#include "devices/DeviceEntry.h"

#include "FileSupport.h"

#include <QObject>
#include <QTemporaryDir>
#include <QtTest>

class DeviceEntryTest : public QObject
{
    Q_OBJECT
private slots:
    void readsEveryKey();
    void anAbsentFileLeavesTheDefaultsInSilence();
    void aFileWithoutAnObjectIsLogged_data();
    void aFileWithoutAnObjectIsLogged();
    void deviceTypesAreKeptWithOneCapital_data();
    void deviceTypesAreKeptWithOneCapital();
    void discoverPortIsReadThroughItsText_data();
    void discoverPortIsReadThroughItsText();
    void memoryPlacesNeedOneAddressOrThePair_data();
    void memoryPlacesNeedOneAddressOrThePair();
    void memoryPlacesTakeTheirFlags();
    void theLaterPlaceOfANameCounts();
    void addressesAreLimitedTo32Bits();
    void keysOfTheWrongKindArePassedOver();
    void onlyTheFirstVerificationCounts();

private:
    QString write(const QByteArray& content);

    QTemporaryDir m_dir;
};

QString DeviceEntryTest::write(const QByteArray& content)
{
    const QString path = m_dir.filePath(QStringLiteral("device.json"));
    return writeFile(path, content) ? path : QString();
}

void DeviceEntryTest::readsEveryKey()
{
    const QString path = write(R"({
        "DeviceType": "ETHERNET_FIXTURE",
        "DeviceName": "Test Lamp",
        "SerialNumberRanges": [
            {"start": "000D0000", "end": "000DFFFF"},
            {"start": "FF000000", "end": "FFFFFFFF", "productCode": "P1"}],
        "SFTNumbers": ["SFT-1", "SFT-2"],
        "FileVerification": [
            {"Verified": true, "Verified By": "Bench", "Verified Date": "today"}],
        "TintweaveProfiles": [
            {"ledChemistry": "RGB", "profileId": 7, "inputModeMap": {"0": 0, "4": 5}},
            {"ledChemistry": "Dune3", "profileId": 28}],
        "MemoryMap": [{"name": "DMX_OFFSET", "address": [16, 17]}],
        "StaticValues": [{"name": "LED_CHEMISTRY", "value": "3"}, {"name": "COUNT", "value": 4}],
        "DiscoverPort": 6100,
        "BootloaderInfo": {"BLRev": 1, "ProcName": "b", "Heirarchy": "c", "FileType": "d",
            "WordSize": 5, "WordCount": 6, "VerLoc": "g", "MagicLoc": "h", "MagicFlag": "i",
            "BLID": 10, "FirmwareMajorVersion": 11, "PageSize": 12, "BL3_RevLoc": "m",
            "BL3_SFTLoc": "n", "BL3_SFTVal": "o"},
        "SomethingElse": {"a": 1}
    })");
    LogCapture log;
    const DeviceEntry entry(path);
    QCOMPARE(LogCapture::lines(), QStringList());
    QCOMPARE(entry.filePath(), path);
    QCOMPARE(entry.deviceName(), QStringLiteral("Test Lamp"));
    QCOMPARE(entry.deviceType(), QStringLiteral("Ethernet_fixture"));
    QCOMPARE(entry.serialRanges().size(), 2);
    QCOMPARE(entry.serialRanges().at(0).start, quint64{0x000D0000});
    QCOMPARE(entry.serialRanges().at(0).end, quint64{0x000DFFFF});
    QCOMPARE(entry.serialRanges().at(0).productCode, QString());
    QCOMPARE(entry.serialRanges().at(1).start, quint64{0xFF000000});
    QCOMPARE(entry.serialRanges().at(1).end, quint64{0xFFFFFFFF});
    QCOMPARE(entry.serialRanges().at(1).productCode, QStringLiteral("P1"));
    QCOMPARE(entry.sftNumbers(), QStringList({QStringLiteral("SFT-1"), QStringLiteral("SFT-2")}));
    QCOMPARE(entry.verification().verified, true);
    QCOMPARE(entry.verification().verifiedBy, QStringLiteral("Bench"));
    QCOMPARE(entry.verification().verifiedDate, QStringLiteral("today"));
    QCOMPARE(entry.tintweaveProfiles().keys(),
             QStringList({QStringLiteral("Dune3"), QStringLiteral("RGB")}));
    const TintweaveProfile rgb = entry.tintweaveProfiles().value(QStringLiteral("RGB"));
    QCOMPARE(rgb.profileId, 7);
    const QMap<QString, int> modes = {{QStringLiteral("0"), 0}, {QStringLiteral("4"), 5}};
    QCOMPARE(rgb.inputModes, modes);
    QCOMPARE(entry.tintweaveProfiles().value(QStringLiteral("Dune3")).profileId, 28);
    QVERIFY(entry.tintweaveProfiles().value(QStringLiteral("Dune3")).inputModes.isEmpty());
    QCOMPARE(entry.tokens(), QStringList(QStringLiteral("DMX_OFFSET")));
    QVERIFY(entry.memoryMapEntry(QStringLiteral("DMX_OFFSET")) != nullptr);
    QVERIFY(entry.memoryMapEntry(QStringLiteral("OTHER")) == nullptr);
    QCOMPARE(entry.staticValues().value(QStringLiteral("LED_CHEMISTRY")), QStringLiteral("3"));
    QCOMPARE(entry.staticValues().value(QStringLiteral("COUNT")), QStringLiteral("4"));
    QCOMPARE(entry.discoverPort(), 6100U);
    QVERIFY(entry.bootloader().has_value());
    const BootloaderInfo& boot = entry.bootloader().value();
    const QStringList carried = {boot.revision,
                                 boot.processorName,
                                 boot.hierarchy,
                                 boot.fileType,
                                 boot.wordSize,
                                 boot.wordCount,
                                 boot.versionLocation,
                                 boot.magicLocation,
                                 boot.magicFlag,
                                 boot.id,
                                 boot.firmwareMajorVersion,
                                 boot.pageSize,
                                 boot.bl3RevisionLocation,
                                 boot.bl3SftLocation,
                                 boot.bl3SftValue};
    QCOMPARE(carried.join(QLatin1Char(' ')), QStringLiteral("1 b c d 5 6 g h i 10 11 12 m n o"));
}

void DeviceEntryTest::anAbsentFileLeavesTheDefaultsInSilence()
{
    LogCapture log;
    const DeviceEntry entry(m_dir.filePath(QStringLiteral("absent.json")));
    QCOMPARE(LogCapture::lines(), QStringList());
    QCOMPARE(entry.deviceName(), QStringLiteral("Unknown Device"));
    QCOMPARE(entry.deviceType(), QStringLiteral("Unknown"));
    QVERIFY(entry.serialRanges().isEmpty());
    QVERIFY(entry.memoryMap().isEmpty());
    QVERIFY(entry.tokens().isEmpty());
    QCOMPARE(entry.verification().verified, false);
    QCOMPARE(entry.verification().verifiedBy, QStringLiteral("Not Verified"));
    QCOMPARE(entry.verification().verifiedDate, QStringLiteral("Not Verified"));
    QVERIFY(entry.sftNumbers().isEmpty());
    QVERIFY(entry.staticValues().isEmpty());
    QCOMPARE(entry.discoverPort(), 6038U);
    QVERIFY(entry.tintweaveProfiles().isEmpty());
    QVERIFY(!entry.bootloader().has_value());
}

void DeviceEntryTest::aFileWithoutAnObjectIsLogged_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("an empty object") << QByteArray("{}");
    QTest::newRow("an array") << QByteArray("[{\"DeviceName\": \"A\"}]");
    QTest::newRow("no JSON") << QByteArray("<xml/>");
    QTest::newRow("cut off") << QByteArray("{\"DeviceName\": \"A\", ");
    QTest::newRow("zero bytes") << QByteArray(100, '\0');
    QTest::newRow("nested without end") << QByteArray("{\"a\":") + QByteArray(1000000, '[');
}

void DeviceEntryTest::aFileWithoutAnObjectIsLogged()
{
    QFETCH(const QByteArray, content);
    const QString path = write(content);
    LogCapture log;
    const DeviceEntry entry(path);
    QCOMPARE(LogCapture::lines(),
             QStringList(QStringLiteral("File \"%1\" is empty or improperly formatted").arg(path)));
    QCOMPARE(entry.deviceName(), QStringLiteral("Unknown Device"));
    QVERIFY(entry.serialRanges().isEmpty());
}

void DeviceEntryTest::deviceTypesAreKeptWithOneCapital_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<QString>("kept");
    QTest::newRow("fixture") << QByteArray("\"FIXTURE\"") << QStringLiteral("Fixture");
    QTest::newRow("ethernet fixture")
        << QByteArray("\"ETHERNET_FIXTURE\"") << QStringLiteral("Ethernet_fixture");
    QTest::newRow("rdm") << QByteArray("\"RDM_FIXTURE\"") << QStringLiteral("Rdm_fixture");
    QTest::newRow("ethernet") << QByteArray("\"ETHERNET\"") << QStringLiteral("Ethernet");
    QTest::newRow("keypad") << QByteArray("\"KEYPAD\"") << QStringLiteral("Keypad");
    QTest::newRow("feeder") << QByteArray("\"FEEDER\"") << QStringLiteral("Feeder");
    QTest::newRow("meshlink") << QByteArray("\"MESHLINK_DEVICE\"")
                              << QStringLiteral("Meshlink_device");
    QTest::newRow("other") << QByteArray("\"OTHER\"") << QStringLiteral("Other");
    QTest::newRow("unknown") << QByteArray("\"UNKNOWN\"") << QStringLiteral("Unknown");
    QTest::newRow("no such word") << QByteArray("\"BANANA\"") << QStringLiteral("Unknown");
    QTest::newRow("lower case") << QByteArray("\"fixture\"") << QStringLiteral("Unknown");
    QTest::newRow("a number") << QByteArray("5") << QStringLiteral("Unknown");
}

void DeviceEntryTest::deviceTypesAreKeptWithOneCapital()
{
    QFETCH(const QByteArray, word);
    QFETCH(const QString, kept);
    const DeviceEntry entry(write("{\"DeviceType\": " + word + "}"));
    QCOMPARE(entry.deviceType(), kept);
}

void DeviceEntryTest::discoverPortIsReadThroughItsText_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<quint32>("port");
    QTest::newRow("absent") << QByteArray() << 6038U;
    QTest::newRow("number") << QByteArray(", \"DiscoverPort\": 7000") << 7000U;
    QTest::newRow("text") << QByteArray(", \"DiscoverPort\": \"7001\"") << 7001U;
    QTest::newRow("no number") << QByteArray(", \"DiscoverPort\": \"port\"") << 6038U;
    QTest::newRow("negative") << QByteArray(", \"DiscoverPort\": -1") << 6038U;
    QTest::newRow("an array") << QByteArray(", \"DiscoverPort\": [1]") << 6038U;
}

void DeviceEntryTest::discoverPortIsReadThroughItsText()
{
    QFETCH(const QByteArray, key);
    QFETCH(const quint32, port);
    const DeviceEntry entry(write("{\"DeviceName\": \"A\"" + key + "}"));
    QCOMPARE(entry.discoverPort(), port);
}

void DeviceEntryTest::memoryPlacesNeedOneAddressOrThePair_data()
{
    using Addresses = QVector<quint32>;
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<Addresses>("reads");
    QTest::addColumn<Addresses>("writes");
    QTest::addColumn<bool>("single");
    QTest::addColumn<bool>("logged");
    QTest::newRow("one address") << QByteArray("\"address\": 5") << Addresses{5} << Addresses{5}
                                 << true << false;
    QTest::newRow("several bytes") << QByteArray("\"address\": [9, 8, 7]") << Addresses{9, 8, 7}
                                   << Addresses{9, 8, 7} << true << false;
    QTest::newRow("pair") << QByteArray("\"readAddress\": 1, \"writeAddress\": [2, 3]")
                          << Addresses{1} << Addresses{2, 3} << false << false;
    QTest::newRow("read alone") << QByteArray("\"readAddress\": 1") << Addresses{} << Addresses{}
                                << true << true;
    QTest::newRow("write alone") << QByteArray("\"writeAddress\": 1") << Addresses{} << Addresses{}
                                 << true << true;
    QTest::newRow("address beside read alone") << QByteArray("\"address\": 4, \"readAddress\": 1")
                                               << Addresses{} << Addresses{} << true << true;
    QTest::newRow("none") << QByteArray("\"default\": 4") << Addresses{} << Addresses{} << true
                          << true;
    QTest::newRow("text") << QByteArray("\"address\": \"4\"") << Addresses{} << Addresses{} << true
                          << true;
}

void DeviceEntryTest::memoryPlacesNeedOneAddressOrThePair()
{
    QFETCH(const QByteArray, keys);
    QFETCH(const QVector<quint32>, reads);
    QFETCH(const QVector<quint32>, writes);
    QFETCH(const bool, single);
    QFETCH(const bool, logged);
    const QString path = write("{\"MemoryMap\": [{\"name\": \"A\", " + keys + "}]}");
    LogCapture log;
    const DeviceEntry entry(path);
    const QString line = QStringLiteral("Json file missing read/write addresses or is invalid");
    QCOMPARE(LogCapture::lines(), logged ? QStringList(line) : QStringList());
    const MemoryMapEntry* const place = entry.memoryMapEntry(QStringLiteral("A"));
    QVERIFY(place != nullptr);
    QCOMPARE(place->readAddresses(), reads);
    QCOMPARE(place->writeAddresses(), writes);
    QCOMPARE(place->isSingleAddress(), single);
}

void DeviceEntryTest::memoryPlacesTakeTheirFlags()
{
    const DeviceEntry entry(write(R"({"MemoryMap": [
        {"name": "A", "address": 1, "userConfigurable": true, "readOnly": true,
         "defaultValue": -2147483648, "default": 9},
        {"name": "B", "address": 2, "default": 9}]})"));
    const MemoryMapEntry* const a = entry.memoryMapEntry(QStringLiteral("A"));
    QCOMPARE(a->name(), QStringLiteral("A"));
    QCOMPARE(a->userConfigurable(), true);
    QCOMPARE(a->readOnly(), true);
    QCOMPARE(a->defaultValue(), std::numeric_limits<qint32>::min());
    const MemoryMapEntry* const b = entry.memoryMapEntry(QStringLiteral("B"));
    QCOMPARE(b->userConfigurable(), false);
    QCOMPARE(b->readOnly(), false);
    QCOMPARE(b->defaultValue(), 0);
}

void DeviceEntryTest::theLaterPlaceOfANameCounts()
{
    const DeviceEntry entry(
        write(R"({"MemoryMap": [{"name": "A", "address": 1}, {"name": "A", "address": 2}]})"));
    QCOMPARE(entry.memoryMap().size(), 1);
    QCOMPARE(entry.memoryMapEntry(QStringLiteral("A"))->readAddresses(), QVector<quint32>{2});
}

void DeviceEntryTest::addressesAreLimitedTo32Bits()
{
    const DeviceEntry entry(
        write(R"({"MemoryMap": [{"name": "A", "address": [-1, 4294967295, 1e300, "x", 2.9]}]})"));
    const QVector<quint32> expected = {0, 0xFFFFFFFF, 0xFFFFFFFF, 0, 2};
    QCOMPARE(entry.memoryMapEntry(QStringLiteral("A"))->readAddresses(), expected);
}

void DeviceEntryTest::keysOfTheWrongKindArePassedOver()
{
    const QString path = write(R"({
        "DeviceName": 5, "SerialNumberRanges": {"start": "1", "end": "2"}, "SFTNumbers": "x",
        "FileVerification": {"Verified": true}, "MemoryMap": 3, "StaticValues": true,
        "TintweaveProfiles": null, "BootloaderInfo": [1]})");
    LogCapture log;
    const DeviceEntry entry(path);
    QCOMPARE(LogCapture::lines(), QStringList());
    QCOMPARE(entry.deviceName(), QStringLiteral("Unknown Device"));
    QVERIFY(entry.serialRanges().isEmpty());
    QVERIFY(entry.sftNumbers().isEmpty());
    QCOMPARE(entry.verification().verified, false);
    QVERIFY(entry.memoryMap().isEmpty());
    QVERIFY(entry.staticValues().isEmpty());
    QVERIFY(entry.tintweaveProfiles().isEmpty());
    QVERIFY(!entry.bootloader().has_value());
}

void DeviceEntryTest::onlyTheFirstVerificationCounts()
{
    const DeviceEntry first(write(R"({"FileVerification": [
        {"Verified": true}, {"Verified": false, "Verified By": "Second"}]})"));
    QCOMPARE(first.verification().verified, true);
    QCOMPARE(first.verification().verifiedBy, QStringLiteral("Not Verified"));
    const DeviceEntry none(write(R"({"FileVerification": []})"));
    QCOMPARE(none.verification().verified, false);
}

QTEST_GUILESS_MAIN(DeviceEntryTest)
#include "DeviceEntryTest.moc"
