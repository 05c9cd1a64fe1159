#include "editor/ColorChooser.h"
#include "editor/ColorSwatch.h"
#include "editor/EffectForm.h"
#include "editor/ParameterForms.h"
#include "effects/RegisterEffects.h"
#include "engine/EffectFactory.h"
#include "tests/editor/FormStage.h"

#include <QComboBox>
#include <QLocale>
#include <QMetaMethod>
#include <QRadioButton>
#include <QSet>

#include <functional>
#include <memory>
#include <new>

namespace {

/// What the colour dialog does; none is opened.
std::function<void(const VelaColor&, const ColorHandler&)> onDialog;
int dialogRuns = 0;

/// A type of effect with keys of its own in a file, and what its form then shows.
struct FormCase
{
    const char* type;
    const char* keys;
    const char* controls; // in the order in which the tab key reaches them
    const char* colors;
};

const FormCase kForms[] = {
    {"Fixed Color", "color=#102030", "Choose Color: RGB Color", "#102030"},
    {"Chasing Rainbow",
     "startcolor=#102030|reversecolor=1|reversedir=0|groupoffset=-7.25|cycletime=2.5",
     "Cycle Time (sec)=2.5|Light-to-Light Offset (deg)=-7.25|Reverse Direction=0|"
     "Reverse Color Cycle=1|Choose Color: Start Color",
     "#102030"},
    {"Cross Fade", "startcolor=#102030|endcolor=#405060|starttrans=0|endtrans=1|time=0.4",
     "Cycle Time (sec)=0.4|Choose Color: Start Color|Start Color Trans=0|"
     "Choose Color: End Color|End Color Trans=1",
     "#102030|#405060"},
    {"Selection", "fgcolor=#102030|bgcolor=#405060",
     "Choose Color: Selection Color|Choose Color: Background Color", "#102030|#405060"},
    {"White Fixed Color", "temperature=500|intensity=77|inputType=1|warm=12|cool=250",
     "Input type=1|Color Temp=500|Intensity=77|Warm=12|Warm=12|Cool=250|Cool=250", ""},
    {"Random Color", "startcolor=#102030|time=3.5|fadetime=0.25|cyclecount=17|offset=-1",
     "Time per color (sec)=3.5|Fade Time (sec)=0.25|Cycle after this many colors=17|"
     "Light-to-Light Offset (sec)=-1|Choose Color: Start Color",
     "#102030"},
    {"Custom Rainbow", "groupoffset=1.5|color_0=#102030|color_1=#405060",
     "Colors|New Color|Light-to-Light Offset (sec)=1.5", "#102030|#405060"},
    {"Sparkle",
     "decay=42|density=99|cycletime=33|sparklecolor=#102030|bgcolor=#405060|sparkletrans=1|"
     "bgtrans=0",
     "Decay Rate=42|Density=99|Time Constant=33|Choose Color: Sparkle Color|"
     "Sparkle Color Transparent=1|Choose Color: Background Color|Background Color Transparent=0",
     "#102030|#405060"},
    {"Sparkle Group",
     "decay=42|density=99|cycletime=33|sparklecolor=#102030|bgcolor=#405060|sparkletrans=0|"
     "bgtrans=1",
     "Decay Rate=42|Density=99|Time Constant=33|Choose Color: Sparkle Color|"
     "Sparkle Color Trans=0|Choose Color: Background Color|Background Color Trans=1",
     "#102030|#405060"},
    {"Streak",
     "fgcolor=#102030|bgcolor=#405060|width=6|fwdtail=7|revtail=8|reverse=1|cycletime=2.5|"
     "fgtrans=0|bgtrans=1|wrap=0",
     "Cycle Time (sec)=2|Pulse Width=6|Forward Tail Width=7|Reverse Tail Width=8|Reverse=1|Wrap=0|"
     "Choose Color: Pulse Color|Pulse Color Trans=0|Choose Color: Background Color|"
     "Background Color Trans=1",
     "#102030|#405060"},
    {"Sweep", "fgcolor=#102030|bgcolor=#405060|cycletime=2.5|reverse=1|fgtrans=1|bgtrans=0",
     "Cycle Time (sec)=2|Reverse=1|Choose Color: Sweep Color|Sweep Color Trans=1|"
     "Choose Color: Background Color|Background Color Trans=0",
     "#102030|#405060"},
    {"White Cross Fade",
     "temperatureStart=3|intensityStart=4|inputTypeStart=0|warmStart=5|coolStart=6|"
     "temperatureEnd=7|intensityEnd=8|inputTypeEnd=1|warmEnd=9|coolEnd=10|starttrans=0|"
     "endtrans=1|time=1.5",
     "Cycle Time (sec)=1.5|Input type=0|Color Temp=3|Intensity=4|Warm=5|Warm=5|Cool=6|Cool=6|"
     "Trans=0|Input type=1|Color Temp=7|Intensity=8|Warm=9|Warm=9|Cool=10|Cool=10|Trans=1",
     ""},
    {"Animation",
     "animationdir=/no/films|preload=1|fps=7|xoffset=-5|yoffset=6|scale=2.25|transcolor=#102030|"
     "transenabled=1|smooth=0",
     "Animation Directory=/no/films|Browse|Load|Preload=1|Playback Frames Per Second=7|"
     "X Offset=-5|Y Offset=6|Scale Factor=2.25|Smooth=0|Choose Color: Transparent Color|"
     "Transparent Color Enabled=1",
     "#102030"},
    {"Image Scroll",
     "imagefile=/no/picture.png|cycletime=2.5|startx=-11|starty=12|endx=13|endy=-14|startscale=0.5|"
     "endscale=2|smooth=0|transcolor=#102030|transenabled=1|bgcolor=#405060",
     "Image File=/no/picture.png|Browse|Load|Cycle Time (sec)=2|Start X=-11|Start Y=12|"
     "Start Scale=0.5|End X=13|End Y=-14|End Scale=2|Smooth=0|Choose Color: Transparent Color|"
     "Transparent Color Enabled=1|Choose Color: Background Color",
     "#102030|#405060"},
    {"XYBurst", "cycletime=2.5|width=321|centerx=-15|centery=16|cycledir=1|rainbowdir=0",
     "Cycle Time (sec)=2|Ring Width=321|Center X=-15|Center Y=16|Reverse Direction=1|"
     "Reverse Rainbow=0",
     ""},
    {"XYSpiral", "cycletime=2.5|twist=33|number=5|clockwise=0|centerx=-15|centery=16",
     "Cycle Time (sec)=2|Twist=33|Arms=5|Clockwise=0|Counterclockwise=1|Center X=-15|Center Y=16",
     ""},
    {"Text",
     "text=Good night|font=No Such Font|fontsize=64|bold=1|italic=0|smooth=1|cycletime=1.75|"
     "fgcolor=#102030|fgtrans=1|bgcolor=#405060|bgtrans=0",
     "Text String=Good night|Font=No Such Font|Bold=1|Italic=0|Smooth=1|Size (pixels)=64|"
     "Cycle Time (sec)=1.75|Choose Color: Text Color|Text Color Trans=1|"
     "Choose Color: Background Color|Background Color Trans=0",
     "#102030|#405060"},
};

QStringList split(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

/// An effect of that type and its form, shown.
struct Stage
{
    TestShow::TestMap map{2};
    std::unique_ptr<Effect> effect;
    std::unique_ptr<QWidget> form;

    explicit Stage(const char* type, const char* keys = "")
        : effect(EffectFactory::createEffect(QString::fromLatin1(type), map.model(), nullptr))
    {
        QString xml;
        for (const QString& key : split(keys)) {
            const QString name = key.section(QLatin1Char('='), 0, 0);
            const QString value = key.section(QLatin1Char('='), 1);
            xml += QStringLiteral("<%1>%2</%1>").arg(name, value);
        }
        QDomElement element = TestShow::elementOf(xml);
        effect->fromXml(&element);
    }
    void open()
    {
        form.reset(makeParameterForm(effect.get(), map.model(), nullptr));
        form->show();
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    }
};

/// The controls that the tab key reaches, in its order.
QVector<QWidget*> controlsOf(const QWidget* form)
{
    QVector<QWidget*> found;
    for (QWidget* control = form->nextInFocusChain(); control != form;
         control = control->nextInFocusChain()) {
        if ((control->focusPolicy() & Qt::TabFocus) != 0 && control->focusProxy() == nullptr) {
            found.append(control);
        }
    }
    return found;
}

QString nameOf(const QWidget* control)
{
    const auto* const button = dynamic_cast<const QAbstractButton*>(control);
    return control->accessibleName().isEmpty() && button != nullptr ? plain(button->text())
                                                                    : control->accessibleName();
}

QString valueOf(const QWidget* control)
{
    if (const auto* const line = dynamic_cast<const QLineEdit*>(control)) {
        return QLatin1Char('=') + line->text();
    }
    if (const auto* const spin = dynamic_cast<const QSpinBox*>(control)) {
        return QStringLiteral("=%1").arg(spin->value());
    }
    if (const auto* const slider = dynamic_cast<const QSlider*>(control)) {
        return QStringLiteral("=%1").arg(slider->value());
    }
    if (const auto* const box = dynamic_cast<const QComboBox*>(control)) {
        return QLatin1Char('=') +
               (box->isEditable() ? box->currentText() : QString::number(box->currentIndex()));
    }
    const auto* const button = dynamic_cast<const QAbstractButton*>(control);
    return button != nullptr && button->isCheckable()
               ? QStringLiteral("=%1").arg(button->isChecked() ? 1 : 0)
               : QString();
}

QStringList colorsOf(const QWidget* form)
{
    QStringList names;
    for (const ColorSwatch* const swatch : form->findChildren<ColorSwatch*>()) {
        names << swatch->palette().color(swatch->backgroundRole()).name();
    }
    return names;
}

/// The keys whose lines differ.
QStringList changedKeys(const QString& before, const QString& after)
{
    const QStringList a = before.split(QLatin1Char('\n'));
    const QStringList b = after.split(QLatin1Char('\n'));
    QStringList keys;
    for (int i = 0; i < qMax(a.size(), b.size()); ++i) {
        if (a.value(i) != b.value(i)) {
            keys << b.value(i).section(QLatin1Char('<'), 1).section(QLatin1Char('>'), 0, 0);
        }
    }
    return keys;
}

QVector<QPair<QChar, QString>> mnemonicsOf(const QWidget* form)
{
    QVector<QPair<QChar, QString>> letters;
    const auto add = [&letters](const QString& text) {
        const int place = text.indexOf(QLatin1Char('&'));
        if (place >= 0) {
            letters.append({text.at(place + 1).toUpper(), text});
        }
    };
    for (const QLabel* const label : form->findChildren<QLabel*>()) {
        add(label->text());
    }
    for (const QAbstractButton* const button : form->findChildren<QAbstractButton*>()) {
        add(button->text());
    }
    return letters;
}

template <typename EffectClass, typename Form>
void refusesNull()
{
    FormStage<EffectClass, Form> stage;
    QVERIFY_EXCEPTION_THROWN(delete new Form(nullptr, stage.map.model(), nullptr), std::bad_alloc);
    QVERIFY_EXCEPTION_THROWN(delete new Form(&stage.effect, nullptr, nullptr), std::bad_alloc);
}

} // namespace

void chooseColor(const Effect& /*effect*/, MapModel* /*model*/, VelaColor current,
                 QWidget* /*form*/, const ColorHandler& handler)
{
    ++dialogRuns;
    if (onDialog) {
        onDialog(current, handler);
    }
}

/// What all parameter forms have in common, on each of them.
class FormValuesTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { registerEffects(); }
    void init();
    void aFormShowsItsEffectAndWritesNothing_data() { addForms(); }
    void aFormShowsItsEffectAndWritesNothing();
    void everyKeyOfACycleTimeReachesTheEffect_data();
    void everyKeyOfACycleTimeReachesTheEffect();
    void colorsAreLiveAndComeBack_data();
    void colorsAreLiveAndComeBack();
    void slotsHaveTheirNames_data();
    void slotsHaveTheirNames();
    void signalsHaveTheirNames();
    void noEffectOrNoModelIsFatal();
    void aFormOutlivesItsEffect_data() { addForms(); }
    void aFormOutlivesItsEffect();
    void numbersAreReadInAnyCountry();
    void mnemonicsAreUnique_data() { addForms(); }
    void mnemonicsAreUnique();
    void mnemonicsReachTheirControls();

private:
    static void addForms();
};

