// SPDX-License-Identifier: MIT
#include "server/acquisition_server.h"

#include "platform/process_guard.h"
#include "protocol/server_start.h"
#include "protocol/setting_key.h"
#include "server/links/termination_watch.h"
#include "translations/language.h"

#include <QCoreApplication>

#include <cstdio>
#include <unistd.h>

int main(int argc, char *argv[])
{
    if (!calvorn::endWithParent())
        return 0;
    // The program handles Ctrl+C and Ctrl+Z for the server, so the server leaves the terminal's process group. A server
    // that was started manually stays in it.
    if (isatty(STDIN_FILENO) == 0)
        calvorn::leaveTerminalGroup();
    calvorn::holdTerminationBack();
    calvorn::ignoreBrokenPipes();

    QCoreApplication application(argc, argv);
    // The window shows the server's messages, and calvorn-sweep prints them.
    const calvorn::Language language(QLocale::system());
    QCoreApplication::setApplicationName(QString::fromLatin1(calvorn::kServerName));

    // The first argument can specify the settings file; the default is the file in the server's folder.
    const QString beside =
        QCoreApplication::applicationDirPath() + u'/' + QString::fromLatin1(calvorn::kSettingsFileName);
    calvorn::AcquisitionServer server(QCoreApplication::arguments().value(1, beside));
    calvorn::TerminationWatch watch;
    QObject::connect(&server, &calvorn::AcquisitionServer::finished, &application, &QCoreApplication::quit);
    QObject::connect(&watch, &calvorn::TerminationWatch::asked, &application, &QCoreApplication::quit);

    // On failure, the line contains the reason instead of the address.
    if (!watch.isWatching() || !server.listen()) {
        const QString reason = watch.isWatching() ? server.errorText() : calvorn::TerminationWatch::refusal();
        std::printf("%s%s\n", calvorn::kServerRefusal, qPrintable(reason));
        calvorn::endAtOnce(1);
    }
    std::printf("%s\n", qPrintable(server.address()));
    std::fflush(stdout);
    const int code = QCoreApplication::exec();
    server.close();
    calvorn::endAtOnce(code);
}
