// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"
#include "tools/single_sweep.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

#include <optional>

namespace calvorn {

// A request to calvorn-sweep. Unused file names are empty.
struct ToolRequest
{
    SweepRequest sweep;
    QString output;
    QString picture;
    QString reference;  // results and picture are relative to this sweep
    QStringList traces; // additional curves of the picture
    QString limits;
    std::optional<ResultKind> results;
    double fixtureOhms = kDefaultFixtureOhms;
    bool isJson = false;
    std::optional<quint16> port; // wait for SCPI clients instead

    // Whether standard output gets results or a verdict, even if files are written as well.
    bool hasReport() const { return isJson || results || !limits.isEmpty(); }
    // Whether standard output gets the response and the plot.
    bool hasResponse() const { return output.isEmpty() && picture.isEmpty() && !isJson && !results; }
};

// The name of a kind of results in options and JSON.
QString nameOf(ResultKind kind);

// The options of the command line.
class SweepOptions
{
    Q_DECLARE_TR_FUNCTIONS(SweepTool)

public:
    SweepOptions();

    // Returns a sentence about wrong arguments, or an empty text. For --help and --version, prints the text and ends
    // the program.
    QString read(const QStringList &arguments, ToolRequest &request);

    // Returns a sentence if an output would replace the settings, otherwise an empty text.
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
