// SPDX-License-Identifier: MIT
#pragma once

#include "remote/remote_target.h"
#include "remote/scpi_message.h"
#include "remote/scpi_status.h"
#include "remote/scpi_value.h"

#include <QByteArray>
#include <QList>

#include <functional>
#include <initializer_list>
#include <span>
#include <vector>

namespace calvorn {

// What a client has chosen for itself, and what it is told.
struct ScpiClient
{
    // In what its amplitudes are: the units of the linear scale, dB as the scale in use has it, or dBm.
    enum class Unit { Volt, Decibel, DecibelMilliwatt };

    ScpiErrorQueue errors;
    ScpiStatus status;
    Unit unit = Unit::Decibel;
    bool isBinary = false;  // rows of numbers come as a block of REAL,64
    bool completes = false; // *OPC waits for the end of the sweep

    // Keeps the error, and marks its class in the event register.
    void note(const ScpiError &error);
};

// A command or a query that is being carried out: its parameters, and where its answer goes.
class ScpiCall
{
public:
    ScpiCall(RemoteTarget &controlled, ScpiClient &asking, const ScpiUnit &unit, const QList<int> &suffixes)
        : target(controlled)
        , client(asking)
        , m_unit(unit)
        , m_suffixes(suffixes)
    {
    }

    RemoteTarget &target;
    ScpiClient &client;

    // Of the mnemonics that have one in the pattern, in their order.
    int suffix(int index = 0) const { return m_suffixes.value(index, 1); }

    // --- parameters, from 0 on; each throws a ScpiError where there is none, or another one ---

    int count() const { return static_cast<int>(m_unit.parameters.size()); }
    double number(int index, ScpiQuantity quantity, const ScpiRange &range) const;
    int whole(int index, const ScpiRange &range) const;
    bool boolean(int index) const;
    // The index of the word in the list, as "FILTer".
    int choice(int index, std::initializer_list<const char *> words) const;
    QString text(int index) const; // a string
    // A string that names a file by its whole path; what is there already must be an ordinary file.
    QString file(int index) const;
    const ScpiParameter &parameter(int index) const;

    // --- answers ---

    void answer(const QByteArray &text) { m_answer = text; }
    // In the format of the client.
    void answer(std::span<const double> numbers);
    const QByteArray &answer() const { return m_answer; }

    // The client gets nothing more carried out until this is true; asked whenever something has happened. It may give
    // the answer, and may throw. Milliseconds: when it has not become true by then, -200 is told.
    void wait(std::function<bool(ScpiCall &)> isDone, int patience);
    const std::function<bool(ScpiCall &)> &waitsFor() const { return m_isDone; }
    int waits() const { return m_waits; } // how often it has begun to wait
    int patience() const { return m_patience; }

private:
    const ScpiUnit &m_unit;
    QList<int> m_suffixes;
    QByteArray m_answer;
    std::function<bool(ScpiCall &)> m_isDone;
    int m_patience = 0;
    int m_waits = 0;
};

// An entry of the table of commands.
struct ScpiCommand
{
    const char *pattern; // of the header, see ScpiPattern
    // Of the command, as the manual shows them: "<frequency>|MIN|MAX|DEF"; null: it is a query only.
    const char *parameters;
    // Of the query, "" for none; null: there is no query.
    const char *queryParameters;
    const char *summary;
    void (*set)(ScpiCall &);
    void (*query)(ScpiCall &);
    int mostParameters = 0;      // of the command
    int mostQueryParameters = 0; // of the query
    bool isQuiet = false;        // the command changes nothing that a dialog of the window could be about
    bool queryNeedsHardware = false;
};

// All of them, in the order of the manual.
std::span<const ScpiCommand> scpiCommands();

// The parts of the table.
std::vector<ScpiCommand> commonCommands();
std::vector<ScpiCommand> systemCommands();
std::vector<ScpiCommand> sweepCommands();
std::vector<ScpiCommand> traceCommands();
std::vector<ScpiCommand> resultCommands();
std::vector<ScpiCommand> outputCommands();
std::vector<ScpiCommand> fileCommands();

} // namespace calvorn
