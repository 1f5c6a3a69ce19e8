// SPDX-License-Identifier: MIT
// Reads docs/settings.md as a table of keys.
#pragma once

#include "protocol/setting_key.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QVector>

namespace calvorn::test {

// Returns the content of a file in the source tree.
inline QString sourceText(const QString &path)
{
    QFile file(QStringLiteral(CALVORN_SOURCE_DIR "/") + path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

// A row of a table.
struct SettingsRow
{
    QString key;
    QString kind;
    QString fallback;
    QStringList written;
};

// Returns the rows of a section of docs/settings.md, in order.
inline QVector<SettingsRow> rowsOfPage(const QString &section)
{
    QVector<SettingsRow> rows;
    bool isHere = false;
    for (const QString &line : sourceText(QStringLiteral("docs/settings.md")).split(u'\n')) {
        if (line.startsWith(u"## "))
            isHere = line == QStringLiteral("## [%1]").arg(section);
        if (!isHere || !line.startsWith(u"| ") || line.startsWith(u"| key |"))
            continue;
        const QStringList cells = line.split(u'|');
        const auto cell = [&cells](qsizetype index) { return cells.value(index).trimmed(); };
        rows.append({cell(1), cell(2), cell(3), cell(4).split(QStringLiteral(", "), Qt::SkipEmptyParts)});
    }
    return rows;
}

inline QStringList sectionsOfPage()
{
    static const QRegularExpression name(QStringLiteral(R"(\[([^\]]+)\])"));
    QStringList sections;
    for (const QString &line : sourceText(QStringLiteral("docs/settings.md")).split(u'\n'))
        if (line.startsWith(u"## "))
            for (auto match = name.globalMatch(line); match.hasNext();)
                sections.append(match.next().captured(1));
    return sections;
}

// Returns "key=default" for each key, in order.
inline QStringList keysOf(const QVector<SettingKey> &settings)
{
    QStringList keys;
    for (const SettingKey &key : settings)
        keys.append(QString::fromLatin1(key.name) + u'=' + QString::fromLatin1(key.fallback));
    return keys;
}

inline QStringList keysOfPage(const QString &section)
{
    QStringList keys;
    for (const SettingsRow &row : rowsOfPage(section))
        keys.append(row.key + u'=' + row.fallback);
    return keys;
}

} // namespace calvorn::test
