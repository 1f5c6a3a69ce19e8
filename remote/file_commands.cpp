// SPDX-License-Identifier: MIT
// Files and the picture.
#include "core/runtime_error.h"
#include "remote/scpi_command.h"

#include <QFileInfo>

namespace calvorn {

namespace {

void storeSweep(ScpiCall &call)
{
    const QString path = call.file(0);
    if (!call.target.instrument().table().hasSweep())
        throw ScpiError{kScpiDataCorruptOrStale, "there is no sweep yet"};
    call.target.storeSweep(path);
}

void storePicture(ScpiCall &call)
{
    call.target.storePicture(call.file(0));
}

void loadSweep(ScpiCall &call)
{
    const QString path = call.file(0);
    if (!QFileInfo::exists(path))
        throw ScpiError{kScpiFileNameNotFound, path.toUtf8()};
    if (call.target.instrument().isSweeping())
        throw ScpiError{kScpiSettingsConflict, "a sweep is running"};
    try {
        call.target.loadSweep(path);
    } catch (const RuntimeError &error) {
        // All errors in the file's contents have the same number.
        throw ScpiError{kScpiMassStorageError, error.message().toUtf8()};
    }
}

void askPicture(ScpiCall &call)
{
    call.answer(block(call.target.picture()));
}

} // namespace

std::vector<ScpiCommand> fileCommands()
{
    return {
        {"MMEMory:STORe:SWEep", "<file>", nullptr, "writes the last sweep as a CSV file", storeSweep, nullptr, 1},
        {"MMEMory:STORe:PICTure", "<file>", nullptr,
         "writes the graph as a PNG or SVG file, depending on the file name extension", storePicture, nullptr, 1},
        {"MMEMory:LOAD:SWEep", "<file>", nullptr, "reads a sweep file into the table", loadSweep, nullptr, 1},
        {"HCOPy:DATA", nullptr, "", "the graph as a PNG, in a block", nullptr, askPicture},
    };
}

} // namespace calvorn
