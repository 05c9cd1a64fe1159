#include "picker/VelaColorPickerWidget.h"

#include "color/ColorMime.h"
#include "picker/ColorTrack.h"
#include "picker/ColorViewWidget.h"
#include "picker/IntensitySliderWidget.h"
#include "picker/NChannelPickerWidget.h"
#include "picker/OpacitySliderWidget.h"
#include "picker/RgbPickerWidget.h"
#include "picker/WhitePickerWidget.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QShortcut>
#include <QSpinBox>
#include <QtTest>

#include <limits>

using namespace VelaColorPickerLib;

namespace {

const QString kUid = QStringLiteral("uid-7");

VelaColor orange()
{
    return VelaColor(QColor(255, 128, 0));
}

VelaColor white4000()
{
    return VelaColor(0.38177, 0.37959);
}

/// Of three channels, red full and blue half.
VelaColor channels()
{
    VelaColor color;
    color.setNchannelF({1.0, 1.0, 0.0, 0.5}, 1, 0, false);
    return color;
}

/// The widget on the screen, with a spy on each of its signals.
struct Bench
{
    VelaColorPickerWidget widget;
    QSignalSpy mainChanged{&widget, &VelaColorPickerWidget::mainColorChanged};
    QSignalSpy comparisonChanged{&widget, &VelaColorPickerWidget::comparisonColorChanged};
    QSignalSpy added{&widget, &VelaColorPickerWidget::colorAddedToFavorites};
    QSignalSpy asked{&widget, &VelaColorPickerWidget::pickerSetOnSetColor};
    QSignalSpy cleared{&widget, &VelaColorPickerWidget::clearPreviousSelection};
    IntensitySliderWidget* intensity = widget.findChild<IntensitySliderWidget*>();
    OpacitySliderWidget* opacity = widget.findChild<OpacitySliderWidget*>();
    RgbPickerWidget* rgb = widget.findChild<RgbPickerWidget*>();
    WhitePickerWidget* white = widget.findChild<WhitePickerWidget*>();
    NChannelPickerWidget* channel = widget.findChild<NChannelPickerWidget*>();

    Bench()
    {
        widget.resize(800, 600);
        widget.show();
        QApplication::setActiveWindow(&widget);
    }
    ColorViewWidget* swatch(int number) const
    {
        return widget.findChild<ColorViewWidget*>(
            number == 0 ? QStringLiteral("mainSwatch")
                        : QStringLiteral("comparisonSwatch%1").arg(number));
    }
    void click(int number) const { QTest::mouseClick(swatch(number), Qt::LeftButton); }
    void forget()
    {
        for (QSignalSpy* const spy : {&mainChanged, &comparisonChanged, &added, &asked, &cleared}) {
            spy->clear();
        }
    }
    int selected() const
    {
        int number = -1;
        for (int i = 0; i < 4; ++i) {
            if (swatch(i)->isSelected()) {
                number = number == -1 ? i : -2;
            }
        }
        return number;
    }
};

QString name(const QSignalSpy& spy)
{
    return spy.isEmpty() ? QString() : spy.last().at(0).value<VelaColor>().name();
}

} // namespace

class VelaColorPickerWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void namesItsSignalsAndSlots();
    void aSettingShowsOnEveryPageAndSwatch();
    void everySpaceHasItsPage_data();
    void everySpaceHasItsPage();
    void aLocalChangeKeepsThePage();
    void theSelectedSwatchTakesTheColor();
    void aClickSelectsASwatch();
    void shortcutsSelectTheComparisonSwatches_data();
    void shortcutsSelectTheComparisonSwatches();
    void selectingASwatchShowsItsColorAndEmitsNoChange();
    void pagesChangeTheSelectedSwatch();
    void aComparisonChangeIsNoMainChange();
    void aDoubleClickCopiesToTheMainSwatch();
    void aDropOnAComparisonSwatchThatIsNotSelected();
    void aDropOnTheSelectedComparisonSwatchShowsItsPage();
    void opacitySetsTheAlpha();
    void intensityScalesTheColor_data();
    void intensityScalesTheColor();
    void intensityComesBackThroughBlack();
    void theWhitePagesIntensityReachesTheSlider();
    void favoritesPassThrough();
    void resetComesBackToTheColorThatWasHandedOver();
    void everyControlHasANameAndAPlaceInTheTabOrder();
    void noColorOverthrowsIt_data();
    void noColorOverthrowsIt();
};

void VelaColorPickerWidgetTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
}

void VelaColorPickerWidgetTest::namesItsSignalsAndSlots()
{
    const QMetaObject& meta = VelaColorPickerWidget::staticMetaObject;
    for (const char* const name :
         {"mainColorChanged(VelaColor,QString)", "comparisonColorChanged(VelaColor,QString)",
          "colorAddedToFavorites(VelaColor)", "pickerSetOnSetColor(int,bool)",
          "clearPreviousSelection()"}) {
        QVERIFY2(meta.indexOfSignal(name) >= 0, name);
    }
    for (const char* const name :
         {"setColor(VelaColor,QString,bool)", "setColor(VelaColor,QString)",
          "onOpacityChanged(int)", "onIntensityChanged(int)", "onMainSwatchSelected()",
          "onComparisonSwatch1Selected()", "onComparisonSwatch2Selected()",
          "onComparisonSwatch3Selected()", "onCopyColorToMainSwatch(VelaColor,QString)",
          "onComparisonSwatch1Changed(VelaColor,QString)",
          "onComparisonSwatch2Changed(VelaColor,QString)",
          "onComparisonSwatch3Changed(VelaColor,QString)", "onAddColorToFavorites(VelaColor)",
          "onRgbPickerColorChanged(VelaColor,QString)",
          "onWhitePickerColorChanged(VelaColor,QString)", "setIntensity(double)",
          "onNChannelPickerColorChanged(VelaColor&,QString&)"}) {
        QVERIFY2(meta.indexOfSlot(name) >= 0, name);
    }
}

void VelaColorPickerWidgetTest::aSettingShowsOnEveryPageAndSwatch()
{
    Bench bench;
    bench.widget.setColor(orange(), kUid);
    QCOMPARE(bench.swatch(0)->color().name(), orange().name());
    QCOMPARE(bench.swatch(0)->uid(), kUid);
    QCOMPARE(bench.widget.mainColor().toString(), orange().toString());
    QCOMPARE(bench.rgb->color().name(), orange().name());
    QCOMPARE(bench.intensity->percent(), 100);
    QCOMPARE(bench.opacity->percent(), 100);
    QCOMPARE(bench.swatch(1)->color().name(), QStringLiteral("#ffffff"));
    QCOMPARE(bench.mainChanged.count(), 1);
    QCOMPARE(bench.mainChanged.at(0).at(1).toString(), kUid);
    QCOMPARE(bench.comparisonChanged.count(), 0);
}

void VelaColorPickerWidgetTest::everySpaceHasItsPage_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<int>("page");
    VelaColor hsv;
    hsv.setHsvF(0.3, 0.5, 0.8);
    QTest::newRow("RGB") << orange() << 0;
    QTest::newRow("HSV") << hsv << 0;
    QTest::newRow("invalid") << VelaColor() << 0;
    QTest::newRow("Yxy") << white4000() << 1;
    QTest::newRow("channels") << channels() << 2;
}

void VelaColorPickerWidgetTest::everySpaceHasItsPage()
{
    QFETCH(VelaColor, color);
    QFETCH(int, page);
    Bench bench;
    bench.widget.setColor(color, QString());
    QCOMPARE(bench.asked.count(), 1);
    QCOMPARE(bench.asked.at(0).at(0).toInt(), page);
    QCOMPARE(bench.asked.at(0).at(1).toBool(), page == 2);
    bench.widget.showPage(page);
    QCOMPARE(static_cast<int>(bench.widget.currentPage()), page);
    bench.widget.showPage(3);
    bench.widget.showPage(-1);
    QCOMPARE(static_cast<int>(bench.widget.currentPage()), page);
}

