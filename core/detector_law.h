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
        Table, // measured points; straight lines of dBm over the detector's volts or over their logarithm between them
    };

    struct Point
    {
        double volts = 0.0; // of the detector
        double dBm = 0.0;

        bool operator==(const Point &) const = default;
    };

    static constexpr std::size_t kFewestPoints = 2;
    static constexpr std::size_t kMostPoints = 32;
    static constexpr double kLeastSlope = 1.0;    // mV per dB, either sign
    static constexpr double kMostSlope = 1000.0;  // mV per dB, either sign
    static constexpr double kFarthestDbm = 200.0; // either sign: of an intercept, of a point, and of what a law returns
    static constexpr double kFarthestVolts = 1e3; // either sign, of a point

    Kind kind = Kind::Linear;
    double slope = 25.0;      // mV per dB; below 0 where the volts fall with the level
    double intercept = -84.0; // dBm, where the line meets 0 V

    // The points of a table, the volts rising. Levels are interpolated over the volts, which suits a logarithmic
    // detector, or over their logarithm, which suits a diode: whichever predicts the inner points better from their
    // neighbours. With two points, or with one at or below 0 V, over the volts.
    const std::vector<Point> &points() const { return m_points; }
    void setPoints(std::vector<Point> points);

    static bool isSlope(double millivolts);
    static bool isLevel(double dBm);
    static bool isPoint(const Point &point);

    // The number, from 1 on, of the first point of a table that does not go on as those before it: the volts rise, and
    // the levels all rise or all fall. 0: there is none.
    std::size_t turningPoint() const;

    // Whether the law says one level for each voltage: slope and intercept within their limits; points whose volts rise
    // and whose levels all rise or all fall.
    bool isUsable() const;

    // Volts RMS at the input for volts of the detector. Outside the law it is the level at its end. Unless the detector
    // is linear, the level is from -200 to 200 dBm.
    double inputVolts(double detectorVolts) const;

    // Where the law ends: beyond the points of a table, and below 0 V, which no logarithmic detector gives.
    bool isBeyondEnds(double detectorVolts) const;

    // The way back: volts of the detector for volts RMS at its input.
    double detectorVolts(double inputVolts) const;

    // Whether the volts of the detector rise with the level.
    bool isRising() const;

    bool operator==(const DetectorLaw &) const = default;

private:
    double abscissa(double volts) const;
    double dBmOfTable(double volts) const;
    double voltsOfTable(double dBm) const;

    std::vector<Point> m_points;
    bool m_isOverLogarithm = false; // follows from the points
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
