#include "picker/ColorViewWidget.h"

#include "DragHand.h"
#include "MenuHand.h"
#include "color/ColorMime.h"
#include "color/DisplayColor.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QtTest>

using VelaColorPickerLib::ColorViewWidget;

namespace {

const char kSignals[] = "colorChanged(VelaColor,QString) selected() addToFavorites(VelaColor) "
                        "copyToMainColor(VelaColor,QString) openInRGBPicker(VelaColor,QString) "
                        "openInWhitePicker(VelaColor,QString)";
const char kSlots[] = "onAddToFavorites() onCopyToMainColor() onReset()";

VelaColor white4000()
{
    return VelaColor(0.38177, 0.37959);
}

/// A swatch with a spy on each of its signals.
struct Bench
{
    ColorViewWidget view;
    QSignalSpy changed{&view, &ColorViewWidget::colorChanged};
    QSignalSpy selected{&view, &ColorViewWidget::selected};
    QSignalSpy added{&view, &ColorViewWidget::addToFavorites};
    QSignalSpy copied{&view, &ColorViewWidget::copyToMainColor};
    QSignalSpy rgb{&view, &ColorViewWidget::openInRGBPicker};
    QSignalSpy white{&view, &ColorViewWidget::openInWhitePicker};

    explicit Bench(ColorViewWidget::Role role)
        : view(role)
    {
        view.resize(120, 100);
        view.show();
    }
    bool drop(const QMimeData* data)
    {
        const QPoint pos = view.rect().center();
        QDragEnterEvent enter(pos, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        enter.setAccepted(false);
        QApplication::sendEvent(&view, &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent drop(pos, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        drop.setAccepted(false);
        QApplication::sendEvent(&view, &drop);
        return drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
    }
    QStringList chooseFromMenu(const QString& text)
    {
        return chooseFromContextMenu(&view, view.rect().center(), text);
    }
};

} // namespace

class ColorViewWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void namesItsSignalsAndSlots();
    void aClickSelects();
    void theSpaceBarSelects();
    void itsMenuAddsAndResets();
    void aDoubleClickCopiesAComparisonToTheMainColor();
    void aDropGivesAComparisonItsColor_data();
    void aDropGivesAComparisonItsColor();
    void theSelectedSwatchOpensThePageOfADroppedColor_data();
    void theSelectedSwatchOpensThePageOfADroppedColor();
    void aDropOnTheMainSwatchSelectsItFirst();
    void foreignDropsDoNothing_data();
    void foreignDropsDoNothing();
    void aDragIsNoClickAndCarriesTheColor();
    void copyAndPasteGoThroughTheClipboard();
    void paintsTheColorOverTheCheckeredGround();
    void marksTheSelectedSwatch();
    void focusIsVisible();
    void tellsItsColor();
};

void ColorViewWidgetTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
}

void ColorViewWidgetTest::namesItsSignalsAndSlots()
{
    const QMetaObject& meta = ColorViewWidget::staticMetaObject;
    const QList<QByteArray> names = QByteArray(kSignals).split(' ');
    for (const QByteArray& name : names) {
        QVERIFY2(meta.indexOfSignal(name.constData()) >= 0, name.constData());
    }
    const QList<QByteArray> slotNames = QByteArray(kSlots).split(' ');
    for (const QByteArray& name : slotNames) {
        QVERIFY2(meta.indexOfSlot(name.constData()) >= 0, name.constData());
    }
}

void ColorViewWidgetTest::aClickSelects()
{
    Bench bench(ColorViewWidget::Role::Comparison);
    QTest::mouseClick(&bench.view, Qt::LeftButton);
    QCOMPARE(bench.selected.count(), 1);
    QTest::mouseClick(&bench.view, Qt::RightButton);
    QCOMPARE(bench.selected.count(), 1);
    QTest::mousePress(&bench.view, Qt::LeftButton);
    QTest::mouseRelease(&bench.view, Qt::LeftButton, Qt::NoModifier, QPoint(-5, -5));
    QCOMPARE(bench.selected.count(), 1); // let go beside it
    QCOMPARE(bench.changed.count(), 0);
}

void ColorViewWidgetTest::theSpaceBarSelects()
{
    Bench bench(ColorViewWidget::Role::Main);
    QVERIFY((bench.view.focusPolicy() & Qt::TabFocus) != 0);
    QTest::keyClick(&bench.view, Qt::Key_Space);
    QCOMPARE(bench.selected.count(), 1);
}

void ColorViewWidgetTest::itsMenuAddsAndResets()
{
    Bench bench(ColorViewWidget::Role::Comparison);
    bench.view.setResetColor(VelaColor(Qt::green));
    bench.view.setColor(VelaColor(Qt::red), QStringLiteral("7"));
    QCOMPARE(bench.chooseFromMenu(QString()),
             QStringList({QStringLiteral("Add to Project Swatches"), QStringLiteral("Reset")}));
    QCOMPARE(bench.added.count(), 0);

    bench.chooseFromMenu(QStringLiteral("Add to Project Swatches"));
    QCOMPARE(bench.added.count(), 1);
    QCOMPARE(bench.added.at(0).at(0).value<VelaColor>(), VelaColor(Qt::red));

    bench.chooseFromMenu(QStringLiteral("Reset"));
    QCOMPARE(bench.view.color(), VelaColor(Qt::green));
    QCOMPARE(bench.view.uid(), QString());
    QCOMPARE(bench.changed.count(), 1);
    QCOMPARE(bench.changed.at(0).at(0).value<VelaColor>(), VelaColor(Qt::green));
}

void ColorViewWidgetTest::aDoubleClickCopiesAComparisonToTheMainColor()
{
    Bench bench(ColorViewWidget::Role::Comparison);
    bench.view.setColor(VelaColor(Qt::cyan), QStringLiteral("12"));
    QTest::mouseClick(&bench.view, Qt::LeftButton);
    QTest::mouseDClick(&bench.view, Qt::LeftButton);
    QCOMPARE(bench.copied.count(), 1);
    QCOMPARE(bench.copied.at(0).at(0).value<VelaColor>(), VelaColor(Qt::cyan));
    QCOMPARE(bench.copied.at(0).at(1).toString(), QStringLiteral("12"));

    Bench main(ColorViewWidget::Role::Main);
    QTest::mouseDClick(&main.view, Qt::LeftButton);
    QCOMPARE(main.copied.count(), 0);
}

void ColorViewWidgetTest::aDropGivesAComparisonItsColor_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<VelaColor>("color");
    const VelaColor channels = VelaColor::fromNchannelF({1.0, 0.2, 0.4, 0.6}, 1, 3, true);
    QTest::newRow("today's format") << QStringLiteral("data/x-velacolor") << white4000();
    QTest::newRow("the older product's") << QStringLiteral("x-sorrel3/color") << white4000();
    QTest::newRow("channels") << QStringLiteral("x-sorrel3/color") << channels;
}

