// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_error.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

namespace calvorn {

// The longest program message, in bytes, without the LF or CR LF at its end. Blocks count.
inline constexpr qsizetype kLongestLine = 4096;

// Turns arriving bytes into program messages.
//
// LF ends a message; one CR before it is dropped. LF does not end a message inside a definite-length block
// `#<digit><length><bytes>` where a parameter can start: after white space or a comma, and outside quotes. A string
// without its closing quote ends with the message. Empty messages are left out.
//
// A message that is too long yields one kScpiInputBufferOverrun, and its bytes are dropped up to its LF; the announced
// bytes of a block are skipped here, too. Memory stays bounded if next() empties this after each add().
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

    // The chunks that the bytes arrive in make no difference.
    void add(QByteArrayView bytes);
    // The next message or error, in the order of arrival; nothing when more bytes are needed.
    std::optional<Line> next();
    // Forgets an unfinished message and all lines that wait.
    void clear() { *this = ScpiLines(); }

private:
    // Where in a message the next byte stands.
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
    bool m_endsWithCr = false;       // the last byte kept is a CR outside blocks
    bool m_isDropped = false;        // the message is too long
    int m_lengthDigits = 0;          // of a block, still to come
    qint64 m_blockBytes = 0;         // of a block, still to come
};

} // namespace calvorn
