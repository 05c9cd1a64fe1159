#include "editor/ColorChooser.h"
#include "editor/ColorSwatch.h"
#include "tests/editor/FormStage.h"

#include <QComboBox>
#include <QFontComboBox>
#include <QRadioButton>
#include <QStackedWidget>

#include <functional>

namespace {

/// What the colour dialog would do: set by a test, used by the forms in place of the dialog.
struct Dialog
{
    VelaColor offered;
    QVector<VelaColor> passed; // what the user passes through
    bool isRejected = false;
    int runs = 0;
} dialog;

struct WriteCase
{
    const char* name;
    /// Opens the form of a fresh effect, acts, and answers the effect's value.
    std::function<QVariant()> act;
    QVariant expected;
};

template <typename EffectClass, typename Form, typename Act, typename Read>
std::function<QVariant()> onForm(Act act, Read read)
{
    return [act, read] {
        FormStage<EffectClass, Form> stage;
        stage.open();
        act(stage.form.get());
        return QVariant::fromValue((stage.effect.*read)());
    };
}

std::function<void(QWidget*)> typed(const char* label, const char* text, int nth = 0)
{
    return [=](QWidget* form) { retype(labelled<QLineEdit>(form, label, nth), text); };
}

std::function<void(QWidget*)> spun(const char* label, const char* text, int nth = 0)
{
    return [=](QWidget* form) { retype(labelled<QSpinBox>(form, label, nth), text); };
}

std::function<void(QWidget*)> ticked(const char* text, int nth = 0)
{
    return [=](QWidget* form) {
        // Wide enough to be hit wherever the label ends.
        QTest::keyClick(button<QCheckBox>(form, text, nth), Qt::Key_Space);
    };
}

std::function<void(QWidget*)> slid(const char* label, int value, int nth = 0)
{
    return [=](QWidget* form) { labelled<QSlider>(form, label, nth)->setValue(value); };
}

const QVector<WriteCase>& writeCases()
{
    using CR = ChasingRainbowEffect;
    using CRW = ChasingRainbowWidget;
    using CF = CrossFadeEffect;
    using CFW = CrossFadeWidget;
    using FW = FixedWhiteEffect;
    using FWW = FixedWhiteWidget;
    using RC = RandomColorEffect;
    using RCW = RandomColorWidget;
    using SP = SparkleEffect;
    using SPW = SparkleWidget;
    using SG = SparkleGroupEffect;
    using SGW = SparkleGroupWidget;
    using ST = StreakEffect;
    using STW = StreakWidget;
    using SW = SweepEffect;
    using SWW = SweepWidget;
    using WC = WhiteCrossFadeEffect;
    using WCW = WhiteCrossFadeWidget;
    static const QVector<WriteCase> cases{
        {"rainbow cycle", onForm<CR, CRW>(typed("Cycle Time (sec):", "2.5"), &CR::cycleSeconds),
         2.5},
        {"rainbow cycle emptied",
         onForm<CR, CRW>(typed("Cycle Time (sec):", ""), &CR::cycleSeconds), 0.0},
        {"rainbow cycle junk", onForm<CR, CRW>(typed("Cycle Time (sec):", "1x"), &CR::cycleSeconds),
         0.0},
        {"rainbow offset",
         onForm<CR, CRW>(typed("Light-to-Light Offset (deg):", "-7.25"), &CR::groupOffset), -7.25},
        {"rainbow direction", onForm<CR, CRW>(ticked("Reverse Direction"), &CR::reverseDir), true},
        {"rainbow color cycle", onForm<CR, CRW>(ticked("Reverse Color Cycle"), &CR::reverseColor),
         true},
        {"cross fade time", onForm<CF, CFW>(typed("Cycle Time (sec):", "0.4"), &CF::time), 0.4},
        {"cross fade start", onForm<CF, CFW>(ticked("Trans", 0), &CF::startTrans), true},
        {"cross fade end", onForm<CF, CFW>(ticked("Trans", 1), &CF::endTrans), true},
        {"white temperature", onForm<FW, FWW>(slid("Color Temp:", 510), &FW::temperature), 510},
        {"white intensity", onForm<FW, FWW>(slid("Intensity:", 0), &FW::intensity), 0U},
        {"white warm", onForm<FW, FWW>(slid("Warm:", 255), &FW::warm), 255U},
        {"white cool", onForm<FW, FWW>(slid("Cool:", 1), &FW::cool), 1U},
        {"white beyond the range", onForm<FW, FWW>(slid("Color Temp:", 9999), &FW::temperature),
         510},
        {"random time", onForm<RC, RCW>(typed("Time per color (sec):", "3.5"), &RC::time), 3.5},
        {"random fade", onForm<RC, RCW>(typed("Fade Time (sec):", "0.25"), &RC::fadeTime), 0.25},
        {"random count",
         onForm<RC, RCW>(spun("Cycle after this many colors:", "17"), &RC::cycleCount), 17U},
        {"random offset", onForm<RC, RCW>(typed("Light-to-Light Offset (sec):", "-1"), &RC::offset),
         -1.0},
        {"sparkle decay", onForm<SP, SPW>(spun("Decay Rate", "42"), &SP::decayRate), 42},
        {"sparkle density", onForm<SP, SPW>(spun("Density", "100"), &SP::density), 100},
        {"sparkle constant", onForm<SP, SPW>(spun("Time Constant", "9"), &SP::timeConstant), 9.0},
        {"sparkle transparent", onForm<SP, SPW>(ticked("Transparent", 0), &SP::sparkleTransparency),
         true},
        {"sparkle ground", onForm<SP, SPW>(ticked("Transparent", 1), &SP::bgTransparency), true},
        {"group sparkle decay", onForm<SG, SGW>(spun("Decay Rate", "42"), &SG::decayRate), 42},
        {"group sparkle density", onForm<SG, SGW>(spun("Density", "99"), &SG::density), 99},
        {"group sparkle constant", onForm<SG, SGW>(typed("Time Constant", "33"), &SG::timeConstant),
         33.0},
        {"group sparkle no whole constant",
         onForm<SG, SGW>(typed("Time Constant", "3.5"), &SG::timeConstant), 0.0},
        {"group sparkle transparent", onForm<SG, SGW>(ticked("Trans", 0), &SG::sparkleTransparency),
         true},
        {"group sparkle ground", onForm<SG, SGW>(ticked("Trans", 1), &SG::bgTransparency), true},
        {"streak cycle", onForm<ST, STW>(typed("Cycle Time (sec):", "12"), &ST::cycleSeconds),
         12.0},
        {"streak no whole cycle",
         onForm<ST, STW>(typed("Cycle Time (sec):", "2.5"), &ST::cycleSeconds), 0.0},
        {"streak negative cycle",
         onForm<ST, STW>(typed("Cycle Time (sec):", "-2"), &ST::cycleSeconds), 0.0},
        {"streak width", onForm<ST, STW>(spun("Pulse Width", "1000"), &ST::width), 1000U},
        {"streak forward tail", onForm<ST, STW>(spun("Forward Tail Width", "6"), &ST::fTail), 6U},
        {"streak reverse tail", onForm<ST, STW>(spun("Reverse Tail Width", "7"), &ST::rTail), 7U},
        {"streak reverse", onForm<ST, STW>(ticked("Reverse"), &ST::reverse), true},
        {"streak wrap", onForm<ST, STW>(ticked("Wrap"), &ST::wrap), true},
        {"streak pulse", onForm<ST, STW>(ticked("Trans", 0), &ST::fgTransparency), true},
        {"streak ground", onForm<ST, STW>(ticked("Trans", 1), &ST::bgTransparency), true},
        {"sweep cycle", onForm<SW, SWW>(typed("Cycle Time (sec):", "3"), &SW::cycleSeconds), 3.0},
        {"sweep no whole cycle",
         onForm<SW, SWW>(typed("Cycle Time (sec):", "3.0"), &SW::cycleSeconds), 0.0},
        {"sweep reverse", onForm<SW, SWW>(ticked("Reverse"), &SW::reverse), true},
        {"sweep color", onForm<SW, SWW>(ticked("Trans", 0), &SW::fgTransparent), true},
        {"sweep ground", onForm<SW, SWW>(ticked("Trans", 1), &SW::bgTransparent), true},
        {"white fade time", onForm<WC, WCW>(typed("Cycle Time (sec):", "1.5"), &WC::time), 1.5},
        {"white fade start", onForm<WC, WCW>(ticked("Trans", 0), &WC::startTrans), true},
        {"white fade end", onForm<WC, WCW>(ticked("Trans", 1), &WC::endTrans), true},
        {"white fade start temperature",
         onForm<WC, WCW>(slid("Color Temp:", 3, 0), &WC::temperatureStart), 3},
        {"white fade start intensity",
         onForm<WC, WCW>(slid("Intensity:", 4, 0), &WC::intensityStart), 4U},
        {"white fade start warm", onForm<WC, WCW>(slid("Warm:", 5, 0), &WC::warmStart), 5U},
        {"white fade start cool", onForm<WC, WCW>(slid("Cool:", 6, 0), &WC::coolStart), 6U},
        {"white fade end temperature",
         onForm<WC, WCW>(slid("Color Temp:", 7, 1), &WC::temperatureEnd), 7},
        {"white fade end intensity", onForm<WC, WCW>(slid("Intensity:", 8, 1), &WC::intensityEnd),
         8U},
        {"white fade end warm", onForm<WC, WCW>(slid("Warm:", 9, 1), &WC::warmEnd), 9U},
        {"white fade end cool", onForm<WC, WCW>(slid("Cool:", 10, 1), &WC::coolEnd), 10U},
    };
    return cases;
}

} // namespace

