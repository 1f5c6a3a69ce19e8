// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

namespace calvorn {

// Reads the fields of comma-separated text one by one, across line endings (CR LF, LF or CR). A quoted field is the
// text between the double quotes; unquoted fields are trimmed. The device is read in chunks, so the file may have any
// size.
class CsvFields
{
public:
    // Maximum field length in bytes; far more than any number or heading in a sweep file needs.
    static constexpr qsizetype kLongestField = 1024;

    explicit CsvFields(QIODevice &device)
        : m_device(device)
    {
    }

    // Returns the next field. Throws RuntimeError(File) at the end of the file or if the field is too long.
    QString next();

    // Returns the number of the line on which the next field starts, counting from 1.
    int line() const { return m_line; }

private:
    int peek();
    int take();
    void append(QByteArray &field, int c) const;

    QIODevice &m_device;
    QByteArray m_buffer;
    qsizetype m_position = 0;
    int m_line = 1;
};

} // namespace calvorn
