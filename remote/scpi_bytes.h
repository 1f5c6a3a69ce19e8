// SPDX-License-Identifier: MIT
#pragma once

// Byte classes in IEEE 488.2 messages, independent of the locale.
namespace calvorn::scpi_bytes {

// White space is any byte up to and including the space character, except LF.
inline bool isWhite(char byte)
{
    return byte >= '\0' && byte <= ' ' && byte != '\n';
}

inline bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

inline bool isLower(char byte)
{
    return byte >= 'a' && byte <= 'z';
}

inline bool isUpper(char byte)
{
    return byte >= 'A' && byte <= 'Z';
}

inline bool isLetter(char byte)
{
    return isLower(byte) || isUpper(byte);
}

inline bool isMnemonicByte(char byte)
{
    return isLetter(byte) || isDigit(byte) || byte == '_';
}

} // namespace calvorn::scpi_bytes
