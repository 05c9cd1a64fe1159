#include "map/DmxCache.h"

#include <QCache>
#include <QObject>
#include <QtTest>

#include <limits>
#include <random>

namespace {

DmxCache::Block block(int value)
{
    DmxCache::Block bytes{};
    bytes.fill(static_cast<quint8>(value));
    return bytes;
}

VelaColor gray(int value)
{
    return VelaColor(QColor(value, value, value));
}

VelaColor yxy(double Y, double x, double y)
{
    VelaColor color;
    color.setYxy(Y, x, y, 65535);
    return color;
}

} // namespace

class DmxCacheTest : public QObject
{
    Q_OBJECT
private slots:
    void equalFieldsHaveEqualForms_data();
    void equalFieldsHaveEqualForms();
    void keysHashAsTheirColours();
    void aHitNeedsColourAndForm();
    void theLeastRecentlyUsedGoesFirst();
    void aHitMovesToTheFront();
    void aTagStandsForItsColour();
    void zerosOfBothSignsAreOneColour();
    void nanIsNeverFound();
    void clearDropsAll();
    void holdsTenThousand();
    void behavesAsAPlainCache();
};

void DmxCacheTest::equalFieldsHaveEqualForms_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<bool>("equal");
    QTest::newRow("nothing differs") << -1 << true;
    QTest::newRow("only the colour") << 0 << true;
    const char* const names[] = {"",         "forwardFlag",  "channelCount", "channelWidth",
                                 "reserved", "dimmingCurve", "profileId",    "mode",
                                 "halfFull", "ledChemistry"};
    for (int field = 1; field <= 9; ++field) {
        QTest::newRow(names[field]) << field << false;
    }
}

void DmxCacheTest::equalFieldsHaveEqualForms()
{
    QFETCH(const int, field);
    QFETCH(const bool, equal);
    DmxCacheKey key;
    DmxCacheKey other;
    key.color = gray(1);
    other.color = field == 0 ? gray(2) : gray(1);
    other.forwardFlag = field == 1;
    other.channelCount += field == 2 ? 1 : 0;
    other.channelWidth += field == 3 ? 1 : 0;
    other.reserved += field == 4 ? 1 : 0;
    other.dimmingCurve += field == 5 ? 1 : 0;
    other.profileId += field == 6 ? 1 : 0;
    other.mode += field == 7 ? 1 : 0;
    other.halfFull = field == 8;
    other.ledChemistry += field == 9 ? 1 : 0;
    DmxCache cache;
    QCOMPARE(cache.formOf(key) == cache.formOf(other), equal);
    QCOMPARE(cache.formOf(key), cache.formOf(key));
    QCOMPARE(key == other, field == -1);
}

void DmxCacheTest::keysHashAsTheirColours()
{
    DmxCacheKey key;
    key.color = VelaColor(QColor(1, 2, 3));
    key.mode = 7;
    QCOMPARE(qHash(key), qHash(key.color));
    QCOMPARE(qHash(key), 0x010203FFU);
}

void DmxCacheTest::aHitNeedsColourAndForm()
{
    DmxCache cache;
    QVERIFY(cache.find(gray(1), 0) == nullptr);
    cache.insert(gray(1), 0, block(11));
    cache.insert(gray(1), 1, block(12));
    cache.insert(gray(2), 0, block(13));
    QCOMPARE(*cache.find(gray(1), 0), block(11));
    QCOMPARE(*cache.find(gray(1), 1), block(12));
    QCOMPARE(*cache.find(gray(2), 0), block(13));
    QVERIFY(cache.find(gray(2), 1) == nullptr);
    QCOMPARE(cache.lookUps(), quint64(5));
    QCOMPARE(cache.size(), 3);
}

void DmxCacheTest::theLeastRecentlyUsedGoesFirst()
{
    DmxCache cache(3);
    for (int i = 0; i < 5; ++i) {
        cache.insert(gray(i), 0, block(i));
    }
    QCOMPARE(cache.size(), 3);
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(cache.contains(gray(i), 0), i >= 2);
    }
}

