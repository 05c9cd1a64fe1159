#include "picker/NChannelPickerWidget.h"

#include "PickerInput.h"
#include "picker/ColorTrack.h"
#include "picker/DmxSliderWidget.h"
#include "picker/DmxSlidersWidget.h"
#include "picker/ProfileSelector.h"
#include "resources/Resources.h"

#include <QCheckBox>
#include <QFrame>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include <cstdlib>

using namespace VelaColorPickerLib;

namespace {

/// The page with its parts, and what it tells.
struct Page
{
    Page()
    {
        QObject::connect(&widget, &NChannelPickerWidget::colorChanged, &widget,
                         [this](VelaColor& color, QString& uid) {
                             colors.append(color);
                             uids.append(uid);
                         });
    }
    QList<DmxSliderWidget*> sliders() const
    {
        QList<DmxSliderWidget*> shown;
        for (DmxSliderWidget* const slider : widget.findChildren<DmxSliderWidget*>()) {
            if (slider->isVisibleTo(&widget)) {
                shown.append(slider);
            }
        }
        return shown;
    }
    QStringList names() const
    {
        QStringList list;
        for (const DmxSliderWidget* const slider : sliders()) {
            list.append(slider->name());
        }
        return list;
    }
    QVector<int> levels() const { return widget.findChild<DmxSlidersWidget*>()->values(); }
    void turn(int channel, int level) const
    {
        sliders().at(channel)->findChild<QSpinBox*>()->setValue(level);
    }

    NChannelPickerWidget widget;
    QList<VelaColor> colors;
    QStringList uids;
    ProfileSelector* selector = widget.findChild<ProfileSelector*>();
    QCheckBox* box = widget.findChild<QCheckBox*>(QStringLiteral("tintweaveCheckBox"));
};

VelaColor nchannel(const QList<int>& alphaAndChannels, int profile, bool tintweave = false)
{
    VelaColor color;
    color.setNchannel8(alphaAndChannels, static_cast<quint32>(ColorUtils::layoutOfProfile(profile)),
                       static_cast<quint32>(profile), tintweave);
    return color;
}

QVector<int> channels8(const VelaColor& color)
{
    QList<int> list;
    color.channels8(&list);
    return list.mid(1).toVector();
}

/// What a fixture in a mode is sent for a colour.
QVector<int> mapped(const VelaColor& color, int profile, int mode, bool tintweave = false)
{
    const int count = ColorUtils::channelCount(ColorUtils::layoutOfProfile(profile));
    const int curve = ColorUtils::curveOfProfile(profile);
    quint8 bytes[8] = {};
    ColorUtils::mapToChannels(color, tintweave, count, 1, bytes, curve, curve, profile, mode);
    QVector<int> levels;
    for (int i = 0; i < count; ++i) {
        levels.append(bytes[i]);
    }
    return levels;
}

} // namespace

class NChannelPickerWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void textsAndGround();
    void slidersFollowTheProfile_data();
    void slidersFollowTheProfile();
    void aSliderGivesAnNchannelColor();
    void levelsBeyondTheRangeAreLimited();
    void fromYxyIsSetOnceAnAbsoluteColorCame();
    void theBytesComeBack_data();
    void theBytesComeBack();
    void aColorOfAMatchingModeIsMappedInIt();
    void anotherColorIsMappedInTheNativeMode_data();
    void anotherColorIsMappedInTheNativeMode();
    void alphaIsKept();
    void settingEmitsNothing();
    void invalidColorsChangeNothing();
    void aNewFixtureShowsTheSameColor();
    void theCheckBoxIsOfTheColor();
    void primaryProfileChoosesTheFixture();
    void infoBoxTells();
    void tracksShowWhatTheyWouldDo();
    void readsOnADarkPaletteToo();
    void controlsAreNamedAndInTabOrder();
};

void NChannelPickerWidgetTest::initTestCase()
{
    initForgeResources();
}

