// SPDX-License-Identifier: MIT
#pragma once

#include "data/sweep_table.h"

#include <QTableView>

namespace calvorn {

// The "MSFlexGridV" view of the sweep table: 400 compact rows under a fixed header. The column widths are adjusted
// whenever the table is rebuilt or the view's width changes.
class SweepTableView : public QTableView
{
    Q_OBJECT

public:
    SweepTableView(const Configuration &configuration, SweepTable &table, QWidget *parent = nullptr);

    QSize minimumSizeHint() const override { return {200, 60}; }
    QSize sizeHint() const override { return {400, 90}; }

    // Every sweep changes all cells. A hidden view ignores changes and repaints when shown.
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void copySelectedRows() const;
    void setColumnWidths();

    const Configuration &m_configuration;
};

} // namespace calvorn
