#include "sim/SimDialog.h"

#include <QFrame>
#include <QVBoxLayout>
#include <QtTest>

class SimDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void isOneFrameThatFillsTheDialog();
    void hasItsForm();
    void hasNoHelpButton();
    void hasNothingOfItsOwnToConnect();
};

void SimDialogTest::isOneFrameThatFillsTheDialog()
{
    SimDialog dialog(nullptr);
    const QList<QFrame*> frames =
        dialog.findChildren<QFrame*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(frames.size(), 1);
    const QFrame* const frame = frames.front();
    QCOMPARE(frame->objectName(), QStringLiteral("m_simFrame"));
    QCOMPARE(frame->minimumSize(), QSize(300, 300));
    QCOMPARE(frame->frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame->frameShadow(), QFrame::Raised);
    auto* const box = qobject_cast<QVBoxLayout*>(dialog.layout());
    QVERIFY(box != nullptr);
    QCOMPARE(box->objectName(), QStringLiteral("vboxLayout"));
    QCOMPARE(box->spacing(), 0);
    QCOMPARE(box->contentsMargins(), QMargins());
    dialog.show();
    QCOMPARE(frame->geometry(), dialog.rect());
}

void SimDialogTest::hasItsForm()
{
    SimDialog dialog(nullptr);
    QCOMPARE(dialog.objectName(), QStringLiteral("SimDialog"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Simulation"));
    QCOMPARE(dialog.size(), QSize(302, 308));
    QVERIFY(!dialog.isSizeGripEnabled());
    const QSizePolicy policy = dialog.sizePolicy();
    QCOMPARE(policy.horizontalPolicy(), QSizePolicy::MinimumExpanding);
    QCOMPARE(policy.verticalPolicy(), QSizePolicy::MinimumExpanding);
    QCOMPARE(policy.horizontalStretch(), 0);
    QCOMPARE(policy.verticalStretch(), 0);
    QVERIFY(!policy.hasHeightForWidth());
}

void SimDialogTest::hasNoHelpButton()
{
    SimDialog dialog(nullptr);
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialog.windowType(), Qt::Dialog);
    QWidget parent;
    SimDialog child(&parent);
    QCOMPARE(child.parentWidget(), &parent);
    QVERIFY(!child.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

void SimDialogTest::hasNothingOfItsOwnToConnect()
{
    const QMetaObject& meta = SimDialog::staticMetaObject;
    QCOMPARE(meta.methodCount(), meta.methodOffset());
}

QTEST_MAIN(SimDialogTest)
#include "SimDialogTest.moc"
