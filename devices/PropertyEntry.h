#pragma once

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QString>

#include <limits>
#include <optional>

/// One property of a device: what it is called, and how its raw number and its text turn into each
/// other. Never changes after construction.
class PropertyEntry : public QObject
{
    Q_OBJECT
public:
    /// Reads one element of a property map. Keys of the wrong kind are passed over.
    explicit PropertyEntry(const QJsonObject& object);

    const QString& tokenName() const { return m_tokenName; }
    /// The name that is shown.
    const QString& stringName() const { return m_stringName; }
    /// "None", "List" or "Range".
    const QString& mappingType() const { return m_mappingType; }
    /// For a list the number by its name, for a range the limits under "min" and "max"; all text.
    const QHash<QString, QString>& values() const { return m_values; }
    const QString& description() const { return m_description; }
    quint16 parameterId() const { return m_parameterId; }
    /// Length of the parameter's value in bits; 0 where the map names none.
    quint16 payloadBits() const { return m_payloadBits; }
    /// Whether a lookup by parameter id may find the entry.
    bool isParameter() const { return m_isParameter; }

    /// The text for a raw value, or nothing where the mapping has none for it. A range takes what
    /// is no number as 0, has no limit on a side that the map leaves out, and shows the address of
    /// "DMX_OFFSET" counted from 1.
    std::optional<QString> textForRaw(const QString& raw) const;
    /// The reverse. Names of a list are compared case-sensitively.
    std::optional<QString> rawForText(const QString& text) const;

private:
    void readValues(const QJsonArray& elements);
    bool isInRange(quint32 number) const { return number >= m_minimum && number <= m_maximum; }

    QString m_tokenName;
    QString m_stringName;
    QString m_mappingType = QStringLiteral("None");
    QHash<QString, QString> m_values;
    QString m_description;
    quint16 m_parameterId = 0;
    quint16 m_payloadBits = 0;
    bool m_isParameter = false;
    quint32 m_minimum = 0;
    quint32 m_maximum = std::numeric_limits<quint32>::max();
    quint32 m_shownFrom = 0; // added for the user
};
