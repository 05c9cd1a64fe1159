#include "editor/StateIcons.h"

#include <QImage>
#include <QObject>
#include <QPixmap>
#include <QtTest>

using IconSource = const QIcon& (*)();
Q_DECLARE_METATYPE(IconSource)

class StateIconsTest : public QObject
{
    Q_OBJECT
private slots:
    void eachHasItsSize_data();
    void eachHasItsSize();
    void eachIsDrawnOnce_data() { eachHasItsSize_data(); }
    void eachIsDrawnOnce();
    void noneIsEmpty();
    void theyDifferAlsoInGrey();
};

void StateIconsTest::eachHasItsSize_data()
{
    QTest::addColumn<IconSource>("source");
    QTest::addColumn<int>("side");
    QTest::newRow("link") << IconSource(StateIcons::ICON_LINK) << 7;
    QTest::newRow("cycle") << IconSource(StateIcons::ICON_CYCLE) << 10;
    QTest::newRow("open") << IconSource(StateIcons::ICON_OPEN) << 8;
    QTest::newRow("close") << IconSource(StateIcons::ICON_CLOSE) << 8;
}

void StateIconsTest::eachHasItsSize()
{
    QFETCH(const IconSource, source);
    QFETCH(const int, side);
    QCOMPARE(source().availableSizes(), QList<QSize>({QSize(side, side)}));
    const QImage image = source().pixmap(64).toImage();
    QCOMPARE(image.size(), QSize(side, side)); // never blown up
    // It touches all four edges, and a corner shows the row behind it.
    const auto isInked = [&image](int x, int y) { return qAlpha(image.pixel(x, y)) > 0; };
    bool top = false;
    bool bottom = false;
    bool left = false;
    bool right = false;
    for (int i = 0; i < side; ++i) {
        top = top || isInked(i, 0);
        bottom = bottom || isInked(i, side - 1);
        left = left || isInked(0, i);
        right = right || isInked(side - 1, i);
    }
    QVERIFY(top && bottom && left && right);
    QVERIFY(!isInked(0, 0));
}

void StateIconsTest::eachIsDrawnOnce()
{
    QFETCH(const IconSource, source);
    QCOMPARE(source().cacheKey(), source().cacheKey());
    QCOMPARE(&source(), &source());
}

void StateIconsTest::noneIsEmpty()
{
    QVERIFY(StateIcons::ICON_NONE().isNull());
}

void StateIconsTest::theyDifferAlsoInGrey()
{
    // A running effect is a disc, any other a ring.
    const QImage open = StateIcons::ICON_OPEN().pixmap(8).toImage();
    const QImage close = StateIcons::ICON_CLOSE().pixmap(8).toImage();
    QCOMPARE(qAlpha(open.pixel(4, 4)), 0);
    QCOMPARE(qAlpha(close.pixel(4, 4)), 255);
    QCOMPARE(open.convertToFormat(QImage::Format_Alpha8).pixelColor(0, 3).alpha(),
             close.convertToFormat(QImage::Format_Alpha8).pixelColor(0, 3).alpha());
}

QTEST_MAIN(StateIconsTest)
#include "StateIconsTest.moc"