// The forms' colour dialog, in the hands of the tests.
void chooseColor(const Effect& /*effect*/, MapModel* /*model*/, VelaColor current,
                 QWidget* /*form*/, const ColorHandler& handler)
{
    dialog.offered = current;
    ++dialog.runs;
    for (const VelaColor& color : qAsConst(dialog.passed)) {
        handler(color);
    }
    if (dialog.isRejected) {
        handler(current);
    }
}

/// The forms of the effects that paint rows, driven as a user does.
class EffectFormsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { dialog = Dialog(); }
    void controlsWriteThrough_data();
    void controlsWriteThrough();
    void openingWritesNothing();
    void everyKeyReachesTheEffect();
    void wholeSecondsAreShownAndTheRestIsKept();
    void valuesBeyondAControlStayTheEffects();
    void whiteInputChoosesThePage();
    void bothWhitesOfAFadeHaveTheirOwnPage();
    void aWhiteOpensOnItsPage_data();
    void aWhiteOpensOnItsPage();
    void warmAndCoolSpinBoxesFollowTheirSliders();
    void spinBoxesOfAFadeWriteTheirLevels();
    void aColorGoesLiveToEffectAndSwatch();
    void aRejectedColorComesBack();
    void groupSparklesTakeScreenColors();
    void aFormOutlivesItsEffect();

