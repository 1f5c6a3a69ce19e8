// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

namespace calvorn::test {

// The only fixed waits in the tests. All other waits stop when a condition is met.

// Leaves time for something that must not happen; the caller checks afterwards.
inline void nothingHappensFor(int milliseconds)
{
    QTest::qWait(milliseconds);
}

// A pause between two user actions, for tests of the pause itself.
inline void pauseOfAPerson(int milliseconds)
{
    QTest::qWait(milliseconds);
}

// Gives a board in tests/boards/ time for an action whose completion it does not report.
inline void giveTheBoard(int milliseconds)
{
    QTest::qWait(milliseconds);
}

} // namespace calvorn::test
