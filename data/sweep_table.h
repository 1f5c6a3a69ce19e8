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

// The table of the last sweep, and its only store. Cells hold text; whoever needs numbers takes them from sweep(),
// where each text is read once, as a number of the current locale.
//
// Row 0 is the header; rows 1 to 400 hold one sample each. Column 0 is the frequency in Hz ("###,###,##0"),
// column 1 the amplitude in volts ("#0.000") or dB ("#0.0"), column 2 the detector count (plain integer).
// As a Qt model the 400 data rows are numbered from 0 and row 0 is the horizontal header.
//
// changed() tells of every new sweep, plan or scale, once. Whoever shows something of the table subscribes to it; those
// who write need not know who that is.
class SweepTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FrequencyColumn = 0, AmplitudeColumn = 1, SampleColumn = 2 };

    explicit SweepTable(const Configuration &configuration, QObject *parent = nullptr);

    // Rebuilds the table empty for the current plan: row r is at startFreq + (r - 1) x stepFreq. Emits changed().
    // RuntimeError(Overflow) where a frequency does not fit; from that row on the frequencies are then empty.
    void inizializzaGrid();

    // The plan that the rows stand for; nothing while they hold a sweep that came from elsewhere.
    std::optional<SweepAxis> axis() const { return m_sweep.plan; }

    // A sweep from elsewhere is about to be written: no vector belongs to these rows until inizializzaGrid().
    void forgetAxis();

    SweepOrigin origin() const { return m_sweep.origin; }
    bool hasSweep() const { return m_sweep.origin != SweepOrigin::None; }
    // Sweeps written so far. It tells another sweep from the same one on another scale.
    std::uint64_t sweepCount() const { return m_sweepCount; }

    // Cells by table row (0 to 400) and column; RuntimeError(SubscriptOutOfRange) elsewhere.
    const QString &text(int row, int column) const;
    // For writing in place. Whoever has written ends with one of the announcements below.
    QString &cell(int row, int column);
    void setText(int row, int column, const QString &text) { cell(row, column) = text; }

    // The numbers behind the texts.
    const Sweep &sweep() const;
    // One column of them.
    const Sweep::Column &numbers(Column column) const;
    // The number of a cell of the rows 1 to 400; RuntimeError(TypeMismatch) when it holds none.
    double number(int row, Column column) const;
    // The frequency of a row in whole Hz; RuntimeError(Overflow) when it does not fit.
    std::int32_t frequency(int row) const;

    // --- announcements ---

    // The rows hold another sweep. detector: see Sweep. Emits changed().
    void sweepWritten(SweepOrigin origin, const std::optional<DetectorCalibration> &detector);

    // The amplitudes have been computed anew from the counts: for another scale or another detector. Emits changed().
    void amplitudesRewritten(const DetectorCalibration &detector);

    // Cells were written, but no sweep is complete: only the views of the cells are told.
    void cellsWritten();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void changed();
    // The table has a new plan: column widths start anew. Ahead of changed().
    void rebuilt();

private:
    void clearSamples();
    Sweep::Column &columnOf(Column column) const;

    const Configuration &m_configuration;
    std::array<QString, std::size_t{kSweepPoints + 1} * kTableColumns> m_cells;
    std::uint64_t m_sweepCount = 0;
    mutable Sweep m_sweep;                              // its columns as far as they have been read
    mutable std::array<bool, kTableColumns> m_isRead{}; // since they were last written
    std::array<QString, kTableColumns> m_toldHeader;    // as the views know it
};

} // namespace calvorn
