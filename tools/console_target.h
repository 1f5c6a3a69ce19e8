// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/trace_set.h"
#include "core/settings.h"
#include "display/plot/markers.h"
#include "remote/remote_target.h"
#include "tools/curve_picture.h"

namespace calvorn {

// calvorn-sweep under remote control: executes commands without a window.
class ConsoleTarget : public RemoteTarget
{
    Q_OBJECT

public:
    // The objects that commands act on; all must outlive the target. window: contains the initial marker positions.
    struct Station
    {
        Configuration &configuration;
        Instrument &instrument;
        TraceSet &traces;
        Log &log;
        const WindowSettings &window;
    };

    explicit ConsoleTarget(const Station &station, Markers &markers, SignalGenerator &generator,
                           QObject *parent = nullptr);

    // Plans the range from the settings and connects the hardware. Returns an empty string, or an error message if the
    // hardware is not connected; client commands then report this, and the next sweep tries to connect again.
    QString connectHardware();

    void setRange(double start, double stop) override;
    void setSpeed(std::int16_t speed) override;
    void start(SweepRun run) override;
    void stop() override;
    void setScale(std::int16_t scale) override;
    void setTopOfLinearScale(double volts) override;
    void setBottomOfDbScales(int decibels) override;
    void placeMarker(GraphItem marker, double hertz) override;
    const LimitLines &limits() const override { return m_limits; }
    bool areLimitsOn() const override { return m_limitsOn; }
    void setLimits(const LimitLines &limits) override { m_limits = limits; }
    void setLimitsOn(bool on) override { m_limitsOn = on; }
    void setOutput(int number, std::uint8_t value) override;
    void setPotentiometer(std::uint8_t position) override;
    void storeSweep(const QString &path) override;
    void loadSweep(const QString &path) override;
    void storePicture(const QString &path) override;
    QByteArray picture() const override;

private:
    void followDriver();
    void followTable();
    PictureComponents pictureComponents() const;
    ShownCurve curve() const;
    Companions companions() const;
    void hardwareFailed(std::int16_t code, const QString &text);
    void replan();
    void sendOutputs();

    Station m_station;
    Markers &m_placed;
    LimitLines m_limits;
    bool m_limitsOn = false;
    std::optional<SweepRun> m_restart; // sweep to start when the hardware has stopped
    QString m_refusal;                 // the hardware's last refusal
};

} // namespace calvorn
