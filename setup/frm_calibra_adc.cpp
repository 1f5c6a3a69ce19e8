// SPDX-License-Identifier: MIT
#include "setup/frm_calibra_adc.h"

#include "core/common_functions.h"
#include "core/number_text.h"
#include "data/amplitude_writer.h"
#include "protocol/sweep_speed.h"

#include <QKeyEvent>

namespace calvorn {

namespace {

constexpr double kStep = 0.001; // volts
constexpr int kPeriodMs = 300;  // between readings

} // namespace

FrmCalibraADC::FrmCalibraADC(Configuration &configuration, SweepTable &table, Messages &messages,
                             ErrorBoundary &boundary, QWidget *parent)
    : CalibrationDialog({QStringLiteral("frmCalibraADC"), tr("Detector calibration"),
                         tr("1. Select 'View/Table' and 'Scale/Linear'.") + u'\n' +
                             tr("2. Connect the input of the detector to a known voltage.") + u'\n' +
                             tr("3. Adjust the offset until the right voltage is presented.") + u'\n' +
                             tr("4. Everytime you 'Apply', table will be updated with the new offset"),
                         QStringLiteral("txtOffsetVolt"), tr("Offset - Volt"), tr("Step the offset by 0.001 V")},
                        configuration, messages, boundary, parent)
    , m_table(table)
    , m_volts(new QLabel(this))
    , m_hint(new QLabel(this))
{
    m_volts->setObjectName(QStringLiteral("lblVolt"));
    m_volts->setToolTip(tr("The voltage that the detector reads with this offset"));
    m_volts->setAccessibleName(tr("Detector - Volt"));
    m_volts->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont font = m_volts->font();
    font.setPointSizeF(font.pointSizeF() * 2);
    m_volts->setFont(font);
    m_volts->setMinimumHeight(m_volts->fontMetrics().height());
    m_hint->setObjectName(QStringLiteral("lblHint"));
    m_hint->setWordWrap(true);
    m_hint->setMinimumHeight(m_hint->fontMetrics().lineSpacing() * 2);
    addRow(tr("Detector - Volt"), m_volts);
    addNote(m_hint);
    m_timer.setObjectName(QStringLiteral("TimerDetector"));
    m_timer.setParent(this);
    m_timer.setInterval(kPeriodMs);
    boundary.connect(&m_timer, &QTimer::timeout, this, "TimerDetector_Timer", [this] { TimerDetector_Timer(); });
}

void FrmCalibraADC::load()
{
    showOffset(static_cast<double>(configuration().adcOffset));
    m_volts->clear();
    m_hint->clear();
    if (!driver())
        return;
    driver()->setSpeed(numberOf(SweepSpeed::Calibration)); // so that the detector settles fully
    m_timer.start();
}

void FrmCalibraADC::unload()
{
    m_timer.stop();
    if (driver())
        driver()->setSpeed(configuration().sweepSpeed);
}

// Reports unresponsive hardware once, not at every tick.
void FrmCalibraADC::TimerDetector_Timer()
{
    try {
        const std::optional<double> volts = driver() ? driver()->detectorVolts(offset(), m_table) : std::nullopt;
        if (volts)
            m_volts->setText(NumberText().masked(*volts, kMaskVolt));
        else
            m_hint->setText(tr("This interface reads its detector only during sweeps."));
    } catch (const RuntimeError &) {
        m_timer.stop();
        m_volts->clear();
        throw;
    }
}

// Reformats the number and keeps the cursor's distance from the decimal separator.
void FrmCalibraADC::numberTyped()
{
    const QChar separator = NumberText().decimalSeparator();
    const QString before = normaliseDecimal(box()->text());
    const qsizetype separatorBefore = before.contains(separator) ? before.indexOf(separator) : before.size();
    const qsizetype beyond = box()->cursorPosition() - separatorBefore;
    showOffset(offset());
    box()->setCursorPosition(static_cast<int>(box()->text().indexOf(separator) + beyond));
}

void FrmCalibraADC::nudged(int direction)
{
    showOffset(offset() + direction * kStep);
}

void FrmCalibraADC::showOffset(double volts)
{
    box()->setText(NumberText().masked(volts, kMaskVolt));
}

bool FrmCalibraADC::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == box() && event->type() == QEvent::KeyPress && !box()->hasSelectedText()) {
        const QString key = static_cast<QKeyEvent *>(event)->text();
        const QString behind = box()->text().mid(box()->cursorPosition(), 1);
        if ((key == u"." || key == u",") && behind == QString(NumberText().decimalSeparator())) {
            box()->cursorForward(false);
            return true;
        }
    }
    return CalibrationDialog::eventFilter(watched, event);
}

void FrmCalibraADC::cmdApply_Click()
{
    configuration().adcOffset = NumberText().toSingle(normaliseDecimal(box()->text()));
    rewriteAmplitudes(configuration(), m_table);
}

} // namespace calvorn
