// SPDX-License-Identifier: MIT
#pragma once

#include "core/scale_type.h"
#include "display/graph_panel.h"
#include "display/marker_panel.h"

#include <QAction>
#include <QList>

#include <array>

namespace calvorn {

// The five amplitude scales: the actions of the "Scale" menu, and the change from one scale to another.
class ScaleControl : public QObject
{
    Q_OBJECT

public:
    ScaleControl(Configuration &configuration, SweepTable &table, GraphPanel &panel, MarkerPanel &markers,
                 ErrorBoundary &boundary, QObject *parent = nullptr);

    // For the menu, in the order of scaleType.
    QList<QAction *> actions() const { return {m_actions.begin(), m_actions.end()}; }

    // Switches the table, axis, grid, markers and curve to a scale. The boxes of M3 and M4 must already be in its
    // units. Called at start-up with the saved scale, and after the table has been rewritten. An invalid scale from the
    // settings file is treated as logarithmic, relative to 1 V.
    void aggiornaScala(std::int16_t mode);

    // Does the same as the menu, but does not commit a pending entry.
    void choose(std::int16_t scale);

private:
    void mnuScalaLineare_Click() { clicked(kScaleLinear); }
    void mnuScalaLogaritmica1_Click() { clicked(kScaleDb1V); }
    void mnuScalaLogaritmica1dB_Click() { clicked(kScaleDb1VHeadroom); }
    void mnuScalaLogaritmica10_Click() { clicked(kScaleDb10V); }
    void mnuScalaLogaritmica10dB_Click() { clicked(kScaleDb10VHeadroom); }
    void clicked(std::int16_t scale);
    void changeToLinear();
    void changeToLogarithmic(std::int16_t mode);
    void checkAction();
    void redrawRange();

    Configuration &m_configuration;
    SweepTable &m_table;
    GraphPanel &m_panel;
    MarkerPanel &m_markers;
    std::array<QAction *, kScales> m_actions{};
};

} // namespace calvorn