void FormValuesTest::init()
{
    onDialog = nullptr;
    dialogRuns = 0;
}

void FormValuesTest::addForms()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const FormCase& form : kForms) {
        QTest::newRow(form.type) << index++;
    }
    QCOMPARE(index, 17);
}

void FormValuesTest::aFormShowsItsEffectAndWritesNothing()
{
    QFETCH(const int, index);
    const FormCase& what = kForms[index];
    Stage stage(what.type, what.keys);
    const QString before = TestShow::textOf(*stage.effect);
    stage.open();
    QStringList shown;
    for (const QWidget* const control : controlsOf(stage.form.get())) {
        QVERIFY2(!nameOf(control).isEmpty(), control->metaObject()->className());
        shown << nameOf(control) + valueOf(control);
    }
    QCOMPARE(shown, split(what.controls));
    QCOMPARE(colorsOf(stage.form.get()), split(what.colors));
    stage.form.reset();
    QCOMPARE(TestShow::textOf(*stage.effect), before);
}

void FormValuesTest::everyKeyOfACycleTimeReachesTheEffect_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("isWhole");
    const auto row = [](const char* type, const char* key, bool isWhole) {
        QTest::newRow(type) << QString::fromLatin1(key) << isWhole;
    };
    row("Chasing Rainbow", "cycletime=2.5", false);
    row("Cross Fade", "time=2.5", false);
    row("White Cross Fade", "time=2.5", false);
    row("Text", "cycletime=2.5", false);
    row("Streak", "cycletime=2.5", true);
    row("Sweep", "cycletime=2.5", true);
    row("Image Scroll", "cycletime=2.5", true);
    row("XYBurst", "cycletime=2.5", true);
    row("XYSpiral", "cycletime=2.5", true);
}

