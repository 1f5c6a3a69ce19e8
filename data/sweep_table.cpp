// SPDX-License-Identifier: MIT
#include "data/sweep_table.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace calvorn {

SweepTable::SweepTable(const Configuration &configuration, QObject *parent)
    : QAbstractTableModel(parent)
    , m_configuration(configuration)
{
    clearSamples();
}

void SweepTable::inizializzaGrid()
{
    m_sweep.plan.reset();
    m_sweep.origin = SweepOrigin::None;
    m_sweep.detector.reset();
    m_isRead.fill(false);
    std::ranges::for_each(m_cells, [](QString &text) { text.clear(); });
    setText(0, FrequencyColumn, tr("Frequency"));
    setText(0, AmplitudeColumn, isLinearScale(m_configuration.scaleType) ? tr("Volt") : tr("dB"));
    setText(0, SampleColumn, tr("Sample"));
    clearSamples();
    const NumberText numbers;
    for (std::int32_t row = 1; row <= kSweepPoints; ++row) {
        const std::int32_t distance = checkedMultiply(row - 1, m_configuration.stepFreq);
        const std::int32_t frequency = checkedAdd(m_configuration.startFreq, distance);
        numbers.assignMasked(cell(row, FrequencyColumn), frequency, kMaskHertz);
    }
    m_sweep.plan = SweepAxis{m_configuration.startFreq, m_configuration.stepFreq};
    cellsWritten();
    emit rebuilt();
    emit changed();
}

void SweepTable::forgetAxis()
{
    m_sweep.plan.reset();
    m_sweep.detector.reset();
}

void SweepTable::clearSamples()
{
    for (int row = 1; row <= kSweepPoints; ++row) {
        setText(row, AmplitudeColumn, QStringLiteral("0"));
        setText(row, SampleColumn, QStringLiteral("0"));
    }
}

const QString &SweepTable::text(int row, int column) const
{
    if (row < 0 || row > kSweepPoints || column < 0 || column >= kTableColumns)
        throw RuntimeError(RuntimeError::Kind::SubscriptOutOfRange, tr("table row %1, column %2").arg(row).arg(column));
    return m_cells[static_cast<std::size_t>(row) * kTableColumns + static_cast<std::size_t>(column)];
}

QString &SweepTable::cell(int row, int column)
{
    auto &text = const_cast<QString &>(std::as_const(*this).text(row, column));
    m_isRead[static_cast<std::size_t>(column)] = false;
    return text;
}

Sweep::Column &SweepTable::columnOf(Column column) const
{
    switch (column) {
    case FrequencyColumn:
        return m_sweep.frequencies;
    case AmplitudeColumn:
        return m_sweep.amplitudes;
    case SampleColumn:
        break;
    }
    return m_sweep.counts;
}

// The only function that converts cells to numbers.
const Sweep::Column &SweepTable::numbers(Column column) const
{
    Sweep::Column &values = columnOf(column);
    bool &isRead = m_isRead[static_cast<std::size_t>(column)];
    if (isRead)
        return values;
    const NumberText numbers;
    const QString *text = &m_cells[kTableColumns + static_cast<std::size_t>(column)];
    for (double &value : values) {
        try {
            value = numbers.toDouble(*text);
        } catch (const RuntimeError &) {
            value = Sweep::kNoNumber;
        }
        text += kTableColumns;
    }
    isRead = true;
    return values;
}

const Sweep &SweepTable::sweep() const
{
    for (const Column column : {FrequencyColumn, AmplitudeColumn, SampleColumn})
        numbers(column);
    return m_sweep;
}

double SweepTable::number(int row, Column column) const
{
    const QString &shown = text(row, column);
    const double value = row > 0 ? numbers(column)[static_cast<std::size_t>(row - 1)] : Sweep::kNoNumber;
    // For a cell without a number, this conversion throws the appropriate error.
    return Sweep::isNumber(value) ? value : NumberText().toDouble(shown);
}

std::int32_t SweepTable::frequency(int row) const
{
    const double hertz = roundHalfEven(number(row, FrequencyColumn));
    if (hertz >= std::numeric_limits<std::int32_t>::min() && hertz <= std::numeric_limits<std::int32_t>::max())
        return static_cast<std::int32_t>(hertz);
    return NumberText().toInt32(text(row, FrequencyColumn));
}

void SweepTable::sweepWritten(SweepOrigin origin, const std::optional<DetectorCalibration> &detector)
{
    m_sweep.origin = origin;
    m_sweep.detector = detector;
    ++m_sweepCount;
    cellsWritten();
    emit changed();
}

void SweepTable::amplitudesRewritten(const DetectorCalibration &detector)
{
    m_sweep.detector = detector;
    cellsWritten();
    emit changed();
}

void SweepTable::cellsWritten()
{
    emit dataChanged(index(0, 0), index(kSweepPoints - 1, kTableColumns - 1), {Qt::DisplayRole});
    // headerDataChanged() makes views lay out their header again, which costs more than updating a sweep's cells.
    const std::array header{m_cells[0], m_cells[1], m_cells[2]};
    if (header == m_announcedHeader)
        return;
    m_announcedHeader = header;
    emit headerDataChanged(Qt::Horizontal, 0, kTableColumns - 1);
}

int SweepTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : kSweepPoints;
}

int SweepTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : kTableColumns;
}

QVariant SweepTable::data(const QModelIndex &index, int role) const
{
    if (role == Qt::DisplayRole)
        return text(index.row() + 1, index.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant SweepTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::DisplayRole && orientation == Qt::Horizontal)
        return text(0, section);
    if (role == Qt::DisplayRole)
        return section + 1;
    return {};
}

} // namespace calvorn
