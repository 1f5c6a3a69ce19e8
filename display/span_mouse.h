// SPDX-License-Identifier: MIT
#pragma once

#include "display/sweep_graph.h"

#include <QObject>

#include <memory>

class QMouseEvent;
class QRubberBand;
class QWheelEvent;

namespace calvorn {

// What the mouse does to the span of a graph while Ctrl is held: the wheel zooms around the pointer, a drag with the
// left button takes the span between its ends. Escape cancels a drag. A click without a drag goes on to the graph.
class SpanMouse : public QObject
{
    Q_OBJECT

public:
    explicit SpanMouse(SweepGraph &graph);
    ~SpanMouse() override;

signals:
    // notches: away from the user, to zoom in; negative towards the user.
    void zoomed(double hertz, int notches);
    // Frequencies at the left and the right end, Hz.
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
    std::unique_ptr<QMouseEvent> m_press; // held back until it turns out to be a click
    QRubberBand *m_band = nullptr;
    double m_from = 0.0; // x of the press, logical pixels
    bool m_dragging = false;
    bool m_cancelled = false; // by Escape, and the button is still held
    bool m_replaying = false; // the press that was held back
    int m_turned = 0;         // of a notch, eighths of a degree
};

} // namespace calvorn
