#include "devices/PropertyEntry.h"

#include <QJsonDocument>
#include <QObject>
#include <QtTest>

namespace {

PropertyEntry* entryFor(const QByteArray& values, const char* token = "ANY")
{
    const QByteArray text =
        QByteArray("{\"tokenName\": \"") + token + "\", \"values\": " + values + "}";
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    return object.isEmpty() ? nullptr : new PropertyEntry(object);
}

const char* const kSwitch =
    R"([{"name": "Disabled", "value": 0}, {"name": "Enabled", "value": 1}])";
const char* const kAddress = R"([{"min": 0}, {"max": 511}])";

} // namespace

class PropertyEntryTest : public QObject
{
    Q_OBJECT
private slots:
    void readsEveryKey();
    void theKindFollowsFromTheKeys_data();
    void theKindFollowsFromTheKeys();
    void aListKeepsNamesAndNumbers_data();
    void aListKeepsNamesAndNumbers();
    void aRangeKeepsItsLimits();
    void rawValuesTurnIntoText_data();
    void rawValuesTurnIntoText();
    void textsTurnIntoRawValues_data();
    void textsTurnIntoRawValues();
    void anIdOrAPayloadMakesAParameter_data();
    void anIdOrAPayloadMakesAParameter();
};

void PropertyEntryTest::readsEveryKey()
{
    const PropertyEntry entry(QJsonDocument::fromJson(R"({
        "tokenName": "TOKEN", "stringName": "Shown Name", "description": "Help.",
        "comments": "nobody reads this", "parameterID": 65535, "payloadSize": 128,
        "values": []})")
                                  .object());
    QCOMPARE(entry.tokenName(), QStringLiteral("TOKEN"));
    QCOMPARE(entry.stringName(), QStringLiteral("Shown Name"));
    QCOMPARE(entry.description(), QStringLiteral("Help."));
    QCOMPARE(entry.parameterId(), quint16{65535});
    QCOMPARE(entry.payloadBits(), quint16{128});
    QCOMPARE(entry.mappingType(), QStringLiteral("None"));
    QVERIFY(entry.values().isEmpty());
}

void PropertyEntryTest::theKindFollowsFromTheKeys_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<QString>("kind");
    const QString none = QStringLiteral("None");
    const QString list = QStringLiteral("List");
    const QString range = QStringLiteral("Range");
    QTest::newRow("empty") << QByteArray("[]") << none;
    QTest::newRow("no array") << QByteArray("{\"min\": 0}") << none;
    QTest::newRow("list") << QByteArray(kSwitch) << list;
    QTest::newRow("range") << QByteArray(kAddress) << range;
    QTest::newRow("range in one element") << QByteArray(R"([{"min": 0, "max": 9}])") << range;
    QTest::newRow("range of one side") << QByteArray(R"([{"max": 9}])") << range;
    QTest::newRow("other key in a list")
        << QByteArray(R"([{"name": "A", "value": 0, "note": 1}])") << none;
    QTest::newRow("other key in a range")
        << QByteArray(R"([{"min": 0}, {"max": 9, "step": 1}])") << none;
    QTest::newRow("both kinds") << QByteArray(R"([{"min": 0}, {"name": "A", "value": 0}])") << none;
    QTest::newRow("no objects") << QByteArray("[1, \"a\", null]") << none;
}

void PropertyEntryTest::theKindFollowsFromTheKeys()
{
    QFETCH(const QByteArray, values);
    QFETCH(const QString, kind);
    const QScopedPointer<PropertyEntry> entry(entryFor(values));
    QVERIFY(!entry.isNull());
    QCOMPARE(entry->mappingType(), kind);
}

void PropertyEntryTest::aListKeepsNamesAndNumbers_data()
{
    using Texts = QHash<QString, QString>;
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<Texts>("expected");
    const Texts both = {{QStringLiteral("Disabled"), QStringLiteral("0")},
                        {QStringLiteral("Enabled"), QStringLiteral("1")}};
    QTest::newRow("name first") << QByteArray(kSwitch) << both;
    QTest::newRow("value first")
        << QByteArray(R"([{"value": 0, "name": "Disabled"}, {"value": 1, "name": "Enabled"}])")
        << both;
    QTest::newRow("value without a name")
        << QByteArray(R"([{"name": "A"}, {"value": 1}])") << Texts();
    QTest::newRow("text for a number") << QByteArray(R"([{"name": "A", "value": "x"}])") << Texts();
    QTest::newRow("large numbers")
        << QByteArray(R"([{"name": "A", "value": 4294967295}, {"name": "B", "value": -7}])")
        << Texts({{QStringLiteral("A"), QStringLiteral("4294967295")},
                  {QStringLiteral("B"), QStringLiteral("-7")}});
}

void PropertyEntryTest::aListKeepsNamesAndNumbers()
{
    using Texts = QHash<QString, QString>;
    QFETCH(const QByteArray, values);
    QFETCH(const Texts, expected);
    const QScopedPointer<PropertyEntry> entry(entryFor(values));
    QCOMPARE(entry->mappingType(), QStringLiteral("List"));
    QCOMPARE(entry->values(), expected);
}

void PropertyEntryTest::aRangeKeepsItsLimits()
{
    const QScopedPointer<PropertyEntry> entry(entryFor(R"([{"min": 5}, {"max": 4294967295}])"));
    QCOMPARE(entry->values().size(), 2);
    QCOMPARE(entry->values().value(QStringLiteral("min")), QStringLiteral("5"));
    QCOMPARE(entry->values().value(QStringLiteral("max")), QStringLiteral("4294967295"));
}

