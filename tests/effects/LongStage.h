#pragma once

#include "engine/Effect.h"
#include "tests/engine/TestShow.h"

#include <cmath>

/// A map with rows enough for what moves along them: lights 1 to 12; the chase 0x200 of the leaves
/// 1 to 10; the chase 0x201 of that chase and the pair 0x20 (11 12); the synchronized group 0x202
/// of the leaves 1 to 3; the empty chase 0x203; the leaf 0x204 of a light that the map doesn't
/// have.
class LongStage : public TestShow::TestMap
{
public:
    LongStage()
        : TestMap(12, TestShow::group(0x20, 2, {11, 12}) +
                          TestShow::group(0x200, 1, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) +
                          TestShow::group(0x201, 1, {0x200, 0x20}) +
                          TestShow::group(0x202, 2, {1, 2, 3}) + TestShow::group(0x203, 1, {}) +
                          TestShow::group(0x204, 3, {0x204}))
    {}
    /// The lights of each row of a group, as the map above has it.
    static QVector<QVector<quint64>> rowsOf(quint64 gid)
    {
        QVector<QVector<quint64>> rows;
        if (gid == 0x200 || gid == 0x201) {
            for (quint64 uid = 1; uid <= 10; ++uid) {
                rows.append(QVector<quint64>{uid});
            }
        }
        if (gid == 0x201) {
            rows.append(QVector<quint64>{11, 12});
        } else if (gid == 0x202) {
            rows.append(QVector<quint64>{1, 2, 3});
        } else if (gid >= 1 && gid <= 12) {
            rows.append(QVector<quint64>{gid});
        }
        return rows;
    }
    /// One frame of `effect`, `ms` after its start, on untouched lights.
    void run(Effect& effect, qint64 ms)
    {
        endFrame();
        paint(effect, ms);
    }
    /// The same over lights that a lower layer has made blue.
    void runOverBlue(Effect& effect, qint64 ms)
    {
        endFrame();
        for (quint64 uid = 1; uid <= 12; ++uid) {
            light(uid)->mixColor(Qt::blue, 0);
            light(uid)->mixSimColor(QColor(Qt::blue), 0);
        }
        effect.setPriority(1);
        paint(effect, ms);
    }
    /// A component of the lights 1 to 10, such as "0.25 1 0 ...".
    QString greens()
    {
        QStringList texts;
        for (quint64 uid = 1; uid <= 10; ++uid) {
            texts << number(mix(uid).greenF());
        }
        return texts.join(QLatin1Char(' '));
    }
    QString blues()
    {
        QStringList texts;
        for (quint64 uid = 1; uid <= 10; ++uid) {
            texts << number(mix(uid).blueF());
        }
        return texts.join(QLatin1Char(' '));
    }
    QString shownGreens()
    {
        QStringList texts;
        for (quint64 uid = 1; uid <= 10; ++uid) {
            texts << QString::number(sim(uid).green());
        }
        return texts.join(QLatin1Char(' '));
    }

private:
    static QString number(double v) { return QString::number(std::round(v * 1e6) / 1e6, 'g', 6); }
    void paint(Effect& effect, qint64 ms)
    {
        effect.setActive(true);
        effect.setStartMs(TestShow::kStartMs);
        effect.tick(TestShow::kStartMs + ms, 0);
    }
};

/// A light by itself: what a light that was painted so shows.
class Canvas : public TestShow::TestMap
{
public:
    Canvas()
        : TestMap(1)
    {}
    void paint(const VelaColor& c, const QColor& q, int priority = 0)
    {
        endFrame();
        light(1)->mixColor(c, priority);
        light(1)->mixSimColor(q, priority);
    }
    VelaColor color() { return mix(1); }
    QColor screen() { return sim(1); }
};

/// Equality that holds for two invalid colours of one alpha, too.
inline bool isSame(const VelaColor& a, const VelaColor& b)
{
    return a == b || (!a.isValid() && !b.isValid() && a.alpha32() == b.alpha32());
}