void VelaColorPickerWidgetTest::aLocalChangeKeepsThePage()
{
    Bench bench;
    bench.widget.setColor(white4000(), QString(), true);
    QCOMPARE(bench.asked.count(), 0);
    QCOMPARE(bench.mainChanged.count(), 1);
    bench.widget.setColor(white4000(), QString(), false);
    QCOMPARE(bench.asked.count(), 1);
}

void VelaColorPickerWidgetTest::theSelectedSwatchTakesTheColor()
{
    Bench bench;
    bench.click(2);
    bench.forget();
    bench.widget.setColor(orange(), kUid);
    QCOMPARE(bench.swatch(2)->color().name(), orange().name());
    QCOMPARE(bench.widget.mainColor().name(), QStringLiteral("#ffffff"));
    QCOMPARE(name(bench.comparisonChanged), orange().name());
    QCOMPARE(bench.comparisonChanged.last().at(1).toString(), kUid);
    QCOMPARE(bench.mainChanged.count(), 0);
    bench.widget.setColorAndSelectMainPreview(VelaColor(Qt::blue), kUid);
    QCOMPARE(bench.selected(), 0);
    QCOMPARE(bench.widget.mainColor().name(), QStringLiteral("#0000ff"));
    QCOMPARE(bench.swatch(2)->color().name(), orange().name());
}

void VelaColorPickerWidgetTest::aClickSelectsASwatch()
{
    Bench bench;
    QCOMPARE(bench.selected(), 0);
    for (const int number : {1, 3, 2, 0}) {
        bench.click(number);
        QCOMPARE(bench.selected(), number);
    }
}

void VelaColorPickerWidgetTest::shortcutsSelectTheComparisonSwatches_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("swatch");
    QTest::newRow("Ctrl+1") << static_cast<int>(Qt::Key_1) << 1;
    QTest::newRow("Ctrl+2") << static_cast<int>(Qt::Key_2) << 2;
    QTest::newRow("Ctrl+3") << static_cast<int>(Qt::Key_3) << 3;
}

void VelaColorPickerWidgetTest::shortcutsSelectTheComparisonSwatches()
{
    QFETCH(int, key);
    QFETCH(int, swatch);
    Bench bench;
    QTest::keyClick(&bench.widget, static_cast<Qt::Key>(key), Qt::ControlModifier);
    QCOMPARE(bench.selected(), swatch);
}

void VelaColorPickerWidgetTest::selectingASwatchShowsItsColorAndEmitsNoChange()
{
    Bench bench;
    bench.widget.setColor(orange(), QString());
    bench.swatch(1)->setColor(white4000(), QString());
    bench.forget();
    bench.click(1);
    QCOMPARE(bench.mainChanged.count(), 0);
    QCOMPARE(bench.comparisonChanged.count(), 0);
    QCOMPARE(bench.cleared.count(), 1);
    QCOMPARE(bench.asked.count(), 1);
    QCOMPARE(bench.asked.at(0).at(0).toInt(), 1);
    QCOMPARE(bench.white->color().toString(), white4000().toString());
    bench.click(1); // again: nothing new
    QCOMPARE(bench.cleared.count(), 1);
}

void VelaColorPickerWidgetTest::pagesChangeTheSelectedSwatch()
{
    Bench bench;
    emit bench.rgb->colorChanged(orange(), kUid);
    QCOMPARE(name(bench.mainChanged), orange().name());
    QCOMPARE(bench.widget.mainColor().name(), orange().name());
    QCOMPARE(bench.cleared.count(), 1);
    QCOMPARE(bench.asked.count(), 0); // the page on show stays
    emit bench.white->colorChanged(white4000(), QString());
    QCOMPARE(bench.widget.mainColor().toString(), white4000().toString());
    VelaColor color = channels();
    QString uid;
    emit bench.channel->colorChanged(color, uid);
    QCOMPARE(bench.widget.mainColor().toString(), channels().toString());
    QCOMPARE(bench.mainChanged.count(), 3);
    QCOMPARE(bench.asked.count(), 0);
    // The other pages follow.
    QCOMPARE(bench.rgb->color().toQColor(true), channels().toQColor(true));
}

