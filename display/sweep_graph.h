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

// The graph "picSweep": it shows a PlotModel, which it keeps up to date from the table, the record and the markers.
//
// Without a mouse: with the focus, the arrow keys move a pointer row by row and up and down (Ctrl: ten times as far),
// Home and End take it to the edges, and the keys 1 to 4 put M1 to M4 there, as a click would.
//
// The grid is painted again only when scale, range or size change. The curve is read from the table when that has
// changed, at the pace of the redraw timer; moving a marker or uncovering the window reads no cell.
class SweepGraph : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kInitialWidth = 534;  // logical pixels
    static constexpr int kInitialHeight = 400; // logical pixels

    // The markers must outlive the graph.
    SweepGraph(const Configuration &configuration, const SweepTable &table, Markers &markers,
               QWidget *parent = nullptr);

    // Once at start-up: colours, size, and the coordinates of the record's scale.
    void inizializzaGraph();

    // The grid for the scale and range of the record. Called after either has changed; reads no cell.
    void drawScreen();

    // Reads the amplitude cells of all 400 rows and shows them. A cell that is not a number counts as 0.
    void drawLine();

    // Takes the curve away until the next drawLine(); the grid stays.
    void clearCurve();

    // Further curves and limits that stay, below the curve of the sweep.
    void setOverlays(std::vector<PlotTrace> traces, std::vector<LimitLine> limits);

    // Completes the plot after the sweep in it has changed: curves that move with it, or another curve in its place.
    void setCompletion(std::function<void(PlotModel &)> complete);
    // Draws the plot anew as it is completed now.
    void complete();

    // The pace of redraws. Whoever shows something of the same sweep hangs on it, too.
    RedrawTimer &redraws() const { return *m_redraws; }

    // What the graph shows, for pictures.
    const PlotModel &model() const { return m_model; }
    const GraphCoordinates &coordinates() const { return m_model.scale; }
    Markers &markers() const { return m_markers; }

    // Moves a line to a row (vertical lines) or to a y in user units (horizontal ones), its caption with it.
    void moveLine(GraphItem item, double position);
    GraphLine line(GraphItem item) const { return screenPainter().line(item); }
    // Empty text for the lines of the cursor, which have no caption.
    const GraphLabel &label(GraphItem item) const { return m_labels[static_cast<std::size_t>(item)]; }
    // Where the caption is painted, in logical pixels: at its place, or moved inside where that is cut off. Those of M1
    // and M2 stand above the plot, at negative heights. Empty when its line is hidden or outside the range.
    QRectF labelRect(GraphItem item) const;

    // Paints the captions of M1 and M2 above the plot, whose upper left corner is at the painter's origin.
    void paintCaptionsAbove(QPainter &painter, GraphInk ink) const;
    int heightOfCaptions() const; // logical pixels

    // Where a line is painted, in logical pixels.
    QRectF lineRect(GraphItem item) const;

    // The marker whose line lies within a few pixels of this place (user units), the nearest if there are several.
    std::optional<GraphItem> markerNear(double x, double y) const;

    // Distance of two places (user units) on the screen, in logical pixels.
    double pixelsBetween(QPointF from, QPointF to) const;

    // The points of the curve in user units; empty after clearCurve().
    QPolygonF curve() const;

    QSize sizeHint() const override { return {kInitialWidth, kInitialHeight}; }
    QSize minimumSizeHint() const override { return {320, 300}; }

signals:
    // By drawScreen(): the amplitudes of another scale or range are shown.
    void scaleDrawn();
    // What paintCaptionsAbove() paints.
    void captionsAboveChanged();
    // The mouse over the plot, in user units: x from 0 to 400, y inside the range shown.
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
    QPointF userPosition(const QMouseEvent *event) const;
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
    PlotAxis m_gridAxis;                // the overlays in the grid stand at its frequencies
    std::vector<LegendEntry> m_entries; // of the legend as it is kept
    QPixmap m_legend;
    QRectF m_legendPlace;      // logical pixels
    bool m_curveStale = false; // the table has another one by now
    // Where the mouse or the arrow keys were last: a row, and a part of the height from the top.
    QPointF m_pointer{200.0, 0.5};
    std::array<GraphLabel, kGraphItems> m_labels;
};

} // namespace calvorn