void FormValuesTest::everyKeyOfACycleTimeReachesTheEffect()
{
    QFETCH(const QString, key);
    QFETCH(const bool, isWhole);
    Stage stage(QTest::currentDataTag(), key.toLatin1().constData());
    stage.open();
    auto* const line = labelled<QLineEdit>(stage.form.get(), "Cycle Time (sec):");
    QCOMPARE(line->text(), isWhole ? QStringLiteral("2") : QStringLiteral("2.5"));
    QVERIFY(line->validator() == nullptr);
    QCOMPARE(stage.effect->cycleTime(), 2500U);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_1);
    QCOMPARE(stage.effect->cycleTime(), 1000U);
    QTest::keyClick(line, Qt::Key_2);
    QCOMPARE(stage.effect->cycleTime(), 12000U);
    QTest::keyClicks(line, QStringLiteral(".5"));
    QCOMPARE(stage.effect->cycleTime(), isWhole ? 0U : 12500U);
    retype(line, "3");
    QCOMPARE(stage.effect->cycleTime(), 3000U);
    QTest::keyClicks(line, QStringLiteral("s"));
    QCOMPARE(stage.effect->cycleTime(), 0U);
    retype(line, "4");
    QTest::keyClick(line, Qt::Key_Backspace);
    QCOMPARE(line->text(), QString());
    QCOMPARE(stage.effect->cycleTime(), 0U);
}