void VelaColorPickerWidgetTest::aComparisonChangeIsNoMainChange()
{
    Bench bench;
    bench.click(3);
    bench.forget();
    emit bench.rgb->colorChanged(orange(), kUid);
    QCOMPARE(bench.mainChanged.count(), 0);
    QCOMPARE(name(bench.comparisonChanged), orange().name());
    QCOMPARE(bench.swatch(3)->color().name(), orange().name());
    QCOMPARE(bench.widget.mainColor().name(), QStringLiteral("#ffffff"));
}

void VelaColorPickerWidgetTest::aDoubleClickCopiesToTheMainSwatch()
{
    Bench bench;
    bench.swatch(2)->setColor(orange(), kUid);
    QTest::mouseDClick(bench.swatch(2), Qt::LeftButton);
    QCOMPARE(bench.selected(), 0);
    QCOMPARE(bench.widget.mainColor().name(), orange().name());
    QCOMPARE(name(bench.mainChanged), orange().name());
    QCOMPARE(bench.mainChanged.last().at(1).toString(), kUid);
    // As by hand: the first of the two clicks has selected it.
    bench.swatch(3)->setColor(VelaColor(Qt::blue), kUid);
    bench.click(3);
    QCOMPARE(bench.selected(), 3);
    QTest::mouseDClick(bench.swatch(3), Qt::LeftButton);
    QCOMPARE(bench.selected(), 0);
    QCOMPARE(bench.widget.mainColor().name(), QStringLiteral("#0000ff"));
    QCOMPARE(name(bench.mainChanged), QStringLiteral("#0000ff"));
}

void VelaColorPickerWidgetTest::aDropOnAComparisonSwatchThatIsNotSelected()
{
    Bench bench;
    auto* const data = new QMimeData;
    ColorMime::writeColor(data, white4000(), QString(), QString(), QString());
    QApplication::clipboard()->setMimeData(data);
    QTest::keySequence(bench.swatch(1), QKeySequence::Paste);
    QCOMPARE(bench.swatch(1)->color().toString(), white4000().toString());
    QCOMPARE(bench.selected(), 0);
    QCOMPARE(bench.comparisonChanged.count(), 1);
    QCOMPARE(bench.mainChanged.count(), 0);
    QCOMPARE(bench.asked.count(), 0);
    QCOMPARE(bench.rgb->color().name(), QStringLiteral("#ffffff"));
}

void VelaColorPickerWidgetTest::aDropOnTheSelectedComparisonSwatchShowsItsPage()
{
    Bench bench;
    bench.click(1);
    bench.forget();
    auto* const data = new QMimeData;
    ColorMime::writeColor(data, white4000(), QString(), QString(), QString());
    QApplication::clipboard()->setMimeData(data);
    QTest::keySequence(bench.swatch(1), QKeySequence::Paste);
    QCOMPARE(bench.asked.count(), 1);
    QCOMPARE(bench.asked.at(0).at(0).toInt(), 1);
    QCOMPARE(bench.white->color().toString(), white4000().toString());
    QCOMPARE(bench.mainChanged.count(), 0);
}

void VelaColorPickerWidgetTest::opacitySetsTheAlpha()
{
    Bench bench;
    bench.widget.setColor(orange(), kUid);
    bench.forget();
    bench.opacity->findChild<QSpinBox*>()->setValue(40);
    QCOMPARE(bench.widget.mainColor().alphaF(), 0.4);
    QCOMPARE(bench.widget.mainColor().toQColor(true).rgb(), orange().toQColor(true).rgb());
    QCOMPARE(bench.mainChanged.count(), 1);
    QCOMPARE(bench.mainChanged.at(0).at(1).toString(), QString()); // no longer that swatch
    QCOMPARE(bench.cleared.count(), 1);
    QTest::keyClick(bench.opacity->findChild<ColorTrack*>(), Qt::Key_Home);
    QCOMPARE(bench.widget.mainColor().alphaF(), 0.0);
    bench.widget.onOpacityChanged(150);
    QCOMPARE(bench.widget.mainColor().alphaF(), 1.0);
    bench.widget.onOpacityChanged(-1);
    QCOMPARE(bench.widget.mainColor().alphaF(), 0.0);
    QCOMPARE(bench.widget.mainColor().toQColor(true).rgb(), orange().toQColor(true).rgb());
    // What the intensity goes by keeps it.
    bench.opacity->findChild<QSpinBox*>()->setValue(40);
    bench.intensity->findChild<QSpinBox*>()->setValue(50);
    QCOMPARE(bench.widget.mainColor().alphaF(), 0.4);
    QCOMPARE(bench.opacity->percent(), 40);
}

