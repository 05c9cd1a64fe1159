#include "editor/ColorChooser.h"
#include "editor/ColorSwatch.h"
#include "tests/editor/FormStage.h"

#include <QFontComboBox>
#include <QRadioButton>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

namespace {

/// A form as a reader sees it.
struct Sight
{
    QString title;
    QStringList boxes;
    QStringList labels;  // of controls
    QStringList buttons; // check boxes, radio and push buttons
    bool staysOnTop = false;
};

template <typename Control>
QStringList texts(const QWidget* form)
{
    QStringList found;
    for (const Control* const control : form->findChildren<Control*>()) {
        found << plain(control->text());
    }
    return found;
}

/// The labels of controls from top to bottom, those of hidden pages last.
QStringList labelsAsRead(const QWidget* form)
{
    QVector<QPair<int, QString>> shown;
    QStringList hidden;
    for (const QLabel* const label : form->findChildren<QLabel*>()) {
        if (label->buddy() == nullptr) {
            continue;
        }
        if (label->isVisible()) {
            shown.append({label->mapTo(form, QPoint()).y(), plain(label->text())});
        } else {
            hidden << plain(label->text());
        }
    }
    std::stable_sort(shown.begin(), shown.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    QStringList texts;
    for (const auto& label : qAsConst(shown)) {
        texts << label.second;
    }
    return texts + hidden;
}

template <typename EffectClass, typename Form>
Sight sight()
{
    FormStage<EffectClass, Form> stage;
    stage.open();
    Sight seen;
    seen.title = stage.form->windowTitle();
    seen.staysOnTop = stage.form->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    for (const QGroupBox* const box : stage.form->template findChildren<QGroupBox*>()) {
        seen.boxes << box->title();
    }
    seen.labels = labelsAsRead(stage.form.get());
    seen.buttons = texts<QCheckBox>(stage.form.get()) + texts<QRadioButton>(stage.form.get()) +
                   texts<QPushButton>(stage.form.get());
    return seen;
}

struct LayoutCase
{
    const char* title;
    std::function<Sight()> look;
    const char* boxes;
    const char* labels;
    const char* buttons;
};

const QVector<LayoutCase>& layouts()
{
    static const QVector<LayoutCase> all{
        {"Fixed Color", sight<FixedColorEffect, FixedColorWidget>, "Colors", "RGB Color",
         "Choose Color"},
        {"Chasing Rainbow", sight<ChasingRainbowEffect, ChasingRainbowWidget>,
         "Timing|Direction|Colors", "Cycle Time (sec):|Light-to-Light Offset (deg):|Start Color",
         "Reverse Direction|Reverse Color Cycle|Choose Color"},
        {"Cross Fade", sight<CrossFadeEffect, CrossFadeWidget>, "Timing|Colors",
         "Cycle Time (sec):|Start Color|End Color", "Trans|Trans|Choose Color|Choose Color"},
        {"Selection", sight<SelectionEffect, SelectionWidget>, "Colors",
         "Selection Color|Background Color", "Choose Color|Choose Color"},
        {"Fixed White", sight<FixedWhiteEffect, FixedWhiteWidget>, "White Levels",
         "Input type:|Color Temp:|Intensity:|Warm:|Cool:", ""},
        {"Random Color", sight<RandomColorEffect, RandomColorWidget>, "Timing|Colors",
         "Time per color (sec):|Fade Time (sec):|Cycle after this many colors:|"
         "Light-to-Light Offset (sec):|Start Color",
         "Choose Color"},
        {"Custom Rainbow", sight<CustomRainbowEffect, CustomRainbowWidget>, "Colors|Timing",
         "Cycle Time (sec):|Light-to-Light Offset (sec):", "New Color"},
        {"Sparkle", sight<SparkleEffect, SparkleWidget>, "Timing|Appearance|Colors",
         "Decay Rate|Density|Time Constant|Sparkle Color|Background Color",
         "Transparent|Transparent|Choose Color|Choose Color"},
        {"Group Sparkle", sight<SparkleGroupEffect, SparkleGroupWidget>, "Timing|Appearance|Colors",
         "Decay Rate|Density|Time Constant|Sparkle Color|Background Color",
         "Trans|Trans|Choose Color|Choose Color"},
        {"Streak", sight<StreakEffect, StreakWidget>, "Timing|Pulse|Colors",
         "Cycle Time (sec):|Pulse Width|Forward Tail Width|Reverse Tail Width|Pulse Color|"
         "Background Color",
         "Reverse|Wrap|Trans|Trans|Choose Color|Choose Color"},
        {"Sweep", sight<SweepEffect, SweepWidget>, "Timing|Colors",
         "Cycle Time (sec):|Sweep Color|Background Color",
         "Reverse|Trans|Trans|Choose Color|Choose Color"},
        {"White Cross Fade", sight<WhiteCrossFadeEffect, WhiteCrossFadeWidget>,
         "Timing|Starting White Levels|Ending White Levels",
         "Cycle Time (sec):|Input type:|Color Temp:|Intensity:|Input type:|Color Temp:|Intensity:|"
         "Warm:|Cool:|Warm:|Cool:",
         "Trans|Trans"},
        {"Animation", sight<FlashEffect, FlashEffectWidget>, "Animation|Timing|Geometry|Colors",
         "Animation Directory:|Frame Count:|Playback Frames Per Second:|Image Size:|Output Size:|"
         "X Offset:|Y Offset:|Scale Factor:|Transparent Color",
         "Preload|Smooth|Enabled|Browse|Load|Choose Color"},
        {"Image Scroll", sight<ImageEffect, ImageWidget>, "Image|Timing|Geometry|Colors",
         "Image File:|Cycle Time (sec):|Image Size:|Output Size:|X:|Y:|Scale:|X:|Y:|Scale:|"
         "Transparent Color|Background Color",
         "Smooth|Enabled|Browse|Load|Choose Color|Choose Color"},
        {"XY Burst", sight<XYBurstEffect, XYBurstWidget>, "Timing|Geometry",
         "Cycle Time (sec):|Ring Width:|Output Size:|Center X:|Center Y:",
         "Reverse Direction|Reverse Rainbow"},
        {"XY Spiral", sight<XYSpiralEffect, XYSpiralWidget>, "Timing|Geometry",
         "Cycle Time (sec):|Twist:|Arms:|Rotation|Output Size:|Center X:|Center Y:",
         "Clockwise|Counterclockwise"},
        {"XY Text", sight<XYTextEffect, XYTextWidget>, "Text String|Timing|Colors",
         "Font:|Size (pixels):|Cycle Time (sec):|Text Color|Background Color",
         "Bold|Italic|Smooth|Trans|Trans|Choose Color|Choose Color"},
    };
    return all;
}

} // namespace

void chooseColor(const Effect& /*effect*/, MapModel* /*model*/, VelaColor /*current*/,
                 QWidget* /*form*/, const ColorHandler& /*handler*/)
{}

/// What stands on each parameter form, and in which ranges.
class FormLayoutTest : public QObject
{
    Q_OBJECT
private slots:
    void aFormHasItsControls_data();
    void aFormHasItsControls();
    void spinBoxesHaveTheirRanges_data();
    void spinBoxesHaveTheirRanges();
    void labelColumnsStandInLine();
    void controlsCanBeNamedAndReached();
    void cleanupTestCase() { m_stages.clear(); }

private:
    /// The form of a stage that stays until the end of all tests.
    template <typename EffectClass, typename Form>
    QWidget* stage()
    {
        auto made = std::make_shared<FormStage<EffectClass, Form>>();
        made->open();
        m_stages.push_back(made);
        return made->form.get();
    }

