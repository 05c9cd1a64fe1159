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

    /// Whether x and y count for extents: false for NaN, infinities and what no 32-bit whole number
    /// holds.
    bool countsForExtents() const { return isWithin(x) && isWithin(y); }

private:
    static bool isWithin(double v) { return v > -2147483649.0 && v < 2147483648.0; }
};
