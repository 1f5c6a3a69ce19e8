// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"
#include "tools/single_sweep.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

#include <optional>

namespace calvorn {

// The parsed command line of calvorn-sweep. Unused file names are empty.
struct ToolRequest
{
    SweepRequest sweep;
    QString output;
    QString picture;
    QString reference;  // results and picture are relative to this sweep
    QStringList traces; // additional curves in the picture
    QString limits;
    std::optional<ResultKind> results;
    double fixtureOhms = kDefaultFixtureOhms;
    bool isJson = false;
    std::optional<quint16> port; // wait for SCPI clients instead

    // Returns true if results or a verdict are printed, even if files are written as well.
    bool hasReport() const { return isJson || results || !limits.isEmpty(); }
    // Returns true if the response and the plot are printed.
    bool hasResponse() const { return output.isEmpty() && picture.isEmpty() && !isJson && !results; }
};

// Returns the name of a result kind as used in options and JSON.
QString nameOf(ResultKind kind);

// The command-line options.
class SweepOptions
{
    Q_DECLARE_TR_FUNCTIONS(SweepTool)

public:
    SweepOptions();

    // Returns an error message for invalid arguments, otherwise an empty string. For --help and --version, prints the
    // text and exits.
    QString read(const QStringList &arguments, ToolRequest &request);

    // Returns an error message if an output would overwrite the settings, otherwise an empty string.
    QString clashWithSettings(const QString &settingsFile) const;

private:
    QString readWholeNumber(const QCommandLineOption &option, std::optional<std::int32_t> &number) const;
    QString readChoice(const QCommandLineOption &option, const QStringList &names, std::optional<int> &index) const;
    QString readAverage(SweepRequest &request) const;
    QString readScale(SweepRequest &request) const;
    QString readReport(ToolRequest &request) const;
    QString readTraces(QStringList &traces) const;
    QString readPort(std::optional<quint16> &port) const;
    QString misplacedOption(const ToolRequest &request) const;
    QString clashOfFiles(const ToolRequest &request) const;
    bool isSet(const QCommandLineOption &option) const { return m_parser.isSet(option); }
    QString value(const QCommandLineOption &option) const { return m_parser.value(option); }

    QCommandLineParser m_parser;
    QCommandLineOption m_settings;
    QCommandLineOption m_start;
    QCommandLineOption m_stop;
    QCommandLineOption m_sweeps;
    QCommandLineOption m_average;
    QCommandLineOption m_scale;
    QCommandLineOption m_input;
    QCommandLineOption m_reference;
    QCommandLineOption m_results;
    QCommandLineOption m_fixture;
    QCommandLineOption m_limits;
    QCommandLineOption m_format;
    QCommandLineOption m_output;
    QCommandLineOption m_picture;
    QCommandLineOption m_traces;
    QCommandLineOption m_listen;
};

} // namespace calvorn
