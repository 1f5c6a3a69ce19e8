// SPDX-License-Identifier: MIT
// calvorn-sweep: sweeps without a window.
#include "tools/console.h"
#include "tools/interruption.h"
#include "tools/output.h"
#include "tools/single_sweep.h"

#include "analysis/sweep_response.h"
#include "analysis/text_plot.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "data/sweep_csv.h"
#include "display/plot/sweep_picture.h"
#include "platform/process_guard.h"
#include "translations/language.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLoggingCategory>

namespace {

using namespace calvorn;

const QString kStandardOutput = QStringLiteral("-");

// By the number of the scale.
QStringList scaleNames()
{
    return {QStringLiteral("linear"), QStringLiteral("1V"), QStringLiteral("1V+10dB"), QStringLiteral("10V"),
            QStringLiteral("10V+10dB")};
}

class Options
{
    Q_DECLARE_TR_FUNCTIONS(SweepTool)

public:
    QCommandLineOption settings{QStringLiteral("settings"), tr("Settings file; that of the window if not given."),
                                QStringLiteral("FILE")};
    QCommandLineOption start{QStringLiteral("start"), tr("First frequency in Hz, in place of that of the settings."),
                             QStringLiteral("HZ")};
    QCommandLineOption stop{QStringLiteral("stop"), tr("Last frequency in Hz, in place of that of the settings."),
                            QStringLiteral("HZ")};
    QCommandLineOption sweeps{QStringLiteral("sweeps"), tr("Take this many sweeps and keep the last; 1 if not given."),
                              QStringLiteral("N")};
    QCommandLineOption scale{QStringLiteral("scale"),
                             tr("Scale of the amplitudes, in place of that of the settings: %1; the numbers 0 to 4 "
                                "mean the same.")
                                 .arg(scaleNames().join(QStringLiteral(", "))),
                             QStringLiteral("SCALE")};
    QCommandLineOption output{QStringLiteral("output"), tr("Write the sweep as CSV; - is standard output."),
                              QStringLiteral("FILE.csv")};
    QCommandLineOption picture{QStringLiteral("picture"), tr("Write the curve as PNG or SVG."),
                               QStringLiteral("FILE.png")};
};

int fail(int code, const QString &sentence)
{
    note(QStringLiteral("calvorn-sweep: ") + sentence);
    return code;
}

// A whole positive number; an empty text when the option has one or is not given, otherwise what is wrong.
template <typename Value>
QString readNumber(const QCommandLineParser &arguments, const QCommandLineOption &option, Value &value)
{
    if (!arguments.isSet(option))
        return {};
    bool ok = false;
    const int number = arguments.value(option).toInt(&ok);
    if (!ok || number < 1)
        return Options::tr("--%1 takes a whole number from 1 on, not \"%2\".")
            .arg(option.names().constFirst(), arguments.value(option));
    value = number;
    return {};
}

// As readNumber(), of the scale's name or number.
QString readScale(const QCommandLineParser &arguments, const QCommandLineOption &option,
                  std::optional<std::int16_t> &scale)
{
    if (!arguments.isSet(option))
        return {};
    const QString value = arguments.value(option);
    const QStringList names = scaleNames();
    for (std::int16_t number = 0; number < kScales; ++number)
        if (value.compare(names[number], Qt::CaseInsensitive) == 0 || value == QString::number(number))
            scale = number;
    return scale ? QString()
                 : Options::tr("--%1 takes one of %2, not \"%3\".")
                       .arg(option.names().constFirst(), names.join(QStringLiteral(", ")), value);
}

QString readRequest(const QCommandLineParser &arguments, const Options &options, SweepRequest &request)
{
    if (!arguments.positionalArguments().isEmpty())
        return Options::tr("\"%1\" is not an option; see --help.").arg(arguments.positionalArguments().constFirst());
    request.settingsFile = arguments.value(options.settings);
    for (const QString &wrong :
         {readNumber(arguments, options.start, request.start), readNumber(arguments, options.stop, request.stop),
          readNumber(arguments, options.sweeps, request.sweeps), readScale(arguments, options.scale, request.scale)})
        if (!wrong.isEmpty())
            return wrong;
    for (const QCommandLineOption &file : {options.settings, options.output, options.picture})
        if (arguments.isSet(file) && arguments.value(file).isEmpty())
            return Options::tr("--%1 takes the name of a file.").arg(file.names().constFirst());
    if (arguments.isSet(options.picture) && !SweepPicture::isPictureName(arguments.value(options.picture)))
        return Options::tr("The name of a picture ends in .png or .svg, unlike \"%1\".")
            .arg(arguments.value(options.picture));
    if (arguments.isSet(options.output) && arguments.isSet(options.picture) &&
        isSameFile(arguments.value(options.output), arguments.value(options.picture)))
        return Options::tr("--output and --picture name the same file.");
    return {};
}

// An output that would replace the settings.
QString readOutputs(const QCommandLineParser &arguments, const Options &options, const QString &settingsFile)
{
    for (const QCommandLineOption &file : {options.output, options.picture})
        if (arguments.isSet(file) && isSameFile(arguments.value(file), settingsFile))
            return Options::tr("--%1 names the settings file.").arg(file.names().constFirst());
    return {};
}

void writePicture(SingleSweep &sweep, const QString &path)
{
    const SweepTable &table = sweep.table();
    const bool linear = isLinearScale(sweep.configuration().scaleType);
    PlotModel plot;
    plot.scale = GraphCoordinates(sweep.configuration());
    plot.showSweep(table);
    plot.markers = markersOf(sweep.window(), table);
    const auto frequency = [&table](int row) { return table.text(row, SweepTable::FrequencyColumn); };
    const PictureTexts texts{frequency(1), frequency(kSweepPoints / 2), frequency(kSweepPoints),
                             markerTexts(table, plot.markers, linear), QDateTime::currentDateTime()};
    SweepPicture(sweep.configuration(), plot, texts).save(path);
}

void printResponse(SingleSweep &sweep)
{
    const bool linear = isLinearScale(sweep.configuration().scaleType);
    const SweepResponse response = responseOf(sweep.table(), sweep.configuration());
    const NumberText numbers;
    const auto hertz = [&numbers](const std::optional<double> &value) {
        return value ? numbers.masked(*value, kMaskHertz) + QStringLiteral(" Hz") : Options::tr("outside the range");
    };
    const QString peak = linear ? numbers.masked(response.peak, kMaskVolt) + QStringLiteral(" V")
                                : numbers.masked(response.peak, kMaskDb) + QStringLiteral(" dB");
    QString text;
    const auto row = [&text](const QString &name, const QString &value) {
        text += name.leftJustified(18) + value.rightJustified(18) + u'\n';
    };
    row(Options::tr("Peak"), peak);
    row(Options::tr("Peak at"), hertz(response.peakFrequency));
    row(Options::tr("-3 dB from"), hertz(response.lower));
    row(Options::tr("-3 dB to"), hertz(response.upper));
    row(Options::tr("-3 dB bandwidth"), hertz(response.bandwidth()));
    text += u'\n' + textPlot(sweep.table(), linear).join(u'\n') + u'\n';
    writeResult(kStandardOutput, text.toLocal8Bit());
}

// The names of the files that were written. Standard output takes them unless it has taken the sweep.
void printNames(const QCommandLineParser &arguments, const Options &options)
{
    const QString output = arguments.value(options.output);
    for (const QCommandLineOption &file : {options.output, options.picture}) {
        const QString path = arguments.value(file);
        if (!arguments.isSet(file) || isDescriptor(path))
            continue;
        const QString name = QFileInfo(path).absoluteFilePath();
        if (isStandardOutput(output))
            note(name);
        else
            writeResult(kStandardOutput, (name + u'\n').toLocal8Bit());
    }
}

int deliver(SingleSweep &sweep, const QCommandLineParser &arguments, const Options &options)
{
    try {
        if (arguments.isSet(options.output))
            writeResult(arguments.value(options.output), sweepAsCsv(sweep.table()));
        if (arguments.isSet(options.picture))
            writePicture(sweep, arguments.value(options.picture));
        if (!arguments.isSet(options.output) && !arguments.isSet(options.picture))
            printResponse(sweep);
        printNames(arguments, options);
    } catch (const RuntimeError &error) {
        return fail(kFileNotWritable, error.message());
    }
    return kDone;
}

} // namespace

