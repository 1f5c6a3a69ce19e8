// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"

#include <QCoreApplication>
#include <QString>

namespace calvorn {

// Results in words, in the current language and locale.
class ResultText
{
    Q_DECLARE_TR_FUNCTIONS(ResultText)

public:
    // What a key (results.h) is called, for instance "−3 dB bandwidth"; the key itself where it is none.
    static QString caption(const char *key);

    // The number with its unit: "12,041 Hz", "-6.0 dB", "15.92 mH", "1.25"; "–" where there is none.
    static QString value(const Result &result);

    // The reason, for instance "below the detector's floor"; empty for Missing::Nothing.
    static QString missing(Missing missing);
};

} // namespace calvorn
