#include "tools/mapgen/RingPlan.h"

#include "tools/mapgen/PlanPainter.h"
#include "tools/mapgen/RingLayout.h"

#include <QPainterPath>

#include <cmath>

using namespace RingLayout;

namespace {

constexpr quint32 kSeed = 31415;
const QPointF kCentre(kMiddle, kMiddle);

void drawSky(PlanPainter* plan)
{
    plan->fillDown(QRectF(0, 0, kSize, kSize), QColor(5, 8, 20), QColor(32, 26, 52));
    plan->stars(QRectF(0, 0, kSize, 760), 150);
    plan->glow(QPointF(kMiddle, kSize), 460, QColor(96, 62, 92, 90));
}

/// Roofs along the lower edge, behind the ring.
void drawRoofs(PlanPainter* plan)
{
    double left = -20.0;
    while (left < kSize) {
        const double width = 46.0 + plan->chance(60);
        const double top = 900.0 - plan->chance(58);
        plan->fillDown(QRectF(left, top, width, kSize - top), QColor(20, 21, 36),
                       QColor(10, 11, 20));
        plan->line(left, top, left + width, top, QColor(150, 164, 210, 46), 1.0);
        for (const double y : steps(top + 14, kSize - 8, 19)) {
            for (const double x : steps(left + 9, left + width - 9, 14)) {
                const bool lit = plan->chance(7) == 0;
                plan->fill(QRectF(x, y, 5, 8),
                           lit ? QColor(150, 120, 74, 150) : QColor(4, 5, 10, 150));
            }
        }
        left += width;
    }
}

/// Two cables to the upper corners and a mast below hold the ring.
void drawSupports(PlanPainter* plan)
{
    const double reach = kOuterRadius * 0.7071;
    for (const double side : {-1.0, 1.0}) {
        for (const double gap : {-5.0, 5.0}) {
            plan->line(kMiddle + side * (reach + gap), kMiddle - reach + side * gap * 0.4,
                       kMiddle + side * (kMiddle + 10), -10.0 + gap, QColor(150, 160, 190, 90),
                       1.2);
        }
    }
    plan->fillAcross(QRectF(kMiddle - 13, kMiddle + kOuterRadius, 26, 80), QColor(84, 90, 110),
                     QColor(30, 33, 44));
}

void drawFrame(PlanPainter* plan)
{
    QPainter& painter = plan->painter();
    QPainterPath disc;
    disc.addEllipse(kCentre, kOuterRadius, kOuterRadius);
    QPainterPath hole;
    hole.addEllipse(kCentre, kInnerRadius, kInnerRadius);
    QRadialGradient glass(kCentre, kOuterRadius);
    glass.setColorAt(0.2, QColor(20, 23, 38, 235));
    glass.setColorAt(0.75, QColor(28, 31, 48, 235));
    glass.setColorAt(1.0, QColor(18, 20, 32, 235));
    painter.fillPath(disc.subtracted(hole), glass);
    painter.setBrush(Qt::NoBrush);
    struct Hoop
    {
        double radius;
        double width;
        QColor color;
    };
    const Hoop hoops[] = {{kOuterRadius, 13.0, QColor(44, 48, 64)},
                          {kOuterRadius + 5.0, 1.4, QColor(178, 188, 216, 150)},
                          {kOuterRadius - 6.0, 1.0, QColor(4, 5, 10, 190)},
                          {kInnerRadius, 11.0, QColor(50, 54, 72)},
                          {kInnerRadius + 4.5, 1.2, QColor(4, 5, 10, 170)},
                          {kInnerRadius - 5.0, 1.2, QColor(178, 188, 216, 140)}};
    for (const Hoop& hoop : hoops) {
        painter.setPen(QPen(hoop.color, hoop.width));
        painter.drawEllipse(kCentre, hoop.radius, hoop.radius);
    }
}

/// The ribs that carry the florets, from hoop to hoop along each arm.
void drawRibs(PlanPainter* plan)
{
    QPainter& painter = plan->painter();
    for (int arm = 0; arm < kArms; ++arm) {
        QPainterPath rib;
        const auto towards = [](const QPointF& point, double radius) {
            const QPointF way = point - kCentre;
            return kCentre + way * (radius / std::hypot(way.x(), way.y()));
        };
        rib.moveTo(towards(floret(arm, 0), kInnerRadius));
        for (int step = 0; step + 1 < kPerArm; ++step) { // rounded at each floret
            rib.quadTo(floret(arm, step), (floret(arm, step) + floret(arm, step + 1)) / 2.0);
        }
        rib.quadTo(floret(arm, kPerArm - 1), towards(floret(arm, kPerArm - 1), kOuterRadius));
        painter.setPen(QPen(QColor(3, 4, 8, 150), 6.5, Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(rib.translated(1.5, 2.5));
        painter.setPen(QPen(QColor(70, 76, 98), 4.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(rib);
        painter.setPen(QPen(QColor(168, 178, 208, 96), 1.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(rib.translated(-0.8, -1.0));
    }
}

void drawFlorets(PlanPainter* plan)
{
    QPainter& painter = plan->painter();
    for (int arm = 0; arm < kArms; ++arm) {
        for (int step = 0; step < kPerArm; ++step) {
            const QPointF at = floret(arm, step);
            const double radius = 10.5 + 0.35 * step; // grow outward
            QRadialGradient cup(at - QPointF(3, 4), radius * 1.3);
            cup.setColorAt(0.0, QColor(92, 99, 124));
            cup.setColorAt(1.0, QColor(26, 29, 42));
            painter.setPen(QPen(QColor(186, 196, 224, 90), 1.0));
            painter.setBrush(cup);
            painter.drawEllipse(at, radius, radius);
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(11, 12, 20));
            painter.drawEllipse(at, 7.5, 7.5);
        }
    }
    painter.setBrush(Qt::NoBrush);
}

} // namespace

QImage ringPlan()
{
    PlanPainter plan(kSize, kSize, kSeed);
    drawSky(&plan);
    drawRoofs(&plan);
    drawSupports(&plan);
    drawFrame(&plan);
    drawRibs(&plan);
    drawFlorets(&plan);
    plan.vignette(120);
    return plan.take();
}
