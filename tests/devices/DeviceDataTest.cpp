#include "FileSupport.h"
#include "devices/DeviceDictionary.h"
#include "devices/PropertyMapper.h"
#include "resources/Resources.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

const char* const kDevices = ":/DeviceConfigFiles";
const char* const kMemoryMap = ":/PropertyMap/PropertyMap.json";
const char* const kRdmMap = ":/PropertyMap/TalvisRDMPropertyMap.json";

/// The modes that the fixture table gives a profile.
QList<int> modesOfProfile(int profile)
{
    static const QSet<int> kRgb = {0, 7, 10, 17};
    static const QSet<int> kRgba = {5, 8, 11, 14, 18, 31, 35, 41, 44};
    static const QSet<int> kRgbw = {6, 9, 12, 15, 19, 32, 36, 42};
    static const QSet<int> kGlowmatch = {13, 16, 20, 33, 34, 37, 43, 45, 46};
    static const QHash<int, QList<int>> kOthers = {
        {1, {0, 7, 3}}, {2, {0, 8, 4}}, {3, {2}},   {4, {9}},   {21, {12, 14}}, {38, {12, 14}},
        {22, {13, 15}}, {39, {13, 15}}, {23, {1}},  {24, {3}},  {25, {2}},      {26, {17, 16}},
        {27, {16}},     {28, {18}},     {29, {20}}, {30, {19}}, {40, {22, 23}}};
    if (kRgb.contains(profile)) {
        return {0};
    }
    if (kRgba.contains(profile)) {
        return {0, 5, 1};
    }
    if (kRgbw.contains(profile)) {
        return {0, 6, 2};
    }
    if (kGlowmatch.contains(profile)) {
        return {0, 10, 11};
    }
    return kOthers.value(profile);
}

/// How many emitters a profile drives.
int emittersOfProfile(int profile)
{
    static const QHash<int, int> kCounts = {{0, 3},  {7, 3},  {10, 3}, {17, 3}, {1, 5},
                                            {2, 5},  {24, 5}, {4, 1},  {26, 3}, {27, 2},
                                            {28, 3}, {29, 2}, {30, 2}};
    return kCounts.value(profile, 4);
}

/// How many channels of a light with that chemistry carry a level.
int emittersOfChemistry(int chemistry)
{
    static const QHash<int, int> kCounts = {{1, 4}, {2, 4},  {13, 4}, {15, 4},  {254, 4},
                                            {3, 5}, {4, 5},  {5, 2},  {7, 1},   {8, 1},
                                            {9, 1}, {10, 1}, {11, 1}, {251, 2}, {252, 2}};
    return kCounts.value(chemistry, 3);
}

