// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

namespace calvorn {

// Access to a sectioned settings file: "[Section]" headers, one "key=value" per line, ";" comments.
//
// Reading: sections and keys are matched without regard to case; the first section and the first key of a name
// count. Blanks around key and value are dropped, and so is one pair of equal quotes (' or ") around the value,
// which keeps the blanks inside it. A value is at most kProfileBufferSize - 1 bytes long; the rest is cut off.
//
// Writing: the file is replaced whole (written beside it, then renamed), so it is never seen half written.
// Comments, unknown keys, the spelling of existing keys, the order and the line ends (CR LF or LF) stay; a new
// file is written with CR LF. Text is UTF-8; bytes of another encoding are read as Latin-1 and left alone.

// The buffer that a value is read into, in bytes, the terminating zero included.
inline constexpr int kProfileBufferSize = 255;

// One value to be written.
struct ProfileEntry
{
    QString section;
    QString key;
    QString value;

    bool operator==(const ProfileEntry &) const = default;
};

// Returns the value, or an empty text when the file, the section, the key or its value is missing, or when the file
// cannot be read.
QString readProfileString(const QString &path, const QString &section, const QString &key);

// Every "key=value" of the section, in the order of the file; the value as readProfileString() returns it.
QVector<ProfileEntry> readProfileSection(const QString &path, const QString &section);

// Returns false when the file could not be replaced, or is there but cannot be read; it is then as it was.
bool writeProfileString(const QString &path, const QString &section, const QString &key, const QString &value);

// Writes all entries with one replacement of the file: either all of them arrive or none.
bool writeProfileStrings(const QString &path, const QVector<ProfileEntry> &entries);

// Removes every key of the section; its header and its comments stay. A section that is not there stays away.
bool clearProfileSection(const QString &path, const QString &section);

} // namespace calvorn
