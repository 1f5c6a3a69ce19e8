// SPDX-License-Identifier: MIT
#include "display/frequency_labels.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QStringList>

#include <cmath>

namespace calvorn {

FrequencyLabels::FrequencyLabels(SweepGraph &graph, const SweepTable &table, QWidget &readouts, QWidget *parent)
    : QWidget(parent)
    , m_graph(graph)
    , m_readouts(readouts)
{
    setObjectName(QStringLiteral("frameFrequencies"));
    setAccessibleName(tr("Frequencies of the grid"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    // The graph and the read-outs may be laid out in any order, so monitor both.
    graph.installEventFilter(this);
    for (QLabel *label : readouts.findChildren<QLabel *>())
        label->installEventFilter(this);
    // The graph was connected first, so it already has the new axis.
    connect(&table, &SweepTable::rebuilt, this, &FrequencyLabels::followAxis);
    connect(&table, &SweepTable::changed, this, &FrequencyLabels::followAxis);
}

// Called for every sweep; usually the axis has not changed.
void FrequencyLabels::followAxis()
{
    if (m_axis == m_graph.model().axis)
        return;
    m_axis = m_graph.model().axis;
    placeTicks();
}

double FrequencyLabels::placeOf(double x) const
{
    return m_graph.coordinates().toPixel({x, 0.0}, m_graph.size(), 1.0 / devicePixelRatioF()).x();
}

void FrequencyLabels::placeTicks()
{
    TickStrip strip;
    strip.widthOf = [this](const QString &text) { return fontMetrics().horizontalAdvance(text); };
    strip.placeOf = [this](double x) { return placeOf(x); };
    strip.gap = fontMetrics().averageCharWidth();
    for (const QLabel *label : m_readouts.findChildren<QLabel *>())
        strip.taken.push_back({static_cast<double>(label->x()), static_cast<double>(label->x() + label->width())});
    std::vector<FrequencyTick> ticks = fittingTicks(m_axis, strip);
    QStringList texts;
    for (const FrequencyTick &tick : ticks)
        texts.append(tick.text);
    if (ticks != m_ticks)
        setAccessibleDescription(texts.join(QStringLiteral(", ")));
    m_ticks = std::move(ticks);
    update();
}

void FrequencyLabels::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    for (const FrequencyTick &tick : m_ticks) {
        const double width = fontMetrics().horizontalAdvance(tick.text);
        const QRectF place(std::round(placeOf(tick.x) - width / 2.0), 0.0, std::ceil(width) + 1.0, height());
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, tick.text);
    }
}

bool FrequencyLabels::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        placeTicks();
    return QWidget::eventFilter(watched, event);
}

bool FrequencyLabels::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange)
        placeTicks();
    return handled;
}

} // namespace calvorn
