// SPDX-License-Identifier: MIT
#include "server/acquisition_server.h"

#include "platform/process_guard.h"
#include "server/links/termination_watch.h"
#include "translations/language.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    if (!calvorn::endWithParent())
        return 0;
    calvorn::blockTerminationSignals();

    QCoreApplication application(argc, argv);
    // Its sentences are shown by the window, or printed by the tool.
    const calvorn::Language language(QLocale::system());
    QCoreApplication::setApplicationName(QStringLiteral("CalvornAsync"));

    // The settings file may be named; otherwise it is the one beside the program.
    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/Calvorn.ini");
    calvorn::AcquisitionServer server(QCoreApplication::arguments().value(1, beside));
    calvorn::TerminationWatch watch;
    QObject::connect(&server, &calvorn::AcquisitionServer::finished, &application, &QCoreApplication::quit);
    QObject::connect(&watch, &calvorn::TerminationWatch::asked, &application, &QCoreApplication::quit);

    if (!server.listen()) {
        std::fprintf(stderr, "CalvornAsync: %s\n", qPrintable(server.errorText()));
        return 1;
    }
    std::printf("%s\n", qPrintable(server.address()));
    std::fflush(stdout);
    return QCoreApplication::exec();
}