void VelaColorPickerWidgetTest::intensityScalesTheColor_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<int>("percent");
    QTest::newRow("RGB") << orange() << 50;
    QTest::newRow("a white") << white4000() << 25;
    QTest::newRow("channels") << channels() << 20;
}

void VelaColorPickerWidgetTest::intensityScalesTheColor()
{
    QFETCH(VelaColor, color);
    QFETCH(int, percent);
    Bench bench;
    bench.widget.setColor(color, QString());
    bench.forget();
    bench.intensity->findChild<QSpinBox*>()->setValue(percent);
    const VelaColor scaled = bench.widget.mainColor();
    QCOMPARE(scaled.spec(), color.spec());
    const double level = percent / 100.0;
    if (color.spec() == VelaColor::Yxy) {
        QVERIFY(qAbs(scaled.capY() - level) < 1e-9);
        QCOMPARE(scaled.smallX(), color.smallX());
        QCOMPARE(scaled.smallY(), color.smallY());
    } else if (color.spec() == VelaColor::Nchannel) {
        QVERIFY(qAbs(scaled.channel32(0) / 4294967295.0 - level) < 1e-9);
        QCOMPARE(scaled.channel32(1), 0U);
        QVERIFY(qAbs(scaled.channel32(2) / 4294967295.0 - level / 2.0) < 1e-9);
    } else {
        QCOMPARE(scaled.toQColor(true), QColor(128, 64, 0));
    }
    QCOMPARE(bench.mainChanged.count(), 1);
    QCOMPARE(bench.cleared.count(), 1);
}

void VelaColorPickerWidgetTest::intensityComesBackThroughBlack()
{
    Bench bench;
    bench.widget.setColor(orange(), QString());
    auto* const box = bench.intensity->findChild<QSpinBox*>();
    for (const int percent : {70, 30, 0, 1}) {
        box->setValue(percent);
    }
    box->setValue(100);
    QCOMPARE(bench.widget.mainColor().toString(), orange().toString());
}

void VelaColorPickerWidgetTest::theWhitePagesIntensityReachesTheSlider()
{
    Bench bench;
    bench.widget.setColor(white4000(), QString());
    bench.widget.showPage(1);
    bench.forget();
    emit bench.white->intensityChanged(0.3);
    QCOMPARE(bench.intensity->percent(), 30);
    QVERIFY(qAbs(bench.widget.mainColor().capY() - 0.3) < 1e-9);
    QCOMPARE(bench.mainChanged.count(), 1);
    emit bench.white->intensityChanged(0.3); // what it already is
    QCOMPARE(bench.mainChanged.count(), 1);
}

void VelaColorPickerWidgetTest::favoritesPassThrough()
{
    Bench bench;
    bench.swatch(2)->setColor(orange(), QString());
    bench.swatch(2)->onAddToFavorites();
    bench.swatch(0)->onAddToFavorites();
    QCOMPARE(bench.added.count(), 2);
    QCOMPARE(bench.added.at(0).at(0).value<VelaColor>().name(), orange().name());
    QCOMPARE(bench.added.at(1).at(0).value<VelaColor>().name(), QStringLiteral("#ffffff"));
}

void VelaColorPickerWidgetTest::resetComesBackToTheColorThatWasHandedOver()
{
    Bench bench;
    bench.widget.setColorAndSelectMainPreview(orange(), QString());
    emit bench.rgb->colorChanged(VelaColor(Qt::blue), QString());
    bench.forget();
    bench.swatch(0)->onReset();
    QCOMPARE(bench.widget.mainColor().name(), orange().name());
    QCOMPARE(name(bench.mainChanged), orange().name());
}

