// SPDX-License-Identifier: MIT
#include "data/limit_lines.h"

#include "core/runtime_error.h"
#include "data/readable_file.h"

#include <QCoreApplication>
#include <QFile>
#include <QList>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>

namespace calvorn {

namespace {

constexpr qint64 kLargestFile = 262'144; // bytes; a file with kMostPoints points is far smaller
constexpr std::array kUnits{LimitUnit::Volt, LimitUnit::Decibel, LimitUnit::RelativeDecibel};

const char *nameOf(LimitUnit unit)
{
    switch (unit) {
    case LimitUnit::Volt:
        return "V";
    case LimitUnit::Decibel:
        return "dB";
    case LimitUnit::RelativeDecibel:
        return "dB relative";
    }
    return "";
}

QByteArray headingOf(LimitUnit unit)
{
    return QByteArray("frequency/Hz,upper/") + nameOf(unit) + ",lower/" + nameOf(unit);
}

void appendNumber(QByteArray &csv, double value)
{
    // The shortest notation without an exponent that reads back exactly.
    std::array<char, 512> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value == 0.0 ? 0.0 : value,
                                       std::chars_format::fixed);
    csv.append(buffer.data(), written.ptr - buffer.data());
}

[[noreturn]] void refuse(qsizetype line, const QString &reason)
{
    throw RuntimeError(RuntimeError::Kind::File,
                       QCoreApplication::translate("LimitLines", "line %1: %2").arg(line).arg(reason));
}

double readNumber(const QByteArray &field, qsizetype line)
{
    double value = 0.0;
    const char *const end = field.constData() + field.size();
    const auto read = std::from_chars(field.constData(), end, value);
    if (read.ptr != end || read.ec != std::errc() || !std::isfinite(value))
        refuse(line, QCoreApplication::translate("LimitLines", "\"%1\" is not a number with a decimal point")
                         .arg(QString::fromUtf8(field.left(40))));
    return value;
}

std::optional<double> readLimit(const QByteArray &field, qsizetype line)
{
    return field.isEmpty() ? std::nullopt : std::optional(readNumber(field, line));
}

LimitPoint readPoint(const QByteArray &text, qsizetype line)
{
    const QList<QByteArray> fields = text.split(',');
    if (fields.size() != 3)
        refuse(line, QCoreApplication::translate("LimitLines", "three fields are needed: frequency, upper, lower"));
    const double frequency = readNumber(fields[0].trimmed(), line);
    if (frequency < 0.0)
        refuse(line, QCoreApplication::translate("LimitLines", "the frequency is negative"));
    return {frequency, readLimit(fields[1].trimmed(), line), readLimit(fields[2].trimmed(), line)};
}

LimitUnit readHeading(const QByteArray &text)
{
    for (const LimitUnit unit : kUnits) {
        if (text.trimmed() == headingOf(unit))
            return unit;
    }
    refuse(1, QCoreApplication::translate(
                  "LimitLines", "the first line must be \"%1\", or the same with V or \"dB relative\" instead of dB")
                  .arg(QString::fromLatin1(headingOf(LimitUnit::Decibel))));
}

using Member = std::optional<double> LimitPoint::*;

// Returns the strictest of the values at one frequency.
std::optional<double> strictest(std::span<const LimitPoint> points, Member member)
{
    std::optional<double> strict;
    for (const LimitPoint &point : points) {
        const std::optional<double> &value = point.*member;
        if (!value)
            continue;
        const bool isStricter = !strict || (member == &LimitPoint::upper ? *value < *strict : *value > *strict);
        if (isStricter)
            strict = value;
    }
    return strict;
}

std::optional<double> limitAt(const std::vector<LimitPoint> &points, double hertz, Member member)
{
    const auto first = std::ranges::lower_bound(points, hertz, {}, &LimitPoint::frequency);
    const auto last = std::ranges::upper_bound(points, hertz, {}, &LimitPoint::frequency);
    if (first != last)
        return strictest(std::span(first, last), member);
    if (first == points.begin() || last == points.end())
        return std::nullopt;
    const LimitPoint &left = *std::prev(first);
    const LimitPoint &right = *last;
    const std::optional<double> &from = left.*member;
    const std::optional<double> &to = right.*member;
    if (!from || !to)
        return std::nullopt;
    return *from + (hertz - left.frequency) / (right.frequency - left.frequency) * (*to - *from);
}

} // namespace

std::size_t LimitLines::add(const LimitPoint &point)
{
    if (m_points.size() >= kMostPoints)
        return kMostPoints;
    const auto place = std::ranges::upper_bound(m_points, point.frequency, {}, &LimitPoint::frequency);
    const auto index = static_cast<std::size_t>(place - m_points.begin());
    m_points.insert(place, point);
    return index;
}

std::size_t LimitLines::replace(std::size_t index, const LimitPoint &point)
{
    if (m_points.at(index).frequency == point.frequency) {
        m_points[index] = point; // keeps its place in a step
        return index;
    }
    remove(index);
    return add(point);
}

void LimitLines::remove(std::size_t index)
{
    m_points.erase(m_points.begin() + static_cast<std::ptrdiff_t>(index));
}

std::optional<double> LimitLines::upperAt(double hertz) const
{
    return limitAt(m_points, hertz, &LimitPoint::upper);
}

std::optional<double> LimitLines::lowerAt(double hertz) const
{
    return limitAt(m_points, hertz, &LimitPoint::lower);
}

QByteArray limitLinesAsCsv(const LimitLines &limits)
{
    QByteArray csv = headingOf(limits.unit) + "\r\n";
    for (const LimitPoint &point : limits.points()) {
        appendNumber(csv, point.frequency);
        for (const std::optional<double> &limit : {point.upper, point.lower}) {
            csv.append(',');
            if (limit)
                appendNumber(csv, *limit);
        }
        csv.append("\r\n");
    }
    return csv;
}

LimitLines readLimitLinesCsv(QIODevice &device)
{
    QByteArray text = device.read(kLargestFile + 1);
    if (text.size() > kLargestFile)
        throw RuntimeError(RuntimeError::Kind::File,
                           QCoreApplication::translate("LimitLines", "the file is too large for a limit file"));
    if (text.startsWith("\xEF\xBB\xBF"))
        text.remove(0, 3);
    QList<QByteArray> lines = text.split('\n');
    while (lines.size() > 1 && lines.back().trimmed().isEmpty())
        lines.removeLast();
    LimitLines limits;
    limits.unit = readHeading(lines.front());
    for (qsizetype i = 1; i < lines.size(); ++i) {
        if (limits.points().size() == LimitLines::kMostPoints)
            refuse(i + 1, QCoreApplication::translate("LimitLines", "there are more than %1 points")
                              .arg(LimitLines::kMostPoints));
        limits.add(readPoint(lines[i], i + 1));
    }
    return limits;
}

LimitLines readLimitFile(const QString &path)
{
    QFile file(path);
    openToRead(file);
    try {
        return readLimitLinesCsv(file);
    } catch (const RuntimeError &error) {
        throw RuntimeError(RuntimeError::Kind::File, path + QStringLiteral(": ") + error.detail());
    }
}

} // namespace calvorn
