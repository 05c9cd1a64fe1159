#include "engine/EffectXml.h"

#include "color/XmlText.h"

#include <QDomDocument>
#include <QDomElement>
#include <QDomNode>

namespace EffectXml {

QString valueOf(const QDomNode& key)
{
    return key.firstChild().nodeValue();
}

qint32 toInt(const QString& text, qint32 fallback)
{
    bool ok = false;
    const qint32 value = text.toInt(&ok, 10);
    return ok ? value : fallback;
}

quint32 toUInt(const QString& text, quint32 fallback)
{
    bool ok = false;
    const quint32 value = text.toUInt(&ok, 10);
    return ok ? value : fallback;
}

quint64 toUInt64(const QString& text, quint64 fallback)
{
    bool ok = false;
    const quint64 value = text.toULongLong(&ok, 10);
    return ok ? value : fallback;
}

double toDouble(const QString& text, double fallback)
{
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok ? value : fallback;
}

bool toBool(const QString& text, bool fallback)
{
    return toInt(text, fallback ? 1 : 0) != 0;
}

void appendText(QDomDocument& doc, QDomElement& effect, const QString& key, const QString& value)
{
    QDomElement element = doc.createElement(key);
    element.appendChild(doc.createTextNode(writableXml(value)));
    effect.appendChild(element);
}

void append(QDomDocument& doc, QDomElement& effect, EffectKey key, const QString& value)
{
    appendText(doc, effect, effectKeyText(key), value);
}

void append(QDomDocument& doc, QDomElement& effect, EffectKey key, qint32 value)
{
    append(doc, effect, key, QString::number(value, 10));
}

void append(QDomDocument& doc, QDomElement& effect, EffectKey key, quint32 value)
{
    append(doc, effect, key, QString::number(value, 10));
}

void append(QDomDocument& doc, QDomElement& effect, EffectKey key, quint64 value)
{
    append(doc, effect, key, QString::number(value, 10));
}

void append(QDomDocument& doc, QDomElement& effect, EffectKey key, double value)
{
    append(doc, effect, key, QString::number(value, 'g', 6));
}

void append(QDomDocument& doc, QDomElement& effect, EffectKey key, bool value)
{
    append(doc, effect, key, QString::number(value ? 1 : 0, 10));
}

} // namespace EffectXml