void DmxCacheTest::aHitMovesToTheFront()
{
    DmxCache cache(3);
    for (int i = 0; i < 3; ++i) {
        cache.insert(gray(i), 0, block(i));
    }
    QVERIFY(cache.find(gray(0), 0) != nullptr); // the last becomes the first
    cache.insert(gray(3), 0, block(3));
    QVERIFY(cache.contains(gray(0), 0));
    QVERIFY(!cache.contains(gray(1), 0));
    QVERIFY(cache.find(gray(2), 0) != nullptr); // out of the middle
    cache.insert(gray(4), 0, block(4));
    QVERIFY(!cache.contains(gray(0), 0));
    QVERIFY(cache.contains(gray(2), 0));
    QVERIFY(cache.contains(gray(3), 0));
}

void DmxCacheTest::aTagStandsForItsColour()
{
    DmxCache cache;
    cache.insert(gray(1), 0, block(1), 7);
    QCOMPARE(*cache.find(gray(1), 0, 7), block(1));
    QVERIFY(cache.find(gray(1), 1, 7) == nullptr); // of another form
    QVERIFY(cache.find(gray(2), 0, 8) == nullptr);
    QCOMPARE(*cache.find(gray(1), 0, 0), block(1));
    QCOMPARE(*cache.find(gray(1), 0, 9), block(1)); // one colour may have several
}

void DmxCacheTest::zerosOfBothSignsAreOneColour()
{
    DmxCache cache;
    cache.insert(yxy(0.0, 0.3, 0.3), 0, block(1));
    cache.insert(gray(1), 0, block(2));
    QVERIFY(cache.find(yxy(-0.0, 0.3, 0.3), 0) != nullptr);
}

void DmxCacheTest::nanIsNeverFound()
{
    DmxCache cache;
    const VelaColor nan = yxy(std::numeric_limits<double>::quiet_NaN(), 0.3, 0.3);
    cache.insert(nan, 0, block(1));
    QVERIFY(cache.find(nan, 0) == nullptr);
    cache.insert(nan, 0, block(1));
    QCOMPARE(cache.size(), 2);
}

void DmxCacheTest::clearDropsAll()
{
    DmxCache cache(2);
    cache.insert(gray(1), 0, block(1));
    cache.insert(gray(2), 0, block(2));
    cache.clear();
    QCOMPARE(cache.size(), 0);
    QVERIFY(cache.find(gray(1), 0) == nullptr);
    cache.insert(gray(3), 0, block(3));
    QCOMPARE(*cache.find(gray(3), 0), block(3));
}

void DmxCacheTest::holdsTenThousand()
{
    DmxCache cache;
    for (int i = 0; i < 10001; ++i) {
        cache.insert(yxy(1.0, i / 20000.0, 0.3), 0, block(i));
    }
    QCOMPARE(cache.size(), 10000);
    QVERIFY(!cache.contains(yxy(1.0, 0.0, 0.3), 0));
    QVERIFY(cache.contains(yxy(1.0, 1 / 20000.0, 0.3), 0));
    QCOMPARE(*cache.find(yxy(1.0, 10000 / 20000.0, 0.3), 0), block(10000));
}

/// Against QCache with the whole key, over colours of all kinds that mostly share a hash.
void DmxCacheTest::behavesAsAPlainCache()
{
    constexpr int kCost = 40;
    DmxCache cache(kCost);
    QCache<DmxCacheKey, DmxCache::Block> plain(kCost);
    std::mt19937 random(5);
    const auto below = [&random](int limit) {
        return std::uniform_int_distribution<int>(0, limit - 1)(random);
    };
    for (int step = 0; step < 20000; ++step) {
        DmxCacheKey key;
        const int value = below(20);
        switch (below(4)) {
        case 0:
            key.color = gray(value);
            break;
        case 1:
            key.color = VelaColor::fromHsv(value, 200, 100);
            break;
        case 2:
            key.color = yxy(0.5, 0.3, 0.2 + value / 1000.0);
            break;
        default:
            key.color = VelaColor::fromNchannelF({1.0, 0.1, 0.2, value / 100.0}, 1, 0, true);
        }
        key.mode = below(2);
        const quint32 form = cache.formOf(key);
        const DmxCache::Block* const found = cache.find(key.color, form);
        const DmxCache::Block* const expected = plain.object(key);
        QCOMPARE(found != nullptr, expected != nullptr);
        if (expected != nullptr) {
            QCOMPARE(*found, *expected);
        } else {
            cache.insert(key.color, form, block(step));
            plain.insert(key, new DmxCache::Block(block(step)), 1);
        }
        QCOMPARE(cache.size(), plain.size());
    }
}

QTEST_GUILESS_MAIN(DmxCacheTest)

#include "DmxCacheTest.moc"
