// SPDX-License-Identifier: MIT
#include "platform/profile_file.h"

#include "platform/file_replacement.h"

#include <QCoreApplication>
#include <QStringDecoder>

#include <algorithm>
#include <optional>
#include <utility>

namespace calvorn {

namespace {

QString decode(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8.decode(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

// A line of the file without its line ending.
struct Line
{
    enum class Kind { Section, Key, Other };

    QByteArrayView text;
    Kind kind = Kind::Other;
    QByteArrayView name;  // of the section or key
    QByteArrayView value; // of the key
};

Line parseLine(QByteArrayView text)
{
    Line line;
    line.text = text;
    const QByteArrayView body = text.trimmed();
    if (body.isEmpty() || body.front() == ';')
        return line;
    if (body.front() == '[') {
        const qsizetype end = body.indexOf(']');
        line.kind = Line::Kind::Section;
        line.name = body.sliced(1, (end < 0 ? body.size() : end) - 1).trimmed();
        return line;
    }
    const qsizetype equals = body.indexOf('=');
    line.kind = Line::Kind::Key;
    line.name = (equals < 0 ? body : body.first(equals)).trimmed();
    line.value = equals < 0 ? QByteArrayView() : body.sliced(equals + 1).trimmed();
    return line;
}

bool sameName(QByteArrayView stored, const QString &wanted)
{
    return decode(stored).compare(wanted.trimmed(), Qt::CaseInsensitive) == 0;
}

// Iterates over the lines of a file without copying them.
class LineReader
{
public:
    explicit LineReader(QByteArrayView content)
        : m_rest(content)
    {
        if (m_rest.startsWith("\xEF\xBB\xBF"))
            m_rest = m_rest.sliced(3);
    }

    std::optional<QByteArrayView> next()
    {
        if (m_rest.isEmpty())
            return std::nullopt;
        const qsizetype end = m_rest.indexOf('\n');
        QByteArrayView line = end < 0 ? m_rest : m_rest.first(end);
        m_rest = end < 0 ? QByteArrayView() : m_rest.sliced(end + 1);
        if (line.endsWith('\r'))
            line.chop(1);
        return line;
    }

private:
    QByteArrayView m_rest;
};

QByteArrayView withoutQuotes(QByteArrayView value)
{
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

QByteArrayView withinBuffer(QByteArrayView value)
{
    qsizetype length = std::min<qsizetype>(value.size(), kProfileBufferSize - 1);
    // Do not split a UTF-8 sequence.
    if (length < value.size())
        while (length > 0 && (static_cast<unsigned char>(value[length]) & 0xC0) == 0x80)
            --length;
    return value.first(length);
}

// Replaces line breaks in a value with blanks, because they would start a new line in the file.
QByteArray encodeValue(QString value)
{
    for (QChar &c : value)
        if (c == u'\r' || c == u'\n' || c.isNull())
            c = u' ';
    return value.toUtf8();
}

bool hasOddEncoding(const QByteArray &content)
{
    return content.startsWith("\xFF\xFE") || content.startsWith("\xFE\xFF") || content.contains('\0');
}

QString translated(const char *text)
{
    return QCoreApplication::translate("Profile", text);
}

} // namespace

Profile::Profile(const QString &path)
    : m_path(path)
    , m_file(readBounded(path))
{
    const QByteArray content = std::exchange(m_file.content, {});
    const qsizetype firstEnd = content.indexOf('\n');
    const bool bareLineFeed = firstEnd == 0 || (firstEnd > 0 && content[firstEnd - 1] != '\r');
    m_lineEnd = bareLineFeed ? "\n" : "\r\n";
    m_isCarriageReturned = content.count('\r') > content.count("\r\n");
    m_isOddlyEncoded = hasOddEncoding(content);
    LineReader reader(content);
    while (const auto text = reader.next())
        m_lines.append(text->toByteArray());
}

QString Profile::doubt() const
{
    if (isRefused())
        return m_file.reason;
    if (m_file.state == BoundedFile::State::Missing)
        return translated(QT_TRANSLATE_NOOP("Profile", "it does not exist"));
    if (m_isOddlyEncoded)
        return translated(QT_TRANSLATE_NOOP("Profile", "it is not UTF-8 text"));
    if (m_isCarriageReturned)
        return translated(QT_TRANSLATE_NOOP("Profile", "its line endings are not supported (CR only)"));
    return hasValues() ? QString() : translated(QT_TRANSLATE_NOOP("Profile", "it contains no settings"));
}

bool Profile::hasValues() const
{
    bool inSection = false;
    for (const QByteArray &text : m_lines) {
        const Line line = parseLine(text);
        inSection = inSection || line.kind == Line::Kind::Section;
        if (inSection && line.kind == Line::Kind::Key && !line.value.isEmpty())
            return true;
    }
    return false;
}

QString Profile::value(const QString &section, const QString &key) const
{
    const qsizetype header = findSection(section);
    for (qsizetype i = header + 1; header >= 0 && i < m_lines.size(); ++i) {
        const Line line = parseLine(m_lines[i]);
        if (line.kind == Line::Kind::Section)
            break;
        if (line.kind == Line::Kind::Key && sameName(line.name, key))
            return decode(withinBuffer(withoutQuotes(line.value)));
    }
    return {};
}

QVector<ProfileEntry> Profile::entries(const QString &section) const
{
    QVector<ProfileEntry> entries;
    const qsizetype header = findSection(section);
    for (qsizetype i = header + 1; header >= 0 && i < m_lines.size(); ++i) {
        const Line line = parseLine(m_lines[i]);
        if (line.kind == Line::Kind::Section)
            break;
        if (line.kind == Line::Kind::Key && line.text.contains('='))
            entries.append({section, decode(line.name), decode(withinBuffer(withoutQuotes(line.value)))});
    }
    return entries;
}

void Profile::set(const ProfileEntry &entry)
{
    const QByteArray value = encodeValue(entry.value);
    m_isChanged = true;
    const qsizetype header = findSection(entry.section);
    if (header < 0) {
        m_lines.append("[" + entry.section.trimmed().toUtf8() + "]");
        m_lines.append(entry.key.trimmed().toUtf8() + "=" + value);
        return;
    }
    qsizetype insertAt = header + 1;
    for (qsizetype i = header + 1; i < m_lines.size(); ++i) {
        const Line line = parseLine(m_lines[i]);
        if (line.kind == Line::Kind::Section)
            break;
        if (line.kind == Line::Kind::Key && sameName(line.name, entry.key)) {
            const qsizetype equals = m_lines[i].indexOf('=');
            m_lines[i] = (equals < 0 ? m_lines[i] : m_lines[i].first(equals)) + "=" + value;
            return;
        }
        if (!m_lines[i].trimmed().isEmpty())
            insertAt = i + 1;
    }
    m_lines.insert(insertAt, entry.key.trimmed().toUtf8() + "=" + value);
}

bool Profile::clear(const QString &section)
{
    const qsizetype header = findSection(section);
    bool isCleared = false;
    for (qsizetype i = header + 1; header >= 0 && i < m_lines.size();) {
        const Line::Kind kind = parseLine(m_lines[i]).kind;
        if (kind == Line::Kind::Section)
            break;
        if (kind == Line::Kind::Key) {
            m_lines.removeAt(i);
            isCleared = true;
        } else {
            ++i;
        }
    }
    m_isChanged = m_isChanged || isCleared;
    return isCleared;
}

bool Profile::save()
{
    // Saving would destroy the content that could not be read.
    if (isRefused())
        return false;
    if (!m_isChanged)
        return true;
    QByteArray text;
    for (const QByteArray &line : m_lines)
        text += line + m_lineEnd;
    m_isChanged = !replaceFile(m_path, text);
    return !m_isChanged;
}

qsizetype Profile::findSection(const QString &section) const
{
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        const Line line = parseLine(m_lines[i]);
        if (line.kind == Line::Kind::Section && sameName(line.name, section))
            return i;
    }
    return -1;
}

QString readProfileString(const QString &path, const QString &section, const QString &key)
{
    return Profile(path).value(section, key);
}

QVector<ProfileEntry> readProfileSection(const QString &path, const QString &section)
{
    return Profile(path).entries(section);
}

bool writeProfileStrings(const QString &path, const QVector<ProfileEntry> &entries)
{
    Profile profile(path);
    for (const ProfileEntry &entry : entries)
        profile.set(entry);
    return profile.save();
}

bool writeProfileString(const QString &path, const QString &section, const QString &key, const QString &value)
{
    return writeProfileStrings(path, {{section, key, value}});
}

} // namespace calvorn
