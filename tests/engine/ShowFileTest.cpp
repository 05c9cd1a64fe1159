#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "tests/engine/TestShow.h"

#include <QElapsedTimer>
#include <QRegularExpression>

using TestShow::textOf;

/// The show file as a whole: what is read, what is refused, what a save gives.
class ShowFileTest : public QObject
{
    Q_OBJECT
private slots:
    void refusesWhatIsNoShow_data();
    void refusesWhatIsNoShow();
    void refusesWhatIsNoFile();
    void namesTheRefusedFile();
    void anEmptyElementIsAnEmptyShow();
    void readsTheTimelinesOwnKeys_data();
    void readsTheTimelinesOwnKeys();
    void theRootsTypeIsNotLookedAtButKept();
    void writesTheTimelineByteForByte();
    void theAppendixIsTheLastChild();
    void noAppendixLeavesTheFileAsItIs_data();
    void noAppendixLeavesTheFileAsItIs();
    void theAppendixIsAskedAtEachSave();
    void readersSkipTheAppendix();
    void theReaderIsGivenTheDocument();
    void theReaderIsNotGivenWhatIsRefused();
    void aFileSurvivesReadingAndSaving();
    void loadsUtf8();
    void dropsUnknownTypesAndKeepsTheRest();
    void numbersChildrenInFileOrder();
    void ordersChildrenByPriorityAndKeepsTheirTimes();
    void theGidCompilesInTheMiddle();
    void followsTheCyclesOfItsChildren();
    void nestingIsLimited_data();
    void nestingIsLimited();
    void entitiesCannotNestDeeper();
    void documentTypesDoNotHideNesting();
    void oddDocumentsAreReadAsTheDocumentReadsThem_data();
    void oddDocumentsAreReadAsTheDocumentReadsThem();
    void everyTruncationIsRefused();
    void hugeNumbersAreTolerated();
    void tenThousandEffectsReadQuickly();
};

namespace {

MetaEffect* parse(const QString& text)
{
    return EffectFactory::parseShow(text, nullptr);
}

void ignoreRefusal(const QString& name = QStringLiteral("(text)"))
{
    QTest::ignoreMessage(
        QtDebugMsg,
        QRegularExpression(
            QStringLiteral("^Show refused: %1: .+").arg(QRegularExpression::escape(name))));
}

struct ShowDeleter
{
    void operator()(MetaEffect* show) const { show->deleteShow(); }
};
using ShowPtr = std::unique_ptr<MetaEffect, ShowDeleter>;

QString timeline(const QString& keys)
{
    return QStringLiteral("<effect><type>Meta Effect</type>%1</effect>").arg(keys);
}

} // namespace

void ShowFileTest::refusesWhatIsNoShow_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("blank") << QStringLiteral(" \n");
    QTest::newRow("junk") << QStringLiteral("\x01\x02 not a show <<<>>> & ;");
    QTest::newRow("other root") << QStringLiteral("<map/>");
    QTest::newRow("other case") << QStringLiteral("<Effect/>");
    QTest::newRow("declared, and deep")
        << QStringLiteral("<?xml version='1.0' encoding='UTF-16'?>") +
               QStringLiteral("<effect>").repeated(1000000);
    QTest::newRow("declared") << QStringLiteral("<?xml version='1.0'?><effect/>");
    QTest::newRow("comment ahead") << QStringLiteral("<!-- mine --><effect/>");
    QTest::newRow("comment behind") << QStringLiteral("<effect/><!-- mine -->");
    QTest::newRow("two roots") << QStringLiteral("<effect/><effect/>");
    QTest::newRow("not closed") << QStringLiteral("<effect>");
    QTest::newRow("wrongly closed") << QStringLiteral("<effect><name></effect></name>");
    QTest::newRow("comment alone") << QStringLiteral("<!-- effect -->");
}

void ShowFileTest::refusesWhatIsNoShow()
{
    QFETCH(const QString, text);
    ignoreRefusal();
    QVERIFY(parse(text) == nullptr);
}

void ShowFileTest::refusesWhatIsNoFile()
{
    const QTemporaryDir dir;
    const QString missing = dir.filePath(QStringLiteral("none.sho"));
    for (const QString& path : {missing, dir.path()}) {
        ignoreRefusal(path);
        QVERIFY(EffectFactory::loadShow(path, nullptr) == nullptr);
    }
}

