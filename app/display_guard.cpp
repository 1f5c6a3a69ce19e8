// SPDX-License-Identifier: MIT
#include "app/display_guard.h"

#include "translations/language.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace calvorn {

QByteArrayList DisplayGuard::s_heard;

DisplayGuard::DisplayGuard()
    : m_former(qInstallMessageHandler(hear))
{
}

DisplayGuard::~DisplayGuard()
{
    qInstallMessageHandler(m_former);
    for (const QByteArray &line : s_heard)
        std::fprintf(stderr, "%s\n", line.constData());
    s_heard.clear();
}

void DisplayGuard::hear(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type != QtFatalMsg) {
        s_heard.append(qFormatLogMessage(type, context, text).toLocal8Bit());
        return;
    }
    const Language language(QLocale::system());
    const QString sentence = QCoreApplication::translate(
        "main", "Calvorn needs a display, but cannot open one. Start it on a desktop, or use calvorn-sweep.");
    std::fprintf(stderr, "%s\n", sentence.toLocal8Bit().constData());
    // The application object is only partly constructed, so none of its code may run.
    std::_Exit(kNoDisplay);
}

} // namespace calvorn
