#include "editor/ParameterForms.h"

#include "editor/EffectForm.h"
#include "tests/editor/EditorStage.h"

#include <QByteArray>
#include <QWidget>

#include <memory>

namespace {

/// A number beyond all that forms are made for.
class StrangeEffect : public MetaEffect
{
public:
    using MetaEffect::MetaEffect;
    int typeId() const override { return 99; }
};

} // namespace

/// The table of parameter forms.
class ParameterFormsTest : public QObject
{
    Q_OBJECT
private slots:
    void everyTypeHasItsForm_data();
    void everyTypeHasItsForm();
    void aTimelineHasNone();
    void anUnknownNumberIsLogged();
    void noEffectHasNone();

private:
    EditorStage m_stage;
};

void ParameterFormsTest::everyTypeHasItsForm_data()
{
    QTest::addColumn<QByteArray>("form");
    const QList<QPair<const char*, QByteArray>> forms = {
        {"Fixed Color", "FixedColorWidget"},
        {"Chasing Rainbow", "ChasingRainbowWidget"},
        {"Cross Fade", "CrossFadeWidget"},
        {"Custom Rainbow", "CustomRainbowWidget"},
        {"White Fixed Color", "FixedWhiteWidget"},
        {"Animation", "FlashEffectWidget"},
        {"Image Scroll", "ImageWidget"},
        {"Random Color", "RandomColorWidget"},
        {"Sparkle", "SparkleWidget"},
        {"Sparkle Group", "SparkleGroupWidget"},
        {"Streak", "StreakWidget"},
        {"Sweep", "SweepWidget"},
        {"White Cross Fade", "WhiteCrossFadeWidget"},
        {"XYBurst", "XYBurstWidget"},
        {"XYSpiral", "XYSpiralWidget"},
        {"Text", "XYTextWidget"},
        {"Selection", "SelectionWidget"},
    };
    for (const auto& form : forms) {
        QTest::newRow(form.first) << form.second;
    }
}

void ParameterFormsTest::everyTypeHasItsForm()
{
    QFETCH(QByteArray, form);
    const std::unique_ptr<Effect> effect(EffectFactory::createEffect(
        QString::fromLatin1(QTest::currentDataTag()), m_stage.model.get(), nullptr));
    QVERIFY(effect != nullptr);
    QWidget parent;
    const QWidget* const made = makeParameterForm(effect.get(), m_stage.model.get(), &parent);
    QVERIFY(made != nullptr);
    QCOMPARE(QByteArray(made->metaObject()->className()), form);
    QCOMPARE(made->parentWidget(), &parent);
}

void ParameterFormsTest::aTimelineHasNone()
{
    MetaEffect timeline(m_stage.model.get(), 0, nullptr);
    QVERIFY(makeParameterForm(&timeline, m_stage.model.get(), nullptr) == nullptr);
}

void ParameterFormsTest::anUnknownNumberIsLogged()
{
    StrangeEffect effect(m_stage.model.get(), 0, nullptr);
    QTest::ignoreMessage(QtDebugMsg, "Invalid Effect Type: 99");
    QVERIFY(makeParameterForm(&effect, m_stage.model.get(), nullptr) == nullptr);
}

void ParameterFormsTest::noEffectHasNone()
{
    QVERIFY(makeParameterForm(nullptr, m_stage.model.get(), nullptr) == nullptr);
}

QTEST_MAIN(ParameterFormsTest)
#include "ParameterFormsTest.moc"
