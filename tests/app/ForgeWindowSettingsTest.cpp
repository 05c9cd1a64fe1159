#include "app/EditPreferencesDialog.h"
#include "tests/app/WindowBench.h"

#include <QColorDialog>
#include <QObject>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

/// What the window reads from and writes to the settings, and the preferences.
class ForgeWindowSettingsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void init() { m_bench = std::make_unique<WindowBench>(); }
    void cleanup();

    void aFirstRun();
    void settingsReachTheirPlaces();
    void settingsSurviveARun();
    void oddFrameRatesComeUp_data();
    void oddFrameRatesComeUp();
    void geometryIsRestored_data();
    void geometryIsRestored();
    void aMaximisedWindowIsRestored();
    void geometryIsWritten();
    void preferencesShowThePresentValues();
    void preferencesReachEngineAndSimulation();
    void preferencesWithoutAMap();
    void preferencesCancelledChangeNothing();
    void theRefreshCountReachesTheSimulation();
    void theTypeChangeQuestionIsNoneOfTheWindows();

private:
    void set(const char* key, const QVariant& value)
    {
        WindowBench::store().setValue(QString::fromLatin1(key), value);
    }
    QVariant stored(const char* key) const
    {
        return WindowBench::store().value(QString::fromLatin1(key));
    }
    QColor simBackground() const
    {
        return WindowBench::sim()->findChild<QGraphicsView*>()->scene()->backgroundBrush().color();
    }
    static void press(QWidget* dialog, const char* button)
    {
        dialog->findChild<QPushButton*>(QString::fromLatin1(button))->click();
    }

    std::unique_ptr<WindowBench> m_bench;
};

void ForgeWindowSettingsTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
}

void ForgeWindowSettingsTest::aFirstRun()
{
    m_bench->open(m_bench->map());
    QVERIFY(m_bench->action("livePlayAction")->isChecked());
    QVERIFY(!m_bench->model()->simulateOnly());
    QVERIFY(WindowBench::sim()->isVisible());
    QCOMPARE(m_bench->engine()->interval(), 25); // 40 frames a second
    QVERIFY(!simBackground().isValid());
    QVERIFY(!m_bench->window->isVisible());
    QVERIFY(!m_bench->window->testAttribute(Qt::WA_Moved)); // Qt's own place
    QVERIFY(!m_bench->window->isMaximized());
    m_bench->window->close();
    QCOMPARE(stored("/sim_background").toString(), QStringLiteral("#000000"));
    m_bench->open(m_bench->map());
    QCOMPARE(simBackground(), QColor(Qt::black)); // and is a colour from now on
    QVERIFY(simBackground().isValid());
}

void ForgeWindowSettingsTest::settingsReachTheirPlaces()
{
    set("/live_play", false);
    set("/show_sim", false);
    set("/pause_sim", true);
    set("/sim_on_top", false);
    set("/frame_rate", 20);
    set("/sim_background", QStringLiteral("#123456"));
    m_bench->open(m_bench->map());
    QVERIFY(m_bench->model()->simulateOnly());
    QVERIFY(!m_bench->action("livePlayAction")->isChecked());
    QVERIFY(!m_bench->action("showSimAction")->isChecked());
    QVERIFY(m_bench->action("pauseSimAction")->isChecked());
    QVERIFY(!m_bench->action("simAlwaysOnTopAction")->isChecked());
    QCOMPARE(m_bench->engine()->interval(), 50);
    QCOMPARE(simBackground(), QColor(0x12, 0x34, 0x56));
    QVERIFY(!WindowBench::sim()->isVisible());
    QVERIFY(WindowBench::sim()->parentWidget() == nullptr);
}

void ForgeWindowSettingsTest::settingsSurviveARun()
{
    const QList<QPair<const char*, QVariant>> values = {
        {"/map_path", QStringLiteral("/a")},
        {"/show_path", QStringLiteral("/b")},
        {"/dmx_path", QStringLiteral("/c")},
        {"/live_play", false},
        {"/frame_rate", 33},
        {"/sim_rate", 5},
        {"/show_sim", false},
        {"/pause_sim", true},
        {"/sim_on_top", false},
        {"/sim_background", QStringLiteral("#a0b0c0")},
    };
    for (const auto& value : values) {
        set(value.first, value.second);
    }
    m_bench->open();
    WindowBench::store().clear();
    m_bench->window->close();
    for (const auto& value : values) {
        QCOMPARE(stored(value.first).toString(), value.second.toString());
    }
}