void FormValuesTest::colorsAreLiveAndComeBack_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("nth");
    QTest::addColumn<QString>("key");
    const auto rows = [](const char* type, const QStringList& keys) {
        int index = 0;
        while (qstrcmp(kForms[index].type, type) != 0) {
            ++index;
        }
        for (int nth = 0; nth < keys.size(); ++nth) {
            QTest::addRow("%s %s", type, qPrintable(keys.at(nth))) << index << nth << keys.at(nth);
        }
    };
    rows("Fixed Color", {"color"});
    rows("Chasing Rainbow", {"startcolor"});
    rows("Cross Fade", {"startcolor", "endcolor"});
    rows("Selection", {"fgcolor", "bgcolor"});
    rows("Random Color", {"startcolor"});
    rows("Sparkle", {"sparklecolor", "bgcolor"});
    rows("Sparkle Group", {"sparklecolor", "bgcolor"});
    rows("Streak", {"fgcolor", "bgcolor"});
    rows("Sweep", {"fgcolor", "bgcolor"});
    rows("Animation", {"transcolor"});
    rows("Image Scroll", {"transcolor", "bgcolor"});
    rows("Text", {"fgcolor", "bgcolor"});
}

void FormValuesTest::colorsAreLiveAndComeBack()
{
    QFETCH(const int, index);
    QFETCH(const int, nth);
    QFETCH(const QString, key);
    const FormCase& what = kForms[index];
    Stage stage(what.type, what.keys);
    stage.open();
    const QString before = TestShow::textOf(*stage.effect);
    const QStringList colors = colorsOf(stage.form.get());
    QStringList changed = colors;
    changed[nth] = QStringLiteral("#090807");
    onDialog = [&](const VelaColor& current, const ColorHandler& handler) {
        QCOMPARE(current.name(), colors.at(nth));
        handler(VelaColor(QColor(9, 8, 7)));
        QCOMPARE(changedKeys(before, TestShow::textOf(*stage.effect)), QStringList(key));
        QCOMPARE(colorsOf(stage.form.get()), changed);
        handler(current); // as after a rejection
    };
    button<QPushButton>(stage.form.get(), "Choose Color", nth)->click();
    QCOMPARE(dialogRuns, 1);
    QCOMPARE(TestShow::textOf(*stage.effect), before);
    QCOMPARE(colorsOf(stage.form.get()), colors);
}

