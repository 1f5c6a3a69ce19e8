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

// Starts and stops sweeps, one at a time; re-plans a running sweep, measures its period, and holds the speed choice.
class SweepControls : public QWidget
{
    Q_OBJECT

public:
    SweepControls(Configuration &configuration, Instrument &instrument, Messages &messages, Log &log, Clock &clock,
                  ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Shows the speed frame, with the stored speed selected, or hides it.
    void showSpeed(bool visible);

    // Sets the initial focus to the button that is needed first, not to a box that re-plans when it is left.
    void focusStart() { m_start->setFocus(); }

    // Width in logical pixels at which no caption needs a second line.
    int widthOfLines() const { return m_widthOfLines; }

    // Puts another button beside cmdStart and cmdStop.
    void addButton(QPushButton *button) { m_buttonRow->addWidget(button); }

    // The menu action that sweeps once.
    QAction *singleAction() const { return m_single; }

    enum class Starter {
        User,
        Client, // of remote control
    };
    // Starts a sweep like the buttons and the menu. Does nothing if a start is already under way.
    void start(SweepRun run, Starter starter = Starter::User);
    void cmdStart_Click() { start(SweepRun::UntilStopped); }
    void cmdStop_Click();
    // Forced stop, for a driver that never completes: tries to stop the sweep, then resets the controls in any case.
    void cmdSwStop_Click();

    // A change of the range was accepted; it is applied once no further change follows.
    void restartTimerUpdateSweep() { m_timerUpdateSweep.start(); }
    // Applies a pending change of the range at once.
    void applyRange();

    // Selects a speed, as if the user had chosen it. speed: the number of a SweepSpeed.
    void setSpeed(std::int16_t speed);

    // Shows period and rate. Called after every processed vector.
    void aggiornaTimer();

    // Resets the controls. Called on aComplete of every driver.
    void sweepCompleted();

    // Cancels a start that waits for the previous sweep to end, and a pending plan. Called when the window closes.
    void abandonWaiting();

    // What other components do for a sweep. Their errors end the calling procedure, so they are not signals.
    struct Hooks
    {
        // Both are called in this order whenever the plan must be shown again.
        std::function<void()> refreshFrequencyLabels = [] {};
        std::function<void()> refreshMarkerLabels = [] {};
        // The range has changed while no sweep runs. Called before the generator is parked on it.
        std::function<void()> idleRangeChanged = [] {};
    };
    void setHooks(const Hooks &hooks) { m_hooks = hooks; }

signals:
    // Commands that need an idle generator must be enabled or disabled.
    void idleCommandsEnabled(bool enabled);
    // The idle generator was moved to a changed start frequency.
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
