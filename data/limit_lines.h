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
    Decibel,        // relative to the current scale's reference, 1 V or 10 V
    RelativeDecibel // relative to a reference sweep
};

struct LimitPoint
{
    double frequency = 0.0;      // Hz, 0 or more
    std::optional<double> upper; // in LimitLines::unit
    std::optional<double> lower;

    bool operator==(const LimitPoint &) const = default;
};

// Upper and lower limits over frequency. Straight lines connect neighbouring points that both have the value; two
// points at the same frequency form a step.
class LimitLines
{
public:
    static constexpr std::size_t kMostPoints = 1000;

    LimitUnit unit = LimitUnit::Decibel;

    // Sorted by frequency; points at the same frequency stay in the order in which they were added.
    const std::vector<LimitPoint> &points() const { return m_points; }
    bool isEmpty() const { return m_points.empty(); }

    // Inserts a point and returns its index. If there are already kMostPoints, changes nothing and returns
    // kMostPoints.
    std::size_t add(const LimitPoint &point);
    // Replaces a point and returns the index of the new point.
    std::size_t replace(std::size_t index, const LimitPoint &point);
    void remove(std::size_t index);
    void clear() { m_points.clear(); }

    // Return nullopt where there is no limit, and the stricter value at a step.
    std::optional<double> upperAt(double hertz) const;
    std::optional<double> lowerAt(double hertz) const;

    bool operator==(const LimitLines &) const = default;

private:
    std::vector<LimitPoint> m_points;
};

// Returns the contents of a limit file (docs/limit-lines.md), which are the same in every locale.
QByteArray limitLinesAsCsv(const LimitLines &limits);

// Throws RuntimeError(File) with the line and the reason if the file is invalid.
LimitLines readLimitLinesCsv(QIODevice &device);

// Reads the file at this path; error messages include the path.
LimitLines readLimitFile(const QString &path);

} // namespace calvorn
