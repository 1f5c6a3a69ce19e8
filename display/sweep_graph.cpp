// SPDX-License-Identifier: MIT
#include "display/sweep_graph.h"

#include "core/number_text.h"
#include "core/runtime_error.h"
#include "display/graph_parts.h"

#include <QCoreApplication>
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

constexpr double kGrabDistance = 4.0; // logical pixels from a line within which the mouse takes hold of it

// Device pixels. Far outside any screen, and inside what the rasteriser's fixed-point coordinates hold.
constexpr double kFarAway = 16000.0;

double amplitudeOf(const NumberText &numbers, const QString &text)
{
    try {
        return numbers.toDouble(text);
    } catch (const RuntimeError &) {
        return 0.0;
    }
}

} // namespace

SweepGraph::SweepGraph(const Configuration &configuration, const SweepTable &table, QWidget *parent)
    : QWidget(parent)
    , m_configuration(configuration)
    , m_table(table)
{
    addParts(*this); // before anything makes an accessible interface of the graph
    setObjectName(QStringLiteral("picSweep"));
    setToolTip(tr("Click left: M1, right: M2, with Shift: M3 and M4. Markers can be dragged.\n"
                  "Keyboard: arrow keys move, keys 1 to 4 put a marker."));
    setAccessibleName(tr("Sweep graph"));
    setAccessibleDescription(toolTip());
    // By Tab alone: a click into the plot leaves the focus where one was typing.
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);

    m_timer.setParent(this);
    m_timer.setObjectName(QStringLiteral("timerGrafico"));
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &SweepGraph::fireGraphTimer);

    const std::array<QRgb, kGraphItems> colours{kFrequencyMarkerColour, kFrequencyMarkerColour, kAmplitudeMarkerColour,
                                                kAmplitudeMarkerColour, kCursorColour,          kCursorColour};
    const std::array<const char *, kGraphItems> captions{"M1", "M2", "M3", "M4", "", ""};
    for (std::size_t i = 0; i < kGraphItems; ++i) {
        m_lines[i].colour = colours[i];
        m_labels[i].text = QString::fromLatin1(captions[i]);
    }
    measureLabels();
    for (std::size_t i = 0; i < kGraphItems; ++i) {
        const auto item = static_cast<GraphItem>(i);
        moveLine(item, isVertical(item) ? 1.0 : 0.0);
    }
    setLineVisible(GraphItem::CursorV, false);
    setLineVisible(GraphItem::CursorH, false);
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
    m_coordinates = GraphCoordinates(m_configuration);
    m_plot.clear();
    for (int i = 0; i < kGraphItems; ++i) {
        const auto item = static_cast<GraphItem>(i);
        GraphLine &target = lineOf(item);
        if (isVertical(item)) {
            target.y1 = m_coordinates.top();
            target.y2 = m_coordinates.bottom();
        } else {
            target.x1 = 0.0;
            target.x2 = GraphCoordinates::kWidth;
        }
    }
    placeLabels();
    update();
}

void SweepGraph::drawLine()
{
    const NumberText numbers;
    const double factor = m_coordinates.factor();
    auto &points = m_curve.emplace();
    for (int row = 1; row <= kSweepPoints; ++row) {
        const QString &text = m_table.text(row, SweepTable::AmplitudeColumn);
        points[static_cast<std::size_t>(row - 1)] = factor * amplitudeOf(numbers, text);
    }
    showCurve();
}

void SweepGraph::clearCurve()
{
    m_curve.reset();
    showCurve();
}

void SweepGraph::armGraphTimer()
{
    if (m_redrawWanted)
        return;
    m_redrawWanted = true;
    const qint64 sinceLast = m_lastRedraw.isValid() ? m_lastRedraw.elapsed() : kGraphTimerMs;
    if (sinceLast < kGraphTimerMs)
        m_timer.start(kGraphTimerMs - static_cast<int>(sinceLast));
    else // queued, and therefore before the next painting: read-outs and curve are painted together
        fireSoon();
}

