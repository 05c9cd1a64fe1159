#include "tools/mapgen/FacadePlan.h"

#include "tools/mapgen/FacadeLayout.h"
#include "tools/mapgen/PlanPainter.h"

#include <QPainterPath>
#include <QPolygonF>

using namespace FacadeLayout;

namespace {

constexpr quint32 kSeed = 20180;
constexpr double kWindowWidth = 18.0;
constexpr double kWindowHeight = 25.0;

QColor ink(int alpha)
{
    return QColor(4, 6, 12, alpha);
}

QColor shine(int alpha)
{
    return QColor(190, 202, 232, alpha);
}

void drawSky(PlanPainter* plan)
{
    plan->fillDown(QRectF(0, 0, kWidth, 420), QColor(6, 9, 22), QColor(22, 26, 58));
    plan->fillDown(QRectF(0, 420, kWidth, kGround - 420), QColor(22, 26, 58), QColor(78, 50, 82));
    plan->stars(QRectF(0, 0, kWidth, 330), 130);
}

/// Dark neighbours to the left and right, so that the building stands in a street.
void drawNeighbours(PlanPainter* plan)
{
    struct Block
    {
        double left;
        double top;
        double width;
    };
    const Block blocks[] = {{0, 470, 46}, {20, 560, 60}, {1150, 430, 50}, {1116, 590, 60}};
    for (const Block& block : blocks) {
        plan->fillDown(QRectF(block.left, block.top, block.width, kGround - block.top),
                       QColor(13, 15, 28), QColor(24, 20, 36));
        for (const double y : steps(block.top + 14, kGround - 20, 22)) {
            for (const double x : steps(block.left + 8, block.left + block.width - 8, 13)) {
                const bool lit = plan->chance(9) == 0;
                plan->fill(QRectF(x, y, 5, 8), lit ? QColor(122, 98, 62, 120) : ink(110));
            }
        }
    }
}

void drawWall(PlanPainter* plan, double left, double right, double top, bool forward)
{
    const QRectF wall(left, top, right - left, kGround - top);
    plan->fillDown(wall, forward ? QColor(54, 59, 77) : QColor(44, 48, 64),
                   forward ? QColor(40, 43, 57) : QColor(33, 36, 49));
    plan->fillAcross(wall, shine(12), ink(46)); // light from the left
    for (const double y : steps(top + 12, kGround - 96, 12)) {
        plan->line(left, y, right, y, ink(44), 0.8); // the courses of the ashlar
    }
}

/// The two lowest floors in deep-jointed blocks.
void drawRustication(PlanPainter* plan)
{
    const double top = window(0, 1).y() - 19;
    bool shifted = false;
    for (const double y : steps(top, kGround - 26, 10)) {
        plan->line(kWallLeft, y, kWallRight, y, ink(150), 1.5);
        plan->line(kWallLeft, y + 1.5, kWallRight, y + 1.5, shine(26), 0.8);
        for (const double x : steps(kWallLeft + (shifted ? 9 : 27), kWallRight, 36)) {
            plan->line(x, y, x, y + 10, ink(105), 1.1);
        }
        shifted = !shifted;
    }
}

/// A moulding across the wall: shadow below, an edge of light above.
void drawCourse(PlanPainter* plan, double left, double right, double y, double height)
{
    plan->fillDown(QRectF(left, y + height, right - left, 5), ink(130), ink(0));
    plan->fillDown(QRectF(left, y, right - left, height), QColor(66, 72, 93), QColor(42, 46, 61));
    plan->line(left, y, right, y, shine(110), 1.0);
    plan->line(left, y + height * 0.55, right, y + height * 0.55, ink(90), 0.8);
}

void drawPilaster(PlanPainter* plan, double x, double width, double top)
{
    const double half = width / 2;
    plan->fillAcross(QRectF(x + half, top, 7, kGround - 26 - top), ink(120), ink(0));
    plan->fillAcross(QRectF(x - half, top, width, kGround - 26 - top), QColor(64, 70, 90),
                     QColor(38, 42, 56));
    plan->line(x - half, top, x - half, kGround - 26, shine(84), 0.9);
    plan->line(x - half + width * 0.36, top + 8, x - half + width * 0.36, kGround - 30, ink(76),
               0.8);
    plan->line(x + half - width * 0.36, top + 8, x + half - width * 0.36, kGround - 30, ink(76),
               0.8);
}

void drawCornice(PlanPainter* plan, double left, double right, double y)
{
    for (const double x : steps(left + 4, right - 6, 9)) { // dentils
        plan->fill(QRectF(x, y + 10, 5, 5), QColor(52, 57, 75));
        plan->line(x, y + 15.4, x + 5, y + 15.4, ink(150), 0.9);
    }
    drawCourse(plan, left - 5, right + 5, y, 10);
}

QPainterPath opening(const QPointF& centre, double grow, bool arched)
{
    const QRectF frame(centre.x() - kWindowWidth / 2 - grow, centre.y() - kWindowHeight / 2 - grow,
                       kWindowWidth + 2 * grow, kWindowHeight + 2 * grow);
    QPainterPath path;
    if (!arched) {
        path.addRect(frame);
        return path;
    }
    const double radius = frame.width() / 2;
    path.moveTo(frame.bottomLeft());
    path.lineTo(frame.left(), frame.top() + radius);
    path.arcTo(QRectF(frame.left(), frame.top(), frame.width(), 2 * radius), 180, -180);
    path.lineTo(frame.bottomRight());
    path.closeSubpath();
    return path;
}

void drawWindow(PlanPainter* plan, int column, int floor)
{
    const QPointF at = window(column, floor);
    const bool arched = floor < 2;
    const int inTier = floor % kFloorsPerTier;
    QPainter& painter = plan->painter();
    painter.fillPath(opening(at, 3.2, arched), QColor(57, 63, 82)); // surround
    painter.fillPath(opening(at, 1.6, arched), QColor(16, 18, 28)); // reveal
    QLinearGradient glass(at.x(), at.y() - kWindowHeight / 2, at.x(), at.y() + kWindowHeight / 2);
    glass.setColorAt(0.0, QColor(9, 12, 22));
    glass.setColorAt(0.55, QColor(15, 20, 35));
    glass.setColorAt(1.0, QColor(22, 27, 44));
    painter.fillPath(opening(at, 0.0, arched), glass);
    if (plan->chance(3) == 0) { // a slanted sheen on some panes
        QPolygonF sheen;
        sheen << QPointF(at.x() - 8, at.y() + 11) << QPointF(at.x() - 1, at.y() - 11)
              << QPointF(at.x() + 3, at.y() - 11) << QPointF(at.x() - 4, at.y() + 11);
        painter.setPen(Qt::NoPen);
        painter.setBrush(shine(16));
        painter.drawPolygon(sheen);
        painter.setBrush(Qt::NoBrush);
    }
    const QColor bar(74, 81, 104);
    plan->line(at.x(), at.y() - kWindowHeight / 2 + 1, at.x(), at.y() + kWindowHeight / 2, bar,
               1.0);
    plan->line(at.x() - kWindowWidth / 2, at.y() - 5.5, at.x() + kWindowWidth / 2, at.y() - 5.5,
               bar, 0.9);
    const double sill = at.y() + kWindowHeight / 2 + 3;
    plan->fill(QRectF(at.x() - 13, sill - 1.4, 26, 2.6), QColor(88, 96, 122));
    plan->fillDown(QRectF(at.x() - 13, sill + 1.2, 26, 3), ink(140), ink(0));
    if (arched) {
        plan->fill(QRectF(at.x() - 2, at.y() - kWindowHeight / 2 - 5.5, 4, 6.5),
                   QColor(84, 92, 117));
    } else if (inTier == kFloorsPerTier - 1) { // a hood over the top floor of each tier
        plan->line(at.x() - 12.5, at.y() - kWindowHeight / 2 - 4.4, at.x() + 12.5,
                   at.y() - kWindowHeight / 2 - 4.4, shine(96), 1.5);
    } else if (inTier == 0 && floor > 0) { // balconies on its lowest
        const double rail = at.y() + 6.5;
        for (const double x : steps(at.x() - 11, at.x() + 11 + 0.5, 3.6)) {
            plan->line(x, rail, x, sill, shine(62), 0.7);
        }
        plan->line(at.x() - 12.5, rail, at.x() + 12.5, rail, shine(110), 1.1);
    }
}

/// Balustrade, attic, pediment and flagpole above the cornice.
void drawRoof(PlanPainter* plan)
{
    QPainter& painter = plan->painter();
    for (const QRectF& rail : {QRectF(kWallLeft, 82, kPavilionLeft - kWallLeft, 14),
                               QRectF(kPavilionRight, 82, kWallRight - kPavilionRight, 14)}) {
        for (const double x : steps(rail.left() + 3, rail.right() - 2, 6)) {
            plan->line(x, rail.top() + 2, x, rail.bottom(), QColor(58, 64, 84), 2.2);
        }
        plan->fill(QRectF(rail.left() - 2, rail.top() - 1.5, rail.width() + 4, 3),
                   QColor(72, 79, 101));
        plan->line(rail.left() - 2, rail.top() - 1.5, rail.right() + 2, rail.top() - 1.5,
                   shine(110));
    }
    plan->fillDown(QRectF(kPavilionLeft, 66, kPavilionRight - kPavilionLeft, 30),
                   QColor(48, 53, 70), QColor(40, 44, 58));
    for (int i = 0; i < 9; ++i) { // sunk panels of the attic
        const QRectF panel(kPavilionLeft + 15 + i * 39.6, 73, 31, 15);
        plan->fill(panel, QColor(34, 38, 51));
        plan->line(panel.left(), panel.bottom(), panel.right(), panel.bottom(), shine(46), 0.8);
    }
    drawCourse(plan, kPavilionLeft - 4, kPavilionRight + 4, 61, 6);
    const QPointF peak(kWidth / 2.0, 26);
    QPolygonF pediment;
    pediment << QPointF(478, 61) << peak << QPointF(722, 61);
    QLinearGradient stone(0, 26, 0, 61);
    stone.setColorAt(0.0, QColor(58, 64, 84));
    stone.setColorAt(1.0, QColor(38, 42, 56));
    painter.setPen(Qt::NoPen);
    painter.setBrush(stone);
    painter.drawPolygon(pediment);
    QPolygonF tympanum;
    tympanum << QPointF(504, 58) << QPointF(kWidth / 2.0, 32.5) << QPointF(696, 58);
    painter.setBrush(QColor(29, 32, 44));
    painter.drawPolygon(tympanum);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(84, 92, 117), 1.2));
    painter.drawEllipse(QPointF(kWidth / 2.0, 49), 6.5, 6.5);
    plan->line(478, 61, peak.x(), peak.y(), shine(130), 1.3);
    plan->line(peak.x(), peak.y(), 722, 61, shine(74), 1.3);
    plan->line(peak.x(), peak.y(), peak.x(), 6, shine(130), 1.3);
    for (const double x : {kPavilionLeft + 8, kPavilionRight - 8, kWallLeft + 6, kWallRight - 6}) {
        const bool forward = x > kPavilionLeft && x < kPavilionRight;
        const double foot = forward ? 61 : 80; // urns
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(66, 72, 94));
        painter.drawEllipse(QPointF(x, foot - 8), 4.4, 5.4);
        painter.setBrush(Qt::NoBrush);
        plan->fill(QRectF(x - 2, foot - 4, 4, 4), QColor(66, 72, 94));
        plan->line(x, foot - 17, x, foot - 12, shine(90), 1.4);
    }
}

