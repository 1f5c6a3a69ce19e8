// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bounded_file.h"

#include <QByteArray>
#include <QList>
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

// A settings file as it was when it was read, once; changes are kept until save().
class Profile
{
public:
    // A file that is not there is an empty one. One that is refused (platform/bounded_file.h) has no values either, and
    // is never written.
    explicit Profile(const QString &path);

    bool isRefused() const { return m_file.state == BoundedFile::State::Refused; }
    QString reason() const { return m_file.reason; } // of the refusal, as a part of a sentence

    // Why a reader that must not guess does not take the file, as a part of a sentence; empty when it can be taken.
    // Besides the refusals these are a missing file, one without any value, and text whose encoding or line ends cannot
    // be read.
    QString doubt() const;

    // Empty when section, key or value is missing.
    QString value(const QString &section, const QString &key) const;

    // Every "key=value" of the section, in the order of the file.
    QVector<ProfileEntry> entries(const QString &section) const;

    void set(const ProfileEntry &entry);

    // Removes every key of the section; its header and its comments stay. A section that is not there stays away. False
    // when there was nothing to remove.
    bool clear(const QString &section);

    // Replaces the file, if anything has changed. False when that fails, or when the file was refused; it is then as it
    // was.
    bool save();

private:
    qsizetype findSection(const QString &section) const;
    bool hasValues() const;

    QString m_path;
    BoundedFile m_file; // its content is in the lines
    QByteArray m_lineEnd;
    QList<QByteArray> m_lines;
    bool m_isCarriageReturned = false; // a line ends with CR alone
    bool m_isOddlyEncoded = false;
    bool m_isChanged = false;
};

// One value of the file, read anew; empty when the file, the section, the key or its value is missing, or when the file
// is refused.
QString readProfileString(const QString &path, const QString &section, const QString &key);

// The same of Profile::entries().
QVector<ProfileEntry> readProfileSection(const QString &path, const QString &section);

// Writes all entries with one replacement of the file: either all of them arrive or none. Returns false when the file
// could not be replaced, or is refused; it is then as it was.
bool writeProfileStrings(const QString &path, const QVector<ProfileEntry> &entries);
bool writeProfileString(const QString &path, const QString &section, const QString &key, const QString &value);

} // namespace calvorn
