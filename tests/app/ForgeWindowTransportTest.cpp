#include "tests/app/WindowBench.h"

#include <QMessageBox>
#include <QObject>
#include <QtTest>

namespace {

QString seconds(double value)
{
    return QString::number(value, 'f', 6);
}

} // namespace

/// The time slider, seeking and pausing.
class ForgeWindowTransportTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void init() { m_bench = std::make_unique<WindowBench>(); }
    void cleanup();

    void anEmptyShowKeepsTheSliderAtRest();
    void theTotalTimeIsTheShowsEnd_data();
    void theTotalTimeIsTheShowsEnd();
    void aShowOverOneDayIsReportedOnceInARun();
    void aShowOverOneDayRunsOn();
    void theSliderFollowsTheShow_data();
    void theSliderFollowsTheShow();
    void theSliderRestsWhileTheEngineIsPaused();
    void theSliderRestsWhileItIsHeld();
    void followingDoesNotSeek();
    void theLabelCountsStepsToTheFullLength_data();
    void theLabelCountsStepsToTheFullLength();
    void draggingSeeks_data();
    void draggingSeeks();
    void draggingWithThePauseButtonShowsFramesAndStaysPaused();
    void draggingWithoutThePauseButtonLetsLiveFramesIn();
    void holdingPausesTheEngine();
    void releasingRunsOnUnlessPaused_data();
    void releasingRunsOnUnlessPaused();
    void pauseStopsTheEngine();
    void playResumesAtTheSlidersPlace_data();
    void playResumesAtTheSlidersPlace();
    void playLetsEffectsEnterAnew();
    void effectsThatRestartPlayOnAfterASeek_data();
    void effectsThatRestartPlayOnAfterASeek();
    void theEditorsRequestPauses();
    void theTimerIsSlowFirst();
    void thePauseButtonHoldsAgainstATick();

private:
    /// Opens a show of one effect of that length, with the engine paused.
    void open(quint32 lengthMs)
    {
        m_bench->open(m_bench->map(), m_bench->show("night.sho", lengthMs));
        m_bench->engine()->pause(true);
    }
    /// The root at that moment of the show, the engine paused.
    void goTo(qint64 ms)
    {
        m_bench->engine()->tick(m_bench->root()->startTime().addMSecs(ms));
        m_bench->engine()->pause(true);
    }
    /// What the timer does while the engine runs.
    void updateRunning()
    {
        m_bench->engine()->pause(false);
        m_bench->window->sliderUpdate();
        m_bench->engine()->pause(true);
    }

    std::unique_ptr<WindowBench> m_bench;
};

void ForgeWindowTransportTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
}

