// SPDX-License-Identifier: MIT
#include "core/whole_file.h"

#include "core/runtime_error.h"
#include "platform/file_replacement.h"

namespace calvorn {

void writeWholeFile(const QString &path, const QByteArray &content)
{
    QString reason;
    if (!replaceFile(path, content, &reason))
        throw RuntimeError(RuntimeError::Kind::File, path + QStringLiteral(": ") + reason);
}

} // namespace calvorn
