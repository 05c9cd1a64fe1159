#pragma once

#include "devices/DeviceEntry.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPair>
#include <QString>

#include <tuple>

/// What each device found in a map is, by its serial number. Reads all device files of a folder
/// once and writes nothing. Main thread only.
///
/// A serial number belongs to every range that holds it, the ends included. Wherever one entry of
/// several is asked for, the range with the smallest start, then the smallest end, goes first; of
/// the products that share a range, the one whose file was read first.
class DeviceDictionary : public QObject
{
    Q_OBJECT
public:
    /// Reads "*.json" directly in `path`. A file that can't be used is logged and gives no range.
    explicit DeviceDictionary(const QString& path = QStringLiteral(":/DeviceConfigFiles"),
                              QObject* parent = nullptr);

    /// The dictionary of the compiled-in files, made by the first call, which must come after
    /// initForgeResources().
    static DeviceDictionary& instance();

    /// The entries of all ranges that hold `serial`. The product code does not narrow them: that
    /// is entryForSerialAndProduct.
    QList<DeviceEntry*> entriesForSerial(quint64 serial,
                                         const QString& productCode = QString()) const;
    /// The first of them, or null.
    DeviceEntry* entryForSerial(quint64 serial) const;
    /// The first entry with a range that holds `serial` and carries exactly this product code, or
    /// null. Answers are kept.
    DeviceEntry* entryForSerialAndProduct(quint64 serial, const QString& productCode) const;

    /// The fixture colour profile for a text of the LED chemistry. With an empty product code the
    /// first entry for the serial number that knows the chemistry tells; with another, the entry
    /// that matches both alone. 0 where that entry is missing or does not know the chemistry.
    int profileForChemistry(quint64 serial, const QString& productCode,
                            const QString& chemistry) const;
    /// The mode of that profile for a value of the device's input-mode property, in decimal, by
    /// the first entry for the serial number that knows the chemistry; 0 where nothing is known.
    int modeForInput(quint64 serial, const QString& chemistry, const QString& inputMode) const;
    /// The name of the first entry for the serial number that knows the chemistry, else of the
    /// first entry; "Unknown Device" where there is none.
    QString deviceNameForSerial(quint64 serial, const QString& chemistry) const;

private:
    using Range = QPair<quint64, quint64>;                 // start, end
    using Product = std::tuple<quint64, quint64, QString>; // start, end, product code

    template <typename Visitor>
    void visitRanges(quint64 serial, Visitor visit) const;
    DeviceEntry* entryForChemistry(quint64 serial, const QString& chemistry) const;

    QMap<Range, QList<DeviceEntry*>> m_rangeIndex; // the entries are children of this
    mutable QMap<Product, DeviceEntry*> m_productIndex;
};
