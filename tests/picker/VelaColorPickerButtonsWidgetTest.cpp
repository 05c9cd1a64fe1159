#include "picker/VelaColorPickerButtonsWidget.h"

#include "picker/NChannelPickerWidget.h"
#include "picker/PickerSettings.h"
#include "picker/VelaColorPicker.h"
#include "resources/Resources.h"

#include <QPushButton>
#include <QtTest>

using namespace VelaColorPickerLib;

namespace {

const char* const kRgb = "Display RGB Range";
const char* const kWhite = "Display White Range";
const char* const kChannels = "Display Channel Control";

struct Bench
{
    VelaColorPicker picker;
    VelaColorPickerButtonsWidget buttons;
    QSignalSpy cleared{&buttons, &VelaColorPickerButtonsWidget::clearPreviousSelection};
    NChannelPickerWidget* channelPage = picker.findChild<NChannelPickerWidget*>();

    Bench()
    {
        buttons.setPicker(&picker);
        picker.show();
        buttons.show();
    }
    QPushButton* button(const char* text) const
    {
        for (QPushButton* const candidate : buttons.findChildren<QPushButton*>()) {
            if (candidate->text() == QLatin1String(text)) {
                return candidate;
            }
        }
        return nullptr;
    }
    void press(const char* text) const { QTest::mouseClick(button(text), Qt::LeftButton); }
    const char* down() const
    {
        const char* found = "none";
        for (const char* const text : {kRgb, kWhite, kChannels}) {
            if (button(text)->isChecked()) {
                found = qstrcmp(found, "none") == 0 ? text : "several";
            }
        }
        return found;
    }
};

bool kept(const char* key)
{
    QSettings settings = pickerSettings();
    settings.beginGroup(QStringLiteral("colorPickerButtons"));
    return settings.value(QLatin1String(key)).toBool();
}

} // namespace

class VelaColorPickerButtonsWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void namesItsSlots();
    void aButtonShowsItsPage();
    void aColorFromOutsideShowsItsPage();
    void channelsTakeInputOnTheirPageAlone();
    void indexesOutsideDoNothing();
    void addsTheSelectedColorToTheFavorites();
    void thePageIsKeptWhenItCloses_data();
    void thePageIsKeptWhenItCloses();
    void brokenSettingsShowAPage();
};

void VelaColorPickerButtonsWidgetTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
}

void VelaColorPickerButtonsWidgetTest::init()
{
    pickerSettings().clear();
}

void VelaColorPickerButtonsWidgetTest::namesItsSlots()
{
    const QMetaObject& meta = VelaColorPickerButtonsWidget::staticMetaObject;
    for (const char* const name :
         {"updateColorPickerDisplay()", "updateNChannelWidgetDisplay()",
          "addToFavoritesButtonClicked()", "updatePickerButtons(int,bool)"}) {
        QVERIFY2(meta.indexOfSlot(name) >= 0, name);
    }
    QVERIFY(meta.indexOfSignal("clearPreviousSelection()") >= 0);
}

void VelaColorPickerButtonsWidgetTest::aButtonShowsItsPage()
{
    Bench bench;
    QCOMPARE(bench.down(), kRgb);
    const QList<QPair<const char*, int>> pages = {{kWhite, 1}, {kChannels, 2}, {kRgb, 0}};
    int pressed = 0;
    for (const auto& page : pages) {
        bench.press(page.first);
        QCOMPARE(bench.picker.currentPage(), page.second);
        QCOMPARE(bench.down(), page.first);
        QCOMPARE(bench.cleared.count(), ++pressed);
    }
}

