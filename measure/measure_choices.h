// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"
#include "analysis/trace_set.h"
#include "protocol/setting_key.h"

#include <QString>
#include <QVector>

#include <cstdint>

namespace calvorn {

// The Measure panel's state, which is saved between runs in section [Measure] of the settings file.
struct MeasureChoices
{
    bool isOpen = false;
    bool isFloating = false;
    QString place;         // floating panel: left, top, width, height in logical pixels
    std::int16_t page = 1; // 0 traces, 1 results, 2 limits, 3 level
    bool maxHold = false;
    bool minHold = false;
    bool average = false;
    std::int16_t averageOver = 10; // sweeps, 2 to 999
    bool legend = true;
    std::int16_t kind = 0;                    // a ResultKind: filter, notch, crystal, match
    std::int16_t source = 0;                  // 0 live, 1 average
    double fixtureOhms = kDefaultFixtureOhms; // source and load resistance of a crystal's fixture
    double prominence = 3.0;                  // dB, minimum for the next peak
    bool tracksPeak = false;
    bool limits = false;      // sweeps are judged
    bool beeps = false;       // when the verdict changes
    double limitMargin = 3.0; // dB, between the live trace and limits made from it
    QString limitsFile;       // loaded at start-up

    bool operator==(const MeasureChoices &) const = default;
};

// All keys, in the order of the section.
QVector<SettingKey> measureKeys();

// Returns the default for each missing or invalid key. Writes nothing.
MeasureChoices readMeasureChoices(const QString &settingsFile);

// Writes all keys if any choice differs from the file. The section is therefore not added to a file while all choices
// are the defaults. Returns false if the file cannot be written.
bool saveMeasureChoices(const MeasureChoices &choices, const QString &settingsFile);

} // namespace calvorn
