// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>

namespace calvorn {

// How Calvorn ends where no display can be opened.
inline constexpr int kNoDisplay = 2;

// While it lives, an application object that cannot open the display ends the program with kNoDisplay and one sentence
// on standard error, where Qt would abort. What Qt tells meanwhile comes when the display is open.
//
// Whether a display can be opened is known only by opening it: DISPLAY can name a server that is gone or refuses, and
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
