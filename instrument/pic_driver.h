// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/proxy_driver.h"

class PicProxy;

namespace calvorn {

// aPIC: the PIC 16F877 board on a USB virtual COM port. The functions below the line call the calvorn.Pic operations.
class PicDriver : public ProxyDriver<PicProxy>
{
    Q_OBJECT

public:
    explicit PicDriver(const DriverContext &context, QObject *parent = nullptr);
    ~PicDriver() override;

    const InterfaceKind &kind() const override;
    QString logPrefix() const override { return QStringLiteral("P> "); }
    QString caption() const override;
    Replanning replanning() const override { return Replanning::StopAndRestart; }
    void sendFrequency() override;
    void sendStartFrequency() override;
    void sendStepFrequency() override;
    void resetGenerator() override;

    // ----

    bool openPort(std::int16_t port, const QString &settings);
    // Returns true if the board accepted the sweep.
    bool prepareSweep(std::int32_t start, std::int32_t step); // Hz
    // command: kPicOutput, kPicStart, kPicStep or kPicReset (protocol/pic_commands.h). Returns true if the board
    // accepted it.
    bool sendFrequency(const QString &command, std::int32_t hertz);

protected:
    void releaseHardware() override;
    ErrorReaction hardwareReactionTo(std::int16_t tipoErrore) const override;
    bool configureHardware() override;
    bool runPlan(const SweepAxis &plan) override;
    void park() override;
    bool putGeneratorOn(std::int32_t hertz) override;
    void putGeneratorOff() override;

private:
    void sendOrWarn(const QString &command, std::int32_t hertz, const QString &warning);
    void sendAndNote(const QString &command, std::int32_t hertz);
};

} // namespace calvorn

extern template class calvorn::ProxyDriver<PicProxy>;
