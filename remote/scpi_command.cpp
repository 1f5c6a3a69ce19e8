// SPDX-License-Identifier: MIT
#include "remote/scpi_command.h"

#include "remote/scpi_pattern.h"

#include <QFileInfo>

namespace calvorn {

void ScpiClient::note(const ScpiError &error)
{
    errors.add(error);
    status.raiseError(error.number);
}

namespace {

template <typename Value>
Value taken(const std::optional<Value> &value, const ScpiError &error)
{
    if (!value)
        throw error;
    return *value;
}

} // namespace

const ScpiParameter &ScpiCall::parameter(int index) const
{
    if (index >= count())
        throw ScpiError{kScpiMissingParameter, m_unit.header};
    return m_unit.parameters[index];
}

double ScpiCall::number(int index, ScpiQuantity quantity, const ScpiRange &range) const
{
    ScpiError error;
    return taken(readNumber(parameter(index), quantity, range, error), error);
}

int ScpiCall::whole(int index, const ScpiRange &range) const
{
    ScpiError error;
    return static_cast<int>(taken(readWhole(parameter(index), range, error), error));
}

bool ScpiCall::boolean(int index) const
{
    ScpiError error;
    return taken(readBoolean(parameter(index), error), error);
}

int ScpiCall::choice(int index, std::span<const char *const> words) const
{
    ScpiError error;
    return taken(readChoice(parameter(index), words, error), error);
}

QString ScpiCall::text(int index) const
{
    ScpiError error;
    return QString::fromUtf8(taken(readText(parameter(index), error), error));
}

QString ScpiCall::file(int index) const
{
    const QString path = text(index);
    const QFileInfo info(path);
    // A relative path would refer to the program's working folder, not the client's.
    if (!info.isAbsolute())
        throw ScpiError{kScpiFileNameError, "the path must begin with a slash"};
    // Reject folders, pipes and devices.
    if (info.exists() && !info.isFile())
        throw ScpiError{kScpiFileNameError, "it is not a file"};
    return path;
}

void ScpiCall::answer(std::span<const double> numbers)
{
    if (client.isBinary) {
        m_answer = realBlock(numbers);
        return;
    }
    m_answer.clear();
    for (const double number : numbers) {
        if (!m_answer.isEmpty())
            m_answer += ',';
        m_answer += nr3(number);
    }
}

void ScpiCall::wait(std::function<bool(ScpiCall &)> isDone, int patience)
{
    m_isDone = std::move(isDone);
    m_patience = patience;
    ++m_waits;
}

std::span<const ScpiCommand> scpiCommands()
{
    static const std::vector<ScpiCommand> all = [] {
        std::vector<ScpiCommand> commands;
        for (const auto &part : {commonCommands(), systemCommands(), sweepCommands(), traceCommands(), resultCommands(),
                                 outputCommands(), fileCommands()})
            commands.insert(commands.end(), part.begin(), part.end());
        return commands;
    }();
    return all;
}

} // namespace calvorn