void ForgeWindowSettingsTest::oddFrameRatesComeUp_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("interval");
    QTest::newRow("zero") << 0 << 25;
    QTest::newRow("negative") << -10 << 25;
    QTest::newRow("one") << 1 << 1000;
    QTest::newRow("far beyond") << 100000 << 1;
    QTest::newRow("least number") << std::numeric_limits<int>::min() << 25;
}

void ForgeWindowSettingsTest::oddFrameRatesComeUp()
{
    QFETCH(const int, rate);
    QFETCH(const int, interval);
    set("/frame_rate", rate);
    m_bench->open();
    QCOMPARE(m_bench->engine()->interval(), interval);
    QSignalSpy ticks(m_bench->engine(), &EffectEngine::EngineTick);
    QVERIFY(ticks.wait());
    m_bench->window->close();
    QCOMPARE(stored("/frame_rate").toInt(), rate); // the stored value stays as it is
}

void ForgeWindowSettingsTest::geometryIsRestored_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("moved");
    QTest::addColumn<bool>("resized");
    const QSize size(1300, 1000);
    QTest::newRow("both") << QPoint(40, 50) << size << true << true;
    QTest::newRow("at the corner") << QPoint(0, 0) << size << true << true;
    QTest::newRow("left of the screen") << QPoint(-5, 50) << size << true << true;
    QTest::newRow("no x") << QPoint(-1, 50) << size << false << true;
    QTest::newRow("no y") << QPoint(40, -1) << size << false << true;
    QTest::newRow("no width") << QPoint(40, 50) << QSize(-1, 1000) << true << false;
    QTest::newRow("no height") << QPoint(40, 50) << QSize(1300, -1) << true << false;
}

void ForgeWindowSettingsTest::geometryIsRestored()
{
    QFETCH(const QPoint, place);
    QFETCH(const QSize, size);
    QFETCH(const bool, moved);
    QFETCH(const bool, resized);
    set("/appx", place.x());
    set("/appy", place.y());
    set("/appwidth", size.width());
    set("/appheight", size.height());
    m_bench->open();
    QCOMPARE(m_bench->window->testAttribute(Qt::WA_Moved), moved);
    if (moved) {
        QCOMPARE(m_bench->window->pos(), place);
    }
    QCOMPARE(m_bench->window->testAttribute(Qt::WA_Resized), resized);
    if (resized) {
        QCOMPARE(m_bench->window->size(), size);
    }
    QVERIFY(!m_bench->window->isMaximized());
}

void ForgeWindowSettingsTest::aMaximisedWindowIsRestored()
{
    set("/appmaximized", true);
    m_bench->open();
    QVERIFY(m_bench->window->isMaximized());
    QVERIFY(m_bench->window->isVisible());
    m_bench->window->close();
    QCOMPARE(stored("/appmaximized").toBool(), true);
}

void ForgeWindowSettingsTest::geometryIsWritten()
{
    m_bench->open();
    m_bench->window->move(60, 70);
    m_bench->window->resize(1250, 950);
    m_bench->window->show();
    m_bench->window->close();
    QCOMPARE(stored("/appmaximized").toBool(), false);
    QCOMPARE(stored("/appx").toInt(), 60);
    QCOMPARE(stored("/appy").toInt(), 70);
    QCOMPARE(stored("/appwidth").toInt(), 1250);
    QCOMPARE(stored("/appheight").toInt(), 950);
}

void ForgeWindowSettingsTest::preferencesShowThePresentValues()
{
    set("/frame_rate", 33);
    set("/sim_rate", 4);
    set("/sim_background", QStringLiteral("#102030"));
    m_bench->open();
    m_bench->dialogs.expect([](QWidget* widget) {
        auto* dialog = qobject_cast<EditPreferencesDialog*>(widget);
        QCOMPARE(dialog->frameRate(), 33);
        QCOMPARE(dialog->simRate(), 4);
        QCOMPARE(dialog->simBackground(), QColor(0x10, 0x20, 0x30));
        dialog->reject();
    });
    m_bench->action("editPreferencesAction")->trigger();
    QCOMPARE(m_bench->dialogs.seen().at(0).title, QStringLiteral("Edit Preferences"));
}