QJsonObject readObject(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

QJsonArray rowsOf(const char* path)
{
    return readObject(QLatin1String(path)).value(QLatin1String("PropertyMap")).toArray();
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class DeviceDataTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void everyDeviceFileHasItsKeys();
    void deviceFilesAreNamedAfterTheirProduct();
    void loadingEverythingLogsNothing();
    void everyDeviceTypeIsThere();
    void theGenericDevicesAreThere();
    void serialRangesMakeSense();
    void productsAreToldApartWithinARange();
    void everySerialFindsItsProduct();
    void everyProfileIsUsed();
    void profilesFitTheirChemistry();
    void inputModesBelongToTheirProfile();
    void whitesOfFourTakeTheirModes();
    void everyChemistryHasADevice();
    void memoryPlacesAreKnownProperties();
    void memoryPlacesDoNotOverlap();
    void staticValuesAreKnownProperties();
    void serialsOfNoDeviceStayUnknown();
    void productCodesEndInTheFootprint();

    void theMapsHaveTheirRows();
    void rowsOfTheMapsMakeSense();
    void shownNamesAreUnambiguous();
    void sharedTokensTakeTheRdmDetails();
    void lightsFindTheirProperties_data();
    void lightsFindTheirProperties();
    void valuesGoRoundThroughTextAndNumber_data();
    void valuesGoRoundThroughTextAndNumber();
    void everyListGoesRound();
    void addressesCountFromOne();
    void payloadsOfTheMapsComeInBytes();
    void processWideObjectsAreBuiltOnce();

    void scriptsGiveTheCheckedInFiles();

private:
    const DeviceEntry* entry(const QString& name) const;
    QHash<QString, QString> chemistryNumbers() const;

    QStringList m_paths;
    std::vector<std::unique_ptr<DeviceEntry>> m_entries;
    std::unique_ptr<PropertyMapper> m_mapper;
};

void DeviceDataTest::initTestCase()
{
    initForgeResources();
    QDirIterator files(QLatin1String(kDevices), {QStringLiteral("*.json")}, QDir::Files);
    while (files.hasNext()) {
        m_paths << files.next();
        m_entries.push_back(std::make_unique<DeviceEntry>(m_paths.last()));
    }
    m_mapper = std::make_unique<PropertyMapper>();
    QCOMPARE(m_paths.size(), 124);
}

const DeviceEntry* DeviceDataTest::entry(const QString& name) const
{
    for (const auto& candidate : m_entries) {
        if (candidate->deviceName() == name) {
            return candidate.get();
        }
    }
    return nullptr;
}

QHash<QString, QString> DeviceDataTest::chemistryNumbers() const
{
    const PropertyEntry* const property = m_mapper->entry(QStringLiteral("LED_CHEMISTRY"));
    return property == nullptr ? QHash<QString, QString>() : property->values();
}

void DeviceDataTest::everyDeviceFileHasItsKeys()
{
    for (const QString& path : qAsConst(m_paths)) {
        const QJsonObject object = readObject(path);
        for (const char* const key : {"DeviceType", "DeviceName"}) {
            QVERIFY2(object.value(QLatin1String(key)).isString(), qPrintable(path));
        }
        for (const char* const key : {"SerialNumberRanges", "FileVerification", "MemoryMap"}) {
            QVERIFY2(!object.value(QLatin1String(key)).toArray().isEmpty(), qPrintable(path));
        }
        QCOMPARE(object.value(QLatin1String("FileVerification")).toArray().size(), 1);
        const QJsonArray ranges = object.value(QLatin1String("SerialNumberRanges")).toArray();
        static const QRegularExpression kHex(QStringLiteral("^[0-9A-F]{8}$"));
        for (const QJsonValue range : ranges) {
            for (const char* const key : {"start", "end"}) {
                const QString text = range.toObject().value(QLatin1String(key)).toString();
                QVERIFY2(kHex.match(text).hasMatch(), qPrintable(path));
            }
        }
    }
}

void DeviceDataTest::deviceFilesAreNamedAfterTheirProduct()
{
    QSet<QString> names;
    for (const auto& device : m_entries) {
        QString base = device->deviceName();
        names.insert(base);
        base.replace(QLatin1Char(' '), QLatin1Char('_'));
        QCOMPARE(QFileInfo(device->filePath()).completeBaseName(), base);
    }
    QCOMPARE(names.size(), 124);
}

void DeviceDataTest::loadingEverythingLogsNothing()
{
    LogCapture log;
    const DeviceDictionary dictionary;
    const PropertyMapper mapper;
    QCOMPARE(LogCapture::lines(), QStringList());
    QVERIFY(!mapper.tokens().isEmpty());
}

void DeviceDataTest::everyDeviceTypeIsThere()
{
    QHash<QString, int> counts;
    for (const QString& path : qAsConst(m_paths)) {
        ++counts[readObject(path).value(QLatin1String("DeviceType")).toString()];
    }
    QStringList words = counts.keys();
    words.sort();
    QCOMPARE(words.join(QLatin1Char(' ')),
             QStringLiteral("ETHERNET ETHERNET_FIXTURE FEEDER FIXTURE KEYPAD MESHLINK_DEVICE OTHER "
                            "RDM_FIXTURE UNKNOWN"));
}

void DeviceDataTest::theGenericDevicesAreThere()
{
    const DeviceDictionary dictionary;
    const QStringList chemistries = {QStringLiteral("White"), QStringLiteral("Crest2"),
                                     QStringLiteral("RGB"), QStringLiteral("RGBW"),
                                     QStringLiteral("RGBAW")};
    const QList<int> profiles = {4, 27, 0, 3, 24};
    for (int channels = 1; channels <= 5; ++channels) {
        const DeviceEntry* const device = entry(QStringLiteral("Generic %1-Ch").arg(channels));
        QVERIFY(device != nullptr);
        QCOMPARE(device->serialRanges().size(), 1);
        const SerialRange range = device->serialRanges().first();
        QCOMPARE(range.start, 0x000C0000ULL + 0x10000ULL * static_cast<quint64>(channels));
        QCOMPARE(range.end, range.start + 0xFFFF);
        QCOMPARE(dictionary.profileForChemistry(range.start, QString(), chemistries[channels - 1]),
                 profiles[channels - 1]);
    }
}

void DeviceDataTest::serialRangesMakeSense()
{
    struct Owned
    {
        SerialRange range;
        QString name;
    };
    std::vector<Owned> all;
    for (const auto& device : m_entries) {
        QVERIFY2(!device->serialRanges().isEmpty(), qPrintable(device->deviceName()));
        for (const SerialRange& range : device->serialRanges()) {
            QVERIFY2(range.start <= range.end, qPrintable(device->deviceName()));
            all.push_back({range, device->deviceName()});
        }
    }
    for (std::size_t a = 0; a < all.size(); ++a) {
        for (std::size_t b = a + 1; b < all.size(); ++b) {
            const SerialRange& first = all[a].range;
            const SerialRange& second = all[b].range;
            if (first.start > second.end || second.start > first.end) {
                continue;
            }
            // Only whole ranges are shared, and only by products with codes of their own.
            const QString names = all[a].name + QLatin1String(", ") + all[b].name;
            QVERIFY2(first.start == second.start && first.end == second.end, qPrintable(names));
            QVERIFY2(!first.productCode.isEmpty() && !second.productCode.isEmpty(),
                     qPrintable(names));
            QVERIFY2(first.productCode != second.productCode, qPrintable(names));
        }
    }
}

void DeviceDataTest::productsAreToldApartWithinARange()
{
    const DeviceEntry* const rgb = entry(QStringLiteral("Tarlatan RGB"));
    const DeviceEntry* const rgbw = entry(QStringLiteral("Tarlatan RGBW"));
    QVERIFY(rgb != nullptr && rgbw != nullptr);
    const SerialRange first = rgb->serialRanges().first();
    const SerialRange second = rgbw->serialRanges().first();
    QCOMPARE(first.start, second.start);
    const DeviceDictionary dictionary;
    QCOMPARE(dictionary.entriesForSerial(first.start).size(), 5);
    QCOMPARE(dictionary.entryForSerialAndProduct(first.start, first.productCode)->deviceName(),
             rgb->deviceName());
    QCOMPARE(dictionary.entryForSerialAndProduct(first.start, second.productCode)->deviceName(),
             rgbw->deviceName());
}

void DeviceDataTest::everySerialFindsItsProduct()
{
    const DeviceDictionary dictionary;
    for (const auto& device : m_entries) {
        for (const SerialRange& range : device->serialRanges()) {
            for (const quint64 serial : {range.start, range.end}) {
                const DeviceEntry* const found =
                    dictionary.entryForSerialAndProduct(serial, range.productCode);
                QVERIFY2(found != nullptr, qPrintable(device->deviceName()));
                QCOMPARE(found->deviceName(), device->deviceName());
                const QStringList chemistries = device->tintweaveProfiles().keys();
                for (const QString& chemistry : chemistries) {
                    QCOMPARE(dictionary.profileForChemistry(serial, range.productCode, chemistry),
                             device->tintweaveProfiles().value(chemistry).profileId);
                    QCOMPARE(dictionary.deviceNameForSerial(serial, chemistry),
                             device->deviceName());
                }
            }
        }
    }
}

void DeviceDataTest::everyProfileIsUsed()
{
    QSet<int> used;
    for (const auto& device : m_entries) {
        for (const TintweaveProfile& profile : device->tintweaveProfiles()) {
            QVERIFY2(profile.profileId >= 0 && profile.profileId <= 46,
                     qPrintable(device->deviceName()));
            used.insert(profile.profileId);
        }
    }
    QCOMPARE(used.size(), 47);
}

void DeviceDataTest::profilesFitTheirChemistry()
{
    const QHash<QString, QString> numbers = chemistryNumbers();
    int checked = 0;
    for (const auto& device : m_entries) {
        const bool isLight = device->deviceType().endsWith(QLatin1String("ixture"));
        QCOMPARE(device->tintweaveProfiles().isEmpty(), !isLight);
        const QStringList chemistries = device->tintweaveProfiles().keys();
        for (const QString& chemistry : chemistries) {
            QVERIFY2(numbers.contains(chemistry), qPrintable(chemistry));
            QCOMPARE(emittersOfProfile(device->tintweaveProfiles().value(chemistry).profileId),
                     emittersOfChemistry(numbers.value(chemistry).toInt()));
            ++checked;
        }
    }
    QVERIFY(checked >= 105);
}

void DeviceDataTest::inputModesBelongToTheirProfile()
{
    for (const auto& device : m_entries) {
        for (const TintweaveProfile& profile : device->tintweaveProfiles()) {
            QVERIFY2(!profile.inputModes.isEmpty(), qPrintable(device->deviceName()));
            const QList<int> modes = modesOfProfile(profile.profileId);
            const QStringList keys = profile.inputModes.keys();
            for (const QString& key : keys) {
                QVERIFY2(modes.contains(profile.inputModes.value(key)),
                         qPrintable(device->deviceName()));
                bool isNumber = false;
                const uint number = key.toUInt(&isNumber);
                QVERIFY2(isNumber && number <= 6, qPrintable(device->deviceName()));
            }
        }
    }
}

void DeviceDataTest::whitesOfFourTakeTheirModes()
{
    const DeviceDictionary dictionary;
    const QString chemistry = QStringLiteral("Crest4");
    int found = 0;
    for (const auto& device : m_entries) {
        if (device->tintweaveProfiles().value(chemistry).profileId != 40) {
            continue;
        }
        ++found;
        const quint64 serial = device->serialRanges().first().start;
        QCOMPARE(dictionary.modeForInput(serial, chemistry, QStringLiteral("0")), 22);
        QCOMPARE(dictionary.modeForInput(serial, chemistry, QStringLiteral("5")), 23);
    }
    QVERIFY(found >= 4);
}

void DeviceDataTest::everyChemistryHasADevice()
{
    QSet<QString> built;
    for (const auto& device : m_entries) {
        const QStringList chemistries = device->tintweaveProfiles().keys();
        built.unite(QSet<QString>(chemistries.cbegin(), chemistries.cend()));
    }
    const QHash<QString, QString> numbers = chemistryNumbers();
    for (auto it = numbers.cbegin(); it != numbers.cend(); ++it) {
        const bool unset = it.value() == QLatin1String("255"); // memory as it leaves the factory
        QVERIFY2(built.contains(it.key()) != unset, qPrintable(it.key()));
    }
    // Every number that a light treats apart from the others.
    for (const int number : {0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 13, 15, 251, 252, 254, 255}) {
        QVERIFY2(!numbers.key(QString::number(number)).isEmpty(),
                 qPrintable(QString::number(number)));
    }
}

void DeviceDataTest::memoryPlacesAreKnownProperties()
{
    for (const auto& device : m_entries) {
        for (const MemoryMapEntry* const place : device->memoryMap()) {
            const PropertyEntry* const property = m_mapper->entry(place->name());
            QVERIFY2(property != nullptr, qPrintable(place->name()));
            QVERIFY2(!place->readAddresses().isEmpty(), qPrintable(place->name()));
            QVERIFY2(!place->writeAddresses().isEmpty(), qPrintable(place->name()));
            QCOMPARE(place->isSingleAddress(), place->readAddresses() == place->writeAddresses());
            QVERIFY2(!(place->readOnly() && place->userConfigurable()), qPrintable(place->name()));
            const QString text = QString::number(place->defaultValue());
            QVERIFY2(property->mappingType() == QLatin1String("None") ||
                         property->textForRaw(text).has_value(),
                     qPrintable(device->deviceName() + QLatin1Char(' ') + place->name()));
        }
    }
}

void DeviceDataTest::memoryPlacesDoNotOverlap()
{
    for (const auto& device : m_entries) {
        QSet<quint32> taken;
        for (const MemoryMapEntry* const place : device->memoryMap()) {
            QVector<quint32> bytes = place->readAddresses();
            if (!place->isSingleAddress()) {
                bytes += place->writeAddresses();
            }
            for (const quint32 byte : qAsConst(bytes)) {
                QVERIFY2(!taken.contains(byte),
                         qPrintable(device->deviceName() + QLatin1Char(' ') + place->name()));
                taken.insert(byte);
            }
        }
    }
}

void DeviceDataTest::staticValuesAreKnownProperties()
{
    int checked = 0;
    for (const auto& device : m_entries) {
        const QStringList tokens = device->staticValues().keys();
        for (const QString& token : tokens) {
            const PropertyEntry* const property = m_mapper->entry(token);
            QVERIFY2(property != nullptr, qPrintable(token));
            const QString raw = device->staticValues().value(token);
            QVERIFY2(property->textForRaw(raw).has_value(), qPrintable(device->deviceName()));
            if (token == QLatin1String("LED_CHEMISTRY")) {
                QCOMPARE(device->tintweaveProfiles().keys(),
                         QStringList(property->textForRaw(raw).value()));
            }
            ++checked;
        }
    }
    QVERIFY(checked >= 100);
}

void DeviceDataTest::serialsOfNoDeviceStayUnknown()
{
    const DeviceDictionary dictionary;
    for (const quint64 serial : {quint64{0}, quint64{4660}, quint64{0xFFFFFFFF}}) {
        QVERIFY(dictionary.entriesForSerial(serial).isEmpty());
        QCOMPARE(dictionary.profileForChemistry(serial, QString(), QStringLiteral("RGB")), 0);
        QCOMPARE(dictionary.deviceNameForSerial(serial, QStringLiteral("RGB")),
                 QStringLiteral("Unknown Device"));
    }
}

void DeviceDataTest::productCodesEndInTheFootprint()
{
    // What a light reports of itself, in the form in which the reply's reader writes it.
    static const QRegularExpression kForm(
        QStringLiteral("^D\\.[0-9A-F]{4}-P\\.[0-9A-F]{4}-F\\.([0-9]{4})$"));
    const QHash<QString, QString> numbers = chemistryNumbers();
    int coded = 0;
    for (const auto& device : m_entries) {
        for (const SerialRange& range : device->serialRanges()) {
            if (range.productCode.isEmpty()) {
                QVERIFY(device->deviceType() != QLatin1String("Rdm_fixture"));
                continue;
            }
            const QRegularExpressionMatch match = kForm.match(range.productCode);
            QVERIFY2(match.hasMatch(), qPrintable(range.productCode));
            const QString chemistry = device->tintweaveProfiles().firstKey();
            QCOMPARE(match.captured(1).toInt(),
                     emittersOfChemistry(numbers.value(chemistry).toInt()));
            ++coded;
        }
    }
    QCOMPARE(coded, 7);
}

void DeviceDataTest::theMapsHaveTheirRows()
{
    QCOMPARE(rowsOf(kMemoryMap).size(), 266);
    QCOMPARE(rowsOf(kRdmMap).size(), 96);
    QVERIFY(!QFile::exists(QStringLiteral(":/PropertyMap/PropertyMap.modified.json")));
}

void DeviceDataTest::rowsOfTheMapsMakeSense()
{
    static const QRegularExpression kToken(QStringLiteral("^[A-Z][A-Z0-9_]*$"));
    for (const char* const path : {kMemoryMap, kRdmMap}) {
        const QJsonArray rows = rowsOf(path);
        QSet<QString> tokens;
        QSet<int> parameters;
        for (const QJsonValue row : rows) {
            const PropertyEntry property(row.toObject());
            const QByteArray where = property.tokenName().toLatin1();
            QVERIFY2(kToken.match(property.tokenName()).hasMatch(), where.constData());
            QVERIFY2(!tokens.contains(property.tokenName()), where.constData());
            tokens.insert(property.tokenName());
            QVERIFY2(!property.stringName().isEmpty(), where.constData());
            QVERIFY2(!property.description().isEmpty(), where.constData());
            QCOMPARE(property.isParameter(), path == kRdmMap);
            if (path == kRdmMap) {
                QVERIFY2(!parameters.contains(property.parameterId()), where.constData());
                parameters.insert(property.parameterId());
                QCOMPARE(property.payloadBits() % 8, 0);
            }
            const int elements = row.toObject().value(QLatin1String("values")).toArray().size();
            QCOMPARE(property.values().size(), elements); // no name twice
            QCOMPARE(property.mappingType() == QLatin1String("None"), elements == 0);
            if (property.mappingType() == QLatin1String("List")) {
                const QList<QString> numbers = property.values().values();
                QCOMPARE(QSet<QString>(numbers.cbegin(), numbers.cend()).size(), elements);
                const QStringList names = property.values().keys();
                for (const QString& name : names) { // a text must not pass for a raw number
                    bool isNumber = false;
                    name.toDouble(&isNumber);
                    QVERIFY2(!isNumber && !name.isEmpty(), where.constData());
                }
            } else if (property.mappingType() == QLatin1String("Range")) {
                QCOMPARE(elements, 2);
                QVERIFY2(property.values().value(QStringLiteral("min")).toUInt() <
                             property.values().value(QStringLiteral("max")).toUInt(),
                         where.constData());
            }
        }
    }
}

void DeviceDataTest::shownNamesAreUnambiguous()
{
    QHash<QString, QString> tokenByName;
    const QStringList tokens = m_mapper->tokens();
    for (const QString& token : tokens) {
        const QString name = m_mapper->displayName(token);
        QVERIFY2(!tokenByName.contains(name),
                 qPrintable(token + QLatin1String(", ") + tokenByName.value(name)));
        tokenByName.insert(name, token);
        bool isNumber = false; // a name must not pass for a parameter id
        name.toUInt(&isNumber);
        QVERIFY2(!isNumber, qPrintable(name));
    }
}

void DeviceDataTest::sharedTokensTakeTheRdmDetails()
{
    QHash<QString, QJsonObject> memory;
    const QJsonArray memoryRows = rowsOf(kMemoryMap);
    for (const QJsonValue row : memoryRows) {
        memory.insert(row.toObject().value(QLatin1String("tokenName")).toString(), row.toObject());
    }
    int shared = 0;
    const QJsonArray rdmRows = rowsOf(kRdmMap);
    for (const QJsonValue row : rdmRows) {
        const PropertyEntry property(row.toObject());
        const auto found = memory.constFind(property.tokenName());
        if (found == memory.constEnd()) {
            continue;
        }
        ++shared;
        const PropertyEntry former(found.value());
        QCOMPARE(property.stringName(), former.stringName());
        QCOMPARE(property.values(), former.values());
        QCOMPARE(m_mapper->entry(property.tokenName())->parameterId(), property.parameterId());
        QCOMPARE(m_mapper->entry(property.tokenName())->payloadBits(), property.payloadBits());
    }
    QVERIFY(shared >= 20);
    QCOMPARE(m_mapper->tokens().size(), 266 + 96 - shared);
}

void DeviceDataTest::lightsFindTheirProperties_data()
{
    QTest::addColumn<QString>("token");
    QTest::addColumn<QString>("name");
    const auto row = [](const char* token, const char* name) {
        QTest::newRow(token) << QString::fromLatin1(token) << QString::fromLatin1(name);
    };
    row("DMX_OFFSET", "DMX Address");
    row("INPUT_RESOLUTION", "Resolution");
    row("DIMMING_CURVE", "Dimming Curve");
    row("COLOR_CONTROL_MODE", "Color Control Mode");
    row("PLAINWEAVE_MODE", "Plainweave Mode");
    row("LED_CHEMISTRY", "Led Chemistry");
    row("HALF_FULL_MODE", "Half / Full Mode");
    row("CREST_INPUT_MODE", "Crest/Dune Input Mode");
    row("DEVICE_INFO", "Device Info");
    row("STARTUP_COLORS", "Startup Colors");
    row("STARTUP_CHANNEL_1", "Startup Channel 1");
    row("STARTUP_CHANNEL_2", "Startup Channel 2");
    row("STARTUP_CHANNEL_3", "Startup Channel 3");
    row("STARTUP_CHANNEL_4", "Startup Channel 4");
    row("STARTUP_CHANNEL_5", "Startup Channel 5");
    row("STARTUP_CHANNEL_6", "Startup Channel 6");
    row("STARTUP_CHANNEL_7", "Startup Channel 7");
    row("STARTUP_CHANNEL_8", "Startup Channel 8");
    row("BUZZER_ENABLED", "Sound on Keypress");
}

void DeviceDataTest::lightsFindTheirProperties()
{
    QFETCH(const QString, token);
    QFETCH(const QString, name);
    QCOMPARE(m_mapper->displayName(token), name);
}

void DeviceDataTest::valuesGoRoundThroughTextAndNumber_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* raw, const char* text) {
        QTest::addRow("%s %s", name, raw)
            << QString::fromLatin1(name) << QString::fromLatin1(raw) << QString::fromLatin1(text);
    };
    row("Resolution", "0", "16-bit");
    row("Resolution", "1", "8-bit");
    row("Dimming Curve", "0", "Linear");
    row("Dimming Curve", "1", "Normal");
    row("Dimming Curve", "2", "Tungsten");
    row("Color Control Mode", "0", "Native");
    row("Color Control Mode", "1", "RGB In");
    row("Color Control Mode", "2", "Tintweave RGB In");
    row("Color Control Mode", "3", "Tintweave Native");
    row("Color Control Mode", "4", "Tintweave RGB");
    row("Color Control Mode", "5", "RGB to White");
    row("Color Control Mode", "6", "Intensity Only");
    row("Plainweave Mode", "0", "Native");
    row("Plainweave Mode", "6", "Intensity Only");
    row("Half / Full Mode", "0", "Half");
    row("Half / Full Mode", "1", "Full");
    row("Crest/Dune Input Mode", "0", "Two Channel");
    row("Crest/Dune Input Mode", "1", "Native");
    row("Led Chemistry", "0", "RGB");
    row("Led Chemistry", "1", "RGBA");
    row("Led Chemistry", "2", "RGBW");
    row("Led Chemistry", "3", "RGBAW");
    row("Led Chemistry", "4", "RGBWW");
    row("Led Chemistry", "5", "Crest2");
    row("Led Chemistry", "6", "Crest3");
    row("Led Chemistry", "7", "White");
    row("Led Chemistry", "8", "Red");
    row("Led Chemistry", "9", "Green");
    row("Led Chemistry", "10", "Blue");
    row("Led Chemistry", "11", "Amber");
    row("Led Chemistry", "12", "Dune3");
    row("Led Chemistry", "13", "Glowmatch");
    row("Led Chemistry", "15", "Crest4");
    row("Led Chemistry", "251", "Dune2");
    row("Led Chemistry", "252", "Crest2 Swapped");
    row("Led Chemistry", "254", "RGBW Triple");
    row("Led Chemistry", "255", "Not Set");
    row("Led Chemistry", "253", "253"); // unlisted: unchanged
    row("Device Info", "D.0410-P.0101-F.0003", "D.0410-P.0101-F.0003");
    row("Startup Colors", "4294967295", "4294967295");
    row("Startup Channel 1", "0", "0");
    row("Startup Channel 8", "255", "255");
    row("DMX Address", "0", "1");
}

