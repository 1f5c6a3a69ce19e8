// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

namespace calvorn {

// Reads the fields of a comma-separated text one by one, across line ends (CR LF, LF or CR). Quoted fields keep the
// text between the double quotes; unquoted ones lose surrounding blanks. The device is read in pieces, so the file
// may have any size.
class CsvFields
{
public:
    // The longest accepted field, in bytes; far more than any number or heading of a sweep file needs.
    static constexpr qsizetype kLongestField = 1024;

    explicit CsvFields(QIODevice &device)
        : m_device(device)
    {
    }

    // Returns the next field. Throws RuntimeError(File) at the end of the text and for a field that is too long.
    QString next();

    // The line in which the next field starts, from 1.
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
