#include "app/Settings.h"

#include <QObject>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

namespace {

int warnings = 0;

void countWarnings(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*text*/)
{
    warnings += type == QtWarningMsg ? 1 : 0;
}

} // namespace

class SettingsTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void aFirstRunHasTheDefaults();
    void eachKeyIsRead();
    void anOddFrameRateIsReadAsItStands_data();
    void anOddFrameRateIsReadAsItStands();
    void theBackgroundIsReadByName_data();
    void theBackgroundIsReadByName();
    void allKeysAreWrittenTogether();
    void anUnsetBackgroundIsWrittenAsBlack();
    void theLeadingSlashIsNotPartOfTheFile();

private:
    QString file() const { return m_dir->filePath(QStringLiteral("settings.conf")); }

    QScopedPointer<QTemporaryDir> m_dir;
};

void SettingsTest::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void SettingsTest::aFirstRunHasTheDefaults()
{
    const QSettings store(file(), QSettings::IniFormat);
    Settings settings;
    settings.livePlay = false; // each field is read over
    settings.frameRate = 7;
    settings.simBackground = Qt::red;
    settings.read(store);
    QCOMPARE(settings.mapPath, QStringLiteral("./"));
    QCOMPARE(settings.mapFileName, QString());
    QCOMPARE(settings.showPath, QStringLiteral("./"));
    QCOMPARE(settings.dmxPath, QStringLiteral("./"));
    QCOMPARE(settings.livePlay, true);
    QCOMPARE(settings.frameRate, 40);
    QCOMPARE(settings.simRate, 1);
    QCOMPARE(settings.showSim, true);
    QCOMPARE(settings.pauseSim, false);
    QCOMPARE(settings.simOnTop, true);
    QVERIFY(!settings.simBackground.isValid());
}

void SettingsTest::eachKeyIsRead()
{
    QSettings store(file(), QSettings::IniFormat);
    store.setValue(QStringLiteral("/map_path"), QStringLiteral("/maps"));
    store.setValue(QStringLiteral("/map_file_name"), QStringLiteral("/maps/a.map"));
    store.setValue(QStringLiteral("/show_path"), QStringLiteral("/shows"));
    store.setValue(QStringLiteral("/dmx_path"), QStringLiteral("/dmx"));
    store.setValue(QStringLiteral("/live_play"), false);
    store.setValue(QStringLiteral("/frame_rate"), 25);
    store.setValue(QStringLiteral("/sim_rate"), 3);
    store.setValue(QStringLiteral("/show_sim"), false);
    store.setValue(QStringLiteral("/pause_sim"), true);
    store.setValue(QStringLiteral("/sim_on_top"), false);
    store.setValue(QStringLiteral("/sim_background"), QStringLiteral("#102030"));
    Settings settings;
    settings.read(store);
    QCOMPARE(settings.mapPath, QStringLiteral("/maps"));
    QCOMPARE(settings.mapFileName, QStringLiteral("/maps/a.map"));
    QCOMPARE(settings.showPath, QStringLiteral("/shows"));
    QCOMPARE(settings.dmxPath, QStringLiteral("/dmx"));
    QCOMPARE(settings.livePlay, false);
    QCOMPARE(settings.frameRate, 25);
    QCOMPARE(settings.simRate, 3);
    QCOMPARE(settings.showSim, false);
    QCOMPARE(settings.pauseSim, true);
    QCOMPARE(settings.simOnTop, false);
    QCOMPARE(settings.simBackground, QColor(0x10, 0x20, 0x30));
}

void SettingsTest::anOddFrameRateIsReadAsItStands_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("rate");
    QTest::newRow("zero") << QStringLiteral("0") << 0;
    QTest::newRow("negative") << QStringLiteral("-5") << -5;
    QTest::newRow("no number") << QStringLiteral("fast") << 0;
}

void SettingsTest::anOddFrameRateIsReadAsItStands()
{
    QFETCH(const QString, stored);
    QFETCH(const int, rate);
    QSettings store(file(), QSettings::IniFormat);
    store.setValue(QStringLiteral("/frame_rate"), stored);
    Settings settings;
    settings.read(store);
    QCOMPARE(settings.frameRate, rate);
    settings.write(&store);
    QCOMPARE(store.value(QStringLiteral("/frame_rate")).toInt(), rate);
}

