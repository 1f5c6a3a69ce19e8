// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"
#include "tools/single_sweep.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

#include <optional>

namespace calvorn {

// What a user wants of calvorn-sweep. The name of a file that is not wanted is empty.
struct ToolRequest
{
    SweepRequest sweep;
    QString output;
    QString picture;
    QString reference;  // results and picture are relative to this sweep
    QStringList traces; // drawn in the picture, too
    QString limits;
    std::optional<ResultKind> results;
    double fixtureOhms = kDefaultFixtureOhms;
    bool isJson = false;
    std::optional<quint16> port; // waits for SCPI clients in place of all that

    // Whether standard output gets results or a verdict, also where files are written.
    bool hasReport() const { return isJson || results || !limits.isEmpty(); }
    // Whether it gets the response and the plot.
    bool hasResponse() const { return output.isEmpty() && picture.isEmpty() && !isJson && !results; }
};

// The name of a kind of results, as an option and JSON have it.
QString nameOf(ResultKind kind);

// The options of the command line.
class SweepOptions
{
    Q_DECLARE_TR_FUNCTIONS(SweepTool)

public:
    SweepOptions();

    // Returns what is wrong with the arguments, in a sentence; an empty text when nothing is. Prints help or version
    // and ends the program where it is asked to.
    QString read(const QStringList &arguments, ToolRequest &request);

    // An output that would replace the settings: a sentence, otherwise an empty text.
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
