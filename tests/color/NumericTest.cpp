#include "color/Numeric.h"

#include <QObject>
#include <QtTest>

#include <limits>

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
} // namespace

class NumericTest : public QObject
{
    Q_OBJECT
private slots:
    void truncationIsCheckedForEveryDouble_data();
    void truncationIsCheckedForEveryDouble();
    void limitedNarrowingKeepsToItsRange();
};

void NumericTest::truncationIsCheckedForEveryDouble_data()
{
    constexpr qint32 kMin32 = std::numeric_limits<qint32>::min();
    constexpr qint64 kMin64 = std::numeric_limits<qint64>::min();
    QTest::addColumn<double>("value");
    QTest::addColumn<qint32>("i32");
    QTest::addColumn<qint64>("i64");
    QTest::addColumn<quint32>("u32");
    QTest::addColumn<quint32>("wrapped");
    QTest::newRow("zero") << 0.0 << 0 << qint64(0) << 0U << 0U;
    QTest::newRow("towards zero") << 2.9 << 2 << qint64(2) << 2U << 2U;
    QTest::newRow("small negative") << -0.9 << 0 << qint64(0) << 0U << 0U;
    QTest::newRow("minus 1.5") << -1.5 << -1 << qint64(-1) << 0U << 4294967295U;
    QTest::newRow("2^31") << 2147483648.0 << kMin32 << qint64(2147483648) << 2147483648U
                          << 2147483648U;
    QTest::newRow("2^32") << 4294967296.0 << kMin32 << qint64(4294967296) << 0U << 0U;
    QTest::newRow("2^32 + 7") << 4294967303.0 << kMin32 << qint64(4294967303) << 0U << 7U;
    QTest::newRow("1e300") << 1e300 << kMin32 << kMin64 << 0U << 0U;
    QTest::newRow("nan") << kNaN << kMin32 << kMin64 << 0U << 0U;
    QTest::newRow("inf") << kInfinity << kMin32 << kMin64 << 0U << 0U;
    QTest::newRow("-inf") << -kInfinity << kMin32 << kMin64 << 0U << 0U;
}

void NumericTest::truncationIsCheckedForEveryDouble()
{
    QFETCH(const double, value);
    QFETCH(const qint32, i32);
    QFETCH(const qint64, i64);
    QFETCH(const quint32, u32);
    QFETCH(const quint32, wrapped);
    QCOMPARE(truncI32(value), i32);
    QCOMPARE(truncI64(value), i64);
    QCOMPARE(truncU32(value), u32);
    QCOMPARE(wrapU32(value), wrapped);
}

void NumericTest::limitedNarrowingKeepsToItsRange()
{
    QCOMPARE(limitI32(300.7, 0, 255), 255);
    QCOMPARE(limitI32(-1e300, 0, 255), 0);
    QCOMPARE(limitI32(12.9, 0, 255), 12);
    QCOMPARE(limitI32(kNaN, -5, 255), 0);
}

QTEST_APPLESS_MAIN(NumericTest)
#include "NumericTest.moc"