void DeviceDataTest::valuesGoRoundThroughTextAndNumber()
{
    QFETCH(const QString, name);
    QFETCH(const QString, raw);
    QFETCH(const QString, text);
    QCOMPARE(m_mapper->parameterValueToText(name, raw), text);
    QCOMPARE(m_mapper->parameterTextToValue(name, text), raw);
}

void DeviceDataTest::everyListGoesRound()
{
    const QStringList tokens = m_mapper->tokens();
    for (const QString& token : tokens) {
        const PropertyEntry* const property = m_mapper->entry(token);
        if (property->mappingType() != QLatin1String("List")) {
            continue;
        }
        const QList<QString> numbers = property->values().values();
        for (const QString& number : numbers) {
            const QString text = m_mapper->valueToText(token, number);
            QVERIFY2(text != number, qPrintable(token));
            QCOMPARE(m_mapper->parameterTextToValue(property->stringName(), text), number);
        }
    }
}

void DeviceDataTest::addressesCountFromOne()
{
    const QString token = QStringLiteral("DMX_OFFSET");
    const QString name = QStringLiteral("DMX Address");
    QCOMPARE(m_mapper->valueToText(token, QStringLiteral("0")), QStringLiteral("1"));
    QCOMPARE(m_mapper->valueToText(token, QStringLiteral("511")), QStringLiteral("512"));
    QCOMPARE(m_mapper->valueToText(token, QStringLiteral("512")), QStringLiteral("512"));
    QCOMPARE(m_mapper->parameterTextToValue(name, QStringLiteral("512")), QStringLiteral("511"));
}