    std::vector<std::shared_ptr<void>> m_stages;
};

void FormLayoutTest::aFormHasItsControls_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < layouts().size(); ++i) {
        QTest::newRow(layouts().at(i).title) << i;
    }
    QCOMPARE(layouts().size(), 17);
}

void FormLayoutTest::aFormHasItsControls()
{
    QFETCH(const int, index);
    const LayoutCase& what = layouts().at(index);
    const Sight seen = what.look();
    const auto split = [](const char* text) {
        return QString::fromLatin1(text).split(QLatin1Char('|'), Qt::SkipEmptyParts);
    };
    QCOMPARE(seen.title, QString::fromLatin1(what.title));
    QCOMPARE(seen.boxes, split(what.boxes));
    QCOMPARE(seen.labels, split(what.labels));
    QCOMPARE(seen.buttons, split(what.buttons));
    QVERIFY(seen.staysOnTop);
}

void FormLayoutTest::spinBoxesHaveTheirRanges_data()
{
    QTest::addColumn<QWidget*>("form");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QWidget* const random = stage<RandomColorEffect, RandomColorWidget>();
    QWidget* const sparkle = stage<SparkleEffect, SparkleWidget>();
    QWidget* const group = stage<SparkleGroupEffect, SparkleGroupWidget>();
    QWidget* const streak = stage<StreakEffect, StreakWidget>();
    QWidget* const film = stage<FlashEffect, FlashEffectWidget>();
    QWidget* const image = stage<ImageEffect, ImageWidget>();
    QWidget* const burst = stage<XYBurstEffect, XYBurstWidget>();
    QWidget* const spiral = stage<XYSpiralEffect, XYSpiralWidget>();
    QWidget* const text = stage<XYTextEffect, XYTextWidget>();
    const auto row = [](QWidget* form, const char* label, int least, int most) {
        QTest::addRow("%s %s", qPrintable(form->windowTitle()), label)
            << form << QString::fromLatin1(label) << least << most;
    };
    row(random, "Cycle after this many colors:", 1, 1000);
    row(sparkle, "Decay Rate", 1, 100);
    row(sparkle, "Density", 1, 100);
    row(sparkle, "Time Constant", 1, 100);
    row(group, "Decay Rate", 1, 100);
    row(group, "Density", 1, 100);
    row(streak, "Pulse Width", 1, 1000);
    row(streak, "Forward Tail Width", 0, 1000);
    row(streak, "Reverse Tail Width", 0, 1000);
    row(film, "Playback Frames Per Second:", 1, 40);
    row(film, "X Offset:", -1000, 1000);
    row(film, "Y Offset:", -1000, 1000);
    row(image, "X:", -9999, 9999);
    row(image, "Y:", -9999, 9999);
    row(burst, "Ring Width:", 1, 10000);
    row(burst, "Center X:", -9999, 9999);
    row(burst, "Center Y:", -9999, 9999);
    row(spiral, "Twist:", -100, 100);
    row(spiral, "Arms:", 1, 20);
    row(spiral, "Center X:", -9999, 9999);
    row(spiral, "Center Y:", -9999, 9999);
    row(text, "Size (pixels):", 1, 500);
}

