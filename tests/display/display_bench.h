// SPDX-License-Identifier: MIT
#pragma once

#include "core/settings.h"
#include "display/graph_panel.h"
#include "display/marker_panel.h"
#include "display/scale_control.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/locales.h"

#include <QTest>
#include <QVBoxLayout>

namespace calvorn::test {

// The display alone, assembled as in the main window: 1 MHz to 10.975 MHz in steps of 25 kHz, 5 mV per count.
struct DisplayBench
{
    Configuration configuration;
    FakeDesktop desktop;
    Messages messages{configuration, desktop};
    Log log{configuration};
    ErrorBoundary boundary{messages, log};
    SweepTable table{configuration};
    QWidget window;
    Markers lines;
    GraphPanel panel{configuration, table, lines, desktop, boundary};
    MarkerPanel markers{configuration, table, lines, panel.graph(), desktop, boundary};
    ScaleControl scales{configuration, table, panel, markers, boundary};

    explicit DisplayBench(std::int16_t scale = 0, float maxVolt = 2.0F, std::int32_t maxDb = -40)
    {
        configuration.adcStep = 0.005F;
        configuration.startFreq = 1000000;
        configuration.stepFreq = 25000;
        configuration.stopFreq = 11000000;
        configuration.maxScaleVolt = maxVolt;
        configuration.maxScaleDb = maxDb;
        configuration.scaleType = scale;
        auto *column = new QVBoxLayout(&window);
        column->addWidget(&panel, 1);
        column->addWidget(&markers);
        panel.graph().inizializzaGraph();
        table.inizializzaGrid();
        panel.axis().showFullScale();
        scales.aggiornaScala(scale);
    }
    ~DisplayBench()
    {
        // These widgets are members of this struct, so the window must not delete them.
        panel.setParent(nullptr);
        markers.setParent(nullptr);
    }

    void show()
    {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    template <typename Widget = QLineEdit>
    Widget *find(const QString &name)
    {
        return window.findChild<Widget *>(name);
    }
    QString text(const QString &name) { return find<QWidget>(name)->property("text").toString(); }

    // Replaces the text in a box by typing, and leaves the box.
    void type(const QString &name, const QString &text)
    {
        QLineEdit *box = find(name);
        box->setFocus(Qt::TabFocusReason);
        box->selectAll();
        // No keyboard has a key for a narrow space; users type a plain one.
        QTest::keyClicks(box, QString(text).replace(u'\u202F', u' '));
        QTest::keyClick(box, Qt::Key_Tab);
    }

    QAction *scaleAction(int scale) { return scales.actions().at(scale); }
};

} // namespace calvorn::test
