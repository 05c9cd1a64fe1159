#include "PickerInput.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/RgbPickerWidget.h"
#include "picker/WhitePickerWidget.h"
#include "resources/Resources.h"

#include <QPaintEvent>
#include <QRegion>
#include <QtTest>

#include <functional>
#include <memory>
#include <numeric>

using namespace VelaColorPickerLib;

namespace {

using Maker = std::function<QWidget*()>;

class PaintCount : public QObject
{
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++paints;
            const QRegion region = static_cast<QPaintEvent*>(event)->region();
            pixels += std::accumulate(region.begin(), region.end(), qint64(0),
                                      [](qint64 sum, const QRect& rect) {
                                          return sum + qint64(rect.width()) * rect.height();
                                      });
        }
        return false;
    }
    int paints = 0;
    qint64 pixels = 0;
};

} // namespace

Q_DECLARE_METATYPE(Maker)

/// What is painted while the mouse drags.
class DragPaintTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aDragIsPaintedEventByEvent_data();
    void aDragIsPaintedEventByEvent();
};

void DragPaintTest::initTestCase()
{
    initForgeResources();
}

void DragPaintTest::aDragIsPaintedEventByEvent_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("chart") << Maker([] { return new WhitePickerWidget; })
                           << QByteArray(BlackBodyCurveWidget::staticMetaObject.className());
    const Maker rgb = [] { return new RgbPickerWidget; };
    QTest::newRow("spectrum") << rgb << QByteArray(HsbSpectrumWidget::staticMetaObject.className());
    QTest::newRow("tints") << rgb
                           << QByteArray(HsbTintsAndShadesWidget::staticMetaObject.className());
}

void DragPaintTest::aDragIsPaintedEventByEvent()
{
    constexpr int kEvents = 400;
    QFETCH(Maker, maker);
    QFETCH(QByteArray, field);
    const std::unique_ptr<QWidget> page(maker());
    page->resize(800, 600);
    page->show();
    QVERIFY(QTest::qWaitForWindowExposed(page.get()));
    QWidget* dragged = nullptr;
    for (QWidget* const child : page->findChildren<QWidget*>()) {
        if (field == child->metaObject()->className()) {
            dragged = child;
        }
    }
    QVERIFY(dragged != nullptr);
    const QSize size = dragged->size();
    QTest::mousePress(dragged, Qt::LeftButton, {}, dragged->rect().center());
    QCoreApplication::processEvents();
    PaintCount count;
    dragged->installEventFilter(&count);
    for (int i = 0; i < kEvents; ++i) {
        dragTo(dragged, QPoint(size.width() / 5 + i * size.width() / 700,
                               size.height() * 3 / 5 - i * size.height() / 1400 + i % 40));
        QCoreApplication::processEvents();
    }
    QVERIFY(count.paints > kEvents * 8 / 10); // nearly every one of them is seen
    // Around the marker and what follows it, not the whole field (but where its hue changes).
    QVERIFY(count.pixels / count.paints < qint64(size.width()) * size.height() / 3);
}

QTEST_MAIN(DragPaintTest)
#include "DragPaintTest.moc"