void ColorViewWidgetTest::aDropGivesAComparisonItsColor()
{
    QFETCH(const QString, format);
    QFETCH(const VelaColor, color);
    Bench bench(ColorViewWidget::Role::Comparison);
    QMimeData data;
    data.setData(format, color.toString().toLatin1());
    QVERIFY(bench.drop(&data));
    QCOMPARE(bench.view.color().toString(), color.toString());
    QCOMPARE(bench.changed.count(), 1);
    QCOMPARE(bench.changed.at(0).at(0).value<VelaColor>().toString(), color.toString());
    QCOMPARE(bench.selected.count(), 0); // the pages stay with the swatch they edit
    QCOMPARE(bench.rgb.count() + bench.white.count(), 0);
}

void ColorViewWidgetTest::theSelectedSwatchOpensThePageOfADroppedColor_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<bool>("white");
    QTest::newRow("rgb") << VelaColor(Qt::red) << false;
    QTest::newRow("hsv") << VelaColor::fromHsv(10, 20, 30) << false;
    QTest::newRow("white") << white4000() << true;
    QTest::newRow("channels") << VelaColor::fromNchannelF({1, 0.2, 0.4, 0.6}, 1, 3, true) << false;
}

void ColorViewWidgetTest::theSelectedSwatchOpensThePageOfADroppedColor()
{
    QFETCH(const VelaColor, color);
    QFETCH(const bool, white);
    Bench bench(ColorViewWidget::Role::Comparison);
    bench.view.setSelected(true);
    QMimeData data;
    ColorMime::writeColor(&data, color, QString(), QString(), QString());
    QVERIFY(bench.drop(&data));
    QCOMPARE(bench.changed.count(), 1);
    QCOMPARE(bench.white.count(), white ? 1 : 0);
    QCOMPARE(bench.rgb.count(), white ? 0 : 1);
}

