// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>

namespace calvorn {

// Exit code of Calvorn if no display can be opened.
inline constexpr int kNoDisplay = 2;

// While a guard exists, failure to open the display ends the program with the exit code kNoDisplay and a single line on
// standard error, instead of an abort by Qt. Qt's other messages are deferred until the guard is destroyed.
//
// A display can be tested only by opening it: DISPLAY may name a server that is gone or rejects the program, and
// QT_QPA_PLATFORM may name a platform that needs no display.
class DisplayGuard
{
public:
    DisplayGuard();
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard &) = delete;
    DisplayGuard &operator=(const DisplayGuard &) = delete;

private:
    static void hear(QtMsgType type, const QMessageLogContext &context, const QString &text);

    QtMessageHandler m_former;
    static QByteArrayList s_heard;
};

} // namespace calvorn
