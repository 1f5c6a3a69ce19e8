// SPDX-License-Identifier: MIT
#include "platform/file_replacement.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

namespace calvorn {

bool replaceFile(const QString &path, const QByteArray &content, QString *reason)
{
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        if (reason)
            *reason = QCoreApplication::translate("FileReplacement", "it is not a file");
        return false;
    }
    QSaveFile file(path);
    const bool opened = file.open(QIODevice::WriteOnly);
    errno = 0;
    // A disk that fills up takes the first part and reports a short write; the commit alone would let that pass.
    const bool whole = opened && file.write(content) == content.size() && file.flush() && file.size() == content.size();
    const int error = errno;
    if (whole && file.commit())
        return true;
    if (reason)
        *reason = opened && !whole && error != 0 ? QString::fromLocal8Bit(std::strerror(error)) : file.errorString();
    return false;
}

} // namespace calvorn
