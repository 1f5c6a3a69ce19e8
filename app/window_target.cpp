// SPDX-License-Identifier: MIT
#include "app/window_target.h"

#include "app/sweep_files.h"
#include "app/sweep_pictures.h"
#include "controls/aux_output.h"
#include "controls/range_entry.h"
#include "controls/sweep_controls.h"
#include "core/checked_arithmetic.h"
#include "core/runtime_error.h"
#include "display/graph_panel.h"
#include "display/marker_panel.h"
#include "display/plot/sweep_picture.h"
#include "display/scale_control.h"
#include "measure/measurement.h"

#include <QApplication>

namespace calvorn {

WindowTarget::WindowTarget(const WindowComponents &components, QObject *parent)
    : RemoteTarget(components.configuration, components.instrument, components.measurement.traces(), components.markers,
                   components.generator, parent)
    , m_components(components)
{
    m_components.measurement.setFollowed(true);
    // Send boxes to the client only until the sweep started by its command has ended.
    connect(&components.instrument, &Instrument::becameIdle, this, [this] { m_components.desktop.setStandIn({}); });
}

WindowTarget::~WindowTarget()
{
    m_components.desktop.setStandIn({});
    m_components.measurement.setFollowed(false);
}

UnattendedDesktop::Report WindowTarget::reporter()
{
    return [this](const QString &text) {
        emit errorReported({kScpiExecutionError, text.section(u'\r', 0, 0).toUtf8()});
    };
}

QString WindowTarget::busyReason() const
{
    const QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog)
        return {};
    const QString title = dialog->windowTitle();
    return title.isEmpty() ? QStringLiteral("a box is open") : title + QStringLiteral(" is open");
}

void WindowTarget::setRange(double start, double stop)
{
    const UnattendedDesktop::Guard guard(m_components.desktop, reporter());
    m_components.range.setRange(roundToInteger<std::int32_t>(start), roundToInteger<std::int32_t>(stop));
    m_components.controls.applyRange();
}

void WindowTarget::setSpeed(std::int16_t speed)
{
    m_components.controls.setSpeed(speed);
}

void WindowTarget::start(SweepRun run)
{
    const UnattendedDesktop::Guard guard(m_components.desktop, reporter());
    m_components.controls.start(run, SweepControls::Starter::Client);
    if (!instrument().isSweeping())
        throw ScpiError{kScpiHardwareError, "the hardware refused the sweep"};
    m_components.desktop.setStandIn(reporter());
}

void WindowTarget::stop()
{
    m_components.controls.cmdStop_Click();
}

void WindowTarget::setScale(std::int16_t scale)
{
    const UnattendedDesktop::Guard guard(m_components.desktop, reporter());
    m_components.scales.choose(scale);
}

void WindowTarget::setTopOfLinearScale(double volts)
{
    const UnattendedDesktop::Guard guard(m_components.desktop, reporter());
    m_components.graph.axis().enterTop(volts);
}

void WindowTarget::setBottomOfDbScales(int decibels)
{
    const UnattendedDesktop::Guard guard(m_components.desktop, reporter());
    m_components.graph.axis().enterBottom(decibels);
}

void WindowTarget::placeMarker(GraphItem marker, double hertz)
{
    m_components.markerPanel.enterFrequencyOf(marker, hertz);
}

const LimitLines &WindowTarget::limits() const
{
    return m_components.measurement.limits();
}

bool WindowTarget::areLimitsOn() const
{
    return m_components.measurement.areLimitsOn();
}

void WindowTarget::setLimits(const LimitLines &limits)
{
    m_components.measurement.setLimits(limits);
}

void WindowTarget::setLimitsOn(bool on)
{
    m_components.measurement.setLimitsOn(on);
}

void WindowTarget::tracesEdited()
{
    m_components.measurement.tracesEdited();
}

void WindowTarget::setOutput(int number, std::uint8_t value)
{
    if (!(number == 2 ? m_components.aux2 : m_components.aux1).setValue(value))
        throw ScpiError{kScpiSettingsConflict, "the output is not enabled in the settings"};
}

void WindowTarget::setPotentiometer(std::uint8_t position)
{
    if (!m_components.aux2.setPosition(position))
        throw ScpiError{kScpiSettingsConflict, "the settings have no potentiometer"};
}

void WindowTarget::storeSweep(const QString &path)
{
    m_components.files.exportSweep(path);
}

void WindowTarget::loadSweep(const QString &path)
{
    const UnattendedDesktop::Guard guard(m_components.desktop, reporter());
    try {
        m_components.files.importSweep(path);
    } catch (const RuntimeError &) {
        // Keep and show the rows read before the error.
        instrument().table().cellsWritten();
        throw;
    }
}

void WindowTarget::storePicture(const QString &path)
{
    if (!SweepPicture::isPictureName(path))
        throw ScpiError{kScpiFileNameError, "the name must end in .png or .svg"};
    m_components.pictures.savePicture(path);
}

QByteArray WindowTarget::picture() const
{
    return m_components.pictures.pictureAsPng();
}

} // namespace calvorn
