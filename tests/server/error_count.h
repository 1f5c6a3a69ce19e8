// SPDX-License-Identifier: MIT
#pragma once

#include <QSignalSpy>

#include <algorithm>

namespace calvorn {

// The aErrore codes, as listed in docs/hardware/errors.md.
namespace code {
inline constexpr int kTransfer = 1;
inline constexpr int kPort = 2;
inline constexpr int kBoard = 3;
inline constexpr int kNoAction = 4;
inline constexpr int kFrequency = 5;
inline constexpr int kSetting = 6;
} // namespace code

// Returns the number of recorded aErrore signals with the code `wanted`.
inline int errorsWithCode(const QSignalSpy &errors, int wanted)
{
    return static_cast<int>(std::count_if(errors.begin(), errors.end(), [wanted](const QList<QVariant> &error) {
        return error.at(0).toInt() == wanted;
    }));
}

} // namespace calvorn
