// SPDX-License-Identifier: MIT
#include "data/readable_file.h"

#include "core/runtime_error.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace calvorn {

namespace {

struct FileTexts
{
    Q_DECLARE_TR_FUNCTIONS(ReadableFile)
};

} // namespace

void openToRead(QFile &file)
{
    const auto refuse = [&file](const QString &reason) {
        throw RuntimeError(RuntimeError::Kind::File,
                           FileTexts::tr("%1 cannot be read: %2.").arg(file.fileName(), reason));
    };
    // Opening a pipe would block until its other end is opened.
    if (QFileInfo::exists(file.fileName()) && !QFileInfo(file.fileName()).isFile())
        refuse(FileTexts::tr("it is not a file"));
    if (!file.open(QIODevice::ReadOnly))
        refuse(file.errorString());
}

} // namespace calvorn
