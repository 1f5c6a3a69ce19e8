// SPDX-License-Identifier: MIT
#include "platform/bounded_file.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace calvorn {

namespace {

BoundedFile refused(const QString &reason)
{
    return {BoundedFile::State::Refused, {}, reason};
}

QString translated(const char *text)
{
    return QCoreApplication::translate("BoundedFile", text);
}

bool isSame(const struct stat &before, const struct stat &after)
{
    return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

// Resources are compiled into the program; the operating system cannot open them.
BoundedFile readResource(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return {BoundedFile::State::Read, file.readAll(), {}};
}

} // namespace

BoundedFile readBounded(const QString &path)
{
    if (path.startsWith(u':'))
        return readResource(path);
    // Without O_NONBLOCK, opening a pipe blocks until it has a writer.
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0 && (errno == ENOENT || errno == ENOTDIR))
        return {};
    if (descriptor < 0)
        return refused(QString::fromLocal8Bit(std::strerror(errno)));
    QFile file;
    struct stat before = {};
    struct stat after = {};
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle) ||
        fstat(descriptor, &before) != 0 || !S_ISREG(before.st_mode))
        return refused(translated(QT_TRANSLATE_NOOP("BoundedFile", "it is not a file")));
    if (before.st_size > kLargestFile)
        return refused(translated(QT_TRANSLATE_NOOP("BoundedFile", "it is larger than %1 MB")).arg(kLargestFile >> 20));
    QByteArray content = file.read(before.st_size + 1); // one extra byte, to detect a file that has grown
    if (file.error() != QFileDevice::NoError)
        return refused(file.errorString());
    if (fstat(descriptor, &after) != 0 || !isSame(before, after) || content.size() != after.st_size)
        return refused(translated(QT_TRANSLATE_NOOP("BoundedFile", "it changed while being read")));
    return {BoundedFile::State::Read, std::move(content), {}};
}

} // namespace calvorn
