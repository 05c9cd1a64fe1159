#include "editor/ColorChooser.h"
#include "tests/editor/FormStage.h"

#include <QApplication>
#include <QFileDialog>
#include <QFontComboBox>
#include <QImage>
#include <QProgressDialog>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>

namespace {

struct WriteCase
{
    const char* name;
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
    return [=](QWidget* form) {
        QLineEdit* const line = labelled<QLineEdit>(form, label, nth);
        retype(line, text);
        QTest::keyClick(line, Qt::Key_Return);
    };
}

std::function<void(QWidget*)> spun(const char* label, const char* text, int nth = 0)
{
    return [=](QWidget* form) {
        QSpinBox* const spin = labelled<QSpinBox>(form, label, nth);
        retype(spin, text);
        QTest::keyClick(spin, Qt::Key_Return);
    };
}

std::function<void(QWidget*)> ticked(const char* text, int nth = 0)
{
    return
        [=](QWidget* form) { QTest::keyClick(button<QCheckBox>(form, text, nth), Qt::Key_Space); };
}

/// The first line of the form, which no label names.
std::function<void(QWidget*)> writtenLine(const char* text)
{
    return [=](QWidget* form) { retype(form->findChildren<QLineEdit*>().at(0), text); };
}

const QVector<WriteCase>& writeCases()
{
    using FE = FlashEffect;
    using FEW = FlashEffectWidget;
    using IE = ImageEffect;
    using IEW = ImageWidget;
    using BE = XYBurstEffect;
    using BEW = XYBurstWidget;
    using SE = XYSpiralEffect;
    using SEW = XYSpiralWidget;
    using TE = XYTextEffect;
    using TEW = XYTextWidget;
    const auto counter = [](QWidget* form) {
        button<QRadioButton>(form, "Counterclockwise")->click();
    };
    static const QVector<WriteCase> cases{
        {"film directory",
         onForm<FE, FEW>(typed("Animation Directory:", "/no/films"), &FE::animationDir),
         QStringLiteral("/no/films")},
        {"film rate", onForm<FE, FEW>(spun("Playback Frames Per Second:", "7"), &FE::fps), 7},
        {"film x", onForm<FE, FEW>(spun("X Offset:", "-5"), &FE::xOffset), -5.0},
        {"film y", onForm<FE, FEW>(spun("Y Offset:", "6"), &FE::yOffset), 6.0},
        {"film scale", onForm<FE, FEW>(typed("Scale Factor:", "2.25"), &FE::scale), 2.25},
        {"film scale junk", onForm<FE, FEW>(typed("Scale Factor:", "wide"), &FE::scale), 0.0},
        {"film preload", onForm<FE, FEW>(ticked("Preload"), &FE::preload), true},
        {"film transparency", onForm<FE, FEW>(ticked("Enabled"), &FE::transEnabled), true},
        {"picture cycle", onForm<IE, IEW>(typed("Cycle Time (sec):", "12"), &IE::cycleSeconds),
         12.0},
        {"picture no whole cycle",
         onForm<IE, IEW>(typed("Cycle Time (sec):", "2.5"), &IE::cycleSeconds), 0.0},
        {"picture start x", onForm<IE, IEW>(spun("X:", "-11", 0), &IE::startX), -11.0},
        {"picture start y", onForm<IE, IEW>(spun("Y:", "12", 0), &IE::startY), 12.0},
        {"picture start scale", onForm<IE, IEW>(typed("Scale:", "0.5", 0), &IE::startScale), 0.5},
        {"picture end x", onForm<IE, IEW>(spun("X:", "13", 1), &IE::endX), 13.0},
        {"picture end y", onForm<IE, IEW>(spun("Y:", "-14", 1), &IE::endY), -14.0},
        {"picture end scale", onForm<IE, IEW>(typed("Scale:", "", 1), &IE::endScale), 0.0},
        {"picture transparency", onForm<IE, IEW>(ticked("Enabled"), &IE::transEnabled), true},
        {"burst cycle", onForm<BE, BEW>(typed("Cycle Time (sec):", "9"), &BE::cycleSeconds), 9.0},
        {"burst no whole cycle",
         onForm<BE, BEW>(typed("Cycle Time (sec):", "9.5"), &BE::cycleSeconds), 0.0},
        {"burst ring", onForm<BE, BEW>(spun("Ring Width:", "321"), &BE::ringWidth), 321U},
        {"burst center", onForm<BE, BEW>(spun("Center X:", "15"), &BE::centerOffsetX), 15.0},
        {"burst negative center x", onForm<BE, BEW>(spun("Center X:", "-15"), &BE::centerOffsetX),
         0.0},
        {"burst negative center y", onForm<BE, BEW>(spun("Center Y:", "-15"), &BE::centerOffsetY),
         0.0},
        {"spiral cycle", onForm<SE, SEW>(typed("Cycle Time (sec):", "4"), &SE::cycleSeconds), 4.0},
        {"spiral no whole cycle",
         onForm<SE, SEW>(typed("Cycle Time (sec):", "4e0"), &SE::cycleSeconds), 0.0},
        {"spiral twist", onForm<SE, SEW>(spun("Twist:", "-33"), &SE::twist), -33.0},
        {"spiral arms", onForm<SE, SEW>(spun("Arms:", "5"), &SE::arms), 5},
        {"spiral rotation", onForm<SE, SEW>(counter, &SE::clockwise), false},
        {"spiral negative center x", onForm<SE, SEW>(spun("Center X:", "-15"), &SE::centerOffsetX),
         -15.0},
        {"spiral negative center y", onForm<SE, SEW>(spun("Center Y:", "-16"), &SE::centerOffsetY),
         -16.0},
        {"text", onForm<TE, TEW>(writtenLine("Good night"), &TE::text),
         QStringLiteral("Good night")},
        {"text bold", onForm<TE, TEW>(ticked("Bold"), &TE::bold), true},
        {"text italic", onForm<TE, TEW>(ticked("Italic"), &TE::italic), true},
        {"text size", onForm<TE, TEW>(spun("Size (pixels):", "64"), &TE::fontSize), 64},
        {"text cycle", onForm<TE, TEW>(typed("Cycle Time (sec):", "1.75"), &TE::cycleSeconds),
         1.75},
        {"text transparency", onForm<TE, TEW>(ticked("Trans", 0), &TE::fgTransparent), true},
        {"text ground", onForm<TE, TEW>(ticked("Trans", 1), &TE::bgTransparent), true},
    };
    return cases;
}

/// A folder of `count` pictures of 4 by 3 pixels.
bool drawFilm(const QTemporaryDir& dir, int count)
{
    QImage frame(4, 3, QImage::Format_RGB32);
    for (int i = 0; i < count; ++i) {
        frame.fill(qRgb(i, 0, 0));
        if (!frame.save(dir.filePath(QStringLiteral("f%1.png").arg(i)))) {
            return false;
        }
    }
    return true;
}

/// Answers the next file dialog with `path`; rejects it where that is empty.
void answerFileDialog(const QString& path, QString* caption)
{
    QTimer::singleShot(0, qApp, [path, caption] {
        auto* const asked = dynamic_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (asked == nullptr) {
            answerFileDialog(path, caption); // not open yet
            return;
        }
        *caption = asked->windowTitle();
        if (path.isEmpty()) {
            asked->reject();
            return;
        }
        asked->selectFile(path);
        asked->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
        QMetaObject::invokeMethod(asked, "accept");
    });
}

} // namespace

