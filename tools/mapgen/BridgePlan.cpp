#include "tools/mapgen/BridgePlan.h"

#include "tools/mapgen/BridgeLayout.h"
#include "tools/mapgen/PlanPainter.h"

#include <QPainterPath>
#include <QPolygonF>

#include <cmath>

using namespace BridgeLayout;

namespace {

constexpr quint32 kSeed = 1887;
constexpr double kHorizon = 505.0;
constexpr double kWaterTop = 520.0;
constexpr double kRing = 16.0; // depth of the voussoirs

QColor ink(int alpha)
{
    return QColor(4, 6, 12, alpha);
}

QColor shine(int alpha)
{
    return QColor(190, 204, 232, alpha);
}

void drawSky(PlanPainter* plan)
{
    plan->fillDown(QRectF(0, 0, kWidth, 300), QColor(4, 8, 18), QColor(13, 22, 44));
    plan->fillDown(QRectF(0, 300, kWidth, kHorizon - 300), QColor(13, 22, 44), QColor(38, 40, 62));
    plan->stars(QRectF(0, 0, kWidth, 290), 150);
    plan->glow(QPointF(884, 104), 130, QColor(150, 170, 220, 46));
    plan->glow(QPointF(884, 104), 34, QColor(216, 226, 250, 120));
    plan->painter().setPen(Qt::NoPen);
    plan->painter().setBrush(QColor(214, 222, 240));
    plan->painter().drawEllipse(QPointF(884, 104), 13, 13);
    plan->painter().setBrush(Qt::NoBrush);
}

/// Three rows of roofs behind the river, the nearest one darkest.
void drawSkyline(PlanPainter* plan)
{
    const struct
    {
        int lowest;
        int range;
        QColor color;
        int litOneIn;
    } rows[] = {{318, 96, QColor(19, 27, 49), 40},
                {392, 60, QColor(24, 31, 52), 24},
                {446, 44, QColor(15, 20, 36), 13}};
    for (const auto& row : rows) {
        double x = -10;
        while (x < kWidth) {
            const double width = 24 + plan->chance(46);
            const double top = row.lowest - plan->chance(row.range);
            plan->fill(QRectF(x, top, width, kHorizon + 16 - top), row.color);
            if (plan->chance(4) == 0) { // a spire or a gable
                QPolygonF roof;
                roof << QPointF(x, top) << QPointF(x + width / 2, top - 12 - plan->chance(18))
                     << QPointF(x + width, top);
                plan->painter().setPen(Qt::NoPen);
                plan->painter().setBrush(row.color);
                plan->painter().drawPolygon(roof);
                plan->painter().setBrush(Qt::NoBrush);
            }
            for (const double y : steps(top + 8, kHorizon - 6, 11)) {
                for (const double w : steps(x + 5, x + width - 5, 8)) {
                    if (plan->chance(row.litOneIn) == 0) {
                        plan->fill(QRectF(w, y, 2.4, 3.4), QColor(206, 168, 104, 120));
                    }
                }
            }
            x += width + plan->chance(5) - 1;
        }
    }
}

void drawWater(PlanPainter* plan)
{
    plan->fillDown(QRectF(0, kWaterTop, kWidth, kHeight - kWaterTop), QColor(24, 34, 58),
                   QColor(6, 10, 19));
    plan->line(0, kWaterTop, kWidth, kWaterTop, shine(40), 1.0);
    for (int i = 0; i < 520; ++i) { // ripples, longer and farther apart towards the eye
        const double depth = plan->chance(1000) / 1000.0;
        const double y = kWaterTop + 4 + depth * depth * (kHeight - kWaterTop - 6);
        const double length = 8 + depth * 46 + plan->chance(20);
        const double x = plan->chance(kWidth + 60) - 60;
        plan->line(x, y, x + length, y, shine(11 + plan->chance(19)), 0.8 + depth * 0.6);
    }
    for (int i = 0; i < 26; ++i) { // the moon on the water
        const double y = kWaterTop + 8 + i * 8.6;
        const double half = 4 + plan->chance(16) + i * 0.4;
        const double x = 884 + plan->chance(14) - 7;
        plan->line(x - half, y, x + half, y, QColor(186, 202, 240, 44 - i), 1.2);
    }
}

/// The dark mirror of what stands in the water.
void drawReflection(PlanPainter* plan, double middle, double width, double depth)
{
    plan->fillDown(QRectF(middle - width / 2, kWater, width, depth), ink(150), ink(0));
}

QPainterPath archOpening(int arch, double grow)
{
    const double half = kArchHalfWidth + grow;
    const double rise = kArchRise + grow;
    const double middle = archMiddle(arch);
    QPainterPath path;
    path.moveTo(middle - half, kWater);
    path.lineTo(middle - half, kSpringing);
    path.arcTo(QRectF(middle - half, kSpringing - rise, 2 * half, 2 * rise), 180, -180);
    path.lineTo(middle + half, kWater);
    path.closeSubpath();
    return path;
}

void drawMasonry(PlanPainter* plan)
{
    QPainter& painter = plan->painter();
    QPainterPath body;
    body.addRect(QRectF(0, kDeck + 6, kWidth, kWater - kDeck - 6));
    QPainterPath openings;
    for (int arch = 0; arch < kArches; ++arch) {
        openings = openings.united(archOpening(arch, 0));
    }
    body = body.subtracted(openings);
    QLinearGradient stone(0, kDeck, 0, kWater);
    stone.setColorAt(0.0, QColor(52, 56, 70));
    stone.setColorAt(0.6, QColor(37, 40, 52));
    stone.setColorAt(1.0, QColor(23, 25, 34));
    painter.fillPath(body, stone);
    painter.save();
    painter.setClipPath(body);
    bool shifted = false;
    for (const double y : steps(kDeck + 8, kWater, 11)) {
        plan->line(0, y, kWidth, y, ink(84), 1.0);
        for (const double x : steps(shifted ? 0 : 13, kWidth, 26)) {
            const double joint = x + plan->chance(6);
            plan->line(joint, y, joint, y + 11, ink(52), 0.9);
        }
        if (plan->chance(2) == 0) { // a block here and there of a paler stone
            plan->fill(QRectF(plan->chance(kWidth), y, 26, 11), shine(9));
        }
        shifted = !shifted;
    }
    painter.restore();
    for (int arch = 0; arch < kArches; ++arch) {
        QPainterPath ring = archOpening(arch, kRing);
        QPainterPath water;
        water.addRect(QRectF(0, kSpringing, kWidth, 200));
        ring = ring.subtracted(archOpening(arch, 0)).subtracted(water);
        painter.fillPath(ring, QColor(70, 75, 93));
        painter.setPen(QPen(shine(62), 0.9));
        painter.drawPath(ring);
        constexpr int kStones = 19;
        for (int i = 1; i < kStones; ++i) {
            const double angle = 3.14159265358979323846 * i / kStones;
            const double x = std::cos(angle);
            const double y = std::sin(angle);
            plan->line(archMiddle(arch) + kArchHalfWidth * x, kSpringing - kArchRise * y,
                       archMiddle(arch) + (kArchHalfWidth + kRing) * x,
                       kSpringing - (kArchRise + kRing) * y, ink(130), 1.0);
        }
        QPainterPath soffit = archOpening(arch, 0).subtracted(archOpening(arch, -7));
        painter.fillPath(soffit, ink(150)); // the shaded underside
    }
}

void drawPier(PlanPainter* plan, int pier)
{
    const double middle = pierMiddle(pier);
    const double half = kPierWidth / 2;
    plan->fillAcross(QRectF(middle - half, 412, kPierWidth, kWater - 412), QColor(72, 78, 96),
                     QColor(36, 39, 51));
    QPolygonF cap;
    cap << QPointF(middle - half - 2, 413) << QPointF(middle, 392)
        << QPointF(middle + half + 2, 413);
    plan->painter().setPen(QPen(shine(70), 1.0));
    plan->painter().setBrush(QColor(60, 65, 82));
    plan->painter().drawPolygon(cap);
    plan->painter().setBrush(Qt::NoBrush);
    for (const double y : steps(424, kWater, 17)) {
        plan->line(middle - half, y + 12, middle + half, y + 12, ink(90), 1.0);
    }
    plan->line(middle - half, 413, middle - half, kWater, shine(76), 1.0);
    plan->fillDown(QRectF(middle - half - 5, kWater - 14, kPierWidth + 10, 14), QColor(62, 67, 84),
                   QColor(30, 33, 43));
    for (int i = 0; i < kLightsPerPier; ++i) { // niches
        const QPointF at = pierLight(pier, i);
        plan->fill(QRectF(at.x() - 7.5, at.y() - 8.5, 15, 17), QColor(18, 20, 28));
        plan->line(at.x() - 9, at.y() + 9, at.x() + 9, at.y() + 9, shine(84), 1.2);
    }
    drawReflection(plan, middle, kPierWidth + 8, 92);
}

void drawDeck(PlanPainter* plan)
{
    plan->fillDown(QRectF(0, kParapetTop, kWidth, kDeck - kParapetTop), QColor(58, 63, 79),
                   QColor(44, 48, 61));
    const double pitch = roadLight(1).x() - roadLight(0).x(); // a light before each panel
    for (const double x : steps(roadLight(0).x() - 6.5 - 12 * pitch, kWidth, pitch)) {
        plan->fill(QRectF(x, kParapetTop + 7, 13, 15), QColor(30, 33, 44));
        plan->line(x, kParapetTop + 22, x + 13, kParapetTop + 22, shine(40), 0.8);
    }
    plan->fill(QRectF(0, kParapetTop - 2, kWidth, 4), QColor(84, 91, 112));
    plan->line(0, kParapetTop - 2, kWidth, kParapetTop - 2, shine(130), 1.0);
    plan->fillDown(QRectF(0, kDeck, kWidth, 7), QColor(84, 91, 112), QColor(48, 52, 67));
    plan->line(0, kDeck, kWidth, kDeck, shine(96), 1.0);
    plan->fillDown(QRectF(0, kDeck + 7, kWidth, 9), ink(150), ink(0));
    for (const double x : steps(4, kWidth, 12)) { // corbels
        plan->fill(QRectF(x, kDeck + 7, 5, 5), QColor(56, 61, 77));
    }
}

void drawLamp(PlanPainter* plan, int index)
{
    const QPointF globe = lamp(index);
    const QColor iron(62, 68, 86);
    plan->line(globe.x(), globe.y() + 7, globe.x(), kParapetTop - 2, iron, 2.4);
    plan->line(globe.x() - 0.8, globe.y() + 8, globe.x() - 0.8, kParapetTop - 2, shine(72), 0.7);
    plan->fill(QRectF(globe.x() - 4.5, kParapetTop - 9, 9, 7), iron);
    plan->line(globe.x() - 8, globe.y() + 15, globe.x() + 8, globe.y() + 15, iron, 1.6);
    plan->painter().setPen(QPen(QColor(112, 120, 146), 1.2));
    plan->painter().setBrush(QColor(22, 25, 36));
    plan->painter().drawEllipse(globe, 7.5, 7.5);
    plan->painter().setBrush(Qt::NoBrush);
    plan->line(globe.x(), globe.y() - 12, globe.x(), globe.y() - 7, iron, 1.6);
}

void drawTower(PlanPainter* plan, int tower)
{
    QPainter& painter = plan->painter();
    const double middle = towerMiddle(tower);
    const double left = middle - kTowerHalfWidth;
    const double right = middle + kTowerHalfWidth;
    QPolygonF roof; // a steep hipped roof with a finial
    roof << QPointF(left + 4, kTowerTop - 12) << QPointF(middle - 7, 92) << QPointF(middle + 7, 92)
         << QPointF(right - 4, kTowerTop - 12);
    painter.setPen(Qt::NoPen);
    QLinearGradient slate(left, 0, right, 0);
    slate.setColorAt(0.0, QColor(50, 60, 82));
    slate.setColorAt(1.0, QColor(24, 29, 43));
    painter.setBrush(slate);
    painter.drawPolygon(roof);
    painter.setBrush(Qt::NoBrush);
    for (const double y : steps(100, kTowerTop - 14, 7)) {
        const double spread = 7 + (y - 92) / (kTowerTop - 104) * (kTowerHalfWidth - 11);
        plan->line(middle - spread, y, middle + spread, y, ink(80), 0.8);
    }
    plan->line(left + 4, kTowerTop - 12, middle - 7, 92, shine(96), 1.0);
    plan->line(middle, 92, middle, 70, shine(130), 1.4);
    plan->fillAcross(QRectF(left, kTowerTop - 4, 2 * kTowerHalfWidth, kWater - kTowerTop + 4),
                     QColor(74, 80, 99), QColor(36, 39, 51));
    bool shifted = false;
    for (const double y : steps(kTowerTop + 20, kWater, 12)) {
        plan->line(left, y, right, y, ink(80), 1.0);
        for (const double x : steps(left + (shifted ? 9 : 18), right, 18)) {
            plan->line(x, y, x, y + 12, ink(50), 0.9);
        }
        shifted = !shifted;
    }
    plan->fillDown(QRectF(left - 6, kTowerTop - 14, 2 * kTowerHalfWidth + 12, 10),
                   QColor(96, 104, 128), QColor(58, 63, 80)); // cornice
    plan->line(left - 6, kTowerTop - 14, right + 6, kTowerTop - 14, shine(150), 1.0);
    plan->fill(QRectF(left + 2, kTowerTop - 2, 2 * kTowerHalfWidth - 4, 19), QColor(30, 33, 44));
    plan->line(left, kTowerTop + 18, right, kTowerTop + 18, shine(76), 1.2);
    for (int side = 0; side < kTowerSides; ++side) {
        for (int level = 0; level < kTowerLevels; ++level) { // slit windows
            const QPointF at = towerLight(tower, level, side);
            plan->fill(QRectF(at.x() - 7, at.y() - 12, 14, 24), QColor(16, 18, 26));
            plan->line(at.x() - 9, at.y() + 12.6, at.x() + 9, at.y() + 12.6, shine(96), 1.4);
        }
        const QPointF foot = towerFootLight(tower, side);
        plan->fill(QRectF(foot.x() - 8, foot.y() - 10, 16, 20), QColor(16, 18, 26));
        plan->line(foot.x() - 10, foot.y() + 10.6, foot.x() + 10, foot.y() + 10.6, shine(96), 1.4);
    }
    plan->line(left, kTowerTop - 4, left, kWater, shine(110), 1.2);
    plan->fillDown(QRectF(left - 6, kWater - 22, 2 * kTowerHalfWidth + 12, 22), QColor(66, 72, 90),
                   QColor(30, 33, 43));
    plan->line(left - 6, kWater - 22, right + 6, kWater - 22, shine(80), 1.0);
    drawReflection(plan, middle, 2 * kTowerHalfWidth + 14, 150);
}

/// The quays left and right, with a blind arcade that the floods stand in.
void drawQuay(PlanPainter* plan, int quay)
{
    for (int i = 0; i < kFloodsPerQuay; ++i) {
        const QPointF at = flood(quay, i);
        QPainterPath niche;
        niche.moveTo(at.x() - 15, kWater - 12);
        niche.lineTo(at.x() - 15, 428);
        niche.arcTo(QRectF(at.x() - 15, 412, 30, 32), 180, -180);
        niche.lineTo(at.x() + 15, kWater - 12);
        niche.closeSubpath();
        plan->painter().fillPath(niche, QColor(22, 24, 33));
        plan->painter().setPen(QPen(shine(56), 1.0));
        plan->painter().drawPath(niche);
        plan->fill(QRectF(at.x() - 8, at.y() + 6, 16, 4), QColor(84, 91, 112)); // its bracket
    }
    const double left = quay == 0 ? 0 : kWidth - 132;
    plan->fill(QRectF(left, kWater - 12, 132, 12), QColor(54, 59, 74));
    plan->line(left, kWater - 12, left + 132, kWater - 12, shine(80), 1.0);
    plan->fillDown(QRectF(left, kWater, 132, 60), ink(140), ink(0));
}

/// The lines that carry the buoys.
void drawGarlands(PlanPainter* plan)
{
    for (int garland = 0; garland < kGarlands; ++garland) {
        QPainterPath path;
        path.moveTo(0, buoy(garland, 0).y());
        for (int i = 0; i < kBuoys; ++i) {
            path.lineTo(buoy(garland, i));
        }
        path.lineTo(kWidth, buoy(garland, kBuoys - 1).y());
        plan->painter().setPen(QPen(shine(38), 1.1));
        plan->painter().drawPath(path);
        for (int i = 0; i < kBuoys; ++i) {
            plan->painter().setPen(QPen(shine(64), 1.0));
            plan->painter().setBrush(QColor(14, 18, 30));
            plan->painter().drawEllipse(buoy(garland, i), 6.5, 6.5);
        }
        plan->painter().setBrush(Qt::NoBrush);
    }
}

} // namespace

QImage bridgePlan()
{
    PlanPainter plan(kWidth, kHeight, kSeed);
    drawSky(&plan);
    drawSkyline(&plan);
    drawWater(&plan);
    drawMasonry(&plan);
    drawDeck(&plan);
    for (int pier = 0; pier < kPiers; ++pier) {
        drawPier(&plan, pier);
    }
    for (int quay = 0; quay < 2; ++quay) {
        drawQuay(&plan, quay);
    }
    for (int i = 0; i < kLamps; ++i) {
        drawLamp(&plan, i);
    }
    for (int tower = 0; tower < kTowers; ++tower) {
        drawTower(&plan, tower);
    }
    drawGarlands(&plan);
    plan.vignette(105);
    return plan.take();
}
