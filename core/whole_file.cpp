// SPDX-License-Identifier: MIT
#include "core/whole_file.h"

#include "core/runtime_error.h"

#include <QSaveFile>

namespace calvorn {

void writeWholeFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        throw RuntimeError(RuntimeError::Kind::File, path + QStringLiteral(": ") + file.errorString());
}

} // namespace calvorn
