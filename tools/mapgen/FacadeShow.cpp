#include "tools/mapgen/FacadeShow.h"

using namespace ShowEffects;

namespace {

constexpr quint32 kShowLength = 48000;

// One palette for the whole show: the sky from indigo to plum, the sunset from gold to violet,
// and aqua as its opposite.
const QColor kIndigo(26, 44, 150);
const QColor kPlum(98, 26, 124);
const QColor kGold(255, 176, 72);
const QColor kCoral(255, 92, 70);
const QColor kRose(214, 44, 118);
const QColor kViolet(96, 44, 190);
const QColor kAqua(52, 232, 208);
const QColor kAzure(24, 96, 236);
const QColor kCandle(255, 222, 168);

enum Layer : quint32 { SkyLayer = 1, WashLayer, AccentLayer, TopLayer };

QString numbered(const char* what, int index)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(index + 1, 2, 10, QLatin1Char('0'));
}

/// Night over the whole facade, all through: it deepens for one half and clears in the other, so
/// that the loop closes on the colour that it opened with. Returns the half that ends the show.
quint32 addSky(ShowEffect* show, const FacadeGroups& groups)
{
    const double half = kShowLength / 2000.0;
    const quint32 deepening =
        show->add(crossFade(QStringLiteral("Night deepens"), rgbText(kIndigo), rgbText(kPlum), half)
                      .on(groups.whole)
                      .layer(SkyLayer)
                      .at(0)
                      .cycles(1));
    return show->add(
        crossFade(QStringLiteral("Night clears"), rgbText(kPlum), rgbText(kIndigo), half)
            .on(groups.whole)
            .layer(SkyLayer)
            .afterEndOf(deepening, 0)
            .cycles(1));
}

/// The sunset climbs floor by floor and sinks from the top; returns the topmost floor's effect.
quint32 addDusk(ShowEffect* show, const FacadeGroups& groups, quint32 night)
{
    const int count = groups.floors.size();
    quint32 below = 0;
    for (int floor = 0; floor < count; ++floor) {
        const double height = floor / static_cast<double>(count - 1);
        ShowEffect wash = fixedColor(numbered("Dusk, floor", floor),
                                     rgbText(along({kGold, kCoral, kRose, kViolet}, height)));
        wash.on(groups.floors.at(floor)).layer(WashLayer).fading(1500, 2600);
        if (floor == 0) {
            wash.at(0);
        } else {
            wash.withStartOf(below, 240);
        }
        // Ends follow the night, not the next floor: links must not close on themselves.
        wash.untilStartOf(night, -12300 + (count - 1 - floor) * 170);
        below = show->add(wash);
    }
    return below;
}

/// A cool ribbon from the left, column by column; returns the last column's effect.
quint32 addRibbon(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    const int count = groups.columns.size();
    quint32 last = 0;
    for (int column = 0; column < count; ++column) {
        const double way = column / static_cast<double>(count - 1);
        ShowEffect step = fixedColor(numbered("Ribbon, column", column),
                                     rgbText(along({kAqua, kAzure, kAqua}, way)));
        step.on(groups.columns.at(column)).layer(AccentLayer).fading(420, 1300).lasting(1800);
        if (column == 0) {
            step.afterEndOf(after, -1600);
        } else {
            step.withStartOf(last, 170);
        }
        last = show->add(step);
    }
    return last;
}

/// A comet back from the right on every second column and its neighbour, bright head, dark tail.
quint32 addComet(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    quint32 last = 0;
    for (int column = groups.columns.size() - 1; column >= 0; --column) {
        ShowEffect step =
            crossFade(numbered("Comet, column", column), rgbText(kCandle), rgbText(kRose), 1.6);
        step.on(groups.columns.at(column)).layer(TopLayer).fading(120, 900).cycles(1);
        if (last == 0) {
            step.afterEndOf(after, -700);
        } else {
            step.withStartOf(last, 150);
        }
        last = show->add(step);
    }
    return last;
}

