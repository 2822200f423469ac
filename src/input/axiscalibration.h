// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>

/// What one axis has shown since calibration began, on SFML's scale of -100 to 100.
///
/// The same kind of axis rests at 0 (a stick) or at one end of its range (a trigger), and a device does not
/// say which. So an axis counts as uncalibrated until its readings have stayed at one rest position.
struct AxisCalibration
{
    /// What a reading has settled, for the diagnostic line.
    enum class Outcome {
        Nothing,
        HardBias, ///< rests at an end of the range: a trigger
        SoftBias, ///< rests near the centre: a stick
    };

    double value = 0.0; ///< corrected value, as last accepted
    double bias = 0.0;  ///< rest position
    double raw = 0.0;   ///< last reading
    bool calibrated = false;
    bool isTrigger = false;
    int restReading = 0;  ///< rounded reading that the run near the centre is counting
    int stableTicks = 0;  ///< length of that run
    int extremeTicks = 0; ///< length of the run at an end of the range

    // What a calibrated axis does at every tick is inline: at rest the calls would cost as much as the work.

    /// Takes one reading, and learns the rest position from it where none is known yet.
    Outcome read(double reading)
    {
        raw = reading;
        return calibrated ? Outcome::Nothing : learn();
    }

    /// Corrects the last reading and stores it in `value` if it is worth telling: it has moved by more than
    /// 0.5, or stands outside -8 to 8. Returns whether it did. For calibrated axes only.
    [[nodiscard]] bool accept()
    {
        constexpr double publishStep = 0.5;
        constexpr double publishBand = 8.0;
        const double now = corrected();
        if (std::abs(now - value) <= publishStep && now >= -publishBand && now <= publishBand)
            return false;
        value = now;
        return true;
    }

    /// The last reading seen from the rest position: -100 to 100 for a stick, 0 to 100 for a trigger.
    [[nodiscard]] double corrected() const
    {
        return isTrigger ? correctedTrigger() : std::clamp(raw - bias, -100.0, 100.0);
    }

private:
    Outcome learn();
    [[nodiscard]] double correctedTrigger() const;
};

/// The whole number nearest to `reading`, which is finite; halves go away from zero.
[[nodiscard]] int roundedReading(double reading);