void chooseColor(const Effect& /*effect*/, MapModel* /*model*/, VelaColor /*current*/,
                 QWidget* /*form*/, const ColorHandler& handler)
{
    handler(VelaColor(QColor(9, 8, 7)));
}

/// The forms of the effects that paint pictures over the plan.
class PictureFormsTest : public QObject
{
    Q_OBJECT
private slots:
    static void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void controlsWriteThrough_data();
    void controlsWriteThrough();
    void checkBoxesThatStartOnWriteOff();
    void colorsReachTheEffect();
    void scaleWaitsForReturn();
    void preloadPausesTheEngineAround();
    void loadReadsTheFolderAndLabelsTellOfIt();
    void theFilmIsChosenInADialog();
    void aPictureIsChosenInADialog();
    void aFormMayGoWhileAFileIsChosen();
    void loadReadsWhatTheLineHolds();
    void progressIsShownUntilTheLastFrame();
    void preloadingShowsItsProgress();
    void offsetsWaitForTheEndOfTyping();
    void aFontIsWrittenWhenItIsChosen();
    void wholeSecondsAreShown();
    void aBurstShowsTheNegativeCenterItDoesNotTake();
    void outputSizesFollowTheEffect();
    void theSizeOfATextIsTheEffects();
    void underlineChangesNothing();
};

