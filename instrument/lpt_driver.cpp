// SPDX-License-Identifier: MIT
#include "instrument/lpt_driver.h"

#include "lpt_proxy.h"
#include "protocol/object_paths.h"

namespace calvorn {

namespace {

// The detector calibration shows the mean of this many readings.
constexpr int kReadingsOfDetector = 3;

} // namespace

LptDriver::LptDriver(const DriverContext &context, QObject *parent)
    : ProxyDriver(context, kLptPath, parent)
{
}

LptDriver::~LptDriver() = default;

const InterfaceKind &LptDriver::kind() const
{
    return *interfaceKind(kInterfaceLpt);
}

QString LptDriver::caption() const
{
    return QString::fromLatin1(kApplicationTitle) + QStringLiteral(" - ") + configuration().ddsDevice;
}

AcquisitionDriver::ErrorReaction LptDriver::hardwareReactionTo(std::int16_t tipoErrore) const
{
    return tipoErrore == numberOf(ErrorCode::Ignorable) ? ErrorReaction::Ignore : ErrorReaction::LogAndAsk;
}

bool LptDriver::configureHardware()
{
    const QString refusal = tr("Parallel port not initialized.") + u'\r' +
                            tr("Driver not found or wrong LPT address.") + u'\r' +
                            tr("Please verify 'SetUp/Configuration/Ports'.");
    if (!openOrRefuse([this] { return openPort(configuration().lptAddress); }, refusal))
        return false;
    sendSettings();
    return true;
}

void LptDriver::sendSettings()
{
    setDdsDevice(configuration().ddsDevice);
    setAdcDevice(configuration().adcDevice);
    setXtalFrequency(configuration().ddsXtalFreq);
    setMultiplier(configuration().ddsMultiplier);
    setOffset(configuration().ddsOffset);
    setSpeed(configuration().sweepSpeed);
    resetDevice();
    setFrequency(configuration().startFreq);
}

bool LptDriver::runPlan(const SweepAxis &plan)
{
    setSpeed(configuration().sweepSpeed);
    prepareSweep(plan.start, plan.step);
    runSweep();
    return true;
}

void LptDriver::replanSweep()
{
    prepareSweep(configuration().startFreq, configuration().stepFreq);
    log().writeLog(logPrefix() + tr("Start/step sweep reinizializzati"));
}

void LptDriver::park()
{
    setFrequency(configuration().startFreq);
}

void LptDriver::sendFrequency()
{
    setFrequency(configuration().startFreq);
}

void LptDriver::resetGenerator()
{
    resetDevice();
    setFrequency(kResetFrequency);
}

bool LptDriver::putGeneratorOn(std::int32_t hertz)
{
    setFrequency(hertz);
    return true;
}

// At 0 Hz the output stops. A reset would not help, because the server then restores the chip's last frequency.
void LptDriver::putGeneratorOff()
{
    setOffset(0.0);
    setFrequency(0);
    setOffset(configuration().ddsOffset);
}

void LptDriver::sweepCompleted()
{
    if (isServerUp())
        setFrequency(configuration().startFreq);
}

void LptDriver::tryOffset(double hertz)
{
    setOffset(hertz);
    setFrequency(configuration().startFreq);
}

std::optional<double> LptDriver::detectorVolts(double triedOffset, const SweepTable &)
{
    double sum = 0.0;
    for (int reading = 0; reading < kReadingsOfDetector; ++reading)
        sum += readDetector();
    return static_cast<double>(configuration().adcStep) * sum / kReadingsOfDetector + triedOffset;
}

void LptDriver::releaseHardware()
{
    if (!isServerUp())
        return;
    stopSweep(kStopForUser);
    closePort();
}

bool LptDriver::openPort(std::int16_t address)
{
    return finish(proxy().OpenPort(address));
}

void LptDriver::setDdsDevice(const QString &chip)
{
    finish(proxy().SetDdsDevice(chip));
}

void LptDriver::setAdcDevice(const QString &converter)
{
    finish(proxy().SetAdcDevice(converter));
}

void LptDriver::setMultiplier(std::int16_t multiplier)
{
    finish(proxy().SetMultiplier(multiplier));
}

void LptDriver::setXtalFrequency(double hertz)
{
    finish(proxy().SetXtalFrequency(hertz));
}

void LptDriver::setOffset(double hertz)
{
    finish(proxy().SetOffset(hertz));
}

void LptDriver::setSpeed(std::int16_t code)
{
    finish(proxy().SetSpeed(code));
}

void LptDriver::resetDevice()
{
    generatorCommanded();
    finish(proxy().ResetDevice());
}

void LptDriver::setFrequency(std::int32_t hertz)
{
    generatorCommanded();
    finish(proxy().SetFrequency(hertz));
}

void LptDriver::prepareSweep(std::int32_t start, std::int32_t step)
{
    finish(proxy().PrepareSweep(start, step));
}

std::int16_t LptDriver::readDetector()
{
    return static_cast<std::int16_t>(finish(proxy().ReadDetector()));
}

void LptDriver::setAux(std::uint8_t value, std::int16_t output)
{
    finish(proxy().SetAux(value, output));
}

bool LptDriver::writeI2c(std::uint8_t control, std::uint8_t command, std::uint8_t data)
{
    return finish(proxy().WriteI2c(control, command, data));
}

} // namespace calvorn

template class calvorn::ProxyDriver<LptProxy>;
