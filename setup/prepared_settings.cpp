// SPDX-License-Identifier: MIT
#include "setup/prepared_settings.h"

#include "platform/profile_file.h"
#include "protocol/simulator_keys.h"
#include "setup/set_up_values.h"

// The resource of a static library must be initialised explicitly, outside of any namespace.
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
    for (const std::int16_t interfaceType : {kInterfacePic, kInterfaceLpt, kInterfaceVna})
        entries += prepared.entries(QString::fromLatin1(preparedSection(interfaceType)));
    entries += prepared.entries(QString::fromLatin1(kSimulatorSection));
    return writeProfileStrings(path, entries);
}

} // namespace calvorn
