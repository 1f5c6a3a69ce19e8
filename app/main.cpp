// SPDX-License-Identifier: MIT
#include "app/frm_sweep.h"

#include "core/configuration.h"
#include "core/messages.h"
#include "platform/program_lock.h"
#include "platform/qt_desktop.h"
#include "translations/language.h"

#include <QApplication>
#include <QStyleFactory>

int main(int argc, char **argv)
{
    using namespace calvorn;

    QApplication application(argc, argv);
    const Language language(QLocale::system());
    QApplication::setApplicationName(QStringLiteral("Calvorn"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // A dialog that closes before the main window shows must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);

    const QString programFolder = QCoreApplication::applicationDirPath();
    Configuration configuration;
    QtDesktop desktop;
    const ProgramLock lock(programFolder);
    if (!lock.isOurs()) {
        Messages(configuration, desktop)
            .beepAndWarn(QCoreApplication::translate("main", "The program is already running"));
        return 0;
    }
    FrmSweep window(programFolder, configuration, desktop);
    if (!window.start())
        return 0;
    return QCoreApplication::exec();
}
