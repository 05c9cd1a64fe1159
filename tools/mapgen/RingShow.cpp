#include "tools/mapgen/RingShow.h"

#include "tools/mapgen/Artwork.h"
#include "tools/mapgen/MotionEffects.h"

using namespace ShowEffects;

namespace {

constexpr quint32 kShowLength = 69000;

const QColor kNight(14, 22, 92);
const QColor kDeepSea(4, 58, 92);
const QColor kGold(255, 176, 72);
const QColor kCoral(255, 92, 70);
const QColor kRose(214, 44, 118);
const QColor kViolet(96, 44, 190);
const QColor kAqua(52, 232, 208);
const QColor kAzure(24, 96, 236);
const QColor kCandle(255, 222, 168);

enum Layer : quint32 { NightLayer = 1, WashLayer, AccentLayer, TopLayer };

void addNight(ShowEffect* show, const RingGroups& groups)
{
    const double half = kShowLength / 2000.0;
    const quint32 turning =
        show->add(crossFade(QStringLiteral("Night turns"), rgbText(kNight), rgbText(kDeepSea), half)
                      .on(groups.whole)
                      .layer(NightLayer)
                      .at(0)
                      .cycles(1));
    show->add(crossFade(QStringLiteral("Night returns"), rgbText(kDeepSea), rgbText(kNight), half)
                  .on(groups.whole)
                  .layer(NightLayer)
                  .afterEndOf(turning, 0)
                  .cycles(1));
}

/// Light wells up hoop by hoop and leaves from within; returns the outermost hoop's.
quint32 addBlossom(ShowEffect* show, const RingGroups& groups)
{
    quint32 last = 0;
    for (int i = 0; i < groups.hoops.size(); ++i) {
        const double way = i / static_cast<double>(groups.hoops.size() - 1);
        ShowEffect step =
            fixedColor(QStringLiteral("Blossom, hoop %1").arg(i + 1, 2, 10, QLatin1Char('0')),
                       rgbText(along({kCandle, kGold, kCoral, kRose, kViolet}, way)));
        step.on(groups.hoops.at(i)).layer(WashLayer).fading(1000, 2200).lasting(5600);
        last = show->add(i == 0 ? step.at(300) : step.withStartOf(last, 260));
    }
    return last;
}

/// Two lights chase each other round the ring; returns the warm one.
quint32 addBeacons(ShowEffect* show, const RingGroups& groups, quint32 after)
{
    StreakSpec beam;
    beam.width = 1;
    beam.reverseTail = 8;
    const quint32 warm = show->add(streak(QStringLiteral("Warm beacon"), kGold, 3.0, beam)
                                       .on(groups.armChase)
                                       .layer(AccentLayer)
                                       .fading(700, 1000)
                                       .afterEndOf(after, -2600)
                                       .cycles(3));
    show->add(streak(QStringLiteral("Cool beacon"), kAqua, 3.0, beam)
                  .on(groups.armChase)
                  .layer(TopLayer)
                  .fading(700, 1000)
                  .withStartOf(warm, 1500)
                  .untilEndOf(warm, 0));
    return warm;
}

/// Rainbow rings from the middle, first wide, then narrow; returns the last of them.
quint32 addBursts(ShowEffect* show, const RingGroups& groups, quint32 after)
{
    const quint32 wide = show->add(burst(QStringLiteral("Wide rings"), 5.0, 140, groups.middle)
                                       .on(groups.whole)
                                       .layer(WashLayer)
                                       .fading(1500, 1500)
                                       .afterEndOf(after, -1400)
                                       .lasting(8000));
    return show->add(burst(QStringLiteral("Narrow rings"), 3.0, 60, groups.middle)
                         .on(groups.whole)
                         .layer(AccentLayer)
                         .fading(1500, 1500)
                         .afterEndOf(wide, -1500)
                         .lasting(7000));
}

/// Spirals that bend one way and then the other; returns the second.
quint32 addSpirals(ShowEffect* show, const RingGroups& groups, quint32 after)
{
    const quint32 first = show->add(spiral(QStringLiteral("Spiral"), 8.0, 50, 2, groups.middle)
                                        .on(groups.whole)
                                        .layer(WashLayer)
                                        .fading(1500, 1500)
                                        .afterEndOf(after, -1500)
                                        .lasting(8500));
    return show->add(spiral(QStringLiteral("Counter spiral"), 10.0, 40, 3, groups.middle, false)
                         .on(groups.whole)
                         .layer(AccentLayer)
                         .fading(1500, 1500)
                         .afterEndOf(first, -1500)
                         .lasting(8500));
}

/// The rose window, near and far, then the turning wheel; returns the wheel.
quint32 addPictures(ShowEffect* show, const RingGroups& groups, quint32 after)
{
    const double middle = Artwork::kRosetteSize / 2.0;
    const QString file = QStringLiteral("examples/ring/rosette.png");
    const quint32 near = show->add(imageScroll(QStringLiteral("Rose window opens"), file, 6.0,
                                               {middle, middle, 2.4}, {middle, middle, 0.52})
                                       .on(groups.whole)
                                       .layer(WashLayer)
                                       .fading(1500, 0)
                                       .afterEndOf(after, -1500)
                                       .cycles(1));
    const quint32 far = show->add(imageScroll(QStringLiteral("Rose window closes"), file, 6.0,
                                              {middle, middle, 0.52}, {middle, middle, 1.2})
                                      .on(groups.whole)
                                      .layer(WashLayer)
                                      .fading(0, 1500)
                                      .afterEndOf(near, 0)
                                      .cycles(1));
    return show->add(animation(QStringLiteral("Wheel"), QStringLiteral("examples/ring/wheel"), 8,
                               Artwork::kFilmFrames)
                         .on(groups.whole)
                         .layer(AccentLayer)
                         .fading(1500, 1500)
                         .afterEndOf(far, -1500)
                         .lasting(9000));
}

/// Colours run outward once more, with sparks over them.
void addEmbers(ShowEffect* show, const RingGroups& groups, quint32 after)
{
    const QVector<RainbowStop> embers = {
        {kGold, 0.2, 1.2}, {kCoral, 0.2, 1.2}, {kRose, 0.2, 1.2}, {kAzure, 0.2, 1.2}};
    const quint32 run = show->add(customRainbow(QStringLiteral("Embers"), embers, -0.26)
                                      .on(groups.hoopChase)
                                      .layer(WashLayer)
                                      .fading(1500, 3000)
                                      .afterEndOf(after, -1500)
                                      .lasting(9500));
    show->add(sparkle(QStringLiteral("Sparks"), QColor(255, 250, 236), 6, 10)
                  .on(groups.whole)
                  .layer(AccentLayer)
                  .fading(1500, 2500)
                  .withStartOf(run, 2000)
                  .untilEndOf(run, 0));
}

} // namespace

ShowEffect ringShow(const RingGroups& groups)
{
    ShowEffect show = timeline(QStringLiteral("Meta Effect"));
    addNight(&show, groups);
    const quint32 blossom = addBlossom(&show, groups);
    const quint32 beacons = addBeacons(&show, groups, blossom);
    const quint32 bursts = addBursts(&show, groups, beacons);
    const quint32 spirals = addSpirals(&show, groups, bursts);
    const quint32 wheel = addPictures(&show, groups, spirals);
    addEmbers(&show, groups, wheel);
    return show;
}
