// SPDX-License-Identifier: MIT
#include "platform/parallel_ports.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdint>

namespace calvorn {

namespace {

int readBase(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    // Two decimal addresses separated by a tab: the data register and the upper registers of an ECP port.
    const QList<QByteArray> numbers = file.readLine(64).simplified().split(' ');
    return numbers.first().toInt();
}

} // namespace

QString hexAddress(int base)
{
    const QString digits = QString::number(static_cast<std::uint16_t>(base), 16).toUpper();
    return QStringLiteral("0x") + digits.rightJustified(3, u'0');
}

QVector<ParportEntry> listParports(const ParportPlaces &places)
{
    QVector<ParportEntry> entries;
    const QDir folder(places.ports);
    const QString prefix = QString::fromLatin1(kParportPrefix);
    for (const QString &name : folder.entryList({prefix + QLatin1Char('*')}, QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const int number = name.mid(prefix.size()).toInt(&isNumber);
        if (isNumber)
            entries.append({number, readBase(folder.filePath(name + QStringLiteral("/base-addr")))});
    }
    std::sort(entries.begin(), entries.end(),
              [](const ParportEntry &left, const ParportEntry &right) { return left.number < right.number; });
    return entries;
}

} // namespace calvorn