void ColorViewWidgetTest::aDropOnTheMainSwatchSelectsItFirst()
{
    Bench bench(ColorViewWidget::Role::Main);
    connect(&bench.view, &ColorViewWidget::selected, &bench.view,
            [&bench] { bench.view.setSelected(true); });
    QMimeData data;
    ColorMime::writeColor(&data, VelaColor(Qt::blue), QString(), QString(), QString());
    QVERIFY(bench.drop(&data));
    QCOMPARE(bench.selected.count(), 1);
    QCOMPARE(bench.rgb.count(), 1);
    QCOMPARE(bench.rgb.at(0).at(0).value<VelaColor>().name(), QStringLiteral("#0000ff"));
}

void ColorViewWidgetTest::foreignDropsDoNothing_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("text") << QStringLiteral("text/plain") << QByteArray("#ff0000");
    QTest::newRow("empty") << QStringLiteral("x-sorrel3/color") << QByteArray();
    QTest::newRow("no color") << QStringLiteral("x-sorrel3/color") << QByteArray("aRgb;1;0");
    QTest::newRow("zeros") << QStringLiteral("data/x-velacolor") << QByteArray(4096, '\0');
    QTest::newRow("only a name") << QStringLiteral("data/x-velacolor-name") << QByteArray("Red");
}

void ColorViewWidgetTest::foreignDropsDoNothing()
{
    QFETCH(const QString, format);
    QFETCH(const QByteArray, bytes);
    Bench bench(ColorViewWidget::Role::Main);
    bench.view.setColor(VelaColor(Qt::red), QStringLiteral("3"));
    QMimeData data;
    data.setData(format, bytes);
    QVERIFY(!bench.drop(&data));
    QDropEvent drop(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&bench.view, &drop); // even without being asked first
    QCOMPARE(bench.view.color(), VelaColor(Qt::red));
    QCOMPARE(bench.view.uid(), QStringLiteral("3"));
    QCOMPARE(bench.changed.count() + bench.rgb.count() + bench.selected.count(), 0);
}

void ColorViewWidgetTest::aDragIsNoClickAndCarriesTheColor()
{
    Bench bench(ColorViewWidget::Role::Comparison);
    bench.view.setColor(white4000(), QString());
    const QDrag* const drag = startDrag(&bench.view, &bench.view, QPoint(60, 50));
    QVERIFY(drag != nullptr);
    const QByteArray text = white4000().toString().toLatin1();
    QCOMPARE(drag->mimeData()->data(QStringLiteral("data/x-velacolor")), text);
    QCOMPARE(drag->mimeData()->data(QStringLiteral("x-sorrel3/color")), text);
    const QImage carried = drag->pixmap().toImage();
    QCOMPARE(carried.pixelColor(carried.rect().center()).rgba(),
             toDisplayQColor(white4000()).rgba());
    QTest::mouseRelease(&bench.view, Qt::LeftButton);
    QCOMPARE(bench.selected.count(), 0);
}

