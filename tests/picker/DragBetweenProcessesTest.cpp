#include "DragHand.h"
#include "picker/ColorViewWidget.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QMimeData>
#include <QProcess>
#include <QtTest>

#include <cstdio>

using VelaColorPickerLib::ColorViewWidget;

namespace {

constexpr QRect kOther(700, 100, 200, 160); // the second process's window, on the screen

/// The second process: one swatch that says what it is given, and another that can be dragged from.
int runOther(QApplication* app, bool gives)
{
    ColorViewWidget view(ColorViewWidget::Role::Comparison);
    view.setWindowFlag(Qt::FramelessWindowHint);
    view.setGeometry(kOther);
    view.setColor(VelaColor(QColor(10, 200, 90)), QString());
    QObject::connect(&view, &ColorViewWidget::colorChanged, app, [app](const VelaColor& color) {
        std::puts(color.toString().toLatin1().constData());
        app->quit();
    });
    view.show();
    if (!QTest::qWaitForWindowExposed(&view)) {
        return 1;
    }
    std::puts("ready");
    std::fflush(stdout);
    if (gives && !dragByHand(&view, view.rect().center(), QPoint(200, 200))) {
        return 2;
    }
    // What was dropped is asked for afterwards, from a process that must still be there.
    QTimer::singleShot(20000, app, [app] { app->exit(3); });
    return QApplication::exec();
}

} // namespace

/// Runs on a real display server, since without one nothing carries a drag.
class DragBetweenProcessesTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void aColorGoesToAnotherWindowOfTheProgram();
    void aColorGoesToAnotherProcess();
    void aColorComesFromAnotherProcess();
};

void DragBetweenProcessesTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
}

void DragBetweenProcessesTest::aColorGoesToAnotherWindowOfTheProgram()
{
    ColorViewWidget source(ColorViewWidget::Role::Comparison);
    ColorViewWidget target(ColorViewWidget::Role::Comparison);
    source.setGeometry(100, 100, 200, 160);
    target.setGeometry(500, 400, 200, 160);
    const VelaColor white(0.38177, 0.37959);
    source.setColor(white, QString());
    source.show();
    target.show();
    QVERIFY(QTest::qWaitForWindowExposed(&source) && QTest::qWaitForWindowExposed(&target));
    QSignalSpy selected(&source, &ColorViewWidget::selected);
    QSignalSpy changed(&target, &ColorViewWidget::colorChanged);
    QVERIFY(dragByHand(&source, QPoint(60, 60), target.mapToGlobal(QPoint(80, 80))));
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(target.color().toString(), white.toString());
    QCOMPARE(selected.count(), 0);
}

void DragBetweenProcessesTest::aColorGoesToAnotherProcess()
{
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--take")});
    QVERIFY(other.waitForReadyRead(20000));
    QCOMPARE(other.readLine(), QByteArray("ready\n"));

    ColorViewWidget source(ColorViewWidget::Role::Main);
    source.setGeometry(100, 100, 200, 160);
    const VelaColor white(0.38177, 0.37959);
    source.setColor(white, QString());
    source.show();
    QVERIFY(QTest::qWaitForWindowExposed(&source));
    QVERIFY(dragByHand(&source, QPoint(60, 60), kOther.center()));
    QTRY_COMPARE_WITH_TIMEOUT(other.state(), QProcess::NotRunning, 20000);
    QCOMPARE(other.readAllStandardOutput(), white.toString().toLatin1() + '\n');
    QCOMPARE(other.exitCode(), 0);
}

void DragBetweenProcessesTest::aColorComesFromAnotherProcess()
{
    ColorViewWidget target(ColorViewWidget::Role::Main);
    target.setWindowFlag(Qt::FramelessWindowHint);
    target.setGeometry(100, 100, 200, 160); // around the place that the other drags to
    target.show();
    QVERIFY(QTest::qWaitForWindowExposed(&target));
    QSignalSpy changed(&target, &ColorViewWidget::colorChanged);
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--give")});
    QTRY_COMPARE_WITH_TIMEOUT(changed.count(), 1, 20000);
    QCOMPARE(changed.at(0).at(0).value<VelaColor>().name(), QStringLiteral("#0ac85a"));
    QCOMPARE(other.state(), QProcess::Running);
    other.kill();
    QVERIFY(other.waitForFinished());
}

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    initForgeResources();
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.contains(QStringLiteral("--take"))) {
        return runOther(&app, false);
    }
    if (arguments.contains(QStringLiteral("--give"))) {
        return runOther(&app, true);
    }
    DragBetweenProcessesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DragBetweenProcessesTest.moc"
