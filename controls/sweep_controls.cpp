// SPDX-License-Identifier: MIT
#include "controls/sweep_controls.h"

#include "core/number_text.h"
#include "instrument/frequency_plan.h"
#include "protocol/stop_reasons.h"
#include "widgets/entry_box.h"
#include "widgets/option_choice.h"
#include "widgets/read_out.h"

#include <QGridLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace calvorn {

namespace {

// Long enough that holding down a digit's arrow causes only one plan, after the last step.
constexpr int kUpdateDelayMs = 500;
// Maximum time between two checks of the sweep's state while a start waits for the previous sweep.
constexpr int kPumpMs = 50;

} // namespace

SweepControls::SweepControls(Configuration &configuration, Instrument &instrument, Messages &messages, Log &log,
                             Clock &clock, ErrorBoundary &boundary, QWidget *parent)
    : QWidget(parent)
    , m_configuration(configuration)
    , m_instrument(instrument)
    , m_messages(messages)
    , m_log(log)
    , m_clock(clock)
    , m_boundary(boundary)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    buildSpeedFrame();
    buildReadouts();
    buildButtons();
    buildSingleAction();

    m_timerUpdateSweep.setObjectName(QStringLiteral("timerUpdateSweep"));
    m_timerUpdateSweep.setParent(this);
    m_timerUpdateSweep.setSingleShot(true);
    m_timerUpdateSweep.setInterval(kUpdateDelayMs);
    m_boundary.connect(&m_timerUpdateSweep, &QTimer::timeout, this, "timerUpdateSweep_Timer",
                       [this] { timerUpdateSweep_Timer(); });
}

void SweepControls::buildSpeedFrame()
{
    m_speedFrame = new QGroupBox(tr("Sweep speed"), this);
    m_speedFrame->setObjectName(QStringLiteral("frmSpeed"));
    auto *column = new QVBoxLayout(m_speedFrame);
    column->setContentsMargins(8, 2, 8, 4);
    column->setSpacing(0);
    const std::array<QString, 3> captions{tr("Standard"), tr("Slow"), tr("Very slow")};
    const std::array<QString, 3> toolTips{tr("Fastest sweep"), tr("More settling time at each frequency"),
                                          tr("Longest settling time, for very sharp filters")};
    for (std::size_t i = 0; i < m_optSpeed.size(); ++i) {
        auto *option = new QRadioButton(captions[i], m_speedFrame);
        option->setObjectName(QStringLiteral("optSpeed_%1").arg(i));
        option->setToolTip(toolTips[i]);
        column->addWidget(option);
        m_optSpeed[i] = option;
        m_boundary.connect(option, &QRadioButton::clicked, this, "optSpeed_Click",
                           [this, i] { optSpeed_Click(static_cast<std::int16_t>(i)); });
    }
    layout()->addWidget(m_speedFrame);
}

void SweepControls::buildReadouts()
{
    auto *grid = new QGridLayout;
    const auto makeReadOut = [this](const char *name, const QString &toolTip) {
        auto *readOut = new ReadOut(this, ReadOut::Frame::None);
        readOut->setText(QStringLiteral("–"));
        readOut->setObjectName(QString::fromLatin1(name));
        readOut->setToolTip(toolTip);
        readOut->setAccessibleName(toolTip);
        readOut->setFixedSize(readOut->sizeHint().width(), readOut->fontMetrics().height());
        return readOut;
    };
    const auto addRow = [&](int row, const QString &text, ReadOut *readOut) {
        auto *caption = new QLabel(text, this);
        grid->addWidget(caption, row, 0);
        grid->addWidget(readOut, row, 1, Qt::AlignRight);
        const int line = caption->sizeHint().width() + grid->horizontalSpacing() + readOut->width();
        m_widthOfLines = std::max(m_widthOfLines, line);
        // With a large font, the column may be too narrow: wrap the caption instead of cutting it.
        caption->setWordWrap(true);
    };
    m_sweepTime = makeReadOut("lblSweepTime", tr("Time of one sweep in milliseconds"));
    m_sweepRate = makeReadOut("lblSweepRate", tr("Sweeps per second"));
    grid->setColumnStretch(0, 1);
    grid->setHorizontalSpacing(6);
    addRow(0, tr("Sweep time - ms"), m_sweepTime);
    addRow(1, tr("Sweeps per second"), m_sweepRate);
    static_cast<QVBoxLayout *>(layout())->addLayout(grid);
}

