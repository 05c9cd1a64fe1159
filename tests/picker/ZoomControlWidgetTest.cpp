#include "picker/ZoomControlWidget.h"

#include "resources/Resources.h"

#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

using namespace VelaColorPickerLib;

class ZoomControlWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void buttonsAskForTheNextLevel();
    void levelIsLimitedAndShown();
    void buttonsAreNamedAndHavePictures();
    void theLevelDoesNotMoveTheButtons();
};

void ZoomControlWidgetTest::initTestCase()
{
    initForgeResources();
}

void ZoomControlWidgetTest::buttonsAskForTheNextLevel()
{
    ZoomControlWidget widget(9);
    widget.setLevel(5);
    widget.show();
    QSignalSpy outs(&widget, &ZoomControlWidget::zoomOutClicked);
    QSignalSpy ins(&widget, &ZoomControlWidget::zoomInClicked);
    QTest::mouseClick(widget.findChild<QToolButton*>(QStringLiteral("zoomOutButton")),
                      Qt::LeftButton);
    QCOMPARE(outs.count(), 1);
    QCOMPARE(ins.count(), 0);
    QTest::keyClick(widget.findChild<QToolButton*>(QStringLiteral("zoomInButton")), Qt::Key_Space);
    QCOMPARE(ins.count(), 1);
}

void ZoomControlWidgetTest::levelIsLimitedAndShown()
{
    ZoomControlWidget widget(9);
    auto* const out = widget.findChild<QToolButton*>(QStringLiteral("zoomOutButton"));
    auto* const in = widget.findChild<QToolButton*>(QStringLiteral("zoomInButton"));
    auto* const label = widget.findChild<QLabel*>(QStringLiteral("zoomLevelLabel"));
    QCOMPARE(widget.level(), 1);
    QVERIFY(!out->isEnabled() && in->isEnabled());
    widget.setLevel(6);
    QVERIFY(out->isEnabled() && in->isEnabled());
    QVERIFY(label->text().contains(QLatin1Char('6')));
    widget.setLevel(100);
    QCOMPARE(widget.level(), 9);
    QVERIFY(out->isEnabled() && !in->isEnabled());
    widget.setLevel(-1);
    QCOMPARE(widget.level(), 1);
}

void ZoomControlWidgetTest::buttonsAreNamedAndHavePictures()
{
    ZoomControlWidget widget(9);
    for (const QToolButton* const button : widget.findChildren<QToolButton*>()) {
        QVERIFY(!button->accessibleName().isEmpty());
        QVERIFY(!button->toolTip().isEmpty());
        QVERIFY(!button->icon().isNull());
        QVERIFY(button->focusPolicy() & Qt::TabFocus);
    }
}

void ZoomControlWidgetTest::theLevelDoesNotMoveTheButtons()
{
    ZoomControlWidget widget(9);
    widget.resize(400, 40);
    widget.show();
    auto* const in = widget.findChild<QToolButton*>(QStringLiteral("zoomInButton"));
    const QPoint place = in->pos();
    for (int level = 1; level <= 9; ++level) {
        widget.setLevel(level);
        QCoreApplication::processEvents();
        QCOMPARE(in->pos(), place);
    }
}

QTEST_MAIN(ZoomControlWidgetTest)
#include "ZoomControlWidgetTest.moc"
