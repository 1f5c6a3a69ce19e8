// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>

namespace calvorn {

// Exit code of Calvorn if no display can be opened.
inline constexpr int kNoDisplay = 2;

// While a guard exists, an application object that cannot open the display ends the program with kNoDisplay and one
// sentence on standard error, where Qt would abort. Other messages of Qt are held back until the guard is destroyed.
//
// Only opening a display shows whether that is possible: DISPLAY can name a server that is gone or refuses, and
// QT_QPA_PLATFORM a platform that needs none.
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
