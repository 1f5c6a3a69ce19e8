// SPDX-License-Identifier: MIT
#include "core/program_folders.h"

#include "core/configuration.h"
#include "platform/bounded_file.h"
#include "platform/file_replacement.h"
#include "protocol/server_start.h"
#include "protocol/setting_key.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <fcntl.h>
#include <unistd.h>

namespace calvorn {

namespace {

QString folderOfUser(QStandardPaths::StandardLocation location)
{
    return QStandardPaths::writableLocation(location) + QStringLiteral("/calvorn");
}

QString settingsIn(const QString &folder)
{
    return folder + u'/' + QString::fromLatin1(kSettingsFileName);
}

QString serverIn(const QString &folder)
{
    return folder + u'/' + QString::fromLatin1(kServerName);
}

// A file is replaced by a new file written beside it, so the folder's permissions matter, not those of the file.
bool canBeWritten(const QString &folder)
{
    return faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

QString seenFrom(const QString &programs, const char *relative)
{
    return QDir::cleanPath(programs + u'/' + QString::fromUtf8(relative));
}

} // namespace

QString ProgramFolders::serverFile() const
{
    return serverIn(server);
}

QString ProgramFolders::settingsFile() const
{
    return settingsIn(settings);
}

QString ProgramFolders::manualFile() const
{
    return data + QStringLiteral("/Calvorn.qch");
}

ProgramFolders programFolders(const QString &programs)
{
    const QString ofUser = folderOfUser(QStandardPaths::GenericConfigLocation);
    const QString server = seenFrom(programs, CALVORN_SERVER_FROM_PROGRAMS);
    if (!QFileInfo::exists(serverIn(programs)) && QFileInfo::exists(serverIn(server)))
        return {server, seenFrom(programs, CALVORN_DATA_FROM_PROGRAMS), ofUser};
    return {programs, programs, canBeWritten(programs) ? programs : ofUser};
}

QString settingsToRead(const ProgramFolders &folders)
{
    const QString own = folders.settingsFile();
    if (folders.settings == folders.data)
        return own;
    const QString ofVersionTwo = settingsIn(folderOfUser(QStandardPaths::GenericDataLocation));
    for (const QString &file : {own, ofVersionTwo, settingsIn(folders.data)})
        if (QFileInfo::exists(file))
            return file;
    return own;
}

bool makeSettingsFolder(const ProgramFolders &folders)
{
    if (QDir().mkpath(QFileInfo(folders.settings).path()))
        QDir().mkdir(folders.settings, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFileInfo(folders.settings).isDir();
}

// If copying fails, the program starts without settings and opens the configuration, as on the very first start.
void copySettingsOnFirstUse(const ProgramFolders &folders)
{
    const QString target = folders.settingsFile();
    const QString source = settingsToRead(folders);
    if (source == target)
        return;
    const BoundedFile file = readBounded(source);
    if (file.state == BoundedFile::State::Read)
        replaceFile(target, file.content);
}

} // namespace calvorn
