// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_error.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

namespace calvorn {

// Maximum length of a program message in bytes, including blocks but excluding the final LF or CR LF.
inline constexpr qsizetype kLongestLine = 4096;

// Splits incoming bytes into program messages.
//
// LF ends a message; one CR before LF is discarded. Inside a definite-length block `#<digit><length><bytes>`, LF does
// not end the message. A block can start only where a parameter can: after white space or a comma, and outside quotes.
// A string without a closing quote extends to the end of the message. Empty messages are skipped.
//
// A message that is too long yields one kScpiInputBufferOverrun, and its bytes are discarded up to its LF, including
// all bytes of a block. Memory use stays bounded if the caller drains next() after each add().
class ScpiLines
{
public:
    struct Line
    {
        QByteArray message; // empty if there is an error
        ScpiError error;

        bool isError() const { return error.isError(); }
        bool operator==(const Line &) const = default;
    };

    // The bytes may arrive in chunks of any size.
    void add(QByteArrayView bytes);
    // Returns the next message or error in order of arrival, or nothing if more bytes are needed.
    std::optional<Line> next();
    // Discards the unfinished message and all pending lines.
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
    bool m_endsWithCr = false;       // the last byte stored is a CR outside a block
    bool m_isDropped = false;        // the message is too long
    int m_lengthDigits = 0;          // remaining digits of a block's length
    qint64 m_blockBytes = 0;         // remaining bytes of a block
};

} // namespace calvorn