void FormValuesTest::slotsHaveTheirNames_data()
{
    QTest::addColumn<QString>("names");
    const auto row = [](const char* type, const char* names) {
        QTest::newRow(type) << QString::fromLatin1(names);
    };
    row("Cross Fade",
        "m_timeEdit_textChanged(QString)|startTransparencyChanged(bool)|"
        "endTransparencyChanged(bool)|chooseStartColorClicked()|chooseEndColorClicked()|"
        "handleGotNewStartColor(VelaColor)|handleGotNewEndColor(VelaColor)");
    row("White Fixed Color",
        "handleTemperatureChanged(int)|handleIntensityChanged(int)|handleCoolChanged(int)|"
        "handleWarmChanged(int)|handleInputTypeChanged(int)");
    row("Custom Rainbow",
        "handleTableDoubleClicked(QTableWidgetItem*)|handleGotNewColor(VelaColor)|"
        "handleEntryChanged(int,int)|handleNewEntryClicked()|"
        "handleCustomContextMenuRequested(QPoint)|handleDeleteColor()|"
        "handleGroupOffsetChanged(QString)|handleCycleTimeChanged(uint)");
    row("Sparkle Group", "handleGotNewSparkleColor(QColor)|handleGotNewBgColor(QColor)");
    row("Streak",
        "handleWidthChanged(int)|handleFwdTailChanged(int)|handleRevTailChanged(int)|"
        "handleReverseChanged(bool)|handleWrapChanged(bool)|handleFgTransToggled(bool)|"
        "handleBgTransToggled(bool)|handleCycleTimeChanged(QString)|chooseFgColorClicked()|"
        "chooseBgColorClicked()|handleGotNewFgColor(VelaColor)|handleGotNewBgColor(VelaColor)");
    row("Sweep",
        "chooseFgColorClicked()|handleGotNewFgColor(VelaColor)|chooseBgColorClicked()|"
        "handleGotNewBgColor(VelaColor)|handleCycleTimeChanged(QString)|"
        "handleFgTransToggled(bool)|handleBgTransToggled(bool)|handleReverseChanged(bool)");
    row("White Cross Fade",
        "handleSetTemperatureValueStart(int)|handleSetIntensityValueStart(int)|"
        "handleSetWarmStart(int)|handleSetCoolStart(int)|handleSetInputTypeStart(int)|"
        "handleSetTemperatureValueEnd(int)|handleSetIntensityValueEnd(int)|"
        "handleSetWarmEnd(int)|handleSetCoolEnd(int)|handleSetInputTypeEnd(int)");
    row("Animation",
        "loadButtonClicked()|browseButtonClicked()|setFrameCountLabel(QString)|"
        "setImageSizeLabel(QString)|setOutputSizeLabel(QString)|"
        "handleInitializeProgressDialog(int)|handleUpdateProgressDialog(int)|fpsChanged(QString)|"
        "xOffsetReturnPressed()|yOffsetReturnPressed()|scaleReturnPressed()");
    row("Image Scroll", "handleUpdateImageSizeLabel(QString)|handleUpdateOutputSizeLabel(QString)|"
                        "handleBrowseButtonClicked()|handleLoadButtonClicked()");
    row("XYBurst", "handleUpdateOutputSizeLabel(QString)");
    row("XYSpiral", "handleUpdateOutputSizeLabel(QString)");
    row("Text",
        "m_lineEdit_textChanged(QString)|m_fontComboBox_activated(QString)|"
        "m_boldCheckBox_toggled(bool)|m_italicCheckBox_toggled(bool)|"
        "m_underlineCheckBox_toggled(bool)|m_sizeSpinBox_valueChanged(int)|"
        "m_cycleTimeEdit_textChanged(QString)|m_fgTransparentCheckBox_toggled(bool)|"
        "m_bgTransparentCheckBox_toggled(bool)|m_smoothCheckBox_toggled(bool)|"
        "textColorClicked()|gotNewTextColor(QColor)|bgColorClicked()|gotNewBgColor(QColor)");
}

