// SPDX-License-Identifier: MIT
#pragma once

#include "display/sweep_graph.h"

#include <QObject>

#include <memory>

class QMouseEvent;
class QRubberBand;
class QWheelEvent;

namespace calvorn {

// Mouse control of the graph's span while Ctrl is held: the wheel zooms around the pointer, and a drag with the left
// button selects the span between its ends. Escape cancels a drag. A click without a drag is passed on to the graph.
class SpanMouse : public QObject
{
    Q_OBJECT

public:
    explicit SpanMouse(SweepGraph &graph);
    ~SpanMouse() override;

signals:
    // notches: positive (wheel turned away from the user) to zoom in, negative to zoom out.
    void zoomed(double hertz, int notches);
    // Frequencies in Hz at the left and the right end of the drag.
    void spanDragged(double left, double right);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool graphEvent(QEvent *event);
    bool turned(QWheelEvent *event);
    bool pressed(QMouseEvent *event);
    bool moved(const QMouseEvent *event);
    bool released(const QMouseEvent *event);
    void showBand(double to);
    void endDrag();
    double frequencyAt(double x) const;

    SweepGraph &m_graph;
    std::unique_ptr<QMouseEvent> m_press; // held back until it turns out to be a click or a drag
    QRubberBand *m_band = nullptr;
    double m_from = 0.0; // x of the press, logical pixels
    bool m_dragging = false;
    bool m_cancelled = false; // cancelled by Escape; the button is still down
    bool m_replaying = false; // sending the press that was held back
    int m_turned = 0;         // fraction of a notch so far, eighths of a degree
};

} // namespace calvorn
