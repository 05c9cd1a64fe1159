#pragma once

#include "engine/Effect.h"
#include "tests/engine/TestShow.h"

#include <QDebug>

/// A map whose lights have places. Its extent is 240 by 180 map units, so that the corners lie 150
/// from the middle: 1 (0, 0), 2 (240, 0), 3 (0, 180), 4 (240, 180), 5 (120, 90), 6 (60, 0); and 7
/// and 8, far apart, at (0, 0) and (1639, 0). Leaves of the same uids; the synchronized group 0x100
/// and the chase 0x101 of the leaves 1 to 6; the chase 0x102 of the chase 0x103 (1 2 3) and the
/// leaves 4 to 6; the synchronized groups 0x104 of 1, a light that the map doesn't have and 4, and
/// 0x105 of 7 and 8; the empty chase 0x106; 0x107 of the lights 9 to 11, whose places are no
/// numbers, infinite and 1e300.
class PlanStage : public TestShow::TestMap
{
public:
    PlanStage()
        : TestMap(0, lights() + groups())
    {}
    /// One frame of `effect`, `ms` after its start, on untouched lights.
    void run(Effect& effect, qint64 ms)
    {
        endFrame();
        effect.setActive(true);
        effect.setStartMs(TestShow::kStartMs);
        effect.tick(TestShow::kStartMs + ms, 0);
    }
    /// The hues of the lights 1 to 6 in whole degrees; "black", or "invalid".
    QString hues()
    {
        QStringList texts;
        for (quint64 uid = 1; uid <= 6; ++uid) {
            texts << hue(mix(uid));
        }
        return texts.join(QLatin1Char(' '));
    }
    static QString hue(const VelaColor& color)
    {
        if (!color.isValid()) {
            return QStringLiteral("invalid");
        }
        if (color.toQColor(true) == QColor(Qt::black)) {
            return QStringLiteral("black");
        }
        return QString::number(color.toHsv().hue8());
    }
    /// What a light of that hue gets: opaque, profile 0.
    static VelaColor hueColor(int hue)
    {
        VelaColor color;
        color.setHsv16(hue, 65535, 65535, 65535, 0);
        return color;
    }

private:
    static QString placed(quint64 uid, const char* x, const char* y)
    {
        const QString self = QString::number(uid, 16);
        return QStringLiteral("<light><self>%1</self><x>%2</x><y>%3</y></light>")
                   .arg(self, QLatin1String(x), QLatin1String(y)) +
               TestShow::group(uid, 3, {uid});
    }
    static QString lights()
    {
        return placed(1, "0", "0") + placed(2, "240", "0") + placed(3, "0", "180") +
               placed(4, "240", "180") + placed(5, "120", "90") + placed(6, "60", "0") +
               placed(7, "0", "0") + placed(8, "1639", "0") + placed(9, "nan", "nan") +
               placed(10, "inf", "-inf") + placed(11, "1e300", "-1e300");
    }
    static QString groups()
    {
        return TestShow::group(0x77, 3, {0x77}) + TestShow::group(0x100, 2, {1, 2, 3, 4, 5, 6}) +
               TestShow::group(0x101, 1, {1, 2, 3, 4, 5, 6}) +
               TestShow::group(0x103, 1, {1, 2, 3}) + TestShow::group(0x102, 1, {0x103, 4, 5, 6}) +
               TestShow::group(0x104, 2, {1, 0x77, 4}) + TestShow::group(0x105, 2, {7, 8}) +
               TestShow::group(0x106, 1, {}) + TestShow::group(0x107, 2, {9, 10, 11});
    }
};

/// Counts the warnings that are logged while it lives.
class WarningCount
{
public:
    WarningCount()
    {
        s_count = 0;
        s_last.clear();
        m_before = qInstallMessageHandler(count);
    }
    ~WarningCount() { qInstallMessageHandler(m_before); }
    WarningCount(const WarningCount&) = delete;
    WarningCount& operator=(const WarningCount&) = delete;
    int value() const { return s_count; }
    QString last() const { return s_last; }

private:
    static void count(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        Q_UNUSED(context)
        if (type == QtWarningMsg) {
            ++s_count;
            s_last = text;
        }
    }

    static inline int s_count = 0;
    static inline QString s_last;
    QtMessageHandler m_before = nullptr;
};
