// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"
#include "analysis/shown_curve.h"
#include "analysis/trace_set.h"
#include "data/limit_lines.h"
#include "display/sweep_graph.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>

namespace calvorn {

// What the Measure panel works on. It follows the table, feeds the traces, completes the plot of the graph, computes
// the results and judges the limits. While nothing of it is in use it does not look at a sweep.
//
// Whatever the plot shows is relative to the reference while the traces are normalised: live sweep, average, holds and
// stored traces alike.
class Measurement : public QObject
{
    Q_OBJECT

public:
    // All three must outlive it.
    Measurement(const Configuration &configuration, const SweepTable &table, SweepGraph &graph,
                QObject *parent = nullptr);

    // Whoever changes them calls tracesEdited().
    TraceSet &traces() { return m_traces; }
    const TraceSet &traces() const { return m_traces; }
    void tracesEdited();

    // Whether somebody looks at the results.
    void setWatched(bool watched);
    // Whether somebody takes the traces, however little of them is shown.
    void setFollowed(bool followed);
    void setLegendShown(bool shown);
    bool isLegendShown() const { return m_hasLegend; }

    // Why the relative curve has gaps; empty where it has none, and without a reference.
    QString gapReason() const;

    // --- results ---

    void choose(ResultKind kind, TraceSet::Source source, double fixtureOhms); // ohms above 0
    ResultKind kind() const { return m_kind; }
    TraceSet::Source source() const { return m_source; }
    // Computed once somebody asks, so they cost nothing while nobody looks.
    const Results &results() const;
    // What they are computed from; relative to the reference while the traces are normalised.
    const Response &response() const;
    // M1 follows the peak of the response.
    void setTracksPeak(bool tracks);

    // --- limits ---

    const LimitLines &limits() const { return m_limits; }
    void setLimits(const LimitLines &limits);
    void setLimitsOn(bool on);
    bool areLimitsOn() const { return m_limitsOn; }
    // Of the last sweep; without a verdict where limitProblem() says why.
    const LimitVerdict &verdict() const { return m_verdict; }
    QString limitProblem() const;
    // The unit in which the plot shows its amplitudes; nothing where no limit has it, as for a ratio of volts.
    std::optional<LimitUnit> shownUnit() const;
    int passed() const { return m_passed; } // sweeps, since the counts were reset
    int failed() const { return m_failed; }
    void resetCounts();

    // The last sweep as the plot shows it: the frequencies of its samples, and its amplitudes in the units of the
    // scale. Not a number where there is a gap. Empty without a sweep.
    PlotTrace shownSweep() const;

signals:
    // Results and verdict are those of another sweep or another choice; not more often than the screen shows one.
    void refreshed();
    // The curves are relative to a reference, or not any more.
    void relationChanged(bool relative);
    // The response has its peak there, Hz; while M1 follows it.
    void peakFound(double hertz);
    // The sweeps pass where they failed, or the other way round.
    void verdictTurned(bool passed);

private:
    bool isInUse() const;
    const Trace &referenceInUse() const; // empty: none
    bool hasOverlays() const;
    void followTable();
    void feed();
    // Counts: this sweep has not been judged before.
    void judgeSweep(bool counts);
    void refresh();
    void complete(PlotModel &model);
    void showOverlays();
    PlotTrace plotted(const Trace &trace, const QString &name, const TraceStyle &style) const;
    std::vector<LimitLine> drawnLimits() const;
    QString nameOf(TraceSet::Source source) const;

    const Configuration &m_configuration;
    const SweepTable &m_table;
    SweepGraph &m_graph;
    TraceSet m_traces;
    std::uint64_t m_taken = 0; // sweeps of the table
    std::optional<DetectorCalibration> m_takenDetector;
    std::int16_t m_takenMode = 0; // of the MiniVNA
    bool m_isWatched = false;
    bool m_isFollowed = false;
    bool m_hasLegend = true;
    bool m_isStale = false; // the results are of an earlier sweep
    bool m_wasRelative = false;
    ResultKind m_kind = ResultKind::Filter;
    TraceSet::Source m_source = TraceSet::Source::Live;
    double m_fixtureOhms = kDefaultFixtureOhms;
    bool m_tracksPeak = false;
    mutable std::optional<Response> m_response; // since the last refresh
    mutable std::optional<Results> m_results;
    LimitLines m_limits;
    bool m_limitsOn = false;
    LimitVerdict m_verdict;
    std::optional<bool> m_lastPassed;
    int m_passed = 0;
    int m_failed = 0;
};

} // namespace calvorn
