#include "editor/ParameterForms.h"

#include "tests/editor/EditorStage.h"

#include <QLabel>

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
    void aFormIsMadeByItsTypesMaker();
    void aTimelineHasNone();
    void anUnknownNumberIsLogged();
    void noEffectHasNone();

private:
    EditorStage m_stage;
};

void ParameterFormsTest::aFormIsMadeByItsTypesMaker()
{
    StrangeEffect effect(m_stage.model.get(), 0, nullptr);
    QWidget parent;
    registerParameterForm(99, [&](Effect* e, MapModel* model, QWidget* under) -> QWidget* {
        return e == &effect && model == m_stage.model.get() ? new QLabel(under) : nullptr;
    });
    QWidget* const form = makeParameterForm(&effect, m_stage.model.get(), &parent);
    QVERIFY(qobject_cast<QLabel*>(form) != nullptr);
    QCOMPARE(form->parentWidget(), &parent);
    registerParameterForm(99, FormMaker());
    QTest::ignoreMessage(QtDebugMsg, "Invalid Effect Type: 99");
    QVERIFY(makeParameterForm(&effect, m_stage.model.get(), &parent) == nullptr);
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
