// SPDX-License-Identifier: MIT
#include "acquisition/vna_driver.h"

#include "core/number_text.h"
#include "vna_proxy.h"

namespace calvorn {

VnaDriver::VnaDriver(const DriverContext &context, QObject *parent)
    : AcquisitionDriver(context, QStringLiteral("/aVNA"), parent)
{
}

VnaDriver::~VnaDriver() = default;

QString VnaDriver::caption() const
{
    return QString::fromLatin1(kApplicationTitle) + QStringLiteral(" - MiniVNA");
}

AcquisitionDriver::ErrorReaction VnaDriver::hardwareReactionTo(std::int16_t tipoErrore) const
{
    return serialReactionTo(tipoErrore);
}

void VnaDriver::attach(const QDBusConnection &connection, const QString &path)
{
    delete m_proxy;
    m_proxy = new VnaProxy(QString(), path, connection, this);
    m_proxy->setTimeout(kCallTimeoutMs);
    relayEvents(m_proxy);
}

VnaProxy &VnaDriver::proxy()
{
    ensureServer();
    return *m_proxy;
}

bool VnaDriver::configureHardware()
{
    if (!tellWhetherOpen([this] { return openPort(configuration().commPort, configuration().serialSettings); },
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
    setMode(window().vnaMode);
    setFrequency(configuration().startFreq);
}

bool VnaDriver::runPlan()
{
    setMode(window().vnaMode);
    prepareSweep(configuration().startFreq, configuration().stepFreq, kSweepPoints);
    runSweep();
    return true;
}

// A mode that the instrument does not have leaves it in the first one.
std::int16_t VnaDriver::mode() const
{
    const std::int16_t wanted = window().vnaMode;
    return wanted >= 1 && wanted <= modeCaptions().size() ? wanted : std::int16_t{1};
}

QDBusPendingReply<bool> VnaDriver::askWhetherWorking()
{
    return m_proxy->IsWorking();
}

void VnaDriver::stopSweep(std::int16_t reason)
{
    if (isServerUp())
        finish(proxy().StopSweep(reason));
}

void VnaDriver::parkAtChangedStart()
{
    setMode(0);
    setFrequency(configuration().startFreq);
    setMode(window().vnaMode);
}

void VnaDriver::sendFrequency()
{
    setFrequency(configuration().startFreq);
}

void VnaDriver::resetGenerator()
{
    setFrequency(kResetFrequency);
}

// Mode k at index k - 1.
QStringList VnaDriver::modeCaptions() const
{
    return {tr("Angle"), tr("RetLoss"), tr("DUT")};
}

QString VnaDriver::modeCaption() const
{
    const QStringList captions = modeCaptions();
    const int index = window().vnaMode - 1;
    return index >= 0 && index < captions.size() ? captions[index] : captions.last();
}

QString VnaDriver::nextMode(const QString &present)
{
    const QStringList captions = modeCaptions();
    const qsizetype index = captions.indexOf(present);
    const qsizetype next = (index + 1) % captions.size();
    if (index < 0)
        return present;
    window().vnaMode = static_cast<std::int16_t>(next + 1);
    return captions[next];
}

void VnaDriver::sendMode()
{
    setMode(window().vnaMode);
}

void VnaDriver::tryOffset(double hertz)
{
    setOffset(hertz);
    setFrequency(configuration().startFreq);
}

// The instrument reads its detector only within a sweep: the count is that of the last one at the start frequency.
// It is shown with the configured offset, which "Apply" changes.
std::optional<double> VnaDriver::detectorVolts(double, const SweepTable &table)
{
    setFrequency(configuration().startFreq);
    const double count = NumberText().toDouble(table.text(1, SweepTable::SampleColumn));
    return count * static_cast<double>(configuration().adcStep) + static_cast<double>(configuration().adcOffset);
}

void VnaDriver::releaseHardware()
{
    ignoringErrors([this] { stopSweep(2); });
    ignoringErrors([this] { closePort(); });
}

bool VnaDriver::openPort(std::int16_t port, const QString &settings)
{
    return finish(proxy().OpenPort(port, settings));
}

void VnaDriver::closePort()
{
    finish(proxy().ClosePort());
}

void VnaDriver::setMode(std::int16_t mode)
{
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
    finish(proxy().SetFrequency(hertz));
}

void VnaDriver::prepareSweep(std::int32_t start, std::int32_t step, std::int32_t samples)
{
    finish(proxy().PrepareSweep(start, step, samples));
}

void VnaDriver::runSweep()
{
    finish(proxy().RunSweep());
}

} // namespace calvorn