/// Wings and pavilion breathe against each other; returns the effect that ends last.
quint32 addBreath(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    const QColor deepTeal(4, 74, 92);
    const QColor ember(150, 42, 16);
    quint32 in = 0;
    quint32 out = 0;
    for (const int bay : {0, 2}) {
        const QString side = bay == 0 ? QStringLiteral("West wing") : QStringLiteral("East wing");
        ShowEffect rise = crossFade(side + QStringLiteral(" breathes in"), rgbText(deepTeal),
                                    rgbText(kAqua), 5.0);
        rise.on(groups.bays.at(bay)).layer(WashLayer).fading(2000, 0).cycles(1);
        if (bay == 0) {
            rise.afterEndOf(after, -1500);
        } else {
            rise.withStartOf(in, 0);
        }
        in = show->add(rise);
        ShowEffect fall = crossFade(side + QStringLiteral(" breathes out"), rgbText(kAqua),
                                    rgbText(deepTeal), 6.0);
        out = show->add(fall.on(groups.bays.at(bay))
                            .layer(WashLayer)
                            .fading(0, 2600)
                            .afterEndOf(in, 0)
                            .cycles(1));
    }
    const quint32 pavilion =
        show->add(crossFade(QStringLiteral("Pavilion glows"), rgbText(ember), rgbText(kGold), 5.5)
                      .on(groups.bays.at(1))
                      .layer(WashLayer)
                      .fading(1800, 0)
                      .withStartOf(in, 1500)
                      .cycles(1));
    show->add(crossFade(QStringLiteral("Pavilion cools"), rgbText(kGold), rgbText(ember), 5.0)
                  .on(groups.bays.at(1))
                  .layer(WashLayer)
                  .fading(0, 2600)
                  .afterEndOf(pavilion, 0)
                  .untilEndOf(out, 1000));
    // The top floor as a white crown, rising over both.
    const quint32 crown = show->add(
        whiteCrossFade(QStringLiteral("Crown rises"), {255, 8}, {255, 82}, 5.0, true, false)
            .on(groups.floors.last())
            .layer(AccentLayer)
            .withStartOf(pavilion, 800)
            .cycles(1));
    show->add(fixedWhite(QStringLiteral("Crown holds"), {255, 82})
                  .on(groups.floors.last())
                  .layer(AccentLayer)
                  .fading(0, 2200)
                  .afterEndOf(crown, 0)
                  .untilEndOf(out, 400));
    return out;
}

/// Rings burst from the middle in candle light and fall back in violet; returns the last one.
quint32 addRings(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    const int count = groups.rings.size();
    quint32 last = 0;
    for (int i = 0; i < count; ++i) {
        const double way = i / static_cast<double>(count - 1);
        ShowEffect step = fixedColor(numbered("Burst, ring", i),
                                     rgbText(along({kCandle, kGold, kCoral, kRose}, way)));
        step.on(groups.rings.at(i)).layer(AccentLayer).fading(380, 1700).lasting(2300);
        if (i == 0) {
            step.afterEndOf(after, -900);
        } else {
            step.withStartOf(last, 260);
        }
        last = show->add(step);
    }
    for (int i = count - 1; i >= 0; --i) {
        const double way = i / static_cast<double>(count - 1);
        ShowEffect step =
            crossFade(numbered("Fall, ring", i), rgbText(along({kAqua, kAzure, kViolet}, way)),
                      rgbText(kPlum), 2.4);
        step.on(groups.rings.at(i)).layer(TopLayer).fading(600, 1200).cycles(1);
        step.withStartOf(last, i == count - 1 ? 900 : 220);
        last = show->add(step);
    }
    return last;
}

/// The sunset once more, tier over tier, let go in time for the loop.
/// Above it a white line rides up the house.
void addAfterglow(ShowEffect* show, const FacadeGroups& groups, quint32 after, quint32 night)
{
    const QVector<QColor> colors = {kGold, kCoral, kViolet};
    quint32 last = 0;
    for (int tier = 0; tier < groups.tiers.size(); ++tier) {
        ShowEffect wash =
            fixedColor(numbered("Afterglow, tier", tier), rgbText(colors.at(tier), 0.85));
        wash.on(groups.tiers.at(tier)).layer(WashLayer).fading(2400, 3600).untilEndOf(night, -400);
        if (tier == 0) {
            wash.afterEndOf(after, -1800);
        } else {
            wash.withStartOf(last, 900);
        }
        last = show->add(wash);
    }
    for (int floor = 0; floor < groups.floors.size(); ++floor) {
        ShowEffect line = fixedWhite(numbered("Lift, floor", floor), {255, 78});
        line.on(groups.floors.at(floor)).layer(AccentLayer).fading(200, 1000).lasting(1300);
        last = show->add(line.withStartOf(last, floor == 0 ? 1400 : 200));
    }
}

} // namespace

ShowEffect facadeShow(const FacadeGroups& groups)
{
    ShowEffect show = timeline(QStringLiteral("Meta Effect"));
    const quint32 night = addSky(&show, groups);
    const quint32 dusk = addDusk(&show, groups, night);
    const quint32 ribbon = addRibbon(&show, groups, dusk);
    const quint32 comet = addComet(&show, groups, ribbon);
    const quint32 breath = addBreath(&show, groups, comet);
    const quint32 rings = addRings(&show, groups, breath);
    addAfterglow(&show, groups, rings, night);
    return show;
}
