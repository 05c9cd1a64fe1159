#pragma once

#include <QObject>
#include <QString>
#include <QVector>

/// Where one value stands in the memory of a device. Filled once by the entry that owns it.
class MemoryMapEntry : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// The token that the property maps know the value by.
    const QString& name() const { return m_name; }
    /// Whether the value is shown for editing.
    bool userConfigurable() const { return m_userConfigurable; }
    /// Whether the value is never written.
    bool readOnly() const { return m_readOnly; }
    /// Whether the value is read and written in the same place.
    bool isSingleAddress() const { return m_isSingleAddress; }
    /// The value that the factory sets.
    qint32 defaultValue() const { return m_defaultValue; }
    /// One address for each byte, in order; empty when the file named none.
    const QVector<quint32>& readAddresses() const { return m_readAddresses; }
    const QVector<quint32>& writeAddresses() const { return m_writeAddresses; }

private:
    friend class DeviceEntry;

    QString m_name;
    bool m_userConfigurable = false;
    bool m_readOnly = false;
    bool m_isSingleAddress = true;
    qint32 m_defaultValue = 0;
    QVector<quint32> m_readAddresses;
    QVector<quint32> m_writeAddresses;
};
