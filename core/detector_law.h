// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

namespace calvorn {

// Levels are RMS into 50 ohms: 0 dBm are 1 mW, 0.2236 V.
double voltsOfDbm(double dBm);

// Minus infinity at 0 V and below.
double dBmOfVolts(double volts);

// What a detector makes of a level at its input. A linear detector gives the level itself.
struct DetectorLaw
{
    enum class Kind {
        Linear,
        Log,   // volts = slope x (level - intercept), as the data sheets of logarithmic detectors have it
        Table, // measured points, and between them straight lines of dBm over the decibels of the detector's volts
    };

    struct Point
    {
        double volts = 0.0; // of the detector
        double dBm = 0.0;

        bool operator==(const Point &) const = default;
    };

    static constexpr std::size_t kFewestPoints = 2;
    static constexpr std::size_t kMostPoints = 32;

    Kind kind = Kind::Linear;
    double slope = 25.0;       // mV per dB; below 0 where the volts fall with the level
    double intercept = -84.0;  // dBm, where the line meets 0 V
    std::vector<Point> points; // of a table that isUsable(), the volts rising

    // The number, from 1 on, of the first point of a table that does not go on as those before it: the volts rise, and
    // the levels all rise or all fall. 0: there is none.
    std::size_t turningPoint() const;

    // Whether the law says one level for each voltage: a slope that is not 0; points whose volts rise and whose levels
    // all rise or all fall.
    bool isUsable() const;

    // Volts RMS at the input for volts of the detector. Beyond the ends of the law it is that of the end.
    double inputVolts(double detectorVolts) const;

    // Where the law ends: beyond the points of a table, and below 0 V, which no logarithmic detector gives.
    bool isBeyondEnds(double detectorVolts) const;

    // The way back: volts of the detector for volts RMS at its input. Above 0 V for all but the linear one.
    double detectorVolts(double inputVolts) const;

    // Whether the volts of the detector rise with the level.
    bool isRising() const;

    bool operator==(const DetectorLaw &) const = default;
};

// A detector that is known by its data sheet.
struct DetectorPreset
{
    const char *name;
    double slope;     // mV per dB
    double intercept; // dBm
};

// Analog Devices, data sheets AD8307 (rev. D: 25 mV/dB, intercept -84 dBm) and AD8318 (rev. C: -25 mV/dB, 20 dBm).
inline constexpr DetectorPreset kDetectorPresets[]{{"AD8307", 25.0, -84.0}, {"AD8318", -25.0, 20.0}};

} // namespace calvorn
