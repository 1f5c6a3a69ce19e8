// SPDX-License-Identifier: MIT
#include "display/span_mouse.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRubberBand>
#include <QScopedValueRollback>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace calvorn {

namespace {

constexpr int kNotch = 120; // eighths of a degree

bool isWithCtrlAlone(Qt::KeyboardModifiers modifiers)
{
    return (modifiers & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier)) == Qt::ControlModifier;
}

} // namespace

SpanMouse::SpanMouse(SweepGraph &graph)
    : QObject(&graph)
    , m_graph(graph)
{
    graph.installEventFilter(this);
}

SpanMouse::~SpanMouse() = default;

// Handles Escape for the whole application during a drag, regardless of which widget has the focus.
bool SpanMouse::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (m_dragging && isKey && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        m_press.reset();
        endDrag();
        m_cancelled = true;
        return true;
    }
    return watched == &m_graph && !m_replaying && graphEvent(event);
}

// Returns true to hide the event from the graph.
bool SpanMouse::graphEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Wheel:
        return turned(static_cast<QWheelEvent *>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return pressed(static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return moved(static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return released(static_cast<QMouseEvent *>(event));
    case QEvent::Hide:
        m_press.reset();
        endDrag();
        return false;
    default:
        return false;
    }
}

bool SpanMouse::turned(QWheelEvent *event)
{
    if (!isWithCtrlAlone(event->modifiers()))
        return false;
    event->accept();
    m_turned += event->angleDelta().y();
    const int notches = std::exchange(m_turned, m_turned % kNotch) / kNotch;
    if (notches != 0 && m_graph.model().axis.step != 0.0)
        emit zoomed(frequencyAt(event->position().x()), notches);
    return true;
}

bool SpanMouse::pressed(QMouseEvent *event)
{
    m_cancelled = false;
    if (event->button() != Qt::LeftButton || !isWithCtrlAlone(event->modifiers()))
        return false;
    m_press.reset(event->clone());
    m_from = event->position().x();
    return true;
}

// Returns false, so that the mouse read-outs are also updated during a drag.
bool SpanMouse::moved(const QMouseEvent *event)
{
    if (!m_press)
        return false;
    const double to = event->position().x();
    if (!m_dragging && std::abs(to - m_from) >= QGuiApplication::styleHints()->startDragDistance()) {
        m_dragging = true;
        qApp->installEventFilter(this);
    }
    if (m_dragging)
        showBand(to);
    return false;
}

bool SpanMouse::released(const QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return false;
    if (std::exchange(m_cancelled, false))
        return true;
    const std::unique_ptr<QMouseEvent> press = std::exchange(m_press, nullptr);
    if (!press)
        return false;
    if (!m_dragging) {
        const QScopedValueRollback guard(m_replaying, true);
        QApplication::sendEvent(&m_graph, press.get());
        return false;
    }
    endDrag();
    const auto [left, right] = std::minmax({m_from, event->position().x()});
    const bool isWide = right - left >= QGuiApplication::styleHints()->startDragDistance();
    if (isWide && m_graph.model().axis.step != 0.0)
        emit spanDragged(frequencyAt(left), frequencyAt(right));
    return true;
}

void SpanMouse::showBand(double to)
{
    if (!m_band) {
        m_band = new QRubberBand(QRubberBand::Rectangle, &m_graph);
        m_band->setObjectName(QStringLiteral("bandSpan"));
    }
    const auto [left, right] = std::minmax({m_from, std::clamp(to, 0.0, m_graph.width() - 1.0)});
    m_band->setGeometry(QRectF(left, 0.0, right - left + 1.0, m_graph.height()).toRect());
    m_band->show();
}

void SpanMouse::endDrag()
{
    m_dragging = false;
    qApp->removeEventFilter(this);
    if (m_band)
        m_band->hide();
}

double SpanMouse::frequencyAt(double x) const
{
    return m_graph.model().axis.frequencyAt(m_graph.userPosition({x, 0.0}).x());
}

} // namespace calvorn