private:
    static QColor shown(const QWidget* form, int nth);
};

QColor EffectFormsTest::shown(const QWidget* form, int nth)
{
    const ColorSwatch* const swatch = form->findChildren<ColorSwatch*>().at(nth);
    return swatch->palette().color(swatch->backgroundRole());
}

void EffectFormsTest::controlsWriteThrough_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < writeCases().size(); ++i) {
        QTest::newRow(writeCases().at(i).name) << i;
    }
}

void EffectFormsTest::controlsWriteThrough()
{
    QFETCH(const int, index);
    const WriteCase& what = writeCases().at(index);
    QCOMPARE(what.act(), what.expected);
}

void EffectFormsTest::openingWritesNothing()
{
    FormStage<StreakEffect, StreakWidget> stage;
    stage.effect.setCycleTime(2.5);
    stage.effect.setWidth(5000);
    QString before;
    QTextStream out(&before);
    stage.effect.save(out);
    stage.open();
    stage.form.reset();
    QString after;
    QTextStream again(&after);
    stage.effect.save(again);
    QVERIFY(after.contains(QStringLiteral("2.5")));
    QCOMPARE(after, before);
}

void EffectFormsTest::everyKeyReachesTheEffect()
{
    FormStage<ChasingRainbowEffect, ChasingRainbowWidget> stage;
    stage.open();
    QLineEdit* const line = labelled<QLineEdit>(stage.form.get(), "Cycle Time (sec):");
    line->selectAll();
    QTest::keyClick(line, Qt::Key_1);
    QCOMPARE(stage.effect.cycleSeconds(), 1.0);
    QTest::keyClick(line, Qt::Key_2);
    QCOMPARE(stage.effect.cycleSeconds(), 12.0);
}

