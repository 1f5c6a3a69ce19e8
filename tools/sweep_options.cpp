// SPDX-License-Identifier: MIT
#include "tools/sweep_options.h"

#include "analysis/trace_set.h"
#include "core/scale_type.h"
#include "display/plot/sweep_picture.h"
#include "tools/output.h"

#include <QFileInfo>

#include <cmath>
#include <initializer_list>
#include <limits>

namespace calvorn {

namespace {

constexpr int kMostTraces = TraceSet::kStored;

// Indexed by scale number.
QStringList scaleNames()
{
    QStringList names;
    for (const ScaleType &scale : kScaleTypes)
        names.append(QString::fromLatin1(scale.name));
    return names;
}

// Indexed by ResultKind.
QStringList kindNames()
{
    return {QStringLiteral("filter"), QStringLiteral("notch"), QStringLiteral("crystal"), QStringLiteral("match")};
}

QStringList formatNames()
{
    return {QStringLiteral("text"), QStringLiteral("json")};
}

QString listed(const QStringList &names)
{
    return names.join(QStringLiteral(", "));
}

QString nameOf(const QCommandLineOption &option)
{
    return option.names().constFirst();
}

QCommandLineOption option(const char *name, const QString &description, const char *value)
{
    return {QString::fromLatin1(name), description, QString::fromLatin1(value)};
}

QString firstOf(std::initializer_list<QString> sentences)
{
    for (const QString &sentence : sentences)
        if (!sentence.isEmpty())
            return sentence;
    return {};
}

} // namespace

QString nameOf(ResultKind kind)
{
    return kindNames().at(static_cast<int>(kind));
}

SweepOptions::SweepOptions()
    : m_settings(option("settings", tr("Settings file; the window's file by default."), "FILE"))
    , m_start(option("start", tr("First frequency in Hz, instead of the one in the settings."), "HZ"))
    , m_stop(option("stop", tr("Last frequency in Hz, instead of the one in the settings."), "HZ"))
    , m_sweeps(option("sweeps", tr("Take this many sweeps and keep the last; 1 by default."), "N"))
    , m_average(option("average",
                       tr("Take this many sweeps, %1 to %2, and show their mean.")
                           .arg(TraceSet::kFewestAveraged)
                           .arg(TraceSet::kMostAveraged),
                       "N"))
    , m_scale(option(
          "scale",
          tr("Scale of the amplitudes, instead of the one in the settings: %1; the numbers 0 to %2 mean the same.")
              .arg(listed(scaleNames()))
              .arg(kScales - 1),
          "SCALE"))
    , m_input(option("input", tr("Read the sweep from a file instead of measuring."), "FILE.csv"))
    , m_reference(option("reference", tr("Show everything relative to the sweep in this file."), "FILE.csv"))
    , m_results(option("results", tr("Print the results of a kind of device: %1.").arg(listed(kindNames())), "KIND"))
    , m_fixture(option(
          "fixture",
          tr("Source and load resistance of a crystal fixture, in ohms; %1 by default.").arg(kDefaultFixtureOhms),
          "OHMS"))
    , m_limits(option("limits", tr("Check the sweep against the limits in this file."), "FILE.csv"))
    , m_format(option("format", tr("Output format: %1.").arg(listed(formatNames())), "FORMAT"))
    , m_output(option("output", tr("Write the sweep as CSV; - is standard output."), "FILE.csv"))
    , m_picture(option("picture", tr("Write the curve as PNG or SVG."), "FILE.png"))
    , m_traces(option("traces",
                      tr("Also draw the sweeps from these files in the picture; at most %1.").arg(kMostTraces),
                      "FILE[,FILE...]"))
    , m_listen(
          option("listen", tr("Accept SCPI commands on this local TCP port until a signal ends the program."), "PORT"))
{
    m_parser.setApplicationDescription(tr("Takes a sweep without a window. Without --output and --picture, it prints "
                                          "the response as figures and a plot."));
    m_parser.addOptions({m_settings, m_start, m_stop, m_sweeps, m_average, m_scale, m_input, m_reference, m_results,
                         m_fixture, m_limits, m_format, m_output, m_picture, m_traces, m_listen});
}

QString SweepOptions::read(const QStringList &arguments, ToolRequest &request)
{
    // Qt's default help option would add another one for Qt's own options, which this program does not read.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, tr("Show these options."));
    m_parser.addOption(help);
    const QCommandLineOption version = m_parser.addVersionOption();
    if (!m_parser.parse(arguments))
        return m_parser.errorText();
    if (isSet(help))
        m_parser.showHelp(kDone);
    if (isSet(version))
        m_parser.showVersion();
    if (!m_parser.positionalArguments().isEmpty())
        return tr("\"%1\" is not an option; see --help.").arg(m_parser.positionalArguments().constFirst());
    std::optional<std::int32_t> sweeps;
    const QString wrongNumber =
        firstOf({readWholeNumber(m_start, request.sweep.start), readWholeNumber(m_stop, request.sweep.stop),
                 readWholeNumber(m_sweeps, sweeps), readAverage(request.sweep), readScale(request.sweep)});
    if (!wrongNumber.isEmpty())
        return wrongNumber;
    request.sweep.sweeps = sweeps.value_or(request.sweep.sweeps);
    for (const QCommandLineOption &file : {m_settings, m_output, m_picture, m_input, m_reference, m_limits})
        if (isSet(file) && value(file).isEmpty())
            return tr("--%1 takes the name of a file.").arg(nameOf(file));
    request.sweep.settingsFile = value(m_settings);
    request.sweep.input = value(m_input);
    request.output = value(m_output);
    request.picture = value(m_picture);
    request.reference = value(m_reference);
    request.limits = value(m_limits);
    if (isSet(m_picture) && !SweepPicture::isPictureName(request.picture))
        return tr("The file name of a picture must end in .png or .svg, not \"%1\".").arg(request.picture);
    return firstOf({readTraces(request.traces), readReport(request), readPort(request.port), misplacedOption(request),
                    clashOfFiles(request)});
}

// Leaves the number empty if the option is missing.
QString SweepOptions::readWholeNumber(const QCommandLineOption &option, std::optional<std::int32_t> &number) const
{
    if (!isSet(option))
        return {};
    number = value(option).toInt();
    return *number >= 1 ? QString()
                        : tr("--%1 takes a whole number of at least 1, not \"%2\".").arg(nameOf(option), value(option));
}

// Case-insensitive.
QString SweepOptions::readChoice(const QCommandLineOption &option, const QStringList &names,
                                 std::optional<int> &index) const
{
    if (!isSet(option))
        return {};
    for (int i = 0; i < names.size(); ++i)
        if (value(option).compare(names[i], Qt::CaseInsensitive) == 0)
            index = i;
    return index ? QString()
                 : tr("--%1 takes one of %2, not \"%3\".").arg(nameOf(option), listed(names), value(option));
}

QString SweepOptions::readAverage(SweepRequest &request) const
{
    if (!isSet(m_average))
        return {};
    bool ok = false;
    request.sweeps = value(m_average).toInt(&ok);
    request.isAveraged = true;
    return ok && request.sweeps >= TraceSet::kFewestAveraged && request.sweeps <= TraceSet::kMostAveraged
               ? QString()
               : tr("--%1 takes a whole number from %2 to %3, not \"%4\".")
                     .arg(nameOf(m_average))
                     .arg(TraceSet::kFewestAveraged)
                     .arg(TraceSet::kMostAveraged)
                     .arg(value(m_average));
}

// Accepts a scale name or number.
QString SweepOptions::readScale(SweepRequest &request) const
{
    for (std::int16_t number = 0; number < kScales; ++number)
        if (value(m_scale) == QString::number(number))
            request.scale = number;
    if (request.scale)
        return {};
    std::optional<int> index;
    const QString wrong = readChoice(m_scale, scaleNames(), index);
    if (index)
        request.scale = static_cast<std::int16_t>(*index);
    return wrong;
}

QString SweepOptions::readReport(ToolRequest &request) const
{
    std::optional<int> kind;
    std::optional<int> format;
    const QString wrong =
        firstOf({readChoice(m_results, kindNames(), kind), readChoice(m_format, formatNames(), format)});
    if (!wrong.isEmpty())
        return wrong;
    if (kind)
        request.results = static_cast<ResultKind>(*kind);
    request.isJson = format == 1;
    if (!isSet(m_fixture))
        return {};
    bool ok = false;
    request.fixtureOhms = value(m_fixture).toDouble(&ok); // decimal point in every locale
    return ok && std::isfinite(request.fixtureOhms) && request.fixtureOhms > 0.0
               ? QString()
               : tr("--%1 takes a number of ohms above 0, not \"%2\".").arg(nameOf(m_fixture), value(m_fixture));
}

// Splits the value at commas, unless it is the name of an existing file.
QString SweepOptions::readTraces(QStringList &traces) const
{
    for (const QString &given : m_parser.values(m_traces))
        traces += QFileInfo::exists(given) ? QStringList(given) : given.split(u',');
    if (traces.contains(QString()))
        return tr("--%1 takes the name of a file.").arg(nameOf(m_traces));
    return traces.size() > kMostTraces ? tr("--%1 takes at most %2 files.").arg(nameOf(m_traces)).arg(kMostTraces)
                                       : QString();
}

QString SweepOptions::readPort(std::optional<quint16> &port) const
{
    if (!isSet(m_listen))
        return {};
    bool ok = false;
    const int number = value(m_listen).toInt(&ok);
    if (!ok || number < 1 || number > std::numeric_limits<quint16>::max())
        return tr("--%1 takes a port from 1 to 65535, not \"%2\".").arg(nameOf(m_listen), value(m_listen));
    port = static_cast<quint16>(number);
    return {};
}

// Returns an error message if options conflict or a required option is missing.
QString SweepOptions::misplacedOption(const ToolRequest &request) const
{
    const auto exclude = [](const QCommandLineOption &one, const QCommandLineOption &other) {
        return tr("--%1 and --%2 cannot be combined.").arg(nameOf(one), nameOf(other));
    };
    for (const QCommandLineOption &measuring : {m_start, m_stop, m_sweeps, m_average})
        if (isSet(m_input) && isSet(measuring))
            return exclude(m_input, measuring);
    for (const QCommandLineOption &other : {m_start, m_stop, m_sweeps, m_average, m_input, m_reference, m_results,
                                            m_fixture, m_limits, m_format, m_output, m_picture, m_traces})
        if (isSet(m_listen) && isSet(other))
            return exclude(m_listen, other);
    if (isSet(m_average) && isSet(m_sweeps))
        return exclude(m_average, m_sweeps);
    if (isSet(m_fixture) && request.results != ResultKind::Crystal)
        return tr("--%1 needs %2.").arg(nameOf(m_fixture), QStringLiteral("--results crystal"));
    if (isSet(m_traces) && !isSet(m_picture))
        return tr("--%1 needs %2.").arg(nameOf(m_traces), QStringLiteral("--picture"));
    if (isStandardOutput(request.output))
        for (const QCommandLineOption &printing : {m_results, m_limits, m_format})
            if (isSet(printing) && request.hasReport())
                return tr("--%1 and --%2 cannot both use standard output.").arg(nameOf(m_output), nameOf(printing));
    return {};
}

// Returns an error message if an output would overwrite another output or an input.
QString SweepOptions::clashOfFiles(const ToolRequest &request) const
{
    if (isSet(m_output) && isSet(m_picture) && isSameFile(request.output, request.picture))
        return tr("--output and --picture name the same file.");
    for (const QCommandLineOption &target : {m_output, m_picture}) {
        const auto clashes = [&](const QString &source) { return isSet(target) && isSameFile(value(target), source); };
        for (const QCommandLineOption &source : {m_input, m_reference, m_limits})
            if (isSet(source) && clashes(value(source)))
                return tr("--%1 and --%2 name the same file.").arg(nameOf(target), nameOf(source));
        for (const QString &trace : request.traces)
            if (clashes(trace))
                return tr("--%1 and --%2 name the same file.").arg(nameOf(target), nameOf(m_traces));
    }
    return {};
}

QString SweepOptions::clashWithSettings(const QString &settingsFile) const
{
    for (const QCommandLineOption &file : {m_output, m_picture})
        if (isSet(file) && isSameFile(value(file), settingsFile))
            return tr("--%1 is the settings file.").arg(nameOf(file));
    return {};
}

} // namespace calvorn
