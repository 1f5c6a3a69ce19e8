// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "display/plot/amplitude_ladder.h"
#include "platform/desktop.h"
#include "widgets/entry_box.h"

#include <QLabel>
#include <QWidget>

#include <array>

namespace calvorn {

// The axis to the left of the graph: its labels, its unit, and the boxes for the full-scale value.
class AmplitudeAxis : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kLabels = kLadderLines;

    AmplitudeAxis(Configuration &configuration, Desktop &desktop, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Puts the full-scale values of the record into the boxes; once the settings are loaded.
    void showFullScale();

    // As if they had been typed: volts at the top of the linear scale, dB at the bottom of the others.
    void enterTop(double volts);
    void enterBottom(int decibels);

    // For a change of scale: an entry that is still being typed into the box of the record's scale counts as left; a
    // text that is not a number is put back from the record.
    void readFullScale();

    // Labels, caption of the reference, and the box of the record's scale.
    void drawScreen();

    // "Volt" or "dB".
    void setUnit(const QString &unit);
    // The curve is shown relative to another one: dB of difference, or a ratio.
    void setRelative(bool relative);

    // The caption of the unit, which the panel lays to the right of the boxes, above the graph.
    QLabel *unitLabel() const { return m_unit; }

    // Where the graph lies beside the axis, in logical pixels from the top of the axis. Labels are placed anew.
    void setSurface(int top, int height);

    // What the axis needs above the graph's upper edge, and below its lower one, for boxes and labels.
    int spaceAbove() const;
    int spaceBelow() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    // The record has a new full-scale value from a box: grid and amplitude markers are to be drawn anew.
    void fullScaleChanged();

protected:
    bool event(QEvent *event) override;

private:
    EntryBox *makeBox(const char *name, const QString &toolTip, const QString &accessibleName);
    void makeLabels();
    void txtMaxDb_LostFocus();
    void txtMaxVolt_LostFocus();
    void acceptMaxDb();
    void acceptMaxVolt();
    void showUnit();
    void drawLinear();
    void drawLogarithmic();
    void place();
    int labelHeight() const;
    int boxWidth() const;
    QFont captionFont() const;

    Configuration &m_configuration;
    Desktop &m_desktop;
    std::array<QLabel *, kLabels> m_labels{};
    EntryBox *m_maxVolt;
    EntryBox *m_maxDb;
    QLabel *m_unit;
    QString m_unitText;
    bool m_isRelative = false;
    int m_surfaceTop = 0;
    int m_surfaceHeight = 0;
};

} // namespace calvorn