void SweepControls::buildButtons()
{
    m_start = new QPushButton(tr("Sweep ON"), this);
    m_start->setObjectName(QStringLiteral("cmdStart"));
    m_start->setToolTip(tr("Start sweeping (F5)"));
    m_stop = new QPushButton(tr("Sweep OFF"), this);
    m_stop->setObjectName(QStringLiteral("cmdStop"));
    m_stop->setToolTip(tr("Stop the sweep (F5)"));
    const int wider = std::max(m_start->sizeHint().width(), m_stop->sizeHint().width());
    for (QPushButton *button : {m_start, m_stop}) {
        button->setMinimumSize(wider, 36);
        button->setAutoDefault(true);
    }
    m_buttonRow = new QHBoxLayout;
    m_buttonRow->addWidget(m_start, 1);
    m_buttonRow->addWidget(m_stop, 1);
    static_cast<QVBoxLayout *>(layout())->addLayout(m_buttonRow);
    m_stop->hide();
    auto *key = new QShortcut(Qt::Key_F5, this);
    connect(key, &QShortcut::activated, this, &SweepControls::toggleByKey);
    m_boundary.connect(m_start, &QPushButton::clicked, this, "cmdStart_Click", [this] {
        EntryBox::commitPending();
        cmdStart_Click();
    });
    m_boundary.connect(m_stop, &QPushButton::clicked, this, "cmdStop_Click", [this] { cmdStop_Click(); });
}

void SweepControls::buildSingleAction()
{
    m_single = new QAction(tr("&Single sweep"), this);
    m_single->setObjectName(QStringLiteral("mnuSingle"));
    m_single->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F5));
    m_single->setToolTip(tr("Sweep once, then stop; repeated sweeps stop after the next curve"));
    m_boundary.connect(m_single, &QAction::triggered, this, "mnuSingle_Click", [this] { mnuSingle_Click(); });
}

// Moves the focus, so that a frequency still being typed is accepted.
void SweepControls::toggleByKey()
{
    QPushButton *button = m_start->isVisible() ? m_start : m_stop;
    button->setFocus(Qt::ShortcutFocusReason);
    button->click();
}

void SweepControls::abandonWaiting()
{
    m_abandoned = true;
    m_timerUpdateSweep.stop();
}

void SweepControls::showSpeed(bool visible)
{
    m_speedFrame->setVisible(visible);
    const std::int16_t speed = m_configuration.sweepSpeed;
    if (visible && speed >= 0 && speed < static_cast<std::int16_t>(m_optSpeed.size()))
        chooseOption(m_optSpeed[static_cast<std::size_t>(speed)]);
}

void SweepControls::start(SweepRun run, Starter starter)
{
    if (sweepRange(m_configuration) < kMinSweepRange) {
        m_messages.beepAndWarn(tr("The minimum sweep range is ") + NumberText::fromInteger(kMinSweepRange) +
                               QStringLiteral(" Hz"));
        return;
    }
    if (!startSweep(run))
        return;
    m_starter = starter;
    changeButtons(true);
    emit idleCommandsEnabled(false);
}

// Returns false if a start is already under way, or if the window was closed during the wait.
bool SweepControls::startSweep(SweepRun run)
{
    if (m_starting)
        return false;
    const QScopedValueRollback guard(m_starting, true);
    if (!waitForIdle())
        return false;
    m_instrument.requiredDriver();
    m_hooks.refreshFrequencyLabels();
    m_hooks.refreshMarkerLabels();
    m_instrument.startSweep(run);
    return true;
}

