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

// The amplitude axis to the left of the graph: labels, unit and the boxes for the full-scale value.
class AmplitudeAxis : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kLabels = kLadderLines;

    AmplitudeAxis(Configuration &configuration, Desktop &desktop, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Shows the configured full-scale values in the boxes. Called once the settings are loaded.
    void showFullScale();

    // Act as if the user had typed the value: volts at the top of the linear scale, dB at the bottom of the others.
    void enterTop(double volts);
    void enterBottom(int decibels);

    // Stores the full-scale value from the current scale's box in the configuration, even if the user is still typing.
    // Called when the scale changes. Ignores text that is not a number, which drawScreen() replaces.
    void readFullScale();

    // Redraws the labels, the reference caption and the current scale's box.
    void drawScreen();

    // "Volt" or "dB".
    void setUnit(const QString &unit);
    // Whether the curve is shown relative to a reference: as a difference in dB or, on the linear scale, as a ratio.
    void setRelative(bool relative);

    // The unit label. The graph panel places it to the right of the boxes, above the graph.
    QLabel *unitLabel() const { return m_unit; }

    // Sets the graph's position in logical pixels from the top of the axis, and moves the labels accordingly.
    void setSurface(int top, int height);

    // Height in logical pixels that the boxes and labels need above the graph's upper edge and below its lower edge.
    int spaceAbove() const;
    int spaceBelow() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    // A box has changed the full-scale value: the grid and the amplitude markers must be redrawn.
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
