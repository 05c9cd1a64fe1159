#include "devices/DeviceDictionary.h"

#include "FileSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray device(const char* name, const char* ranges, const char* profiles = "[]")
{
    return QByteArray("{\"DeviceType\": \"FIXTURE\", \"DeviceName\": \"") + name +
           "\", \"SerialNumberRanges\": " + ranges + ", \"TintweaveProfiles\": " + profiles + "}";
}

QStringList names(const QList<DeviceEntry*>& entries)
{
    QStringList list;
    for (const DeviceEntry* const entry : entries) {
        list << entry->deviceName();
    }
    return list;
}

} // namespace

class DeviceDictionaryTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void serialsMatchUpToTheEndOfTheRange_data();
    void serialsMatchUpToTheEndOfTheRange();
    void overlappingRangesAllCountInKeyOrder();
    void productsOfOneRangeComeInLoadOrder();
    void theProductCodeDoesNotNarrowTheList();
    void aProductIsFoundByItsExactCode_data();
    void aProductIsFoundByItsExactCode();
    void theFirstRangeWithTheCodeWins();
    void profilesFollowChemistryAndProduct_data();
    void profilesFollowChemistryAndProduct();
    void modesFollowTheInputMode_data();
    void modesFollowTheInputMode();
    void namesPreferTheEntryThatKnowsTheChemistry_data();
    void namesPreferTheEntryThatKnowsTheChemistry();
    void badFilesGiveNoRange();
    void onlyJsonFilesOfTheFolderItselfAreRead();
    void anAbsentFolderGivesAnEmptyDictionary();

private:
    void add(const char* name, const QByteArray& content);

    QScopedPointer<QTemporaryDir> m_dir;
};

void DeviceDictionaryTest::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void DeviceDictionaryTest::add(const char* name, const QByteArray& content)
{
    QVERIFY(writeFile(m_dir->filePath(QLatin1String(name)), content));
}

void DeviceDictionaryTest::serialsMatchUpToTheEndOfTheRange_data()
{
    QTest::addColumn<quint64>("serial");
    QTest::addColumn<bool>("found");
    QTest::newRow("one below the start") << quint64{0x000CFFFF} << false;
    QTest::newRow("start") << quint64{0x000D0000} << true;
    QTest::newRow("inside") << quint64{0x000D8000} << true;
    QTest::newRow("end") << quint64{0x000DFFFF} << true;
    QTest::newRow("one above the end") << quint64{0x000E0000} << false;
    QTest::newRow("second range") << quint64{0xFFFFFFFF00} << true;
    QTest::newRow("zero") << quint64{0} << false;
}

void DeviceDictionaryTest::serialsMatchUpToTheEndOfTheRange()
{
    QFETCH(const quint64, serial);
    QFETCH(const bool, found);
    add("a.json", device("A", R"([{"start": "000D0000", "end": "000DFFFF"},
                                  {"start": "ffffffff00", "end": "ffffffffff"}])"));
    const DeviceDictionary dictionary(m_dir->path());
    QCOMPARE(dictionary.entryForSerial(serial) != nullptr, found);
    QCOMPARE(dictionary.entriesForSerial(serial).size(), found ? 1 : 0);
    QCOMPARE(dictionary.deviceNameForSerial(serial, QString()),
             found ? QStringLiteral("A") : QStringLiteral("Unknown Device"));
}

void DeviceDictionaryTest::overlappingRangesAllCountInKeyOrder()
{
    add("1.json", device("late start", R"([{"start": "20", "end": "30"}])"));
    add("2.json", device("wide", R"([{"start": "10", "end": "FF"}])"));
    add("3.json", device("narrow", R"([{"start": "10", "end": "40"}])"));
    add("4.json", device("elsewhere", R"([{"start": "50", "end": "60"}])"));
    const DeviceDictionary dictionary(m_dir->path());
    QCOMPARE(names(dictionary.entriesForSerial(0x25)),
             QStringList(
                 {QStringLiteral("narrow"), QStringLiteral("wide"), QStringLiteral("late start")}));
    QCOMPARE(dictionary.entryForSerial(0x25)->deviceName(), QStringLiteral("narrow"));
    QCOMPARE(names(dictionary.entriesForSerial(0x41)), QStringList(QStringLiteral("wide")));
}

void DeviceDictionaryTest::productsOfOneRangeComeInLoadOrder()
{
    for (const char* const name : {"c", "a", "d", "b"}) {
        add(QByteArray(name).append(".json").constData(),
            device(name, R"([{"start": "10", "end": "20"}])"));
    }
    QStringList order;
    QDirIterator files(m_dir->path(), {QStringLiteral("*.json")}, QDir::Files);
    while (files.hasNext()) {
        files.next();
        order << files.fileInfo().completeBaseName();
    }
    QCOMPARE(order.size(), 4);
    const DeviceDictionary dictionary(m_dir->path());
    QCOMPARE(names(dictionary.entriesForSerial(0x18)), order);
    QCOMPARE(dictionary.entryForSerial(0x18)->deviceName(), order.first());
}

