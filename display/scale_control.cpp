// SPDX-License-Identifier: MIT
#include "display/scale_control.h"

#include "core/common_functions.h"
#include "data/amplitude_writer.h"
#include "widgets/entry_box.h"

#include <QActionGroup>

namespace calvorn {

ScaleControl::ScaleControl(Configuration &configuration, SweepTable &table, GraphPanel &panel, MarkerPanel &markers,
                           ErrorBoundary &boundary, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_table(table)
    , m_panel(panel)
    , m_markers(markers)
{
    struct Entry
    {
        const char *name;
        QString caption;
        QString toolTip;
        void (ScaleControl::*handler)();
    };
    const std::array entries{
        Entry{"mnuScalaLineare", tr("&Linear"), tr("Volts"), &ScaleControl::mnuScalaLineare_Click},
        Entry{"mnuScalaLogaritmica1", tr("Logarithmic (&1V)"), tr("dB referred to 1 V, from 0 dB"),
              &ScaleControl::mnuScalaLogaritmica1_Click},
        Entry{"mnuScalaLogaritmica1dB", tr("L&ogarithmic (1V + 10dB)"), tr("dB referred to 1 V, from +10 dB"),
              &ScaleControl::mnuScalaLogaritmica1dB_Click},
        Entry{"mnuScalaLogaritmica10", tr("Lo&garithmic (10V)"), tr("dB referred to 10 V, from 0 dB"),
              &ScaleControl::mnuScalaLogaritmica10_Click},
        Entry{"mnuScalaLogaritmica10dB", tr("Log&arithmic (10V +10dB)"), tr("dB referred to 10 V, from +10 dB"),
              &ScaleControl::mnuScalaLogaritmica10dB_Click},
    };
    static_assert(entries.size() == kScales);
    auto *group = new QActionGroup(this);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Entry &entry = entries[i];
        auto *action = new QAction(entry.caption, group);
        action->setObjectName(QString::fromLatin1(entry.name));
        action->setToolTip(entry.toolTip);
        action->setCheckable(true);
        boundary.connect(action, &QAction::triggered, this, entry.name,
                         [this, handler = entry.handler] { (this->*handler)(); });
        m_actions[i] = action;
    }
    boundary.connect(&panel.axis(), &AmplitudeAxis::fullScaleChanged, this, "fullScaleChanged",
                     [this] { redrawRange(); });
}

void ScaleControl::aggiornaScala(std::int16_t mode)
{
    m_configuration.scaleType = mode;
    const QString unit = isLinearScale(m_configuration.scaleType) ? tr("Volt") : tr("dB");
    m_table.setText(0, SweepTable::AmplitudeColumn, unit);
    AmplitudeWriter(m_configuration, m_table).convertAllRows();
    m_table.amplitudesRewritten(detectorOf(m_configuration));
    m_panel.axis().readFullScale();
    m_panel.axis().setUnit(unit);
    m_markers.setUnit(unit);
    checkAction();

    redrawRange();
    m_markers.clearCursorReadout();
    m_markers.aggiornaLblMarkerX();
    m_panel.graph().drawLine();
}

// Leaves all actions unchecked if the configured number is not a scale.
void ScaleControl::checkAction()
{
    for (std::size_t i = 0; i < m_actions.size(); ++i)
        m_actions[i]->setChecked(static_cast<int>(i) == m_configuration.scaleType);
}

// Redraws the grid and the amplitude markers, but does not read the curve again.
void ScaleControl::redrawRange()
{
    m_panel.drawScreen();
    m_markers.aggiornaPosMarkerY(GraphItem::M3);
    m_markers.aggiornaPosMarkerY(GraphItem::M4);
}

void ScaleControl::clicked(std::int16_t scale)
{
    // With a global menu bar, no click in the window commits a pending entry first.
    EntryBox::commitPending();
    choose(scale);
}

void ScaleControl::choose(std::int16_t scale)
{
    isLinearScale(scale) ? changeToLinear() : changeToLogarithmic(scale);
}

void ScaleControl::changeToLinear()
{
    // On the linear scale, the conversion returns its argument unchanged.
    const double m3 = dbToVoltsBounded(m_configuration, m_markers.amplitude(GraphItem::M3));
    const double m4 = dbToVoltsBounded(m_configuration, m_markers.amplitude(GraphItem::M4));
    m_markers.showAmplitudes(true, m3, m4);
    aggiornaScala(kScaleLinear);
}

void ScaleControl::changeToLogarithmic(std::int16_t mode)
{
    const std::int16_t old = m_configuration.scaleType;
    double m3 = m_markers.amplitude(GraphItem::M3);
    double m4 = m_markers.amplitude(GraphItem::M4);
    const bool otherReference = isScale(old) && voltsOfZeroDb(old) != voltsOfZeroDb(mode);
    if (isLinearScale(old) || otherReference) {
        const double volts3 = dbToVoltsBounded(m_configuration, m3);
        const double volts4 = dbToVoltsBounded(m_configuration, m4);
        // Only the change from linear to 10 V + 10 dB uses the 1 V reference to convert volts.
        const bool takesOneVolt = isLinearScale(old) && mode == kScaleDb10VHeadroom;
        m_configuration.scaleType = takesOneVolt ? kScaleDb1V : mode;
        m3 = voltsToDb(m_configuration, volts3);
        m4 = voltsToDb(m_configuration, volts4);
    }
    m_markers.showAmplitudes(false, m3, m4);
    aggiornaScala(mode);
}

} // namespace calvorn
