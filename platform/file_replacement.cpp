// SPDX-License-Identifier: MIT
#include "platform/file_replacement.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace calvorn {

namespace {

// Returns why the path cannot name a regular file, or an empty string if it can.
QString refusalOf(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return errno == ENOENT ? QString() : QString::fromLocal8Bit(std::strerror(errno));
    return S_ISREG(status.st_mode) ? QString() : QCoreApplication::translate("FileReplacement", "it is not a file");
}

} // namespace

bool replaceFile(const QString &path, const QByteArray &content, QString *reason)
{
    const QString refusal = refusalOf(path);
    if (!refusal.isEmpty()) {
        if (reason)
            *reason = refusal;
        return false;
    }
    QSaveFile file(path);
    const bool opened = file.open(QIODevice::WriteOnly);
    errno = 0;
    // A nearly full disk accepts the first part and reports a short write, which commit() alone would not detect.
    const bool whole = opened && file.write(content) == content.size() && file.flush() && file.size() == content.size();
    const int error = errno;
    if (whole && file.commit())
        return true;
    if (reason)
        *reason = opened && !whole && error != 0 ? QString::fromLocal8Bit(std::strerror(error)) : file.errorString();
    return false;
}

} // namespace calvorn
