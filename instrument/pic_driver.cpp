// SPDX-License-Identifier: MIT
#include "instrument/pic_driver.h"

#include "pic_proxy.h"
#include "protocol/object_paths.h"
#include "protocol/pic_commands.h"

namespace calvorn {

namespace {

constexpr int kResetMs = 1000; // time that the board needs to restart

} // namespace

PicDriver::PicDriver(const DriverContext &context, QObject *parent)
    : ProxyDriver(context, kPicPath, parent)
{
}

PicDriver::~PicDriver() = default;

const InterfaceKind &PicDriver::kind() const
{
    return *interfaceKind(kInterfacePic);
}

QString PicDriver::caption() const
{
    return QString::fromLatin1(kApplicationTitle) + QStringLiteral(" - ") + configuration().ddsDevice;
}

AcquisitionDriver::ErrorReaction PicDriver::hardwareReactionTo(std::int16_t tipoErrore) const
{
    return serialReactionTo(tipoErrore);
}

bool PicDriver::configureHardware()
{
    if (!openOrRefuse([this] { return openPort(configuration().commPort, configuration().serialSettings); },
                      serialPortRefusal()))
        return false;
    if (sendFrequency(kPicOutput, configuration().startFreq))
        return true;
    emit refused(tr("DDS not initialized") + u'\r' + tr("Verify the serial interface."), true);
    return false;
}

// Starts the sweep even if the board rejected the plan, because the board then reports the end of the sweep.
bool PicDriver::runPlan(const SweepAxis &plan)
{
    const bool accepted = prepareSweep(plan.start, plan.step);
    if (!accepted)
        log().writeLog(logPrefix() + tr("Errore inizializza ciclo sweep"));
    runSweep();
    return accepted;
}

void PicDriver::park()
{
    sendOrWarn(kPicStart, configuration().startFreq, tr("Frequency not iniatized."));
}

void PicDriver::sendFrequency()
{
    sendOrWarn(kPicOutput, configuration().startFreq, tr("DDS frequency not initialized"));
}

void PicDriver::sendStartFrequency()
{
    sendOrWarn(kPicStart, configuration().startFreq, tr("Start frequency not initialized"));
}

void PicDriver::sendStepFrequency()
{
    sendOrWarn(kPicStep, configuration().stepFreq, tr("Step frequency not initialized"));
}

void PicDriver::resetGenerator()
{
    sendAndNote(kPicReset, 0);
    emit sweepForgotten();
    clock().sleep(kResetMs);
    sendAndNote(kPicOutput, kResetFrequency);
}

bool PicDriver::putGeneratorOn(std::int32_t hertz)
{
    return sendFrequency(kPicOutput, hertz);
}

// A reset switches the board's generator off.
void PicDriver::putGeneratorOff()
{
    sendAndNote(kPicReset, 0);
}

void PicDriver::sendOrWarn(const QString &command, std::int32_t hertz, const QString &warning)
{
    if (!sendFrequency(command, hertz))
        emit refused(warning, false);
}

// Stores in msgResult whether the board accepted the command; shows nothing.
void PicDriver::sendAndNote(const QString &command, std::int32_t hertz)
{
    configuration().msgResult = sendFrequency(command, hertz) ? -1 : 0;
}

void PicDriver::releaseHardware()
{
    ignoringErrors([this] { stopSweep(kStopForUser); });
    ignoringErrors([this] { sendAndNote(kPicOutput, configuration().startFreq); });
    ignoringErrors([this] { closePort(); });
}

bool PicDriver::openPort(std::int16_t port, const QString &settings)
{
    return finish(proxy().OpenPort(port, settings));
}

bool PicDriver::prepareSweep(std::int32_t start, std::int32_t step)
{
    return finish(proxy().PrepareSweep(start, step));
}

bool PicDriver::sendFrequency(const QString &command, std::int32_t hertz)
{
    if (command == kPicOutput || command == kPicReset)
        generatorCommanded();
    return finish(proxy().SendFrequency(command, hertz));
}

} // namespace calvorn

template class calvorn::ProxyDriver<PicProxy>;
