// SPDX-License-Identifier: MIT
#include "tools/output.h"

#include "core/runtime_error.h"
#include "core/whole_file.h"
#include "platform/process_guard.h"
#include "tools/interruption.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace calvorn {

namespace {

constexpr int kPollMs = 50;

std::optional<int> descriptorOf(const QString &path)
{
    if (path == u"-" || path == u"/dev/stdout")
        return STDOUT_FILENO;
    if (path == u"/dev/stderr")
        return STDERR_FILENO;
    for (const QString &folder : {QStringLiteral("/dev/fd/"), QStringLiteral("/proc/self/fd/")}) {
        bool ok = false;
        const int number = path.mid(folder.size()).toInt(&ok);
        if (path.startsWith(folder) && ok && number >= 0)
            return number;
    }
    return std::nullopt;
}

// Returns 0 or an errno value.
int writeAll(int descriptor, QByteArrayView content)
{
    while (!content.isEmpty()) {
        // The reader may be slow, and the user may interrupt the program while it waits. The signal interrupts poll(),
        // too.
        pollfd room{descriptor, POLLOUT, 0};
        const auto isFull = [&room] {
            const int ready = poll(&room, 1, kPollMs);
            return ready == 0 || (ready < 0 && errno == EINTR);
        };
        while (isFull()) {
            letStop();
            if (interruption() != 0)
                return EINTR;
        }
        const ssize_t written = write(descriptor, content.data(), static_cast<std::size_t>(content.size()));
        if (written >= 0) {
            content = content.sliced(written);
        } else if (errno != EAGAIN && errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

} // namespace

bool isDescriptor(const QString &path)
{
    return descriptorOf(path).has_value();
}

bool isStandardOutput(const QString &path)
{
    return descriptorOf(path) == STDOUT_FILENO;
}

void writeResult(const QString &path, const QByteArray &content)
{
    const std::optional<int> descriptor = descriptorOf(path);
    if (!descriptor) {
        writeWholeFile(path, content);
        return;
    }
    const int error = writeAll(*descriptor, content);
    if (error == 0)
        return;
    const QString name = isStandardOutput(path) ? QCoreApplication::translate("SweepTool", "standard output") : path;
    throw RuntimeError(RuntimeError::Kind::File,
                       name + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(error)));
}

bool isSameFile(const QString &one, const QString &other)
{
    const auto place = [](const QString &path) {
        const QFileInfo file(path);
        return file.exists() ? file.canonicalFilePath()
                             : QFileInfo(file.path()).canonicalFilePath() + u'/' + file.fileName();
    };
    const auto look = [](const QString &path, struct stat &status) {
        const std::optional<int> descriptor = descriptorOf(path);
        return (descriptor ? fstat(*descriptor, &status) : stat(QFile::encodeName(path).constData(), &status)) == 0;
    };
    struct stat first = {};
    struct stat second = {};
    const bool exist = look(one, first) && look(other, second);
    if (!exist && (isDescriptor(one) || isDescriptor(other)))
        return false;
    return exist ? first.st_dev == second.st_dev && first.st_ino == second.st_ino : place(one) == place(other);
}

} // namespace calvorn