void ShowFileTest::namesTheRefusedFile()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("broken.sho"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<effect>\n<name></effect>");
    file.close();
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression(QStringLiteral("^Show refused: %1: .+ in line 2, column ")
                                           .arg(QRegularExpression::escape(path))));
    QVERIFY(EffectFactory::loadShow(path, nullptr) == nullptr);
}

void ShowFileTest::anEmptyElementIsAnEmptyShow()
{
    const ShowPtr show(parse(QStringLiteral("<effect/>")));
    QVERIFY(show != nullptr);
    QCOMPARE(show->name(), QStringLiteral("Meta Effect"));
    QCOMPARE(show->type(), QStringLiteral("Meta Effect"));
    QCOMPARE(show->eid(), Effect::kNoEid);
    QCOMPARE(show->gid(), Effect::kNoGid);
    QCOMPARE(show->loop(), true);
    QCOMPARE(show->brightness(), 1.0);
    QCOMPARE(show->active(), true);
    QCOMPARE(show->compiled(), false);
    QVERIFY(show->effectList().isEmpty());
}

void ShowFileTest::readsTheTimelinesOwnKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<double>("brightness");
    QTest::addColumn<bool>("loop");
    QTest::newRow("dim") << QStringLiteral("<brightness>0.5</brightness>") << 0.5 << true;
    QTest::newRow("unreadable brightness")
        << QStringLiteral("<brightness>0.5</brightness><brightness>half</brightness>") << 1.0
        << true;
    QTest::newRow("empty brightness") << QStringLiteral("<brightness/>") << 1.0 << true;
    QTest::newRow("once") << QStringLiteral("<loop>0</loop>") << 1.0 << false;
    QTest::newRow("unreadable loop")
        << QStringLiteral("<loop>0</loop><loop>no</loop>") << 1.0 << true;
    QTest::newRow("loop 7") << QStringLiteral("<loop>7</loop>") << 1.0 << true;
    QTest::newRow("the version is not read")
        << QStringLiteral("<version>99.0</version>") << 1.0 << true;
}

void ShowFileTest::readsTheTimelinesOwnKeys()
{
    QFETCH(const QString, keys);
    const ShowPtr show(parse(timeline(keys)));
    QVERIFY(show != nullptr);
    QTEST(show->brightness(), "brightness");
    QTEST(show->loop(), "loop");
}

void ShowFileTest::theRootsTypeIsNotLookedAtButKept()
{
    const ShowPtr show(parse(QStringLiteral("<effect><type>Fixed Color</type></effect>")));
    QVERIFY(show != nullptr);
    QCOMPARE(show->typeId(), 7);
    QCOMPARE(show->type(), QStringLiteral("Fixed Color"));
}

void ShowFileTest::writesTheTimelineByteForByte()
{
    MetaEffect show(nullptr, 5, nullptr);
    MetaEffect child(nullptr, Effect::kNoGid, nullptr);
    show.setLoop(false);
    show.setBrightness(0.3333333);
    show.addEffect(&child);
    QString childBase =
        TestShow::baseText(QStringLiteral("Meta Effect"), QStringLiteral("Meta Effect"));
    childBase.replace(QStringLiteral("<eid>4294967295"), QStringLiteral("<eid>1"));
    const QString expected =
        QStringLiteral("<effect>\n") +
        TestShow::baseText(QStringLiteral("Meta Effect"), QStringLiteral("Meta Effect"), 5) +
        QStringLiteral("<brightness>0.333333</brightness>\n"
                       "<loop>0</loop>\n"
                       "<version>2.3.1</version>\n"
                       "<effect>\n") +
        childBase +
        QStringLiteral("<brightness>1</brightness>\n"
                       "<loop>1</loop>\n"
                       "<version>2.3.1</version>\n"
                       "</effect>\n"
                       "</effect>\n");
    QCOMPARE(textOf(show), expected);
}

void ShowFileTest::theAppendixIsTheLastChild()
{
    MetaEffect show(nullptr, 5, nullptr);
    MetaEffect child(nullptr, Effect::kNoGid, nullptr);
    show.addEffect(&child);
    const QString before = textOf(show);
    show.setAppendix([](QDomDocument& document) {
        QDomElement element = document.createElement(QStringLiteral("ColorLibraryList"));
        element.appendChild(document.createElement(QStringLiteral("ColorLibrary")));
        return element;
    });
    const QString end = QStringLiteral("</effect>\n");
    QVERIFY(before.endsWith(end + end));
    QCOMPARE(textOf(show), before.left(before.size() - end.size()) +
                               QStringLiteral("<ColorLibraryList>\n<ColorLibrary/>\n"
                                              "</ColorLibraryList>\n") +
                               end);
}

