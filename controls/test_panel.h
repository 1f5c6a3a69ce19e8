// SPDX-License-Identifier: MIT
#pragma once

#include "controls/log_list.h"
#include "instrument/acquisition_driver.h"

#include <QElapsedTimer>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QToolButton>

#include <functional>

namespace calvorn {

// frameTest, shown while logging is enabled: log list, receive box, error counter, and buttons for controlling the
// generator and the display manually.
class TestPanel : public QGroupBox
{
    Q_OBJECT

public:
    TestPanel(Configuration &configuration, SweepTable &table, Messages &messages, Log &log, ErrorBoundary &boundary,
              QWidget *parent = nullptr);

    // driver: null if the configured interface has none; the generator buttons then do nothing.
    void setDriver(AcquisitionDriver *driver);

    // Shows a sample as "index:value" and paints it immediately, at most one sample per screen frame.
    void echoSample(int index, int value);

    // Increments the error counter txtErrori.
    void countError();

    // Functions of other components that the buttons call. Not signals, because their errors must end the calling
    // procedure.
    struct Hooks
    {
        std::function<void()> drawScreen = [] {};
        std::function<void()> refreshFrequencyLabels = [] {};
        std::function<void()> refreshMarkerLabelsX = [] {};
        std::function<void()> refreshMarkerLabelsY = [] {};
    };
    void setHooks(const Hooks &hooks) { m_hooks = hooks; }

signals:
    void forcedStop();

private:
    void buildReadouts(QGridLayout *grid);
    void buildButtons(QGridLayout *grid);
    QToolButton *addButton(const char *procedure, const QString &caption, const QString &toolTip,
                           void (TestPanel::*handler)());
    void cmdFreqDDS_Click();
    void cmdFreqStart_Click();
    void cmdFreqStep_Click();
    void cmdReset_Click();
    void cmdDraw_Click();
    void cmdClear_Click();
    void cmdMisura_Click();

    Configuration &m_configuration;
    SweepTable &m_table;
    ErrorBoundary &m_boundary;
    AcquisitionDriver *m_driver = nullptr;
    Hooks m_hooks;
    LogList *m_log;
    QLineEdit *m_received = nullptr;
    QElapsedTimer m_sinceEcho; // since the last painted sample
    QLineEdit *m_errors = nullptr;
    QToolButton *m_misura = nullptr;
};

} // namespace calvorn