void PictureFormsTest::controlsWriteThrough_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < writeCases().size(); ++i) {
        QTest::newRow(writeCases().at(i).name) << i;
    }
}

void PictureFormsTest::controlsWriteThrough()
{
    QFETCH(const int, index);
    const WriteCase& what = writeCases().at(index);
    QCOMPARE(what.act(), what.expected);
}

void PictureFormsTest::checkBoxesThatStartOnWriteOff()
{
    const auto toggles = [](auto& stage) {
        const bool before = stage.effect.smooth();
        stage.open();
        button<QCheckBox>(stage.form.get(), "Smooth")->click();
        return stage.effect.smooth() != before;
    };
    FormStage<FlashEffect, FlashEffectWidget> film;
    QVERIFY(toggles(film));
    FormStage<ImageEffect, ImageWidget> image;
    QVERIFY(toggles(image));
    FormStage<XYTextEffect, XYTextWidget> text;
    QVERIFY(toggles(text));
    FormStage<XYBurstEffect, XYBurstWidget> burst;
    burst.open();
    const bool direction = burst.effect.cycleDir();
    const bool rainbow = burst.effect.rainbowDir();
    button<QCheckBox>(burst.form.get(), "Reverse Direction")->click();
    QCOMPARE(burst.effect.cycleDir(), !direction);
    QCOMPARE(burst.effect.rainbowDir(), rainbow);
    button<QCheckBox>(burst.form.get(), "Reverse Rainbow")->click();
    QCOMPARE(burst.effect.rainbowDir(), !rainbow);
}

void PictureFormsTest::colorsReachTheEffect()
{
    const QString chosen = VelaColor(QColor(9, 8, 7)).toString();
    FormStage<FlashEffect, FlashEffectWidget> film;
    film.open();
    button<QPushButton>(film.form.get(), "Choose Color")->click();
    QCOMPARE(film.effect.transColor().toString(), chosen);
    FormStage<ImageEffect, ImageWidget> image;
    image.open();
    button<QPushButton>(image.form.get(), "Choose Color", 1)->click();
    QCOMPARE(image.effect.bgColor().toString(), chosen);
    QVERIFY(image.effect.transColor().toString() != chosen);
    button<QPushButton>(image.form.get(), "Choose Color", 0)->click();
    QCOMPARE(image.effect.transColor().toString(), chosen);
    FormStage<XYTextEffect, XYTextWidget> text;
    text.open();
    button<QPushButton>(text.form.get(), "Choose Color", 0)->click();
    QCOMPARE(text.effect.fgColor().rgb(), qRgb(9, 8, 7));
    button<QPushButton>(text.form.get(), "Choose Color", 1)->click();
    QCOMPARE(text.effect.bgColor().rgb(), qRgb(9, 8, 7));
}

void PictureFormsTest::scaleWaitsForReturn()
{
    FormStage<FlashEffect, FlashEffectWidget> stage;
    stage.effect.setScale(1.0);
    stage.open();
    QLineEdit* const line = labelled<QLineEdit>(stage.form.get(), "Scale Factor:");
    retype(line, "3");
    QCOMPARE(stage.effect.scale(), 1.0);
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(stage.effect.scale(), 3.0);
}

void PictureFormsTest::preloadPausesTheEngineAround()
{
    FormStage<FlashEffect, FlashEffectWidget> stage;
    stage.open();
    QVector<QPair<bool, bool>> heard; // what is said, and what the effect is set to then
    connect(stage.form.get(), &FlashEffectWidget::flashEffectPreloadToggled, stage.form.get(),
            [&](bool on) {
                heard.append({on, stage.effect.preload()});
            });
    button<QCheckBox>(stage.form.get(), "Preload")->click();
    const QVector<QPair<bool, bool>> expected{{true, false}, {false, true}};
    QCOMPARE(heard, expected);
}