void FormLayoutTest::spinBoxesHaveTheirRanges()
{
    QFETCH(QWidget*, form);
    QFETCH(const QString, label);
    QFETCH(const int, least);
    QFETCH(const int, most);
    int boxes = 0;
    for (const QLabel* const text : form->findChildren<QLabel*>()) {
        if (plain(text->text()) == label) {
            const auto* const spin = dynamic_cast<QSpinBox*>(text->buddy());
            QVERIFY(spin != nullptr);
            QCOMPARE(spin->minimum(), least);
            QCOMPARE(spin->maximum(), most);
            QCOMPARE(spin->singleStep(), 1);
            ++boxes;
        }
    }
    QVERIFY(boxes > 0);
}

void FormLayoutTest::labelColumnsStandInLine()
{
    FormStage<StreakEffect, StreakWidget> stage;
    stage.open();
    QVERIFY(QTest::qWaitForWindowExposed(stage.form.get()));
    const auto left = [&](const QWidget* control) {
        return control->mapTo(stage.form.get(), QPoint()).x();
    };
    const int line = left(labelled<QLineEdit>(stage.form.get(), "Cycle Time (sec):"));
    QCOMPARE(left(labelled<QSpinBox>(stage.form.get(), "Pulse Width")), line);
    QCOMPARE(left(stage.form->findChildren<ColorSwatch*>().at(0)), line);
    QCOMPARE(left(button<QCheckBox>(stage.form.get(), "Wrap")), line);

    FormStage<WhiteCrossFadeEffect, WhiteCrossFadeWidget> white;
    white.open();
    QVERIFY(QTest::qWaitForWindowExposed(white.form.get()));
    const auto whiteLeft = [&](const QWidget* control) {
        return control->mapTo(white.form.get(), QPoint()).x();
    };
    const int trans = whiteLeft(button<QCheckBox>(white.form.get(), "Trans"));
    QCOMPARE(whiteLeft(labelled<QLineEdit>(white.form.get(), "Cycle Time (sec):")), trans);
    for (const char* const label : {"Input type:", "Color Temp:", "Intensity:"}) {
        QCOMPARE(whiteLeft(labelled<QWidget>(white.form.get(), label)), trans);
    }
}

void FormLayoutTest::controlsCanBeNamedAndReached()
{
    FormStage<FlashEffect, FlashEffectWidget> stage;
    stage.open();
    int controls = 0;
    for (const QWidget* const control : stage.form->findChildren<QWidget*>()) {
        const bool isInner = control->objectName().startsWith(QLatin1String("qt_"));
        if (isInner || (control->focusPolicy() & Qt::TabFocus) == 0) {
            continue;
        }
        const auto* const push = dynamic_cast<const QAbstractButton*>(control);
        QVERIFY2(!control->accessibleName().isEmpty() ||
                     (push != nullptr && !push->text().isEmpty()),
                 control->metaObject()->className());
        ++controls;
    }
    QCOMPARE(controls, 11);
}

QTEST_MAIN(FormLayoutTest)
#include "FormLayoutTest.moc"
