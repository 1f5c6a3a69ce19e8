// SPDX-License-Identifier: MIT
#include "measure/measurement.h"

#include "display/plot/limit_curves.h"
#include "display/plot/trace_styles.h"

#include <algorithm>
#include <array>
#include <utility>

namespace calvorn {

namespace {

struct MovingTrace
{
    TraceSet::Source source;
    TraceStyle style;
};

constexpr std::array<MovingTrace, 3> kMoving{{{TraceSet::Source::MaxHold, kMaxHoldStyle},
                                              {TraceSet::Source::MinHold, kMinHoldStyle},
                                              {TraceSet::Source::Average, kAverageStyle}}};

} // namespace

Measurement::Measurement(const Configuration &configuration, const SweepTable &table, SweepGraph &graph,
                         QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_table(table)
    , m_graph(graph)
{
    connect(&table, &SweepTable::changed, this, &Measurement::followTable);
    connect(&graph.redraws(), &RedrawTimer::fired, this, [this] {
        if (m_isStale)
            refresh();
    });
    // A different scale shows different amplitudes.
    connect(&graph, &SweepGraph::scaleDrawn, this, [this] {
        if (!isInUse())
            return;
        judgeSweep(false);
        showOverlays();
        refresh();
    });
    graph.setCompletion([this](PlotModel &model) { complete(model); });
}

bool Measurement::hasOverlays() const
{
    for (int slot = 0; slot < TraceSet::kStored; ++slot)
        if (m_traces.stored(slot).isShown && !m_traces.stored(slot).trace.isEmpty())
            return true;
    return std::ranges::any_of(kMoving, [this](const MovingTrace &each) { return m_traces.isOn(each.source); });
}

bool Measurement::isInUse() const
{
    return m_isWatched || m_isFollowed || m_tracksPeak || m_limitsOn || m_traces.isNormalised() || hasOverlays();
}

void Measurement::setWatched(bool watched)
{
    m_isWatched = watched;
    if (!isInUse())
        return;
    feed();
    refresh();
}

void Measurement::setFollowed(bool followed)
{
    m_isFollowed = followed;
    if (isInUse())
        feed();
}

void Measurement::setLegendShown(bool shown)
{
    m_hasLegend = shown;
    m_graph.complete();
}

void Measurement::followTable()
{
    if (!isInUse())
        return;
    feed();
    m_isStale = true;
    // The redraw timer paces the drawing of measured sweeps and their results.
    if (m_table.origin() != SweepOrigin::Measured)
        refresh();
    else
        m_graph.redraws().arm();
}

void Measurement::feed()
{
    if (!m_table.hasSweep()) {
        m_traces.forgetSweep();
        m_verdict = {};
        return;
    }
    const Sweep &sweep = m_table.sweep();
    const bool isAnother = m_table.sweepCount() != m_taken;
    if (!isAnother && sweep.detector == m_takenDetector)
        return;
    // A different measuring mode measures a different quantity.
    if (std::exchange(m_takenMode, m_configuration.measuringMode) != m_configuration.measuringMode)
        m_traces.restart();
    m_taken = m_table.sweepCount();
    m_takenDetector = sweep.detector;
    const Trace trace = traceOf(sweep, m_configuration.scaleType);
    if (isAnother && m_table.origin() == SweepOrigin::Measured)
        m_traces.takeSweep(trace);
    else
        m_traces.showSweep(trace);
    if (isAnother)
        judgeSweep(true);
}

void Measurement::tracesEdited()
{
    feed();
    judgeSweep(false);
    showOverlays();
    m_graph.complete();
    refresh();
    if (std::exchange(m_wasRelative, m_traces.isNormalised()) != m_traces.isNormalised())
        emit relationChanged(m_traces.isNormalised());
}

void Measurement::choose(ResultKind kind, TraceSet::Source source, double fixtureOhms)
{
    m_kind = kind;
    m_source = source;
    m_fixtureOhms = fixtureOhms;
    refresh();
}

void Measurement::setTracksPeak(bool tracks)
{
    m_tracksPeak = tracks;
    if (!isInUse())
        return;
    feed();
    refresh();
}

void Measurement::refresh()
{
    m_isStale = false;
    m_response.reset();
    m_results.reset();
    if (m_tracksPeak)
        if (const auto peak = highestPlateau(response().frequencies, response().decibels))
            emit peakFound(middleOf(response().frequencies, *peak));
    emit refreshed();
}

const Response &Measurement::response() const
{
    if (!m_response) {
        const Trace &trace = m_traces.shown(m_source);
        m_response = trace.isEmpty() ? Response() : shownResponse(trace, referenceInUse(), m_configuration.scaleType);
    }
    return *m_response;
}

const Results &Measurement::results() const
{
    if (!m_results)
        m_results = resultsOf(m_kind, response(), m_fixtureOhms);
    return *m_results;
}

QString Measurement::gapReason() const
{
    const Trace &live = m_traces.shown(TraceSet::Source::Live);
    if (!m_traces.isNormalised() || live.isEmpty())
        return {};
    const RelativeTrace relative = relativeTo(live, m_traces.reference());
    if (relative.isOutsideReference && relative.isReferenceBelowFloor)
        return tr("Gaps: the reference has no data there, or is below the detector's floor.");
    if (relative.isOutsideReference)
        return tr("Gaps: the reference has no data there.");
    return relative.isReferenceBelowFloor ? tr("Gaps: the reference is below the detector's floor.") : QString();
}

// --- limits ---

void Measurement::setLimits(const LimitLines &limits)
{
    m_limits = limits;
    resetCounts();
    judgeSweep(false);
    showOverlays();
    emit refreshed();
}

void Measurement::setLimitsOn(bool on)
{
    m_limitsOn = on;
    if (on)
        feed();
    resetCounts();
    judgeSweep(false);
    showOverlays();
    emit refreshed();
}

void Measurement::resetCounts()
{
    m_passed = 0;
    m_failed = 0;
}

std::optional<LimitUnit> Measurement::shownUnit() const
{
    return calvorn::shownUnit(m_configuration.scaleType, m_traces.isNormalised());
}

QString Measurement::limitProblem() const
{
    if (m_limits.isEmpty())
        return tr("There are no limits.");
    if (shownUnit() != m_limits.unit) {
        switch (m_limits.unit) {
        case LimitUnit::Volt:
            return tr("These limits are in volts: choose the linear scale, without a reference.");
        case LimitUnit::Decibel:
            return tr("These limits are in dB: choose a dB scale, without a reference.");
        case LimitUnit::RelativeDecibel:
            return tr("These limits are in dB relative to a reference: choose a dB scale, and press \"Normalise\".");
        }
    }
    if (m_traces.shown(TraceSet::Source::Live).isEmpty())
        return tr("There is no sweep yet.");
    return m_verdict.hasVerdict() ? QString() : tr("The limits do not cover any sample.");
}

void Measurement::judgeSweep(bool counts)
{
    m_verdict = {};
    if (!m_limitsOn || shownUnit() != m_limits.unit || m_traces.shown(TraceSet::Source::Live).isEmpty())
        return;
    m_verdict = judgeTrace(m_limits, m_traces.shown(TraceSet::Source::Live), shownSweep().amplitudes);
    if (!m_verdict.hasVerdict())
        return;
    const bool hasPassed = m_verdict.hasPassed();
    const std::optional<bool> before = std::exchange(m_lastPassed, hasPassed);
    if (!counts)
        return;
    ++(hasPassed ? m_passed : m_failed);
    if (before && *before != hasPassed)
        emit verdictTurned(hasPassed);
}

// --- the plot ---

const Trace &Measurement::referenceInUse() const
{
    static const Trace none;
    return m_traces.isNormalised() ? m_traces.reference() : none;
}

PlotTrace Measurement::plotted(const Trace &trace, const QString &name, const TraceStyle &style) const
{
    return {
        name, style, {trace.start, trace.step}, shownAmplitudes(trace, referenceInUse(), m_configuration.scaleType)};
}

PlotTrace Measurement::shownSweep() const
{
    const Trace &live = m_traces.shown(TraceSet::Source::Live);
    return live.isEmpty() ? PlotTrace() : plotted(live, QString(), {});
}

QString Measurement::nameOf(TraceSet::Source source) const
{
    switch (source) {
    case TraceSet::Source::Live:
        return tr("Live");
    case TraceSet::Source::Average:
        return tr("Average of %1").arg(std::min<std::int64_t>(m_traces.averaged(), m_traces.averageOver()));
    case TraceSet::Source::MaxHold:
        return tr("Max hold");
    case TraceSet::Source::MinHold:
        return tr("Min hold");
    }
    return {};
}

void Measurement::complete(PlotModel &model)
{
    model.moving.clear();
    model.relation.clear();
    model.hasLegend = m_hasLegend;
    if (!isInUse())
        return;
    feed();
    if (m_traces.isNormalised())
        model.relation = tr("relative to the reference");
    const Trace &live = m_traces.shown(TraceSet::Source::Live);
    if (model.live) {
        model.live->name = m_traces.isNormalised() ? tr("Live, relative") : nameOf(TraceSet::Source::Live);
        if (m_traces.isNormalised() && !live.isEmpty())
            model.live->amplitudes = shownSweep().amplitudes;
    }
    for (const MovingTrace &each : kMoving)
        if (const Trace &trace = m_traces.shown(each.source); !trace.isEmpty())
            model.moving.push_back(plotted(trace, nameOf(each.source), each.style));
}

void Measurement::showOverlays()
{
    std::vector<PlotTrace> traces;
    for (int slot = 0; slot < TraceSet::kStored; ++slot) {
        const StoredTrace &stored = m_traces.stored(slot);
        if (stored.isShown && !stored.trace.isEmpty())
            traces.push_back(plotted(stored.trace, stored.trace.name, kStoredStyles[static_cast<std::size_t>(slot)]));
    }
    m_graph.setOverlays(std::move(traces), drawnLimits());
}

std::vector<LimitLine> Measurement::drawnLimits() const
{
    if (!m_limitsOn || shownUnit() != m_limits.unit)
        return {};
    return limitCurves(m_limits, tr("Upper limit"), tr("Lower limit"));
}

} // namespace calvorn
