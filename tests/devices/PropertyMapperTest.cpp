#include "devices/PropertyMapper.h"

#include "FileSupport.h"

#include <QObject>
#include <QTemporaryDir>
#include <QtTest>

class PropertyMapperTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void tokensHaveTheirShownNames();
    void valuesOfATokenTurnIntoText_data();
    void valuesOfATokenTurnIntoText();
    void parametersGoByIdOrShownName_data();
    void parametersGoByIdOrShownName();
    void everyEntryOfAnIdIsTriedInTurn();
    void payloadsComeInBytes_data();
    void payloadsComeInBytes();
    void aLaterTokenTakesThePlaceOfTheEarlier();
    void badMapsAreLoggedAndGiveNothing_data();
    void badMapsAreLoggedAndGiveNothing();
    void anAbsentMapIsPassedOverInSilence();
    void oddElementsDoNoHarm();

private:
    QString write(const char* name, const QByteArray& content);

    QTemporaryDir m_dir;
    QString m_memory;
    QString m_rdm;
};

QString PropertyMapperTest::write(const char* name, const QByteArray& content)
{
    const QString path = m_dir.filePath(QLatin1String(name));
    return writeFile(path, content) ? path : QString();
}

void PropertyMapperTest::initTestCase()
{
    m_memory = write("memory.json", R"({"PropertyMap": [
        {"tokenName": "DMX_OFFSET", "stringName": "DMX Address",
         "values": [{"min": 0}, {"max": 511}]},
        {"tokenName": "BUZZER_ENABLED", "stringName": "Sound on Keypress",
         "values": [{"name": "Disabled", "value": 0}, {"name": "Enabled", "value": 1}]},
        {"tokenName": "LABEL", "stringName": "Label", "values": []},
        {"tokenName": "SHARED", "stringName": "Memory Name", "description": "memory",
         "parameterID": 77, "payloadSize": 24, "values": [{"min": 0}, {"max": 5}]}]})");
    m_rdm = write("rdm.json", R"({"PropertyMap": [
        {"tokenName": "SHARED", "stringName": "Rdm Name", "description": "rdm",
         "parameterID": 78, "payloadSize": 128,
         "values": [{"name": "Low", "value": 0}, {"name": "High", "value": 255}]},
        {"tokenName": "UNSIZED", "stringName": "Unsized", "parameterID": 5, "payloadSize": 0},
        {"tokenName": "ZERO", "stringName": "Zero", "parameterID": 0, "payloadSize": 16,
         "values": [{"name": "Nil", "value": 0}]},
        {"tokenName": "NIBBLE", "stringName": "Nibble", "parameterID": 6, "payloadSize": 4}]})");
    QVERIFY(!m_memory.isEmpty() && !m_rdm.isEmpty());
}

void PropertyMapperTest::tokensHaveTheirShownNames()
{
    const PropertyMapper mapper(QStringList{m_memory, m_rdm});
    QCOMPARE(mapper.displayName(QStringLiteral("BUZZER_ENABLED")),
             QStringLiteral("Sound on Keypress"));
    QCOMPARE(mapper.displayName(QStringLiteral("buzzer_enabled")),
             QStringLiteral("Unsupported Token: buzzer_enabled"));
    QCOMPARE(mapper.displayName(QString()), QStringLiteral("Unsupported Token: "));
}

void PropertyMapperTest::valuesOfATokenTurnIntoText_data()
{
    QTest::addColumn<QString>("token");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("text");
    QTest::newRow("list") << QStringLiteral("BUZZER_ENABLED") << QStringLiteral("1")
                          << QStringLiteral("Enabled");
    QTest::newRow("not in the list")
        << QStringLiteral("BUZZER_ENABLED") << QStringLiteral("7") << QStringLiteral("7");
    QTest::newRow("address") << QStringLiteral("DMX_OFFSET") << QStringLiteral("0")
                             << QStringLiteral("1");
    QTest::newRow("over the range")
        << QStringLiteral("DMX_OFFSET") << QStringLiteral("512") << QStringLiteral("512");
    QTest::newRow("no mapping") << QStringLiteral("LABEL") << QStringLiteral("007")
                                << QStringLiteral("007");
    QTest::newRow("unknown token")
        << QStringLiteral("NOTHING") << QStringLiteral("raw") << QStringLiteral("raw");
}