void DeviceDataTest::payloadsOfTheMapsComeInBytes()
{
    QCOMPARE(m_mapper->payloadBytes(QStringLiteral("Startup Colors")), 4);
    QCOMPARE(m_mapper->payloadBytes(QStringLiteral("34305")), 4); // the same by its id, 0x8601
    QCOMPARE(m_mapper->payloadBytes(QStringLiteral("Serial Text")), 16);
    QCOMPARE(m_mapper->payloadBytes(QStringLiteral("Sound on Keypress")), 1);
    // Parameters whose replies carry one byte.
    for (const int id : {0x8600, 0x8602, 0x8606, 0x9F02, 0x0343, 0xA040}) {
        QCOMPARE(m_mapper->payloadBytes(QString::number(id)), 1);
    }
    QCOMPARE(m_mapper->parameterValueToText(QString::number(0x8600), QStringLiteral("2")),
             QStringLiteral("RGBW"));
}

void DeviceDataTest::processWideObjectsAreBuiltOnce()
{
    QCOMPARE(&PropertyMapper::instance(), &PropertyMapper::instance());
    QCOMPARE(PropertyMapper::instance().tokens().size(), m_mapper->tokens().size());
    QCOMPARE(&DeviceDictionary::instance(), &DeviceDictionary::instance());
    QCOMPARE(DeviceDictionary::instance().deviceNameForSerial(0x000D0000, QString()),
             QStringLiteral("Generic 1-Ch"));
}

