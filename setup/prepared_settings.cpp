// SPDX-License-Identifier: MIT
#include "setup/prepared_settings.h"

#include "platform/profile_file.h"

#include <QFile>

// A resource of a static library has to be asked for, outside of any namespace.
static void initialiseResource()
{
    Q_INIT_RESOURCE(prepared_settings);
}

namespace calvorn {

QString preparedSettings()
{
    initialiseResource();
    return QStringLiteral(":/settings/Calvorn.ini");
}

bool isFirstStart(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return true;
    return file.open(QIODevice::ReadOnly) && file.readAll().trimmed().isEmpty();
}

bool writePreparedSections(const QString &path)
{
    QVector<ProfileEntry> entries;
    for (const char *section : {"Interface1", "Interface2", "Interface3", "Simulator"})
        entries += readProfileSection(preparedSettings(), QString::fromLatin1(section));
    return writeProfileStrings(path, entries);
}

} // namespace calvorn
