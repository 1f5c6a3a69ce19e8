// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

namespace calvorn::test {

// The fixed waits of the tests. Everything else waits for something to happen.

// What must not happen has this long to happen; the caller looks afterwards.
inline void nothingHappensFor(int milliseconds)
{
    QTest::qWait(milliseconds);
}

// Between two acts of a person, where the pause is what is tested.
inline void pauseOfAPerson(int milliseconds)
{
    QTest::qWait(milliseconds);
}

// What a board of tests/boards/ needs by its own clock, and tells nobody of.
inline void giveTheBoard(int milliseconds)
{
    QTest::qWait(milliseconds);
}

} // namespace calvorn::test