void NChannelPickerWidgetTest::textsAndGround()
{
    const Page page;
    QStringList titles;
    for (const QGroupBox* const group : page.widget.findChildren<QGroupBox*>()) {
        titles.append(group->title());
    }
    QVERIFY(titles.contains(QStringLiteral("Color Control Mode")));
    QVERIFY(titles.contains(QStringLiteral("Target Fixture Settings")));
    QCOMPARE(page.box->text(), QStringLiteral("+ Tintweave"));
    QCOMPARE(page.selector->objectName(), QStringLiteral("tintweaveProfileComboBox"));
    const auto* const frame = page.widget.findChild<QFrame*>(QStringLiteral("backgroundFrame"));
    QVERIFY(frame != nullptr);
    QCOMPARE(frame->styleSheet(),
             QStringLiteral("QFrame#backgroundFrame {background-color: rgb(225, 225, 225);}"));
    QVERIFY(!page.box->isChecked());
}

void NChannelPickerWidgetTest::slidersFollowTheProfile_data()
{
    QTest::addColumn<int>("profile");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("rgb") << 0 << QStringList{"Red", "Green", "Blue"};
    QTest::newRow("rgba") << 5 << QStringList{"Red", "Green", "Blue", "Amber"};
    QTest::newRow("rgbw") << 6 << QStringList{"Red", "Green", "Blue", "White"};
    QTest::newRow("five") << 2 << QStringList{"Red", "Green", "Blue", "Mint", "White"};
    QTest::newRow("single") << 4 << QStringList{"White"};
    QTest::newRow("four-channel") << 13 << QStringList{"Red-Orange", "Green", "Blue", "BSY"};
    QTest::newRow("warm and cool") << 27 << QStringList{"Warm", "Cool"};
    QTest::newRow("cool and warm") << 29 << QStringList{"Cool", "Warm"};
    QTest::newRow("three whites") << 26 << QStringList{"Warm", "Neutral", "Cool"};
    QTest::newRow("more channels than names")
        << 28 << QStringList{"White", "Channel 2", "Channel 3"};
    QTest::newRow("four whites") << 40 << QStringList{"2200K", "3000K", "4000K", "6500K"};
}

void NChannelPickerWidgetTest::slidersFollowTheProfile()
{
    QFETCH(const int, profile);
    QFETCH(const QStringList, names);
    Page page;
    page.selector->setCurrentIndex(2); // from five sliders to whatever is next
    page.selector->setCurrentIndex(profile);
    QCOMPARE(page.names(), names);
    page.turn(0, 9);
    QCOMPARE(page.colors.last().channelCount(), names.size());
    QCOMPARE(page.colors.last().profileId(), static_cast<quint32>(profile));
    QCOMPARE(page.colors.last().channelLayout(),
             static_cast<quint32>(ColorUtils::layoutOfProfile(profile)));
}

void NChannelPickerWidgetTest::aSliderGivesAnNchannelColor()
{
    Page page;
    page.widget.resize(600, 400);
    page.widget.show();
    page.selector->setCurrentIndex(3);
    page.colors.clear();
    page.uids.clear();
    auto* const track = page.sliders().at(3)->findChild<ColorTrack*>();
    QTest::mouseClick(track, Qt::LeftButton, {}, QPoint(track->xOf(128), track->height() / 2));
    QCOMPARE(page.colors.size(), 1);
    QCOMPARE(page.uids.last(), QString());
    const VelaColor color = page.colors.last();
    QCOMPARE(color.spec(), VelaColor::Nchannel);
    QCOMPARE(channels8(color), QVector<int>({0, 0, 0, 128}));
    QCOMPARE(color.channelLayout(), 3U);
    QCOMPARE(color.profileId(), 3U);
    QVERIFY(!color.tintweave());
    QCOMPARE(color.fromYxy(), 0U);
    QCOMPARE(color.alpha32(), 0xFFFFFFFFU);
    QVERIFY(page.widget.color() == color);
    page.turn(0, 255);
    QCOMPARE(channels8(page.colors.last()), QVector<int>({255, 0, 0, 128}));
}

