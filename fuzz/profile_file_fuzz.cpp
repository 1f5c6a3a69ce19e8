// SPDX-License-Identifier: MIT
// Any file: what is written is read back, and writing keeps every other value.
#include "platform/profile_file.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

using namespace calvorn;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("Calvorn.ini"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        std::abort();
    file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size));
    file.close();

    const QString section = QStringLiteral("Calvorn");
    const QString other = readProfileString(path, section, QStringLiteral("Start"));
    if (other.toUtf8().size() > 3 * kProfileBufferSize)
        std::abort();
    if (!writeProfileString(path, section, QStringLiteral("Scale"), QStringLiteral("4")))
        std::abort();
    if (readProfileString(path, section, QStringLiteral("Scale")) != QStringLiteral("4"))
        std::abort();
    if (readProfileString(path, section, QStringLiteral("Start")) != other)
        std::abort();
    if (!clearProfileSection(path, section))
        std::abort();
    return readProfileString(path, section, QStringLiteral("Scale")).isEmpty() ? 0 : (std::abort(), 0);
}
