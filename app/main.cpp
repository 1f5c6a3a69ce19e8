// SPDX-License-Identifier: MIT
#include "app/display_guard.h"
#include "app/frm_sweep.h"

#include "core/configuration.h"
#include "core/messages.h"
#include "core/settings_folder.h"
#include "platform/program_lock.h"
#include "platform/program_style.h"
#include "platform/qt_desktop.h"
#include "translations/language.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <optional>

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

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("Calvorn"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CALVORN_VERSION));
}

// What the command line can say: nothing but questions.
struct Arguments
{
    QCommandLineParser parser;
    QCommandLineOption help;
    QCommandLineOption version;

    Arguments()
        : help(parser.addHelpOption())
        , version(parser.addVersionOption())
    {
        parser.setApplicationDescription(QCoreApplication::translate(
            "main", "Measures filters, antennas and other devices over a range of frequencies."));
    }
};

// Help and version need no display. Ends the program when it was asked for them.
void answerWithoutDisplay(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const calvorn::Language language(QLocale::system());
    nameApplication();
    Arguments arguments;
    // Options of Qt's own are unknown here and left to the application with a window.
    if (!arguments.parser.parse(QCoreApplication::arguments()))
        return;
    if (arguments.parser.isSet(arguments.help))
        arguments.parser.showHelp();
    if (arguments.parser.isSet(arguments.version))
        arguments.parser.showVersion();
}

} // namespace

int main(int argc, char **argv)
{
    using namespace calvorn;

    if (argc > 1)
        answerWithoutDisplay(argc, argv);
    std::optional<DisplayGuard> guard(std::in_place);
    QApplication application(argc, argv);
    guard.reset();
    const Language language(QLocale::system());
    nameApplication();
    QApplication::setStyle(new ProgramStyle);
    // A dialog that closes before the main window shows must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
    introduceToDesktop();

    Arguments().parser.process(QCoreApplication::arguments());
    const QString programs = QCoreApplication::applicationDirPath();
    const ProgramFolders folders{programs, settingsFolder(programs)};
    Configuration configuration;
    QtDesktop desktop;
    Messages messages(configuration, desktop);
    if (!makeSettingsFolder(programs)) {
        messages.beepAndWarn(QCoreApplication::translate("main", "The folder %1 for the settings could not be made")
                                 .arg(QDir::toNativeSeparators(folders.settings)));
        return 1;
    }
    const ProgramLock lock(folders.settings);
    if (!lock.isOurs()) {
        messages.beepAndWarn(QCoreApplication::translate("main", "The program is already running"));
        return 0;
    }
    copySettingsOnFirstUse(programs);
    FrmSweep window(folders, configuration, desktop);
    if (!window.start())
        return 0;
    return QCoreApplication::exec();
}
