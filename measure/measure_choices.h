// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"
#include "analysis/trace_set.h"
#include "protocol/setting_key.h"

#include <QString>
#include <QVector>

#include <cstdint>

namespace calvorn {

// What the Measure panel keeps between runs, in the section [Measure] of the settings file.
struct MeasureChoices
{
    bool isOpen = false;
    bool isFloating = false;
    QString place;         // of the floating panel: left, top, width, height in logical pixels
    std::int16_t page = 1; // 0 traces, 1 results, 2 limits, 3 level
    bool maxHold = false;  // the same for the next three
    bool minHold = false;
    bool average = false;
    std::int16_t averageOver = 10; // sweeps, 2 to 999
    bool legend = true;
    std::int16_t kind = 0;                    // a ResultKind: filter, notch, crystal, match
    std::int16_t source = 0;                  // 0 live, 1 average
    double fixtureOhms = kDefaultFixtureOhms; // of source and load of a crystal's fixture
    double prominence = 3.0;                  // dB, of the next peak
    bool tracksPeak = false;
    bool limits = false;      // sweeps are judged
    bool beeps = false;       // on a change of the verdict
    double limitMargin = 3.0; // dB, of limits made from the live trace
    QString limitsFile;       // loaded at the start

    bool operator==(const MeasureChoices &) const = default;
};

// All of them, in the order of the section.
QVector<SettingKey> measureKeys();

// A key that is missing or cannot be read gives its default; nothing is written.
MeasureChoices readMeasureChoices(const QString &settingsFile);

// Writes the keys that differ from the file's; a file without the section gets it only when a choice is not the
// default. False when the file cannot be written.
bool saveMeasureChoices(const MeasureChoices &choices, const QString &settingsFile);

} // namespace calvorn
