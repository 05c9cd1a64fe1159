#include "tools/mapgen/BridgeShow.h"

using namespace ShowEffects;

namespace {

constexpr quint32 kShowLength = 45000;
constexpr quint32 kProcessionLength = 13000;

const QColor kNight(10, 44, 128);
const QColor kTide(0, 104, 124);
const QColor kLagoon(38, 214, 196);
const QColor kAmber(255, 150, 48);
const QColor kRose(226, 58, 112);
const QColor kLilac(142, 78, 220);
const QColor kIndigo(40, 30, 150);
const QColor kGold(255, 196, 96);

// Chromaticities of the black body (CIE 1931).
const QString kCandleWhite = yxyText(0.42, 0.5018, 0.4153);  // 2200 K
const QString kWarmWhite = yxyText(0.85, 0.4599, 0.4106);    // 2700 K
const QString kNeutralWhite = yxyText(0.70, 0.3805, 0.3768); // 4000 K

enum Layer : quint32 { BaseLayer = 1, WashLayer, AccentLayer, TopLayer };

QString numbered(const char* what, int index)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(index + 1, 2, 10, QLatin1Char('0'));
}

/// What is lit all through the show, so that nothing is ever dark; returns the effect that spans
/// it.
quint32 addBase(ShowEffect* show, const BridgeGroups& groups)
{
    const double half = kShowLength / 2000.0;
    const quint32 stone =
        show->add(fixedColor(QStringLiteral("Stone in candle light"), kCandleWhite)
                      .on(groups.allArches)
                      .layer(BaseLayer)
                      .at(0)
                      .lasting(kShowLength));
    const struct
    {
        const char* name;
        quint64 group;
        QColor from;
        QColor to;
    } tides[] = {{"River", groups.river, kNight, kTide},
                 {"Towers", groups.allTowers, kIndigo, QColor(126, 36, 128)},
                 {"Piers", groups.allPiers, kNight, QColor(88, 34, 150)},
                 {"Feet", groups.feet, kNight, QColor(88, 34, 150)}};
    for (const auto& tide : tides) { // out and back, so that the loop closes
        const QString name = QString::fromLatin1(tide.name);
        const quint32 out = show->add(
            crossFade(name + QStringLiteral(" turns"), rgbText(tide.from), rgbText(tide.to), half)
                .on(tide.group)
                .layer(BaseLayer)
                .withStartOf(stone, 0)
                .cycles(1));
        show->add(
            crossFade(name + QStringLiteral(" returns"), rgbText(tide.to), rgbText(tide.from), half)
                .on(tide.group)
                .layer(BaseLayer)
                .afterEndOf(out, 0)
                .untilEndOf(stone, 0));
    }
    show->add(fixedWhite(QStringLiteral("Roadway at half light"), {300, 58})
                  .on(groups.road)
                  .layer(BaseLayer)
                  .withStartOf(stone, 0)
                  .untilEndOf(stone, 0));
    show->add(fixedWhite(QStringLiteral("Lamps at half light"), {255, 50})
                  .on(groups.allLamps)
                  .layer(BaseLayer)
                  .withStartOf(stone, 0)
                  .untilEndOf(stone, 0));
    show->add(fixedColor(QStringLiteral("Quays in neutral white"), kNeutralWhite)
                  .on(groups.floods)
                  .layer(BaseLayer)
                  .withStartOf(stone, 0)
                  .untilEndOf(stone, 0));
    show->add(fixedColor(QStringLiteral("Crowns in gold"), rgbText(QColor(170, 104, 24)))
                  .on(groups.crowns)
                  .layer(BaseLayer)
                  .withStartOf(stone, 0)
                  .untilEndOf(stone, 0));
    return stone;
}

