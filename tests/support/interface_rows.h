// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QTest>

namespace calvorn::test {

// Adds a row for each interface.
inline void addInterfaceRows()
{
    QTest::addColumn<int>("interfaceType");
    QTest::newRow("PIC") << int{kInterfacePic};
    QTest::newRow("parallel port") << int{kInterfaceLpt};
    QTest::newRow("MiniVNA") << int{kInterfaceVna};
}

} // namespace calvorn::test
