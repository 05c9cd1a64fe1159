#include "app/Startup.h"

#include "app/ForgeWindow.h"
#include "app/SplashScreen.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QObject>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <functional>

namespace {

/// Looks at the running program every few milliseconds.
std::function<void()> observer;

void observe()
{
    auto* timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, [] { observer(); });
    timer->start(5);
}

template <class Window>
Window* visibleWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* found = qobject_cast<Window*>(window);
        if (found != nullptr && found->isVisible()) {
            return found;
        }
    }
    return nullptr;
}

int runForge()
{
    char name[] = "pageant-forge";
    char* arguments[] = {name, nullptr};
    int count = 1;
    // The attribute comes behind the application object: the platform scales as the user says.
    QTest::ignoreMessage(QtWarningMsg, "Attribute Qt::AA_DisableHighDpiScaling must be set before "
                                       "QCoreApplication is created.");
    return startForge(count, arguments);
}

} // namespace

/// Runs the whole start in this process, from the application object on.
class StartupTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theSplashStandsForItsTimeAndGoes();
    void theProgramEndsWithItsLastWindow();
    void theProgramEndsWithTheExitAction();

private:
    QTemporaryDir m_settings;
};

void StartupTest::initTestCase()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settings.path());
    qAddPreRoutine(observe);
}

void StartupTest::theSplashStandsForItsTimeAndGoes()
{
    QElapsedTimer clock;
    bool beganWithWindow = false;
    qint64 gone = -1;
    observer = [&] {
        const bool splash = visibleWindow<SplashScreen>() != nullptr;
        auto* window = visibleWindow<ForgeWindow>();
        if (window != nullptr && splash) {
            beganWithWindow = true;
        }
        if (window != nullptr && !splash) {
            gone = clock.elapsed();
            window->close();
        }
    };
    clock.start();
    QCOMPARE(runForge(), 0);
    QVERIFY(beganWithWindow); // it stays while the window is up already
    QVERIFY2(gone >= 1500, qPrintable(QString::number(gone)));
}

void StartupTest::theProgramEndsWithItsLastWindow()
{
    observer = [] {
        if (auto* window = visibleWindow<ForgeWindow>()) {
            window->close();
        }
        if (auto* splash = visibleWindow<SplashScreen>()) {
            splash->close();
        }
    };
    QCOMPARE(runForge(), 0);
}

void StartupTest::theProgramEndsWithTheExitAction()
{
    bool wasVisible = false;
    observer = [&] {
        if (auto* window = visibleWindow<ForgeWindow>()) {
            wasVisible = true;
            QMetaObject::invokeMethod(window, "handleExitAction");
        }
    };
    QCOMPARE(runForge(), 0);
    QVERIFY(wasVisible);
}

QTEST_APPLESS_MAIN(StartupTest)
#include "StartupTest.moc"