/// The blue hour: colour travels from bank to bank, arch by arch; returns the last arch's effect.
quint32 addBlueHour(ShowEffect* show, const BridgeGroups& groups, quint32 stone)
{
    const int count = groups.arches.size();
    quint32 last = stone;
    for (int i = 0; i < count; ++i) {
        const double way = i / static_cast<double>(count - 1);
        ShowEffect wash = fixedColor(numbered("Blue hour, arch", i),
                                     rgbText(along({kAmber, kRose, kLilac, kIndigo}, way)));
        wash.on(groups.arches.at(i)).layer(WashLayer).fading(1800, 3000);
        wash.withStartOf(last, i == 0 ? 300 : 850);
        last = show->add(wash.untilStartOf(stone, 11500 + i * 500));
    }
    quint32 level = last;
    for (int i = 0; i < groups.towerLevels.size(); ++i) {
        ShowEffect climb =
            crossFade(numbered("Blue hour, tower level", i), rgbText(kAmber), rgbText(kRose), 5.0);
        climb.on(groups.towerLevels.at(i)).layer(WashLayer).fading(900, 2200).cycles(1);
        level = show->add(climb.withStartOf(level, i == 0 ? -1800 : 650));
    }
    return last;
}

/// The tide: lagoon light runs down the river, and the piers answer; returns the last step.
quint32 addTide(ShowEffect* show, const BridgeGroups& groups, quint32 after)
{
    quint32 last = 0;
    for (int i = 0; i < groups.riverSteps.size(); ++i) {
        ShowEffect step = fixedColor(numbered("Tide, step", i), rgbText(kLagoon));
        step.on(groups.riverSteps.at(i)).layer(AccentLayer).fading(700, 2100).lasting(3000);
        if (i == 0) {
            step.afterEndOf(after, -4500);
        } else {
            step.withStartOf(last, 330);
        }
        last = show->add(step);
    }
    quint32 pier = last;
    for (int i = groups.piers.size() - 1; i >= 0; --i) {
        ShowEffect answer =
            crossFade(numbered("Tide, pier", i), rgbText(kLagoon), rgbText(kLilac), 4.0);
        answer.on(groups.piers.at(i)).layer(WashLayer).fading(900, 1800).cycles(1);
        pier = show->add(answer.withStartOf(pier, i == groups.piers.size() - 1 ? -1200 : 600));
    }
    show->add(whiteCrossFade(QStringLiteral("Quays swell"), {255, 30}, {255, 95}, 3.5, true, false)
                  .on(groups.floods)
                  .layer(WashLayer)
                  .fading(0, 1600)
                  .withStartOf(pier, -600)
                  .cycles(1));
    return last;
}

/// A procession with torches over the bridge, a timeline of its own.
ShowEffect procession(const BridgeGroups& groups)
{
    ShowEffect timeline = ShowEffects::timeline(QStringLiteral("Procession"));
    const int count = groups.roadSteps.size();
    quint32 last = 0;
    for (int i = 0; i < count; ++i) {
        ShowEffect torch = fixedWhite(numbered("Torches, step", i), {255, 100});
        torch.on(groups.roadSteps.at(i)).layer(1).fading(500, 1900).lasting(3000);
        if (i == 0) {
            torch.at(200);
        } else {
            torch.withStartOf(last, 760);
        }
        last = timeline.add(torch);
    }
    const quint32 first = 1;
    quint32 lamp = 0;
    for (int i = 0; i < groups.lamps.size(); ++i) { // each lamp flares as the torches pass below
        ShowEffect flare = whiteCrossFade(numbered("Lamp flares", i), {255, 100}, {255, 50}, 2.4);
        flare.on(groups.lamps.at(i)).layer(1).fading(400, 600).cycles(1);
        lamp = timeline.add(i == 0 ? flare.withStartOf(first, 500) : flare.withStartOf(lamp, 980));
    }
    timeline.add(fixedColor(QStringLiteral("Stone warms below"), kWarmWhite)
                     .on(groups.allArches)
                     .layer(1)
                     .fading(4500, 3500)
                     .withStartOf(first, 0)
                     .lasting(kProcessionLength - 400));
    return timeline;
}