// Waits for aComplete if a sweep is still running, and processes window events meanwhile.
bool SweepControls::waitForIdle()
{
    while (m_instrument.isSweeping() && !m_abandoned)
        m_clock.pumpMessages(kPumpMs);
    return !m_abandoned;
}

void SweepControls::mnuSingle_Click()
{
    // With a global menu bar, no click in the window commits a pending entry first.
    EntryBox::commitPending();
    if (m_stop->isHidden())
        start(SweepRun::Once);
    else
        m_instrument.endAfterNextVector();
}

void SweepControls::cmdStop_Click()
{
    m_instrument.stopSweep();
}

void SweepControls::cmdSwStop_Click()
{
    // Restore the controls even if the driver hangs.
    m_boundary.run("cmdStop_Click", [this] { cmdStop_Click(); });
    m_log.writeLog(tr("Stop sweep forzato"));
    showButtons(false);
    m_start->setFocus();
    emit idleCommandsEnabled(true);
}

void SweepControls::sweepCompleted()
{
    changeButtons(false);
    emit idleCommandsEnabled(true);
}

// Moves the focus to the visible button, unless a client's sweep would take it from another control.
void SweepControls::changeButtons(bool sweeping)
{
    const QWidget *focus = window()->focusWidget();
    const bool takesFocus = m_starter == Starter::User || !focus || focus == m_start || focus == m_stop;
    showButtons(sweeping);
    if (takesFocus)
        (sweeping ? m_stop : m_start)->setFocus();
}

void SweepControls::showButtons(bool sweeping)
{
    // Show one button before hiding the other: with both hidden, the focus would move elsewhere.
    (sweeping ? m_stop : m_start)->show();
    (sweeping ? m_start : m_stop)->hide();
}

void SweepControls::optSpeed_Click(std::int16_t index)
{
    m_configuration.sweepSpeed = index;
    if (AcquisitionDriver *driver = m_instrument.driver())
        driver->setSpeed(index);
}

void SweepControls::setSpeed(std::int16_t speed)
{
    m_configuration.sweepSpeed = speed;
    showSpeed(!m_speedFrame->isHidden());
    optSpeed_Click(speed);
}

void SweepControls::applyRange()
{
    if (!m_timerUpdateSweep.isActive())
        return;
    m_timerUpdateSweep.stop();
    timerUpdateSweep_Timer();
}

void SweepControls::timerUpdateSweep_Timer()
{
    if (m_starting || m_instrument.isEnding()) {
        // Try again later: a start that is waiting or showing a message cannot finish while this procedure runs, and a
        // new plan would clear the table that a single sweep has just filled.
        m_timerUpdateSweep.start();
        return;
    }
    if (!m_instrument.isSweeping()) {
        m_hooks.idleRangeChanged();
        if (AcquisitionDriver *driver = m_instrument.driver())
            driver->parkAtChangedStart();
        emit parked();
    } else {
        // If the range is too small, correct it first.
        m_hooks.refreshFrequencyLabels();
        m_hooks.refreshMarkerLabels();
        replanRunningSweep();
    }
}

void SweepControls::replanRunningSweep()
{
    AcquisitionDriver *driver = m_instrument.driver();
    if (driver->replanning() == AcquisitionDriver::Replanning::InPlace) {
        driver->replanSweep();
        return;
    }
    const SweepRun run = m_instrument.run();
    m_instrument.stopSweep(kStopForNewRange);
    start(run, m_starter);
}

void SweepControls::aggiornaTimer()
{
    const std::uint32_t endTick = m_clock.tickCount();
    if (endTick == m_sweepStartTick)
        return;
    // Unsigned, so that the period is correct when the tick counter wraps.
    const std::uint32_t period = endTick - m_sweepStartTick;
    m_sweepTime->setText(NumberText::fromInteger(period));
    m_sweepRate->setText(NumberText().masked(1000.0 / period, kMaskFixed));
    m_sweepStartTick = endTick;
}

} // namespace calvorn
