// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

namespace calvorn::test {

// The only fixed waits of the tests. All other waits end with a condition.

// Leaves time for something that must not happen; the caller checks afterwards.
inline void nothingHappensFor(int milliseconds)
{
    QTest::qWait(milliseconds);
}

// A pause between two actions of a person, if the test is about the pause.
inline void pauseOfAPerson(int milliseconds)
{
    QTest::qWait(milliseconds);
}

// Time that a board of tests/boards/ needs without reporting its end.
inline void giveTheBoard(int milliseconds)
{
    QTest::qWait(milliseconds);
}

} // namespace calvorn::test