void NChannelPickerWidgetTest::levelsBeyondTheRangeAreLimited()
{
    Page page;
    page.widget.onDmxChanged({300, -4});
    QCOMPARE(page.colors.size(), 1);
    QVERIFY(page.colors.last().isValid());
    QCOMPARE(channels8(page.colors.last()), QVector<int>({255, 0, 0}));
    page.widget.onDmxChanged({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    QCOMPARE(channels8(page.colors.last()), QVector<int>({1, 2, 3}));
}

void NChannelPickerWidgetTest::fromYxyIsSetOnceAnAbsoluteColorCame()
{
    Page page;
    page.turn(0, 10);
    QCOMPARE(page.colors.last().fromYxy(), 0U);
    page.widget.setColor(VelaColor(QColor(1, 2, 3)));
    page.turn(0, 20);
    QCOMPARE(page.colors.last().fromYxy(), 0U);
    page.widget.setColor(nchannel({255, 1, 2, 3}, 0));
    page.turn(0, 30);
    QCOMPARE(page.colors.last().fromYxy(), 0U);
    page.widget.setColor(VelaColor(whiteXy(4000, 0).x(), whiteXy(4000, 0).y()));
    QCOMPARE(page.widget.color().fromYxy(), 0U); // until a slider makes one
    page.turn(0, 40);
    QCOMPARE(page.colors.last().fromYxy(), 1U);
    page.turn(0, 50);
    QCOMPARE(page.colors.last().fromYxy(), 1U);
}

void NChannelPickerWidgetTest::theBytesComeBack_data()
{
    QTest::addColumn<int>("profile");
    for (const int profile : {0, 2, 3, 4, 5, 6, 13, 26, 27, 33, 40}) {
        QTest::addRow("profile %d", profile) << profile;
    }
}

void NChannelPickerWidgetTest::theBytesComeBack()
{
    QFETCH(const int, profile);
    Page page;
    page.selector->setCurrentIndex(profile);
    const int count = ColorUtils::channelCount(ColorUtils::layoutOfProfile(profile));
    for (int level = 0; level < 256; level += 5) {
        QList<int> list = {255 - level};
        for (int i = 0; i < count; ++i) {
            list.append((level + 37 * i) % 256);
        }
        const VelaColor color = nchannel(list, profile);
        page.widget.setColor(color);
        QCOMPARE(page.levels(), list.mid(1).toVector());
        QVERIFY(page.widget.color() == color);
    }
}

void NChannelPickerWidgetTest::aColorOfAMatchingModeIsMappedInIt()
{
    Page page;
    page.selector->setCurrentIndex(5); // RGBA, with a mode 0 that takes RGB as it is
    const VelaColor color(QColor(250, 120, 30));
    page.widget.setColor(color);
    QCOMPARE(page.levels(), mapped(color, 5, 0));
    QVERIFY(page.levels() != mapped(color, 5, 1)); // its native mode
    // Straight through the profile's curve, backwards.
    const auto back = [](int level) {
        quint8 out = 0;
        ColorUtils::lut8Lookup(ColorUtils::curve(1), static_cast<quint8>(level), &out, false);
        return static_cast<int>(out);
    };
    QCOMPARE(page.levels(), QVector<int>({back(250), back(120), back(30), back(0)}));
}

void NChannelPickerWidgetTest::anotherColorIsMappedInTheNativeMode_data()
{
    QTest::addColumn<int>("profile");
    QTest::addColumn<VelaColor>("color");
    QTest::addColumn<int>("mode");
    const VelaColor rgb(QColor(200, 90, 140));
    const VelaColor white(whiteXy(3000, 0).x(), whiteXy(3000, 0).y());
    QTest::newRow("rgb on generic rgbw") << 3 << rgb << 2;
    QTest::newRow("white on generic rgbw") << 3 << white << 2;
    QTest::newRow("rgb on a single channel") << 4 << rgb << 9;
    QTest::newRow("white on three whites") << 26 << white << 17;
    QTest::newRow("four channels on generic rgb") << 0 << nchannel({255, 9, 80, 7, 200}, 3) << 0;
    QTest::newRow("white on generic rgb") << 0 << white << 0;
}

void NChannelPickerWidgetTest::anotherColorIsMappedInTheNativeMode()
{
    QFETCH(const int, profile);
    QFETCH(const VelaColor, color);
    QFETCH(const int, mode);
    Page page;
    page.selector->setCurrentIndex(profile);
    page.widget.setColor(color);
    QCOMPARE(page.levels(), mapped(color, profile, mode));
    QCOMPARE(channels8(page.widget.color()), page.levels());
    QCOMPARE(page.widget.color().profileId(), static_cast<quint32>(profile));
}

void NChannelPickerWidgetTest::alphaIsKept()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(10, 20, 30, 77)));
    QCOMPARE(page.widget.color().alpha8(), 77);
    page.turn(1, 99);
    QCOMPARE(page.colors.last().alpha8(), 77);
    QCOMPARE(page.colors.last().alpha16(), 77 * 257);
}

