#include "tools/mapgen/FacadeRevue.h"

#include "tools/mapgen/Artwork.h"
#include "tools/mapgen/MotionEffects.h"

using namespace ShowEffects;

namespace {

constexpr quint32 kShowLength = 92000;
constexpr quint32 kFinaleLength = 11000;

const QColor kIndigo(22, 34, 132);
const QColor kPlum(84, 22, 112);
const QColor kGold(255, 176, 72);
const QColor kCoral(255, 92, 70);
const QColor kRose(214, 44, 118);
const QColor kViolet(96, 44, 190);
const QColor kAqua(52, 232, 208);
const QColor kAzure(24, 96, 236);
const QColor kTeal(4, 74, 92);
const QColor kEmber(150, 42, 16);
const QColor kCandle(255, 222, 168);

// The middle of the facade's windows, in pixels of twelve map units.
const QPointF kMiddle(42.0, 26.0);

enum Layer : quint32 { HiddenLayer, SkyLayer, WashLayer, AccentLayer, TopLayer };

/// Night over the whole facade, which closes on the colour that it opened with. Text and
/// selection paint opaquely and reach the controllers alone: they lie below it.
void addSky(ShowEffect* show, const FacadeGroups& groups)
{
    const double half = kShowLength / 2000.0;
    const quint32 deepening =
        show->add(crossFade(QStringLiteral("Night deepens"), rgbText(kIndigo), rgbText(kPlum), half)
                      .on(groups.whole)
                      .layer(SkyLayer)
                      .at(0)
                      .cycles(1));
    show->add(crossFade(QStringLiteral("Night clears"), rgbText(kPlum), rgbText(kIndigo), half)
                  .on(groups.whole)
                  .layer(SkyLayer)
                  .afterEndOf(deepening, 0)
                  .cycles(1));
    const quint32 greeting =
        show->add(text(QStringLiteral("Greeting"), QStringLiteral("Good evening"), kIndigo, 3.0)
                      .on(groups.whole)
                      .layer(HiddenLayer)
                      .at(1000)
                      .cycles(1));
    show->add(selection(QStringLiteral("Focus"), kIndigo)
                  .on(groups.whole)
                  .layer(HiddenLayer)
                  .afterEndOf(greeting, 500)
                  .lasting(2000));
}

/// The last sunlight runs up the house, rests and goes; returns the resting light.
quint32 addSunset(ShowEffect* show, const FacadeGroups& groups)
{
    const quint32 rise = show->add(sweep(QStringLiteral("Sunlight climbs"), kCoral, 5.0)
                                       .on(groups.floorChase)
                                       .layer(WashLayer)
                                       .fading(400, 0)
                                       .at(800)
                                       .cycles(1));
    const quint32 rest = show->add(fixedColor(QStringLiteral("Sunlight rests"), rgbText(kCoral))
                                       .on(groups.whole)
                                       .layer(WashLayer)
                                       .fading(0, 3000)
                                       .afterEndOf(rise, 0)
                                       .lasting(4200));
    show->add(sweep(QStringLiteral("Gold follows"), kGold, 4.5)
                  .on(groups.floorChase)
                  .layer(AccentLayer)
                  .fading(400, 1600)
                  .withStartOf(rise, 2600)
                  .cycles(1));
    return rest;
}

/// Comets along the columns, bay by bay, and a ring of light up the floors; returns the comets.
quint32 addComets(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    StreakSpec comet;
    comet.width = 2;
    comet.reverseTail = 9;
    const quint32 comets = show->add(streak(QStringLiteral("Comets"), kCandle, 3.2, comet)
                                         .on(groups.bayChase)
                                         .layer(TopLayer)
                                         .fading(500, 900)
                                         .afterEndOf(after, -1800)
                                         .cycles(3));
    StreakSpec lift;
    lift.width = 1;
    lift.forwardTail = 4;
    lift.reverseTail = 4;
    lift.reverse = true;
    show->add(streak(QStringLiteral("Falling light"), kAqua, 4.0, lift)
                  .on(groups.floorChase)
                  .layer(AccentLayer)
                  .fading(900, 900)
                  .withStartOf(comets, 800)
                  .untilEndOf(comets, -200));
    return comets;
}

/// The colour wheel in pastel, column by column.
quint32 addRainbow(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    return show->add(chasingRainbow(QStringLiteral("Rainbow walks"), QColor(255, 86, 120), 7.0, 7.5)
                         .on(groups.columnChase)
                         .layer(WashLayer)
                         .fading(1800, 1800)
                         .afterEndOf(after, -1400)
                         .lasting(9500));
}

/// Wings and pavilion against each other, with a white crown; returns the wings' light.
quint32 addBreath(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    quint32 wing = 0;
    for (const int bay : {0, 2}) {
        const QString side = bay == 0 ? QStringLiteral("West wing") : QStringLiteral("East wing");
        ShowEffect still = fixedColor(side, rgbText(kTeal));
        still.on(groups.bays.at(bay)).layer(WashLayer).fading(1800, 1800).lasting(10000);
        if (bay == 0) {
            still.afterEndOf(after, -1500);
        } else {
            still.withStartOf(wing, 0);
        }
        wing = show->add(still);
        // Over its own colour, and gone before that fades: it knows no transparency.
        show->add(
            sparkleGroup(QStringLiteral("%1 shimmers").arg(side), QColor(20, 120, 136), kTeal, 2, 6)
                .on(groups.bayChases.at(bay))
                .layer(AccentLayer)
                .withStartOf(wing, 1800)
                .untilEndOf(wing, -1800));
    }
    const quint32 glow =
        show->add(crossFade(QStringLiteral("Pavilion glows"), rgbText(kEmber), rgbText(kGold), 4.5)
                      .on(groups.bays.at(1))
                      .layer(WashLayer)
                      .fading(1500, 0)
                      .withStartOf(wing, 400)
                      .cycles(1));
    show->add(crossFade(QStringLiteral("Pavilion cools"), rgbText(kGold), rgbText(kEmber), 4.5)
                  .on(groups.bays.at(1))
                  .layer(WashLayer)
                  .fading(0, 2000)
                  .afterEndOf(glow, 0)
                  .untilEndOf(wing, 400));
    const quint32 crown = show->add(
        whiteCrossFade(QStringLiteral("Crown rises"), {255, 5}, {255, 90}, 3.5, true, false)
            .on(groups.floors.last())
            .layer(TopLayer)
            .withStartOf(wing, 1200)
            .cycles(1));
    show->add(fixedWhite(QStringLiteral("Crown holds"), {255, 90})
                  .on(groups.floors.last())
                  .layer(TopLayer)
                  .fading(0, 1800)
                  .afterEndOf(crown, 0)
                  .untilEndOf(wing, 300));
    return wing;
}

/// A picture of hills passes, from sunset to moonrise, then a gull crosses under the stars;
/// returns the gull.
quint32 addPictures(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    const double y = Artwork::kHillsHeight / 2.0;
    const quint32 hills = show->add(
        imageScroll(QStringLiteral("Hills"), QStringLiteral("examples/facade/hills.png"), 11.0,
                    {kMiddle.x() + 1.0, y, 1.0}, {Artwork::kHillsWidth - kMiddle.x() - 2.0, y, 1.0})
            .on(groups.whole)
            .layer(WashLayer)
            .fading(1200, 1500)
            .afterEndOf(after, -1000)
            .cycles(1));
    const quint32 gull =
        show->add(animation(QStringLiteral("Gull"), QStringLiteral("examples/facade/gull"), 8,
                            Artwork::kFilmFrames, true)
                      .on(groups.whole)
                      .layer(AccentLayer)
                      .fading(900, 900)
                      .afterEndOf(hills, -700)
                      .lasting(8500));
    show->add(sparkle(QStringLiteral("Stars"), kCandle, 6, 9)
                  .on(groups.whole)
                  .layer(WashLayer)
                  .fading(1200, 1500)
                  .withStartOf(gull, 0)
                  .untilEndOf(gull, 600));
    return gull;
}

/// Rings from the middle, then a spiral, both under a veil that takes the glare off their hues;
/// returns the spiral.
quint32 addWaves(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    const quint32 rings = show->add(burst(QStringLiteral("Burst"), 4.0, 110, kMiddle)
                                        .on(groups.whole)
                                        .layer(WashLayer)
                                        .fading(1500, 1800)
                                        .afterEndOf(after, -500)
                                        .cycles(2));
    const quint32 turn = show->add(spiral(QStringLiteral("Spiral"), 8.0, 60, 2, kMiddle)
                                       .on(groups.whole)
                                       .layer(AccentLayer)
                                       .fading(1800, 1800)
                                       .afterEndOf(rings, -1800)
                                       .lasting(9000));
    show->add(fixedColor(QStringLiteral("Veil"), rgbText(kViolet, 0.28))
                  .on(groups.whole)
                  .layer(TopLayer)
                  .fading(1500, 1500)
                  .withStartOf(rings, 0)
                  .untilEndOf(turn, 0));
    return turn;
}

/// Rings of random colours from the middle, then the evening's own palette up the floors; returns
/// the palette.
quint32 addPalettes(ShowEffect* show, const FacadeGroups& groups, quint32 after)
{
    const quint32 chance =
        show->add(randomColor(QStringLiteral("Lucky rings"), QColor(40, 110, 235), 2.4, 1.6, -0.6)
                      .on(groups.ringChase)
                      .layer(WashLayer)
                      .fading(1600, 1600)
                      .afterEndOf(after, -1500)
                      .lasting(9000));
    const QVector<RainbowStop> evening = {{kGold, 0.3, 1.4},
                                          {kCoral, 0.3, 1.4},
                                          {kRose, 0.3, 1.4},
                                          {kViolet, 0.3, 1.4},
                                          {kAzure, 0.3, 1.4}};
    return show->add(customRainbow(QStringLiteral("Evening"), evening, 0.34)
                         .on(groups.floorChase)
                         .layer(AccentLayer)
                         .fading(1600, 2500)
                         .afterEndOf(chance, -1400)
                         .cycles(1));
}

/// The finale, a timeline of its own: rings of gold from the middle and sparks over them.
ShowEffect finale(const FacadeGroups& groups)
{
    ShowEffect timeline = ShowEffects::timeline(QStringLiteral("Finale"));
    quint32 last = 0;
    for (int i = 0; i < groups.rings.size(); ++i) {
        ShowEffect step =
            fixedColor(QStringLiteral("Gold, ring %1").arg(i + 1, 2, 10, QLatin1Char('0')),
                       rgbText(along({kCandle, kGold, kCoral, kRose},
                                     i / static_cast<double>(groups.rings.size() - 1))));
        step.on(groups.rings.at(i)).layer(0).fading(600, 3200).lasting(7000);
        last = timeline.add(i == 0 ? step.at(0) : step.withStartOf(last, 320));
    }
    timeline.add(sparkle(QStringLiteral("Sparks"), QColor(255, 250, 236), 14, 10)
                     .on(groups.whole)
                     .layer(1)
                     .fading(1500, 3000)
                     .at(1500)
                     .untilEndOf(last, -100));
    return timeline;
}

} // namespace

ShowEffect facadeRevue(const FacadeGroups& groups)
{
    ShowEffect show = timeline(QStringLiteral("Meta Effect"));
    addSky(&show, groups);
    const quint32 sunset = addSunset(&show, groups);
    const quint32 comets = addComets(&show, groups, sunset);
    const quint32 rainbow = addRainbow(&show, groups, comets);
    const quint32 breath = addBreath(&show, groups, rainbow);
    const quint32 gull = addPictures(&show, groups, breath);
    const quint32 waves = addWaves(&show, groups, gull);
    const quint32 evening = addPalettes(&show, groups, waves);
    show.add(finale(groups)
                 .on(groups.whole)
                 .layer(TopLayer)
                 .afterEndOf(evening, -2400)
                 .lasting(kFinaleLength));
    return show;
}
