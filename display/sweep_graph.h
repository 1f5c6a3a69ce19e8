// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"
#include "display/plot/plot_image.h"
#include "display/plot/plot_model.h"
#include "display/plot/plot_painter.h"
#include "display/redraw_timer.h"

#include <QPixmap>
#include <QPolygonF>
#include <QWidget>

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace calvorn {

// The "picSweep" graph, which shows a PlotModel and updates it from the table, the configuration and the markers.
//
// Keyboard control while focused: the arrow keys move a pointer by one row or one pixel (ten with Ctrl), Home and End
// move it to the edges, and the keys 1 to 4 place M1 to M4 at the pointer, as a click would.
//
// The grid is repainted only when the scale, range, size, screen or overlays change. After a change, the curve is read
// from the table at the pace of the redraw timer; moving a marker or uncovering the window does not read any cells.
class SweepGraph : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kInitialWidth = 534;  // logical pixels
    static constexpr int kInitialHeight = 400; // logical pixels

    // The markers must outlive the graph.
    SweepGraph(const Configuration &configuration, const SweepTable &table, Markers &markers,
               QWidget *parent = nullptr);

    // Sets the colours, the size and the coordinates for the configured scale. Called once at start-up.
    void inizializzaGraph();

    // Draws the grid for the configured scale and range. Called after either has changed; does not read any cells.
    void drawScreen();

    // Reads and shows the amplitudes of all 400 rows. A cell that is not a number counts as 0.
    void drawLine();

    // Removes the curve until the next drawLine(); the grid remains.
    void clearCurve();

    // Sets additional curves and limits, which are drawn below the sweep's curve.
    void setOverlays(std::vector<PlotTrace> traces, std::vector<LimitLine> limits);

    // Sets the function that completes the plot after its sweep has changed, by adding curves that change with the
    // sweep or by replacing the curve.
    void setCompletion(std::function<void(PlotModel &)> complete);
    // Completes and redraws the plot.
    void complete();

    // The timer that paces redraws; also used by other views of the sweep.
    RedrawTimer &redraws() const { return *m_redraws; }

    // The displayed plot, for use in pictures.
    const PlotModel &model() const { return m_model; }
    const GraphCoordinates &coordinates() const { return m_model.scale; }
    Markers &markers() const { return m_markers; }

    // Moves a line and its caption to a row (vertical lines) or to a y in user units (horizontal lines).
    void moveLine(GraphItem item, double position);
    GraphLine line(GraphItem item) const { return screenPainter().line(item); }
    // The text is empty for the cursor lines, which have no caption.
    const GraphLabel &label(GraphItem item) const { return m_labels[static_cast<std::size_t>(item)]; }
    // Returns the area of a caption in logical pixels: beside its line, moved inside the plot if it would be cut off.
    // The captions of M1 and M2 are above the plot, at negative y. Empty if the line is hidden or outside the range.
    QRectF labelRect(GraphItem item) const;

    // Paints the captions of M1 and M2 above the plot. The painter's origin is the upper left corner of the plot.
    void paintCaptionsAbove(QPainter &painter, GraphInk ink) const;
    int heightOfCaptions() const; // logical pixels

    // Returns the area covered by a line, in logical pixels.
    QRectF lineRect(GraphItem item) const;

    // Returns the marker whose line is nearest to this position (user units), if it is within a few pixels.
    std::optional<GraphItem> markerNear(double x, double y) const;

    // Returns the distance between two positions (user units) on the screen, in logical pixels.
    double pixelsBetween(QPointF from, QPointF to) const;

    // Converts a mouse position (logical pixels) to user units, clamped to the plot. The position is that of the
    // pixel's centre.
    QPointF userPosition(QPointF position) const;

    // The points of the curve in user units; empty after clearCurve().
    QPolygonF curve() const;

    QSize sizeHint() const override { return {kInitialWidth, kInitialHeight}; }
    QSize minimumSizeHint() const override { return {320, 300}; }

signals:
    // Emitted by drawScreen(), which applies the configured scale and range.
    void scaleDrawn();
    // The captions above the plot have changed and must be painted again.
    void captionsAboveChanged();
    // Mouse events over the plot, in user units: x from 0 to 400, y within the displayed range.
    void mouseMoved(double x, double y);
    void mousePressed(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, double x, double y);
    void mouseReleased(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, double x, double y);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool event(QEvent *event) override;

private:
    void movePointer(double columns, double lines);
    void putMarkerAtPointer(int number);
    void showToolTipBelow();
    void picSweep_Paint(QPainter &painter, const QRegion &exposed);
    void showCurve();
    void showLegend();
    void paintPlot();
    void paintPointer(QPainter &painter) const;
    void followTable();
    void repaintItem(GraphItem item);
    void measureLabels();
    QRect itemRegion(GraphItem item) const;
    void placeLabel(GraphItem item);
    void placeLabels();
    PlotPainter screenPainter(GraphInk ink = GraphInk::Screen) const; // in logical pixels
    PlotPainter devicePainter() const;                                // in device pixels
    double curveThickness() const;                                    // device pixels

    const Configuration &m_configuration;
    const SweepTable &m_table;
    Markers &m_markers;
    RedrawTimer *m_redraws;
    PlotModel m_model;
    PlotImage m_plot; // null when its grid is out of date
    std::function<void(PlotModel &)> m_complete = [](PlotModel &) {};
    PlotAxis m_gridAxis;                // axis used to paint the overlays in the grid
    std::vector<LegendEntry> m_entries; // entries of the cached legend
    QPixmap m_legend;
    QRectF m_legendPlace;      // logical pixels
    bool m_curveStale = false; // the table has changed since the curve was read
    // Last position set with the mouse or the arrow keys: a row, and a fraction of the height from the top.
    QPointF m_pointer{200.0, 0.5};
    std::array<GraphLabel, kGraphItems> m_labels;
};

} // namespace calvorn