void NChannelPickerWidgetTest::settingEmitsNothing()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(10, 20, 30)));
    page.widget.setColor(nchannel({255, 1, 2, 3}, 0));
    page.selector->setCurrentIndex(6);
    page.widget.setPrimaryProfile({9, 1});
    QCOMPARE(page.colors.size(), 0);
}

void NChannelPickerWidgetTest::invalidColorsChangeNothing()
{
    Page page;
    page.widget.setColor(nchannel({255, 11, 22, 33}, 0));
    page.widget.setColor(VelaColor());
    QCOMPARE(page.levels(), QVector<int>({11, 22, 33}));
    QVERIFY(page.widget.color().isValid());
    VelaColor empty;
    empty.setNchannel8({255}, 1, 0, false); // a layout's channels missing
    page.widget.setColor(empty);
    QCOMPARE(page.levels(), QVector<int>({0, 0, 0}));
    VelaColor odd = nchannel({255, 1, 2, 3}, 0);
    odd.setChannelLayout(4000000000U);
    odd.setProfileId(4000000000U);
    page.widget.setColor(odd);
    QCOMPARE(page.levels().size(), 3);
    VelaColor nan;
    nan.setYxyF(1.0, qQNaN(), qQNaN());
    page.widget.setColor(nan);
    QCOMPARE(page.levels().size(), 3);
}

void NChannelPickerWidgetTest::aNewFixtureShowsTheSameColor()
{
    Page page;
    const VelaColor white(whiteXy(4500, 3000).x(), whiteXy(4500, 3000).y());
    page.widget.setColor(white);
    for (const int profile : {3, 2, 0}) {
        page.widget.onTintweaveProfileChanged(profile);
        QCOMPARE(page.selector->profile(), profile);
        QCOMPARE(page.levels(), mapped(white, profile, ColorUtils::nativeModeOfProfile(profile)));
    }
    page.widget.onTintweaveProfileChanged(99); // none such
    QCOMPARE(page.selector->profile(), 0);
    QCOMPARE(page.sliders().size(), 3);
}

void NChannelPickerWidgetTest::theCheckBoxIsOfTheColor()
{
    Page page;
    page.widget.resize(600, 400);
    page.widget.show();
    page.selector->setCurrentIndex(6);
    const VelaColor white(whiteXy(4000, 0).x(), whiteXy(4000, 0).y());
    page.widget.setColor(white);
    const QVector<int> without = mapped(white, 6, 0, false); // the mode of its layout
    const QVector<int> with = mapped(white, 6, 0, true);
    QVERIFY(without != with);
    QCOMPARE(page.levels(), without);
    QTest::mouseClick(page.box, Qt::LeftButton, {}, QPoint(10, page.box->height() / 2));
    QVERIFY(page.box->isChecked());
    QCOMPARE(page.colors.size(), 1);
    QCOMPARE(page.levels(), with);
    QCOMPARE(channels8(page.colors.last()), with);
    QVERIFY(page.colors.last().tintweave());
    QVERIFY(page.widget.color().tintweave());
    page.turn(0, 12);
    QVERIFY(page.colors.last().tintweave());
    const QVector<int> levels = page.levels();
    QTest::keyClick(page.box, Qt::Key_Space);
    QVERIFY(!page.box->isChecked());
    QVERIFY(!page.colors.last().tintweave());
    QCOMPARE(page.levels(), levels); // channels that the user set stay
    const int told = page.colors.size();
    page.box->setChecked(true); // not by the user
    QCOMPARE(page.colors.size(), told);
    page.turn(0, 13);
    QVERIFY(page.colors.last().tintweave());
}

