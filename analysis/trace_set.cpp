// SPDX-License-Identifier: MIT
#include "analysis/trace_set.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calvorn {

namespace {

// Unlike std::max and std::min, return NaN if either value is a gap.
double higherOf(double held, double value)
{
    return std::isnan(held) || held > value ? held : value;
}

double lowerOf(double held, double value)
{
    return std::isnan(held) || held < value ? held : value;
}

} // namespace

TraceSet::TraceSet(QObject *parent)
    : QObject(parent)
{
}

StoredTrace &TraceSet::slotAt(int slot)
{
    return m_stored.at(static_cast<std::size_t>(slot));
}

const StoredTrace &TraceSet::stored(int slot) const
{
    return m_stored.at(static_cast<std::size_t>(slot));
}

const Trace &TraceSet::shown(Source source) const
{
    return m_shown[indexOf(source)];
}

bool TraceSet::isOn(Source source) const
{
    return m_isOn[indexOf(source)];
}

void TraceSet::empty(Source source)
{
    m_shown[indexOf(source)] = {};
    if (source == Source::Average)
        m_averaged = 0;
}

void TraceSet::takeSweep(const Trace &sweep)
{
    if (sweep.isEmpty()) {
        forgetSweep();
        return;
    }
    m_shown[indexOf(Source::Live)] = sweep;
    for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold}) {
        if (!isOn(source))
            continue;
        if (!shown(source).hasAxisOf(sweep))
            empty(source);
        if (source == Source::Average)
            addToAverage(sweep);
        else
            hold(source, sweep);
    }
    emit changed();
}

void TraceSet::addToAverage(const Trace &sweep)
{
    Trace &average = m_shown[indexOf(Source::Average)];
    const std::int64_t before = m_averaged++;
    if (before == 0) {
        average = sweep;
        return;
    }
    average.floor = sweep.floor;
    const double weight = 1.0 / static_cast<double>(std::min<std::int64_t>(m_averaged, m_averageOver));
    for (std::size_t i = 0; i < sweep.volts.size(); ++i)
        average.volts[i] += weight * (sweep.volts[i] - average.volts[i]);
}

void TraceSet::hold(Source source, const Trace &sweep)
{
    Trace &held = m_shown[indexOf(source)];
    if (held.isEmpty()) {
        held = sweep;
        return;
    }
    held.floor = sweep.floor;
    for (std::size_t i = 0; i < sweep.volts.size(); ++i)
        held.volts[i] = source == Source::MaxHold ? higherOf(held.volts[i], sweep.volts[i])
                                                  : lowerOf(held.volts[i], sweep.volts[i]);
}

void TraceSet::showSweep(const Trace &sweep)
{
    m_shown[indexOf(Source::Live)] = sweep;
    emit changed();
}

void TraceSet::forgetSweep()
{
    if (shown(Source::Live).isEmpty())
        return;
    empty(Source::Live);
    emit changed();
}

void TraceSet::switchOn(Source source, bool on)
{
    if (source == Source::Live || isOn(source) == on)
        return;
    m_isOn[indexOf(source)] = on;
    empty(source);
    emit changed();
}

void TraceSet::setAverageOver(int sweeps)
{
    const int bounded = std::clamp(sweeps, kFewestAveraged, kMostAveraged);
    if (bounded == m_averageOver)
        return;
    m_averageOver = bounded;
    emit changed();
}

void TraceSet::restart()
{
    for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold})
        empty(source);
    emit changed();
}

bool TraceSet::store(int slot, Source source)
{
    StoredTrace &stored = slotAt(slot);
    if (shown(source).isEmpty())
        return false;
    const QString name = stored.trace.name;
    stored.trace = shown(source);
    stored.trace.name = name;
    emit changed();
    return true;
}

void TraceSet::load(int slot, const Trace &trace)
{
    StoredTrace &stored = slotAt(slot);
    const QString name = trace.name.isEmpty() ? stored.trace.name : trace.name;
    stored.trace = trace;
    stored.trace.name = name;
    emit changed();
}

void TraceSet::rename(int slot, const QString &name)
{
    StoredTrace &stored = slotAt(slot);
    if (stored.trace.name == name)
        return;
    stored.trace.name = name;
    emit changed();
}

void TraceSet::show(int slot, bool isShown)
{
    StoredTrace &stored = slotAt(slot);
    if (stored.isShown == isShown)
        return;
    stored.isShown = isShown;
    emit changed();
}

void TraceSet::clear(int slot)
{
    slotAt(slot) = {};
    emit changed();
}

bool TraceSet::normalise(bool on)
{
    if (on) {
        if (shown(Source::Live).isEmpty())
            return false;
        setReference(shown(Source::Live));
    } else if (m_isNormalised) {
        m_isNormalised = false;
        emit changed();
    }
    return true;
}

void TraceSet::setReference(const Trace &reference)
{
    m_reference = reference;
    m_isNormalised = !reference.isEmpty();
    emit changed();
}

} // namespace calvorn