void PictureFormsTest::loadReadsTheFolderAndLabelsTellOfIt()
{
    const QTemporaryDir dir;
    QVERIFY(drawFilm(dir, 3));
    FormStage<FlashEffect, FlashEffectWidget> stage;
    stage.open();
    QLabel* const count = labelled<QLabel>(stage.form.get(), "Frame Count:");
    QLabel* const size = labelled<QLabel>(stage.form.get(), "Image Size:");
    QCOMPARE(size->text(), QStringLiteral("0 x 0"));
    labelled<QLineEdit>(stage.form.get(), "Animation Directory:")->setText(dir.path());
    QCOMPARE(stage.effect.frameCount(), 0); // a path alone loads nothing
    const QSignalSpy asked(stage.form.get(), &FlashEffectWidget::loadClicked);
    button<QPushButton>(stage.form.get(), "Load")->click();
    QCOMPARE(asked.size(), 1);
    QCOMPARE(stage.effect.frameCount(), 3);
    QCOMPARE(count->text(), QStringLiteral("3"));
    QCOMPARE(size->text(), stage.effect.imageSizeText());
    QCOMPARE(size->text(), QStringLiteral("4 x 3"));
}

void PictureFormsTest::theFilmIsChosenInADialog()
{
    const QTemporaryDir dir;
    FormStage<FlashEffect, FlashEffectWidget> stage;
    stage.open();
    QString caption;
    answerFileDialog(dir.path(), &caption);
    const QSignalSpy browsed(stage.form.get(), &FlashEffectWidget::browseClicked);
    button<QPushButton>(stage.form.get(), "Browse")->click();
    QCOMPARE(browsed.size(), 1);
    QCOMPARE(caption, QStringLiteral("Choose an Animation Directory."));
    QCOMPARE(stage.effect.animationDir(), dir.path());
    QLineEdit* const line = labelled<QLineEdit>(stage.form.get(), "Animation Directory:");
    QCOMPARE(line->text(), dir.path());
    answerFileDialog(QString(), &caption);
    button<QPushButton>(stage.form.get(), "Browse")->click();
    QCOMPARE(stage.effect.animationDir(), dir.path()); // given up: nothing changes
    QCOMPARE(line->text(), dir.path());
}

void PictureFormsTest::aPictureIsChosenInADialog()
{
    const QTemporaryDir dir;
    QVERIFY(drawFilm(dir, 1));
    FormStage<ImageEffect, ImageWidget> stage;
    stage.open();
    QString caption;
    answerFileDialog(dir.filePath(QStringLiteral("f0.png")), &caption);
    button<QPushButton>(stage.form.get(), "Browse")->click();
    QCOMPARE(caption, QStringLiteral("Image File Browser"));
    QCOMPARE(stage.effect.imageFile(), dir.filePath(QStringLiteral("f0.png")));
    QVERIFY(stage.effect.imageLoaded());
    QCOMPARE(labelled<QLineEdit>(stage.form.get(), "Image File:")->text(),
             dir.filePath(QStringLiteral("f0.png")));
    QCOMPARE(labelled<QLabel>(stage.form.get(), "Image Size:")->text(), QStringLiteral("4 x 3"));
}

void PictureFormsTest::aFormMayGoWhileAFileIsChosen()
{
    const auto goWhileBrowsing = [](auto& stage) {
        QWidget window; // of which the form is a part
        stage.open();
        stage.form->setParent(&window);
        window.show();
        bool gone = false;
        std::function<void()> act = [&] {
            auto* const asked = dynamic_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (asked == nullptr) {
                QTimer::singleShot(0, &window, act); // not open yet
                return;
            }
            stage.form.reset();
            gone = true;
            asked->reject();
        };
        QTimer::singleShot(0, &window, act);
        stage.browse();
        return gone && stage.form == nullptr;
    };
    struct Film : FormStage<FlashEffect, FlashEffectWidget>
    {
        void browse() const { form->browseButtonClicked(); }
    } film;
    QVERIFY(goWhileBrowsing(film));
    struct Picture : FormStage<ImageEffect, ImageWidget>
    {
        void browse() const { form->handleBrowseButtonClicked(); }
    } picture;
    QVERIFY(goWhileBrowsing(picture));
}

