// SPDX-License-Identifier: MIT
#include "display/sweep_graph.h"

#include "core/number_text.h"
#include "core/runtime_error.h"

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

constexpr QRgb kFrequencyMarkerColour = 0xFF4FC3F7; // light blue: M1, M2
constexpr QRgb kAmplitudeMarkerColour = 0xFFFF9DE0; // pink: M3, M4
constexpr QRgb kCursorColour = 0xFFFFFFFF;

constexpr double kLabelOffset = 2.0;  // user units between a frequency marker and its caption
constexpr double kLabelMargin = 3.0;  // logical pixels
constexpr double kLabelPadding = 2.0; // logical pixels
constexpr double kGrabDistance = 4.0; // logical pixels from a line within which the mouse takes hold of it

// Device pixels. Far outside any screen, and inside what the rasteriser's fixed-point coordinates hold.
constexpr double kFarAway = 16000.0;

bool isVertical(GraphItem item)
{
    return item == GraphItem::M1 || item == GraphItem::M2 || item == GraphItem::CursorV;
}

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
    m_background = QPixmap();
    placeCurve();
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
        placeLabel(item);
    }
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
    placeCurve();
    update();
}

void SweepGraph::clearCurve()
{
    m_curve.reset();
    m_polyline.clear();
    m_columns.clear();
    update();
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
        QMetaObject::invokeMethod(this, &SweepGraph::fireGraphTimer, Qt::QueuedConnection);
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
}

void SweepGraph::setLineVisible(GraphItem item, bool visible)
{
    lineOf(item).visible = visible;
    update(itemRegion(item));
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
    const QFontMetricsF metrics(font());
    for (GraphLabel &target : m_labels) {
        target.layout.setText(target.text);
        target.layout.setTextFormat(Qt::PlainText);
        target.layout.prepare(QTransform(), font());
        target.size = {std::ceil(metrics.horizontalAdvance(target.text)) + 2.0 * kLabelPadding,
                       std::ceil(metrics.height())};
    }
}

// The captions of a pair stand apart from each other, so that both are read where the markers coincide.
void SweepGraph::placeLabel(GraphItem item)
{
    GraphLabel &target = m_labels[static_cast<std::size_t>(item)];
    if (target.text.isEmpty())
        return;
    const QSizeF extent = target.size;
    const bool second = item == GraphItem::M2 || item == GraphItem::M4;
    const double rowHeight = extent.height() / std::max(height(), 1) * m_coordinates.height();
    const double columnWidth = extent.width() / std::max(width(), 1) * GraphCoordinates::kWidth;
    if (isVertical(item)) {
        target.left = line(item).x2 + kLabelOffset;
        target.top = m_coordinates.top() + (second ? 1.25 : 0.1) * rowHeight;
    } else {
        target.left = (second ? 1.3 : 0.2) * columnWidth;
        target.top = line(item).y1 - rowHeight / 2.0;
    }
}

QRectF SweepGraph::labelRect(GraphItem item) const
{
    const GraphLabel &caption = label(item);
    const double pixel = 1.0 / devicePixelRatioF();
    const QPointF from = m_coordinates.toPixel({line(item).x1, line(item).y1}, size(), pixel);
    const double along = isVertical(item) ? from.x() : from.y();
    const bool inside = along >= 0.0 && along < (isVertical(item) ? width() : height());
    if (caption.text.isEmpty() || !line(item).visible || !inside)
        return {};
    QRectF place(m_coordinates.toPixel({caption.left, caption.top}, size(), pixel), caption.size);
    if (place.right() > width())
        place.moveRight(from.x() - kLabelMargin);
    place.moveTop(std::clamp(place.top(), 0.0, std::max(height() - place.height(), 0.0)));
    return place;
}

QRect SweepGraph::itemRegion(GraphItem item) const
{
    const GraphLine &target = line(item);
    const QPointF at = m_coordinates.toPixel({target.x1, target.y1}, size());
    const auto whole = [](double value) {
        return static_cast<int>(std::clamp(std::floor(value), -kFarAway, kFarAway));
    };
    const QRect stripe =
        isVertical(item) ? QRect(whole(at.x()) - 1, 0, 3, height()) : QRect(0, whole(at.y()) - 1, width(), 3);
    return stripe.united(labelRect(item).toAlignedRect());
}

void SweepGraph::placeCurve()
{
    if (!m_curve)
        return;
    const double ratio = devicePixelRatioF();
    const QSizeF surface = QSizeF(size()) * ratio;
    m_polyline.resize(kSweepPoints);
    for (int row = 1; row <= kSweepPoints; ++row) {
        const double y = (*m_curve)[static_cast<std::size_t>(row - 1)];
        QPointF point = m_coordinates.toPixel({static_cast<double>(row), y}, surface);
        point.setY(std::clamp(point.y(), -kFarAway, kFarAway));
        m_polyline[row - 1] = point;
    }
    m_columns.clear();
    if (ratio >= 2.0)
        placeColumns(static_cast<int>(ratio));
}

