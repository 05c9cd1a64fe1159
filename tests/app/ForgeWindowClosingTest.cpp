#include "tests/app/WindowBench.h"

#include <QMessageBox>
#include <QObject>
#include <QtTest>

namespace {

constexpr int kStillRunning = 7;

enum Way { Close, Exit };

} // namespace
Q_DECLARE_METATYPE(Way)

/// Closing the window and the exit action.
class ForgeWindowClosingTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void init() { m_bench = std::make_unique<WindowBench>(); }
    void cleanup();

    void anUnmodifiedShowGoesUnasked_data();
    void anUnmodifiedShowGoesUnasked();
    void aModifiedShowAsks_data();
    void aModifiedShowAsks();
    void theQuestionAsItReads_data() { anUnmodifiedShowGoesUnasked_data(); }
    void theQuestionAsItReads();
    void settingsAreWrittenAheadOfTheQuestion_data() { anUnmodifiedShowGoesUnasked_data(); }
    void settingsAreWrittenAheadOfTheQuestion();
    void yesGoesOnWithoutAFileToo_data() { anUnmodifiedShowGoesUnasked_data(); }
    void yesGoesOnWithoutAFileToo();

private:
    /// True if the window closed, or the event loop ended.
    bool leave(Way way);

    std::unique_ptr<WindowBench> m_bench;
};

void ForgeWindowClosingTest::cleanup()
{
    const QString complaints = m_bench->dialogs.complaints();
    m_bench.reset();
    QCOMPARE(complaints, QString());
}

bool ForgeWindowClosingTest::leave(Way way)
{
    m_bench->window->show(); // else a message box would be the last window
    if (way == Close) {
        return m_bench->window->close();
    }
    QTimer giveUp; // started late: it must not fire while a dialog is up
    giveUp.setSingleShot(true);
    connect(&giveUp, &QTimer::timeout, [] { QCoreApplication::exit(kStillRunning); });
    QTimer::singleShot(0, m_bench->window.get(), [this, &giveUp] {
        m_bench->action("exitAction")->trigger();
        giveUp.start(50);
    });
    return QApplication::exec() == 0;
}

void ForgeWindowClosingTest::anUnmodifiedShowGoesUnasked_data()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("close") << Close;
    QTest::newRow("exit") << Exit;
}

void ForgeWindowClosingTest::anUnmodifiedShowGoesUnasked()
{
    QFETCH(const Way, way);
    m_bench->open(m_bench->map(), m_bench->show());
    QVERIFY(leave(way));
    QCOMPARE(m_bench->dialogs.seen().size(), 0);
    QCOMPARE(WindowBench::store().value(QStringLiteral("/frame_rate")).toInt(), 40);
}

void ForgeWindowClosingTest::aModifiedShowAsks_data()
{
    QTest::addColumn<Way>("way");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("leaves");
    QTest::addColumn<bool>("saves");
    for (const Way way : {Close, Exit}) {
        const QByteArray name = way == Close ? "close, " : "exit, ";
        QTest::newRow((name + "yes").constData()) << way << QStringLiteral("Yes") << true << true;
        QTest::newRow((name + "no").constData()) << way << QStringLiteral("No") << true << false;
        QTest::newRow((name + "cancel").constData())
            << way << QStringLiteral("Cancel") << false << false;
    }
}

void ForgeWindowClosingTest::aModifiedShowAsks()
{
    QFETCH(const Way, way);
    QFETCH(const QString, answer);
    QFETCH(const bool, leaves);
    QFETCH(const bool, saves);
    const QString file = m_bench->show();
    m_bench->open(QString(), file);
    m_bench->root()->effectList().at(0)->setName(QStringLiteral("Renamed"));
    m_bench->editor()->setModified(true);
    m_bench->dialogs.expectBox(answer);
    QCOMPARE(leave(way), leaves);
    QCOMPARE(m_bench->dialogs.seen().size(), 1);
    QCOMPARE(WindowBench::text(file).contains(QStringLiteral("Renamed")), saves);
    QCOMPARE(m_bench->window->isVisible(), !(way == Close && leaves));
    QVERIFY(m_bench->isRunning()); // the question does not touch it
}

void ForgeWindowClosingTest::theQuestionAsItReads()
{
    QFETCH(const Way, way);
    m_bench->open(QString(), m_bench->show());
    m_bench->editor()->setModified(true);
    m_bench->dialogs.expectBox(QStringLiteral("No"));
    QVERIFY(leave(way));
    const DialogAnswers::Seen& box = m_bench->dialogs.seen().at(0);
    QCOMPARE(box.title, QStringLiteral("Orrin Pageant Forge"));
    QCOMPARE(box.text, QStringLiteral("Do you want to save changes to your current show?\n"));
    QCOMPARE(box.buttons,
             QStringList({QStringLiteral("Cancel"), QStringLiteral("No"), QStringLiteral("Yes")}));
    QCOMPARE(box.icon, QMessageBox::Warning);
}

void ForgeWindowClosingTest::settingsAreWrittenAheadOfTheQuestion()
{
    QFETCH(const Way, way);
    m_bench->open(QString(), m_bench->show());
    m_bench->editor()->setModified(true);
    m_bench->action("livePlayAction")->trigger();
    QVERIFY(!WindowBench::store().contains(QStringLiteral("/live_play")));
    QVariant stored;
    m_bench->dialogs.expect([&stored](QWidget* box) {
        stored = WindowBench::store().value(QStringLiteral("/live_play"));
        qobject_cast<QMessageBox*>(box)->button(QMessageBox::Cancel)->click();
    });
    QVERIFY(!leave(way));
    QVERIFY(stored.isValid());
    QCOMPARE(stored.toBool(), false);
}

void ForgeWindowClosingTest::yesGoesOnWithoutAFileToo()
{
    QFETCH(const Way, way);
    m_bench->open(m_bench->map());
    m_bench->editor()->setModified(true);
    m_bench->dialogs.expectBox(QStringLiteral("Yes"));
    m_bench->dialogs.expectFileCancelled();
    QVERIFY(leave(way));
    QCOMPARE(m_bench->dialogs.seen().size(), 2);
}

QTEST_MAIN(ForgeWindowClosingTest)
#include "ForgeWindowClosingTest.moc"
