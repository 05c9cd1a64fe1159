#pragma once

#include <QPointF>

/// Where everything of the ring stands, in pixels of its plan: a disc of glass florets with an
/// open middle, set as a sunflower sets its seeds, so that they stand equally dense everywhere and
/// line up in arms that wind outward.
namespace RingLayout {

constexpr int kArms = 21;
constexpr int kPerArm = 12;
constexpr int kLights = kArms * kPerArm;

constexpr int kSize = 1000; // of the square plan
constexpr double kMiddle = kSize / 2.0;
constexpr double kInnerRadius = 118.0; // of the frame that carries the florets
constexpr double kOuterRadius = 440.0;

/// The floret at `step`, from within, of an arm, both from 0; arms are numbered round the ring.
QPointF floret(int arm, int step);

} // namespace RingLayout