void EffectFormsTest::wholeSecondsAreShownAndTheRestIsKept()
{
    FormStage<SweepEffect, SweepWidget> stage;
    stage.effect.setCycleTime(2.5);
    stage.open();
    QCOMPARE(labelled<QLineEdit>(stage.form.get(), "Cycle Time (sec):")->text(),
             QStringLiteral("2"));
    QCOMPARE(stage.effect.cycleSeconds(), 2.5);
}

void EffectFormsTest::valuesBeyondAControlStayTheEffects()
{
    FormStage<RandomColorEffect, RandomColorWidget> stage;
    stage.effect.setCycleCount(5000);
    stage.open();
    QCOMPARE(labelled<QSpinBox>(stage.form.get(), "Cycle after this many colors:")->value(), 1000);
    QCOMPARE(stage.effect.cycleCount(), 5000U);
}

void EffectFormsTest::whiteInputChoosesThePage()
{
    FormStage<FixedWhiteEffect, FixedWhiteWidget> stage;
    stage.open();
    QComboBox* const input = labelled<QComboBox>(stage.form.get(), "Input type:");
    const QStackedWidget* const pages = stage.form->findChild<QStackedWidget*>();
    QCOMPARE(input->itemText(0), QStringLiteral("Color Temp - Intensity"));
    QCOMPARE(input->itemText(1), QStringLiteral("Warm - Cool"));
    QCOMPARE(input->count(), 2);
    QCOMPARE(pages->currentIndex(), 0);
    QTest::keyClick(input, Qt::Key_Down);
    QCOMPARE(pages->currentIndex(), 1);
    QCOMPARE(stage.effect.inputType(), 1U);
}

void EffectFormsTest::bothWhitesOfAFadeHaveTheirOwnPage()
{
    FormStage<WhiteCrossFadeEffect, WhiteCrossFadeWidget> stage;
    stage.open();
    const QList<QStackedWidget*> pages = stage.form->findChildren<QStackedWidget*>();
    QCOMPARE(pages.size(), 2);
    QTest::keyClick(labelled<QComboBox>(stage.form.get(), "Input type:", 1), Qt::Key_Down);
    QCOMPARE(pages.at(0)->currentIndex(), 0);
    QCOMPARE(pages.at(1)->currentIndex(), 1);
    QCOMPARE(stage.effect.inputTypeStart(), 0U);
    QCOMPARE(stage.effect.inputTypeEnd(), 1U);
    QTest::keyClick(labelled<QComboBox>(stage.form.get(), "Input type:", 0), Qt::Key_Down);
    QTest::keyClick(labelled<QComboBox>(stage.form.get(), "Input type:", 1), Qt::Key_Up);
    QCOMPARE(pages.at(0)->currentIndex(), 1);
    QCOMPARE(pages.at(1)->currentIndex(), 0);
    QCOMPARE(stage.effect.inputTypeStart(), 1U);
    QCOMPARE(stage.effect.inputTypeEnd(), 0U);
}

void EffectFormsTest::aWhiteOpensOnItsPage_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("page");
    QTest::newRow("temperature") << 0U << 0 << 0;
    QTest::newRow("levels") << 1U << 1 << 1;
    QTest::newRow("unknown") << 7U << -1 << 1; // which the effect takes as levels
    QTest::newRow("largest") << 4294967295U << -1 << 1;
}

void EffectFormsTest::aWhiteOpensOnItsPage()
{
    QFETCH(const quint32, type);
    QFETCH(const int, index);
    QFETCH(const int, page);
    FormStage<FixedWhiteEffect, FixedWhiteWidget> stage;
    stage.effect.setInputType(type);
    stage.effect.setWarm(1000); // beyond its slider
    stage.open();
    QCOMPARE(labelled<QComboBox>(stage.form.get(), "Input type:")->currentIndex(), index);
    QCOMPARE(stage.form->findChild<QStackedWidget*>()->currentIndex(), page);
    QCOMPARE(labelled<QSlider>(stage.form.get(), "Warm:")->value(), 255);
    QCOMPARE(stage.effect.inputType(), type);
    QCOMPARE(stage.effect.warm(), 1000U);
}

