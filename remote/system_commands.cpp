// SPDX-License-Identifier: MIT
// Errors, version, command list, interface and number format.
#include "instrument/interface_kind.h"
#include "remote/scpi_command.h"

namespace calvorn {

namespace {

void takeError(ScpiCall &call)
{
    call.answer(answerOf(call.client.errors.take()));
}

void askErrorCount(ScpiCall &call)
{
    call.answer(nr1(call.client.errors.count()));
}

void askVersion(ScpiCall &call)
{
    call.answer("1999.0");
}

void askHeaders(ScpiCall &call)
{
    QByteArray lines;
    for (const ScpiCommand &command : scpiCommands()) {
        const char *kind = command.set && command.query ? "" : command.query ? "/qonly/" : "/nquery/";
        lines += command.pattern[0] == '*' || command.pattern[0] == '[' ? "" : ":";
        lines += QByteArray(command.pattern) + kind + '\n';
    }
    call.answer(block(lines));
}

QByteArray nameOf(std::int16_t interfaceType)
{
    switch (interfaceType) {
    case kInterfacePic:
        return "PIC";
    case kInterfaceLpt:
        return "LPT";
    case kInterfaceVna:
        return "VNA";
    default:
        return "NONE";
    }
}

void askInterfaces(ScpiCall &call)
{
    QByteArrayList names;
    for (const InterfaceKind &kind : interfaceKinds())
        names.append(quoted(nameOf(kind.number)));
    call.answer(names.join(','));
}

void askInterface(ScpiCall &call)
{
    call.answer(quoted(nameOf(call.target.configuration().interfaceType)));
}

void setFormat(ScpiCall &call)
{
    const bool isBinary = call.choice(0, {"ASCii", "REAL"}) == 1;
    if (call.count() > 1) {
        const int bits = call.whole(1, {0.0, 64.0, 0.0});
        if (bits != (isBinary ? 64 : 0))
            throw ScpiError{kScpiIllegalParameterValue, isBinary ? "REAL,64" : "ASCii"};
    }
    call.client.isBinary = isBinary;
}

void askFormat(ScpiCall &call)
{
    call.answer(call.client.isBinary ? "REAL,64" : "ASC,0");
}

} // namespace

std::vector<ScpiCommand> systemCommands()
{
    return {
        {"SYSTem:ERRor[:NEXT]", nullptr, "", "returns and removes the oldest error; 0: no error", nullptr, takeError},
        {"SYSTem:ERRor:COUNt", nullptr, "", "errors in the queue, at most 30", nullptr, askErrorCount},
        {"SYSTem:VERSion", nullptr, "", "the version of SCPI: 1999.0", nullptr, askVersion},
        {"SYSTem:HELP:HEADers", nullptr, "", "all commands, in a block", nullptr, askHeaders},
        {"INSTrument:CATalog", nullptr, "", "the interfaces that the program knows", nullptr, askInterfaces},
        {"INSTrument:SELect", nullptr, "", "the interface in use", nullptr, askInterface},
        {"FORMat[:DATA]", "ASCii|REAL[,64]", "",
         "format of number lists: text, or a block of 64-bit numbers, most significant byte first", setFormat,
         askFormat, 2, 0, true},
    };
}

} // namespace calvorn
