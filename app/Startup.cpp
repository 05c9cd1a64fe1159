#include "app/Startup.h"

#include "app/CommandLine.h"
#include "app/ForgeWindow.h"
#include "app/SplashScreen.h"
#include "color/WhiteChart.h"
#include "effects/RegisterEffects.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QPixmap>
#include <QTimer>

namespace {
constexpr int kSplashMs = 1500;
constexpr int kWarmUpMs = 300;
} // namespace

int startForge(int& argc, char** argv)
{
    QApplication application(argc, argv);
    // Set behind the application object, where it has no effect but a warning: users keep the
    // environment's ways to scale.
    QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling);
    initForgeResources();

    SplashScreen splash(QPixmap(QStringLiteral(":/images/splash.png")));
    splash.show();
    QTimer::singleShot(kSplashMs, &splash, &SplashScreen::killSplash);
    QCoreApplication::processEvents();

    const CommandLine options = CommandLine::process(application);
    WhiteChart::instance(); // before the first window, which shows colours
    registerEffects();

    ForgeWindow window(options.mapFile, options.showFile, options.demoMode, nullptr);
    window.show();
    // The chart's pictures take a moment to draw: while the splash stands, not in the first frame
    // that shows a white.
    QTimer::singleShot(kWarmUpMs, [] { WhiteChart::instance().whiteImage(); });
    QObject::connect(&application, &QApplication::lastWindowClosed, &application,
                     &QApplication::quit);
    return QApplication::exec();
}
