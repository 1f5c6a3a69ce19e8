// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

namespace calvorn {

// Translation context for the texts of calvorn-sweep.
class SweepTool
{
    Q_DECLARE_TR_FUNCTIONS(SweepTool)
};

} // namespace calvorn
