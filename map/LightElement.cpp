#include "devices/DeviceDictionary.h"
#include "devices/PropertyMapper.h"
#include "map/DmxCache.h"
#include "map/ElementText.h"
#include "map/Light.h"
#include "map/MapNode.h"

#include <QLatin1String>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace {

enum Key : int {
    NameKey,
    ControllerKey,
    FixtureCodeKey,
    FixtureKey,
    SelfKey,
    PortKey,
    LightNumberKey,
    XKey,
    YKey,
    ZKey,
    Q0Key,
    Q1Key,
    Q2Key,
    Q3Key,
    ChannelKey,
    SerialKey,
    ProfileKey,
    IoModeKey,
    PropertiesKey,
    UnknownKey,
};

constexpr ElementKey<Key> kKeys[] = {
    {"n", NameKey},
    {"name", NameKey},
    {"c", ControllerKey},
    {"controller", ControllerKey},
    {"fc", FixtureCodeKey},
    {"fixturecode", FixtureCodeKey},
    {"f", FixtureKey},
    {"fixture", FixtureKey},
    {"s", SelfKey},
    {"self", SelfKey},
    {"pn", PortKey},
    {"ln", LightNumberKey},
    {"lightnumber", LightNumberKey},
    {"x", XKey},
    {"y", YKey},
    {"z", ZKey},
    {"q0", Q0Key},
    {"q1", Q1Key},
    {"q2", Q2Key},
    {"q3", Q3Key},
    {"ch", ChannelKey},
    {"channel", ChannelKey},
    {"sn", SerialKey},
    {"tintweaveprofileid", ProfileKey},
    {"tintweaveiomode", IoModeKey},
    {"properties", PropertiesKey},
};

constexpr quint64 kNoUid = 0xFFFFFFFFU;

QString addressName()
{
    return QStringLiteral("DMX Address");
}

int channelsOf(quint32 chemistry)
{
    switch (chemistry) {
    case 1:
    case 2:
    case 13:
    case 15:
        return 4;
    case 3:
    case 4:
        return 5;
    case 5:
        return 2;
    case 7:
    case 8:
    case 9:
    case 10:
    case 11:
        return 1;
    default:
        return 3;
    }
}

/// Where a serial number stands among the ends of all serial ranges: numbers between the same two
/// ends are of the same devices.
std::ptrdiff_t stretchOf(quint64 serial)
{
    static const std::vector<quint64> ends = [] {
        std::vector<quint64> all;
        const auto entries = DeviceDictionary::instance().findChildren<DeviceEntry*>();
        for (const DeviceEntry* const entry : entries) {
            for (const SerialRange& range : entry->serialRanges()) {
                all.push_back(range.start);
                all.push_back(range.end + 1);
            }
        }
        std::sort(all.begin(), all.end());
        return all;
    }();
    return std::upper_bound(ends.begin(), ends.end(), serial) - ends.begin();
}

/// DeviceDictionary::profileForChemistry; neighbouring lights of a map mostly ask the same.
int profileFor(quint64 serial, const QString& deviceInfo, const QString& chemistry)
{
    struct Answer
    {
        std::ptrdiff_t stretch = -1;
        QString deviceInfo;
        QString chemistry;
        int profile = 0;
    };
    static Answer last;
    const std::ptrdiff_t stretch = stretchOf(serial);
    if (last.stretch != stretch || last.deviceInfo != deviceInfo || last.chemistry != chemistry) {
        last = {stretch, deviceInfo, chemistry,
                DeviceDictionary::instance().profileForChemistry(serial, deviceInfo, chemistry)};
    }
    return last.profile;
}

/// Empty where the dictionary knows no device.
QString deviceNameFor(quint64 serial, quint32 chemistry)
{
    struct Answer
    {
        std::ptrdiff_t stretch = -1;
        quint32 chemistry = 0;
        QString name;
    };
    static Answer last;
    const std::ptrdiff_t stretch = stretchOf(serial);
    if (last.stretch != stretch || last.chemistry != chemistry) {
        const QString text = PropertyMapper::instance().valueToText(QStringLiteral("LED_CHEMISTRY"),
                                                                    QString::number(chemistry));
        QString name = DeviceDictionary::instance().deviceNameForSerial(serial, text);
        if (name == QLatin1String("Unknown Device")) {
            name.clear();
        }
        last = {stretch, chemistry, name};
    }
    return last.name;
}

} // namespace

/// A property list as it stands in a file and what it comes to. Most lights of a map have one of a
/// few lists: these share their hash, and each list is worked out once.
struct Light::PropertyList
{
    std::vector<std::pair<QString, QString>> raw; // tokens and texts
    QHash<QString, QString> properties;
    QHash<QString, QString> settled; // what the layout leaves of them
    bool isSettled = false;
    Settings settings;
};

