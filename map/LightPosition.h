#pragma once

/// Place of a light in map units, and its orientation as a quaternion (identity by default).
struct LightPosition
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double q0 = 0.0;
    double q1 = 0.0;
    double q2 = 0.0;
    double q3 = 1.0;
};