void FormValuesTest::slotsHaveTheirNames()
{
    QFETCH(const QString, names);
    Stage stage(QTest::currentDataTag());
    stage.open();
    for (const QString& name : names.split(QLatin1Char('|'))) {
        QVERIFY2(stage.form->metaObject()->indexOfSlot(name.toLatin1().constData()) >= 0,
                 qPrintable(name));
    }
}

void FormValuesTest::signalsHaveTheirNames()
{
    const auto has = [](const QWidget* form, const char* name) {
        return form->metaObject()->indexOfSignal(name) >= 0;
    };
    for (const FormCase& what : kForms) {
        Stage stage(what.type);
        stage.open();
        const bool isRainbow = qstrcmp(what.type, "Custom Rainbow") == 0;
        QVERIFY2(has(stage.form.get(), isRainbow ? "propertyChanged(QString,QString)"
                                                 : "valueChanged(QString,QString)"),
                 what.type);
    }
    Stage film("Animation");
    film.open();
    QVERIFY(has(film.form.get(), "browseClicked()"));
    QVERIFY(has(film.form.get(), "loadClicked()"));
    QVERIFY(has(film.form.get(), "flashEffectPreloadToggled(bool)"));
}

void FormValuesTest::noEffectOrNoModelIsFatal()
{
    refusesNull<FixedColorEffect, FixedColorWidget>();
    refusesNull<ChasingRainbowEffect, ChasingRainbowWidget>();
    refusesNull<CrossFadeEffect, CrossFadeWidget>();
    refusesNull<SelectionEffect, SelectionWidget>();
    refusesNull<FixedWhiteEffect, FixedWhiteWidget>();
    refusesNull<RandomColorEffect, RandomColorWidget>();
    refusesNull<CustomRainbowEffect, CustomRainbowWidget>();
    refusesNull<SparkleEffect, SparkleWidget>();
    refusesNull<SparkleGroupEffect, SparkleGroupWidget>();
    refusesNull<StreakEffect, StreakWidget>();
    refusesNull<SweepEffect, SweepWidget>();
    refusesNull<WhiteCrossFadeEffect, WhiteCrossFadeWidget>();
    refusesNull<FlashEffect, FlashEffectWidget>();
    refusesNull<ImageEffect, ImageWidget>();
    refusesNull<XYBurstEffect, XYBurstWidget>();
    refusesNull<XYSpiralEffect, XYSpiralWidget>();
    refusesNull<XYTextEffect, XYTextWidget>();
}

