// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "measure/measure_choices.h"
#include "measure/measurement.h"
#include "platform/desktop.h"
#include "widgets/real_spin_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QWidget>

namespace calvorn {

// The "Limits" page of the Measure panel: edits an upper and a lower limit over frequency, and shows whether sweeps are
// within them.
class LimitsPage : public QWidget
{
    Q_OBJECT

public:
    LimitsPage(Measurement &measurement, SweepGraph &graph, Desktop &desktop, ErrorBoundary &boundary,
               QWidget *parent = nullptr);

    // If the limits file can no longer be read, the error boundary reports this and the page remains empty.
    void restore(const MeasureChoices &choices);
    void save(MeasureChoices &choices) const;

protected:
    // Shows the current verdict, which is not updated while the page is hidden.
    void showEvent(QShowEvent *event) override;
    // While "By click" is switched on, a click on the graph adds a point.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeVerdict();
    QWidget *makeEditor(ErrorBoundary &boundary);
    QPushButton *makeButton(const char *name, const QString &caption, const QString &toolTip);
    void loadLimits();
    void saveLimits();
    void takeFile(const QString &path);
    void fromLive();
    void addRow();
    void removeRow();
    void addClick(QPointF user);
    void takeCell(int row, int column);
    void showTable();
    void showVerdict();
    void showVerdict(const QString &text, QColor colour);
    LimitLines editable() const;
    void edit(const LimitLines &limits);

    Measurement &m_measurement;
    SweepGraph &m_graph;
    Desktop &m_desktop;
    ErrorBoundary &m_boundary;
    LimitLines m_shown; // the limits shown in the table
    QCheckBox *m_on = nullptr;
    QLabel *m_verdict = nullptr;
    QLabel *m_worst = nullptr;
    QLabel *m_counts = nullptr;
    QCheckBox *m_beeps = nullptr;
    QTableWidget *m_table = nullptr;
    QPushButton *m_click = nullptr;
    QComboBox *m_clickSide = nullptr;
    RealSpinBox *m_margin = nullptr;
    QString m_file;
};

} // namespace calvorn
