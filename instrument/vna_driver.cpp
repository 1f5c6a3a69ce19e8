// SPDX-License-Identifier: MIT
#include "instrument/vna_driver.h"

#include "protocol/object_paths.h"
#include "protocol/vna_instrument.h"
#include "vna_proxy.h"

namespace calvorn {

VnaDriver::VnaDriver(const DriverContext &context, QObject *parent)
    : ProxyDriver(context, kVnaPath, parent)
{
}

VnaDriver::~VnaDriver() = default;

const InterfaceKind &VnaDriver::kind() const
{
    return *interfaceKind(kInterfaceVna);
}

QString VnaDriver::caption() const
{
    return QString::fromLatin1(kApplicationTitle) + QStringLiteral(" - MiniVNA");
}

AcquisitionDriver::ErrorReaction VnaDriver::hardwareReactionTo(std::int16_t tipoErrore) const
{
    return serialReactionTo(tipoErrore);
}

bool VnaDriver::configureHardware()
{
    if (!openOrRefuse([this] { return openPort(configuration().commPort, configuration().serialSettings); },
                      serialPortRefusal()))
        return false;
    sendSettings();
    return true;
}

void VnaDriver::sendSettings()
{
    setXtalFrequency(configuration().ddsXtalFreq);
    setMultiplier(configuration().ddsMultiplier);
    setOffset(configuration().ddsOffset);
    setMode(configuration().measuringMode);
    setFrequency(configuration().startFreq);
}

bool VnaDriver::runPlan(const SweepAxis &plan)
{
    setMode(configuration().measuringMode);
    prepareSweep(plan.start, plan.step, kSweepPoints);
    runSweep();
    return true;
}

// In "DUT" mode, counts fall as the level rises.
bool VnaDriver::countsAreInverted() const
{
    return configuration().measuringMode == numberOf(VnaMode::Device);
}

// If the configured mode is invalid, the instrument remains in its first mode.
std::int16_t VnaDriver::mode() const
{
    const std::int16_t wanted = configuration().measuringMode;
    const bool isMeasuring = wanted >= numberOf(VnaMode::Angle) && wanted <= numberOf(VnaMode::Device);
    return isMeasuring ? wanted : numberOf(VnaMode::Angle);
}

void VnaDriver::park()
{
    setMode(numberOf(VnaMode::Parked));
    setFrequency(configuration().startFreq);
    setMode(configuration().measuringMode);
}

// The "Angle" mode measures phase, the other modes magnitude.
bool VnaDriver::measuresLevel() const
{
    return mode() != numberOf(VnaMode::Angle);
}

void VnaDriver::sendFrequency()
{
    setFrequency(configuration().startFreq);
}

void VnaDriver::resetGenerator()
{
    setFrequency(kResetFrequency);
}

bool VnaDriver::putGeneratorOn(std::int32_t hertz)
{
    setFrequency(hertz);
    return true;
}

void VnaDriver::putGeneratorOff()
{
    setMode(numberOf(VnaMode::Parked));
}

// Mode k has index k - 1.
QStringList VnaDriver::modeCaptions() const
{
    return {tr("Angle"), tr("RetLoss"), tr("DUT")};
}

QString VnaDriver::modeCaption() const
{
    const QStringList captions = modeCaptions();
    const int index = configuration().measuringMode - 1;
    return index >= 0 && index < captions.size() ? captions[index] : captions.last();
}

QString VnaDriver::nextMode(const QString &present)
{
    const QStringList captions = modeCaptions();
    const qsizetype index = captions.indexOf(present);
    const qsizetype next = (index + 1) % captions.size();
    if (index < 0)
        return present;
    chooseMode(static_cast<int>(next));
    return captions[next];
}

void VnaDriver::chooseMode(int index)
{
    configuration().measuringMode = static_cast<std::int16_t>(index + 1);
    emit modeChanged(modeCaption());
}

void VnaDriver::sendMode()
{
    setMode(configuration().measuringMode);
}

void VnaDriver::tryOffset(double hertz)
{
    setOffset(hertz);
    setFrequency(configuration().startFreq);
}

// The instrument reads its detector only during a sweep, so this uses the last sweep's count at the start frequency.
// The result includes the configured offset, which "Apply" changes.
std::optional<double> VnaDriver::detectorVolts(double, const SweepTable &table)
{
    setFrequency(configuration().startFreq);
    const double count = table.number(1, SweepTable::SampleColumn);
    return count * static_cast<double>(configuration().adcStep) + static_cast<double>(configuration().adcOffset);
}

void VnaDriver::releaseHardware()
{
    ignoringErrors([this] { stopSweep(kStopForUser); });
    ignoringErrors([this] { closePort(); });
}

bool VnaDriver::openPort(std::int16_t port, const QString &settings)
{
    return finish(proxy().OpenPort(port, settings));
}

void VnaDriver::setMode(std::int16_t mode)
{
    if (mode == numberOf(VnaMode::Parked))
        generatorCommanded();
    finish(proxy().SetMode(mode));
}

void VnaDriver::setMultiplier(std::int16_t multiplier)
{
    finish(proxy().SetMultiplier(multiplier));
}

void VnaDriver::setXtalFrequency(double hertz)
{
    finish(proxy().SetXtalFrequency(hertz));
}

void VnaDriver::setOffset(double hertz)
{
    finish(proxy().SetOffset(hertz));
}

void VnaDriver::setFrequency(std::int32_t hertz)
{
    generatorCommanded();
    finish(proxy().SetFrequency(hertz));
}

void VnaDriver::prepareSweep(std::int32_t start, std::int32_t step, std::int32_t samples)
{
    finish(proxy().PrepareSweep(start, step, samples));
}

} // namespace calvorn

template class calvorn::ProxyDriver<VnaProxy>;