void drawGround(PlanPainter* plan)
{
    const double top = kGround - 26;
    plan->fillDown(QRectF(kWallLeft - 5, top, kWallRight - kWallLeft + 10, 26), QColor(50, 54, 70),
                   QColor(30, 32, 43));
    plan->line(kWallLeft - 5, top, kWallRight + 5, top, shine(100));
    for (int i = 0; i < 4; ++i) { // steps along the pavilion
        const double left = kPavilionLeft - 4 - i * 7;
        const QRectF step(left, top + 3 + i * 6.5, kWidth - 2 * left, 6.5);
        plan->fillDown(step, QColor(84, 90, 113), QColor(52, 56, 73));
        plan->line(step.left(), step.top(), step.right(), step.top(), shine(120), 0.9);
    }
    const QRectF street(0, kGround, kWidth, kHeight - kGround);
    plan->fillDown(street, QColor(25, 25, 36), QColor(8, 9, 14));
    plan->line(0, kGround, kWidth, kGround, shine(90), 1.0);
    for (int i = -16; i <= 16; ++i) { // paving towards the eye
        plan->line(600 + i * 44, kGround, 600 + i * 78, kHeight, ink(110), 1.0);
    }
    for (const double y : {kGround + 9, kGround + 21, kGround + 38}) {
        plan->line(0, y, kWidth, y, ink(110), 1.0);
    }
    plan->glow(QPointF(600, kGround + 10), 180, QColor(150, 130, 160, 22));
}

