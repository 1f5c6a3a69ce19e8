// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/while_modal.h"
#include "tests/support/window_bench.h"

#include <QScrollBar>

#include <functional>

namespace calvorn::test {

inline QByteArray calibrationSettings(int interfaceType, const QByteArray &more = {})
{
    const QByteArray chip = interfaceType == 3 ? "AD9951\r\nDDS Multiplier=20\r\nDDS Xtal freq=20000000"
                                               : "AD9851\r\nDDS Multiplier=6\r\nDDS Xtal freq=30000000";
    return "[Config]\r\nInterface=" + QByteArray::number(interfaceType) + "\r\nDDS Device=" + chip +
           "\r\nDDS Offset=1.5\r\nADC Step=0.00244\r\nADC Offset=0.1\r\nADC Channel=2\r\n[Parallel Port]\r\nLPT=0\r\n"
           "[Serial Port]\r\nCommPort=100\r\n[Simulator]\r\nPace=none\r\nDevice=through\r\n"
           "[Calvorn]\r\nSweep mode=1\r\nStart=1000000\r\nStop=10000000\r\n" +
           more;
}

// Mouse and keyboard actions in an open calibration window.
struct CalibrationHands : WidgetHands
{
    explicit CalibrationHands(QWidget &opened)
        : dialog(&opened)
    {
    }
    QWidget *root() const override { return dialog; }

    QScrollBar *nudge() const { return find<QScrollBar>("VScrollOffset"); }
    void clickUpper() const { QTest::mouseClick(nudge(), Qt::LeftButton, {}, QPoint(nudge()->width() / 2, 3)); }
    void clickLower() const
    {
        QTest::mouseClick(nudge(), Qt::LeftButton, {}, QPoint(nudge()->width() / 2, nudge()->height() - 4));
    }
    void enter(const char *name, const QString &keys) const
    {
        auto *box = find<QLineEdit>(name);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, keys);
    }

    QWidget *dialog;
};

inline void calibrate(const WindowBench &bench, const char *entry,
                      const std::function<void(const CalibrationHands &)> &action)
{
    bool done = false;
    whileModal([&](QWidget &dialog) {
        action(CalibrationHands(dialog));
        done = true;
        if (dialog.isVisible())
            QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    bench.window->findChild<QAction *>(QString::fromLatin1(entry))->trigger();
    QVERIFY(done);
}

inline constexpr char kGenerator[] = "mnuCalibraDDS";
inline constexpr char kDetector[] = "mnuCalibraDetector";

} // namespace calvorn::test
