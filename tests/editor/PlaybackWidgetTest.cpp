#include "editor/PlaybackWidget.h"

#include "resources/Resources.h"

#include <QLabel>
#include <QMouseEvent>
#include <QObject>
#include <QPixmap>
#include <QSignalSpy>
#include <QSlider>
#include <QToolButton>
#include <QtTest>

class PlaybackWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void theFormIsWhole();
    void theSliderIsRelayed();
    void thePauseButtonIsRelayed();
    void settingTheValueIsRelayedToo();
    void theValueStaysInItsRange_data();
    void theValueStaysInItsRange();
    void theTimesAreShown();
    void theTotalTimesColorIsItsTextAlone();
    void theTimesReadInEveryPalette();
    void aLongerTimeMovesNothing();

private:
    static QSlider* slider(const PlaybackWidget& widget)
    {
        return widget.findChild<QSlider*>(QStringLiteral("m_showSlider"));
    }
    static QToolButton* pauseButton(const PlaybackWidget& widget)
    {
        return widget.findChild<QToolButton*>(QStringLiteral("m_pauseButton"));
    }
    static QLabel* label(const PlaybackWidget& widget, const char* name)
    {
        return widget.findChild<QLabel*>(QString::fromLatin1(name));
    }
};

void PlaybackWidgetTest::theFormIsWhole()
{
    const PlaybackWidget widget;
    QCOMPARE(slider(widget)->orientation(), Qt::Horizontal);
    QCOMPARE(slider(widget)->minimum(), 0);
    QCOMPARE(slider(widget)->maximum(), 499);
    QCOMPARE(widget.value(), 0);
    const QToolButton* const button = pauseButton(widget);
    QVERIFY(button->isCheckable());
    QVERIFY(!button->isChecked());
    QVERIFY(!widget.isPaused());
    QCOMPARE(button->text(), QString());
    QCOMPARE(button->icon().pixmap(24).toImage(),
             QPixmap(QStringLiteral(":/images/icons/24/pause.png")).toImage());
    QVERIFY(!button->icon().isNull());
    QCOMPARE(label(widget, "totalTime")->text(), QStringLiteral("0.00 sec."));
    QStringList texts;
    const QList<QLabel*> labels = widget.findChildren<QLabel*>();
    for (const QLabel* each : labels) {
        texts.append(each->text());
    }
    QVERIFY(texts.contains(QStringLiteral("Total Time:")));
    QVERIFY(texts.contains(QStringLiteral("Cur Time:")));
}

void PlaybackWidgetTest::theSliderIsRelayed()
{
    PlaybackWidget widget;
    widget.resize(600, 100);
    widget.show();
    QSignalSpy pressed(&widget, &PlaybackWidget::sliderPressed);
    QSignalSpy changed(&widget, &PlaybackWidget::valueChanged);
    QSignalSpy released(&widget, &PlaybackWidget::sliderReleased);
    QSlider* const bar = slider(widget);
    const int middle = bar->height() / 2;
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, QPoint(4, middle)); // on the handle
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(released.count(), 0);
    const QPoint to(bar->width() / 2, middle);
    QMouseEvent move(QEvent::MouseMove, to, bar->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(bar, &move);
    QVERIFY(changed.count() > 0);
    QCOMPARE(changed.last().at(0).toInt(), widget.value());
    QVERIFY(widget.value() > 200 && widget.value() < 300);
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, QPoint(bar->width() / 2, middle));
    QCOMPARE(released.count(), 1);
    QCOMPARE(pressed.count(), 1);
}

void PlaybackWidgetTest::thePauseButtonIsRelayed()
{
    PlaybackWidget widget;
    widget.show();
    QSignalSpy toggled(&widget, &PlaybackWidget::toggled);
    QTest::mouseClick(pauseButton(widget), Qt::LeftButton);
    QVERIFY(widget.isPaused());
    QTest::mouseClick(pauseButton(widget), Qt::LeftButton);
    QVERIFY(!widget.isPaused());
    QCOMPARE(toggled.count(), 2);
    QCOMPARE(toggled.at(0).at(0).toBool(), true);
    QCOMPARE(toggled.at(1).at(0).toBool(), false);
}

