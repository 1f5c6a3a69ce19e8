// SPDX-License-Identifier: MIT
// calvorn-sweep: one sweep without a window, by the settings beside the program.
#include "tools/console_desktop.h"
#include "tools/single_sweep.h"

#include "acquisition/frequency_readouts.h"
#include "core/error_boundary.h"
#include "core/runtime_error.h"
#include "data/sweep_csv.h"
#include "display/graph_panel.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QSaveFile>

namespace {

using namespace calvorn;

enum ExitCode { kDone = 0, kBadArguments = 1, kNoSweep = 2, kFileNotWritable = 3 };

bool writeCsv(const SweepTable &table, const QString &path)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(sweepAsCsv(table)) >= 0 && file.commit();
}

bool writePicture(Configuration &configuration, SweepTable &table, Desktop &desktop, const QString &path)
{
    Messages messages(configuration, desktop);
    Log log(configuration);
    ErrorBoundary boundary(messages, log);
    GraphPanel panel(configuration, table, desktop, boundary);
    auto *readouts = new FrequencyReadouts(&panel);
    panel.setFooter(readouts);
    readouts->show(table.text(1, SweepTable::FrequencyColumn),
                   table.text(kSweepPoints / 2, SweepTable::FrequencyColumn),
                   table.text(kSweepPoints, SweepTable::FrequencyColumn));
    panel.axis().showFullScale();
    panel.graph().inizializzaGraph();
    for (int item = 0; item < kGraphItems; ++item)
        panel.graph().setLineVisible(static_cast<GraphItem>(item), false);
    panel.resize(800, 500);
    panel.drawScreen();
    panel.graph().drawLine();
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && panel.grab().save(&file, "PNG") && file.commit();
}

int fail(Desktop &desktop, ExitCode code, const QString &text)
{
    desktop.messageBox(BoxIcon::Warning, BoxButtons::Ok, text, QString());
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    // The picture is painted by widgets that nobody sees.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("calvorn-sweep"));
    QApplication::setStyle(QStringLiteral("Fusion"));

    QCommandLineParser arguments;
    arguments.setApplicationDescription(
        QCoreApplication::translate("main", "Takes one sweep with the settings beside the program."));
    arguments.addHelpOption();
    const QCommandLineOption output(QStringLiteral("output"),
                                    QCoreApplication::translate("main", "Write the sweep as CSV."),
                                    QStringLiteral("FILE.csv"));
    const QCommandLineOption picture(QStringLiteral("picture"),
                                     QCoreApplication::translate("main", "Write the curve as PNG."),
                                     QStringLiteral("FILE.png"));
    arguments.addOptions({output, picture});
    arguments.process(application);

    ConsoleDesktop desktop;
    if (!arguments.isSet(output) && !arguments.isSet(picture))
        return fail(desktop, kBadArguments,
                    QCoreApplication::translate("main", "Say where the sweep goes: --output, --picture or both."));

    Configuration configuration;
    SingleSweep sweep(QCoreApplication::applicationDirPath(), configuration, desktop);
    if (!sweep.run())
        return kNoSweep;
    const QString cannotWrite = QCoreApplication::translate("main", "%1 could not be written.");
    if (arguments.isSet(output) && !writeCsv(sweep.table(), arguments.value(output)))
        return fail(desktop, kFileNotWritable, cannotWrite.arg(arguments.value(output)));
    if (arguments.isSet(picture) && !writePicture(configuration, sweep.table(), desktop, arguments.value(picture)))
        return fail(desktop, kFileNotWritable, cannotWrite.arg(arguments.value(picture)));
    QTextStream out(stdout);
    for (const QCommandLineOption &option : {output, picture})
        if (arguments.isSet(option))
            out << QFileInfo(arguments.value(option)).absoluteFilePath() << Qt::endl;
    return kDone;
}
