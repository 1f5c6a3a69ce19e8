// SPDX-License-Identifier: MIT
#pragma once

#include "app/unattended_desktop.h"
#include "remote/remote_target.h"

namespace calvorn {

class AuxOutput;
class GraphPanel;
class MarkerPanel;
class Measurement;
class RangeEntry;
class ScaleControl;
class SweepControls;
class SweepFiles;
class SweepPictures;

// The components of the window that remote commands act on.
struct WindowComponents
{
    Configuration &configuration;
    Instrument &instrument;
    UnattendedDesktop &desktop;
    Markers &markers;
    SignalGenerator &generator;
    RangeEntry &range;
    SweepControls &controls;
    ScaleControl &scales;
    GraphPanel &graph;
    MarkerPanel &markerPanel;
    Measurement &measurement;
    AuxOutput &aux1;
    AuxOutput &aux2;
    SweepFiles &files;
    SweepPictures &pictures;
};

// The window under remote control: each command has the same effect as its control, but never prompts the user.
class WindowTarget : public RemoteTarget
{
    Q_OBJECT

public:
    explicit WindowTarget(const WindowComponents &components, QObject *parent = nullptr);
    ~WindowTarget() override;

    QString busyReason() const override;
    void setRange(double start, double stop) override;
    void setSpeed(std::int16_t speed) override;
    void start(SweepRun run) override;
    void stop() override;
    void setScale(std::int16_t scale) override;
    void setTopOfLinearScale(double volts) override;
    void setBottomOfDbScales(int decibels) override;
    void placeMarker(GraphItem marker, double hertz) override;
    const LimitLines &limits() const override;
    bool areLimitsOn() const override;
    void setLimits(const LimitLines &limits) override;
    void setLimitsOn(bool on) override;
    void setOutput(int number, std::uint8_t value) override;
    void setPotentiometer(std::uint8_t position) override;
    void storeSweep(const QString &path) override;
    void loadSweep(const QString &path) override;
    void storePicture(const QString &path) override;
    QByteArray picture() const override;

protected:
    void tracesEdited() override;

private:
    UnattendedDesktop::Report reporter();

    WindowComponents m_components;
};

} // namespace calvorn