void EffectFormsTest::spinBoxesOfAFadeWriteTheirLevels()
{
    FormStage<WhiteCrossFadeEffect, WhiteCrossFadeWidget> stage;
    stage.effect.setInputTypeStart(1);
    stage.effect.setInputTypeEnd(1);
    stage.open();
    const QList<QSpinBox*> spins = stage.form->findChildren<QSpinBox*>();
    QCOMPARE(spins.size(), 4);
    int level = 11;
    for (QSpinBox* const spin : spins) {
        QCOMPARE(spin->minimum(), 0);
        QCOMPARE(spin->maximum(), 255);
        retype(spin, QByteArray::number(level++).constData());
    }
    QCOMPARE(stage.effect.warmStart(), 11U);
    QCOMPARE(stage.effect.coolStart(), 12U);
    QCOMPARE(stage.effect.warmEnd(), 13U);
    QCOMPARE(stage.effect.coolEnd(), 14U);
}

void EffectFormsTest::warmAndCoolSpinBoxesFollowTheirSliders()
{
    FormStage<FixedWhiteEffect, FixedWhiteWidget> stage;
    stage.effect.setInputType(1);
    stage.open();
    const QList<QSpinBox*> spins = stage.form->findChildren<QSpinBox*>();
    QCOMPARE(spins.size(), 2);
    labelled<QSlider>(stage.form.get(), "Warm:")->setValue(12);
    QCOMPARE(spins.at(0)->value(), 12);
    retype(spins.at(1), "34");
    QCOMPARE(labelled<QSlider>(stage.form.get(), "Cool:")->value(), 34);
    QCOMPARE(stage.effect.cool(), 34U);
    QCOMPARE(spins.at(0)->maximum(), 255);
}

void EffectFormsTest::aColorGoesLiveToEffectAndSwatch()
{
    FormStage<CrossFadeEffect, CrossFadeWidget> stage;
    stage.effect.setEndColor(Qt::blue);
    stage.open();
    dialog.passed = {Qt::yellow, Qt::green};
    button<QPushButton>(stage.form.get(), "Choose Color", 1)->click();
    QCOMPARE(dialog.runs, 1);
    QCOMPARE(dialog.offered.toString(), VelaColor(Qt::blue).toString());
    QCOMPARE(stage.effect.endColor().toString(), VelaColor(Qt::green).toString());
    QCOMPARE(shown(stage.form.get(), 1), QColor(Qt::green));
    // The next dialog starts where this one ended.
    dialog.passed.clear();
    button<QPushButton>(stage.form.get(), "Choose Color", 1)->click();
    QCOMPARE(dialog.offered.toString(), VelaColor(Qt::green).toString());
}

void EffectFormsTest::aRejectedColorComesBack()
{
    FormStage<FixedColorEffect, FixedColorWidget> stage;
    stage.effect.setColor(Qt::cyan);
    stage.open();
    dialog.passed = {Qt::yellow};
    dialog.isRejected = true;
    button<QPushButton>(stage.form.get(), "Choose Color")->click();
    QCOMPARE(stage.effect.color().toString(), VelaColor(Qt::cyan).toString());
    QCOMPARE(shown(stage.form.get(), 0), QColor(Qt::cyan));
}

void EffectFormsTest::groupSparklesTakeScreenColors()
{
    FormStage<SparkleGroupEffect, SparkleGroupWidget> stage;
    stage.open();
    dialog.passed = {QColor(1, 2, 3)};
    button<QPushButton>(stage.form.get(), "Choose Color", 0)->click();
    QCOMPARE(stage.effect.sparkleColor().rgb(), qRgb(1, 2, 3));
    QCOMPARE(shown(stage.form.get(), 0).rgb(), qRgb(1, 2, 3));
}

void EffectFormsTest::aFormOutlivesItsEffect()
{
    TestShow::TestMap map(2);
    auto effect = std::make_unique<StreakEffect>(map.model(), Effect::kNoGid, nullptr);
    StreakWidget form(effect.get(), map.model(), nullptr);
    effect.reset();
    retype(labelled<QLineEdit>(&form, "Cycle Time (sec):"), "7");
    retype(labelled<QSpinBox>(&form, "Pulse Width"), "8");
    button<QPushButton>(&form, "Choose Color")->click();
    QCOMPARE(dialog.runs, 0);
    form.handleGotNewFgColor(Qt::green);
    QCOMPARE(shown(&form, 0), QColor(Qt::green));
}

QTEST_MAIN(EffectFormsTest)
#include "EffectFormsTest.moc"
