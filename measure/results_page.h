// SPDX-License-Identifier: MIT
#pragma once

#include "display/marker_panel.h"
#include "measure/measure_choices.h"
#include "measure/measurement.h"
#include "platform/desktop.h"
#include "widgets/elided_label.h"
#include "widgets/real_spin_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include <vector>

class QGridLayout;

namespace calvorn {

// The "Results" page of the Measure panel: shows the properties of a filter, notch, crystal or match computed from the
// sweep, and has buttons that move M1 and M2 to points on the curve.
class ResultsPage : public QWidget
{
    Q_OBJECT

public:
    ResultsPage(Measurement &measurement, const Markers &markers, MarkerPanel &markerPanel, Desktop &desktop,
                QWidget *parent = nullptr);

    void restore(const MeasureChoices &choices);
    void save(MeasureChoices &choices) const;

protected:
    // Shows the current results, which are not updated while the page is hidden.
    void showEvent(QShowEvent *event) override;

private:
    struct Line
    {
        QLabel *caption = nullptr;
        ElidedLabel *value = nullptr; // "lblResult_<key>"
    };

    QWidget *makeChoices();
    QWidget *makeButtons();
    QPushButton *makeButton(const char *name, const QString &caption, const QString &toolTip);
    void choose();
    void makeLines();
    void showResults();
    void goTo(std::optional<std::size_t> sample, GraphItem marker = GraphItem::M1);
    void goToPeak(int direction);
    void goToPoints(double belowPeakDb);
    std::size_t sampleUnderM1() const;
    QString levelAt(GraphItem marker, const std::vector<double> &amplitudes) const;

    Measurement &m_measurement;
    const Markers &m_markers;
    MarkerPanel &m_markerPanel;
    Desktop &m_desktop;
    QComboBox *m_kind = nullptr;
    QComboBox *m_source = nullptr;
    QLabel *m_fixtureCaption = nullptr;
    RealSpinBox *m_fixture = nullptr;
    QGridLayout *m_grid = nullptr;
    std::vector<Line> m_lines;
    RealSpinBox *m_prominence = nullptr;
    QCheckBox *m_tracksPeak = nullptr;
};

} // namespace calvorn
