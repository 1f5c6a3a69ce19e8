// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"

#include <QObject>

#include <array>
#include <cstdint>

namespace calvorn {

// A trace stored by the user.
struct StoredTrace
{
    Trace trace; // empty if nothing is stored; the user chooses its name
    bool isShown = true;
};

// The traces kept in addition to the table: the last sweep, four stored traces, two holds, the average and the
// reference. All are in volts. A gap in a sweep remains a gap in the holds and the average until they restart.
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

    // Makes a measured sweep the live trace and adds it to the holds and the average, which restart if its axis differs
    // from theirs.
    void takeSweep(const Trace &sweep);
    // Makes an imported or drawn sweep the live trace, without adding it to the holds and the average.
    void showSweep(const Trace &sweep);
    // Removes the live trace, for example when the plan changes.
    void forgetSweep();

    // Returns a source's trace, which is empty if the source is switched off or has not received a sweep.
    const Trace &shown(Source source) const;

    // --- holds and average ---

    // Switches a hold or the average on or off; Live is always on. A source that is switched on starts empty.
    void switchOn(Source source, bool on);
    bool isOn(Source source) const;

    // Sets the number of sweeps to average, clamped to the range 2 to 999. The average is the arithmetic mean until it
    // contains that many sweeps; after that, each new sweep has a weight of 1 / sweeps.
    void setAverageOver(int sweeps);
    int averageOver() const { return m_averageOver; }
    // Number of sweeps averaged since the average started; may exceed averageOver().
    std::int64_t averaged() const { return m_averaged; }

    // Clears the holds and the average, which restart with the next measured sweep.
    void restart();

    // --- stored traces; slot: 0 to kStored - 1 ---

    const StoredTrace &stored(int slot) const;
    // Stores a source's trace under the slot's name. Does nothing and returns false if that trace is empty.
    bool store(int slot, Source source = Source::Live);
    // Stores the given trace. The slot takes over the trace's name, if it has one.
    void load(int slot, const Trace &trace);
    // Renames a slot, which may be empty.
    void rename(int slot, const QString &name);
    void show(int slot, bool isShown);
    // Removes the trace and its name, and makes the slot visible again.
    void clear(int slot);

    // --- reference ---

    // On: makes the live trace the reference; does nothing and returns false if there is none. Off: keeps the
    // reference.
    bool normalise(bool on);
    // Normalises to the given reference. An empty trace removes the reference.
    void setReference(const Trace &reference);
    // Returns whether traces are shown relative to the reference.
    bool isNormalised() const { return m_isNormalised; }
    const Trace &reference() const { return m_reference; } // empty: none

signals:
    // Emitted once by each call that changes anything.
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