void ForgeWindowTransportTest::anEmptyShowKeepsTheSliderAtRest()
{
    m_bench->open(m_bench->map());
    QTest::qWait(30); // the clock runs
    m_bench->window->sliderUpdate();
    QCOMPARE(m_bench->totalTime()->text(), QStringLiteral("0.000000"));
    QCOMPARE(m_bench->slider()->value(), 0);
    QCOMPARE(m_bench->slider()->minimum(), 0);
    QCOMPARE(m_bench->slider()->maximum(), 499);
    QCOMPARE(m_bench->sliderTimer()->interval(), 100);
    QVERIFY(m_bench->sliderTimer()->isActive());
    // With nothing to show, the pause button is not enforced.
    m_bench->pauseButton()->setChecked(true);
    m_bench->engine()->pause(false);
    m_bench->window->sliderUpdate();
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowTransportTest::theTotalTimeIsTheShowsEnd_data()
{
    QTest::addColumn<quint32>("length");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("color");
    QTest::newRow("one millisecond") << 1U << QStringLiteral("0.001000") << QColor(Qt::black);
    QTest::newRow("seconds") << 12345U << QStringLiteral("12.345000") << QColor(Qt::black);
    QTest::newRow("one day") << 86400000U << QStringLiteral("86400.000000") << QColor(Qt::black);
    QTest::newRow("one millisecond more")
        << 86400001U << QStringLiteral("86400.001000 (Invalid)") << QColor(Qt::red);
    QTest::newRow("the longest") << 4294967295U << QStringLiteral("4294967.295000 (Invalid)")
                                 << QColor(Qt::red);
}

void ForgeWindowTransportTest::theTotalTimeIsTheShowsEnd()
{
    QFETCH(const quint32, length);
    QFETCH(const QString, text);
    QFETCH(const QColor, color);
    open(length);
    const bool tooLong = length > 86400000U;
    if (tooLong) {
        m_bench->dialogs.expectBox(QStringLiteral("OK"));
    }
    m_bench->window->sliderUpdate();
    QCOMPARE(m_bench->totalTime()->text(), text);
    QCOMPARE(m_bench->totalTime()->palette().color(QPalette::WindowText), color);
    QVERIFY(m_bench->totalTime()->fontMetrics().horizontalAdvance(text) <
            m_bench->totalTime()->width());
    QCOMPARE(m_bench->dialogs.seen().size(), tooLong ? 1 : 0);
    if (tooLong) {
        const DialogAnswers::Seen& box = m_bench->dialogs.seen().at(0);
        QCOMPARE(box.title, QStringLiteral("Error"));
        QCOMPARE(box.text, QStringLiteral("Shows cannot be longer than 1 day (86,400 seconds) in "
                                          "length."));
        QCOMPARE(box.icon, QMessageBox::Critical);
    }
}

void ForgeWindowTransportTest::aShowOverOneDayIsReportedOnceInARun()
{
    open(86400001U);
    m_bench->dialogs.expectBox(QStringLiteral("OK"));
    m_bench->window->sliderUpdate();
    m_bench->window->sliderUpdate();
    // A good show in between changes the colour, not the count.
    m_bench->dialogs.expectFile(m_bench->show("short.sho", 500));
    m_bench->action("openShowAction")->trigger();
    m_bench->window->sliderUpdate();
    QCOMPARE(m_bench->totalTime()->text(), QStringLiteral("0.500000"));
    QCOMPARE(m_bench->totalTime()->palette().color(QPalette::WindowText), QColor(Qt::black));
    m_bench->dialogs.expectFile(m_bench->show("long.sho", 90000000U));
    m_bench->action("openShowAction")->trigger();
    m_bench->window->sliderUpdate();
    QCOMPARE(m_bench->totalTime()->text(), QStringLiteral("90000.000000 (Invalid)"));
    QCOMPARE(m_bench->dialogs.seen().size(), 3);
}

void ForgeWindowTransportTest::aShowOverOneDayRunsOn()
{
    open(86400001U);
    m_bench->engine()->pause(false);
    m_bench->dialogs.expectBox(QStringLiteral("OK"));
    m_bench->window->sliderUpdate();
    QVERIFY(m_bench->isRunning());
    QVERIFY(m_bench->sliderTimer()->isActive());
}

void ForgeWindowTransportTest::theSliderFollowsTheShow_data()
{
    QTest::addColumn<quint32>("length");
    QTest::addColumn<qint64>("position");
    QTest::addColumn<int>("step");
    QTest::newRow("start") << 10000U << Q_INT64_C(0) << 0;
    QTest::newRow("just below a step") << 10000U << Q_INT64_C(19) << 0;
    QTest::newRow("a step") << 10000U << Q_INT64_C(20) << 1;
    QTest::newRow("middle") << 10000U << Q_INT64_C(5000) << 250;
    QTest::newRow("last step") << 10000U << Q_INT64_C(9999) << 499;
    QTest::newRow("a short show") << 3U << Q_INT64_C(2) << 333;
}

void ForgeWindowTransportTest::theSliderFollowsTheShow()
{
    QFETCH(const quint32, length);
    QFETCH(const qint64, position);
    QFETCH(const int, step);
    open(length);
    goTo(position);
    QCOMPARE(m_bench->root()->elapsed(), position);
    updateRunning();
    QCOMPARE(m_bench->slider()->value(), step);
    QCOMPARE(m_bench->currentTime()->text(),
             seconds(static_cast<double>(position) / 1000.0)); // not the step's time
}

void ForgeWindowTransportTest::theSliderRestsWhileTheEngineIsPaused()
{
    open(10000);
    goTo(5000);
    const QString before = m_bench->currentTime()->text();
    m_bench->window->sliderUpdate();
    QCOMPARE(m_bench->slider()->value(), 0);
    QCOMPARE(m_bench->currentTime()->text(), before);
    QCOMPARE(m_bench->totalTime()->text(), QStringLiteral("10.000000"));
}

void ForgeWindowTransportTest::theSliderRestsWhileItIsHeld()
{
    open(10000);
    m_bench->slider()->setSliderDown(true);
    m_bench->slider()->setValue(100);
    goTo(5000);
    updateRunning();
    QCOMPARE(m_bench->slider()->value(), 100);
    m_bench->slider()->setSliderDown(false);
    m_bench->engine()->pause(true);
    goTo(5000);
    updateRunning();
    QCOMPARE(m_bench->slider()->value(), 250);
}

void ForgeWindowTransportTest::followingDoesNotSeek()
{
    open(10000);
    goTo(5000);
    QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
    updateRunning();
    QCOMPARE(m_bench->slider()->value(), 250);
    QCOMPARE(ticks.count(), 0);
}

void ForgeWindowTransportTest::theLabelCountsStepsToTheFullLength_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<QString>("text");
    // step * 10000 / 499 / 1000
    QTest::newRow("first") << 1 << QStringLiteral("0.020040");
    QTest::newRow("middle") << 250 << QStringLiteral("5.010020");
    QTest::newRow("last") << 499 << QStringLiteral("10.000000");
}

