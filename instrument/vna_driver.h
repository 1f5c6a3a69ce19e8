// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/proxy_driver.h"

class VnaProxy;

namespace calvorn {

// aVNA: the MiniVNA on a USB virtual COM port. The functions below the line call the calvorn.Vna operations.
class VnaDriver : public ProxyDriver<VnaProxy>
{
    Q_OBJECT

public:
    explicit VnaDriver(const DriverContext &context, QObject *parent = nullptr);
    ~VnaDriver() override;

    const InterfaceKind &kind() const override;
    QString logPrefix() const override { return QStringLiteral("V> "); }
    QString caption() const override;
    Replanning replanning() const override { return Replanning::StopAndRestart; }
    bool countsAreInverted() const override;
    void sendFrequency() override;
    void resetGenerator() override;
    bool measuresLevel() const override;
    QString modeCaption() const override;
    QStringList modeCaptions() const override;
    QString nextMode(const QString &present) override;
    void chooseMode(int index) override;
    void sendMode() override;
    bool triesOffsets() const override { return true; }
    void tryOffset(double hertz) override;
    std::optional<double> detectorVolts(double triedOffset, const SweepTable &table) override;

    // ----

    bool openPort(std::int16_t port, const QString &settings);
    void setMode(std::int16_t mode); // the numeric value of a VnaMode
    void setMultiplier(std::int16_t multiplier);
    void setXtalFrequency(double hertz);
    void setOffset(double hertz);
    void setFrequency(std::int32_t hertz);
    void prepareSweep(std::int32_t start, std::int32_t step, std::int32_t samples); // Hz

protected:
    void releaseHardware() override;
    ErrorReaction hardwareReactionTo(std::int16_t tipoErrore) const override;
    bool configureHardware() override;
    void sendSettings() override;
    bool runPlan(const SweepAxis &plan) override;
    void park() override;
    bool putGeneratorOn(std::int32_t hertz) override;
    void putGeneratorOff() override;
    std::int16_t mode() const override;
};

} // namespace calvorn

extern template class calvorn::ProxyDriver<VnaProxy>;
