// SPDX-License-Identifier: MIT
#include "display/sweep_graph.h"

#include "display/graph_parts.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineF>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr double kGrabDistance = 4.0; // logical pixels within which the mouse grabs a line

} // namespace

SweepGraph::SweepGraph(const Configuration &configuration, const SweepTable &table, Markers &markers, QWidget *parent)
    : QWidget(parent)
    , m_configuration(configuration)
    , m_table(table)
    , m_markers(markers)
    , m_redraws(new RedrawTimer(*this))
{
    addParts(*this); // before anything creates an accessible interface for the graph
    setObjectName(QStringLiteral("picSweep"));
    setToolTip(tr("Left-click: M1, right-click: M2, with Shift: M3 and M4. Markers can be dragged.\n"
                  "With Ctrl: the wheel zooms, dragging selects the span.\n"
                  "Keyboard: arrow keys move, keys 1 to 4 place a marker."));
    setAccessibleName(tr("Sweep graph"));
    setAccessibleDescription(toolTip());
    // Tab only: a click in the plot must not take the focus from the box in which the user is typing.
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);

    m_model.markers = markers.set();
    for (int i = 0; i < kGraphItems; ++i)
        m_labels[static_cast<std::size_t>(i)].text = PlotPainter::captionOf(static_cast<GraphItem>(i));
    measureLabels();
    connect(&markers, &Markers::moved, this, &SweepGraph::repaintItem);
    connect(&table, &SweepTable::rebuilt, this, &SweepGraph::clearCurve);
    connect(&table, &SweepTable::changed, this, &SweepGraph::followTable);
    connect(m_redraws, &RedrawTimer::fired, this, &SweepGraph::drawLine);
}

void SweepGraph::inizializzaGraph()
{
    QPalette colours = palette();
    colours.setColor(QPalette::Window, QColor::fromRgb(kGraphBackground));
    colours.setColor(QPalette::WindowText, QColor(0, 255, 0));
    setPalette(colours);
    resize(kInitialWidth, kInitialHeight);
    drawScreen();
}

void SweepGraph::drawScreen()
{
    m_model.scale = GraphCoordinates(m_configuration);
    m_plot.clear();
    placeLabels();
    update();
    emit scaleDrawn();
}

// Reads a burst of vectors only once, when it is redrawn. A table without a sweep is drawn only if the graph already
// shows a curve.
void SweepGraph::followTable()
{
    if (!m_table.hasSweep() && !m_model.live)
        return;
    m_curveStale = true;
    if (m_table.origin() == SweepOrigin::Measured)
        m_redraws->arm();
    else
        drawLine();
}

void SweepGraph::drawLine()
{
    m_curveStale = false;
    m_model.showSweep(m_table);
    m_complete(m_model);
    showCurve();
}

void SweepGraph::clearCurve()
{
    m_curveStale = false;
    m_model.showNoSweep(m_table);
    m_complete(m_model);
    showCurve();
}

void SweepGraph::setOverlays(std::vector<PlotTrace> traces, std::vector<LimitLine> limits)
{
    m_model.traces = std::move(traces);
    m_model.limits = std::move(limits);
    m_plot.clear();
    showLegend();
    update();
}

void SweepGraph::setCompletion(std::function<void(PlotModel &)> complete)
{
    m_complete = std::move(complete);
}

void SweepGraph::complete()
{
    if (m_model.live)
        drawLine();
    else
        clearCurve();
}

// Caches the legend as a pixmap, because most sweeps do not change it.
void SweepGraph::showLegend()
{
    std::vector<LegendEntry> entries = m_model.legend();
    if (entries == m_entries)
        return;
    update(m_legendPlace.toAlignedRect());
    m_entries = std::move(entries);
    const double ratio = devicePixelRatioF();
    const PlotPainter painter = screenPainter();
    m_legendPlace = painter.legendRect(font());
    m_legend = QPixmap((m_legendPlace.size() * ratio).toSize());
    m_legend.setDevicePixelRatio(ratio);
    m_legend.fill(Qt::transparent);
    if (m_legend.isNull())
        return;
    QPainter inside(&m_legend);
    inside.setFont(font());
    inside.translate(-m_legendPlace.topLeft());
    painter.paintLegend(inside);
    inside.end();
    update(m_legendPlace.toAlignedRect());
}