Light::Light(QDomNode* element)
    : Light(MapTree(element).root())
{}

Light::Light(const MapNode& element)
    : m_name(QStringLiteral("Default Light"))
{
    if (element.isNull()) {
        m_cacheForm = DmxCache::instance().formOf(DmxCacheKey());
        return;
    }
    PropertyList* shared = nullptr;
    for (MapNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const Key key = findElementKey(kKeys, child.name(), UnknownKey);
        if (key == PropertiesKey) {
            shared = readProperties(child);
        } else if (key != UnknownKey) {
            readValue(key, child.firstValue());
        }
    }
    if (shared != nullptr && shared->isSettled) {
        m_properties = shared->settled;
    }
    updateLayout();
    if (shared != nullptr && !shared->isSettled) {
        shared->settled = m_properties;
        shared->isSettled = true;
    }
    m_deviceName = deviceNameFor(m_serialNumber, m_settings.ledChemistry);
    emit updatedLight(m_uid);
}

void Light::readValue(int key, const QString& text)
{
    switch (key) {
    case NameKey:
        m_name = text;
        break;
    case ControllerKey:
        m_controllerUid = readHex64(text, kNoUid);
        break;
    case FixtureCodeKey: {
        bool ok = false;
        const qint32 code = text.toInt(&ok, 16);
        m_fixtureCode = ok ? code : -1;
        break;
    }
    case FixtureKey:
        m_fixtureUid = readHex64(text, kNoUid);
        break;
    case SelfKey:
        m_uid = readHex64(text, kNoUid);
        break;
    case PortKey:
        m_frame.port = static_cast<quint8>(readUInt32(text, 0)); // its low byte
        break;
    case LightNumberKey:
        m_lightNumber = readUInt32(text, 0);
        break;
    case XKey:
        m_position.x = readDouble(text, 0.0);
        break;
    case YKey:
        m_position.y = readDouble(text, 0.0);
        break;
    case ZKey:
        m_position.z = readDouble(text, 0.0);
        break;
    case Q0Key:
        m_position.q0 = readDouble(text, 0.0);
        break;
    case Q1Key:
        m_position.q1 = readDouble(text, 0.0);
        break;
    case Q2Key:
        m_position.q2 = readDouble(text, 0.0);
        break;
    case Q3Key:
        m_position.q3 = readDouble(text, 0.0);
        break;
    case ChannelKey:
        m_frame.channel = readInt32(text, 0);
        m_addressIsChannel = true; // "DMX Address" follows it
        if (m_properties.contains(addressName())) {
            m_properties.remove(addressName());
        }
        break;
    case SerialKey:
        m_serialNumber = readUInt64(text, kNoUid); // decimal, unlike the uids
        break;
    case ProfileKey:
        m_profileId = readInt32(text, 0);
        break;
    case IoModeKey:
        m_ioMode = readInt32(text, 0);
        break;
    default:
        break;
    }
}

/// Takes the list in. Answers the known list that the light's properties now are, or null where
/// they are its own.
Light::PropertyList* Light::readProperties(const MapNode& list)
{
    constexpr std::size_t kKnownLists = 8;
    static std::array<PropertyList, kKnownLists> known;
    static std::size_t next = 0;
    static std::vector<std::pair<QString, QString>> raw;

    raw.clear();
    for (MapNode child = list.firstChild(); !child.isNull(); child = child.nextSibling()) {
        raw.emplace_back(child.name(), child.firstValue());
    }
    bool mayShare = m_properties.isEmpty() && !raw.empty();
    if (mayShare) {
        auto* const same = std::find_if(known.begin(), known.end(),
                                        [](const PropertyList& one) { return one.raw == raw; });
        if (same != known.end()) {
            m_properties = same->properties;
            m_settings = same->settings;
            return &*same;
        }
    }
    const PropertyMapper& mapper = PropertyMapper::instance();
    for (const auto& [token, text] : raw) {
        const QString displayName = mapper.displayName(token);
        const bool isAddress = displayName == addressName();
        mayShare = mayShare && !isAddress; // it settles the channel too
        if (m_properties.contains(displayName) || (isAddress && m_addressIsChannel) ||
            token.contains(QLatin1String("DMX_OFFSET"))) { // the address comes from "ch" alone
            continue;
        }
        m_properties.insert(displayName, mapper.parameterValueToText(displayName, text));
        applyProperty(displayName);
    }
    if (!mayShare) {
        return nullptr;
    }
    PropertyList& entry = known[next];
    next = (next + 1) % kKnownLists;
    entry = {raw, m_properties, {}, false, m_settings};
    return &entry;
}

