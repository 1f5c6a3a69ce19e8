// SPDX-License-Identifier: MIT
#include "controls/test_panel.h"

#include "core/detector_calibration.h"
#include "core/number_text.h"
#include "data/amplitude_writer.h"
#include "protocol/devices.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRandomGenerator>

#include <algorithm>

namespace calvorn {

namespace {

constexpr int kCounts = kHighestCount10Bit + 1;
constexpr int kButtonsInARow = 3;
constexpr int kPictureMs = 16; // about one frame at 60 Hz

void name(QWidget *widget, const char *objectName, const QString &toolTip)
{
    widget->setObjectName(QString::fromLatin1(objectName));
    widget->setToolTip(toolTip);
    widget->setAccessibleName(toolTip);
}

} // namespace

TestPanel::TestPanel(Configuration &configuration, SweepTable &table, Messages &messages, Log &log,
                     ErrorBoundary &boundary, QWidget *parent)
    : QGroupBox(tr("Test"), parent)
    , m_configuration(configuration)
    , m_table(table)
    , m_boundary(boundary)
    , m_log(new LogList(messages, boundary, this))
{
    setObjectName(QStringLiteral("frameTest"));
    name(m_log, "lstLOG", tr("Acquisition log; right-click to copy or save it"));
    m_log->setMinimumHeight(28);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(6, 2, 6, 6);
    grid->setSpacing(2);
    grid->addWidget(m_log, 0, 0, 1, kButtonsInARow);
    grid->setRowStretch(0, 1);
    buildReadouts(grid);
    buildButtons(grid);

    for (const QString &line : log.takeEarlyLines())
        m_log->appendLine(line);
    boundary.connect(&log, &Log::lineWritten, this, "writeLog",
                     [this](const QString &text) { m_log->appendLine(text); });
}

void TestPanel::buildReadouts(QGridLayout *grid)
{
    m_received = new QLineEdit(this);
    m_errors = new QLineEdit(QStringLiteral("0"), this);
    name(m_received, "txtRX", tr("Last received sample: number and count"));
    name(m_errors, "txtErrori", tr("Transmission errors counted"));
    for (QLineEdit *box : {m_received, m_errors})
        box->setReadOnly(true);
    auto *row = new QHBoxLayout;
    row->addWidget(new QLabel(tr("RX"), this));
    row->addWidget(m_received, 3);
    row->addWidget(new QLabel(tr("Errors"), this));
    row->addWidget(m_errors, 2);
    grid->addLayout(row, 1, 0, 1, kButtonsInARow);
}

void TestPanel::buildButtons(QGridLayout *grid)
{
    m_misura = addButton("cmdMisura_Click", tr("DUT"), tr("Mode of the MiniVNA; click for the next mode"),
                         &TestPanel::cmdMisura_Click);
    QToolButton *forcedStop =
        addButton("cmdSwStop_Click", tr("Stop"), tr("Restore the buttons if the hardware never ends a sweep"), nullptr);
    connect(forcedStop, &QToolButton::clicked, this, &TestPanel::forcedStop);
    const QList<QToolButton *> buttons{
        addButton("cmdFreqDDS_Click", tr("F.dds"), tr("Set the generator to the start frequency"),
                  &TestPanel::cmdFreqDDS_Click),
        addButton("cmdFreqStart_Click", tr("F.Start"), tr("Send the start frequency of the sweep"),
                  &TestPanel::cmdFreqStart_Click),
        addButton("cmdFreqStep_Click", tr("F.Step"), tr("Send the step of the sweep (PIC only)"),
                  &TestPanel::cmdFreqStep_Click),
        addButton("cmdReset_Click", tr("Reset"), tr("Reset the generator and set it to 1 MHz"),
                  &TestPanel::cmdReset_Click),
        addButton("cmdDraw_Click", tr("Draw"), tr("Draw a curve of random samples, without hardware"),
                  &TestPanel::cmdDraw_Click),
        addButton("cmdClear_Click", tr("Clear"), tr("Clear the receive box, the curve and the table"),
                  &TestPanel::cmdClear_Click),
        m_misura,
        forcedStop};
    const int firstRow = grid->rowCount();
    for (int i = 0; i < static_cast<int>(buttons.size()); ++i)
        grid->addWidget(buttons[i], firstRow + i / kButtonsInARow, i % kButtonsInARow);
    QWidget *before = m_log;
    for (QToolButton *button : buttons) {
        setTabOrder(before, button);
        before = button;
    }
}

// Uses tool buttons, because push buttons in this style are too wide for three in a row.
QToolButton *TestPanel::addButton(const char *procedure, const QString &caption, const QString &toolTip,
                                  void (TestPanel::*handler)())
{
    auto *button = new QToolButton(this);
    name(button, procedure, toolTip);
    button->setObjectName(QString::fromLatin1(procedure).section(u'_', 0, 0));
    button->setAccessibleName(caption);
    button->setText(caption);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (handler)
        m_boundary.connect(button, &QToolButton::clicked, this, procedure, [this, handler] { (this->*handler)(); });
    return button;
}

void TestPanel::setDriver(AcquisitionDriver *driver)
{
    m_driver = driver;
    if (!driver || driver->modeCaption().isEmpty())
        return;
    // Reserve space for the longest caption, so that the buttons do not move.
    for (const QString &caption : driver->modeCaptions()) {
        m_misura->setText(caption);
        m_misura->setMinimumWidth(std::max(m_misura->minimumWidth(), m_misura->sizeHint().width()));
    }
    m_misura->setText(driver->modeCaption());
    connect(driver, &AcquisitionDriver::modeChanged, m_misura, &QToolButton::setText);
}

void TestPanel::cmdFreqDDS_Click()
{
    if (m_driver)
        m_driver->sendFrequency();
}

void TestPanel::cmdFreqStart_Click()
{
    if (m_driver)
        m_driver->sendStartFrequency();
}

void TestPanel::cmdFreqStep_Click()
{
    if (m_driver)
        m_driver->sendStepFrequency();
}

void TestPanel::cmdReset_Click()
{
    if (m_driver)
        m_driver->resetGenerator();
}

void TestPanel::cmdDraw_Click()
{
    m_hooks.drawScreen();
    for (int row = 1; row <= kSweepPoints; ++row) {
        const int drop = static_cast<int>(QRandomGenerator::global()->generateDouble() * kCounts + 1.0);
        m_table.setText(row, SweepTable::SampleColumn, NumberText::fromInteger(kCounts - drop));
    }
    AmplitudeWriter(m_configuration, m_table).convertAllRows();
    m_table.sweepWritten(SweepOrigin::Drawn, detectorOf(m_configuration));
    m_hooks.refreshMarkerLabelsX();
    m_hooks.refreshMarkerLabelsY();
}

void TestPanel::cmdClear_Click()
{
    m_received->clear();
    m_hooks.drawScreen();
    m_hooks.refreshFrequencyLabels();
    m_hooks.refreshMarkerLabelsX();
}

void TestPanel::cmdMisura_Click()
{
    if (!m_driver)
        return;
    m_misura->setText(m_driver->nextMode(m_misura->text()));
    m_driver->sendMode();
}

// Samples arrive faster than the screen is refreshed. Only the first sample in each frame is painted, and the last
// sample of the sweep, which remains visible.
void TestPanel::echoSample(int index, int value)
{
    const bool isSeen = !m_sinceEcho.isValid() || m_sinceEcho.elapsed() >= kPictureMs || index == kSweepPoints;
    if (!isSeen)
        return;
    m_sinceEcho.start();
    m_received->setText(NumberText::fromInteger(index) + u':' + NumberText::fromInteger(value));
    m_received->repaint();
}

void TestPanel::countError()
{
    const NumberText numbers;
    const QString text = m_errors->text();
    const double count = numbers.isNumeric(text) ? numbers.toDouble(text) : 0.0;
    m_errors->setText(numbers.fromDouble(count + 1.0));
}

} // namespace calvorn
