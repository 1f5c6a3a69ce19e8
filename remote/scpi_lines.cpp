// SPDX-License-Identifier: MIT
#include "remote/scpi_lines.h"

#include "remote/scpi_bytes.h"

#include <utility>

namespace calvorn {

using namespace scpi_bytes;

void ScpiLines::add(QByteArrayView bytes)
{
    for (const char byte : bytes)
        addByte(byte);
}

std::optional<ScpiLines::Line> ScpiLines::next()
{
    if (m_lines.isEmpty())
        return std::nullopt;
    return m_lines.takeFirst();
}

void ScpiLines::addByte(char byte)
{
    switch (m_place) {
    case Place::BlockStart:
        // "#0" starts an indefinite-length block, which is not supported and extends to the end of the message.
        if (isDigit(byte) && byte != '0') {
            m_lengthDigits = byte - '0';
            m_blockBytes = 0;
            m_place = Place::BlockLength;
            keep(byte);
            return;
        }
        break;
    case Place::BlockLength:
        if (isDigit(byte)) {
            m_blockBytes = 10 * m_blockBytes + (byte - '0');
            if (--m_lengthDigits == 0)
                m_place = m_blockBytes > 0 ? Place::BlockBytes : Place::Text;
            keep(byte);
            return;
        }
        break;
    case Place::BlockBytes:
        keep(byte);
        if (--m_blockBytes == 0)
            m_place = Place::Text;
        return;
    case Place::Text:
    case Place::Quoted:
        addText(byte);
        return;
    }
    // This is not a block after all.
    m_place = Place::Text;
    addText(byte);
}

void ScpiLines::addText(char byte)
{
    if (byte == '\n') {
        endLine();
        return;
    }
    const bool isParameterStart = std::exchange(m_isParameterStart, false);
    if (m_place == Place::Quoted) {
        if (byte == m_quote)
            m_place = Place::Text;
    } else if (byte == '"' || byte == '\'') {
        m_quote = byte;
        m_place = Place::Quoted;
    } else if (byte == '#' && isParameterStart) {
        m_place = Place::BlockStart;
    } else {
        m_isParameterStart = isWhite(byte) || byte == ',';
    }
    keep(byte);
    m_endsWithCr = byte == '\r';
}

void ScpiLines::endLine()
{
    if (m_endsWithCr)
        m_message.chop(1);
    if (!m_isDropped && !m_message.isEmpty())
        m_lines.append({std::exchange(m_message, {}), {}});
    m_message.clear();
    m_place = Place::Text;
    m_endsWithCr = false;
    m_isDropped = false;
}

void ScpiLines::keep(char byte)
{
    m_endsWithCr = false;
    if (m_isDropped)
        return;
    // A CR just beyond the limit may belong to the CR LF that ends the message.
    const bool mayBeEnd = byte == '\r' && m_place != Place::BlockBytes && m_message.size() == kLongestLine;
    if (m_message.size() < kLongestLine || mayBeEnd) {
        m_message += byte;
        return;
    }
    m_isDropped = true;
    m_message.clear();
    m_lines.append({{}, {kScpiInputBufferOverrun, {}}});
}

} // namespace calvorn
