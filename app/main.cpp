// SPDX-License-Identifier: MIT
#include "app/frm_sweep.h"

#include "core/configuration.h"
#include "core/messages.h"
#include "platform/program_lock.h"
#include "platform/qt_desktop.h"
#include "translations/language.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStyleFactory>

namespace {

// What desktops show the window with: its picture, and the entry of their menu that it belongs to.
void introduceToDesktop()
{
    QIcon icon;
    const QDir sizes(QStringLiteral(":/icons"));
    for (const QString &file : sizes.entryList())
        icon.addFile(sizes.filePath(file));
    QApplication::setWindowIcon(icon);
    QGuiApplication::setDesktopFileName(QStringLiteral("org.calvorn.Calvorn"));
}

// The folder of the program for everything, unless the command line names another one for the settings.
calvorn::ProgramFolders foldersFromArguments()
{
    QCommandLineParser arguments;
    arguments.setApplicationDescription(QCoreApplication::translate(
        "main", "Measures filters, antennas and other devices over a range of frequencies."));
    const QCommandLineOption folder(
        QStringLiteral("folder"),
        QCoreApplication::translate("main",
                                    "Folder of Calvorn.ini, in place of that of the program. One instance runs in it."),
        QCoreApplication::translate("main", "folder"));
    arguments.addOption(folder);
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.process(QCoreApplication::arguments());
    const QString programs = QCoreApplication::applicationDirPath();
    return {programs, arguments.isSet(folder) ? QDir(arguments.value(folder)).absolutePath() : programs};
}

} // namespace

int main(int argc, char **argv)
{
    using namespace calvorn;

    QApplication application(argc, argv);
    const Language language(QLocale::system());
    QApplication::setApplicationName(QStringLiteral("Calvorn"));
    QApplication::setApplicationVersion(QStringLiteral(CALVORN_VERSION));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // A dialog that closes before the main window shows must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
    introduceToDesktop();

    const ProgramFolders folders = foldersFromArguments();
    Configuration configuration;
    QtDesktop desktop;
    Messages messages(configuration, desktop);
    if (!QDir(folders.settings).exists()) {
        messages.beepAndWarn(QCoreApplication::translate("main", "The folder %1 does not exist")
                                 .arg(QDir::toNativeSeparators(folders.settings)));
        return 1;
    }
    const ProgramLock lock(folders.settings);
    if (!lock.isOurs()) {
        messages.beepAndWarn(QCoreApplication::translate("main", "The program is already running"));
        return 0;
    }
    FrmSweep window(folders, configuration, desktop);
    if (!window.start())
        return 0;
    return QCoreApplication::exec();
}