void SettingsTest::theBackgroundIsReadByName_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QColor>("color");
    QTest::newRow("the default") << QStringLiteral("Qt::white") << QColor();
    QTest::newRow("six digits") << QStringLiteral("#0a0b0c") << QColor(10, 11, 12);
    QTest::newRow("a name") << QStringLiteral("white") << QColor(255, 255, 255);
    QTest::newRow("junk") << QStringLiteral("#12") << QColor();
    QTest::newRow("empty") << QString() << QColor();
}

void SettingsTest::theBackgroundIsReadByName()
{
    QFETCH(const QString, stored);
    QFETCH(const QColor, color);
    QSettings store(file(), QSettings::IniFormat);
    store.setValue(QStringLiteral("/sim_background"), stored);
    Settings settings;
    settings.simBackground = Qt::red;
    warnings = 0;
    const QtMessageHandler former = qInstallMessageHandler(countWarnings);
    settings.read(store);
    qInstallMessageHandler(former);
    QCOMPARE(settings.simBackground, color);
    QCOMPARE(warnings, 0); // a first run logs nothing
}

void SettingsTest::allKeysAreWrittenTogether()
{
    Settings settings;
    settings.mapPath = QStringLiteral("/m");
    settings.showPath = QStringLiteral("/s");
    settings.dmxPath = QStringLiteral("/d");
    settings.livePlay = false;
    settings.frameRate = 11;
    settings.simRate = 12;
    settings.showSim = false;
    settings.pauseSim = true;
    settings.simOnTop = false;
    settings.simBackground = QColor(1, 2, 255);
    QSettings store(file(), QSettings::IniFormat);
    settings.write(&store);

    QStringList keys = store.allKeys();
    keys.sort();
    QCOMPARE(keys, QStringList({QStringLiteral("dmx_path"), QStringLiteral("frame_rate"),
                                QStringLiteral("live_play"), QStringLiteral("map_file_name"),
                                QStringLiteral("map_path"), QStringLiteral("pause_sim"),
                                QStringLiteral("show_path"), QStringLiteral("show_sim"),
                                QStringLiteral("sim_background"), QStringLiteral("sim_on_top"),
                                QStringLiteral("sim_rate")}));
    QCOMPARE(store.value(QStringLiteral("/map_path")).toString(), QStringLiteral("/m"));
    QCOMPARE(store.value(QStringLiteral("/map_file_name")).toString(), QString());
    QCOMPARE(store.value(QStringLiteral("/show_path")).toString(), QStringLiteral("/s"));
    QCOMPARE(store.value(QStringLiteral("/dmx_path")).toString(), QStringLiteral("/d"));
    QCOMPARE(store.value(QStringLiteral("/live_play")).toBool(), false);
    QCOMPARE(store.value(QStringLiteral("/frame_rate")).toInt(), 11);
    QCOMPARE(store.value(QStringLiteral("/sim_rate")).toInt(), 12);
    QCOMPARE(store.value(QStringLiteral("/show_sim")).toBool(), false);
    QCOMPARE(store.value(QStringLiteral("/pause_sim")).toBool(), true);
    QCOMPARE(store.value(QStringLiteral("/sim_on_top")).toBool(), false);
    QCOMPARE(store.value(QStringLiteral("/sim_background")).toString(), QStringLiteral("#0102ff"));
}

void SettingsTest::anUnsetBackgroundIsWrittenAsBlack()
{
    QSettings store(file(), QSettings::IniFormat);
    const Settings settings;
    settings.write(&store);
    QCOMPARE(store.value(QStringLiteral("/sim_background")).toString(), QStringLiteral("#000000"));
}

void SettingsTest::theLeadingSlashIsNotPartOfTheFile()
{
    {
        QSettings store(file(), QSettings::IniFormat);
        const Settings settings;
        settings.write(&store);
    }
    QFile written(file());
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QByteArray text = written.readAll();
    QVERIFY(text.contains("\nframe_rate=40\n"));
    QVERIFY(!text.contains("/frame_rate"));
}

QTEST_GUILESS_MAIN(SettingsTest)
#include "SettingsTest.moc"