void ForgeWindowTransportTest::theLabelCountsStepsToTheFullLength()
{
    QFETCH(const int, step);
    QFETCH(const QString, text);
    open(10000);
    m_bench->slider()->setValue(step);
    QCOMPARE(m_bench->currentTime()->text(), text);
}

void ForgeWindowTransportTest::draggingSeeks_data()
{
    QTest::addColumn<quint32>("length");
    QTest::addColumn<int>("step");
    QTest::addColumn<qint64>("position");
    // trunc(step * length / 500)
    QTest::newRow("middle") << 10000U << 250 << Q_INT64_C(5000);
    QTest::newRow("last") << 10000U << 499 << Q_INT64_C(9980);
    QTest::newRow("truncated") << 10499U << 7 << Q_INT64_C(146); // 146.986
    QTest::newRow("a day") << 86400000U << 499 << Q_INT64_C(86227200);
    QTest::newRow("the longest") << 4294967295U << 499 << Q_INT64_C(4286377360);
}

void ForgeWindowTransportTest::draggingSeeks()
{
    QFETCH(const quint32, length);
    QFETCH(const int, step);
    QFETCH(const qint64, position);
    open(length);
    QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
    QSignalSpy painted(m_bench->engine(), &EffectEngine::propertiesCompiled);
    const QDateTime start = m_bench->root()->startTime();
    m_bench->slider()->setValue(step);
    QCOMPARE(ticks.count(), 1);
    QCOMPARE(painted.count(), 1);
    QCOMPARE(start.msecsTo(ticks.at(0).at(0).toDateTime()), position);
    QCOMPARE(m_bench->root()->elapsed(), position);
}

