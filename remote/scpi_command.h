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

// Time for the hardware to stop after a sweep, ms.
inline constexpr int kStopPatience = 10'000;

// The settings and the status of one client.
struct ScpiClient
{
    // The unit of amplitudes: volts as on the linear scale, dB as on the dB scale in use, or dBm.
    enum class Unit { Volt, Decibel, DecibelMilliwatt };

    ScpiErrorQueue errors;
    ScpiStatus status;
    Unit unit = Unit::Decibel;
    bool isBinary = false;  // rows of numbers are sent as a block of REAL,64
    bool completes = false; // *OPC waits for the end of the sweep

    // Queues the error and sets the bit of its class in the event register.
    void note(const ScpiError &error);
};

// A command or query during its execution: its parameters and its answer.
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

    // The numeric suffix of the mnemonic number "index" among those that have one in the pattern.
    int suffix(int index = 0) const { return m_suffixes.value(index, 1); }

    // --- parameters, numbered from 0; each function throws a ScpiError if the parameter is missing or unsuitable ---

    int count() const { return static_cast<int>(m_unit.parameters.size()); }
    double number(int index, ScpiQuantity quantity, const ScpiRange &range) const;
    int whole(int index, const ScpiRange &range) const;
    bool boolean(int index) const;
    // Returns the index of the word in a list such as {"FILTer", "NOTCh"}.
    int choice(int index, std::initializer_list<const char *> words) const;
    QString text(int index) const; // a string
    // A string with the absolute path of a file; an existing file must be an ordinary file.
    QString file(int index) const;
    const ScpiParameter &parameter(int index) const;

    // --- answers ---

    void answer(const QByteArray &text) { m_answer = text; }
    // Answers in the client's format.
    void answer(std::span<const double> numbers);
    const QByteArray &answer() const { return m_answer; }

    // Holds up the client's next commands until isDone returns true. isDone is called at once and at each
    // RemoteTarget::sweepDone(); it may set the answer and may throw. Error -200 after "patience" milliseconds; 0 waits
    // without limit.
    void wait(std::function<bool(ScpiCall &)> isDone, int patience);
    const std::function<bool(ScpiCall &)> &waitsFor() const { return m_isDone; }
    int waits() const { return m_waits; } // how often wait() was called
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
    // Parameters of the command, as the manual shows them: "<frequency>|MIN|MAX|DEF"; null if there is only a query.
    const char *parameters;
    // Parameters of the query, "" if it has none; null if there is no query.
    const char *queryParameters;
    const char *summary;
    void (*set)(ScpiCall &);
    void (*query)(ScpiCall &);
    int mostParameters = 0;      // of the command
    int mostQueryParameters = 0; // of the query
    bool isQuiet = false;        // the command affects neither window nor hardware: allowed while a dialog is open
    bool queryNeedsHardware = false;
};

// All commands, in the order of the manual.
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
