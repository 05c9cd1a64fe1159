#include "devices/DeviceDictionary.h"

#include <QDir>
#include <QDirIterator>
#include <QStringList>

#include <algorithm>

DeviceDictionary::DeviceDictionary(const QString& path, QObject* parent)
    : QObject(parent)
{
    QDirIterator files(path, {QStringLiteral("*.json")}, QDir::Files);
    while (files.hasNext()) {
        auto* const entry = new DeviceEntry(files.next(), this);
        for (const SerialRange& range : entry->serialRanges()) {
            m_rangeIndex[{range.start, range.end}].append(entry);
        }
    }
}

DeviceDictionary& DeviceDictionary::instance()
{
    static DeviceDictionary dictionary;
    return dictionary;
}

/// Calls `visit(range, entries)` for each range that holds `serial`, in the order of the keys,
/// until it answers true.
template <typename Visitor>
void DeviceDictionary::visitRanges(quint64 serial, Visitor visit) const
{
    for (auto it = m_rangeIndex.constBegin(); it != m_rangeIndex.constEnd(); ++it) {
        if (it.key().first > serial) {
            return; // the starts only grow
        }
        if (serial <= it.key().second && visit(it.key(), it.value())) {
            return;
        }
    }
}

QList<DeviceEntry*> DeviceDictionary::entriesForSerial(quint64 serial,
                                                       const QString& /*productCode*/) const
{
    QList<DeviceEntry*> found;
    visitRanges(serial, [&found](const Range&, const QList<DeviceEntry*>& entries) {
        found += entries;
        return false;
    });
    return found;
}

DeviceEntry* DeviceDictionary::entryForSerial(quint64 serial) const
{
    DeviceEntry* found = nullptr;
    visitRanges(serial, [&found](const Range&, const QList<DeviceEntry*>& entries) {
        found = entries.first();
        return true;
    });
    return found;
}

DeviceEntry* DeviceDictionary::entryForSerialAndProduct(quint64 serial,
                                                        const QString& productCode) const
{
    DeviceEntry* found = nullptr;
    visitRanges(serial, [&](const Range& range, const QList<DeviceEntry*>& entries) {
        const Product key(range.first, range.second, productCode);
        const auto known = m_productIndex.constFind(key);
        if (known != m_productIndex.constEnd()) {
            found = known.value();
            return true;
        }
        for (DeviceEntry* const entry : entries) {
            const QList<SerialRange>& ranges = entry->serialRanges();
            const bool matches =
                std::any_of(ranges.cbegin(), ranges.cend(), [&](const SerialRange& own) {
                    return own.start == range.first && own.end == range.second &&
                           own.productCode == productCode;
                });
            if (matches) {
                m_productIndex.insert(key, entry);
                found = entry;
                return true;
            }
        }
        return false;
    });
    return found;
}

DeviceEntry* DeviceDictionary::entryForChemistry(quint64 serial, const QString& chemistry) const
{
    DeviceEntry* found = nullptr;
    visitRanges(serial, [&](const Range&, const QList<DeviceEntry*>& entries) {
        for (DeviceEntry* const entry : entries) {
            if (entry->tintweaveProfiles().contains(chemistry)) {
                found = entry;
                return true;
            }
        }
        return false;
    });
    return found;
}

int DeviceDictionary::profileForChemistry(quint64 serial, const QString& productCode,
                                          const QString& chemistry) const
{
    const DeviceEntry* const entry = productCode.isEmpty()
                                         ? entryForChemistry(serial, chemistry)
                                         : entryForSerialAndProduct(serial, productCode);
    return entry == nullptr ? 0 : entry->tintweaveProfiles().value(chemistry).profileId;
}

int DeviceDictionary::modeForInput(quint64 serial, const QString& chemistry,
                                   const QString& inputMode) const
{
    const DeviceEntry* const entry = entryForChemistry(serial, chemistry);
    return entry == nullptr
               ? 0
               : entry->tintweaveProfiles().value(chemistry).inputModes.value(inputMode);
}

QString DeviceDictionary::deviceNameForSerial(quint64 serial, const QString& chemistry) const
{
    const DeviceEntry* entry = entryForChemistry(serial, chemistry);
    if (entry == nullptr) {
        entry = entryForSerial(serial);
    }
    return entry == nullptr ? QStringLiteral("Unknown Device") : entry->deviceName();
}