void PropertyMapperTest::valuesOfATokenTurnIntoText()
{
    QFETCH(const QString, token);
    QFETCH(const QString, raw);
    QFETCH(const QString, text);
    const PropertyMapper mapper(QStringList{m_memory, m_rdm});
    QCOMPARE(mapper.valueToText(token, raw), text);
}

void PropertyMapperTest::parametersGoByIdOrShownName_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("text");
    QTest::newRow("id") << QStringLiteral("78") << QStringLiteral("255") << QStringLiteral("High");
    QTest::newRow("id 0") << QStringLiteral("0") << QStringLiteral("0") << QStringLiteral("Nil");
    QTest::newRow("shown name") << QStringLiteral("Rdm Name") << QStringLiteral("255")
                                << QStringLiteral("High");
    QTest::newRow("shown name, no parameter")
        << QStringLiteral("Sound on Keypress") << QStringLiteral("1") << QStringLiteral("Enabled");
    QTest::newRow("shown address")
        << QStringLiteral("DMX Address") << QStringLiteral("0") << QStringLiteral("1");
    QTest::newRow("token is no name")
        << QStringLiteral("BUZZER_ENABLED") << QStringLiteral("1") << QStringLiteral("1");
    QTest::newRow("id of another form")
        << QStringLiteral("0x4E") << QStringLiteral("255") << QStringLiteral("255");
    QTest::newRow("absent id") << QStringLiteral("79") << QStringLiteral("0")
                               << QStringLiteral("0");
}

void PropertyMapperTest::parametersGoByIdOrShownName()
{
    QFETCH(const QString, parameter);
    QFETCH(const QString, raw);
    QFETCH(const QString, text);
    const PropertyMapper mapper(QStringList{m_memory, m_rdm});
    QCOMPARE(mapper.parameterValueToText(parameter, raw), text);
    QCOMPARE(mapper.parameterTextToValue(parameter, text), raw);
}

void PropertyMapperTest::everyEntryOfAnIdIsTriedInTurn()
{
    const QString path = write("several.json", R"({"PropertyMap": [
        {"tokenName": "A", "parameterID": 9, "values": [{"name": "One", "value": 1}]},
        {"tokenName": "B", "parameterID": 9, "payloadSize": 24,
         "values": [{"name": "Two", "value": 2}]},
        {"tokenName": "C", "parameterID": 9, "values": []}]})");
    const PropertyMapper mapper(QStringList{path});
    const QString id = QStringLiteral("9");
    QCOMPARE(mapper.parameterValueToText(id, QStringLiteral("1")), QStringLiteral("One"));
    QCOMPARE(mapper.parameterValueToText(id, QStringLiteral("2")), QStringLiteral("Two"));
    QCOMPARE(mapper.parameterValueToText(id, QStringLiteral("3")), QStringLiteral("3"));
    QCOMPARE(mapper.parameterTextToValue(id, QStringLiteral("One")), QStringLiteral("1"));
    QCOMPARE(mapper.parameterTextToValue(id, QStringLiteral("Two")), QStringLiteral("2"));
    QCOMPARE(mapper.parameterTextToValue(id, QStringLiteral("Three")), QStringLiteral("Three"));
    QCOMPARE(mapper.payloadBytes(id), 3);
}

void PropertyMapperTest::payloadsComeInBytes_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<int>("bytes");
    QTest::newRow("128 bits") << QStringLiteral("78") << 16;
    QTest::newRow("by shown name") << QStringLiteral("Rdm Name") << 16;
    QTest::newRow("size 0") << QStringLiteral("5") << 1;
    QTest::newRow("no size") << QStringLiteral("Label") << 1;
    QTest::newRow("half a byte") << QStringLiteral("6") << 0;
    QTest::newRow("absent") << QStringLiteral("1234") << 1;
}

