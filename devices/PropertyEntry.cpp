#include "devices/PropertyEntry.h"

#include "devices/JsonFile.h"

#include <QJsonValue>

#include <algorithm>

namespace {

constexpr char kList[] = "List";
constexpr char kRange[] = "Range";

quint16 u16(const QJsonValue& value)
{
    return static_cast<quint16>(std::min<quint32>(jsonU32(value), 0xFFFFU));
}

} // namespace

PropertyEntry::PropertyEntry(const QJsonObject& object)
    : m_tokenName(object.value(QLatin1String("tokenName")).toString())
    , m_stringName(object.value(QLatin1String("stringName")).toString())
    , m_description(object.value(QLatin1String("description")).toString())
    , m_parameterId(u16(object.value(QLatin1String("parameterID"))))
    , m_payloadBits(u16(object.value(QLatin1String("payloadSize"))))
    , m_isParameter(m_parameterId != 0 || object.value(QLatin1String("payloadSize")).isDouble())
    , m_shownFrom(m_tokenName == QLatin1String("DMX_OFFSET") ? 1 : 0)
{
    const QJsonValue values = object.value(QLatin1String("values"));
    if (values.isArray()) {
        readValues(values.toArray());
    }
}

void PropertyEntry::readValues(const QJsonArray& elements)
{
    bool allRange = true;
    bool allList = true;
    bool any = false;
    for (const QJsonValue element : elements) {
        if (!element.isObject()) {
            continue;
        }
        any = true;
        QString name; // name and number wait for each other: the order of keys is free
        QString number;
        const QJsonObject object = element.toObject();
        for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
            const QString key = it.key();
            const QJsonValue value = it.value();
            if (key == QLatin1String("min") || key == QLatin1String("max")) {
                allList = false;
                if (value.isDouble()) {
                    (key == QLatin1String("min") ? m_minimum : m_maximum) = jsonU32(value);
                    m_values.insert(key, jsonText(value));
                }
                continue;
            }
            allRange = false;
            if (key == QLatin1String("name")) {
                name = value.toString();
            } else if (key == QLatin1String("value")) {
                number = value.isDouble() ? jsonText(value) : QString();
            } else {
                allList = false;
            }
        }
        if (!name.isNull() && !number.isNull()) {
            m_values.insert(name, number);
        }
    }
    if (any && (allList || allRange)) {
        m_mappingType = QLatin1String(allList ? kList : kRange);
    }
}

std::optional<QString> PropertyEntry::textForRaw(const QString& raw) const
{
    if (m_mappingType == QLatin1String(kList)) {
        const auto found = std::find(m_values.cbegin(), m_values.cend(), raw);
        return found == m_values.cend() ? std::nullopt : std::optional<QString>(found.key());
    }
    if (m_mappingType == QLatin1String(kRange)) {
        const quint32 number = raw.toUInt();
        if (isInRange(number)) {
            return QString::number(quint64{number} + m_shownFrom);
        }
    }
    return std::nullopt;
}

std::optional<QString> PropertyEntry::rawForText(const QString& text) const
{
    if (m_mappingType == QLatin1String(kList)) {
        const auto found = m_values.constFind(text);
        return found == m_values.cend() ? std::nullopt : std::optional<QString>(found.value());
    }
    if (m_mappingType == QLatin1String(kRange)) {
        const quint32 number = text.toUInt() - m_shownFrom; // 0 wraps, beyond any maximum
        if (isInRange(number)) {
            return QString::number(number);
        }
    }
    return std::nullopt;
}
