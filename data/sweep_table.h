// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QAbstractTableModel>
#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace calvorn {

inline constexpr int kTableColumns = 3;

// The frequencies of the 400 rows.
struct SweepAxis
{
    std::int32_t start = 0; // Hz, of row 1
    std::int32_t step = 0;  // Hz, from row to row

    bool operator==(const SweepAxis &) const = default;
};

// The table of the last sweep, and its only store: cells hold text, and the graph, the markers and the files read
// that text back as numbers of the current locale.
//
// Row 0 is the header; rows 1 to 400 hold one sample each. Column 0 is the frequency in Hz ("###,###,##0"),
// column 1 the amplitude in volts ("#0.000") or dB ("#0.0"), column 2 the detector count (plain integer).
// As a Qt model the 400 data rows are numbered from 0 and row 0 is the horizontal header.
class SweepTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FrequencyColumn = 0, AmplitudeColumn = 1, SampleColumn = 2 };

    explicit SweepTable(const Configuration &configuration, QObject *parent = nullptr);

    // Rebuilds the table empty for the current plan: row r is at startFreq + (r - 1) x stepFreq. Emits rebuilt().
    // RuntimeError(Overflow) where a frequency does not fit; from that row on the frequencies are then empty.
    void inizializzaGrid();

    // The plan that the rows stand for; nothing while they hold a sweep that came from elsewhere.
    std::optional<SweepAxis> axis() const { return m_axis; }

    // A sweep from elsewhere is about to be written: no vector belongs to these rows until inizializzaGrid().
    void forgetAxis() { m_axis.reset(); }

    // Cells by table row (0 to 400) and column; RuntimeError(SubscriptOutOfRange) elsewhere.
    const QString &text(int row, int column) const;
    // For writing in place. Whoever has written calls cellsWritten() once afterwards.
    QString &cell(int row, int column);
    void setText(int row, int column, const QString &text) { cell(row, column) = text; }

    // Tells the views that cells have changed; once for a whole sweep.
    void cellsWritten();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    // The table is empty and has a new plan: column widths and marker read-outs start anew.
    void rebuilt();

private:
    void clearSamples();

    const Configuration &m_configuration;
    std::optional<SweepAxis> m_axis;
    std::array<QString, std::size_t{kSweepPoints + 1} * kTableColumns> m_cells;
    std::array<QString, kTableColumns> m_toldHeader; // as the views know it
};

} // namespace calvorn
