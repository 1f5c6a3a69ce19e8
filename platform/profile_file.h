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
// Reading: section and key names are case-insensitive; if a name is repeated, the first one is used. Blanks around key
// and value are removed, as is one pair of matching quotes (' or ") around the value; blanks inside the quotes are
// preserved. Values are truncated to kProfileBufferSize - 1 bytes.
//
// Writing: the whole file is replaced (written beside the old one, then renamed), so readers never see a partial
// file. Comments, unknown keys, the spelling of existing keys, the order and the line endings (CR LF or LF) are
// preserved; a new file uses CR LF. Text is UTF-8; bytes in another encoding are read as Latin-1 and left unchanged.

// The buffer size for a value in bytes, including the terminating zero.
inline constexpr int kProfileBufferSize = 255;

// A value with its section and key.
struct ProfileEntry
{
    QString section;
    QString key;
    QString value;

    bool operator==(const ProfileEntry &) const = default;
};

// A settings file, read once by the constructor. Only save() writes changes.
class Profile
{
public:
    // A missing file is treated as empty. A refused file (platform/bounded_file.h) has no values and is never written.
    explicit Profile(const QString &path);

    bool isRefused() const { return m_file.state == BoundedFile::State::Refused; }
    QString reason() const { return m_file.reason; } // why the file was refused, as a clause

    // Returns, as a clause, why a caller that must not fall back on defaults should reject the file; empty if it is
    // usable. Possible reasons: the file was refused, is missing, has no values or uses an unsupported encoding or
    // line ending.
    QString doubt() const;

    // Returns an empty string if section, key or value is missing.
    QString value(const QString &section, const QString &key) const;

    // Returns every "key=value" in the section, in file order.
    QVector<ProfileEntry> entries(const QString &section) const;

    void set(const ProfileEntry &entry);

    // Removes all keys from the section but keeps its header and comments; does not create a missing section. Returns
    // false if there was nothing to remove.
    bool clear(const QString &section);

    // Replaces the file if anything has changed. Returns false and leaves the file unchanged if that fails or if the
    // file was refused.
    bool save();

private:
    qsizetype findSection(const QString &section) const;
    bool hasValues() const;

    QString m_path;
    BoundedFile m_file; // without its content, which has moved to m_lines
    QByteArray m_lineEnd;
    QList<QByteArray> m_lines;
    bool m_isCarriageReturned = false; // contains a CR without an LF
    bool m_isOddlyEncoded = false;
    bool m_isChanged = false;
};

// Reads the file and returns one value; empty if the file, the section, the key or its value is missing, or if the
// file is refused.
QString readProfileString(const QString &path, const QString &section, const QString &key);

// Reads the file and returns Profile::entries().
QVector<ProfileEntry> readProfileSection(const QString &path, const QString &section);

// Writes all entries by replacing the file once. Returns false and leaves the file unchanged if it is refused or
// cannot be replaced.
bool writeProfileStrings(const QString &path, const QVector<ProfileEntry> &entries);
bool writeProfileString(const QString &path, const QString &section, const QString &key, const QString &value);

} // namespace calvorn
