#include "editor/EffectClipboard.h"

#include "effects/FixedColorEffect.h"
#include "tests/editor/EditorStage.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTextStream>

/// Effects as text.
class EffectClipboardTest : public QObject
{
    Q_OBJECT
private slots:
    void anEffectIsWrittenBehindItsMark();
    void whatIsWrittenIsReadBack();
    void whateverIsNoEffectIsPassedOver_data();
    void whateverIsNoEffectIsPassedOver();
    void nestedTimelinesAreReadWhole();
    void aMegabyteOfJunkIsReadSoon_data();
    void aMegabyteOfJunkIsReadSoon();

private:
    EditorStage m_stage;
};

void EffectClipboardTest::anEffectIsWrittenBehindItsMark()
{
    const Root root = m_stage.parse(EditorStage::effectXml(4));
    QString plain;
    QTextStream plainStream(&plain);
    root->effectByEid(4)->save(plainStream);
    QString text;
    QTextStream stream(&text);
    EffectClipboard::append(stream, *root->effectByEid(4));
    QCOMPARE(text, QStringLiteral("<EFFECT-ENTRY>\n") + plain);
}

void EffectClipboardTest::whatIsWrittenIsReadBack()
{
    const Root root = m_stage.parse(
        EditorStage::effectXml(4, QStringLiteral("<gid>4096</gid>") + EditorStage::startsAt(9)) +
        EditorStage::effectXml(5, QString(), "Cross Fade"));
    QString text;
    QTextStream stream(&text);
    for (const Effect* const effect : root->effectList()) {
        EffectClipboard::append(stream, *effect);
    }
    const QList<Effect*> effects = EffectClipboard::read(text, m_stage.model.get());
    QCOMPARE(effects.size(), 2);
    QCOMPARE(effects.at(0)->name(), QStringLiteral("E4"));
    QCOMPARE(effects.at(0)->gid(), EditorStage::kFacade);
    QCOMPARE(effects.at(0)->startLinkEid(), 9U);
    QCOMPARE(effects.at(1)->type(), QStringLiteral("Cross Fade"));
    qDeleteAll(effects);
}

void EffectClipboardTest::whateverIsNoEffectIsPassedOver_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("effects");
    QTest::addColumn<QString>("log"); // empty: none
    const QString mark = QStringLiteral("<EFFECT-ENTRY>");
    const QString good = EditorStage::effectXml(1);
    const auto log = [](int refused, int parts) {
        return QStringLiteral("Clipboard: %1 of %2 parts are no effects").arg(refused).arg(parts);
    };
    QTest::newRow("nothing") << QString() << 0 << QString();
    QTest::newRow("marks alone") << mark + mark + mark << 0 << QString();
    QTest::newRow("one") << mark + good << 1 << QString();
    QTest::newRow("without a mark") << good << 1 << QString();
    QTest::newRow("plain words") << QStringLiteral("a shopping list") << 0 << log(1, 1);
    QTest::newRow("half an element")
        << mark + good.left(good.size() / 2) + mark + good << 1 << log(1, 2);
    QTest::newRow("two elements in a part") << mark + good + good << 0 << log(1, 1);
    QTest::newRow("a comment ahead")
        << mark + QStringLiteral("<!-- x -->") + good << 0 << log(1, 1);
    QTest::newRow("a declaration ahead")
        << mark + QStringLiteral("<?xml version=\"1.0\"?>") + good << 0 << log(1, 1);
    QTest::newRow("another element") << mark + QStringLiteral("<light/>") << 0 << log(1, 1);
    QTest::newRow("no type") << mark + QStringLiteral("<effect/>") << 0 << log(1, 1);
    QTest::newRow("an unknown type")
        << mark + EditorStage::effectXml(1, QString(), "Blizzard") << 0 << log(1, 1);
    QTest::newRow("a type that is not offered")
        << mark + EditorStage::effectXml(1, QString(), "Selection") << 1 << QString();
    QTest::newRow("nested too deep")
        << mark + QStringLiteral("<effect>").repeated(50000) << 0 << log(1, 1);
    QTest::newRow("words between")
        << mark + QStringLiteral("x") + mark + good + mark + QStringLiteral("y") + mark + good << 2
        << log(2, 4);
}

void EffectClipboardTest::whateverIsNoEffectIsPassedOver()
{
    QFETCH(const QString, text);
    QFETCH(const int, effects);
    QFETCH(const QString, log);
    if (text.contains(QLatin1String("Blizzard"))) {
        QTest::ignoreMessage(QtDebugMsg, "Unsupported Effect Type: Blizzard");
    }
    if (!log.isEmpty()) {
        QTest::ignoreMessage(QtDebugMsg, qPrintable(log));
    }
    const QList<Effect*> read = EffectClipboard::read(text, m_stage.model.get());
    QCOMPARE(read.size(), effects);
    qDeleteAll(read);
}

void EffectClipboardTest::nestedTimelinesAreReadWhole()
{
    const QString inner = EditorStage::effectXml(
        7, EditorStage::effectXml(8) + EditorStage::effectXml(9), "Meta Effect");
    const QList<Effect*> read =
        EffectClipboard::read(EditorStage::effectXml(6, inner, "Meta Effect"), m_stage.model.get());
    QCOMPARE(read.size(), 1);
    const Root outer(qobject_cast<MetaEffect*>(read.first()));
    QVERIFY(outer != nullptr);
    QCOMPARE(outer->effectList().size(), 1);
    const auto* const nested = qobject_cast<MetaEffect*>(outer->effectList().first());
    QVERIFY(nested != nullptr);
    QCOMPARE(nested->effectList().size(), 2);
}

void EffectClipboardTest::aMegabyteOfJunkIsReadSoon_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::newRow("letters") << QStringLiteral("x");
    QTest::newRow("marks") << QStringLiteral("<EFFECT-ENTRY>");
    QTest::newRow("marked letters") << QStringLiteral("<EFFECT-ENTRY>x");
    QTest::newRow("open elements") << QStringLiteral("<effect>");
    QTest::newRow("marked halves") << QStringLiteral("<EFFECT-ENTRY><effect><type>");
    QTest::newRow("brackets") << QStringLiteral("<");
    QTest::newRow("zeros") << QString(QChar(0));
}

void EffectClipboardTest::aMegabyteOfJunkIsReadSoon()
{
    QFETCH(const QString, pattern);
    const QString junk = pattern.repeated((1 << 20) / pattern.size());
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(EffectClipboard::read(junk, m_stage.model.get()).size(), 0);
    const qint64 ms = clock.elapsed();
    QVERIFY2(ms < 5000, qPrintable(QString::number(ms))); // far above what it takes
}

QTEST_MAIN(EffectClipboardTest)
#include "EffectClipboardTest.moc"
