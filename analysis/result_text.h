// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"

#include <QCoreApplication>
#include <QString>

namespace calvorn {

// Results as text, in the current language and locale.
class ResultText
{
    Q_DECLARE_TR_FUNCTIONS(ResultText)

public:
    // Returns the caption of a key (results.h), for example "−3 dB bandwidth"; returns an unknown key unchanged.
    static QString caption(const char *key);

    // Returns the number with its unit: "12,041 Hz", "-6.0 dB", "15.92 mH", "1.25"; or "–" if there is no value.
    static QString value(const Result &result);

    // Returns the reason, for example "below the detector's floor"; empty for Missing::Nothing.
    static QString missing(Missing missing);
};

} // namespace calvorn