// A polyline wider than one device pixel costs ten to thirty times a thin one. Where a logical pixel is two device
// pixels or more, the curve is therefore filled: one upright rectangle for each column of device pixels that a
// segment crosses, as high as the segment is there and never thinner than a logical pixel.
void SweepGraph::placeColumns(int thickness)
{
    const auto whole = [](double value) { return static_cast<int>(std::floor(value)); };
    for (qsizetype i = 1; i < m_polyline.size(); ++i) {
        const QPointF from = m_polyline[i - 1];
        const QPointF to = m_polyline[i];
        const double slope = (to.y() - from.y()) / (to.x() - from.x());
        for (int column = whole(from.x()); column <= whole(to.x()); ++column) {
            const double y1 = from.y() + (std::max(from.x(), static_cast<double>(column)) - from.x()) * slope;
            const double y2 = from.y() + (std::min(to.x(), column + 1.0) - from.x()) * slope;
            const int top = whole(std::min(y1, y2));
            const QRect upright(column, top, thickness, whole(std::max(y1, y2)) - top + thickness);
            // Neighbouring segments share the column in which they meet.
            if (!m_columns.isEmpty() && m_columns.last().x() == column)
                m_columns.last() |= upright;
            else
                m_columns.append(upright);
        }
    }
}

// In device pixels, each line on whole ones: sharp at any screen scale.
void SweepGraph::paintBackground()
{
    const double ratio = devicePixelRatioF();
    const QSize surface = (QSizeF(size()) * ratio).toSize();
    m_background = QPixmap(surface);
    m_background.fill(QColor::fromRgb(kGraphBackground));
    const int thickness = std::max(1, static_cast<int>(ratio));
    const auto whole = [](double value) {
        return static_cast<int>(std::clamp(std::floor(value), -kFarAway, kFarAway));
    };
    QPainter painter(&m_background);
    for (const GridLine &grid : m_coordinates.gridLines()) {
        const QPointF from = m_coordinates.toPixel({grid.x1, grid.y1}, surface);
        const QPointF to = m_coordinates.toPixel({grid.x2, grid.y2}, surface);
        const int x = std::min(whole(from.x()), surface.width() - thickness);
        const int y = whole(from.y());
        // A line below the edge stays outside; the one on the edge keeps its thickness.
        const int inner = y < surface.height() ? std::min(y, surface.height() - thickness) : y;
        const QRect stripe = grid.x1 == grid.x2 ? QRect(x, y, thickness, whole(to.y()) - y + 1)
                                                : QRect(x, inner, whole(to.x()) - x + 1, thickness);
        painter.fillRect(stripe, QColor::fromRgb(grid.colour));
    }
}

void SweepGraph::paintEvent(QPaintEvent *)
{
    if (m_background.isNull())
        paintBackground();
    QPainter painter(this);
    // In device pixels, where the grid is copied and the curve drawn without any scaling.
    painter.save();
    painter.scale(1.0 / devicePixelRatioF(), 1.0 / devicePixelRatioF());
    painter.drawPixmap(0, 0, m_background);
    paintCurve(painter);
    painter.restore();
    paintLines(painter);
    paintLabels(painter);
    if (hasFocus())
        paintPointer(painter);
}

void SweepGraph::paintCurve(QPainter &painter) const
{
    if (devicePixelRatioF() < 2.0) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor::fromRgb(kCurveColour), 0));
        painter.drawPolyline(m_polyline);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(kCurveColour));
    painter.drawRects(m_columns);
}

void SweepGraph::paintLines(QPainter &painter) const
{
    const double pixel = 1.0 / devicePixelRatioF();
    const double thickness = std::max(1.0, std::floor(devicePixelRatioF())) * pixel;
    for (const GraphLine &target : m_lines) {
        if (!target.visible)
            continue;
        const QPointF from = m_coordinates.toPixel({target.x1, target.y1}, size(), pixel);
        const QPointF to = m_coordinates.toPixel({target.x2, target.y2}, size(), pixel);
        const auto snapped = [pixel](double value) { return std::floor(value / pixel) * pixel; };
        const QRectF stripe = target.x1 == target.x2
                                  ? QRectF(std::min(snapped(from.x()), width() - thickness), 0.0, thickness, height())
                                  : QRectF(0.0, snapped(from.y()), to.x() + pixel, thickness);
        painter.fillRect(stripe, QColor::fromRgb(target.colour));
    }
}

void SweepGraph::paintLabels(QPainter &painter) const
{
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (int i = 0; i < kGraphItems; ++i) {
        const auto item = static_cast<GraphItem>(i);
        const QRectF place = labelRect(item);
        if (place.isEmpty())
            continue;
        painter.fillRect(place, QColor(0, 0, 0, 200));
        painter.setPen(QColor::fromRgb(line(item).colour));
        painter.drawStaticText(place.topLeft() + QPointF(kLabelPadding, 0.0), label(item).layout);
    }
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
    m_background = QPixmap();
    placeCurve();
    for (int i = 0; i < kGraphItems; ++i)
        placeLabel(static_cast<GraphItem>(i));
}

QPointF SweepGraph::userPosition(const QMouseEvent *event) const
{
    // The mouse points at the middle of its pixel.
    const double pixel = 1.0 / devicePixelRatioF();
    const QPointF at = event->position() + QPointF(pixel, pixel) / 2.0;
    const QPointF user = m_coordinates.toUser(
        {std::clamp(at.x(), 0.0, static_cast<double>(width())), std::clamp(at.y(), 0.0, static_cast<double>(height()))},
        size(), pixel);
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
        m_background = QPixmap();
        measureLabels();
        placeCurve();
        update();
    }
    return QWidget::event(event);
}

} // namespace calvorn