/// A drawing's floor marks at the right and a scale bar at the left.
void drawMarks(PlanPainter* plan)
{
    for (int floor = 0; floor < kFloors; ++floor) {
        const double y = window(0, floor).y() + 16;
        plan->line(kWallRight + 10, y, kWallRight + (floor % kFloorsPerTier == 0 ? 30 : 18), y,
                   shine(70), 1.0);
    }
    plan->line(kWallRight + 10, window(0, 17).y() - 20, kWallRight + 10, kGround - 2, shine(56),
               1.0);
    for (int i = 0; i < 6; ++i) {
        plan->fill(QRectF(72 + i * 24, kHeight - 20, 24, 4), i % 2 == 0 ? shine(130) : shine(36));
    }
}

} // namespace

QImage facadePlan()
{
    PlanPainter plan(kWidth, kHeight, kSeed);
    drawSky(&plan);
    drawNeighbours(&plan);
    drawWall(&plan, kWallLeft, kWallRight, kRoof, false);
    plan.fillAcross(QRectF(kPavilionRight, kRoof, 26, kGround - kRoof), ink(120), ink(0));
    drawWall(&plan, kPavilionLeft, kPavilionRight, kRoof, true);
    drawRustication(&plan);
    for (int tier = 1; tier < kTiers; ++tier) {
        const double y =
            (window(0, tier * kFloorsPerTier).y() + window(0, tier * kFloorsPerTier - 1).y()) / 2;
        drawCourse(&plan, kWallLeft - 3, kWallRight + 3, y - 2, 6);
    }
    for (const double x : {kWallLeft + 4, kPavilionLeft, kPavilionRight, kWallRight - 4}) {
        drawPilaster(&plan, x, 12, kRoof + 14);
    }
    for (int column = 0; column < kColumns; ++column) {
        for (int floor = 0; floor < kFloors; ++floor) {
            drawWindow(&plan, column, floor);
        }
    }
    drawRoof(&plan);
    drawCornice(&plan, kWallLeft, kWallRight, kRoof - 6);
    drawGround(&plan);
    drawMarks(&plan);
    plan.vignette(96);
    return plan.take();
}