void SweepGraph::moveLine(GraphItem item, double position)
{
    m_markers.move(item, isVertical(item) ? position : coordinates().amplitudeOfY(position));
}

void SweepGraph::repaintItem(GraphItem item)
{
    update(itemRegion(item));
    m_model.markers = m_markers.set();
    placeLabel(item);
    update(itemRegion(item));
    if (item == GraphItem::M1 || item == GraphItem::M2)
        emit captionsAboveChanged();
}

QPolygonF SweepGraph::curve() const
{
    QPolygonF points;
    if (!m_model.live)
        return points;
    for (const double amplitude : m_model.live->amplitudes)
        points.append({static_cast<double>(points.size() + 1), coordinates().yOfAmplitude(amplitude)});
    return points;
}

void SweepGraph::measureLabels()
{
    for (GraphLabel &target : m_labels)
        PlotPainter::measureCaption(target, font());
}

PlotPainter SweepGraph::screenPainter(GraphInk ink) const
{
    const double pixel = 1.0 / devicePixelRatioF();
    return {m_model, {QSizeF(size()), pixel, std::max(1.0, std::floor(devicePixelRatioF())) * pixel}, ink};
}

// The thickness of an antialiased curve need not be a whole number of pixels, so it is the same at every screen scale.
double SweepGraph::curveThickness() const
{
    return std::max(1.0, devicePixelRatioF());
}

PlotPainter SweepGraph::devicePainter() const
{
    const double ratio = devicePixelRatioF();
    const double thickness = std::max(1.0, std::floor(ratio));
    return {m_model, {QSizeF((QSizeF(size()) * ratio).toSize()), 1.0, thickness, curveThickness()}};
}

void SweepGraph::placeLabel(GraphItem item)
{
    screenPainter().placeCaption(item, line(item), m_labels[static_cast<std::size_t>(item)]);
}

void SweepGraph::placeLabels()
{
    for (int i = 0; i < kGraphItems; ++i)
        placeLabel(static_cast<GraphItem>(i));
}

QRectF SweepGraph::labelRect(GraphItem item) const
{
    const PlotPainter painter = screenPainter();
    if (item != GraphItem::M1 && item != GraphItem::M2)
        return painter.captionRect(item, line(item), label(item));
    const auto [first, second] = painter.placesAbove(label(GraphItem::M1), label(GraphItem::M2));
    return item == GraphItem::M1 ? first : second;
}

void SweepGraph::paintCaptionsAbove(QPainter &painter, GraphInk ink) const
{
    const PlotPainter screen = screenPainter(ink);
    for (const GraphItem item : {GraphItem::M1, GraphItem::M2})
        screen.paintCaption(painter, labelRect(item), line(item), label(item), false);
}

int SweepGraph::heightOfCaptions() const
{
    return static_cast<int>(std::ceil(label(GraphItem::M1).size.height()));
}

QRectF SweepGraph::lineRect(GraphItem item) const
{
    const GraphLine &target = line(item);
    const QPointF at = coordinates().toPixel({target.x1, target.y1}, size());
    const auto whole = [](double value) { return std::clamp(std::floor(value), -kFarAway, kFarAway); };
    return isVertical(item) ? QRectF(whole(at.x()) - 1.0, 0.0, 3.0, height())
                            : QRectF(0.0, whole(at.y()) - 1.0, width(), 3.0);
}

QRect SweepGraph::itemRegion(GraphItem item) const
{
    return lineRect(item).toRect().united(labelRect(item).toAlignedRect());
}

