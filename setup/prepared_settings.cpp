// SPDX-License-Identifier: MIT
#include "setup/prepared_settings.h"

#include "platform/profile_file.h"

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
    const BoundedFile file = readBounded(path);
    return file.state != BoundedFile::State::Refused && file.content.trimmed().isEmpty();
}

bool writePreparedSections(const QString &path)
{
    const Profile prepared(preparedSettings());
    QVector<ProfileEntry> entries;
    for (const char *section : {"Interface1", "Interface2", "Interface3", "Simulator"})
        entries += prepared.entries(QString::fromLatin1(section));
    return writeProfileStrings(path, entries);
}

} // namespace calvorn