void NChannelPickerWidgetTest::primaryProfileChoosesTheFixture()
{
    Page page;
    page.widget.setProfiles({{9, 1}, {6, 0}});
    QVERIFY(page.selector->itemData(9, Qt::FontRole).value<QFont>().bold());
    QCOMPARE(page.selector->count(), 47);
    page.widget.setPrimaryProfile({9, 1});
    QCOMPARE(page.selector->profile(), 9);
    QVERIFY(page.box->isChecked());
    QCOMPARE(page.sliders().size(), 4);
    page.widget.setPrimaryProfile({-1, 0});
    QCOMPARE(page.selector->profile(), 9);
    QVERIFY(page.box->isChecked());
    page.widget.setPrimaryProfile({6, 0});
    QVERIFY(!page.box->isChecked());
    QCOMPARE(page.selector->profile(), 6);
}

void NChannelPickerWidgetTest::infoBoxTells()
{
    Page page;
    page.widget.resize(600, 400);
    page.widget.show();
    QString title;
    QString text;
    QTimer::singleShot(0, &page.widget, [&title, &text] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box != nullptr) {
            title = box->windowTitle();
            text = box->text();
            box->accept();
        }
    });
    QTest::mouseClick(page.widget.findChild<QToolButton*>(QStringLiteral("infoButton")),
                      Qt::LeftButton);
    QCOMPARE(title, QStringLiteral("Target Fixture Settings"));
    const QStringList paragraphs = text.split(QStringLiteral("\n\n"));
    QCOMPARE(paragraphs.size(), 2);
    QVERIFY(paragraphs[0].contains(QLatin1String("fixture type")));
    QVERIFY(paragraphs[0].contains(QLatin1String("\"+ Tintweave\" box")));
    QVERIFY(paragraphs[0].contains(QLatin1String("select a color or adjust the sliders")));
    QCOMPARE(paragraphs[1],
             QStringLiteral("The channel sliders represent the values sent to the fixture to "
                            "achieve the desired color."));
}

void NChannelPickerWidgetTest::tracksShowWhatTheyWouldDo()
{
    Page page;
    page.widget.resize(700, 400);
    page.widget.show();
    page.selector->setCurrentIndex(3);
    page.widget.setColor(nchannel({255, 200, 40, 0, 0}, 3));
    auto* const track = page.sliders().at(2)->findChild<ColorTrack*>(); // blue, at 0
    const QImage image = track->grab().toImage();
    for (int level = 30; level <= 255; level += 15) { // at the stops of the gradient
        const QColor expected = nchannel({255, 200, 40, level, 0}, 3).toQColor(true);
        const QColor shown = image.pixelColor(track->xOf(level), track->bar().top() + 3);
        QVERIFY2(std::abs(shown.red() - expected.red()) <= 6 &&
                     std::abs(shown.green() - expected.green()) <= 6 &&
                     std::abs(shown.blue() - expected.blue()) <= 6,
                 qPrintable(QString::number(level) + shown.name() + expected.name()));
    }
    page.turn(0, 0); // which the other tracks follow
    QVERIFY(track->grab().toImage() != image);
}

void NChannelPickerWidgetTest::readsOnADarkPaletteToo()
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(50, 50, 54)));
    {
        Page page;
        page.widget.show();
        QVERIFY(page.widget.palette().color(QPalette::WindowText).lightness() > 128);
        for (const QLabel* const label : page.widget.findChildren<QLabel*>()) {
            QVERIFY(label->palette().color(QPalette::WindowText).lightness() < 64);
        }
        QVERIFY(page.box->palette().color(QPalette::WindowText).lightness() < 64);
    }
    QApplication::setPalette(before);
}

void NChannelPickerWidgetTest::controlsAreNamedAndInTabOrder()
{
    Page page;
    page.widget.resize(600, 400);
    page.widget.show();
    page.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&page.widget));
    page.widget.setFocus();
    QList<QWidget*> order = {page.selector, page.box,
                             page.widget.findChild<QToolButton*>(QStringLiteral("infoButton"))};
    for (DmxSliderWidget* const slider : page.sliders()) {
        order.append(slider->findChild<ColorTrack*>());
        order.append(slider->findChild<QSpinBox*>());
    }
    for (QWidget* const control : order) {
        QCOMPARE(QApplication::focusWidget(), control);
        QVERIFY(!control->accessibleName().isEmpty());
        QVERIFY(!control->toolTip().isEmpty());
        QTest::keyClick(control, Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget(), page.selector);
}

QTEST_MAIN(NChannelPickerWidgetTest)
#include "NChannelPickerWidgetTest.moc"