int main(int argc, char **argv)
{
    keepStandardDescriptors();
    holdStopBack();
    watchForInterruption();
    // A reader that has gone is a failed write.
    std::signal(SIGPIPE, SIG_IGN);
    // Standard error is for the user; what Qt misses in an environment without a desktop does not concern him.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    // Pictures need fonts, and no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const Language language(QLocale::system());
    QGuiApplication::setApplicationName(QStringLiteral("calvorn-sweep"));
    QGuiApplication::setApplicationVersion(QStringLiteral(CALVORN_VERSION));

    const Options options;
    QCommandLineParser arguments;
    arguments.setApplicationDescription(
        Options::tr("Takes a sweep without a window. Without --output and --picture it prints "
                    "the response in figures and as a plot."));
    arguments.addOptions({options.settings, options.start, options.stop, options.sweeps, options.scale, options.output,
                          options.picture});
    const QCommandLineOption help = arguments.addHelpOption();
    const QCommandLineOption version = arguments.addVersionOption();
    if (!arguments.parse(QCoreApplication::arguments()))
        return fail(kBadArguments, arguments.errorText());
    if (arguments.isSet(help))
        arguments.showHelp(kDone);
    if (arguments.isSet(version))
        arguments.showVersion();
    SweepRequest request;
    const QString wrong = readRequest(arguments, options, request);
    if (!wrong.isEmpty())
        return fail(kBadArguments, wrong);

    ConsoleClock clock;
    SingleSweep sweep(QCoreApplication::applicationDirPath(), request, clock);
    const QString clash = readOutputs(arguments, options, sweep.settingsFile());
    if (!clash.isEmpty())
        return fail(kBadArguments, clash);
    const int code = sweep.run();
    endAtOnce(code == kDone ? deliver(sweep, arguments, options) : fail(code, sweep.sentence()));
}
