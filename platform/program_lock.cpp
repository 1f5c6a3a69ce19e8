// SPDX-License-Identifier: MIT
#include "platform/program_lock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace calvorn {

ProgramLock::ProgramLock(const QString &programFolder)
    : m_descriptor(open(QFile::encodeName(programFolder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_descriptor >= 0 && flock(m_descriptor, LOCK_EX | LOCK_NB) != 0)
        m_ours = errno != EWOULDBLOCK;
}

ProgramLock::~ProgramLock()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

} // namespace calvorn
