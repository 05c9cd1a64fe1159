#pragma once
#include "color/VelaColor.h"
#include <QMimeData>
#include <QString>
namespace ColorMime {
inline void writeColor(QMimeData* d, const VelaColor& c, const QString& n, const QString& id, const QString& p)
{
    d->setData(QStringLiteral("data/x-velacolor"), c.toString().toLatin1());
    d->setData(QStringLiteral("data/x-velacolor-name"), n.toUtf8());
    d->setData(QStringLiteral("data/x-velacolor-vendorid"), id.toUtf8());
    d->setData(QStringLiteral("data/x-velacolor-originatingPreset"), p.toUtf8());
    d->setData(QStringLiteral("x-sorrel3/color"), c.toString().toLatin1());
}
inline bool readColor(const QMimeData* d, VelaColor* c)
{
    for (const auto& f : {QStringLiteral("data/x-velacolor"), QStringLiteral("x-sorrel3/color")}) {
        const VelaColor r(QString::fromLatin1(d->data(f)));
        if (r.isValid()) { if (c) *c = r; return true; }
    }
    return false;
}
}