void PictureFormsTest::loadReadsWhatTheLineHolds()
{
    const QTemporaryDir dir;
    QVERIFY(drawFilm(dir, 1));
    FormStage<ImageEffect, ImageWidget> stage;
    stage.open();
    labelled<QLineEdit>(stage.form.get(), "Image File:")
        ->setText(dir.filePath(QStringLiteral("f0.png")));
    QCOMPARE(stage.effect.imageFile(), QString()); // a path alone does nothing
    QVERIFY(!stage.effect.imageLoaded());
    button<QPushButton>(stage.form.get(), "Load")->click();
    QVERIFY(stage.effect.imageLoaded());
}

void PictureFormsTest::progressIsShownUntilTheLastFrame()
{
    FormStage<FlashEffect, FlashEffectWidget> stage;
    stage.open();
    FlashEffectWidget* const form = stage.form.get();
    form->handleUpdateProgressDialog(1); // without a dialog nothing happens
    QVERIFY(form->findChild<QProgressDialog*>() == nullptr);
    form->handleInitializeProgressDialog(2);
    const QList<QProgressDialog*> opened = form->findChildren<QProgressDialog*>();
    QCOMPARE(opened.size(), 1);
    const QProgressDialog* const progress = opened.at(0);
    QVERIFY(progress->isVisible());
    QVERIFY(progress->isModal());
    QCOMPARE(progress->labelText(), QStringLiteral("Loading Animation frames..."));
    QCOMPARE(progress->minimum(), 0);
    QCOMPARE(progress->maximum(), 2);
    QVERIFY(progress->findChild<QPushButton*>() == nullptr); // no way to cancel
    form->handleInitializeProgressDialog(7);
    QCOMPARE(form->findChildren<QProgressDialog*>().size(), 1);
    QCOMPARE(progress->maximum(), 2);
    form->handleUpdateProgressDialog(1);
    QCOMPARE(progress->value(), 1);
    form->handleUpdateProgressDialog(2);
    QVERIFY(form->findChild<QProgressDialog*>() == nullptr);
}

void PictureFormsTest::preloadingShowsItsProgress()
{
    const QTemporaryDir dir;
    QVERIFY(drawFilm(dir, 3));
    FormStage<FlashEffect, FlashEffectWidget> stage;
    stage.effect.setAnimationDir(dir.path());
    stage.open();
    QStringList heard;
    const FlashEffectWidget* const form = stage.form.get();
    const auto note = [&](const QString& what) {
        const auto* const progress = form->findChild<QProgressDialog*>();
        heard << (progress == nullptr ? what + QStringLiteral(" -")
                                      : QStringLiteral("%1 %2/%3")
                                            .arg(what)
                                            .arg(progress->value())
                                            .arg(progress->maximum()));
    };
    connect(form, &FlashEffectWidget::flashEffectPreloadToggled, form,
            [&](bool on) { note(on ? QStringLiteral("pause") : QStringLiteral("go on")); });
    connect(&stage.effect, &FlashEffect::updateProgressDialog, form,
            [&](int count) { note(QString::number(count)); });
    QTest::keyClick(button<QCheckBox>(form, "Preload"), Qt::Key_Space);
    QCOMPARE(heard, QStringList({"pause -", "1 1/3", "2 2/3", "3 -", "go on -"}));
    QCOMPARE(stage.effect.frameCount(), 3);
    heard.clear();
    QTest::keyClick(button<QCheckBox>(form, "Preload"), Qt::Key_Space);
    QCOMPARE(heard, QStringList({"pause -", "go on -"})); // only the first frame is read
    QVERIFY(!stage.effect.preload());
}

void PictureFormsTest::offsetsWaitForTheEndOfTyping()
{
    FormStage<FlashEffect, FlashEffectWidget> stage;
    stage.open();
    stage.form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(stage.form.get()));
    for (const char* const label : {"X Offset:", "Y Offset:"}) {
        const auto offset = [&] {
            return label[0] == 'X' ? stage.effect.xOffset() : stage.effect.yOffset();
        };
        QSpinBox* const spin = labelled<QSpinBox>(stage.form.get(), label);
        spin->setFocus();
        retype(spin, "12");
        QCOMPARE(offset(), 0.0);
        QTest::keyClick(spin, Qt::Key_Tab);
        QCOMPARE(offset(), 12.0);
    }
}

