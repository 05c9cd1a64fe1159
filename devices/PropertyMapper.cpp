#include "devices/PropertyMapper.h"

#include "devices/JsonFile.h"
#include "devices/PropertyVocabulary.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <optional>

PropertyMapper::PropertyMapper()
    : PropertyMapper(
          QStringList{QLatin1String(kPropertyMapPath), QLatin1String(kRdmPropertyMapPath)})
{}

PropertyMapper::PropertyMapper(const QStringList& paths)
{
    for (const QString& path : paths) {
        load(path);
    }
}

PropertyMapper::~PropertyMapper()
{
    qDeleteAll(m_tokens);
}

PropertyMapper& PropertyMapper::instance()
{
    static PropertyMapper mapper;
    return mapper;
}

void PropertyMapper::load(const QString& path)
{
    const QJsonValue map = readJsonObject(path).value(QLatin1String("PropertyMap"));
    if (!map.isArray()) {
        return;
    }
    const QJsonArray elements = map.toArray();
    for (const QJsonValue element : elements) {
        enter(new PropertyEntry(element.toObject()));
    }
}

void PropertyMapper::enter(PropertyEntry* entry)
{
    PropertyEntry* const former = m_tokens.value(entry->tokenName());
    if (former != nullptr) {
        m_parameterIds.remove(QString::number(former->parameterId()), former);
        m_displayNames.remove(former->stringName(), former);
        delete former;
    }
    m_tokens.insert(entry->tokenName(), entry);
    m_displayNames.insert(entry->stringName(), entry);
    if (entry->isParameter()) {
        m_parameterIds.insert(QString::number(entry->parameterId()), entry);
    }
}

QString PropertyMapper::displayName(const QString& token) const
{
    const PropertyEntry* const found = entry(token);
    return found != nullptr ? found->stringName()
                            : QLatin1String(kUnsupportedToken) + QLatin1String(": ") + token;
}

QString PropertyMapper::valueToText(const QString& token, const QString& raw) const
{
    const PropertyEntry* const found = entry(token);
    return found != nullptr ? found->textForRaw(raw).value_or(raw) : raw;
}

/// Calls `visit(entry)` for each entry of the parameter until it answers true.
template <typename Visitor>
void PropertyMapper::visitParameter(const QString& parameter, Visitor visit) const
{
    const Table* table = &m_parameterIds;
    auto it = table->constFind(parameter);
    if (it == table->constEnd()) {
        table = &m_displayNames;
        it = table->constFind(parameter);
    }
    for (; it != table->constEnd() && it.key() == parameter; ++it) {
        if (visit(*it.value())) {
            return;
        }
    }
}

QString PropertyMapper::parameterValueToText(const QString& parameter, const QString& raw) const
{
    std::optional<QString> text;
    visitParameter(parameter, [&](const PropertyEntry& entry) {
        text = entry.textForRaw(raw);
        return text.has_value();
    });
    return text.value_or(raw);
}

QString PropertyMapper::parameterTextToValue(const QString& parameter, const QString& text) const
{
    std::optional<QString> raw;
    visitParameter(parameter, [&](const PropertyEntry& entry) {
        raw = entry.rawForText(text);
        return raw.has_value();
    });
    return raw.value_or(text);
}

int PropertyMapper::payloadBytes(const QString& parameter) const
{
    int bytes = 1;
    visitParameter(parameter, [&bytes](const PropertyEntry& entry) {
        if (entry.payloadBits() == 0) {
            return false;
        }
        bytes = entry.payloadBits() / 8;
        return true;
    });
    return bytes;
}