void ShowFileTest::noAppendixLeavesTheFileAsItIs_data()
{
    QTest::addColumn<bool>("isAsked");
    QTest::newRow("nobody asked") << false;
    QTest::newRow("a null element") << true;
}

void ShowFileTest::noAppendixLeavesTheFileAsItIs()
{
    QFETCH(const bool, isAsked);
    const ShowPtr show(parse(timeline(QStringLiteral("<loop>0</loop>"))));
    const QString before = textOf(*show);
    show->setAppendix(isAsked ? [](QDomDocument&) { return QDomElement(); }
                              : MetaEffect::Appendix());
    QCOMPARE(textOf(*show), before);
}

void ShowFileTest::theAppendixIsAskedAtEachSave()
{
    MetaEffect show(nullptr, 5, nullptr);
    QString tag = QStringLiteral("First");
    show.setAppendix([&tag](QDomDocument& document) { return document.createElement(tag); });
    QVERIFY(textOf(show).contains(QStringLiteral("<First/>")));
    tag = QStringLiteral("Second");
    QVERIFY(textOf(show).endsWith(QStringLiteral("<Second/>\n</effect>\n")));
    QVERIFY(!textOf(show).contains(QStringLiteral("<First/>")));
}

void ShowFileTest::readersSkipTheAppendix()
{
    const QString swatches =
        QStringLiteral("<ColorLibraryList><ColorLibrary name=\"loop\"><Color name=\"brightness\"/>"
                       "</ColorLibrary></ColorLibraryList>");
    const ShowPtr plain(parse(timeline(QStringLiteral("<loop>0</loop>"))));
    const ShowPtr show(parse(timeline(QStringLiteral("<loop>0</loop>") + swatches)));
    QVERIFY(show->effectList().isEmpty());
    QCOMPARE(textOf(*show), textOf(*plain)); // kept by whoever reads it
}

