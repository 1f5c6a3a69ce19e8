// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep.h"

#include <QAbstractTableModel>
#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace calvorn {

inline constexpr int kTableColumns = 3;

// The table of the last sweep, which is stored nowhere else. Cells contain text; sweep() returns the numbers and parses
// each column only once after a change, according to the current locale.
//
// Row 0 is the header; rows 1 to 400 contain one sample each. Column 0 is the frequency in Hz ("###,###,##0"), column 1
// the amplitude in volts ("#0.000") or dB ("#0.0"), column 2 the detector count (plain integer). In the Qt model, the
// 400 data rows are numbered from 0, and table row 0 is the horizontal header.
//
// changed() is emitted once for each new sweep, plan or scale. Components that show the table connect to it; writers do
// not need to know about them.
class SweepTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FrequencyColumn = 0, AmplitudeColumn = 1, SampleColumn = 2 };

    explicit SweepTable(const Configuration &configuration, QObject *parent = nullptr);

    // Clears the table and fills in the current plan: row r is at startFreq + (r - 1) x stepFreq. Emits changed().
    // Throws RuntimeError(Overflow) if a frequency does not fit; that row and all later rows then have no frequency.
    void inizializzaGrid();

    // The plan of the rows; nullopt while they contain an imported sweep.
    std::optional<SweepAxis> axis() const { return m_sweep.plan; }

    // Must be called before an imported sweep is written. No vector fits the table until the next inizializzaGrid().
    void forgetAxis();

    SweepOrigin origin() const { return m_sweep.origin; }
    bool hasSweep() const { return m_sweep.origin != SweepOrigin::None; }
    // The number of sweeps written so far; distinguishes a new sweep from the same sweep on another scale.
    std::uint64_t sweepCount() const { return m_sweepCount; }

    // Accesses a cell by table row (0 to 400) and column. Throws RuntimeError(SubscriptOutOfRange) for other indices.
    const QString &text(int row, int column) const;
    // Returns a cell for writing in place; call one of the announcement functions below afterwards.
    QString &cell(int row, int column);
    void setText(int row, int column, const QString &text) { cell(row, column) = text; }

    // The numbers parsed from the cells.
    const Sweep &sweep() const;
    // One column of these numbers.
    const Sweep::Column &numbers(Column column) const;
    // Returns the number in a cell of rows 1 to 400. Throws RuntimeError(TypeMismatch) if the cell contains no number.
    double number(int row, Column column) const;
    // Returns a row's frequency rounded to whole Hz. Throws RuntimeError(Overflow) if it does not fit.
    std::int32_t frequency(int row) const;

    // --- announcements ---

    // Announces that the rows contain a new sweep. detector: see Sweep. Emits changed().
    void sweepWritten(SweepOrigin origin, const std::optional<DetectorCalibration> &detector);

    // Announces amplitudes recomputed from the counts, for another scale or detector. Emits changed().
    void amplitudesRewritten(const DetectorCalibration &detector);

    // Announces that cells of an incomplete sweep have been written. Notifies the views but does not emit changed().
    void cellsWritten();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void changed();
    // Emitted before changed() if the table has a new plan; views then reset their column widths.
    void rebuilt();

private:
    void clearSamples();
    Sweep::Column &columnOf(Column column) const;

    const Configuration &m_configuration;
    std::array<QString, std::size_t{kSweepPoints + 1} * kTableColumns> m_cells;
    std::uint64_t m_sweepCount = 0;
    mutable Sweep m_sweep;                                // columns are parsed on demand
    mutable std::array<bool, kTableColumns> m_isRead{};   // since the column was last written
    std::array<QString, kTableColumns> m_announcedHeader; // as last announced to the views
};

} // namespace calvorn
