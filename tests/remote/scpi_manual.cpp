// SPDX-License-Identifier: MIT
// Checks or writes the command table in docs/scpi.md.
//   scpi_manual FILE          returns 0 if the file contains the program's table, otherwise 1
//   scpi_manual --write FILE  writes the table to the file
#include "remote/scpi_command.h"

#include <QFile>
#include <QTextStream>

namespace {

using namespace calvorn;

const QByteArray kBegin("<!-- made by tools/update-scpi-manual from here -->\n");
const QByteArray kEnd("<!-- to here -->\n");

QByteArray cell(const QByteArray &text)
{
    return QByteArray(text).replace('|', "\\|");
}

QByteArray code(const QByteArray &header, const char *parameters)
{
    return '`' + cell(header) + (qstrlen(parameters) > 0 ? ' ' + cell(parameters) : QByteArray()) + '`';
}

QByteArray table()
{
    QByteArray text = "| command | query | what it does |\n|---|---|---|\n";
    for (const ScpiCommand &command : scpiCommands()) {
        const QByteArray header(command.pattern);
        text += "| " + (command.set ? code(header, command.parameters) : QByteArray()) + " | " +
                (command.query ? code(header + '?', command.queryParameters) : QByteArray()) + " | " +
                cell(command.summary) + " |\n";
    }
    return text;
}

int fail(const QString &why)
{
    QTextStream(stderr) << why << Qt::endl;
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    const bool writes = argc == 3 && qstrcmp(argv[1], "--write") == 0;
    if (argc != 2 && !writes)
        return fail(QStringLiteral("usage: scpi_manual [--write] FILE"));
    QFile file(QString::fromLocal8Bit(argv[argc - 1]));
    if (!file.open(QIODevice::ReadOnly))
        return fail(file.fileName() + QStringLiteral(": ") + file.errorString());
    const QByteArray before = file.readAll();
    file.close();
    const qsizetype begin = before.indexOf(kBegin);
    const qsizetype end = before.indexOf(kEnd);
    if (begin < 0 || end < begin)
        return fail(QStringLiteral("the markers around the table are missing"));
    const QByteArray after = before.left(begin + kBegin.size()) + table() + before.mid(end);
    if (!writes)
        return after == before ? 0 : fail(QStringLiteral("the table is out of date: run tools/update-scpi-manual"));
    if (!file.open(QIODevice::WriteOnly) || file.write(after) != after.size())
        return fail(file.fileName() + QStringLiteral(": ") + file.errorString());
    return 0;
}