void DeviceDataTest::scriptsGiveTheCheckedInFiles()
{
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    if (python.isEmpty()) {
        QSKIP("python3 is not installed, so the generated files can't be made again");
    }
    const QString resources = QStringLiteral(FORGE_SOURCE_DIR "/resources/");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    for (const char* const script :
         {"devices/make_devices.py", "propertymap/make_property_maps.py"}) {
        QProcess process;
        process.start(python, {resources + QLatin1String(script), dir.path()});
        QVERIFY(process.waitForFinished(120000));
        QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                 process.readAllStandardError().constData());
    }
    const QDir made(dir.filePath(QStringLiteral("DeviceConfigFiles")));
    const QDir kept(resources + QStringLiteral("devices/DeviceConfigFiles"));
    const QStringList files = kept.entryList(QDir::Files, QDir::Name);
    QCOMPARE(files.size(), 124);
    QCOMPARE(made.entryList(QDir::Files, QDir::Name), files);
    for (const QString& file : files) {
        QVERIFY2(contentOf(made.filePath(file)) == contentOf(kept.filePath(file)),
                 qPrintable(file));
    }
    QCOMPARE(contentOf(dir.filePath(QStringLiteral("devices.qrc"))),
             contentOf(resources + QStringLiteral("devices.qrc")));
    for (const char* const map : {"PropertyMap.json", "TalvisRDMPropertyMap.json"}) {
        const QByteArray content = contentOf(dir.filePath(QLatin1String(map)));
        QVERIFY2(!content.isEmpty(), map);
        QVERIFY2(content ==
                     contentOf(resources + QLatin1String("propertymap/") + QLatin1String(map)),
                 map);
    }
}

QTEST_GUILESS_MAIN(DeviceDataTest)
#include "DeviceDataTest.moc"
