// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "core/settings.h"
#include "display/plot/marker_readings.h"
#include "display/sweep_graph.h"
#include "platform/desktop.h"
#include "widgets/entry_box.h"
#include "widgets/read_out.h"

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include <optional>

class QGridLayout;

namespace calvorn {

// The marker boxes below the graph: M1 and M2 at a frequency, M3 and M4 at an amplitude, their differences, and the
// read-out for the mouse position. The positions are stored in Markers; the boxes both set and follow them.
class MarkerPanel : public QWidget
{
    Q_OBJECT

public:
    MarkerPanel(Configuration &configuration, const SweepTable &table, Markers &markers, SweepGraph &graph,
                Desktop &desktop, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // --- frequency markers ---

    // Moves M1 or M2 to the first row whose frequency is not below that in the box, at most row 400. If the box does
    // not contain a 32-bit number, restores it from the marker's row first.
    void aggiornaPosMarkerX(GraphItem marker);
    // Updates only the amplitude boxes of M1 and M2.
    void aggiornaAmpiezzaX();
    // Moves M1 or M2 to the row nearest to the frequency (Hz), in rising and in falling sweeps.
    void enterFrequencyOf(GraphItem marker, double hertz);
    // Updates the boxes of M1 and M2, their difference and the cursor from their rows. Throws RuntimeError if the
    // table's frequencies cannot be read.
    void aggiornaLblMarkerX();

    // --- amplitude markers ---

    // Moves M3 or M4 to the amplitude in its box, in the units of the current scale. If the box does not contain a
    // number, restores it from the marker first.
    void aggiornaPosMarkerY(GraphItem marker);
    // Updates the boxes of M3 and M4 from their markers.
    void aggiornaLblMarkerY();

    // Returns the amplitude in the box of M3 or M4, in the units of the current scale. If the box does not contain a
    // number, restores it from the marker first.
    double amplitude(GraphItem marker);
    // Shows both amplitudes and their difference, formatted for the given kind of scale. Does not move the lines.
    void showAmplitudes(bool linear, double m3, double m4);

    // Request a marker's frequency as the start or the stop of the range; see the signals.
    void cmdCopyM1_Click();
    void cmdCopyM2_Click();

    // --- all ---

    void clearCursorReadout();
    // "Volt" or "dB".
    void setUnit(const QString &unit);

    // The texts of all boxes, for display elsewhere.
    MarkerTexts texts() const;

    // Load and store the texts in the boxes at start-up and shutdown. restore() also moves each line to the value in
    // its box.
    void restore(const WindowSettings &settings);
    void save(WindowSettings &settings) const;

signals:
    // The user has requested the frequency of M1 as the start of the range, or that of M2 as its stop, in Hz.
    void startCopied(std::int32_t hertz);
    void stopCopied(std::int32_t hertz);

protected:
    // Escape cancels dragging a marker, regardless of which widget has the focus.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    EntryBox *makeBox(const char *name, const QString &toolTip, const QString &accessibleName);
    ReadOut *makeReadout(const char *name, const QString &toolTip, const QString &accessibleName);
    void makeBoxes();
    void layOut();
    void addPair(QGridLayout *grid, int row, int column, const QString &caption, QWidget *first, QWidget *second);
    void connectBoxes(ErrorBoundary &boundary);

    void txtM1X_GotFocus() { enterFrequency(m_m1x); }
    void txtM2X_GotFocus() { enterFrequency(m_m2x); }
    void txtM1X_LostFocus() { leaveFrequency(GraphItem::M1); }
    void txtM2X_LostFocus() { leaveFrequency(GraphItem::M2); }
    void txtM3Y_LostFocus() { leaveAmplitude(GraphItem::M3); }
    void txtM4Y_LostFocus() { leaveAmplitude(GraphItem::M4); }
    void picSweep_MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, double x, double y);
    void picSweep_MouseMove(double x, double y);
    void picSweep_MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, double x, double y);
    void putMarker(GraphItem marker, double x, double y);
    double insideAtPrecisionOfBox(double y) const;
    void cancelDrag();
    void showCursor();

    void enterFrequency(EntryBox *box);
    void leaveFrequency(GraphItem marker);
    void leaveAmplitude(GraphItem marker);
    bool restoreFrequency(GraphItem marker);
    bool restoreAmplitude(GraphItem marker);
    void followTable();
    EntryBox *boxOf(GraphItem marker) const;
    bool isLinear() const;
    const QString &cellUnder(GraphItem item, SweepTable::Column column) const;
    std::int32_t frequencyUnder(GraphItem item) const { return m_table.frequency(m_markers.row(item)); }

    Configuration &m_configuration;
    const SweepTable &m_table;
    Markers &m_markers;
    SweepGraph &m_graph;
    Desktop &m_desktop;
    EntryBox *m_m1x = nullptr;
    ReadOut *m_m1y = nullptr;
    EntryBox *m_m2x = nullptr;
    ReadOut *m_m2y = nullptr;
    ReadOut *m_m2m1 = nullptr;
    EntryBox *m_m3y = nullptr;
    EntryBox *m_m4y = nullptr;
    ReadOut *m_m4m3 = nullptr;
    ReadOut *m_x = nullptr;
    ReadOut *m_y = nullptr;
    QLabel *m_unit = nullptr;
    QPushButton *m_copyM1 = nullptr;
    QPushButton *m_copyM2 = nullptr;
    std::optional<GraphItem> m_grabbed; // the marker grabbed with the mouse
    QPointF m_grabbedAt;                // mouse position when the marker was grabbed, user units
    double m_grabbedFrom = 0.0;         // position of the marker's line when it was grabbed
    bool m_dragging = false;            // the mouse has since moved far enough
    bool m_dragCancelled = false;       // cancelled by Escape; the button is still down
    std::optional<QPointF> m_cursor;    // position of the read-out, user units; nullopt if the read-out is empty
};

} // namespace calvorn
