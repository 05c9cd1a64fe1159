#pragma once

#include "color/DisplayColor.h"
#include "tests/effects/TestStage.h"

#include <QStringList>

#include <limits>

using Uids = QVector<quint64>;

/// What an effect hands to a light.
struct Paint
{
    VelaColor c;
    QColor q;
};

/// The rows that the stage lays the group out in.
inline QVector<Uids> rowsOf(quint64 gid)
{
    switch (gid) {
    case 0x100:
        return {{1, 2}, {3}, {4, 5, 6}};
    case 0x101:
        return {{1, 2}, {3}, {4, 5, 6}, {7}};
    case 0x102:
        return {{1, 2, 3, 4, 5, 6}};
    case 8:
        return {{8}};
    default:
        return {};
    }
}

/// The four kinds of group that have lights.
inline void addRowsOfGroups()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("chase") << quint64(0x100);
    QTest::newRow("nested chase") << quint64(0x101);
    QTest::newRow("synchronized") << quint64(0x102);
    QTest::newRow("leaf") << quint64(8);
}

/// What differs where the group's rows were painted so, each over a fresh light, and no other
/// light was; empty if nothing does.
inline QString differences(TestStage& stage, quint64 gid, const QVector<Paint>& paints)
{
    const VelaColor black = VelaColor::fromRgb(0, 0, 0);
    QStringList found;
    QVector<VelaColor> mixes(9, black);
    QVector<QColor> sims(9, QColor(Qt::black));
    const QVector<Uids> rows = rowsOf(gid);
    if (paints.size() != rows.size() && !paints.isEmpty()) {
        return QStringLiteral("%1 rows, not %2").arg(rows.size()).arg(paints.size());
    }
    for (int row = 0; row < paints.size(); ++row) {
        const Paint& paint = paints[row];
        for (const quint64 uid : rows[row]) {
            mixes[int(uid)] = composite(paint.c, black);
            sims[int(uid)] =
                paint.q.alpha() == 255
                    ? paint.q
                    : composite(VelaColor(paint.q), VelaColor(sims[int(uid)])).toQColor(true);
        }
    }
    for (int uid = 1; uid <= 8; ++uid) {
        const VelaColor mix = stage.mix(quint64(uid));
        const QColor sim = stage.sim(quint64(uid));
        const bool isAlike = mix == mixes[uid] || (!mix.isValid() && !mixes[uid].isValid());
        if (!isAlike || sim != sims[uid]) {
            found << QStringLiteral("light %1: %2 %3 (hue %4), not %5 %6 (hue %7)")
                         .arg(uid)
                         .arg(mix.toString(), sim.name(QColor::HexArgb))
                         .arg(mix.hue8())
                         .arg(mixes[uid].toString(), sims[uid].name(QColor::HexArgb))
                         .arg(mixes[uid].hue8());
        }
    }
    return found.join(QStringLiteral("; "));
}

/// The effect's own keys in a show file, one a line.
inline QString ownKeys(const Effect& effect)
{
    const QString text = TestShow::textOf(effect);
    const QString before = QStringLiteral("</endcyclecount>\n");
    const int from = text.indexOf(before) + before.size();
    return text.mid(from, text.lastIndexOf(QStringLiteral("</effect>")) - from);
}

/// "<key>value</key>" lines.
inline QString keyLines(const QVector<QPair<const char*, const char*>>& keys)
{
    QString text;
    for (const auto& key : keys) {
        text += QStringLiteral("<%1>%2</%1>\n")
                    .arg(QLatin1String(key.first), QLatin1String(key.second));
    }
    return text;
}

/// Numbers that a file can hold and no parameter should.
inline QVector<double> hostileNumbers()
{
    using Limits = std::numeric_limits<double>;
    return {0.0,
            -0.0,
            0.0004,
            0.0005,
            -0.0005,
            -1.0,
            -5000.,
            1e-30,
            1e300,
            -1e300,
            4294967.295,
            4294967.296,
            9.3e15,
            -9e15,
            1e19,
            Limits::max(),
            Limits::denorm_min(),
            Limits::infinity(),
            -Limits::infinity(),
            Limits::quiet_NaN()};
}

/// The same as texts.
inline QVector<QString> hostileTexts()
{
    QVector<QString> texts;
    for (const double number : hostileNumbers()) {
        texts << QString::number(number, 'g', 17);
    }
    return texts << QStringLiteral("2147483647") << QStringLiteral("-2147483648")
                 << QStringLiteral("1000") << QStringLiteral("1001") << QStringLiteral("4294967295")
                 << QStringLiteral("99999999999999999999") << QStringLiteral("0x10") << QString();
}