/// The finale: everything rises to gold and rose, then falls back to candle light.
void addFinale(ShowEffect* show, const BridgeGroups& groups, quint32 parade, quint32 stone)
{
    quint32 arch = 0;
    const QVector<int> fromMiddle = {2, 1, 3, 0, 4};
    for (int i = 0; i < fromMiddle.size(); ++i) {
        const quint64 group = groups.arches.at(fromMiddle.at(i));
        ShowEffect rise = crossFade(numbered("Finale, arch", fromMiddle.at(i)), rgbText(kGold),
                                    rgbText(kRose), 7.0);
        rise.on(group).layer(TopLayer).fading(1300, 0).cycles(1);
        if (i == 0) {
            rise.afterEndOf(parade, -2600);
        } else { // the arches left and right of the middle rise as pairs
            rise.withStartOf(arch, i % 2 == 0 ? 0 : 700);
        }
        arch = show->add(rise);
        show->add(crossFade(numbered("Finale settles, arch", fromMiddle.at(i)), rgbText(kRose),
                            rgbText(kIndigo), 8.0)
                      .on(group)
                      .layer(TopLayer)
                      .fading(0, 4200)
                      .afterEndOf(arch, 0)
                      .cycles(1));
    }
    quint32 level = arch;
    for (int i = 0; i < groups.towerLevels.size(); ++i) {
        ShowEffect climb = fixedColor(numbered("Finale, tower level", i),
                                      rgbText(along({kGold, kRose, kLilac}, i / 3.0)));
        climb.on(groups.towerLevels.at(i))
            .layer(AccentLayer)
            .fading(800, 2600)
            .untilEndOf(stone, -900);
        level = show->add(climb.withStartOf(level, i == 0 ? 300 : 450));
    }
    show->add(fixedColor(QStringLiteral("Finale, crowns"), rgbText(kGold))
                  .on(groups.crowns)
                  .layer(AccentLayer)
                  .fading(900, 2800)
                  .withStartOf(level, 500)
                  .untilEndOf(stone, -600));
    show->add(
        crossFade(QStringLiteral("Finale, feet"), rgbText(kGold), rgbText(kRose), 8.0, true, false)
            .on(groups.feet)
            .layer(AccentLayer)
            .fading(0, 2600)
            .withStartOf(level, -1500)
            .cycles(1));
    show->add(crossFade(QStringLiteral("Finale, piers"), rgbText(kRose), rgbText(kIndigo), 8.0)
                  .on(groups.allPiers)
                  .layer(AccentLayer)
                  .fading(1800, 2600)
                  .withStartOf(level, -1000)
                  .cycles(1));
    quint32 wave = level;
    for (int i = groups.riverSteps.size() - 1; i >= 0; --i) { // upstream again
        const double way = i / static_cast<double>(groups.riverSteps.size() - 1);
        ShowEffect step = fixedColor(numbered("Finale, river step", i),
                                     rgbText(along({kRose, kAmber, kGold}, way)));
        step.on(groups.riverSteps.at(i)).layer(TopLayer).fading(500, 1500).lasting(2400);
        wave = show->add(step.withStartOf(wave, i + 1 == groups.riverSteps.size() ? 200 : 240));
    }
    show->add(fixedWhite(QStringLiteral("Lamps in full light"), {255, 100})
                  .on(groups.allLamps)
                  .layer(WashLayer)
                  .fading(2500, 3000)
                  .withStartOf(level, 0)
                  .untilEndOf(stone, -800));
}

} // namespace

ShowEffect bridgeShow(const BridgeGroups& groups)
{
    ShowEffect show = timeline(QStringLiteral("Meta Effect"));
    const quint32 stone = addBase(&show, groups);
    const quint32 blueHour = addBlueHour(&show, groups, stone);
    const quint32 tide = addTide(&show, groups, blueHour);
    const quint32 parade = show.add(procession(groups)
                                        .on(groups.whole)
                                        .layer(WashLayer)
                                        .afterEndOf(tide, 400)
                                        .lasting(kProcessionLength));
    addFinale(&show, groups, parade, stone);
    return show;
}