// Repaints only the area that has changed.
void SweepGraph::showCurve()
{
    showLegend();
    if (m_model.axis != m_gridAxis && !(m_model.traces.empty() && m_model.limits.empty()))
        m_plot.clear();
    if (m_plot.isNull()) // the next paint event draws the curve
        return update();
    const double ratio = devicePixelRatioF();
    QRegion changed;
    for (const QRect &area : m_plot.setCurves(devicePainter().curvesInPixels()))
        changed +=
            QRectF(area.x() / ratio, area.y() / ratio, area.width() / ratio, area.height() / ratio).toAlignedRect();
    update(changed);
}

void SweepGraph::paintPlot()
{
    const PlotPainter painter = devicePainter();
    QImage grid((QSizeF(size()) * devicePixelRatioF()).toSize(), QImage::Format_RGB32);
    QPainter gridPainter(&grid);
    painter.paintBackground(gridPainter);
    gridPainter.end();
    m_gridAxis = m_model.axis;
    m_plot.setGrid(grid, curveThickness());
    m_plot.setCurves(painter.curvesInPixels());
}

void SweepGraph::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    picSweep_Paint(painter, event->region());
    if (hasFocus())
        paintPointer(painter);
}

// The curve is cached, so uncovering the window repaints it without reading any cells, even during a sweep.
void SweepGraph::picSweep_Paint(QPainter &painter, const QRegion &exposed)
{
    if (m_curveStale) // so that a new scale or sweep is never shown only partly
        drawLine();
    if (m_plot.isNull())
        paintPlot();
    // Copy unscaled, one rectangle at a time. This is faster than one copy with a clip region of many rectangles.
    const double ratio = devicePixelRatioF();
    painter.save();
    for (const QRect &area : exposed) {
        painter.setClipRect(area);
        painter.scale(1.0 / ratio, 1.0 / ratio);
        painter.drawImage(0, 0, m_plot.image());
        painter.scale(ratio, ratio);
    }
    painter.restore();
    if (!m_legend.isNull() && exposed.intersects(m_legendPlace.toAlignedRect()))
        painter.drawPixmap(m_legendPlace.topLeft(), m_legend);
    const PlotPainter screen = screenPainter();
    for (int i = 0; i < kGraphItems; ++i)
        screen.paintLine(painter, screen.line(static_cast<GraphItem>(i)));
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const GraphItem item : {GraphItem::M3, GraphItem::M4})
        if (exposed.intersects(labelRect(item).toAlignedRect()))
            screen.paintCaption(painter, item, line(item), label(item));
}

void SweepGraph::paintPointer(QPainter &painter) const
{
    const double reach = 6.0; // logical pixels
    const QPointF user{m_pointer.x(), coordinates().top() + m_pointer.y() * coordinates().height()};
    const QPointF at = coordinates().toPixel(user, size(), 1.0 / devicePixelRatioF());
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(QColor::fromRgb(kCursorColour), 0));
    painter.drawLine(at - QPointF(reach, 0.0), at + QPointF(reach, 0.0));
    painter.drawLine(at - QPointF(0.0, reach), at + QPointF(0.0, reach));
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void SweepGraph::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_plot.clear();
    m_entries.clear();
    showLegend();
    placeLabels();
    emit captionsAboveChanged();
}

QPointF SweepGraph::userPosition(QPointF position) const
{
    const double pixel = 1.0 / devicePixelRatioF();
    const double half = pixel / 2.0;
    const auto inside = [half](double at, int extent) {
        return std::clamp(at + half, half, std::max(extent - half, half));
    };
    const QPointF user =
        coordinates().toUser({inside(position.x(), width()), inside(position.y(), height())}, size(), pixel);
    return {std::clamp(user.x(), 0.0, GraphCoordinates::kWidth), user.y()};
}