void PictureFormsTest::aFontIsWrittenWhenItIsChosen()
{
    FormStage<XYTextEffect, XYTextWidget> stage;
    stage.open();
    auto* const font = labelled<QFontComboBox>(stage.form.get(), "Font:");
    QVERIFY(font->count() > 0);
    QTest::keyClick(font, Qt::Key_Down);
    QVERIFY(!stage.effect.fontFamily().isEmpty());
    QCOMPARE(stage.effect.fontFamily(), font->currentText());
}

void PictureFormsTest::wholeSecondsAreShown()
{
    const auto shown = [](auto& stage) {
        stage.open();
        return labelled<QLineEdit>(stage.form.get(), "Cycle Time (sec):")->text();
    };
    FormStage<ImageEffect, ImageWidget> image;
    image.effect.setCycleSeconds(2.5);
    QCOMPARE(shown(image), QStringLiteral("2"));
    QCOMPARE(image.effect.cycleSeconds(), 2.5);
    FormStage<XYBurstEffect, XYBurstWidget> burst;
    burst.effect.setCycleTime(2.5);
    QCOMPARE(shown(burst), QStringLiteral("2"));
    FormStage<XYSpiralEffect, XYSpiralWidget> spiral;
    spiral.effect.setCycleTime(2.5);
    QCOMPARE(shown(spiral), QStringLiteral("2"));
    FormStage<XYTextEffect, XYTextWidget> text;
    text.effect.setCycleTime(2.5);
    QCOMPARE(shown(text), QStringLiteral("2.5"));
}

void PictureFormsTest::aBurstShowsTheNegativeCenterItDoesNotTake()
{
    FormStage<XYBurstEffect, XYBurstWidget> stage;
    stage.effect.setCenterOffsetX(-20);
    stage.open();
    QSpinBox* const x = labelled<QSpinBox>(stage.form.get(), "Center X:");
    QCOMPARE(x->value(), -20);
    QCOMPARE(stage.effect.centerOffsetX(), -20.0);
    QTest::keyClick(x, Qt::Key_Up);
    QCOMPARE(x->value(), -19);
    QCOMPARE(stage.effect.centerOffsetX(), 0.0);
}

void PictureFormsTest::outputSizesFollowTheEffect()
{
    const auto follows = [](auto& stage) {
        stage.open();
        QLabel* const label = labelled<QLabel>(stage.form.get(), "Output Size:");
        emit stage.effect.updateOutputSizeLabel(QStringLiteral("12 x 34"));
        return label->text() == QLatin1String("12 x 34");
    };
    FormStage<ImageEffect, ImageWidget> image;
    QVERIFY(follows(image));
    FormStage<XYBurstEffect, XYBurstWidget> burst;
    QVERIFY(follows(burst));
    FormStage<XYSpiralEffect, XYSpiralWidget> spiral;
    QVERIFY(follows(spiral));
    FormStage<FlashEffect, FlashEffectWidget> film;
    film.open();
    emit film.effect.updateOutputSize(QStringLiteral("5 x 6"));
    QCOMPARE(labelled<QLabel>(film.form.get(), "Output Size:")->text(), QStringLiteral("5 x 6"));
}

void PictureFormsTest::theSizeOfATextIsTheEffects()
{
    FormStage<XYTextEffect, XYTextWidget> stage;
    stage.effect.setFontSize(77);
    stage.open();
    QCOMPARE(labelled<QSpinBox>(stage.form.get(), "Size (pixels):")->value(), 77);
    QCOMPARE(stage.effect.fontSize(), 77);
}

void PictureFormsTest::underlineChangesNothing()
{
    FormStage<XYTextEffect, XYTextWidget> stage;
    stage.open();
    const auto saved = [&] {
        QString text;
        QTextStream out(&text);
        stage.effect.save(out);
        return text;
    };
    const QString before = saved();
    QVERIFY(QMetaObject::invokeMethod(stage.form.get(), "m_underlineCheckBox_toggled",
                                      Q_ARG(bool, true)));
    QCOMPARE(saved(), before);
}

QTEST_MAIN(PictureFormsTest)
#include "PictureFormsTest.moc"