void FormValuesTest::aFormOutlivesItsEffect()
{
    QFETCH(const int, index);
    Stage stage(kForms[index].type, kForms[index].keys);
    stage.open();
    stage.effect.reset();
    for (QWidget* const control : controlsOf(stage.form.get())) {
        if (auto* const line = dynamic_cast<QLineEdit*>(control)) {
            retype(line, "5");
            QTest::keyClick(line, Qt::Key_Return);
        } else if (auto* const spin = dynamic_cast<QSpinBox*>(control)) {
            spin->stepUp();
            QTest::keyClick(spin, Qt::Key_Return);
        } else if (auto* const slider = dynamic_cast<QSlider*>(control)) {
            slider->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        } else if (auto* const box = dynamic_cast<QComboBox*>(control)) {
            box->setCurrentIndex(1 - box->currentIndex());
        } else if (auto* const push = dynamic_cast<QAbstractButton*>(control)) {
            if (plain(push->text()) != QLatin1String("Browse")) { // asks for a file first
                push->click();
            }
        }
    }
    QCOMPARE(dialogRuns, 0);
}

void FormValuesTest::numbersAreReadInAnyCountry()
{
    const QLocale former;
    QLocale::setDefault(QLocale(QStringLiteral("ar_EG"))); // has digits of its own
    Stage spiral("XYSpiral");
    spiral.open();
    QTest::keyClick(labelled<QSpinBox>(spiral.form.get(), "Center X:"), Qt::Key_Down);
    Stage film("Animation");
    film.open();
    auto* const offset = labelled<QSpinBox>(film.form.get(), "X Offset:");
    QTest::keyClick(offset, Qt::Key_Down);
    QTest::keyClick(offset, Qt::Key_Return);
    QLocale::setDefault(former);
    QCOMPARE(static_cast<const XYSpiralEffect*>(spiral.effect.get())->centerOffsetX(), -1.0);
    QCOMPARE(static_cast<const FlashEffect*>(film.effect.get())->xOffset(), -1.0);
}

void FormValuesTest::mnemonicsAreUnique()
{
    QFETCH(const int, index);
    Stage stage(kForms[index].type);
    stage.open();
    QSet<QChar> taken{'E', 'F', 'H', 'S'}; // the menus of the main window
    const auto mnemonics = mnemonicsOf(stage.form.get());
    for (const auto& mnemonic : mnemonics) {
        QVERIFY2(!taken.contains(mnemonic.first), qPrintable(mnemonic.second));
        taken.insert(mnemonic.first);
    }
    QVERIFY(!mnemonics.isEmpty());
}

void FormValuesTest::mnemonicsReachTheirControls()
{
    Stage stage("Streak");
    stage.open();
    stage.form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(stage.form.get()));
    const auto press = [&](const char* text) {
        for (const auto& mnemonic : mnemonicsOf(stage.form.get())) {
            if (plain(mnemonic.second) == QLatin1String(text)) {
                QTest::keyClick(stage.form.get(), mnemonic.first.toLatin1(), Qt::AltModifier);
            }
        }
    };
    press("Pulse Width");
    QVERIFY(labelled<QSpinBox>(stage.form.get(), "Pulse Width")->hasFocus());
    press("Wrap");
    QTRY_VERIFY(static_cast<const StreakEffect*>(stage.effect.get())->wrap());
    press("Background Color");
    QTRY_COMPARE(dialogRuns, 1);
}

QTEST_MAIN(FormValuesTest)
#include "FormValuesTest.moc"
