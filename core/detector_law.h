// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

namespace calvorn {

inline constexpr double kMillivolts = 1000.0; // per volt

// Levels are RMS into 50 ohms: 0 dBm is 1 mW or 0.2236 V.
double voltsOfDbm(double dBm);

// Returns minus infinity at 0 V and below.
double dBmOfVolts(double volts);

// The relation between a detector's input level and its output voltage. A linear detector outputs the level itself.
struct DetectorLaw
{
    enum class Kind {
        Linear,
        Log,   // volts = slope x (level - intercept), as in the data sheets of logarithmic detectors
        Table, // measured points, interpolated linearly in dBm against the detector voltage or its logarithm
    };

    struct Point
    {
        double volts = 0.0; // detector volts
        double dBm = 0.0;

        bool operator==(const Point &) const = default;
    };

    static constexpr std::size_t kFewestPoints = 2;
    static constexpr std::size_t kMostPoints = 32;
    static constexpr double kLeastSlope = 1.0;    // mV per dB, absolute value
    static constexpr double kMostSlope = 1000.0;  // mV per dB, absolute value
    static constexpr double kFarthestDbm = 200.0; // absolute value; limits intercepts, points and returned levels
    static constexpr double kFarthestVolts = 1e3; // absolute value; limits the points

    Kind kind = Kind::Linear;
    double slope = 25.0;      // mV per dB; negative if the voltage falls as the level rises
    double intercept = -84.0; // dBm; the level at which the line reaches 0 V

    // The points of a table, in order of increasing voltage. Levels are interpolated against the voltage (suitable for
    // a logarithmic detector) or against its logarithm (suitable for a diode), whichever predicts the inner points
    // better from their neighbours. With only two points, or a point at or below 0 V, the voltage is used.
    const std::vector<Point> &points() const { return m_points; }
    void setPoints(std::vector<Point> points);

    static bool isSlope(double millivolts);
    static bool isLevel(double dBm);
    static bool isPoint(const Point &point);

    // Returns the number, counting from 1, of the first table point that violates the required order (rising voltage;
    // levels that all rise or all fall), or 0 if there is none.
    std::size_t turningPoint() const;

    // Returns true if the law yields exactly one level for each voltage: slope and intercept are within their limits,
    // and table points are in order (see turningPoint()).
    bool isUsable() const;

    // Converts detector volts to volts RMS at the input. Beyond either end of the law, returns the level at that end.
    // Unless the law is linear, the level is limited to -200 to 200 dBm.
    double inputVolts(double detectorVolts) const;

    // Returns true if the voltage is outside the law: beyond the points of a table, or below 0 V for a logarithmic law,
    // because logarithmic detectors do not output negative voltages.
    bool isBeyondEnds(double detectorVolts) const;

    // The inverse of inputVolts(): converts volts RMS at the input to detector volts.
    double detectorVolts(double inputVolts) const;

    // Returns true if the detector voltage rises with the level.
    bool isRising() const;

    bool operator==(const DetectorLaw &) const = default;

private:
    double abscissa(double volts) const;
    double dBmOfTable(double volts) const;
    double voltsOfTable(double dBm) const;

    std::vector<Point> m_points;
    bool m_isOverLogarithm = false; // derived from the points
};

// Data-sheet values of a detector.
struct DetectorPreset
{
    const char *name;
    double slope;     // mV per dB
    double intercept; // dBm
};

// Analog Devices, data sheets AD8307 (rev. D: 25 mV/dB, intercept -84 dBm) and AD8318 (rev. C: -25 mV/dB, 20 dBm).
inline constexpr DetectorPreset kDetectorPresets[]{{"AD8307", 25.0, -84.0}, {"AD8318", -25.0, 20.0}};

} // namespace calvorn
