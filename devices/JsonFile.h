#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

/// The object in the JSON file at `path`. Empty without a message when the file is absent or does
/// not open; empty with one debug line when it holds no object, or one without keys.
QJsonObject readJsonObject(const QString& path);

/// The text form of a number (whole ones without point or exponent) or a text; null for any other
/// kind of value.
QString jsonText(const QJsonValue& value);

/// The number, truncated and limited to 0..4294967295; 0 for any other kind of value.
quint32 jsonU32(const QJsonValue& value);
