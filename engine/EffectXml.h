#pragma once

#include "engine/EffectKeys.h"

#include <QString>
#include <QtGlobal>

class QDomDocument;
class QDomElement;
class QDomNode;

/// How the values of an "effect" element are written and read: each key is a child element whose
/// only child is a text node. Numbers are decimal; a text that doesn't parse gives the fallback.
namespace EffectXml {

/// The value of a key's element: the node value of its first child, empty without one.
QString valueOf(const QDomNode& key);
qint32 toInt(const QString& text, qint32 fallback);
quint32 toUInt(const QString& text, quint32 fallback);
quint64 toUInt64(const QString& text, quint64 fallback);
/// "nan" and "inf" parse.
double toDouble(const QString& text, double fallback);
/// False for a number 0 only.
bool toBool(const QString& text, bool fallback);

void appendText(QDomDocument& doc, QDomElement& effect, const QString& key, const QString& value);
void append(QDomDocument& doc, QDomElement& effect, EffectKey key, const QString& value);
void append(QDomDocument& doc, QDomElement& effect, EffectKey key, qint32 value);
void append(QDomDocument& doc, QDomElement& effect, EffectKey key, quint32 value);
void append(QDomDocument& doc, QDomElement& effect, EffectKey key, quint64 value);
/// Six significant digits.
void append(QDomDocument& doc, QDomElement& effect, EffectKey key, double value);
/// "0" or "1".
void append(QDomDocument& doc, QDomElement& effect, EffectKey key, bool value);

} // namespace EffectXml
