#include "app/Settings.h"

#include <QSettings>

namespace {

constexpr char kMapPath[] = "/map_path";
constexpr char kMapFileName[] = "/map_file_name";
constexpr char kShowPath[] = "/show_path";
constexpr char kDmxPath[] = "/dmx_path";
constexpr char kLivePlay[] = "/live_play";
constexpr char kFrameRate[] = "/frame_rate";
constexpr char kSimRate[] = "/sim_rate";
constexpr char kShowSim[] = "/show_sim";
constexpr char kPauseSim[] = "/pause_sim";
constexpr char kSimOnTop[] = "/sim_on_top";
constexpr char kSimBackground[] = "/sim_background";

QString key(const char* name)
{
    return QString::fromLatin1(name);
}

} // namespace

void Settings::read(const QSettings& store)
{
    const Settings first;
    mapPath = store.value(key(kMapPath), first.mapPath).toString();
    mapFileName = store.value(key(kMapFileName), first.mapFileName).toString();
    showPath = store.value(key(kShowPath), first.showPath).toString();
    dmxPath = store.value(key(kDmxPath), first.dmxPath).toString();
    livePlay = store.value(key(kLivePlay), first.livePlay).toBool();
    frameRate = store.value(key(kFrameRate), first.frameRate).toInt();
    simRate = store.value(key(kSimRate), first.simRate).toInt();
    showSim = store.value(key(kShowSim), first.showSim).toBool();
    pauseSim = store.value(key(kPauseSim), first.pauseSim).toBool();
    simOnTop = store.value(key(kSimOnTop), first.simOnTop).toBool();
    // The default is no name that QColor knows, so that the colour stays invalid until it is set.
    const QString background =
        store.value(key(kSimBackground), QStringLiteral("Qt::white")).toString();
    simBackground = QColor();
    if (QColor::isValidColor(background)) {
        simBackground.setNamedColor(background);
    }
}

void Settings::write(QSettings* store) const
{
    store->setValue(key(kMapPath), mapPath);
    store->setValue(key(kMapFileName), mapFileName);
    store->setValue(key(kShowPath), showPath);
    store->setValue(key(kDmxPath), dmxPath);
    store->setValue(key(kLivePlay), livePlay);
    store->setValue(key(kFrameRate), frameRate);
    store->setValue(key(kSimRate), simRate);
    store->setValue(key(kShowSim), showSim);
    store->setValue(key(kPauseSim), pauseSim);
    store->setValue(key(kSimOnTop), simOnTop);
    store->setValue(key(kSimBackground), simBackground.name());
}
