#pragma once

#include "devices/MemoryMapEntry.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

/// The serial numbers `start` to `end`, both included. `productCode` tells products apart that
/// share a range; empty where there is none.
struct SerialRange
{
    quint64 start = 0;
    quint64 end = 0;
    QString productCode;
};

/// Who checked a device file, and when. Shown only.
struct FileVerification
{
    bool verified = false;
    QString verifiedBy = QStringLiteral("Not Verified");
    QString verifiedDate = QStringLiteral("Not Verified");
};

/// What the emitters of a device imply: the fixture colour profile, and the mode of that profile
/// for each value of the device's input-mode property, in decimal.
struct TintweaveProfile
{
    int profileId = 0;
    QMap<QString, int> inputModes;
};

/// The firmware image of a device, each value as the text of the file. Carried along, not used.
struct BootloaderInfo
{
    QString revision;             // BLRev
    QString processorName;        // ProcName
    QString hierarchy;            // Heirarchy
    QString fileType;             // FileType
    QString wordSize;             // WordSize
    QString wordCount;            // WordCount
    QString versionLocation;      // VerLoc
    QString magicLocation;        // MagicLoc
    QString magicFlag;            // MagicFlag
    QString id;                   // BLID
    QString firmwareMajorVersion; // FirmwareMajorVersion
    QString pageSize;             // PageSize
    QString bl3RevisionLocation;  // BL3_RevLoc
    QString bl3SftLocation;       // BL3_SFTLoc
    QString bl3SftValue;          // BL3_SFTVal
};

/// One product: the content of one device file. Read once; never changes afterwards.
class DeviceEntry : public QObject
{
    Q_OBJECT
public:
    /// Reads the file at `filePath`. An absent or unreadable file, or one that holds no JSON
    /// object, leaves every default; a key of the wrong kind is passed over.
    explicit DeviceEntry(const QString& filePath, QObject* parent = nullptr);

    const QString& filePath() const { return m_filePath; }
    /// "Unknown Device" when the file named none.
    const QString& deviceName() const { return m_deviceName; }
    /// The type's word with an initial capital, such as "Fixture" or "Rdm_fixture"; "Unknown" for
    /// a word that is not one of the known ones.
    const QString& deviceType() const { return m_deviceType; }
    const QList<SerialRange>& serialRanges() const { return m_serialRanges; }
    const QMap<QString, MemoryMapEntry*>& memoryMap() const { return m_memoryMap; }
    /// The place of the value called `token`, or null.
    const MemoryMapEntry* memoryMapEntry(const QString& token) const;
    /// The names of all places in the memory map, in the order of the alphabet.
    QStringList tokens() const { return m_memoryMap.keys(); }
    const FileVerification& verification() const { return m_verification; }
    const QStringList& sftNumbers() const { return m_sftNumbers; }
    /// Values that are the same in every unit, so that none needs to be asked: text by token.
    const QMap<QString, QString>& staticValues() const { return m_staticValues; }
    /// The UDP port at which the device answers a search.
    quint32 discoverPort() const { return m_discoverPort; }
    /// By the text of the LED chemistry.
    const QMap<QString, TintweaveProfile>& tintweaveProfiles() const { return m_tintweaveProfiles; }
    const std::optional<BootloaderInfo>& bootloader() const { return m_bootloader; }

private:
    void readSerialRanges(const QJsonArray& ranges);
    void readMemoryMap(const QJsonArray& places);
    void readVerification(const QJsonArray& records);
    void readStaticValues(const QJsonArray& values);
    void readTintweaveProfiles(const QJsonArray& profiles);

    QString m_filePath;
    QString m_deviceName = QStringLiteral("Unknown Device");
    QString m_deviceType = QStringLiteral("Unknown");
    QList<SerialRange> m_serialRanges;
    QMap<QString, MemoryMapEntry*> m_memoryMap; // children of this
    FileVerification m_verification;
    QStringList m_sftNumbers;
    QMap<QString, QString> m_staticValues;
    quint32 m_discoverPort = 6038;
    QMap<QString, TintweaveProfile> m_tintweaveProfiles;
    std::optional<BootloaderInfo> m_bootloader;
};
