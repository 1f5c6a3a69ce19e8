// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/aux_hardware.h"
#include "instrument/proxy_driver.h"

class LptProxy;

namespace calvorn {

// aLPT: the DDS/DAC board on the parallel port. The functions below the line call the calvorn.Lpt operations.
class LptDriver : public ProxyDriver<LptProxy>, public AuxiliaryOutputs
{
    Q_OBJECT

public:
    explicit LptDriver(const DriverContext &context, QObject *parent = nullptr);
    ~LptDriver() override;

    const InterfaceKind &kind() const override;
    QString logPrefix() const override { return QStringLiteral("L> "); }
    QString caption() const override;
    Replanning replanning() const override { return Replanning::InPlace; }
    void replanSweep() override;
    AuxiliaryOutputs *outputs() override { return this; }
    void sendFrequency() override;
    void resetGenerator() override;
    bool readsWithoutSweep() const override { return true; }
    int readDetectorCount() override { return readDetector(); }
    void sweepCompleted() override;
    void setSpeed(std::int16_t code) override;
    bool triesOffsets() const override { return true; }
    void tryOffset(double hertz) override;
    std::optional<double> detectorVolts(double triedOffset, const SweepTable &table) override;

    // ----

    bool openPort(std::int16_t address);
    void setDdsDevice(const QString &chip);
    void setAdcDevice(const QString &converter);
    void setMultiplier(std::int16_t multiplier);
    void setXtalFrequency(double hertz);
    void setOffset(double hertz);
    void resetDevice();
    void setFrequency(std::int32_t hertz);
    void prepareSweep(std::int32_t start, std::int32_t step); // Hz
    std::int16_t readDetector();                              // counts
    void setAux(std::uint8_t value, std::int16_t output) override;
    bool writeI2c(std::uint8_t control, std::uint8_t command, std::uint8_t data) override;

protected:
    void releaseHardware() override;
    ErrorReaction hardwareReactionTo(std::int16_t tipoErrore) const override;
    bool configureHardware() override;
    void sendSettings() override;
    bool runPlan(const SweepAxis &plan) override;
    void park() override;
    bool putGeneratorOn(std::int32_t hertz) override;
    void putGeneratorOff() override;
};

} // namespace calvorn

extern template class calvorn::ProxyDriver<LptProxy>;
