#include "color/Sorrel3ProjectHelper.h"

#include <QDomDocument>
#include <QObject>
#include <QtTest>

namespace {

/// What a reading of a document told, in order.
struct Reading
{
    QStringList told;
    QString error;
    QStringList sample;
};

QByteArray color(const QByteArray& attributes)
{
    return "<Color " + attributes + "/>";
}

QByteArray colors(int count, const QByteArray& prefix)
{
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        text += color("uid=\"" + prefix + QByteArray::number(i) + "\"");
    }
    return text;
}

QByteArray list(const QByteArray& attributes, const QByteArray& content)
{
    return "<ColorLibrary " + attributes + ">" + content + "</ColorLibrary>";
}

Reading readDocument(const QByteArray& text, double ratio = 0.0, bool withSample = true)
{
    QDomDocument document;
    Reading reading;
    if (!document.setContent("<ColorLibraryList>" + text + "</ColorLibraryList>")) {
        reading.error = QStringLiteral("no document");
        return reading;
    }
    Sorrel3ProjectHelper helper([](const QString& name) { return name + QLatin1Char('!'); });
    QObject::connect(&helper, &Sorrel3ProjectHelper::insertList, &helper,
                     [&](const QString& name, bool isUser) {
                         reading.told << QStringLiteral("list %1 %2").arg(name).arg(isUser);
                     });
    QObject::connect(&helper, &Sorrel3ProjectHelper::insertColor, &helper,
                     [&](const QString& uid, const QString& name, const QString& value,
                         const QString& preset, const QString& listId, const QString& colorId) {
                         reading.told << QStringList({uid, name, value, preset, listId, colorId})
                                             .join(QLatin1Char('|'));
                     });
    QObject::connect(&helper, &Sorrel3ProjectHelper::listRead, &helper, [&](const QString& listId) {
        reading.told << QStringLiteral("read %1").arg(listId);
    });
    helper.read(document, &reading.error, withSample ? &reading.sample : nullptr, ratio);
    return reading;
}

} // namespace

class Sorrel3ProjectHelperTest : public QObject
{
    Q_OBJECT
private slots:
    void tellsListsAndColorsInOrder();
    void missingAttributesHaveDefaults();
    void userListsAreTheNumbersButZero_data();
    void userListsAreTheNumbersButZero();
    void aDocumentWithoutListsTellsNothing();
    void anEmptyListIsAnError();
    void otherElementsAreSkipped();
    void theSampleIsTheFirstTwelveOfEachList();
    void theSampleEndsWithTheRatio_data();
    void theSampleEndsWithTheRatio();
    void theSampleEndsWithAnError();
    void writesWhatItReads();
};

void Sorrel3ProjectHelperTest::tellsListsAndColorsInOrder()
{
    const Reading reading = readDocument(
        list("name=\"A\" isUserLibrary=\"1\"",
             color("colorId=\"7\" originatingPreset=\"P\" value=\"#ff0000\" uid=\"u1\" "
                   "name=\"Red\"") +
                 color("name=\"B\" uid=\"u2\" value=\"blue\"")) +
        "<deeper>" + list("name=\"C\" isUserLibrary=\"0\"", color("uid=\"u3\" name=\"D\"")) +
        "</deeper>");
    QCOMPARE(reading.told,
             QStringList({QStringLiteral("list A! 1"), QStringLiteral("u1|Red|#ff0000|P|A!|7"),
                          QStringLiteral("u2|B|blue||A!|"), QStringLiteral("read A!"),
                          QStringLiteral("list C! 0"), QStringLiteral("u3|D|empty attribute||C!|"),
                          QStringLiteral("read C!")}));
    QCOMPARE(reading.error, QString());
}

void Sorrel3ProjectHelperTest::missingAttributesHaveDefaults()
{
    const Reading reading = readDocument("<ColorLibrary><Color/></ColorLibrary>");
    QCOMPARE(reading.told, QStringList({QStringLiteral("list ! 0"),
                                        QStringLiteral("|empty attribute|empty attribute||!|"),
                                        QStringLiteral("read !")}));
    // An attribute that is there and empty is empty.
    QCOMPARE(readDocument(list("", color("name=\"\" value=\"\""))).told.at(1),
             QStringLiteral("||||!|"));
}

void Sorrel3ProjectHelperTest::userListsAreTheNumbersButZero_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<bool>("isUser");
    QTest::newRow("1") << QByteArray("isUserLibrary=\"1\"") << true;
    QTest::newRow("0") << QByteArray("isUserLibrary=\"0\"") << false;
    QTest::newRow("negative") << QByteArray("isUserLibrary=\"-3\"") << true;
    QTest::newRow("empty") << QByteArray("isUserLibrary=\"\"") << false;
    QTest::newRow("missing") << QByteArray() << false;
    QTest::newRow("a word") << QByteArray("isUserLibrary=\"true\"") << false;
    QTest::newRow("too large") << QByteArray("isUserLibrary=\"99999999999\"") << false;
}