void SweepGraph::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF user = userPosition(event->position());
    if (event->buttons() == Qt::NoButton) {
        const auto near = markerNear(user.x(), user.y());
        setCursor(!near ? Qt::CrossCursor : isVertical(*near) ? Qt::SplitHCursor : Qt::SplitVCursor);
    }
    m_pointer = {user.x(), (user.y() - coordinates().top()) / coordinates().height()};
    emit mouseMoved(user.x(), user.y());
}

void SweepGraph::mousePressEvent(QMouseEvent *event)
{
    const QPointF user = userPosition(event->position());
    emit mousePressed(event->button(), event->modifiers(), user.x(), user.y());
}

void SweepGraph::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointF user = userPosition(event->position());
    emit mouseReleased(event->button(), event->modifiers(), user.x(), user.y());
}

void SweepGraph::movePointer(double columns, double lines)
{
    m_pointer.setX(std::clamp(std::round(m_pointer.x()) + columns, 1.0, GraphCoordinates::kWidth));
    m_pointer.setY(std::clamp(m_pointer.y() + lines / std::max(height(), 1), 0.0, 1.0));
    emit mouseMoved(m_pointer.x(), coordinates().top() + m_pointer.y() * coordinates().height());
    update();
}

void SweepGraph::putMarkerAtPointer(int number)
{
    const bool odd = number % 2 == 1;
    emit mouseReleased(odd ? Qt::LeftButton : Qt::RightButton, number > 2 ? Qt::ShiftModifier : Qt::NoModifier,
                       m_pointer.x(), coordinates().top() + m_pointer.y() * coordinates().height());
}

void SweepGraph::keyPressEvent(QKeyEvent *event)
{
    const double distance = event->modifiers().testFlag(Qt::ControlModifier) ? 10.0 : 1.0;
    switch (event->key()) {
    case Qt::Key_Left:
        return movePointer(-distance, 0.0);
    case Qt::Key_Right:
        return movePointer(distance, 0.0);
    case Qt::Key_Up:
        return movePointer(0.0, -distance);
    case Qt::Key_Down:
        return movePointer(0.0, distance);
    case Qt::Key_Home:
        return movePointer(-GraphCoordinates::kWidth, 0.0);
    case Qt::Key_End:
        return movePointer(GraphCoordinates::kWidth, 0.0);
    case Qt::Key_1:
    case Qt::Key_2:
    case Qt::Key_3:
    case Qt::Key_4:
        return putMarkerAtPointer(event->key() - Qt::Key_0);
    default:
        QWidget::keyPressEvent(event);
    }
}

void SweepGraph::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
}

void SweepGraph::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    update();
}

// Shows the tool tip below the plot, where it does not hide the curve.
void SweepGraph::showToolTipBelow()
{
    QToolTip::showText(mapToGlobal(rect().bottomLeft()), toolTip(), this);
}

double SweepGraph::pixelsBetween(QPointF from, QPointF to) const
{
    return QLineF(coordinates().toPixel(from, size()), coordinates().toPixel(to, size())).length();
}

std::optional<GraphItem> SweepGraph::markerNear(double x, double y) const
{
    const QPointF at = coordinates().toPixel({x, y}, size());
    std::optional<GraphItem> nearest;
    double best = kGrabDistance;
    for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4}) {
        const QPointF place = coordinates().toPixel({line(item).x1, line(item).y1}, size());
        const double distance = std::abs(isVertical(item) ? place.x() - at.x() : place.y() - at.y());
        if (line(item).visible && distance <= best) {
            best = distance;
            nearest = item;
        }
    }
    return nearest;
}

bool SweepGraph::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        showToolTipBelow();
        return true;
    }
    // The new screen may have a different device pixel ratio; a new font changes the captions.
    if (event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::FontChange) {
        m_plot.clear();
        m_entries.clear();
        showLegend();
        measureLabels();
        placeLabels();
        update();
        emit captionsAboveChanged();
    }
    return QWidget::event(event);
}

} // namespace calvorn
