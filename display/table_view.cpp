// SPDX-License-Identifier: MIT
#include "display/table_view.h"

#include "core/checked_arithmetic.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QResizeEvent>

namespace calvorn {

SweepTableView::SweepTableView(const Configuration &configuration, SweepTable &table, QWidget *parent)
    : QTableView(parent)
    , m_configuration(configuration)
{
    setObjectName(QStringLiteral("MSFlexGridV"));
    setToolTip(tr("The 400 samples of the last sweep"));
    setAccessibleName(tr("Sweep table"));
    setModel(&table);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);

    QHeaderView *header = horizontalHeader();
    QFont bold = header->font();
    bold.setBold(true);
    header->setFont(bold);
    header->setDefaultAlignment(Qt::AlignCenter);
    header->setHighlightSections(false);
    header->setSectionsClickable(false);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2);

    const int padding = 12;
    setColumnWidth(SweepTable::SampleColumn, QFontMetrics(bold).horizontalAdvance(tr("Sample")) + padding);
    connect(&table, &SweepTable::rebuilt, this, &SweepTableView::setColumnWidths);
}

// The diagnostic layout makes room for the raw counts; the normal layout leaves their column unchanged.
void SweepTableView::setColumnWidths()
{
    const auto part = [this](int numerator, int denominator) {
        return static_cast<int>(roundHalfEven(static_cast<double>(numerator) * width() / denominator));
    };
    const bool log = m_configuration.logDebug;
    setColumnWidth(SweepTable::FrequencyColumn, log ? part(2, 5) : part(2, 4));
    setColumnWidth(SweepTable::AmplitudeColumn, log ? part(2, 9) : part(2, 6));
    if (log)
        setColumnWidth(SweepTable::SampleColumn, part(2, 9));
}

void SweepTableView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles)
{
    if (isVisible())
        QTableView::dataChanged(topLeft, bottomRight, roles);
}

void SweepTableView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        copySelectedRows();
    else
        QTableView::keyPressEvent(event);
}

// Copies the selected rows, or the current row if none is selected, as tab-separated lines for spreadsheets.
void SweepTableView::copySelectedRows() const
{
    const bool any = selectionModel()->hasSelection();
    QStringList lines;
    for (int row = 0; row < model()->rowCount(); ++row) {
        if (any ? !selectionModel()->isRowSelected(row, {}) : row != currentIndex().row())
            continue;
        QStringList cells;
        for (int column = 0; column < model()->columnCount(); ++column)
            cells.append(model()->index(row, column).data().toString());
        lines.append(cells.join(u'\t'));
    }
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void SweepTableView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        setColumnWidths();
}

} // namespace calvorn
