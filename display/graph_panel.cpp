// SPDX-License-Identifier: MIT
#include "display/graph_panel.h"

#include "display/frequency_captions.h"
#include "display/frequency_labels.h"

#include <QEvent>

#include <algorithm>

namespace calvorn {

GraphPanel::GraphPanel(Configuration &configuration, const SweepTable &table, Markers &markers, Desktop &desktop,
                       ErrorBoundary &boundary, QWidget *parent)
    : QWidget(parent)
    , m_axis(new AmplitudeAxis(configuration, desktop, boundary, this))
    , m_graph(new SweepGraph(configuration, table, markers, this))
    , m_table(table)
    , m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setSpacing(0);
    m_grid->addWidget(m_axis, 0, 0, 3, 1);
    m_grid->addWidget(m_axis->unitLabel(), 0, 1, Qt::AlignLeft | Qt::AlignTop);
    m_grid->addWidget(m_graph, 1, 1);
    auto *captions = new FrequencyCaptions(*m_graph, this);
    m_grid->addWidget(captions, 0, 1, Qt::AlignBottom);
    captions->setMinimumHeight(captions->sizeHint().height());
    m_axis->unitLabel()->setContentsMargins(4, 0, 0, 0);
    m_axis->unitLabel()->setFixedHeight(m_axis->unitLabel()->sizeHint().height());
    m_grid->setRowMinimumHeight(
        0, std::max(m_axis->spaceAbove(), m_axis->unitLabel()->height() + captions->minimumHeight()));
    m_grid->setRowMinimumHeight(2, m_axis->spaceBelow());
    m_grid->setRowStretch(1, 1);
    m_grid->setColumnStretch(1, 1);
    m_graph->installEventFilter(this);
}

void GraphPanel::drawScreen()
{
    m_graph->drawScreen();
    m_axis->drawScreen();
}

void GraphPanel::widenTop(int by)
{
    auto *space = new QSpacerItem(0, m_grid->rowMinimumHeight(0) + by, QSizePolicy::Minimum, QSizePolicy::Preferred);
    m_grid->addItem(space, 0, 1);
}

void GraphPanel::setFooter(QWidget *footer)
{
    m_grid->addWidget(footer, 2, 1);
    m_grid->addWidget(new FrequencyLabels(*m_graph, m_table, *footer, this), 2, 1);
}

bool GraphPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_graph && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        m_axis->setSurface(m_graph->y() - m_axis->y(), m_graph->height());
    return QWidget::eventFilter(watched, event);
}

} // namespace calvorn