void ForgeWindowTransportTest::draggingWithThePauseButtonShowsFramesAndStaysPaused()
{
    open(10000);
    m_bench->pauseButton()->click();
    QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
    m_bench->slider()->setSliderDown(true);
    for (int step = 100; step <= 400; step += 100) {
        m_bench->slider()->setSliderPosition(step);
        QVERIFY(!m_bench->isRunning());
        QCOMPARE(m_bench->root()->elapsed(), 20 * step);
    }
    QCOMPARE(ticks.count(), 4);
    m_bench->slider()->setSliderDown(false);
    QVERIFY(!m_bench->isRunning());
    m_bench->window->sliderUpdate();
    QVERIFY(!m_bench->isRunning());
    QCOMPARE(m_bench->slider()->value(), 400);
}

void ForgeWindowTransportTest::draggingWithoutThePauseButtonLetsLiveFramesIn()
{
    open(10000);
    m_bench->slider()->setSliderDown(true);
    QVERIFY(!m_bench->isRunning());
    m_bench->slider()->setSliderPosition(100);
    QVERIFY(m_bench->isRunning()); // the seek's frame has armed the timer again
}

void ForgeWindowTransportTest::holdingPausesTheEngine()
{
    open(10000);
    m_bench->engine()->pause(false);
    m_bench->window->show();
    const QRect groove = m_bench->slider()->rect();
    // On the handle, which stands at the left end.
    QTest::mousePress(m_bench->slider(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(groove.left() + 4, groove.center().y()));
    QVERIFY(m_bench->slider()->isSliderDown());
    QVERIFY(!m_bench->isRunning());
    QTest::mouseRelease(m_bench->slider(), Qt::LeftButton, Qt::NoModifier,
                        QPoint(groove.left() + 4, groove.center().y()));
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowTransportTest::releasingRunsOnUnlessPaused_data()
{
    QTest::addColumn<bool>("paused");
    QTest::newRow("playing") << false;
    QTest::newRow("paused") << true;
}

void ForgeWindowTransportTest::releasingRunsOnUnlessPaused()
{
    QFETCH(const bool, paused);
    open(10000);
    m_bench->engine()->pause(false);
    m_bench->pauseButton()->setChecked(paused);
    m_bench->slider()->setSliderDown(true);
    m_bench->slider()->setSliderPosition(250);
    const QDateTime seekStart = m_bench->root()->startTime();
    const QDateTime before = QDateTime::currentDateTime();
    m_bench->slider()->setSliderDown(false);
    const QDateTime after = QDateTime::currentDateTime();
    QCOMPARE(m_bench->isRunning(), !paused);
    const QDateTime start = m_bench->root()->startTime();
    if (paused) {
        QCOMPARE(start, seekStart);
    } else { // the show goes on from where it was let go
        QVERIFY(start >= before.addMSecs(-5001));
        QVERIFY(start <= after.addMSecs(-5000));
    }
}

void ForgeWindowTransportTest::pauseStopsTheEngine()
{
    open(10000);
    m_bench->engine()->pause(false);
    m_bench->pauseButton()->click();
    QVERIFY(!m_bench->isRunning());
    m_bench->pauseButton()->click();
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowTransportTest::playResumesAtTheSlidersPlace_data()
{
    QTest::addColumn<quint32>("length");
    QTest::addColumn<int>("step");
    QTest::addColumn<qint64>("offset");
    QTest::newRow("even") << 10000U << 250 << Q_INT64_C(5000);
    QTest::newRow("whole milliseconds a step") << 10499U << 250 << Q_INT64_C(5000); // not 5249
    QTest::newRow("less than one a step") << 499U << 400 << Q_INT64_C(0);
    QTest::newRow("the longest") << 4294967295U << 499 << Q_INT64_C(4286377066); // 8589934 * 499
}

void ForgeWindowTransportTest::playResumesAtTheSlidersPlace()
{
    QFETCH(const quint32, length);
    QFETCH(const int, step);
    QFETCH(const qint64, offset);
    open(length);
    m_bench->pauseButton()->setChecked(true);
    m_bench->slider()->setValue(step);
    const QDateTime before = QDateTime::currentDateTime();
    m_bench->pauseButton()->setChecked(false);
    const QDateTime after = QDateTime::currentDateTime();
    const QDateTime start = m_bench->root()->startTime();
    QVERIFY(start >= before.addMSecs(-offset - 1));
    QVERIFY(start <= after.addMSecs(-offset));
    QVERIFY(m_bench->isRunning());
}

void ForgeWindowTransportTest::playLetsEffectsEnterAnew()
{
    open(10000);
    goTo(100);
    Effect* const effect = m_bench->root()->effectList().at(0);
    QVERIFY(effect->active());
    m_bench->pauseButton()->setChecked(true);
    m_bench->slider()->setValue(250);
    QVERIFY(effect->active());
    m_bench->pauseButton()->setChecked(false);
    QVERIFY(!effect->active());
    // The next frame enters it with a start that fits: 7 s into the show, 7 s into the effect.
    goTo(7000);
    QVERIFY(effect->active());
    QCOMPARE(effect->elapsed(), 7000);
}

void ForgeWindowTransportTest::effectsThatRestartPlayOnAfterASeek_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("ahead") << 0 << 400;
    QTest::newRow("back") << 400 << 0;
}

/// An effect that begins anew by itself counts from its frame before, and after a seek that one was
/// painted at a time that the clock has not come to or left long ago.
void ForgeWindowTransportTest::effectsThatRestartPlayOnAfterASeek()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    constexpr quint32 kLengthMs = 60000;
    // Over after a millisecond: begins anew in every frame.
    const QString rainbow = WindowBench::effectXml(
        1, kLengthMs,
        QStringLiteral("<color_0>red</color_0><duration_0>0.001</duration_0><fade_0>0</fade_0>"),
        QStringLiteral("Custom Rainbow"));
    const QString nested =
        WindowBench::effectXml(2, kLengthMs, rainbow, QStringLiteral("Meta Effect"));
    m_bench->open(m_bench->map(),
                  m_bench->file("night.sho", WindowBench::rootXml(rainbow + nested)));
    m_bench->pauseButton()->setChecked(true);
    m_bench->slider()->setValue(from);
    m_bench->slider()->setValue(to);
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    m_bench->pauseButton()->setChecked(false);
    QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
    for (int frame = 0; frame < 2; ++frame) {
        QVERIFY(ticks.wait());
        const auto* const timeline =
            qobject_cast<const MetaEffect*>(m_bench->root()->effectByEid(2));
        QVERIFY(timeline != nullptr);
        for (const Effect* const effect :
             {m_bench->root()->effectByEid(1), timeline->effectByEid(1)}) {
            QVERIFY(effect->active());
            QVERIFY(effect->startMs() >= before);
            QVERIFY(effect->startMs() <= QDateTime::currentMSecsSinceEpoch());
        }
    }
}

void ForgeWindowTransportTest::theEditorsRequestPauses()
{
    open(10000);
    m_bench->engine()->pause(false);
    emit m_bench->editor()->pauseEffectEngine(true);
    QVERIFY(!m_bench->isRunning());
    emit m_bench->editor()->pauseEffectEngine(false);
    QVERIFY(m_bench->isRunning());
    QVERIFY(!m_bench->root()->effectList().at(0)->active());
}

void ForgeWindowTransportTest::theTimerIsSlowFirst()
{
    open(10000);
    QCOMPARE(m_bench->sliderTimer()->interval(), 500);
    QTRY_COMPARE(m_bench->sliderTimer()->interval(), 100);
    QVERIFY(m_bench->sliderTimer()->isActive());
}

void ForgeWindowTransportTest::thePauseButtonHoldsAgainstATick()
{
    open(10000);
    m_bench->pauseButton()->setChecked(true);
    m_bench->engine()->tick(QDateTime::currentDateTime()); // arms the timer
    QVERIFY(m_bench->isRunning());
    m_bench->window->sliderUpdate();
    QVERIFY(!m_bench->isRunning());
}

QTEST_MAIN(ForgeWindowTransportTest)
#include "ForgeWindowTransportTest.moc"