void Sorrel3ProjectHelperTest::userListsAreTheNumbersButZero()
{
    QFETCH(const QByteArray, attribute);
    QFETCH(const bool, isUser);
    QCOMPARE(readDocument(list("name=\"A\" " + attribute, colors(1, "u"))).told.first(),
             QStringLiteral("list A! %1").arg(isUser));
}

void Sorrel3ProjectHelperTest::aDocumentWithoutListsTellsNothing()
{
    const Reading reading = readDocument("<colorlibrary/>" + colors(2, "u"));
    QVERIFY(reading.told.isEmpty());
    QVERIFY(reading.sample.isEmpty());
    QCOMPARE(reading.error, QString());
}

void Sorrel3ProjectHelperTest::anEmptyListIsAnError()
{
    const Reading reading =
        readDocument(list("name=\"A\"", "") + list("name=\"B\"", colors(1, "u")));
    QCOMPARE(reading.error, QStringLiteral("Found NULL VelaColorLibrary element"));
    QVERIFY(reading.told.contains(QStringLiteral("list A! 0"))); // and the reading goes on
    QVERIFY(reading.told.contains(QStringLiteral("u0|empty attribute|empty attribute||B!|")));
}

void Sorrel3ProjectHelperTest::otherElementsAreSkipped()
{
    const Reading reading = readDocument(list(
        "name=\"A\"", "text<color uid=\"no\"/>" + colors(1, "a") + "<!-- -->" + colors(1, "b")));
    QCOMPARE(reading.told.size(), 4);
    QCOMPARE(reading.sample, QStringList({QStringLiteral("a0"), QStringLiteral("b0")}));
    QCOMPARE(reading.error, QString());
}

void Sorrel3ProjectHelperTest::theSampleIsTheFirstTwelveOfEachList()
{
    const Reading reading =
        readDocument(list("name=\"A\"", colors(13, "a")) + list("name=\"B\"", colors(12, "b")) +
                     list("name=\"C\"", colors(1, "c")));
    QCOMPARE(reading.sample.size(), 12 + 12 + 1);
    QCOMPARE(reading.sample.at(11), QStringLiteral("a11"));
    QCOMPARE(reading.sample.at(12), QStringLiteral("b0"));
    QCOMPARE(reading.sample.last(), QStringLiteral("c0"));
    QCOMPARE(reading.told.size(), 13 + 12 + 1 + 2 * 3);
    QCOMPARE(readDocument(list("name=\"A\"", colors(2, "a")), 0.0, false).told.size(), 4);
}

void Sorrel3ProjectHelperTest::theSampleEndsWithTheRatio_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("size");
    QTest::newRow("none") << 0.0 << 3;
    QTest::newRow("below") << 0.9599 << 3;
    QTest::newRow("at") << 0.96 << 0;
    QTest::newRow("all") << 1.0 << 0;
}

void Sorrel3ProjectHelperTest::theSampleEndsWithTheRatio()
{
    QFETCH(const double, ratio);
    QFETCH(const int, size);
    QCOMPARE(readDocument(list("name=\"A\"", colors(3, "a")), ratio).sample.size(), size);
}

void Sorrel3ProjectHelperTest::theSampleEndsWithAnError()
{
    const Reading reading =
        readDocument(list("name=\"A\"", colors(2, "a")) + list("name=\"B\"", "") +
                     list("name=\"C\"", colors(2, "c")));
    QCOMPARE(reading.sample, QStringList({QStringLiteral("a0"), QStringLiteral("a1")}));
}

void Sorrel3ProjectHelperTest::writesWhatItReads()
{
    QDomDocument document;
    const QDomElement element = Sorrel3ProjectHelper::listElement(
        document, QStringLiteral("<&\" list"), true,
        {{QStringLiteral("u1"), QStringLiteral("a\nb"), QStringLiteral("#ff0000"),
          QStringLiteral("P"), QStringLiteral("7")},
         {QStringLiteral("u2"), QString(), QString(), QString(), QString()}});
    QCOMPARE(element.tagName(), QStringLiteral("ColorLibrary"));
    QCOMPARE(element.attribute(QStringLiteral("isUserLibrary")), QStringLiteral("1"));
    document.appendChild(element);
    const Reading reading = readDocument(document.toByteArray());
    QCOMPARE(reading.told,
             QStringList({QStringLiteral("list <&\" list! 1"),
                          QStringLiteral("u1|a\nb|#ff0000|P|<&\" list!|7"),
                          QStringLiteral("u2||||<&\" list!|"), QStringLiteral("read <&\" list!")}));
    QCOMPARE(Sorrel3ProjectHelper::listElement(document, QString(), false, {})
                 .attribute(QStringLiteral("isUserLibrary")),
             QStringLiteral("0"));
}

QTEST_GUILESS_MAIN(Sorrel3ProjectHelperTest)
#include "Sorrel3ProjectHelperTest.moc"
