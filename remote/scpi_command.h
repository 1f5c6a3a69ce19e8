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

// Time limit for the hardware to stop after a sweep (ms).
inline constexpr int kStopPatience = 10'000;

// The settings and status of one client.
struct ScpiClient
{
    // Amplitude unit: volts as on the linear scale, dB as on the current dB scale, or dBm.
    enum class Unit { Volt, Decibel, DecibelMilliwatt };

    ScpiErrorQueue errors;
    ScpiStatus status;
    Unit unit = Unit::Decibel;
    bool isBinary = false;  // number lists are sent as REAL,64 blocks
    bool completes = false; // *OPC is waiting for the sweep to end

    // Queues the error and sets the bit for its class in the event register.
    void note(const ScpiError &error);
};

// A command or query that is being executed, with its parameters and response.
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

    // Returns the numeric suffix of mnemonic number "index", counting only mnemonics with a suffix in the pattern.
    int suffix(int index = 0) const { return m_suffixes.value(index, 1); }

    // --- parameters, numbered from 0; each function throws a ScpiError if the parameter is missing or invalid ---

    int count() const { return static_cast<int>(m_unit.parameters.size()); }
    double number(int index, ScpiQuantity quantity, const ScpiRange &range) const;
    int whole(int index, const ScpiRange &range) const;
    bool boolean(int index) const;
    // Returns the index of the word in a list such as {"FILTer", "NOTCh"}.
    int choice(int index, std::span<const char *const> words) const;
    int choice(int index, std::initializer_list<const char *> words) const
    {
        return choice(index, std::span(words.begin(), words.size()));
    }
    QString text(int index) const; // string data
    // Returns the absolute path of a file from string data; if the file exists, it must be a regular file.
    QString file(int index) const;
    const ScpiParameter &parameter(int index) const;

    // --- responses ---

    void answer(const QByteArray &text) { m_answer = text; }
    // Responds in the client's format.
    void answer(std::span<const double> numbers);
    const QByteArray &answer() const { return m_answer; }

    // Delays the client's next commands until isDone returns true. isDone is called once after the command returns, and
    // at each RemoteTarget::sweepDone(); it may set the response, and may throw. After "patience" milliseconds, the
    // wait ends with error -200; 0 means no time limit.
    void wait(std::function<bool(ScpiCall &)> isDone, int patience);
    const std::function<bool(ScpiCall &)> &waitsFor() const { return m_isDone; }
    int waits() const { return m_waits; } // number of calls to wait()
    int patience() const { return m_patience; }

private:
    const ScpiUnit &m_unit;
    QList<int> m_suffixes;
    QByteArray m_answer;
    std::function<bool(ScpiCall &)> m_isDone;
    int m_patience = 0;
    int m_waits = 0;
};

// An entry in the command table.
struct ScpiCommand
{
    const char *pattern; // header pattern, see ScpiPattern
    // The command's parameters as shown in the manual: "<frequency>|MIN|MAX|DEF"; null if there is only a query.
    const char *parameters;
    // The query's parameters; "" if it has none, null if there is no query.
    const char *queryParameters;
    const char *summary;
    void (*set)(ScpiCall &);
    void (*query)(ScpiCall &);
    int mostParameters = 0;      // maximum number for the command
    int mostQueryParameters = 0; // maximum number for the query
    bool isQuiet = false;        // the command affects neither window nor hardware; allowed while a dialog is open
    bool queryNeedsHardware = false;
};

// Returns all commands in manual order.
std::span<const ScpiCommand> scpiCommands();

// The sections of the command table.
std::vector<ScpiCommand> commonCommands();
std::vector<ScpiCommand> systemCommands();
std::vector<ScpiCommand> sweepCommands();
std::vector<ScpiCommand> traceCommands();
std::vector<ScpiCommand> resultCommands();
std::vector<ScpiCommand> outputCommands();
std::vector<ScpiCommand> fileCommands();

} // namespace calvorn
