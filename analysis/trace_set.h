// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"

#include <QObject>

#include <array>
#include <cstdint>

namespace calvorn {

// A trace that the user stores.
struct StoredTrace
{
    Trace trace; // empty if nothing is stored; the user chooses its name
    bool isShown = true;
};

// The traces in addition to the table: the last sweep, four stored traces, holds, average and reference. All are in
// volts. A gap in one sweep remains a gap in holds and average until they restart.
class TraceSet : public QObject
{
    Q_OBJECT

public:
    enum class Source { Live, Average, MaxHold, MinHold };

    static constexpr int kStored = 4;
    static constexpr int kFewestAveraged = 2;
    static constexpr int kMostAveraged = 999;

    explicit TraceSet(QObject *parent = nullptr);

    // --- sweeps ---

    // Takes a measured sweep: it becomes the live trace and enters holds and average. If its axis differs from
    // theirs, holds and average restart with it.
    void takeSweep(const Trace &sweep);
    // Takes an imported or drawn sweep, which becomes only the live trace.
    void showSweep(const Trace &sweep);
    // Removes the live trace, for example for a new plan.
    void forgetSweep();

    // Returns the trace of a source; empty if there is none, as for holds and average that are off.
    const Trace &shown(Source source) const;

    // --- holds and average ---

    // Switches holds or average; Live is always on. A source is empty after it is switched on.
    void switchOn(Source source, bool on);
    bool isOn(Source source) const;

    // Sets the number of sweeps to average, clamped to 2 to 999. The average is the arithmetic mean until it contains
    // that many sweeps; then each new sweep has the weight 1 / sweeps.
    void setAverageOver(int sweeps);
    int averageOver() const { return m_averageOver; }
    // Number of sweeps in the average since it started; may exceed averageOver().
    std::int64_t averaged() const { return m_averaged; }

    // Empties holds and average; they restart with the next measured sweep.
    void startAnew();

    // --- stored traces; slot: 0 to kStored - 1 ---

    const StoredTrace &stored(int slot) const;
    // Stores the trace of a source under the slot's name. Does nothing and returns false if that trace is empty.
    bool store(int slot, Source source = Source::Live);
    // Stores a trace from elsewhere. Its name becomes the slot's name unless it is empty.
    void load(int slot, const Trace &trace);
    // Can also name an empty slot.
    void rename(int slot, const QString &name);
    void show(int slot, bool isShown);
    // Removes trace and name and makes the slot visible again.
    void clear(int slot);

    // --- reference ---

    // On: the live trace becomes the reference; does nothing and returns false if there is none. Off: the reference
    // is kept.
    bool normalise(bool on);
    // Sets a reference from elsewhere and normalises. An empty trace removes the reference.
    void setReference(const Trace &reference);
    // Returns whether live trace and average are to be shown relative to the reference.
    bool isNormalised() const { return m_isNormalised; }
    const Trace &reference() const { return m_reference; } // empty: none

signals:
    // Emitted once by each call that changes something.
    void changed();

private:
    static constexpr int kSources = 4;
    static std::size_t indexOf(Source source) { return static_cast<std::size_t>(source); }
    StoredTrace &slotAt(int slot);
    void empty(Source source);
    void addToAverage(const Trace &sweep);
    void hold(Source source, const Trace &sweep);

    std::array<Trace, kSources> m_shown;
    std::array<bool, kSources> m_isOn{true, false, false, false};
    std::array<StoredTrace, kStored> m_stored;
    Trace m_reference;
    bool m_isNormalised = false;
    int m_averageOver = 10;
    std::int64_t m_averaged = 0;
};

} // namespace calvorn
