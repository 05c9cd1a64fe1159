#include "devices/DeviceEntry.h"

#include "devices/JsonFile.h"

#include <QDebug>
#include <QJsonValue>

namespace {

/// The stored form of a device type; null for a word that is not one of the known ones.
QString knownDeviceType(const QString& word)
{
    static const QStringList kWords = {
        QStringLiteral("FIXTURE"),         QStringLiteral("ETHERNET_FIXTURE"),
        QStringLiteral("RDM_FIXTURE"),     QStringLiteral("ETHERNET"),
        QStringLiteral("KEYPAD"),          QStringLiteral("FEEDER"),
        QStringLiteral("MESHLINK_DEVICE"), QStringLiteral("OTHER"),
        QStringLiteral("UNKNOWN"),
    };
    return kWords.contains(word) ? word.left(1) + word.mid(1).toLower() : QString();
}

bool isLocation(const QJsonValue& value)
{
    return value.isDouble() || value.isArray();
}

/// One address, or one for each byte in order.
QVector<quint32> addresses(const QJsonValue& value)
{
    if (!value.isArray()) {
        return {jsonU32(value)};
    }
    const QJsonArray array = value.toArray();
    QVector<quint32> list;
    list.reserve(array.size());
    for (const QJsonValue byte : array) {
        list.append(jsonU32(byte));
    }
    return list;
}

/// The array under `key`; empty where the value is of another kind.
QJsonArray arrayAt(const QJsonObject& object, const char* key)
{
    return object.value(QLatin1String(key)).toArray();
}

QString textAt(const QJsonObject& object, const char* key)
{
    return jsonText(object.value(QLatin1String(key)));
}

BootloaderInfo readBootloader(const QJsonObject& object)
{
    BootloaderInfo info;
    info.revision = textAt(object, "BLRev");
    info.processorName = textAt(object, "ProcName");
    info.hierarchy = textAt(object, "Heirarchy"); // spelt so in the files
    info.fileType = textAt(object, "FileType");
    info.wordSize = textAt(object, "WordSize");
    info.wordCount = textAt(object, "WordCount");
    info.versionLocation = textAt(object, "VerLoc");
    info.magicLocation = textAt(object, "MagicLoc");
    info.magicFlag = textAt(object, "MagicFlag");
    info.id = textAt(object, "BLID");
    info.firmwareMajorVersion = textAt(object, "FirmwareMajorVersion");
    info.pageSize = textAt(object, "PageSize");
    info.bl3RevisionLocation = textAt(object, "BL3_RevLoc");
    info.bl3SftLocation = textAt(object, "BL3_SFTLoc");
    info.bl3SftValue = textAt(object, "BL3_SFTVal");
    return info;
}

} // namespace

DeviceEntry::DeviceEntry(const QString& filePath, QObject* parent)
    : QObject(parent)
    , m_filePath(filePath)
{
    const QJsonObject object = readJsonObject(filePath);
    if (object.isEmpty()) {
        return;
    }
    m_deviceName = object.value(QLatin1String("DeviceName")).toString(m_deviceName);
    const QString type = knownDeviceType(object.value(QLatin1String("DeviceType")).toString());
    if (!type.isNull()) {
        m_deviceType = type;
    }
    readSerialRanges(arrayAt(object, "SerialNumberRanges"));
    readMemoryMap(arrayAt(object, "MemoryMap"));
    readVerification(arrayAt(object, "FileVerification"));
    const QJsonArray sftNumbers = arrayAt(object, "SFTNumbers");
    for (const QJsonValue number : sftNumbers) {
        m_sftNumbers.append(jsonText(number));
    }
    readStaticValues(arrayAt(object, "StaticValues"));
    bool parsed = false;
    const quint32 port = textAt(object, "DiscoverPort").toUInt(&parsed);
    if (parsed) {
        m_discoverPort = port;
    }
    readTintweaveProfiles(arrayAt(object, "TintweaveProfiles"));
    const QJsonValue bootloader = object.value(QLatin1String("BootloaderInfo"));
    if (bootloader.isObject()) {
        m_bootloader = readBootloader(bootloader.toObject());
    }
}

const MemoryMapEntry* DeviceEntry::memoryMapEntry(const QString& token) const
{
    return m_memoryMap.value(token);
}

void DeviceEntry::readSerialRanges(const QJsonArray& ranges)
{
    for (const QJsonValue value : ranges) {
        const QJsonObject object = value.toObject();
        SerialRange range;
        range.start = textAt(object, "start").toULongLong(nullptr, 16);
        range.end = textAt(object, "end").toULongLong(nullptr, 16);
        range.productCode = textAt(object, "productCode");
        m_serialRanges.append(range);
    }
}

void DeviceEntry::readMemoryMap(const QJsonArray& places)
{
    for (const QJsonValue value : places) {
        const QJsonObject object = value.toObject();
        auto* const entry = new MemoryMapEntry(this);
        entry->m_name = textAt(object, "name");
        entry->m_userConfigurable = object.value(QLatin1String("userConfigurable")).toBool(false);
        entry->m_readOnly = object.value(QLatin1String("readOnly")).toBool(false);
        entry->m_defaultValue = object.value(QLatin1String("defaultValue")).toInt(0);

        const QJsonValue both = object.value(QLatin1String("address"));
        const QJsonValue read = object.value(QLatin1String("readAddress"));
        const QJsonValue write = object.value(QLatin1String("writeAddress"));
        if (isLocation(both) && read.isUndefined() && write.isUndefined()) {
            entry->m_readAddresses = addresses(both);
            entry->m_writeAddresses = entry->m_readAddresses;
        } else if (isLocation(read) && isLocation(write)) {
            entry->m_isSingleAddress = false;
            entry->m_readAddresses = addresses(read);
            entry->m_writeAddresses = addresses(write);
        } else {
            qDebug("Json file missing read/write addresses or is invalid");
        }
        delete m_memoryMap.value(entry->m_name); // the later one of a name counts
        m_memoryMap.insert(entry->m_name, entry);
    }
}

void DeviceEntry::readVerification(const QJsonArray& records)
{
    const QJsonObject object = records.at(0).toObject(); // an empty array gives an empty object
    m_verification.verified = object.value(QLatin1String("Verified")).toBool(false);
    m_verification.verifiedBy =
        object.value(QLatin1String("Verified By")).toString(m_verification.verifiedBy);
    m_verification.verifiedDate =
        object.value(QLatin1String("Verified Date")).toString(m_verification.verifiedDate);
}

void DeviceEntry::readStaticValues(const QJsonArray& values)
{
    for (const QJsonValue value : values) {
        const QJsonObject object = value.toObject();
        m_staticValues.insert(textAt(object, "name"), textAt(object, "value"));
    }
}

void DeviceEntry::readTintweaveProfiles(const QJsonArray& profiles)
{
    for (const QJsonValue value : profiles) {
        const QJsonObject object = value.toObject();
        TintweaveProfile profile;
        profile.profileId = object.value(QLatin1String("profileId")).toInt(0);
        const QJsonObject modes = object.value(QLatin1String("inputModeMap")).toObject();
        for (auto mode = modes.constBegin(); mode != modes.constEnd(); ++mode) {
            profile.inputModes.insert(mode.key(), mode.value().toInt(0));
        }
        m_tintweaveProfiles.insert(textAt(object, "ledChemistry"), profile);
    }
}
