// SPDX-License-Identifier: MIT
#include "data/csv_fields.h"

#include "core/runtime_error.h"

#include <QCoreApplication>

namespace calvorn {

namespace {

constexpr int kEnd = -1;
constexpr qsizetype kPiece = 65536;

bool isLineEnd(int c)
{
    return c == '\r' || c == '\n';
}

} // namespace

int CsvFields::peek()
{
    if (m_position == m_buffer.size()) {
        m_buffer = m_device.read(kPiece);
        m_position = 0;
        if (m_buffer.isEmpty())
            return kEnd;
    }
    return static_cast<unsigned char>(m_buffer[m_position]);
}

int CsvFields::take()
{
    const int c = peek();
    if (c != kEnd)
        ++m_position;
    return c;
}

void CsvFields::append(QByteArray &field, int c) const
{
    if (field.size() >= kLongestField)
        throw RuntimeError(RuntimeError::Kind::File, QCoreApplication::translate("CsvFields", "a field is too long"));
    field.append(static_cast<char>(c));
}

QString CsvFields::next()
{
    while (peek() == ' ' || peek() == '\t')
        take();
    if (peek() == kEnd)
        throw RuntimeError(RuntimeError::Kind::File,
                           QCoreApplication::translate("CsvFields", "the file ends unexpectedly"));
    QByteArray field;
    const bool quoted = peek() == '"';
    if (quoted) {
        take();
        while (peek() != kEnd && peek() != '"')
            append(field, take());
        take();
    }
    // Discard text between a closing quote and the separator.
    while (peek() != kEnd && peek() != ',' && !isLineEnd(peek())) {
        const int c = take();
        if (!quoted)
            append(field, c);
    }
    // Skip one separator: a comma or a line ending.
    const int separator = take();
    if (isLineEnd(separator))
        ++m_line;
    if (separator == '\r' && peek() == '\n')
        take();
    return QString::fromUtf8(quoted ? field : field.trimmed());
}

} // namespace calvorn
