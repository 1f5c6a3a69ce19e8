// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

namespace calvorn {

// Reads the fields of a comma-separated text one after the other, across line ends (CR LF, LF or CR). A field in
// double quotes is what stands between them; around any other, blanks are dropped. The device is read in pieces, so
// that the size of a file does not matter.
class CsvFields
{
public:
    // The longest field that is read, in bytes. No number or heading of a sweep file comes near it.
    static constexpr qsizetype kLongestField = 1024;

    explicit CsvFields(QIODevice &device)
        : m_device(device)
    {
    }

    // RuntimeError(File) at the end of the text, or when a field is too long to be one.
    QString next();

    // The line in which the next field begins, counted from 1.
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