void ColorViewWidgetTest::copyAndPasteGoThroughTheClipboard()
{
    Bench from(ColorViewWidget::Role::Comparison);
    from.view.setColor(white4000(), QString());
    QTest::keySequence(&from.view, QKeySequence::Copy);
    const QMimeData* const data = QApplication::clipboard()->mimeData();
    QCOMPARE(data->data(QStringLiteral("x-sorrel3/color")), white4000().toString().toLatin1());
    QCOMPARE(data->data(QStringLiteral("data/x-velacolor")), white4000().toString().toLatin1());

    Bench to(ColorViewWidget::Role::Comparison);
    QTest::keySequence(&to.view, QKeySequence::Paste);
    QCOMPARE(to.view.color().toString(), white4000().toString());
    QCOMPARE(to.changed.count(), 1);

    QApplication::clipboard()->setText(QStringLiteral("red"));
    QTest::keySequence(&to.view, QKeySequence::Paste);
    QCOMPARE(to.changed.count(), 1);
}

void ColorViewWidgetTest::paintsTheColorOverTheCheckeredGround()
{
    Bench bench(ColorViewWidget::Role::Main);
    bench.view.setColor(VelaColor(QColor(200, 30, 60)), QString());
    QImage image = bench.view.grab().toImage();
    QCOMPARE(image.pixelColor(60, 50), QColor(200, 30, 60));
    QCOMPARE(image.pixelColor(61 + 12, 50), QColor(200, 30, 60));

    bench.view.setColor(VelaColor(QColor(0, 0, 0, 0)), QString());
    image = bench.view.grab().toImage();
    const QColor ground = image.pixelColor(40, 40);
    const QColor beside = image.pixelColor(52, 40); // half a tile of the picture away
    QVERIFY(ground != beside);
    for (const QColor& gray : {ground, beside}) {
        QVERIFY(gray == QColor(0xD9, 0xD9, 0xD9) || gray == QColor(0xA6, 0xA6, 0xA6));
    }
}

void ColorViewWidgetTest::marksTheSelectedSwatch()
{
    Bench bench(ColorViewWidget::Role::Comparison);
    bench.view.setColor(VelaColor(QColor(200, 30, 60)), QString());
    const auto ring = [&bench] { // across the left edge: the double ring is black, then white
        const QImage image = bench.view.grab().toImage();
        bool black = false;
        bool white = false;
        for (int x = 0; x < 10; ++x) {
            black = black || image.pixelColor(x, 50) == QColor(Qt::black);
            white = white || (black && image.pixelColor(x, 50) == QColor(Qt::white));
        }
        return white;
    };
    QVERIFY(!ring());
    bench.view.setSelected(true);
    QVERIFY(ring());
    QVERIFY(bench.view.isSelected());
}

void ColorViewWidgetTest::focusIsVisible()
{
    Bench bench(ColorViewWidget::Role::Comparison);
    bench.view.setSelected(true);
    const QImage before = bench.view.grab().toImage();
    QApplication::setActiveWindow(&bench.view);
    bench.view.setFocus();
    QVERIFY(bench.view.hasFocus());
    const QImage focused = bench.view.grab().toImage();
    QVERIFY(focused.pixelColor(1, 50) != before.pixelColor(1, 50));
    QCOMPARE(focused.pixelColor(60, 50), before.pixelColor(60, 50)); // the color is as it was
}

void ColorViewWidgetTest::tellsItsColor()
{
    Bench bench(ColorViewWidget::Role::Comparison);
    QVERIFY(bench.view.toolTip().startsWith(QStringLiteral("#ffffff\n")));
    bench.view.setColor(VelaColor(QColor(1, 2, 3)), QString());
    QVERIFY(bench.view.toolTip().startsWith(QStringLiteral("#010203\n")));
    QVERIFY(bench.view.toolTip().contains(QStringLiteral("double-click")));
    QCOMPARE(bench.view.accessibleDescription(), QStringLiteral("#010203"));
    const Bench mainSwatch(ColorViewWidget::Role::Main);
    QVERIFY(!mainSwatch.view.toolTip().contains(QStringLiteral("double-click")));
}

QTEST_MAIN(ColorViewWidgetTest)
#include "ColorViewWidgetTest.moc"