void ShowFileTest::theReaderIsGivenTheDocument()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.sho"));
    const QString text = timeline(QStringLiteral("<other key=\"1\"/>"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    file.close();
    QStringList keys;
    const auto reader = [&keys](const QDomDocument& document) {
        keys << document.elementsByTagName(QStringLiteral("other"))
                    .at(0)
                    .toElement()
                    .attribute(QStringLiteral("key"));
    };
    const ShowPtr loaded(EffectFactory::loadShow(path, nullptr, reader));
    QVERIFY(loaded != nullptr);
    const ShowPtr parsed(EffectFactory::parseShow(text, nullptr, reader));
    QVERIFY(parsed != nullptr);
    QCOMPARE(keys, QStringList({QStringLiteral("1"), QStringLiteral("1")}));
}

void ShowFileTest::theReaderIsNotGivenWhatIsRefused()
{
    int readings = 0;
    const auto reader = [&readings](const QDomDocument&) { ++readings; };
    ignoreRefusal();
    QVERIFY(EffectFactory::parseShow(QStringLiteral("<map/>"), nullptr, reader) == nullptr);
    ignoreRefusal();
    QVERIFY(EffectFactory::parseShow(QString(), nullptr, reader) == nullptr);
    QCOMPARE(readings, 0);
}

void ShowFileTest::aFileSurvivesReadingAndSaving()
{
    const QString text = [] {
        MetaEffect root(nullptr, 0x1234567890ABCDEFULL, nullptr);
        root.setName(QStringLiteral("Fa\u00e7ade < & >"));
        MetaEffect nested(nullptr, 9, nullptr);
        MetaEffect inner(nullptr, 10, nullptr);
        inner.setEndLinkOffset(-0.125);
        inner.setBegin(123456789);
        inner.setEnd(4294967295U);
        nested.setBegin(17);
        nested.addEffect(&inner);
        root.addEffect(&nested);
        return textOf(root);
    }();
    const ShowPtr show(parse(text));
    QVERIFY(show != nullptr);
    QCOMPARE(textOf(*show), text);
    QCOMPARE(show->effectList().size(), 1);
    const auto* const nested = qobject_cast<MetaEffect*>(show->effectList().first());
    QVERIFY(nested != nullptr);
    QCOMPARE(nested->begin(), 17U);
    QCOMPARE(nested->effectList().first()->begin(), 123456789U);
    QCOMPARE(nested->effectList().first()->endLinkOffset(), -0.125);
}

void ShowFileTest::loadsUtf8()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("umlaut.sho"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<effect>\r\n<name>B\xc3\xbchne</name>\r\n</effect>\r\n");
    file.close();
    const ShowPtr show(EffectFactory::loadShow(path, nullptr));
    QVERIFY(show != nullptr);
    QCOMPARE(show->name(), QStringLiteral("B\u00fchne"));
}

void ShowFileTest::dropsUnknownTypesAndKeepsTheRest()
{
    QTest::ignoreMessage(QtDebugMsg, "Unsupported Effect Type: Disco");
    const ShowPtr show(
        parse(timeline(QStringLiteral("<effect><type>Disco</type><eid>1</eid></effect>"
                                      "<effect><type>Meta Effect</type><eid>2</eid></effect>"
                                      "<effect><eid>3</eid></effect>"
                                      "<effect><type>Meta Effect</type><eid>4</eid></effect>"))));
    QVERIFY(show != nullptr);
    QCOMPARE(show->effectList().size(), 2);
    QVERIFY(show->effectByEid(2) != nullptr);
    QVERIFY(show->effectByEid(4) != nullptr);
}

void ShowFileTest::numbersChildrenInFileOrder()
{
    const ShowPtr show(parse(timeline(timeline(QStringLiteral("<name>a</name>")) +
                                      timeline(QStringLiteral("<name>b</name><eid>7</eid>")) +
                                      timeline(QStringLiteral("<name>c</name><eid>no</eid>")) +
                                      timeline(QStringLiteral("<name>d</name><eid>3</eid>")) +
                                      timeline(QStringLiteral("<name>e</name>")))));
    QVERIFY(show != nullptr);
    QCOMPARE(show->effectByEid(1)->name(), QStringLiteral("a"));
    QCOMPARE(show->effectByEid(7)->name(), QStringLiteral("b"));
    QCOMPARE(show->effectByEid(8)->name(), QStringLiteral("c"));
    QCOMPARE(show->effectByEid(3)->name(), QStringLiteral("d"));
    QCOMPARE(show->effectByEid(9)->name(), QStringLiteral("e"));
}

void ShowFileTest::ordersChildrenByPriorityAndKeepsTheirTimes()
{
    const ShowPtr show(parse(timeline(QStringLiteral("<begin>3</begin><end>4</end>") +
                                      timeline(QStringLiteral("<priority>9</priority>")) +
                                      timeline(QStringLiteral("<priority>2</priority>"
                                                              "<begin>40</begin><end>50</end>")) +
                                      timeline(QStringLiteral("<priority>9</priority>")) +
                                      timeline(QStringLiteral("<priority>-1</priority>")))));
    QVERIFY(show != nullptr);
    QVector<quint32> eids;
    for (const Effect* const child : show->effectList()) {
        eids.append(child->eid());
    }
    QCOMPARE(eids, QVector<quint32>({4, 2, 1, 3})); // a negative priority is 0
    QCOMPARE(show->effectByEid(2)->begin(), 40U);
    QCOMPARE(show->effectByEid(2)->end(), 50U);
    QCOMPARE(show->begin(), 3U);
    QCOMPARE(show->end(), 50U);
}

void ShowFileTest::theGidCompilesInTheMiddle()
{
    const ShowPtr ahead(
        parse(timeline(QStringLiteral("<gid>1</gid><begin>3</begin><end>4</end>"))));
    QCOMPARE(ahead->begin(), 3U);
    QCOMPARE(ahead->end(), 4U);
    QCOMPARE(ahead->compiled(), true);
    const ShowPtr behind(
        parse(timeline(QStringLiteral("<begin>3</begin><end>4</end><gid>x</gid>"))));
    QCOMPARE(behind->begin(), 0U);
    QCOMPARE(behind->end(), 0U);
    QCOMPARE(behind->gid(), Effect::kNoGid);
}

void ShowFileTest::followsTheCyclesOfItsChildren()
{
    const ShowPtr show(parse(
        timeline(timeline(QStringLiteral("<endtype>0</endtype><endfixedtime>30</endfixedtime>") +
                          timeline(QStringLiteral("<end>5</end>"))))));
    auto* const nested = qobject_cast<MetaEffect*>(show->effectList().first());
    QVERIFY(nested != nullptr);
    QCOMPARE(nested->end(), 5U);
    QSignalSpy resolved(show.get(), &MetaEffect::updateEffectTimesComplete);
    nested->effectList().first()->setEnd(6);
    nested->updateEndTime(); // tells its new length
    QCOMPARE(resolved.count(), 1);
    QCOMPARE(nested->end(), 30U);
}

void ShowFileTest::nestingIsLimited_data()
{
    QTest::addColumn<QString>("open");
    QTest::addColumn<QString>("close");
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("accepted");
    const QString open = QStringLiteral("<effect><type>Meta Effect</type>");
    const QString close = QStringLiteral("</effect>");
    QTest::newRow("999 timelines, a type in the last") << open << close << 999 << true;
    QTest::newRow("1000 timelines, a type in the last") << open << close << 1000 << false;
    QTest::newRow("1000 elements") << QStringLiteral("<effect>") << close << 1000 << true;
    QTest::newRow("1001 elements") << QStringLiteral("<effect>") << close << 1001 << false;
    QTest::newRow("a million, closed") << QStringLiteral("<effect>") << close << 1000000 << false;
    QTest::newRow("a million, open") << QStringLiteral("<effect>") << QString() << 1000000 << false;
    QTest::newRow("a million, with attributes")
        << QStringLiteral("<effect a='/>'>") << close << 1000000 << false;
    QTest::newRow("a million, between comments")
        << QStringLiteral("<!--</effect>--><effect>") << close << 1000000 << false;
    QTest::newRow("a million, between sections")
        << QStringLiteral("<effect><![CDATA[</effect>]]>") << close << 1000000 << false;
    QTest::newRow("a million, with a prefix")
        << QStringLiteral("<effect><a:b>") << QStringLiteral("</a:b></effect>") << 1000000 << false;
    QTest::newRow("a million, between instructions")
        << QStringLiteral("<effect><?x </effect> ?>") << close << 1000000 << false;
}

void ShowFileTest::nestingIsLimited()
{
    QFETCH(const QString, open);
    QFETCH(const QString, close);
    QFETCH(const int, depth);
    QFETCH(const bool, accepted);
    const QString text = open.repeated(depth) + close.repeated(depth);
    if (!accepted) {
        QTest::ignoreMessage(QtDebugMsg,
                             "Show refused: (text): its elements nest deeper than 1000");
    }
    const ShowPtr show(parse(text));
    QCOMPARE(show != nullptr, accepted);
    if (accepted) { // it plays and is saved as any other
        show->tick(TestShow::kStartMs, 0);
        show->updateEffectTimes();
        QVERIFY(textOf(*show).startsWith(QStringLiteral("<effect>")));
    }
}

void ShowFileTest::entitiesCannotNestDeeper()
{
    // Each use of the entity opens a few hundred elements more.
    const QString entity = QStringLiteral("<a>").repeated(500);
    const QString head =
        QStringLiteral("<!DOCTYPE effect [<!ENTITY e \"%1\">]><effect>").arg(entity);
    QTest::ignoreMessage(QtDebugMsg, "Show refused: (text): its elements nest deeper than 1000");
    QVERIFY(parse(head + QStringLiteral("&e;").repeated(400)) == nullptr);
}

void ShowFileTest::documentTypesDoNotHideNesting()
{
    QTest::ignoreMessage(QtDebugMsg, "Show refused: (text): its elements nest deeper than 1000");
    QVERIFY(parse(QStringLiteral("<!DOCTYPE effect><effect a='1' a='2'><a:b/>&c;") +
                  QStringLiteral("<effect>").repeated(1000000)) == nullptr);
}

void ShowFileTest::oddDocumentsAreReadAsTheDocumentReadsThem_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a document type is no node") << QStringLiteral("<!DOCTYPE effect><effect/>");
    QTest::newRow("a prefix without a namespace") << QStringLiteral("<effect><a:b/></effect>");
    QTest::newRow("an entity not declared") << QStringLiteral("<effect>&foo;<a/></effect>");
    QTest::newRow("an attribute twice") << QStringLiteral("<effect a='1' a='2'/>");
    QTest::newRow("a comment inside") << QStringLiteral("<effect><!-- <a><b> --></effect>");
}

