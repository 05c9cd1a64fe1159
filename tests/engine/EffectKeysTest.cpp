#include "engine/EffectKeys.h"

#include <QObject>
#include <QSet>
#include <QtTest>

class EffectKeysTest : public QObject
{
    Q_OBJECT
private slots:
    void everyKeyHasATextOfItsOwn();
    void knowsTheTextsOfFiles_data();
    void knowsTheTextsOfFiles();
    void otherTextsAreUnknown_data();
    void otherTextsAreUnknown();
};

void EffectKeysTest::everyKeyHasATextOfItsOwn()
{
    QSet<QString> texts;
    for (int key = 1; key < static_cast<int>(EffectKey::Count); ++key) {
        const QString text = effectKeyText(static_cast<EffectKey>(key));
        QVERIFY(!text.isEmpty());
        QVERIFY2(!texts.contains(text), qPrintable(text));
        texts.insert(text);
        QCOMPARE(static_cast<int>(effectKey(text)), key);
    }
    QVERIFY(effectKeyText(EffectKey::Unknown).isEmpty());
    QVERIFY(effectKeyText(EffectKey::Count).isEmpty());
}

void EffectKeysTest::knowsTheTextsOfFiles_data()
{
    // Every key that an effect of any type writes.
    const QString texts = QStringLiteral(
        "type name eid gid transparency priority begin end fadein fadeout starttype startfixedtime "
        "startlinkeid startlinkstart startlinkoffset endtype endfixedtime endlinkeid endlinkstart "
        "endlinkoffset endcyclecount brightness loop version effect color temperature intensity "
        "inputType warm cool startcolor endcolor starttrans endtrans time temperatureStart "
        "intensityStart inputTypeStart warmStart coolStart temperatureEnd intensityEnd "
        "inputTypeEnd warmEnd coolEnd fgcolor bgcolor reversecolor reversedir groupoffset "
        "cycletime fadetime cyclecount offset decay density sparklecolor sparkletrans bgtrans "
        "width fwdtail revtail reverse fgtrans wrap imagefile startx starty endx endy startscale "
        "endscale smooth transcolor transenabled animationdir preload fps xoffset yoffset scale "
        "centerx centery cycledir rainbowdir twist number clockwise text font fontsize bold "
        "italic");
    QTest::addColumn<QString>("text");
    const QStringList keys = texts.split(QLatin1Char(' '));
    QCOMPARE(keys.size(), static_cast<int>(EffectKey::Count) - 1);
    for (const QString& key : keys) {
        QTest::newRow(qPrintable(key)) << key;
    }
}

void EffectKeysTest::knowsTheTextsOfFiles()
{
    QFETCH(const QString, text);
    QVERIFY(effectKey(text) != EffectKey::Unknown);
    QCOMPARE(effectKeyText(effectKey(text)), text);
}

void EffectKeysTest::otherTextsAreUnknown_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("other case") << QStringLiteral("Begin");
    QTest::newRow("part") << QStringLiteral("star");
    QTest::newRow("entry of a list") << QStringLiteral("color_0");
    QTest::newRow("comment") << QStringLiteral("#comment");
}

void EffectKeysTest::otherTextsAreUnknown()
{
    QFETCH(const QString, text);
    QVERIFY(effectKey(text) == EffectKey::Unknown);
}

QTEST_GUILESS_MAIN(EffectKeysTest)
#include "EffectKeysTest.moc"