void Light::applyProperty(const QString& displayName)
{
    const QString text = m_properties.value(displayName);
    if (displayName == addressName()) {
        m_frame.channel = static_cast<qint32>(static_cast<quint32>(text.toInt()) - 1U);
        return;
    }
    if (displayName.startsWith(QLatin1String("Startup Channel "))) {
        m_settings.hasStartupChannels = true;
        applyStartupChannel(displayName);
        return;
    }
    const quint32 value =
        PropertyMapper::instance().parameterTextToValue(displayName, text).toUInt();
    if (displayName == QLatin1String("Resolution")) {
        m_settings.resolution = value;
    } else if (displayName == QLatin1String("Dimming Curve")) {
        m_settings.dimmingCurve = value;
    } else if (displayName == QLatin1String("Color Control Mode") ||
               displayName == QLatin1String("Plainweave Mode")) {
        m_settings.controlMode = value;
    } else if (displayName == QLatin1String("Led Chemistry")) {
        m_settings.ledChemistry = value;
    } else if (displayName == QLatin1String("Half / Full Mode")) {
        m_settings.halfFull = value != 0;
    } else if (displayName == QLatin1String("Crest/Dune Input Mode")) {
        m_settings.ioModeSet = value;
    }
    // "Device Info" ends in channels and footprint, but updateLayout() settles both anew.
}

/// Puts one channel's start value into the number that holds those of all channels.
void Light::applyStartupChannel(const QString& displayName)
{
    const QString colors = QStringLiteral("Startup Colors");
    if (!m_properties.contains(colors)) {
        return;
    }
    const PropertyMapper& mapper = PropertyMapper::instance();
    const int prefix = QLatin1String("Startup Channel ").size();
    const int number = displayName.midRef(prefix).toInt();
    const int width = mapper.payloadBytes(colors);
    if (number < 1 || number > width) {
        return;
    }
    const quint32 value =
        mapper.parameterTextToValue(displayName, m_properties.value(displayName)).toUInt() & 0xFFU;
    // A wider number wraps: the shift is one of 32 bits.
    const quint32 shift = static_cast<quint32>(width - number) * 8U % 32U;
    quint32 all = m_properties.value(colors).toUInt();
    all = (all & ~(0xFFU << shift)) | (value << shift);
    m_properties.insert(colors, QString::number(all));
}

void Light::updateLayout()
{
    // Nothing changes a light after it was read: a second pass only has to forget the last colour.
    if ((m_frame.flags & IsSettled) == 0) {
        m_frame.flags |= IsSettled;
        settleLayout();
    }
    m_lastColor.reset();
    m_frame.sentTag = kNoTag;
}

void Light::settleLayout()
{
    const quint32 control = m_settings.controlMode;
    if (control == 6) {
        m_channelCount = 1;
    } else if (m_settings.ioModeSet == 0) {
        m_channelCount = 2;
    } else if (control == 1 || control == 2 || control == 4 || control == 5) {
        m_channelCount = 3;
    } else {
        m_channelCount = channelsOf(m_settings.ledChemistry);
    }
    m_channelWidth = m_settings.resolution > 0 ? 1 : 2;
    const int footprint = m_channelCount * m_channelWidth * (m_settings.halfFull ? 2 : 1);
    m_frame.footprint = static_cast<quint8>(footprint);
    for (int n = footprint + 1; m_settings.hasStartupChannels && n < 8; ++n) {
        const QString startup = QStringLiteral("Startup Channel ") + QString::number(n);
        if (m_properties.contains(startup)) {
            m_properties.remove(startup);
        }
    }

    // What the dictionary says always takes the place of the file's profile.
    m_profileId = profileFor(m_serialNumber, property(QStringLiteral("Device Info")),
                             property(QStringLiteral("Led Chemistry")));
    constexpr int kFourWhites = 40;
    if (m_profileId == kFourWhites && control == 0) {
        m_ioMode = 22;
    } else if (m_profileId == kFourWhites && control == 5) {
        m_ioMode = 23;
    }

    DmxCacheKey key;
    key.forwardFlag = forwardFlag();
    key.channelCount = m_channelCount;
    key.channelWidth = m_channelWidth;
    key.dimmingCurve = m_settings.dimmingCurve;
    key.profileId = m_profileId;
    key.mode = effectiveMode();
    key.halfFull = m_settings.halfFull;
    key.ledChemistry = m_settings.ledChemistry;
    m_cacheForm = DmxCache::instance().formOf(key);
}

int Light::lastChannel()
{
    updateLayout();
    const qint64 last = static_cast<qint64>(channel()) - 1 + footprint();
    return static_cast<int>(std::min<qint64>(last, std::numeric_limits<int>::max()));
}
