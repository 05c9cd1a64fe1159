#include "app/AboutDialog.h"

#include "resources/Resources.h"

#include <QLabel>
#include <QLayout>
#include <QObject>
#include <QtTest>

class AboutDialogTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void itIsAFramelessModalSplash();
    void itIsAsLargeAsItsPicture();
    void theTwoLinesStandAtTheFoot();
    void aMousePressClosesIt_data();
    void aMousePressClosesIt();
    void aKeyDoesNotCloseIt();
};

void AboutDialogTest::initTestCase()
{
    initForgeResources();
}

void AboutDialogTest::itIsAFramelessModalSplash()
{
    const AboutDialog dialog(nullptr);
    QVERIFY(dialog.isModal());
    QCOMPARE(dialog.windowFlags() & Qt::WindowType_Mask, Qt::WindowFlags(Qt::SplashScreen));
    QVERIFY(dialog.windowFlags().testFlag(Qt::FramelessWindowHint));
    QCOMPARE(dialog.styleSheet(),
             QStringLiteral("QDialog { background-image: url(:/images/splash.png); }"));
}

void AboutDialogTest::itIsAsLargeAsItsPicture()
{
    const AboutDialog dialog(nullptr);
    QCOMPARE(dialog.minimumSize(), QSize(600, 380));
    QCOMPARE(dialog.maximumSize(), QSize(600, 380));
}

void AboutDialogTest::theTwoLinesStandAtTheFoot()
{
    AboutDialog dialog(nullptr);
    dialog.show();
    QCOMPARE(dialog.layout()->contentsMargins(), QMargins(33, 4, 8, 20));
    QCOMPARE(dialog.layout()->spacing(), 0);
    QCOMPARE(dialog.layout()->count(), 3);
    QVERIFY(dialog.layout()->itemAt(0)->spacerItem() != nullptr);
    const auto* version = qobject_cast<QLabel*>(dialog.layout()->itemAt(1)->widget());
    const auto* notice = qobject_cast<QLabel*>(dialog.layout()->itemAt(2)->widget());
    QVERIFY(version != nullptr);
    QVERIFY(notice != nullptr);
    QCOMPARE(version->text(), QStringLiteral("Version: 2.3.1 20200317-79"));
    QCOMPARE(notice->text(),
             QStringLiteral("Orrin Pageant Forge. All rights reserved by the product owner."));
    for (const QLabel* label : {version, notice}) {
        QVERIFY(label->alignment().testFlag(Qt::AlignHCenter));
        QCOMPARE(label->font().family(), QStringLiteral("Verdana"));
        QCOMPARE(label->font().pointSize(), 8);
        QCOMPARE(label->palette().color(QPalette::WindowText), QColor(Qt::white));
    }
    QCOMPARE(notice->geometry().bottom(), 380 - 20 - 1);
    QCOMPARE(version->geometry().bottom() + 1, notice->geometry().top());
}

void AboutDialogTest::aMousePressClosesIt_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("onTheLine");
    QTest::newRow("left") << static_cast<int>(Qt::LeftButton) << false;
    QTest::newRow("right") << static_cast<int>(Qt::RightButton) << false;
    QTest::newRow("middle") << static_cast<int>(Qt::MiddleButton) << false;
    QTest::newRow("on a line") << static_cast<int>(Qt::LeftButton) << true;
}

void AboutDialogTest::aMousePressClosesIt()
{
    QFETCH(const int, button);
    QFETCH(const bool, onTheLine);
    AboutDialog dialog(nullptr);
    dialog.show();
    QVERIFY(dialog.isVisible());
    QWidget* target = &dialog;
    if (onTheLine) {
        target = dialog.findChild<QLabel*>(QStringLiteral("notice"));
        QVERIFY(target != nullptr);
    }
    QTest::mousePress(target, static_cast<Qt::MouseButton>(button));
    QVERIFY(!dialog.isVisible());
}

void AboutDialogTest::aKeyDoesNotCloseIt()
{
    AboutDialog dialog(nullptr);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_A);
    QVERIFY(dialog.isVisible());
}

QTEST_MAIN(AboutDialogTest)
#include "AboutDialogTest.moc"
