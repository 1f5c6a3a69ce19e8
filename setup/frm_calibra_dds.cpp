// SPDX-License-Identifier: MIT
#include "setup/frm_calibra_dds.h"

#include "core/number_text.h"

namespace calvorn {

namespace {

constexpr double kStep = 0.01; // Hz

} // namespace

FrmCalibraDDS::FrmCalibraDDS(Configuration &configuration, Messages &messages, Log &log, ErrorBoundary &boundary,
                             QWidget *parent)
    : CalibrationDialog({QStringLiteral("frmCalibraDDS"), tr("Generator calibration"),
                         tr("1. Select any start frequency.") + u'\n' +
                             tr("2. Connect the output of the generator to a frequency meter.") + u'\n' +
                             tr("3. Adjust the offset until the meter shows the right start frequency.") + u'\n' +
                             tr("4. Apply"),
                         QStringLiteral("txtOffset"), tr("Offset - Hz"), tr("Step the offset by 0.01 Hz")},
                        configuration, messages, boundary, parent)
    , m_log(log)
    , m_start(new QLabel(this))
{
    m_start->setObjectName(QStringLiteral("lblStartFreq"));
    m_start->setToolTip(tr("Expected reading of the frequency meter"));
    m_start->setAccessibleName(tr("Start frequency in Hz"));
    m_start->setAlignment(Qt::AlignRight);
    addRow(tr("Start frequency - Hz"), m_start);
}

void FrmCalibraDDS::load()
{
    if (driver() && driver()->triesOffsets()) {
        m_errors = boundary().connect(
            driver(), &AcquisitionDriver::aErrore, this, "aErrore",
            [this](std::int16_t tipoErrore, const QString &descrizione) { aErrore(tipoErrore, descrizione); });
        emit takesErrors(true);
    }
    m_start->setText(NumberText().masked(configuration().startFreq, kMaskHertz));
    box()->setText(NumberText().fromDouble(configuration().ddsOffset));
}

// Restores the configured offset on the hardware, which may still use a trial offset.
void FrmCalibraDDS::unload()
{
    if (!driver())
        return;
    boundary().run("SetOffset", [this] { driver()->tryOffset(configuration().ddsOffset); });
    disconnect(m_errors);
    emit takesErrors(false);
}

void FrmCalibraDDS::offsetChanged()
{
    send();
}

void FrmCalibraDDS::nudged(int direction)
{
    box()->setText(NumberText().fromDouble(offset() + direction * kStep));
    send();
}

void FrmCalibraDDS::send()
{
    if (driver())
        driver()->tryOffset(offset());
}

void FrmCalibraDDS::cmdApply_Click()
{
    configuration().ddsOffset = offset();
}

void FrmCalibraDDS::aErrore(std::int16_t tipoErrore, const QString &descrizione)
{
    if (tipoErrore == numberOf(ErrorCode::Ignorable))
        return;
    m_log.writeLog(descrizione + u' ' + NumberText::fromInteger(tipoErrore));
    m_alerts.show(descrizione, [this](const QString &text) {
        const bool goesOn = messages().show(BoxIcon::Critical, BoxButtons::OkCancel, text,
                                            QStringLiteral("Sweep by Brenik")) != kBoxCancel;
        if (!goesOn)
            reject();
        return goesOn;
    });
}

} // namespace calvorn