void PropertyMapperTest::payloadsComeInBytes()
{
    QFETCH(const QString, parameter);
    QFETCH(const int, bytes);
    const PropertyMapper mapper(QStringList{m_memory, m_rdm});
    QCOMPARE(mapper.payloadBytes(parameter), bytes);
}

void PropertyMapperTest::aLaterTokenTakesThePlaceOfTheEarlier()
{
    const QString shared = QStringLiteral("SHARED");
    const QString raw = QStringLiteral("255");
    const PropertyMapper mapper(QStringList{m_memory, m_rdm});
    QCOMPARE(mapper.tokens().size(), 7);
    QCOMPARE(mapper.entry(shared)->description(), QStringLiteral("rdm"));
    QCOMPARE(mapper.entry(shared)->payloadBits(), quint16{128});
    QCOMPARE(mapper.displayName(shared), QStringLiteral("Rdm Name"));
    QCOMPARE(mapper.valueToText(shared, raw), QStringLiteral("High"));
    // The earlier one is gone under its id and its shown name as well.
    QCOMPARE(mapper.payloadBytes(QStringLiteral("77")), 1);
    QCOMPARE(mapper.payloadBytes(QStringLiteral("Memory Name")), 1);
    QCOMPARE(mapper.parameterValueToText(QStringLiteral("77"), QStringLiteral("05")),
             QStringLiteral("05"));
    QCOMPARE(mapper.parameterValueToText(QStringLiteral("Memory Name"), QStringLiteral("05")),
             QStringLiteral("05"));

    const PropertyMapper reversed(QStringList{m_rdm, m_memory});
    QCOMPARE(reversed.displayName(shared), QStringLiteral("Memory Name"));
    QCOMPARE(reversed.valueToText(shared, QStringLiteral("05")), QStringLiteral("5"));
    QCOMPARE(reversed.payloadBytes(QStringLiteral("78")), 1);
}

void PropertyMapperTest::badMapsAreLoggedAndGiveNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("logged");
    QTest::newRow("nothing") << QByteArray() << true;
    QTest::newRow("an array") << QByteArray("[]") << true;
    QTest::newRow("cut off") << QByteArray("{\"PropertyMap\": [{") << true;
    QTest::newRow("no array inside") << QByteArray("{\"PropertyMap\": {}}") << false;
    QTest::newRow("other key") << QByteArray("{\"Properties\": []}") << false;
}

void PropertyMapperTest::badMapsAreLoggedAndGiveNothing()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, logged);
    const QString path = write("bad.json", content);
    const QString line = QStringLiteral("File \"%1\" is empty or improperly formatted").arg(path);
    LogCapture log;
    const PropertyMapper mapper(QStringList{path});
    QCOMPARE(LogCapture::lines(), logged ? QStringList(line) : QStringList());
    QVERIFY(mapper.tokens().isEmpty());
}

void PropertyMapperTest::anAbsentMapIsPassedOverInSilence()
{
    LogCapture log;
    const PropertyMapper mapper(QStringList{m_dir.filePath(QStringLiteral("absent")), m_memory});
    QCOMPARE(LogCapture::lines(), QStringList());
    QCOMPARE(mapper.tokens().size(), 4);
}

void PropertyMapperTest::oddElementsDoNoHarm()
{
    const QString path = write("odd.json", R"({"PropertyMap": [1, "a", null, [], {},
        {"tokenName": 5, "stringName": [], "parameterID": -3, "payloadSize": 1e300,
         "values": [{"min": -1e300}, {"max": 1e300}]},
        {"tokenName": "GOOD", "stringName": "Good", "parameterID": 70000}]})");
    const PropertyMapper mapper(QStringList{path});
    QCOMPARE(mapper.displayName(QStringLiteral("GOOD")), QStringLiteral("Good"));
    QCOMPARE(mapper.entry(QStringLiteral("GOOD"))->parameterId(), quint16{65535});
    QCOMPARE(mapper.entry(QString())->payloadBits(), quint16{65535});
    QCOMPARE(mapper.valueToText(QString(), QStringLiteral("4294967295")),
             QStringLiteral("4294967295"));
}

QTEST_GUILESS_MAIN(PropertyMapperTest)
#include "PropertyMapperTest.moc"
