// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/error_codes.h"

#include <QSignalSpy>

#include <algorithm>

namespace calvorn {

// How many of a driver's aErrore have this code.
inline int errorsWithCode(const QSignalSpy &errors, ErrorCode code)
{
    return static_cast<int>(std::count_if(errors.begin(), errors.end(), [code](const QList<QVariant> &error) {
        return error.at(0).value<short>() == static_cast<short>(code);
    }));
}

} // namespace calvorn