void ForgeWindowSettingsTest::preferencesReachEngineAndSimulation()
{
    m_bench->open(m_bench->map());
    m_bench->dialogs.expect([](QWidget* widget) {
        widget->findChild<QSpinBox*>(QStringLiteral("frameRate"))->setValue(50);
        widget->findChild<QSpinBox*>(QStringLiteral("simRate"))->setValue(7);
        press(widget, "colorButton");
        press(widget, "okButton");
    });
    m_bench->dialogs.expect([](QWidget* widget) {
        auto* colors = qobject_cast<QColorDialog*>(widget);
        colors->setCurrentColor(QColor(9, 8, 7));
        colors->accept();
    });
    m_bench->action("editPreferencesAction")->trigger();
    QCOMPARE(simBackground(), QColor(9, 8, 7));
    QCOMPARE(stored("/frame_rate").toInt(), 50);
    QCOMPARE(stored("/sim_rate").toInt(), 7);
    QCOMPARE(stored("/sim_background").toString(), QStringLiteral("#090807"));
    // The new period of 20 ms: a tick on time is followed by an interval of as much.
    const QDateTime now = QDateTime::currentDateTime();
    m_bench->engine()->tick(now);
    m_bench->engine()->pause(false); // no drift
    m_bench->engine()->tick(now.addMSecs(20));
    QCOMPARE(m_bench->engine()->interval(), 20);
}

void ForgeWindowSettingsTest::preferencesWithoutAMap()
{
    m_bench->open();
    m_bench->dialogs.expect([](QWidget* widget) {
        widget->findChild<QSpinBox*>(QStringLiteral("simRate"))->setValue(9);
        press(widget, "okButton");
    });
    m_bench->action("editPreferencesAction")->trigger();
    QCOMPARE(stored("/sim_rate").toInt(), 9);
}

void ForgeWindowSettingsTest::preferencesCancelledChangeNothing()
{
    set("/sim_background", QStringLiteral("#102030"));
    m_bench->open(m_bench->map());
    m_bench->dialogs.expect([](QWidget* widget) {
        widget->findChild<QSpinBox*>(QStringLiteral("frameRate"))->setValue(50);
        widget->findChild<QSpinBox*>(QStringLiteral("simRate"))->setValue(7);
        press(widget, "colorButton");
        press(widget, "cancelButton");
    });
    m_bench->dialogs.expect([](QWidget* widget) {
        auto* colors = qobject_cast<QColorDialog*>(widget);
        colors->setCurrentColor(QColor(9, 8, 7));
        colors->accept();
    });
    m_bench->action("editPreferencesAction")->trigger();
    QCOMPARE(simBackground(), QColor(0x10, 0x20, 0x30));
    QVERIFY(!stored("/frame_rate").isValid()); // nothing is written
    m_bench->window->close();
    QCOMPARE(stored("/frame_rate").toInt(), 40);
    QCOMPARE(stored("/sim_rate").toInt(), 1);
    QCOMPARE(stored("/sim_background").toString(), QStringLiteral("#102030"));
}

void ForgeWindowSettingsTest::theRefreshCountReachesTheSimulation()
{
    set("/sim_rate", 3);
    m_bench->open(m_bench->map(), m_bench->show());
    m_bench->engine()->pause(true);
    QCOMPARE(WindowBench::simShapes().size(), 2);
    QAbstractGraphicsShapeItem* const light = WindowBench::simShapes().at(0);
    const QColor mark(1, 2, 3);
    light->setBrush(mark);
    const QDateTime start = m_bench->root()->startTime();
    for (int frame = 1; frame <= 3; ++frame) {
        m_bench->engine()->tick(start.addMSecs(25 * frame));
        QCOMPARE(light->brush().color(), mark);
    }
    m_bench->engine()->tick(start.addMSecs(100)); // one more than the count
    QVERIFY(light->brush().color() != mark);
}

void ForgeWindowSettingsTest::theTypeChangeQuestionIsNoneOfTheWindows()
{
    m_bench->open();
    m_bench->window->close();
    QVERIFY(!WindowBench::store().contains(QStringLiteral("askeffectchange")));
    set("askeffectchange", false);
    m_bench->open();
    m_bench->window->close();
    QCOMPARE(stored("askeffectchange").toBool(), false);
}

QTEST_MAIN(ForgeWindowSettingsTest)
#include "ForgeWindowSettingsTest.moc"
