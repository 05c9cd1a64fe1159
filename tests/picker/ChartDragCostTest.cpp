#include "PickerInput.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/NChannelPickerWidget.h"
#include "picker/WhitePickerWidget.h"
#include "resources/Resources.h"

#include <QElapsedTimer>
#include <QtTest>

using namespace VelaColorPickerLib;

namespace {

class PaintCount : public QObject
{
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int paints = 0;
};

} // namespace

/// What a mouse event costs with all that is painted for it.
class ChartDragCostTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aDragOverTheChartKeepsUpWithTheMouse();
};

void ChartDragCostTest::initTestCase()
{
    initForgeResources();
}

void ChartDragCostTest::aDragOverTheChartKeepsUpWithTheMouse()
{
    constexpr int kEvents = 400;
    constexpr double kFrameMs = 1000.0 / 60.0;
    WhitePickerWidget page;
    page.resize(800, 600);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    auto* const curve = page.findChild<BlackBodyCurveWidget*>();
    QTest::mousePress(curve, Qt::LeftButton, {}, QPoint(150, 300));
    QCoreApplication::processEvents();
    PaintCount count;
    curve->installEventFilter(&count);
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < kEvents; ++i) {
        dragTo(curve, QPoint(100 + i, 380 - i / 2 + i % 40));
        QCoreApplication::processEvents();
    }
    const double ms = static_cast<double>(timer.nsecsElapsed()) / 1e6 / kEvents;
    qInfo("%.3f ms an event", ms);
    QVERIFY(count.paints > kEvents * 9 / 10); // every one of them is seen
    QVERIFY(ms < kFrameMs);
}

QTEST_MAIN(ChartDragCostTest)
#include "ChartDragCostTest.moc"