void VelaColorPickerButtonsWidgetTest::aColorFromOutsideShowsItsPage()
{
    Bench bench;
    bench.picker.setColor(VelaColor(0.38177, 0.37959), QString());
    QCOMPARE(bench.picker.currentPage(), 1);
    QCOMPARE(bench.down(), kWhite);
    VelaColor channels;
    channels.setNchannelF({1.0, 1.0, 0.0, 0.5}, 1, 0, false);
    bench.picker.setColor(channels, QString());
    QCOMPARE(bench.picker.currentPage(), 2);
    QCOMPARE(bench.down(), kChannels);
    bench.picker.setColor(VelaColor(Qt::red), QString());
    QCOMPARE(bench.picker.currentPage(), 0);
    QCOMPARE(bench.cleared.count(), 0);
}

void VelaColorPickerButtonsWidgetTest::channelsTakeInputOnTheirPageAlone()
{
    Bench bench;
    QVERIFY(!bench.channelPage->isEnabled());
    bench.press(kChannels);
    QVERIFY(bench.channelPage->isEnabled());
    bench.press(kWhite);
    QVERIFY(!bench.channelPage->isEnabled());
    bench.buttons.updatePickerButtons(2, false);
    QVERIFY(!bench.channelPage->isEnabled());
    bench.buttons.updatePickerButtons(2, true);
    QVERIFY(bench.channelPage->isEnabled());
}

void VelaColorPickerButtonsWidgetTest::indexesOutsideDoNothing()
{
    Bench bench;
    bench.press(kWhite);
    bench.buttons.updatePickerButtons(-1, true);
    bench.buttons.updatePickerButtons(3, true);
    QCOMPARE(bench.picker.currentPage(), 1);
    QCOMPARE(bench.down(), kWhite);
}

void VelaColorPickerButtonsWidgetTest::addsTheSelectedColorToTheFavorites()
{
    Bench bench;
    QSignalSpy added(&bench.picker, &VelaColorPicker::colorAddedToFavorites);
    bench.picker.setColor(VelaColor(QColor(1, 2, 3)), QString());
    bench.press("Add to Project Swatches");
    QCOMPARE(added.count(), 1);
    QCOMPARE(added.at(0).at(0).value<VelaColor>().name(), QStringLiteral("#010203"));
}

void VelaColorPickerButtonsWidgetTest::thePageIsKeptWhenItCloses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("page");
    QTest::newRow("RGB") << QByteArray(kRgb) << 0;
    QTest::newRow("white") << QByteArray(kWhite) << 1;
    QTest::newRow("channels") << QByteArray(kChannels) << 2;
}

void VelaColorPickerButtonsWidgetTest::thePageIsKeptWhenItCloses()
{
    QFETCH(QByteArray, text);
    QFETCH(int, page);
    {
        const Bench bench;
        bench.press(text.constData());
    }
    QCOMPARE(kept("colorPickerRGBPickerDisplayed"), page == 0);
    QCOMPARE(kept("colorPickerWhitePickerDisplayed"), page == 1);
    QCOMPARE(kept("colorPickerNChannelPickerDisplayed"), page == 2);
    const Bench again;
    QCOMPARE(again.picker.currentPage(), page);
    QCOMPARE(QByteArray(again.down()), text);
    QCOMPARE(again.channelPage->isEnabled(), page == 2);
}

void VelaColorPickerButtonsWidgetTest::brokenSettingsShowAPage()
{
    QSettings settings = pickerSettings();
    settings.beginGroup(QStringLiteral("colorPickerButtons"));
    settings.setValue(QStringLiteral("colorPickerRGBPickerDisplayed"), QStringLiteral("maybe"));
    settings.setValue(QStringLiteral("colorPickerWhitePickerDisplayed"), true);
    settings.setValue(QStringLiteral("colorPickerNChannelPickerDisplayed"), true);
    settings.sync();
    const Bench bench;
    QCOMPARE(bench.picker.currentPage(), 0); // the first of those that say so
    QCOMPARE(bench.down(), kRgb);
}

QTEST_MAIN(VelaColorPickerButtonsWidgetTest)
#include "VelaColorPickerButtonsWidgetTest.moc"
