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

// Starts and stops sweeps, one at a time; re-plans a running sweep, measures its period, and offers the choice of
// speed.
class SweepControls : public QWidget
{
    Q_OBJECT

public:
    SweepControls(Configuration &configuration, Instrument &instrument, Messages &messages, Log &log, Clock &clock,
                  ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Shows the speed frame, with the stored speed selected, or hides it.
    void showSpeed(bool visible);

    // Sets the initial focus to the button that is needed first, not to a box, which would re-plan when it loses the
    // focus.
    void focusStart() { m_start->setFocus(); }

    // Width in logical pixels at which each caption fits on one line.
    int widthOfLines() const { return m_widthOfLines; }

    // Adds a button beside cmdStart and cmdStop.
    void addButton(QPushButton *button) { m_buttonRow->addWidget(button); }

    // The menu action for a single sweep.
    QAction *singleAction() const { return m_single; }

    enum class Starter {
        User,
        Client, // of remote control
    };
    // Starts a sweep like the buttons and the menu. Does nothing if a start is already under way.
    void start(SweepRun run, Starter starter = Starter::User);
    void cmdStart_Click() { start(SweepRun::UntilStopped); }
    void cmdStop_Click();
    // Forced stop, for a driver that never completes: tries to stop the sweep, and resets the controls in any case.
    void cmdSwStop_Click();

    // Starts or restarts the delay after which a changed range is applied.
    void restartTimerUpdateSweep() { m_timerUpdateSweep.start(); }
    // Applies a pending change of the range immediately.
    void applyRange();

    // Selects a speed, as if the user had chosen it. speed: the number of a SweepSpeed.
    void setSpeed(std::int16_t speed);

    // Shows the sweep period and rate. Called after every processed vector.
    void aggiornaTimer();

    // Resets the controls. Called on each driver's aComplete event.
    void sweepCompleted();

    // Cancels a pending plan, and a start that is waiting for the previous sweep. Called when the window closes.
    void abandonWaiting();

    // Functions of other components that a sweep calls. Not signals, because their errors must end the calling
    // procedure.
    struct Hooks
    {
        // These two are called in this order whenever the displayed plan must be updated.
        std::function<void()> refreshFrequencyLabels = [] {};
        std::function<void()> refreshMarkerLabels = [] {};
        // The range has changed while no sweep is running. Called before the generator is parked at the start
        // frequency.
        std::function<void()> idleRangeChanged = [] {};
    };
    void setHooks(const Hooks &hooks) { m_hooks = hooks; }

signals:
    // Commands that need an idle generator must be enabled or disabled.
    void idleCommandsEnabled(bool enabled);
    // The idle generator was moved to a new start frequency.
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
