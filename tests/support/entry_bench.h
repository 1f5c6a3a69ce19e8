// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/fake_server_control.h"
#include "tests/support/own_plot.h"
#include "tests/support/walk_hands.h"
#include "tests/support/walk_numbers.h"

namespace calvorn::test {

// Row r of the table is at 1 MHz + (r - 1) x 10 kHz.
inline const QByteArray kEntrySettings =
    "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
    "[Debug]\r\nLog=1\r\n[Parallel Port]\r\nLPT=0\r\n"
    "[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\nScale=0\r\nMax scaleV=2.5\r\n"
    "Marker 1=1500000\r\nMarker 2=3000000\r\nMarker 3=0.5\r\nMarker 4=1.5\r\n";

inline constexpr std::array kFrequencyBoxes{WalkBox::Start, WalkBox::Stop, WalkBox::M1X, WalkBox::M2X};

// The main window, with helpers for typing into its boxes and clicking on its graph.
struct EntryBench : WindowBench
{
    WalkHands hands{*this};

    explicit EntryBench(const QByteArray &settings = kEntrySettings)
        : WindowBench(FakeServerControl::program(), settings)
    {
        hands.settle();
    }

    SweepGraph *graph() const { return hands.graph(); }
    double row(GraphItem marker) const { return graph()->line(marker).x1; }
    double height(GraphItem marker) const { return graph()->line(marker).y1; }

    QPoint place(double row, double y) const { return OwnPlot(configuration, graph()->size()).pixel(row, y); }
    double userHeight(QPoint place) const { return OwnPlot(configuration, graph()->size()).yAt(place.y() + 0.5); }
    void clickGraph(QPoint at, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers held = {}) const
    {
        QTest::mouseClick(graph(), button, held, at);
    }

    const QString &cell(int row) const { return table()->text(row, SweepTable::FrequencyColumn); }
    QString shown(WalkBox box) const { return hands.box(box)->text(); }
    double number(WalkBox box) const { return readNumber(shown(box)); }
    void tab() const { hands.key(Qt::Key_Tab); }

    // Lists the boxes that show plain digits although they do not have the focus.
    QString unmasked() const
    {
        QStringList names;
        for (const WalkBox which : kFrequencyBoxes) {
            const QLineEdit *box = hands.box(which);
            if (!box->hasFocus() && box->text() != shownHertz(number(which)))
                names.append(box->objectName() + u' ' + box->text());
        }
        return names.join(u',');
    }
};

inline QString masked(double hertz)
{
    return shownHertz(hertz);
}

} // namespace calvorn::test
