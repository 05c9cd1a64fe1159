#pragma once

#include "devices/PropertyEntry.h"

#include <QHash>
#include <QMultiHash>
#include <QObject>
#include <QString>
#include <QStringList>

/// Turns the raw numbers of device memory into words for the user, and back. A value that can't be
/// mapped comes back unchanged. Fixed after construction; main thread only.
class PropertyMapper : public QObject
{
    Q_OBJECT
public:
    /// Loads the two compiled-in maps, after initForgeResources().
    PropertyMapper();
    /// Loads the maps at `paths`, in this order, into one table: a later entry takes the place of
    /// an earlier one with its token, under its parameter id too. An absent file gives nothing; one
    /// that holds no JSON object gives a debug line.
    explicit PropertyMapper(const QStringList& paths);
    ~PropertyMapper() override;

    PropertyMapper(const PropertyMapper&) = delete;
    PropertyMapper& operator=(const PropertyMapper&) = delete;

    /// The mapper of the compiled-in maps, made by the first call.
    static PropertyMapper& instance();

    /// The entry called `token`, or null.
    const PropertyEntry* entry(const QString& token) const { return m_tokens.value(token); }
    /// All tokens, in no order.
    QStringList tokens() const { return m_tokens.keys(); }

    /// The name that is shown for `token`; "Unsupported Token: " and the token if there is none.
    QString displayName(const QString& token) const;
    /// The text for the raw value of `token`; `raw` itself for an unknown token or value.
    QString valueToText(const QString& token, const QString& raw) const;

    // A parameter is named by its id in decimal, or else by the name that is shown for it. Of
    // several entries of one id the last loaded goes first.

    /// The text for a raw value, by the first entry that has one; else `raw` itself.
    QString parameterValueToText(const QString& parameter, const QString& raw) const;
    /// The raw value, in decimal, for a text, by the first entry that has one; else `text` itself.
    QString parameterTextToValue(const QString& parameter, const QString& text) const;
    /// Length of the parameter's value in whole bytes, by the first entry with a length; else 1.
    int payloadBytes(const QString& parameter) const;

private:
    using Table = QMultiHash<QString, PropertyEntry*>;

    void load(const QString& path);
    void enter(PropertyEntry* entry);
    template <typename Visitor>
    void visitParameter(const QString& parameter, Visitor visit) const;

    QHash<QString, PropertyEntry*> m_tokens; // owned
    Table m_parameterIds;                    // not owned
    Table m_displayNames;                    // not owned
};