void PropertyEntryTest::rawValuesTurnIntoText_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("text"); // null: no mapping
    const QByteArray any("ANY");
    const QByteArray offset("DMX_OFFSET");
    QTest::newRow("list") << QByteArray(kSwitch) << any << QStringLiteral("1")
                          << QStringLiteral("Enabled");
    QTest::newRow("not in the list")
        << QByteArray(kSwitch) << any << QStringLiteral("2") << QString();
    QTest::newRow("list compares texts")
        << QByteArray(kSwitch) << any << QStringLiteral("01") << QString();
    QTest::newRow("range, low end") << QByteArray(R"([{"min": 3}, {"max": 9}])") << any
                                    << QStringLiteral("3") << QStringLiteral("3");
    QTest::newRow("range, under") << QByteArray(R"([{"min": 3}, {"max": 9}])") << any
                                  << QStringLiteral("2") << QString();
    QTest::newRow("range, high end")
        << QByteArray(kAddress) << any << QStringLiteral("511") << QStringLiteral("511");
    QTest::newRow("range, over") << QByteArray(kAddress) << any << QStringLiteral("512")
                                 << QString();
    QTest::newRow("range, leading zeros")
        << QByteArray(kAddress) << any << QStringLiteral("007") << QStringLiteral("7");
    QTest::newRow("range, no number")
        << QByteArray(kAddress) << any << QStringLiteral("x") << QStringLiteral("0");
    QTest::newRow("range without min")
        << QByteArray(R"([{"max": 9}])") << any << QStringLiteral("0") << QStringLiteral("0");
    QTest::newRow("range without max")
        << QByteArray(R"([{"min": 1}])") << any << QStringLiteral("4294967295")
        << QStringLiteral("4294967295");
    QTest::newRow("address counts from 1")
        << QByteArray(kAddress) << offset << QStringLiteral("0") << QStringLiteral("1");
    QTest::newRow("last address") << QByteArray(kAddress) << offset << QStringLiteral("511")
                                  << QStringLiteral("512");
    QTest::newRow("address over") << QByteArray(kAddress) << offset << QStringLiteral("512")
                                  << QString();
    QTest::newRow("address as a list does not count")
        << QByteArray(kSwitch) << offset << QStringLiteral("0") << QStringLiteral("Disabled");
    QTest::newRow("none") << QByteArray("[]") << offset << QStringLiteral("0") << QString();
}

void PropertyEntryTest::rawValuesTurnIntoText()
{
    QFETCH(const QByteArray, values);
    QFETCH(const QByteArray, token);
    QFETCH(const QString, raw);
    QFETCH(const QString, text);
    const QScopedPointer<PropertyEntry> entry(entryFor(values, token.constData()));
    QCOMPARE(entry->textForRaw(raw).has_value(), !text.isNull());
    QCOMPARE(entry->textForRaw(raw).value_or(QString()), text);
}

void PropertyEntryTest::textsTurnIntoRawValues_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("raw"); // null: no mapping
    const QByteArray any("ANY");
    const QByteArray offset("DMX_OFFSET");
    QTest::newRow("list") << QByteArray(kSwitch) << any << QStringLiteral("Enabled")
                          << QStringLiteral("1");
    QTest::newRow("list, other case")
        << QByteArray(kSwitch) << any << QStringLiteral("enabled") << QString();
    QTest::newRow("list, raw number")
        << QByteArray(kSwitch) << any << QStringLiteral("1") << QString();
    QTest::newRow("range") << QByteArray(kAddress) << any << QStringLiteral("511")
                           << QStringLiteral("511");
    QTest::newRow("range, over") << QByteArray(kAddress) << any << QStringLiteral("512")
                                 << QString();
    QTest::newRow("first address")
        << QByteArray(kAddress) << offset << QStringLiteral("1") << QStringLiteral("0");
    QTest::newRow("last address") << QByteArray(kAddress) << offset << QStringLiteral("512")
                                  << QStringLiteral("511");
    QTest::newRow("address over") << QByteArray(kAddress) << offset << QStringLiteral("513")
                                  << QString();
    QTest::newRow("address 0") << QByteArray(kAddress) << offset << QStringLiteral("0")
                               << QString();
    QTest::newRow("none") << QByteArray("[]") << any << QStringLiteral("1") << QString();
}

void PropertyEntryTest::textsTurnIntoRawValues()
{
    QFETCH(const QByteArray, values);
    QFETCH(const QByteArray, token);
    QFETCH(const QString, text);
    QFETCH(const QString, raw);
    const QScopedPointer<PropertyEntry> entry(entryFor(values, token.constData()));
    QCOMPARE(entry->rawForText(text).has_value(), !raw.isNull());
    QCOMPARE(entry->rawForText(text).value_or(QString()), raw);
}

void PropertyEntryTest::anIdOrAPayloadMakesAParameter_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("parameter");
    QTest::newRow("neither") << QByteArray(R"({"tokenName": "A"})") << false;
    QTest::newRow("id") << QByteArray(R"({"parameterID": 1})") << true;
    QTest::newRow("id 0 alone") << QByteArray(R"({"parameterID": 0})") << false;
    QTest::newRow("id 0 with a payload")
        << QByteArray(R"({"parameterID": 0, "payloadSize": 8})") << true;
}

void PropertyEntryTest::anIdOrAPayloadMakesAParameter()
{
    QFETCH(const QByteArray, text);
    QFETCH(const bool, parameter);
    const PropertyEntry entry(QJsonDocument::fromJson(text).object());
    QCOMPARE(entry.isParameter(), parameter);
}

QTEST_GUILESS_MAIN(PropertyEntryTest)
#include "PropertyEntryTest.moc"
