#include "tools/listen/ListenOptions.h"

#include <QObject>
#include <QtTest>

class ListenOptionsTest : public QObject
{
    Q_OBJECT
private slots:
    void optionsAreRead_data();
    void optionsAreRead();
    void whatIsWrongIsRefused_data();
    void whatIsWrongIsRefused();
    void usageNamesEveryOption();
};

void ListenOptionsTest::optionsAreRead_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QVector<quint32>>("addresses");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<bool>("json");
    QTest::addColumn<bool>("help");
    using Addresses = QVector<quint32>;
    const Addresses home = {0x7F000001};
    QTest::newRow("none") << QStringList() << home << 0.0 << false << false;
    QTest::newRow("all") << QStringList{"--bind", "127.0.0.2", "--seconds", "2.5", "--json"}
                         << Addresses{0x7F000002} << 2.5 << true << false;
    QTest::newRow("several addresses")
        << QStringList{"--bind", "127.0.0.2", "--bind=10.1.2.3", "--bind", "127.0.0.2"}
        << Addresses{0x7F000002, 0x0A010203} << 0.0 << false << false;
    QTest::newRow("all addresses") << QStringList{"--bind", "127.0.0.2", "--bind", "0.0.0.0"}
                                   << Addresses{0} << 0.0 << false << false;
    QTest::newRow("help") << QStringList{"--help"} << home << 0.0 << false << true;
    QTest::newRow("help, short") << QStringList{"-h"} << home << 0.0 << false << true;
}

void ListenOptionsTest::optionsAreRead()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QVector<quint32>, addresses);
    QFETCH(const double, seconds);
    QFETCH(const bool, json);
    QFETCH(const bool, help);
    ListenOptions options;
    QString error;
    QVERIFY(ListenOptions::parse(QStringList("forge-listen") + arguments, &options, &error));
    QCOMPARE(options.addresses, addresses);
    QCOMPARE(options.seconds, seconds);
    QCOMPARE(options.json, json);
    QCOMPARE(options.help, help);
    QCOMPARE(error, QString());
}

void ListenOptionsTest::whatIsWrongIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{"--port", "6038"};
    QTest::newRow("something else") << QStringList{"127.0.0.1"};
    QTest::newRow("address missing") << QStringList{"--bind"};
    QTest::newRow("address empty") << QStringList{"--bind", ""};
    QTest::newRow("no address") << QStringList{"--bind", "somewhere"};
    QTest::newRow("IPv6 address") << QStringList{"--bind", "::1"};
    QTest::newRow("second address wrong") << QStringList{"--bind", "127.0.0.1", "--bind", "x"};
    QTest::newRow("seconds missing") << QStringList{"--seconds"};
    QTest::newRow("no seconds") << QStringList{"--seconds", "soon"};
    QTest::newRow("0 seconds") << QStringList{"--seconds", "0"};
    QTest::newRow("negative seconds") << QStringList{"--seconds", "-1"};
    QTest::newRow("nan seconds") << QStringList{"--seconds", "nan"};
    QTest::newRow("infinite seconds") << QStringList{"--seconds", "inf"};
    QTest::newRow("value for a flag") << QStringList{"--json=1"};
}

void ListenOptionsTest::whatIsWrongIsRefused()
{
    QFETCH(const QStringList, arguments);
    ListenOptions options;
    QString error;
    QVERIFY(!ListenOptions::parse(QStringList("forge-listen") + arguments, &options, &error));
    QVERIFY(!error.isEmpty());
}

void ListenOptionsTest::usageNamesEveryOption()
{
    for (const char* const option : {"--bind", "--seconds", "--json", "--help"}) {
        QVERIFY(ListenOptions::usage().contains(QLatin1String(option)));
    }
}

QTEST_APPLESS_MAIN(ListenOptionsTest)
#include "ListenOptionsTest.moc"
