#include "picker/ColorTrack.h"

#include "PickerInput.h"

#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QtTest>

#include <cstdlib>

using VelaColorPickerLib::ColorTrack;
using VelaColorPickerLib::paintMarkerRings;

namespace {

QColor greyAt(int value)
{
    return QColor(value, value, value);
}

bool isNear(const QColor& a, const QColor& b, int tolerance)
{
    return std::abs(a.red() - b.red()) <= tolerance &&
           std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

} // namespace

class ColorTrackTest : public QObject
{
    Q_OBJECT

private slots:
    void aClickGoesStraightToItsPlace();
    void aDragFollowsTheMouseAndEndsWithTheButton();
    void keysAndWheelMoveTheValue();
    void paintsItsColorsAlongTheTrack_data();
    void paintsItsColorsAlongTheTrack();
    void asksAgainOnlyAfterARefresh();
    void theMarkerShowsOnEveryColor_data();
    void theMarkerShowsOnEveryColor();
    void focusIsVisible();
};

void ColorTrackTest::aClickGoesStraightToItsPlace()
{
    ColorTrack track;
    track.setRange(0, 255);
    track.resize(400, track.sizeHint().height());
    track.show();
    const int y = track.height() / 2;
    for (const int value : {0, 1, 100, 254, 255}) {
        QTest::mouseClick(&track, Qt::LeftButton, {}, QPoint(track.xOf(value), y));
        QCOMPARE(track.value(), value);
    }
    QTest::mouseClick(&track, Qt::LeftButton, {}, QPoint(0, y));
    QCOMPARE(track.value(), 0);
    QTest::mouseClick(&track, Qt::LeftButton, {}, QPoint(399, y));
    QCOMPARE(track.value(), 255);
    QTest::mouseClick(&track, Qt::RightButton, {}, QPoint(track.xOf(100), y));
    QCOMPARE(track.value(), 255);
}

void ColorTrackTest::aDragFollowsTheMouseAndEndsWithTheButton()
{
    ColorTrack track;
    track.setRange(0, 255);
    track.resize(400, track.sizeHint().height());
    track.show();
    const int y = track.height() / 2;
    QSignalSpy changes(&track, &QSlider::valueChanged);
    dragTo(&track, QPoint(track.xOf(200), y)); // the button went down elsewhere
    QCOMPARE(changes.count(), 0);
    QTest::mousePress(&track, Qt::LeftButton, {}, QPoint(track.xOf(10), y));
    QVERIFY(track.isSliderDown());
    dragTo(&track, QPoint(track.xOf(60), y));
    QCOMPARE(track.value(), 60);
    dragTo(&track, QPoint(-500, y));
    QCOMPARE(track.value(), 0);
    QTest::mouseRelease(&track, Qt::LeftButton, {}, QPoint(0, y));
    QVERIFY(!track.isSliderDown());
    QCOMPARE(changes.count(), 3);
}

void ColorTrackTest::keysAndWheelMoveTheValue()
{
    ColorTrack track;
    track.setRange(0, 255);
    track.setSingleStep(2);
    track.setPageStep(20);
    track.setValue(100);
    track.show();
    QTest::keyClick(&track, Qt::Key_Right);
    QCOMPARE(track.value(), 102);
    QTest::keyClick(&track, Qt::Key_Left);
    QTest::keyClick(&track, Qt::Key_Left);
    QCOMPARE(track.value(), 98);
    QTest::keyClick(&track, Qt::Key_PageUp);
    QCOMPARE(track.value(), 118);
    QTest::keyClick(&track, Qt::Key_End);
    QCOMPARE(track.value(), 255);
    QTest::keyClick(&track, Qt::Key_Home);
    QCOMPARE(track.value(), 0);
    turnWheel(&track, 1);
    const int up = track.value();
    QVERIFY(up > 0);
    turnWheel(&track, -1);
    QCOMPARE(track.value(), 0);
}

void ColorTrackTest::paintsItsColorsAlongTheTrack_data()
{
    QTest::addColumn<int>("stops");
    QTest::addColumn<int>("tolerance");
    QTest::newRow("at each pixel") << 0 << 0;
    QTest::newRow("a gradient of 18 stops") << 18 << 2;
}

void ColorTrackTest::paintsItsColorsAlongTheTrack()
{
    QFETCH(const int, stops);
    QFETCH(const int, tolerance);
    ColorTrack track;
    track.setRange(0, 255);
    track.setStops(stops);
    track.setColorAt(greyAt);
    track.resize(500, track.sizeHint().height());
    const QImage image = track.grab().toImage();
    const QRect bar = track.bar();
    const int y = bar.top() + 3; // above the marker's ring
    int compared = 0;
    for (int x = bar.left() + 1; x < bar.right(); ++x) {
        if (std::abs(x - track.xOf(track.value())) > bar.height()) {
            const QColor expected = greyAt(track.valueAt(x));
            QVERIFY2(isNear(image.pixelColor(x, y), expected, tolerance),
                     qPrintable(QString::number(x)));
            ++compared;
        }
    }
    QVERIFY(compared > 400);
}

void ColorTrackTest::asksAgainOnlyAfterARefresh()
{
    int asked = 0;
    ColorTrack track;
    track.setRange(0, 255);
    track.setColorAt([&asked](int value) {
        ++asked;
        return greyAt(value);
    });
    track.resize(300, track.sizeHint().height());
    track.grab();
    const int first = asked;
    QCOMPARE(first, track.bar().width());
    track.setValue(77);
    track.grab();
    QCOMPARE(asked, first);
    track.refresh();
    track.grab();
    QCOMPARE(asked, 2 * first);
    track.resize(310, track.height());
    track.grab();
    QCOMPARE(asked, 2 * first + track.bar().width());
}

void ColorTrackTest::theMarkerShowsOnEveryColor_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::newRow("black") << QColor(Qt::black);
    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("middle grey") << QColor(128, 128, 128);
    QTest::newRow("red") << QColor(Qt::red);
}

void ColorTrackTest::theMarkerShowsOnEveryColor()
{
    QFETCH(const QColor, ground);
    QImage image(41, 41, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    paintMarkerRings(&painter, QPointF(20.5, 20.5), 12.0, false);
    painter.end();
    int darkest = 255;
    int lightest = 0;
    for (int x = 20; x < 41; ++x) {
        const int grey = qGray(image.pixel(x, 20));
        darkest = std::min(darkest, grey);
        lightest = std::max(lightest, grey);
    }
    QVERIFY(darkest < 80);
    QVERIFY(lightest > 170);
    QCOMPARE(image.pixelColor(20, 20), ground);
}

void ColorTrackTest::focusIsVisible()
{
    QWidget window;
    ColorTrack track(&window);
    track.setColorAt(greyAt);
    track.setRange(0, 255);
    track.resize(200, track.sizeHint().height());
    window.resize(220, 60);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    track.clearFocus();
    const QImage without = track.grab().toImage();
    track.setFocus();
    QVERIFY(track.hasFocus());
    const QImage with = track.grab().toImage();
    QVERIFY(with != without);
    QCOMPARE(with.pixelColor(track.width() / 2, track.bar().top() - 2),
             track.palette().color(QPalette::Highlight));
}

QTEST_MAIN(ColorTrackTest)
#include "ColorTrackTest.moc"
