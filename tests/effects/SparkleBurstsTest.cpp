#include "effects/SparkleBursts.h"

#include "tests/effects/SeededRand.h"

#include <QtTest>

#include <algorithm>
#include <limits>

/// The arithmetic of sparkles, on plain numbers.
class SparkleBurstsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { reseed(); }
    void seedsWithTheMillisecondsOfTheClock();
    void firstWaitsStayBelow_data();
    void firstWaitsStayBelow();
    void laterWaitsStayBelow_data();
    void laterWaitsStayBelow();
    void burstsDrawAsStated_data();
    void burstsDrawAsStated();
    void aBurstMayStartNone();
    void burstsOfAnyDensityEnd_data();
    void burstsOfAnyDensityEnd();
    void levelsDecay_data();
    void levelsDecay();
};

void SparkleBurstsTest::seedsWithTheMillisecondsOfTheClock()
{
    lastSeed = 5000;
    seedings = 0;
    SparkleBursts::seed();
    QCOMPARE(seedings, 1);
    QVERIFY(lastSeed < 1000);
}

void SparkleBurstsTest::firstWaitsStayBelow_data()
{
    QTest::addColumn<int>("density");
    QTest::addColumn<int>("modulus");
    QTest::newRow("one") << 1 << 1000;
    QTest::newRow("default") << 10 << 100;
    QTest::newRow("whole division") << 7 << 142;
    QTest::newRow("a thousand") << 1000 << 1;
    QTest::newRow("above a thousand") << 1001 << 1;
    QTest::newRow("greatest") << std::numeric_limits<int>::max() << 1;
    QTest::newRow("zero") << 0 << 1;
    QTest::newRow("minus one") << -1 << 1;
    QTest::newRow("minus five") << -5 << 1;
    QTest::newRow("least") << std::numeric_limits<int>::min() << 1;
}

void SparkleBurstsTest::firstWaitsStayBelow()
{
    QFETCH(const int, density);
    QFETCH(const int, modulus);
    QVector<uint> waits;
    for (int i = 0; i < 100; ++i) {
        waits << SparkleBursts::drawFirstWait(density);
    }
    reseed();
    for (const uint wait : waits) { // a number is drawn for each, also where it is 0
        QCOMPARE(wait, uint(rand() % modulus));
    }
}

void SparkleBurstsTest::laterWaitsStayBelow_data()
{
    QTest::addColumn<double>("timeConstant");
    QTest::addColumn<int>("modulus");
    QTest::newRow("default") << 10.0 << 100;
    QTest::newRow("fraction") << 0.3 << 3333;
    QTest::newRow("slow") << 0.001 << 1000000;
    QTest::newRow("a thousand") << 1000.0 << 1;
    QTest::newRow("above a thousand") << 1000.1 << 1;
    QTest::newRow("zero") << 0.0 << 1;
    QTest::newRow("negative") << -10.0 << 1;
    QTest::newRow("tiny") << 1e-300 << 1;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 1;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 1;
}

void SparkleBurstsTest::laterWaitsStayBelow()
{
    QFETCH(const double, timeConstant);
    QFETCH(const int, modulus);
    QVector<uint> waits;
    for (int i = 0; i < 100; ++i) {
        waits << SparkleBursts::drawWait(timeConstant);
    }
    reseed();
    for (const uint wait : waits) {
        QCOMPARE(wait, uint(rand() % modulus));
    }
}

void SparkleBurstsTest::burstsDrawAsStated_data()
{
    QTest::addColumn<int>("density");
    QTest::addColumn<int>("count");
    QTest::newRow("default") << 10 << 20;
    QTest::newRow("one") << 1 << 20;
    QTest::newRow("more than lights") << 100 << 5;
    QTest::newRow("one light") << 10 << 1;
    QTest::newRow("great density") << 50000 << 3000;
}

