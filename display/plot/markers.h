// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <array>
#include <cstddef>

namespace calvorn {

// The items over the curve: four markers and the two cursor lines.
enum class GraphItem { M1, M2, M3, M4, CursorV, CursorH };
inline constexpr int kGraphItems = 6;

constexpr bool isVertical(GraphItem item)
{
    return item == GraphItem::M1 || item == GraphItem::M2 || item == GraphItem::CursorV;
}

// The positions of the markers and the cursor: a row of the sweep table (1 to 400) for M1, M2 and CursorV; an amplitude
// in the scale's units (volts or dB) for M3, M4 and CursorH.
struct MarkerSet
{
    struct Line
    {
        double position = 0.0;
        bool isVisible = true;

        bool operator==(const Line &) const = default;
    };

    MarkerSet();

    Line &operator[](GraphItem item) { return lines[static_cast<std::size_t>(item)]; }
    const Line &operator[](GraphItem item) const { return lines[static_cast<std::size_t>(item)]; }

    // Returns the row of a vertical item as an integer.
    int row(GraphItem item) const;

    bool operator==(const MarkerSet &) const = default;

    std::array<Line, kGraphItems> lines;
};

// The window's markers. The boxes, the mouse and commands move them; views are updated on moved().
class Markers : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    const MarkerSet &set() const { return m_set; }
    double position(GraphItem item) const { return m_set[item].position; }
    int row(GraphItem item) const { return m_set.row(item); }

    void move(GraphItem item, double position);
    void setVisible(GraphItem item, bool visible);

signals:
    // The item was moved, shown or hidden.
    void moved(GraphItem item);

private:
    MarkerSet m_set;
};

} // namespace calvorn
