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

// The model of the Measure panel. Follows the table, feeds the traces, completes the graph's plot, computes the results
// and judges the limits. Ignores sweeps while none of these features is in use.
//
// While the traces are normalised, every curve in the plot is relative to the reference: live sweep, average, holds and
// stored traces.
class Measurement : public QObject
{
    Q_OBJECT

public:
    // All three must outlive this object.
    Measurement(const Configuration &configuration, const SweepTable &table, SweepGraph &graph,
                QObject *parent = nullptr);

    // A caller that changes the traces must call tracesEdited() afterwards.
    TraceSet &traces() { return m_traces; }
    const TraceSet &traces() const { return m_traces; }
    void tracesEdited();

    // Sets whether the results are being displayed.
    void setWatched(bool watched);
    // Sets whether a client reads the traces, even if the panel does not show any of them.
    void setFollowed(bool followed);
    void setLegendShown(bool shown);
    bool isLegendShown() const { return m_hasLegend; }

    // Returns why the relative curve has gaps; empty if it has no gaps or there is no reference.
    QString gapReason() const;

    // --- results ---

    void choose(ResultKind kind, TraceSet::Source source, double fixtureOhms); // fixtureOhms: greater than 0
    ResultKind kind() const { return m_kind; }
    TraceSet::Source source() const { return m_source; }
    // Computed when first read, so unused results cost nothing.
    const Results &results() const;
    // The response used for the results; relative to the reference while the traces are normalised.
    const Response &response() const;
    // Sets whether M1 follows the peak of the response.
    void setTracksPeak(bool tracks);

    // --- limits ---

    const LimitLines &limits() const { return m_limits; }
    void setLimits(const LimitLines &limits);
    void setLimitsOn(bool on);
    bool areLimitsOn() const { return m_limitsOn; }
    // The verdict on the last sweep. If there is none, limitProblem() returns the reason.
    const LimitVerdict &verdict() const { return m_verdict; }
    QString limitProblem() const;
    // The unit of the plotted amplitudes; nullopt if limits cannot have this unit (a voltage ratio, for example).
    std::optional<LimitUnit> shownUnit() const;
    int passed() const { return m_passed; } // sweeps, since the counts were reset
    int failed() const { return m_failed; }
    void resetCounts();

    // Returns the last sweep as plotted: with the frequencies of its samples, amplitudes in the scale's units, and NaN
    // in gaps. Empty if there is no sweep.
    PlotTrace shownSweep() const;

signals:
    // The results and the verdict have changed. During sweeps, emitted at most once per redraw.
    void refreshed();
    // The curves are now relative to a reference, or are no longer relative.
    void relationChanged(bool relative);
    // The peak of the response is at this frequency. Emitted only while M1 follows the peak.
    void peakFound(double hertz);
    // The verdict has changed from failed to passed, or from passed to failed.
    void verdictTurned(bool passed);

private:
    bool isInUse() const;
    const Trace &referenceInUse() const; // empty: none
    bool hasOverlays() const;
    void followTable();
    void feed();
    // counts: whether to count the sweep as passed or failed; true if it is judged for the first time.
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
    std::uint64_t m_taken = 0; // the table's sweepCount() when its last sweep was read
    std::optional<DetectorCalibration> m_takenDetector;
    std::int16_t m_takenMode = 0; // measuring mode of the MiniVNA at that time
    bool m_isWatched = false;
    bool m_isFollowed = false;
    bool m_hasLegend = true;
    bool m_isStale = false; // the results belong to an earlier sweep
    bool m_wasRelative = false;
    ResultKind m_kind = ResultKind::Filter;
    TraceSet::Source m_source = TraceSet::Source::Live;
    double m_fixtureOhms = kDefaultFixtureOhms;
    bool m_tracksPeak = false;
    mutable std::optional<Response> m_response; // computed since the last refresh
    mutable std::optional<Results> m_results;
    LimitLines m_limits;
    bool m_limitsOn = false;
    LimitVerdict m_verdict;
    std::optional<bool> m_lastPassed;
    int m_passed = 0;
    int m_failed = 0;
};

} // namespace calvorn
