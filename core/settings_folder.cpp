// SPDX-License-Identifier: MIT
#include "core/settings_folder.h"

#include "core/configuration.h"
#include "platform/bounded_file.h"
#include "platform/file_replacement.h"
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

QString fileIn(const QString &folder)
{
    return folder + u'/' + QString::fromLatin1(kSettingsFileName);
}

// A file is replaced by one that is written beside it, so the folder decides and not the file.
bool canBeWritten(const QString &folder)
{
    return faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

} // namespace

QString settingsFolder(const QString &programs)
{
    return canBeWritten(programs) ? programs : folderOfUser(QStandardPaths::GenericConfigLocation);
}

QString settingsToRead(const QString &programs)
{
    const QString own = fileIn(settingsFolder(programs));
    for (const QString &file : {own, fileIn(folderOfUser(QStandardPaths::GenericDataLocation)), fileIn(programs)}) {
        if (QFileInfo::exists(file))
            return file;
        // Beside the programs there is one place.
        if (own == fileIn(programs))
            break;
    }
    return own;
}

bool makeSettingsFolder(const QString &programs)
{
    const QString folder = settingsFolder(programs);
    if (QDir().mkpath(QFileInfo(folder).path()))
        QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFileInfo(folder).isDir();
}

// Without a copy the program starts as with no settings, and says so by opening the configuration.
void copySettingsOnFirstUse(const QString &programs)
{
    const QString target = fileIn(settingsFolder(programs));
    const QString source = settingsToRead(programs);
    if (source == target)
        return;
    const BoundedFile file = readBounded(source);
    if (file.state == BoundedFile::State::Read)
        replaceFile(target, file.content);
}

} // namespace calvorn
