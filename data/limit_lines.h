// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

class QIODevice;

namespace calvorn {

enum class LimitUnit {
    Volt,
    Decibel,        // to the reference of the scale in use, 1 V or 10 V
    RelativeDecibel // to a reference sweep
};

struct LimitPoint
{
    double frequency = 0.0;      // Hz, 0 or more
    std::optional<double> upper; // in the unit of the limits
    std::optional<double> lower;

    bool operator==(const LimitPoint &) const = default;
};

// An upper and a lower limit over frequency: straight lines between neighbouring points that both have the value.
// Two points of one frequency make a step.
class LimitLines
{
public:
    static constexpr std::size_t kMostPoints = 1000;

    LimitUnit unit = LimitUnit::Decibel;

    // By frequency; those of one frequency in the order in which they were added.
    const std::vector<LimitPoint> &points() const { return m_points; }
    bool isEmpty() const { return m_points.empty(); }

    // Returns the index it has got. Nothing happens when there are kMostPoints already; the result is then kMostPoints.
    std::size_t add(const LimitPoint &point);
    // Puts another point in place of one; returns the index it has got.
    std::size_t replace(std::size_t index, const LimitPoint &point);
    void remove(std::size_t index);
    void clear() { m_points.clear(); }

    // Nothing where there is no limit. On a step the stricter value.
    std::optional<double> upperAt(double hertz) const;
    std::optional<double> lowerAt(double hertz) const;

    bool operator==(const LimitLines &) const = default;

private:
    std::vector<LimitPoint> m_points;
};

// The file of the limits (docs/limit-lines.md), the same in every locale.
QByteArray limitLinesAsCsv(const LimitLines &limits);

// RuntimeError(File) names line and reason.
LimitLines readLimitLinesCsv(QIODevice &device);

// The same of a file by its path, which the sentence then names.
LimitLines readLimitFile(const QString &path);

} // namespace calvorn