void ShowFileTest::oddDocumentsAreReadAsTheDocumentReadsThem()
{
    QFETCH(const QString, text);
    const ShowPtr show(parse(text));
    QVERIFY(show != nullptr);
    QVERIFY(show->effectList().isEmpty());
}

void ShowFileTest::everyTruncationIsRefused()
{
    MetaEffect root(nullptr, 1, nullptr);
    MetaEffect child(nullptr, 2, nullptr);
    root.addEffect(&child);
    const QString text = textOf(root).trimmed();
    for (int length = 0; length < text.size(); ++length) {
        ignoreRefusal();
        QVERIFY2(parse(text.left(length)) == nullptr, qPrintable(text.left(length)));
    }
}

void ShowFileTest::hugeNumbersAreTolerated()
{
    const QStringList numbers = {
        QStringLiteral("nan"),   QStringLiteral("inf"),         QStringLiteral("-inf"),
        QStringLiteral("1e308"), QStringLiteral("-1e308"),      QStringLiteral("4294967295"),
        QStringLiteral("-1"),    QStringLiteral("-2147483648"), QString(5000, QLatin1Char('9'))};
    const QStringList keys = {QStringLiteral("eid"),           QStringLiteral("gid"),
                              QStringLiteral("transparency"),  QStringLiteral("priority"),
                              QStringLiteral("begin"),         QStringLiteral("end"),
                              QStringLiteral("fadein"),        QStringLiteral("fadeout"),
                              QStringLiteral("starttype"),     QStringLiteral("startfixedtime"),
                              QStringLiteral("startlinkeid"),  QStringLiteral("startlinkoffset"),
                              QStringLiteral("endtype"),       QStringLiteral("endfixedtime"),
                              QStringLiteral("endlinkeid"),    QStringLiteral("endlinkoffset"),
                              QStringLiteral("endcyclecount"), QStringLiteral("brightness")};
    TestShow::TestMap map(1);
    for (const QString& number : numbers) {
        for (const QString& end : {QStringLiteral("1"), QStringLiteral("2")}) {
            QString values;
            for (const QString& key : keys) {
                values += QStringLiteral("<%1>%2</%1>").arg(key, number);
            }
            values += QStringLiteral("<starttype>1</starttype><startlinkeid>1</startlinkeid>"
                                     "<endlinkeid>1</endlinkeid><endtype>%1</endtype>")
                          .arg(end);
            const ShowPtr show(EffectFactory::parseShow(
                timeline(values + timeline(QStringLiteral("<eid>1</eid><end>9</end>")) +
                         timeline(values)),
                map.model()));
            QVERIFY(show != nullptr);
            show->updateEffectTimes();
            for (int frame = 0; frame < 3; ++frame) {
                show->tick(TestShow::kStartMs + frame * 25, static_cast<uint>(frame));
                map.endFrame();
            }
            const ShowPtr again(parse(textOf(*show)));
            QVERIFY(again != nullptr);
        }
    }
}

void ShowFileTest::tenThousandEffectsReadQuickly()
{
    constexpr int kEffects = 10000;
    const QString child =
        QStringLiteral("<effect>") +
        TestShow::baseText(QStringLiteral("Meta Effect"), QStringLiteral("Step")) +
        QStringLiteral("</effect>");
    const QString text = timeline(child.repeated(kEffects));
    QElapsedTimer timer;
    timer.start();
    QDomDocument doc;
    QVERIFY(doc.setContent(text));
    const qint64 documentMs = timer.restart();
    const ShowPtr show(parse(text));
    const qint64 showMs = timer.elapsed();
    QVERIFY(show != nullptr);
    QCOMPARE(show->effectList().size(), kEffects);
    QCOMPARE(show->effectList().last()->eid(), quint32(kEffects));
    // The document alone is most of it; a search or a sort per effect would multiply it.
    QVERIFY2(
        showMs < 4 * documentMs + 200,
        qPrintable(QStringLiteral("%1 ms, the document alone %2 ms").arg(showMs).arg(documentMs)));
}

QTEST_GUILESS_MAIN(ShowFileTest)
#include "ShowFileTest.moc"