void PlaybackWidgetTest::settingTheValueIsRelayedToo()
{
    PlaybackWidget widget;
    QSignalSpy changed(&widget, &PlaybackWidget::valueChanged);
    QSignalSpy pressed(&widget, &PlaybackWidget::sliderPressed);
    widget.setValue(123);
    QCOMPARE(widget.value(), 123);
    QCOMPARE(slider(widget)->value(), 123);
    widget.setValue(123);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), 123);
    QCOMPARE(pressed.count(), 0);
}

void PlaybackWidgetTest::theValueStaysInItsRange_data()
{
    QTest::addColumn<int>("given");
    QTest::addColumn<int>("held");
    QTest::newRow("last") << 499 << 499;
    QTest::newRow("beyond") << 500 << 499;
    QTest::newRow("below") << -1 << 0;
}

void PlaybackWidgetTest::theValueStaysInItsRange()
{
    QFETCH(const int, given);
    QFETCH(const int, held);
    PlaybackWidget widget;
    widget.setValue(given);
    QCOMPARE(widget.value(), held);
}

void PlaybackWidgetTest::theTimesAreShown()
{
    PlaybackWidget widget;
    widget.setCurrentTimeText(QStringLiteral("1.500000"));
    widget.setTotalTimeText(QStringLiteral("86400.001000 (Invalid)"));
    QCOMPARE(label(widget, "currentTime")->text(), QStringLiteral("1.500000"));
    QCOMPARE(label(widget, "totalTime")->text(), QStringLiteral("86400.001000 (Invalid)"));
}

void PlaybackWidgetTest::theTotalTimesColorIsItsTextAlone()
{
    PlaybackWidget widget;
    const QPalette before = label(widget, "totalTime")->palette();
    widget.setTotalTimeColor(Qt::red);
    const QBrush brush = label(widget, "totalTime")->palette().brush(QPalette::WindowText);
    QCOMPARE(brush.color(), QColor(Qt::red));
    QCOMPARE(brush.style(), Qt::SolidPattern);
    QCOMPARE(label(widget, "totalTime")->palette().color(QPalette::Window),
             before.color(QPalette::Window));
    QCOMPARE(label(widget, "currentTime")->palette().color(QPalette::WindowText),
             QColor(Qt::black));
    widget.setTotalTimeColor(Qt::black);
    QCOMPARE(label(widget, "totalTime")->palette().color(QPalette::WindowText), QColor(Qt::black));
}

void PlaybackWidgetTest::theTimesReadInEveryPalette()
{
    // Black text is given, so the ground must be light even where the windows are dark.
    const QPalette former = QApplication::palette();
    QPalette dark = former;
    dark.setColor(QPalette::Window, QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    PlaybackWidget widget;
    for (const char* name : {"currentTime", "totalTime"}) {
        const QLabel* const time = label(widget, name);
        QVERIFY(time->autoFillBackground());
        QVERIFY(time->palette().color(QPalette::Window).lightness() > 220);
        QCOMPARE(time->palette().color(QPalette::WindowText), QColor(Qt::black));
    }
    QApplication::setPalette(former);
}

void PlaybackWidgetTest::aLongerTimeMovesNothing()
{
    PlaybackWidget widget;
    widget.resize(900, 100);
    widget.show();
    QMap<QWidget*, QRect> places;
    const QList<QWidget*> children = widget.findChildren<QWidget*>();
    for (QWidget* child : children) {
        places.insert(child, child->geometry());
    }
    widget.setCurrentTimeText(QStringLiteral("4294967.295000"));
    widget.setTotalTimeText(QStringLiteral("4294967.295000 (Invalid)"));
    QCoreApplication::processEvents();
    for (auto place = places.cbegin(); place != places.cend(); ++place) {
        QCOMPARE(place.key()->geometry(), place.value());
    }
    const QLabel* const total = label(widget, "totalTime");
    QVERIFY(total->fontMetrics().horizontalAdvance(total->text()) <
            total->width() - total->contentsMargins().left() - total->contentsMargins().right() +
                1);
}

QTEST_MAIN(PlaybackWidgetTest)
#include "PlaybackWidgetTest.moc"
