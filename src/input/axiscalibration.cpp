// SPDX-License-Identifier: MIT
#include "axiscalibration.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace
{
constexpr int rangeEnd = 100;
constexpr int extremeTicksNeeded = 8;
constexpr int restBand = 8;
constexpr int stableTicksNeeded = 30;
constexpr double triggerEndLimit = 99.5;

bool restsAtEnd(AxisCalibration &axis, int rounded)
{
    if (std::abs(rounded) != rangeEnd) {
        axis.extremeTicks = 0;
        return false;
    }
    return ++axis.extremeTicks >= extremeTicksNeeded;
}

bool restsNearCentre(AxisCalibration &axis, int rounded)
{
    if (std::abs(rounded) > restBand) {
        axis.stableTicks = 0;
        return false;
    }
    if (axis.stableTicks == 0 || rounded != axis.restReading) {
        axis.restReading = rounded;
        axis.stableTicks = 1;
        return false;
    }
    return ++axis.stableTicks >= stableTicksNeeded;
}

void settle(AxisCalibration &axis, int rest, bool isTrigger)
{
    axis.bias = rest;
    axis.calibrated = true;
    axis.isTrigger = isTrigger;
}
} // namespace

AxisCalibration::Outcome AxisCalibration::learn()
{
    const int rounded = roundedReading(raw);
    if (restsAtEnd(*this, rounded)) {
        settle(*this, rounded, true);
        return Outcome::HardBias;
    }
    if (restsNearCentre(*this, rounded)) {
        settle(*this, rounded, false);
        return Outcome::SoftBias;
    }
    return Outcome::Nothing;
}

double AxisCalibration::correctedTrigger() const
{
    if (bias <= -triggerEndLimit)
        return std::max((raw + 100.0) * 0.5, 0.0);
    if (bias >= triggerEndLimit)
        return std::max((100.0 - raw) * 0.5, 0.0);
    return std::max(raw - bias, 0.0);
}

int roundedReading(double reading)
{
    const double shifted = reading < 0.0 ? reading - 0.5 : reading + 0.5;
    // Stays clear of the ends, so that the absolute value of the result is an int too.
    constexpr double limit = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(shifted, -limit, limit));
}
