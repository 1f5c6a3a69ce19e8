// SPDX-License-Identifier: MIT
#include "app/display_guard.h"
#include "app/frm_sweep.h"

#include "core/configuration.h"
#include "core/messages.h"
#include "core/program_folders.h"
#include "platform/process_guard.h"
#include "platform/program_lock.h"
#include "platform/qt_desktop.h"
#include "translations/language.h"
#include "widgets/list_keys.h"
#include "widgets/program_style.h"
#include "widgets/window_system.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPointer>
#include <QSocketNotifier>
#include <QTextStream>

#include <cstdlib>
#include <optional>
#include <unistd.h>

namespace {

// Sets the window's icon, and the desktop menu entry that the window belongs to.
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

// The command line, which has only the help and version options.
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

    // Exits if there is an argument that is not an option.
    void refuseFiles() const
    {
        if (parser.positionalArguments().isEmpty())
            return;
        QTextStream(stderr) << QCoreApplication::translate("main", "Calvorn opens no files: %1")
                                   .arg(parser.positionalArguments().first())
                            << Qt::endl;
        std::exit(1);
    }
};

// Handles what needs no display, and exits then: the help and version options, and arguments that are no options.
void answerWithoutDisplay(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const calvorn::Language language(QLocale::system());
    nameApplication();
    Arguments arguments;
    // Qt's own options are unknown here; QApplication handles them later.
    if (!arguments.parser.parse(QCoreApplication::arguments()))
        return;
    if (arguments.parser.isSet(arguments.help))
        arguments.parser.showHelp();
    if (arguments.parser.isSet(arguments.version))
        arguments.parser.showVersion();
    arguments.refuseFiles();
}

// Defers termination signals and Ctrl+Z to the window's thread, so that no call is interrupted and termination stops
// the hardware and saves the settings.
class SignalWatch
{
public:
    SignalWatch()
        : m_end(calvorn::terminationSignals(), QSocketNotifier::Read)
        , m_stop(calvorn::heldStop(), QSocketNotifier::Read)
    {
        QObject::connect(&m_end, &QSocketNotifier::activated, &m_end, [this] {
            m_end.setEnabled(false);
            if (m_window)
                m_window->end();
            else
                QCoreApplication::exit();
        });
        QObject::connect(&m_stop, &QSocketNotifier::activated, &m_stop, [] { calvorn::letStop(); });
    }
    ~SignalWatch()
    {
        for (const QSocketNotifier *notifier : {&m_end, &m_stop})
            close(static_cast<int>(notifier->socket()));
    }
    SignalWatch(const SignalWatch &) = delete;
    SignalWatch &operator=(const SignalWatch &) = delete;

    // Until a window is set, a signal closes the current box.
    void setWindow(calvorn::FrmSweep *window) { m_window = window; }

private:
    QSocketNotifier m_end;
    QSocketNotifier m_stop;
    QPointer<calvorn::FrmSweep> m_window;
};

// Qt calls exit() when it loses the display; see endAtOnce(). Exit handlers that libraries register later would run
// first, so call this again after start-up. The server switches the generators off when this process exits.
void skipExitHandlers()
{
    on_exit([](int code, void *) { calvorn::endAtOnce(code); }, nullptr);
}

// Runs the program in an application that is connected to the display.
int run(QApplication &application)
{
    using namespace calvorn;

    SignalWatch watch;
    const Language language(QLocale::system());
    nameApplication();
    QApplication::setStyle(new ProgramStyle);
    ListKeys listKeys;
    if (isWayland())
        application.installEventFilter(&listKeys);
    // A dialog that closes before the main window is shown must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
    introduceToDesktop();

    Arguments arguments;
    arguments.parser.process(QCoreApplication::arguments());
    arguments.refuseFiles();
    const ProgramFolders folders = programFolders(QCoreApplication::applicationDirPath());
    Configuration configuration;
    QtDesktop desktop;
    Messages messages(configuration, desktop);
    if (!makeSettingsFolder(folders)) {
        messages.beepAndWarn(QCoreApplication::translate("main", "The settings folder %1 could not be created")
                                 .arg(QDir::toNativeSeparators(folders.settings)));
        return 1;
    }
    const ProgramLock lock(folders.settings);
    if (!lock.isOurs()) {
        const QString holder = lock.holder().isEmpty() ? QString() : u'\r' + lock.holder();
        messages.beepAndWarn(QCoreApplication::translate("main", "The program is already running") + holder);
        return 0;
    }
    copySettingsOnFirstUse(folders);
    SweepStation station(folders, configuration, desktop, desktop);
    FrmSweep window(station);
    watch.setWindow(&window);
    if (!window.start())
        return 0;
    skipExitHandlers();
    return QCoreApplication::exec();
}

int runWithDisplay(int argc, char **argv)
{
    std::optional<calvorn::DisplayGuard> guard(std::in_place);
    QApplication application(argc, argv);
    guard.reset();
    skipExitHandlers();
    const int code = run(application);
    // Under Wayland, Qt can wait forever for its event thread when the application object is destroyed.
    if (calvorn::isWayland())
        calvorn::endAtOnce(code);
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    calvorn::keepStandardDescriptors();
    calvorn::holdTerminationBack();
    calvorn::ignoreBrokenPipes();
    calvorn::holdStopBack();
    if (argc > 1)
        answerWithoutDisplay(argc, argv);
    calvorn::endAtOnce(runWithDisplay(argc, argv));
}
