// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "measure/measure_choices.h"
#include "measure/measurement.h"
#include "platform/desktop.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QWidget>

#include <array>
#include <cstdint>

class QGridLayout;

namespace calvorn {

// The "Traces" page of the Measure panel: four stored traces, the holds and the average.
class TracesPage : public QWidget
{
    Q_OBJECT

public:
    TracesPage(Measurement &measurement, const Configuration &configuration, Desktop &desktop, ErrorBoundary &boundary,
               QWidget *parent = nullptr);

    void restore(const MeasureChoices &choices);
    void save(MeasureChoices &choices) const;

private:
    static constexpr std::int64_t kNotAveraged = -1;

    struct Row
    {
        QCheckBox *shown = nullptr;
        QLineEdit *name = nullptr;
        QPushButton *store = nullptr;
        QAction *load = nullptr;
        QAction *save = nullptr;
        QAction *clear = nullptr;
    };

    QWidget *makeStored(ErrorBoundary &boundary);
    void makeRow(int slot, QGridLayout *grid, ErrorBoundary &boundary);
    QWidget *makeMoving();
    QCheckBox *makeSwitch(const char *name, const QString &caption, const QString &toolTip, TraceSet::Source source);
    void cmdStore_Click(int slot);
    void loadTrace(int slot);
    void saveTrace(int slot);
    void showTraces();

    Measurement &m_measurement;
    const Configuration &m_configuration;
    Desktop &m_desktop;
    std::array<Row, TraceSet::kStored> m_rows;
    QCheckBox *m_maxHold = nullptr;
    QCheckBox *m_minHold = nullptr;
    QCheckBox *m_average = nullptr;
    QSpinBox *m_averageOver = nullptr;
    QLabel *m_averaged = nullptr;
    std::int64_t m_shownAveraged = kNotAveraged; // the number shown in m_averaged
    QCheckBox *m_legend = nullptr;
    QString m_lastFile; // suggested in the next file dialog
};

} // namespace calvorn