void DeviceDictionaryTest::theProductCodeDoesNotNarrowTheList()
{
    add("a.json", device("A", R"([{"start": "10", "end": "20", "productCode": "P1"}])"));
    add("b.json", device("B", R"([{"start": "11", "end": "20", "productCode": "P2"}])"));
    const DeviceDictionary dictionary(m_dir->path());
    QCOMPARE(names(dictionary.entriesForSerial(0x15, QStringLiteral("P2"))),
             QStringList({QStringLiteral("A"), QStringLiteral("B")}));
}

void DeviceDictionaryTest::aProductIsFoundByItsExactCode_data()
{
    QTest::addColumn<quint64>("serial");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::newRow("first") << quint64{0x10} << QStringLiteral("P1") << QStringLiteral("One");
    QTest::newRow("second") << quint64{0x20} << QStringLiteral("P2") << QStringLiteral("Two");
    QTest::newRow("other case") << quint64{0x10} << QStringLiteral("p1") << QString();
    QTest::newRow("unknown code") << quint64{0x10} << QStringLiteral("P9") << QString();
    QTest::newRow("code of another range") << quint64{0x10} << QStringLiteral("P3") << QString();
    QTest::newRow("outside") << quint64{0x21} << QStringLiteral("P1") << QString();
    QTest::newRow("no code") << quint64{0x10} << QString() << QStringLiteral("Plain");
    QTest::newRow("second range of a product")
        << quint64{0x105} << QStringLiteral("P3") << QStringLiteral("One");
}

void DeviceDictionaryTest::aProductIsFoundByItsExactCode()
{
    QFETCH(const quint64, serial);
    QFETCH(const QString, code);
    QFETCH(const QString, name);
    add("1.json", device("One", R"([{"start": "10", "end": "20", "productCode": "P1"},
                                    {"start": "100", "end": "110", "productCode": "P3"}])"));
    add("2.json", device("Two", R"([{"start": "10", "end": "20", "productCode": "P2"}])"));
    add("3.json", device("Plain", R"([{"start": "10", "end": "20"}])"));
    const DeviceDictionary dictionary(m_dir->path());
    for (int round = 0; round < 2; ++round) { // the second answer is a kept one
        const DeviceEntry* const entry = dictionary.entryForSerialAndProduct(serial, code);
        QCOMPARE(entry == nullptr ? QString() : entry->deviceName(), name);
    }
}

void DeviceDictionaryTest::theFirstRangeWithTheCodeWins()
{
    add("1.json", device("Late", R"([{"start": "12", "end": "20", "productCode": "P"}])"));
    add("2.json", device("Early", R"([{"start": "10", "end": "18", "productCode": "P"}])"));
    add("3.json", device("Other", R"([{"start": "8", "end": "20", "productCode": "Q"}])"));
    const DeviceDictionary dictionary(m_dir->path());
    const QString code = QStringLiteral("P");
    // Kept answers of one range must not hide those of an earlier one, nor reach too far.
    QCOMPARE(dictionary.entryForSerialAndProduct(0x19, code)->deviceName(), QStringLiteral("Late"));
    QCOMPARE(dictionary.entryForSerialAndProduct(0x15, code)->deviceName(),
             QStringLiteral("Early"));
    QCOMPARE(dictionary.entryForSerialAndProduct(0x19, code)->deviceName(), QStringLiteral("Late"));
    QVERIFY(dictionary.entryForSerialAndProduct(0x21, code) == nullptr);
}

void DeviceDictionaryTest::profilesFollowChemistryAndProduct_data()
{
    QTest::addColumn<quint64>("serial");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("chemistry");
    QTest::addColumn<int>("profile");
    const QString rgb = QStringLiteral("RGB");
    const QString rgbw = QStringLiteral("RGBW");
    const QString none;
    const quint64 inside = 0x15;
    QTest::newRow("first entry that knows it") << inside << none << rgbw << 6;
    QTest::newRow("first entry") << inside << none << rgb << 7;
    QTest::newRow("exact product") << inside << QStringLiteral("P2") << rgb << 10;
    QTest::newRow("no such product") << inside << QStringLiteral("P9") << rgb << 0;
    QTest::newRow("product without it") << inside << QStringLiteral("P1") << rgbw << 0;
    QTest::newRow("chemistry in other case") << inside << none << QStringLiteral("rgb") << 0;
    QTest::newRow("unknown chemistry") << inside << none << QStringLiteral("Dune3") << 0;
    QTest::newRow("unknown serial") << quint64{0xFFFFFFFF} << none << rgb << 0;
}

void DeviceDictionaryTest::profilesFollowChemistryAndProduct()
{
    QFETCH(const quint64, serial);
    QFETCH(const QString, code);
    QFETCH(const QString, chemistry);
    QFETCH(const int, profile);
    add("1.json", device("One", R"([{"start": "10", "end": "20", "productCode": "P1"}])",
                         R"([{"ledChemistry": "RGB", "profileId": 7}])"));
    add("2.json", device("Two", R"([{"start": "11", "end": "20", "productCode": "P2"}])",
                         R"([{"ledChemistry": "RGB", "profileId": 10},
                             {"ledChemistry": "RGBW", "profileId": 6}])"));
    const DeviceDictionary dictionary(m_dir->path());
    QCOMPARE(dictionary.profileForChemistry(serial, code, chemistry), profile);
}