void SparkleBurstsTest::burstsDrawAsStated()
{
    QFETCH(const int, density);
    QFETCH(const int, count);
    std::vector<qint32> levels(std::size_t(count), 17);
    for (int i = 0; i < 20; ++i) {
        SparkleBursts::burst(levels, density);
    }
    const int next = rand();
    reseed();
    std::vector<qint32> expected(std::size_t(count), 17);
    for (int i = 0; i < 20; ++i) {
        const int n = rand() % (density + 1);
        for (int k = 0; k < n; ++k) {
            expected[std::size_t(rand() % count)] = 1000;
        }
    }
    QVERIFY(levels == expected);
    QCOMPARE(next, rand());
}

void SparkleBurstsTest::aBurstMayStartNone()
{
    int empty = 0;
    for (int i = 0; i < 1000; ++i) {
        std::vector<qint32> levels(4, 0);
        SparkleBursts::burst(levels, 1);
        const auto fresh = std::count(levels.cbegin(), levels.cend(), 1000);
        QVERIFY(fresh <= 1);
        empty += fresh == 0 ? 1 : 0;
    }
    QVERIFY(empty > 400 && empty < 600); // half of them
}

void SparkleBurstsTest::burstsOfAnyDensityEnd_data()
{
    QTest::addColumn<int>("density");
    QTest::addColumn<bool>("lights");
    QTest::newRow("greatest") << std::numeric_limits<int>::max() << true;
    QTest::newRow("a thousand million") << 1000000000 << true;
    QTest::newRow("zero") << 0 << false;
    QTest::newRow("minus one") << -1 << false;
    QTest::newRow("minus two") << -2 << false;
    QTest::newRow("least") << std::numeric_limits<int>::min() << false;
}

void SparkleBurstsTest::burstsOfAnyDensityEnd()
{
    QFETCH(const int, density);
    QFETCH(const bool, lights);
    std::vector<qint32> levels(1000, 0);
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 50; ++i) {
        SparkleBursts::burst(levels, density);
    }
    QVERIFY(clock.elapsed() < 5000);
    QCOMPARE(std::count(levels.cbegin(), levels.cend(), 1000), lights ? 1000 : 0);
}

void SparkleBurstsTest::levelsDecay_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("rate");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<int>("left");
    QTest::newRow("a frame") << 1000 << 10 << qint64(25) << 975;
    QTest::newRow("a second") << 1000 << 10 << qint64(1000) << 0;
    QTest::newRow("past the end") << 10 << 10 << qint64(25) << 0;
    QTest::newRow("just to the end") << 25 << 10 << qint64(25) << 0;
    QTest::newRow("rest stays rest") << 0 << 10 << qint64(25) << 0;
    QTest::newRow("rounds down") << 1000 << 1 << qint64(25) << 998;
    QTest::newRow("too slow for the frame") << 1000 << 1 << qint64(9) << 1000;
    QTest::newRow("no decay") << 1000 << 0 << qint64(25) << 1000;
    QTest::newRow("no time") << 1000 << 10 << qint64(0) << 1000;
    QTest::newRow("a negative rate is unsigned, and great") << 1000 << -1 << qint64(25) << 0;
    QTest::newRow("a negative time likewise") << 1000 << 10 << qint64(-1) << 0;
    QTest::newRow("both negative") << 1000 << -10 << qint64(-25) << 975;
    QTest::newRow("the product wraps") << 1000 << 65536 << qint64(65536) << 1000;
    QTest::newRow("time has 32 bits") << 1000 << 10 << (qint64(1) << 32) + 25 << 975;
    QTest::newRow("greatest") << 1000 << std::numeric_limits<int>::max() << qint64(1) << 0;
    QTest::newRow("least") << 1000 << std::numeric_limits<int>::min() << qint64(2) << 1000;
}

void SparkleBurstsTest::levelsDecay()
{
    QFETCH(const int, level);
    QFETCH(const int, rate);
    QFETCH(const qint64, ms);
    QFETCH(const int, left);
    std::vector<qint32> levels = {level, 0, level};
    SparkleBursts::decay(levels, rate, ms);
    QCOMPARE(levels[0], left);
    QCOMPARE(levels[1], 0);
    QCOMPARE(levels[2], left);
}

QTEST_APPLESS_MAIN(SparkleBurstsTest)
#include "SparkleBurstsTest.moc"
