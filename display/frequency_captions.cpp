// SPDX-License-Identifier: MIT
#include "display/frequency_captions.h"

#include <QPainter>

namespace calvorn {

namespace {

constexpr int kDark = 128; // lightness, of 255

} // namespace

FrequencyCaptions::FrequencyCaptions(const SweepGraph &graph, QWidget *parent)
    : QWidget(parent)
    , m_graph(graph)
{
    setObjectName(QStringLiteral("frameCaptions"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(&graph, &SweepGraph::captionsAboveChanged, this, [this] { update(); });
}

// On a light desktop, uses the colours of printed pictures.
void FrequencyCaptions::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.translate(0, height());
    const bool dark = palette().color(QPalette::Window).lightness() < kDark;
    m_graph.paintCaptionsAbove(painter, dark ? GraphInk::Screen : GraphInk::Paper);
}

} // namespace calvorn