// The painting that follows is asked for at once, so that it comes in the same round of the event loop.
void SweepGraph::fireSoon()
{
    QMetaObject::invokeMethod(this, &SweepGraph::fireGraphTimer, Qt::QueuedConnection);
    QCoreApplication::postEvent(window(), new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
}

void SweepGraph::fireGraphTimer()
{
    m_redrawWanted = false;
    m_lastRedraw.start();
    emit graphTimerFired();
}

void SweepGraph::moveLine(GraphItem item, double position)
{
    GraphLine &target = lineOf(item);
    update(itemRegion(item));
    (isVertical(item) ? target.x1 : target.y1) = position;
    (isVertical(item) ? target.x2 : target.y2) = position;
    placeLabel(item);
    update(itemRegion(item));
    if (item == GraphItem::M1 || item == GraphItem::M2)
        emit captionsAboveChanged();
}

void SweepGraph::setLineVisible(GraphItem item, bool visible)
{
    lineOf(item).visible = visible;
    update(itemRegion(item));
    if (item == GraphItem::M1 || item == GraphItem::M2)
        emit captionsAboveChanged();
}

QPolygonF SweepGraph::curve() const
{
    QPolygonF points;
    if (m_curve) {
        for (int row = 1; row <= kSweepPoints; ++row)
            points.append({static_cast<double>(row), (*m_curve)[static_cast<std::size_t>(row - 1)]});
    }
    return points;
}

void SweepGraph::measureLabels()
{
    for (GraphLabel &target : m_labels)
        GraphPainter::measureCaption(target, font());
}

GraphPainter SweepGraph::screenPainter(GraphInk ink) const
{
    const double pixel = 1.0 / devicePixelRatioF();
    return {m_coordinates, {QSizeF(size()), pixel, std::max(1.0, std::floor(devicePixelRatioF())) * pixel}, ink};
}

GraphPainter SweepGraph::devicePainter() const
{
    const double ratio = devicePixelRatioF();
    return {m_coordinates, {QSizeF((QSizeF(size()) * ratio).toSize()), 1.0, std::max(1.0, std::floor(ratio))}};
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
    const GraphPainter painter = screenPainter();
    if (item != GraphItem::M1 && item != GraphItem::M2)
        return painter.captionRect(item, line(item), label(item));
    const auto [first, second] = placesAbove(painter, label(GraphItem::M1), label(GraphItem::M2));
    return item == GraphItem::M1 ? first : second;
}

std::pair<QRectF, QRectF> SweepGraph::placesAbove(const GraphPainter &painter, const GraphLabel &m1,
                                                  const GraphLabel &m2) const
{
    QRectF first = painter.captionRect(GraphItem::M1, line(GraphItem::M1), m1);
    QRectF second = painter.captionRect(GraphItem::M2, line(GraphItem::M2), m2);
    painter.separate(first, line(GraphItem::M1), second, line(GraphItem::M2));
    return {first, second};
}

void SweepGraph::paintCaptionsAbove(QPainter &painter, GraphInk ink) const
{
    const GraphPainter screen = screenPainter(ink);
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
    const QPointF at = m_coordinates.toPixel({target.x1, target.y1}, size());
    const auto whole = [](double value) { return std::clamp(std::floor(value), -kFarAway, kFarAway); };
    return isVertical(item) ? QRectF(whole(at.x()) - 1.0, 0.0, 3.0, height())
                            : QRectF(0.0, whole(at.y()) - 1.0, width(), 3.0);
}

QRect SweepGraph::itemRegion(GraphItem item) const
{
    return lineRect(item).toRect().united(labelRect(item).toAlignedRect());
}

// Only what has changed is painted anew.
void SweepGraph::showCurve()
{
    if (m_plot.isNull()) // it comes with the next painting
        return update();
    const double ratio = devicePixelRatioF();
    QRegion changed;
    for (const QRect &area : m_plot.setCurve(m_curve ? devicePainter().placedCurve(*m_curve) : QPolygonF()))
        changed +=
            QRectF(area.x() / ratio, area.y() / ratio, area.width() / ratio, area.height() / ratio).toAlignedRect();
    update(changed);
}

void SweepGraph::paintPlot()
{
    const GraphPainter painter = devicePainter();
    QImage grid((QSizeF(size()) * devicePixelRatioF()).toSize(), QImage::Format_RGB32);
    QPainter gridPainter(&grid);
    painter.paintGrid(gridPainter);
    gridPainter.end();
    m_plot.setGrid(grid, std::max(1, static_cast<int>(devicePixelRatioF())), kCurveColour);
    if (m_curve)
        m_plot.setCurve(painter.placedCurve(*m_curve));
}

void SweepGraph::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    picSweep_Paint(painter, event->region());
    if (hasFocus())
        paintPointer(painter);
}

// The curve is kept: where the window is uncovered it is painted again without reading a cell, idle or sweeping.
void SweepGraph::picSweep_Paint(QPainter &painter, const QRegion &exposed)
{
    if (m_plot.isNull())
        paintPlot();
    // Copied without any scaling, and one rectangle at a time, which is quicker than through a clip of many.
    const double ratio = devicePixelRatioF();
    painter.save();
    for (const QRect &area : exposed) {
        painter.setClipRect(area);
        painter.scale(1.0 / ratio, 1.0 / ratio);
        painter.drawImage(0, 0, m_plot.image());
        painter.scale(ratio, ratio);
    }
    painter.restore();
    const GraphPainter screen = screenPainter();
    for (const GraphLine &target : m_lines)
        screen.paintLine(painter, target);
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const GraphItem item : {GraphItem::M3, GraphItem::M4})
        if (exposed.intersects(labelRect(item).toAlignedRect()))
            screen.paintCaption(painter, item, line(item), label(item));
}

