// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace.h"

#include <QObject>

#include <array>
#include <cstdint>

namespace calvorn {

// A trace that the user keeps.
struct StoredTrace
{
    Trace trace; // empty while nothing is stored; its name is what the user calls it
    bool isShown = true;
};

// The traces beside the table: the last sweep, four stored ones, holds, average, and the reference. Everything is in
// volts; a gap in one sweep is a gap in hold and average until they start again.
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

    // A measured sweep: becomes the live trace and goes into holds and average. If its axis differs from that of the
    // sweep before, holds and average start again with it.
    void takeSweep(const Trace &sweep);
    // An imported or drawn sweep: becomes the live trace only.
    void showSweep(const Trace &sweep);
    // There is no live trace any more, as with a new plan.
    void forgetSweep();

    // Empty while there is nothing, which includes holds and average that are off.
    const Trace &shown(Source source) const;

    // --- holds and average ---

    // Live is always on. A source starts empty when it is switched on.
    void switchOn(Source source, bool on);
    bool isOn(Source source) const;

    // How many sweeps are averaged: their arithmetic mean first, and once there are that many, a new sweep counts
    // 1 / sweeps. 2 to 999; a number outside is moved into the range.
    void setAverageOver(int sweeps);
    int averageOver() const { return m_averageOver; }
    // Sweeps in the average since it started; may exceed averageOver().
    std::int64_t averaged() const { return m_averaged; }

    // Empties holds and average; they go on with the next measured sweep.
    void startAnew();

    // --- stored traces; slot: 0 to kStored - 1 ---

    const StoredTrace &stored(int slot) const;
    // Keeps what a source shows under the name of the slot. False, and nothing happens, where there is nothing.
    bool store(int slot, Source source = Source::Live);
    // Keeps a trace from elsewhere. The slot takes its name unless that is empty.
    void load(int slot, const Trace &trace);
    // Also names an empty slot.
    void rename(int slot, const QString &name);
    void show(int slot, bool isShown);
    // Removes trace and name; the slot is shown again.
    void clear(int slot);

    // --- reference ---

    // On: the live trace becomes the reference. False, and nothing happens, where there is none.
    // Off: the reference is kept.
    bool normalise(bool on);
    // Takes a reference from elsewhere and normalises. An empty trace removes the reference.
    void setReference(const Trace &reference);
    // Whether live trace and average are to be shown relative to the reference.
    bool isNormalised() const { return m_isNormalised; }
    const Trace &reference() const { return m_reference; } // empty: none

signals:
    // Once for each call that changed something.
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
