// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/acquisition_driver.h"

class PicProxy;

namespace calvorn {

// aPIC: the PIC 16F877 board on a USB virtual COM port. The operations below the line are those of calvorn.Pic.
class PicDriver : public AcquisitionDriver
{
    Q_OBJECT

public:
    explicit PicDriver(const DriverContext &context, QObject *parent = nullptr);
    ~PicDriver() override;

    QString logPrefix() const override { return QStringLiteral("P> "); }
    QString caption() const override;
    Replanning replanning() const override { return Replanning::StopAndRestart; }
    void stopSweep(std::int16_t reason) override;
    void parkAtChangedStart() override;
    void sendFrequency() override;
    void sendStartFrequency() override;
    void sendStepFrequency() override;
    void resetGenerator() override;

    // ----

    bool openPort(std::int16_t port, const QString &settings);
    void closePort();
    // True when the board accepted the sweep.
    bool prepareSweep(std::int32_t start, std::int32_t step); // Hz
    void runSweep();
    // command: "A" output frequency, "B" sweep start, "D" step, "*" reset. True when the board acknowledged.
    bool sendFrequency(const QString &command, std::int32_t hertz);

protected:
    void releaseHardware() override;
    ErrorReaction hardwareReactionTo(std::int16_t tipoErrore) const override;
    void attach(const QDBusConnection &connection, const QString &path) override;
    bool configureHardware() override;
    bool runPlan() override;
    QDBusPendingReply<bool> askWhetherWorking() override;

private:
    PicProxy &proxy();
    void sendOrWarn(const QString &command, std::int32_t hertz, const QString &warning);
    void sendAndNote(const QString &command, std::int32_t hertz);

    PicProxy *m_proxy = nullptr;
};

} // namespace calvorn
