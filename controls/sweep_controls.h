// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "instrument/instrument.h"

#include <QAction>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QWidget>

#include <array>
#include <functional>

namespace calvorn {

class ReadOut;

// Starts and stops sweeps, one at a time; re-plans a running one; measures its period; holds the speed choice.
class SweepControls : public QWidget
{
    Q_OBJECT

public:
    SweepControls(Configuration &configuration, Instrument &instrument, Messages &messages, Log &log, Clock &clock,
                  ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Shows the speed frame, with the stored speed selected, or hides it.
    void showSpeed(bool visible);

    // Where the keyboard is at start-up: the button that is wanted first, and no box that leaving would re-plan.
    void focusStart() { m_start->setFocus(); }

    // Logical pixels in which no caption needs a second line.
    int widthOfLines() const { return m_widthOfLines; }

    // Puts another button beside cmdStart and cmdStop.
    void addButton(QPushButton *button) { m_buttonRow->addWidget(button); }

    // Sweeps once; for the menu.
    QAction *singleAction() const { return m_single; }

    enum class Starter {
        User,
        Client, // of the remote control
    };
    // As the buttons and the menu do. Nothing where a start is already under way.
    void start(SweepRun run, Starter starter = Starter::User);
    void cmdStart_Click() { start(SweepRun::UntilStopped); }
    void cmdStop_Click();
    // The forced stop, for a driver that never completes: resets the controls only.
    void cmdSwStop_Click();

    // An accepted change of the range: applied when no further one follows.
    void restartTimerUpdateSweep() { m_timerUpdateSweep.start(); }
    // The same at once, where one waits.
    void applyRange();

    // The number of a SweepSpeed, as if it had been chosen.
    void setSpeed(std::int16_t speed);

    // After every processed vector: shows period and rate.
    void aggiornaTimer();

    // What aComplete of every driver does to the controls.
    void sweepCompleted();

    // The window closes: a start that waits for the end of an earlier sweep gives up, and no plan follows.
    void abandonWaiting();

    // What other rooms do for a sweep. Their errors end the procedure that called them, so they are not signals.
    struct Hooks
    {
        // The first two in this order whenever the plan has to be shown anew.
        std::function<void()> refreshFrequencyLabels = [] {};
        std::function<void()> refreshMarkerLabels = [] {};
        // The range has changed while no sweep runs, before the generator is parked on it.
        std::function<void()> idleRangeChanged = [] {};
    };
    void setHooks(const Hooks &hooks) { m_hooks = hooks; }

signals:
    // What needs an idle generator is to be enabled or disabled.
    void idleCommandsEnabled(bool enabled);
    // The idle generator was put on a changed start frequency.
    void parked();

private:
    void buildSpeedFrame();
    void buildReadouts();
    void buildButtons();
    void buildSingleAction();
    bool startSweep(SweepRun run);
    void mnuSingle_Click();
    bool waitForIdle();
    void optSpeed_Click(std::int16_t index);
    void timerUpdateSweep_Timer();
    void replanRunningSweep();
    void showButtons(bool sweeping);
    void changeButtons(bool sweeping);
    void toggleByKey();

    Configuration &m_configuration;
    Instrument &m_instrument;
    Messages &m_messages;
    Log &m_log;
    Clock &m_clock;
    ErrorBoundary &m_boundary;
    Hooks m_hooks;
    std::uint32_t m_sweepStartTick = 0; // ms
    Starter m_starter = Starter::User;  // of the last sweep
    bool m_starting = false;
    bool m_abandoned = false;
    int m_widthOfLines = 0; // logical pixels
    QTimer m_timerUpdateSweep;
    QGroupBox *m_speedFrame = nullptr;
    std::array<QRadioButton *, 3> m_optSpeed{};
    ReadOut *m_sweepTime = nullptr;
    ReadOut *m_sweepRate = nullptr;
    QPushButton *m_start = nullptr;
    QPushButton *m_stop = nullptr;
    QAction *m_single = nullptr;
    QHBoxLayout *m_buttonRow = nullptr;
};

} // namespace calvorn