void DeviceDictionaryTest::modesFollowTheInputMode_data()
{
    QTest::addColumn<quint64>("serial");
    QTest::addColumn<QString>("chemistry");
    QTest::addColumn<QString>("inputMode");
    QTest::addColumn<int>("mode");
    const QString crest = QStringLiteral("Crest4");
    QTest::newRow("native") << quint64{0x15} << crest << QStringLiteral("0") << 22;
    QTest::newRow("RGB in") << quint64{0x15} << crest << QStringLiteral("5") << 23;
    QTest::newRow("unknown input mode") << quint64{0x15} << crest << QStringLiteral("1") << 0;
    QTest::newRow("unknown chemistry")
        << quint64{0x15} << QStringLiteral("Dune2") << QStringLiteral("0") << 0;
    QTest::newRow("unknown serial") << quint64{0x25} << crest << QStringLiteral("0") << 0;
    QTest::newRow("second entry") << quint64{0x15} << QStringLiteral("RGBA") << QStringLiteral("2")
                                  << 5;
}

void DeviceDictionaryTest::modesFollowTheInputMode()
{
    QFETCH(const quint64, serial);
    QFETCH(const QString, chemistry);
    QFETCH(const QString, inputMode);
    QFETCH(const int, mode);
    add("1.json", device("One", R"([{"start": "10", "end": "20"}])",
                         R"([{"ledChemistry": "Crest4", "profileId": 40,
                              "inputModeMap": {"0": 22, "5": 23}}])"));
    add("2.json", device("Two", R"([{"start": "11", "end": "20"}])",
                         R"([{"ledChemistry": "RGBA", "profileId": 5,
                              "inputModeMap": {"0": 1, "2": 5}}])"));
    const DeviceDictionary dictionary(m_dir->path());
    QCOMPARE(dictionary.modeForInput(serial, chemistry, inputMode), mode);
}

void DeviceDictionaryTest::namesPreferTheEntryThatKnowsTheChemistry_data()
{
    QTest::addColumn<quint64>("serial");
    QTest::addColumn<QString>("chemistry");
    QTest::addColumn<QString>("name");
    QTest::newRow("second knows") << quint64{0x15} << QStringLiteral("RGBW")
                                  << QStringLiteral("Two");
    QTest::newRow("first knows") << quint64{0x15} << QStringLiteral("RGB") << QStringLiteral("One");
    QTest::newRow("none knows") << quint64{0x15} << QStringLiteral("Dune3")
                                << QStringLiteral("One");
    QTest::newRow("no entry") << quint64{0x21} << QStringLiteral("RGB")
                              << QStringLiteral("Unknown Device");
}

void DeviceDictionaryTest::namesPreferTheEntryThatKnowsTheChemistry()
{
    QFETCH(const quint64, serial);
    QFETCH(const QString, chemistry);
    QFETCH(const QString, name);
    add("1.json", device("One", R"([{"start": "10", "end": "20"}])",
                         R"([{"ledChemistry": "RGB", "profileId": 7}])"));
    add("2.json", device("Two", R"([{"start": "11", "end": "20"}])",
                         R"([{"ledChemistry": "RGBW", "profileId": 6}])"));
    const DeviceDictionary dictionary(m_dir->path());
    QCOMPARE(dictionary.deviceNameForSerial(serial, chemistry), name);
}

void DeviceDictionaryTest::badFilesGiveNoRange()
{
    add("bad.json", "[1, 2, 3]");
    add("good.json", device("Good", R"([{"start": "10", "end": "20"}])"));
    const QString path = QDir(m_dir->path()).filePath(QStringLiteral("bad.json"));
    LogCapture log;
    const DeviceDictionary dictionary(m_dir->path());
    QCOMPARE(LogCapture::lines(),
             QStringList(QStringLiteral("File \"%1\" is empty or improperly formatted").arg(path)));
    QVERIFY(dictionary.entryForSerial(0) == nullptr);
    QCOMPARE(names(dictionary.entriesForSerial(0x10)), QStringList(QStringLiteral("Good")));
}

void DeviceDictionaryTest::onlyJsonFilesOfTheFolderItselfAreRead()
{
    const QByteArray content = device("A", R"([{"start": "10", "end": "20"}])");
    add("a.txt", content);
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("folder.json")));
    add("folder.json/a.json", content);
    const DeviceDictionary dictionary(m_dir->path());
    QVERIFY(dictionary.entriesForSerial(0x10).isEmpty());
}

void DeviceDictionaryTest::anAbsentFolderGivesAnEmptyDictionary()
{
    LogCapture log;
    const DeviceDictionary dictionary(m_dir->filePath(QStringLiteral("absent")));
    QCOMPARE(LogCapture::lines(), QStringList());
    QVERIFY(dictionary.entriesForSerial(0).isEmpty());
}

QTEST_GUILESS_MAIN(DeviceDictionaryTest)
#include "DeviceDictionaryTest.moc"
