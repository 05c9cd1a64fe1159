#include "editor/ColorChooser.h"
#include "editor/EffectForm.h"
#include "editor/ParameterForms.h"
#include "effects/RegisterEffects.h"
#include "engine/EffectFactory.h"
#include "tests/editor/FormStage.h"

#include <QTableWidget>

#include <algorithm>
#include <memory>

namespace {

constexpr quint64 kChase = 0x50;

/// Runs the effect for some frames, as a show that plays while it is edited.
void play(TestShow::TestMap* map, Effect* effect)
{
    for (const int ms : {0, 25, 1000, 59999}) {
        effect->tick(TestShow::kStartMs + ms, 0);
        map->endFrame();
    }
}

QList<QLineEdit*> linesOf(const QWidget* form)
{
    QList<QLineEdit*> lines = form->findChildren<QLineEdit*>();
    const auto isOfASpinBox = [](const QLineEdit* line) {
        return dynamic_cast<const QSpinBox*>(line->parentWidget()) != nullptr;
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isOfASpinBox), lines.end());
    return lines;
}

} // namespace

void chooseColor(const Effect& /*effect*/, MapModel* /*model*/, VelaColor /*current*/,
                 QWidget* /*form*/, const ColorHandler& handler)
{
    handler(VelaColor()); // an invalid colour
}

/// Whatever is typed into a form, the effect plays on.
class FormInputTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { registerEffects(); }
    void anyTextIsTaken_data();
    void anyTextIsTaken();
    void anyCellIsTaken_data() { addTexts(); }
    void anyCellIsTaken();

private:
    static void addTexts();
};

void FormInputTest::addTexts()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QString& text) { QTest::newRow(name) << text; };
    row("nothing", QString());
    row("no number", QStringLiteral("12 monkeys"));
    row("not a number", QStringLiteral("nan"));
    row("infinity", QStringLiteral("inf"));
    row("less than nothing", QStringLiteral("-inf"));
    row("negative", QStringLiteral("-1"));
    row("too large", QStringLiteral("1e308"));
    row("too large for 32 bits", QStringLiteral("4294967296"));
    row("largest of 32 bits", QStringLiteral("4294967295"));
    row("almost nothing", QStringLiteral("1e-300"));
    row("digits of another script", QString(QChar(0x0663)));
    row("a decimal comma", QStringLiteral("2,5"));
    row("a brace and a bracket", QStringLiteral("<&>\"%1\n"));
    row("long", QString(10000, QLatin1Char('9')));
}

void FormInputTest::anyTextIsTaken_data()
{
    addTexts();
}

void FormInputTest::anyTextIsTaken()
{
    QFETCH(const QString, text);
    TestShow::TestMap map(3, TestShow::group(kChase, 1, {1, 2, 3}));
    QStringList types = EffectFactory::effectTypeNames();
    types.removeAll(QStringLiteral("Meta Effect"));
    QCOMPARE(types.size(), 17);
    int lines = 0;
    for (const QString& type : qAsConst(types)) {
        const std::unique_ptr<Effect> effect(
            EffectFactory::createEffect(type, map.model(), nullptr));
        effect->setGid(kChase);
        effect->compile();
        const std::unique_ptr<QWidget> form(makeParameterForm(effect.get(), map.model(), nullptr));
        for (QLineEdit* const line : linesOf(form.get())) {
            line->setText(text);
            QTest::keyClick(line, Qt::Key_Return);
            play(&map, effect.get());
            ++lines;
        }
        for (QSpinBox* const spin : form->findChildren<QSpinBox*>()) {
            for (const int value : {spin->minimum(), spin->maximum()}) {
                spin->setValue(value);
                QTest::keyClick(spin, Qt::Key_Return);
                play(&map, effect.get());
            }
        }
        for (QPushButton* const push : form->findChildren<QPushButton*>()) {
            if (plain(push->text()) == QLatin1String("Choose Color")) {
                push->click();
                play(&map, effect.get());
            }
        }
    }
    QCOMPARE(lines, 22);
}

void FormInputTest::anyCellIsTaken()
{
    QFETCH(const QString, text);
    TestShow::TestMap map(3, TestShow::group(kChase, 1, {1, 2, 3}));
    CustomRainbowEffect effect(map.model(), kChase, nullptr);
    CustomRainbowWidget form(&effect, map.model(), nullptr);
    button<QPushButton>(&form, "New Color")->click();
    button<QPushButton>(&form, "New Color")->click();
    auto* const table = form.findChild<QTableWidget*>();
    for (const int column : {1, 2}) {
        for (const int row : {1, 0}) {
            table->item(row, column)->setText(text);
            play(&map, &effect);
        }
    }
    const bool isNumber = text.toDouble() != 0.0; // NaN is one, too
    QCOMPARE(effect.entryList().at(0)->duration == 0.0, !isNumber);
}

QTEST_MAIN(FormInputTest)
#include "FormInputTest.moc"
