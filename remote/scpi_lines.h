// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_error.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

namespace calvorn {

// The maximum length of a program message in bytes, including blocks, without the LF or CR LF at its end.
inline constexpr qsizetype kLongestLine = 4096;

// Turns arriving bytes into program messages.
//
// LF ends a message; one CR before LF is dropped. Inside a definite-length block `#<digit><length><bytes>`, LF does not
// end the message. A block can start only where a parameter can: after white space or a comma, and outside quotes. A
// string without closing quote ends with the message. Empty messages are skipped.
//
// A message that is too long yields one kScpiInputBufferOverrun, and its bytes are dropped up to its LF, including the
// announced bytes of a block. Memory stays bounded if the caller calls next() until it is empty after each add().
class ScpiLines
{
public:
    struct Line
    {
        QByteArray message; // empty with an error
        ScpiError error;

        bool isError() const { return error.isError(); }
        bool operator==(const Line &) const = default;
    };

    // The bytes may arrive in chunks of any size.
    void add(QByteArrayView bytes);
    // Returns the next message or error in the order of arrival, or nothing if more bytes are needed.
    std::optional<Line> next();
    // Discards the unfinished message and all waiting lines.
    void clear() { *this = ScpiLines(); }

private:
    // The context of the next byte in a message.
    enum class Place { Text, Quoted, BlockStart, BlockLength, BlockBytes };

    void addByte(char byte);
    void addText(char byte);
    void endLine();
    void keep(char byte);

    QList<Line> m_lines;
    QByteArray m_message;
    Place m_place = Place::Text;
    char m_quote = '\0';
    bool m_isParameterStart = false; // a block may start here
    bool m_endsWithCr = false;       // the last byte kept is a CR outside a block
    bool m_isDropped = false;        // the message is too long
    int m_lengthDigits = 0;          // of a block, still to come
    qint64 m_blockBytes = 0;         // of a block, still to come
};

} // namespace calvorn