void VelaColorPickerWidgetTest::everyControlHasANameAndAPlaceInTheTabOrder()
{
    const Bench bench;
    QStringList labels;
    for (const QLabel* const label : bench.widget.findChildren<QLabel*>()) {
        labels.append(label->text().remove(QLatin1Char('&')));
    }
    QVERIFY(labels.contains(QStringLiteral("Intensity:")));
    QVERIFY(labels.contains(QStringLiteral("Opacity:")));
    for (int i = 0; i < 4; ++i) {
        QVERIFY(!bench.swatch(i)->accessibleName().isEmpty());
        QVERIFY((bench.swatch(i)->focusPolicy() & Qt::TabFocus) != 0);
        QVERIFY(bench.swatch(i)->height() >= 5 * bench.widget.fontMetrics().height());
    }
    for (const QWidget* const control : QList<QWidget*>{bench.intensity->findChild<ColorTrack*>(),
                                                        bench.opacity->findChild<ColorTrack*>()}) {
        QVERIFY(!control->accessibleName().isEmpty());
        QVERIFY(!control->toolTip().isEmpty());
        QVERIFY((control->focusPolicy() & Qt::TabFocus) != 0);
    }
}

void VelaColorPickerWidgetTest::noColorOverthrowsIt_data()
{
    QTest::addColumn<VelaColor>("color");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const auto yxy = [](double capY, double x, double y) {
        VelaColor color(x, y);
        color.setCapY(capY);
        return color;
    };
    QTest::newRow("invalid") << VelaColor();
    QTest::newRow("Y not a number") << yxy(nan, 0.3, 0.3);
    QTest::newRow("x not a number") << yxy(1.0, nan, 0.3);
    QTest::newRow("y not a number") << yxy(1.0, 0.3, nan);
    QTest::newRow("infinite Y") << yxy(infinity, 0.3, 0.3);
    QTest::newRow("infinite x") << yxy(1.0, infinity, 0.3);
    QTest::newRow("y of 0") << yxy(1.0, 0.3, 0.0);
    QTest::newRow("negative") << yxy(-4.0, -0.3, -0.3);
    QTest::newRow("huge") << yxy(1e308, 1e308, 1e-308);
    QTest::newRow("no chromaticity") << yxy(0.0, 0.0, 0.0);
    QTest::newRow("layout unknown")
        << VelaColor::fromNchannelF({1.0, 0.1, 0.2}, 4000000000U, 4000000000U, true);
    QTest::newRow("no channels") << VelaColor::fromNchannelF({1.0}, 2, 24, false);
    QTest::newRow("all channels") << VelaColor::fromNchannelF({1.0, 1, 1, 1, 1, 1, 1, 1, 1}, 2, 24,
                                                              false);
    QTest::newRow("too many channels")
        << VelaColor::fromNchannelF({1.0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}, 2, 24, false);
}

void VelaColorPickerWidgetTest::noColorOverthrowsIt()
{
    QFETCH(VelaColor, color);
    Bench bench;
    bench.widget.setColor(orange(), kUid);
    for (int page = 0; page < 3; ++page) {
        bench.widget.showPage(page);
        bench.widget.setColor(color, kUid);
        QCOMPARE(bench.swatch(0)->uid(), kUid);
        QVERIFY(!bench.widget.grab().isNull());
        for (ColorTrack* const track : bench.widget.findChildren<ColorTrack*>()) {
            track->setValue(track->minimum());
            track->setValue(track->maximum());
        }
        QVERIFY(!bench.widget.grab().isNull());
    }
    bench.widget.setColor(orange(), QString());
    QCOMPARE(bench.widget.mainColor().name(), orange().name());
    QCOMPARE(bench.rgb->color().name(), orange().name());
    QCOMPARE(bench.intensity->percent(), 100);
    QCOMPARE(bench.opacity->percent(), 100);
}

QTEST_MAIN(VelaColorPickerWidgetTest)
#include "VelaColorPickerWidgetTest.moc"
