// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"

#include <QCoreApplication>
#include <QString>

namespace calvorn {

// Formats results in the current language and locale.
class ResultText
{
    Q_DECLARE_TR_FUNCTIONS(ResultText)

public:
    // Returns the caption for a key (results.h), for example "−3 dB bandwidth"; an unknown key is returned unchanged.
    static QString caption(const char *key);

    // Returns the number with its unit: "12,041 Hz", "-6.0 dB", "15.92 mH", "1.25"; or "–" if the value is missing.
    static QString value(const Result &result);

    // Returns the reason, for example "below the detector's floor"; an empty string for Missing::Nothing.
    static QString missing(Missing missing);
};

} // namespace calvorn