void SweepGraph::paintPicture(QPainter &painter, const GraphPainter::Surface &surface, GraphInk ink) const
{
    const GraphPainter graph(m_coordinates, surface, ink);
    graph.paintGrid(painter);
    if (m_curve)
        graph.paintCurve(painter, graph.placedCurve(*m_curve));
    for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4})
        graph.paintLine(painter, line(item));
    const auto captionOf = [&](GraphItem item) {
        GraphLabel caption;
        caption.text = label(item).text;
        GraphPainter::measureCaption(caption, painter.font());
        graph.placeCaption(item, line(item), caption);
        return caption;
    };
    for (const GraphItem item : {GraphItem::M3, GraphItem::M4})
        graph.paintCaption(painter, item, line(item), captionOf(item));
    const GraphLabel m1 = captionOf(GraphItem::M1);
    const GraphLabel m2 = captionOf(GraphItem::M2);
    const auto [first, second] = placesAbove(graph, m1, m2);
    graph.paintCaption(painter, first, line(GraphItem::M1), m1, false);
    graph.paintCaption(painter, second, line(GraphItem::M2), m2, false);
}

void SweepGraph::paintPointer(QPainter &painter) const
{
    const double reach = 6.0; // logical pixels
    const QPointF user{m_pointer.x(), m_coordinates.top() + m_pointer.y() * m_coordinates.height()};
    const QPointF at = m_coordinates.toPixel(user, size(), 1.0 / devicePixelRatioF());
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
    placeLabels();
    emit captionsAboveChanged();
}

QPointF SweepGraph::userPosition(const QMouseEvent *event) const
{
    // The mouse points at the middle of its pixel.
    const double pixel = 1.0 / devicePixelRatioF();
    const double half = pixel / 2.0;
    const auto inside = [half](double at, int extent) {
        return std::clamp(at + half, half, std::max(extent - half, half));
    };
    const QPointF user = m_coordinates.toUser(
        {inside(event->position().x(), width()), inside(event->position().y(), height())}, size(), pixel);
    return {std::clamp(user.x(), 0.0, GraphCoordinates::kWidth), user.y()};
}

void SweepGraph::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF user = userPosition(event);
    if (event->buttons() == Qt::NoButton) {
        const auto near = markerNear(user.x(), user.y());
        setCursor(!near ? Qt::CrossCursor : isVertical(*near) ? Qt::SplitHCursor : Qt::SplitVCursor);
    }
    m_pointer = {user.x(), (user.y() - m_coordinates.top()) / m_coordinates.height()};
    emit mouseMoved(user.x(), user.y());
}

void SweepGraph::mousePressEvent(QMouseEvent *event)
{
    const QPointF user = userPosition(event);
    emit mousePressed(event->button(), event->modifiers(), user.x(), user.y());
}

void SweepGraph::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointF user = userPosition(event);
    emit mouseReleased(event->button(), event->modifiers(), user.x(), user.y());
}

void SweepGraph::movePointer(double columns, double lines)
{
    m_pointer.setX(std::clamp(std::round(m_pointer.x()) + columns, 1.0, GraphCoordinates::kWidth));
    m_pointer.setY(std::clamp(m_pointer.y() + lines / std::max(height(), 1), 0.0, 1.0));
    emit mouseMoved(m_pointer.x(), m_coordinates.top() + m_pointer.y() * m_coordinates.height());
    update();
}

void SweepGraph::putMarkerAtPointer(int number)
{
    const bool odd = number % 2 == 1;
    emit mouseReleased(odd ? Qt::LeftButton : Qt::RightButton, number > 2 ? Qt::ShiftModifier : Qt::NoModifier,
                       m_pointer.x(), m_coordinates.top() + m_pointer.y() * m_coordinates.height());
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

// Over the plot it would hide the curve.
void SweepGraph::showToolTipBelow()
{
    QToolTip::showText(mapToGlobal(rect().bottomLeft()), toolTip(), this);
}

double SweepGraph::pixelsBetween(QPointF from, QPointF to) const
{
    return QLineF(m_coordinates.toPixel(from, size()), m_coordinates.toPixel(to, size())).length();
}

std::optional<GraphItem> SweepGraph::markerNear(double x, double y) const
{
    const QPointF at = m_coordinates.toPixel({x, y}, size());
    std::optional<GraphItem> nearest;
    double best = kGrabDistance;
    for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4}) {
        const QPointF place = m_coordinates.toPixel({line(item).x1, line(item).y1}, size());
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
    // Another screen may have another number of device pixels; another font other captions.
    if (event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::FontChange) {
        m_plot.clear();
        measureLabels();
        placeLabels();
        update();
        emit captionsAboveChanged();
    }
    return QWidget::event(event);
}

} // namespace calvorn
