#include "app/SplashScreen.h"

#include "app/VersionInfo.h"
#include "resources/Resources.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QObject>
#include <QPainter>
#include <QPixmap>
#include <QtTest>

namespace {

constexpr int kWidth = 600;
constexpr int kHeight = 380;

QPixmap ground()
{
    QPixmap picture(kWidth, kHeight);
    picture.fill(QColor(20, 30, 40));
    return picture;
}

} // namespace

class SplashScreenTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theVersionLineReadsAsAlways();
    void itStaysOnTop();
    void bothLinesStandCentredAtTheFoot();
    void theMessageItselfIsNotDrawn();
    void killSplashTakesItAway();
    void thePictureIsCompiledIn();
};

void SplashScreenTest::initTestCase()
{
    initForgeResources();
}

void SplashScreenTest::theVersionLineReadsAsAlways()
{
    QCOMPARE(VersionInfo::versionLine(), QStringLiteral("Version: 2.3.1 20200317-79"));
    QCOMPARE(VersionInfo::noticeLine(),
             QStringLiteral("Orrin Pageant Forge. All rights reserved by the product owner."));
}

void SplashScreenTest::itStaysOnTop()
{
    const SplashScreen splash(ground());
    QVERIFY(splash.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(splash.windowFlags() & Qt::WindowType_Mask, Qt::WindowFlags(Qt::SplashScreen));
    QCOMPARE(splash.size(), QSize(kWidth, kHeight));
}

void SplashScreenTest::bothLinesStandCentredAtTheFoot()
{
    SplashScreen splash(ground());
    const QImage seen = splash.grab().toImage().convertToFormat(QImage::Format_RGB32);

    QPixmap expected = ground();
    QPainter painter(&expected);
    const QFont font(QStringLiteral("Verdana"), 8, QFont::Normal);
    const QFontMetrics metrics(font);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 360, 600, 360 + metrics.height()), Qt::AlignHCenter | Qt::AlignTop,
                     VersionInfo::noticeLine());
    painter.drawText(QRect(0, 358 - metrics.height(), 600, 360 + metrics.height()),
                     Qt::AlignHCenter | Qt::AlignTop, VersionInfo::versionLine());
    painter.end();
    QCOMPARE(seen, expected.toImage().convertToFormat(QImage::Format_RGB32));
    QVERIFY(seen != ground().toImage().convertToFormat(QImage::Format_RGB32));
}

void SplashScreenTest::theMessageItselfIsNotDrawn()
{
    SplashScreen splash(ground());
    QCOMPARE(splash.message(), QStringLiteral("none"));
    // The base class would write it at the top left.
    const QImage top = splash.grab(QRect(0, 0, kWidth, kHeight / 2)).toImage();
    QImage empty = top;
    empty.fill(QColor(20, 30, 40));
    QCOMPARE(top, empty);
}

void SplashScreenTest::killSplashTakesItAway()
{
    SplashScreen splash(ground());
    splash.show();
    QVERIFY(splash.isVisible());
    QVERIFY(QMetaObject::invokeMethod(&splash, "killSplash"));
    QVERIFY(!splash.isVisible());
}

void SplashScreenTest::thePictureIsCompiledIn()
{
    const QPixmap picture(QStringLiteral(":/images/splash.png"));
    QCOMPARE(picture.size(), QSize(600, 380));
}

QTEST_MAIN(SplashScreenTest)
#include "SplashScreenTest.moc"
