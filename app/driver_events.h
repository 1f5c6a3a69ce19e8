// SPDX-License-Identifier: MIT
#pragma once

#include "controls/sweep_controls.h"
#include "controls/test_panel.h"
#include "core/error_boundary.h"
#include "instrument/instrument.h"

#include <QObject>

namespace calvorn {

class LptDriver;
class PicDriver;
class VnaDriver;

// Handles the driver events, with three handlers for each interface.
class DriverEvents : public QObject
{
    Q_OBJECT

public:
    DriverEvents(Messages &messages, Log &log, ErrorBoundary &boundary, SweepControls &controls, Instrument &instrument,
                 TestPanel &testPanel, QObject *parent = nullptr);

    // Connects the events of the instrument's driver.
    void connectDriver();

    // Suppresses log lines and error boxes while a calibration dialog reports the errors. Errors are still counted.
    void setErrorsReportedElsewhere(bool elsewhere) { m_reportedElsewhere = elsewhere; }

signals:
    // The user cancelled a hardware error box, which closes the main window.
    void cancelled();

    // A driver message for the user. Not emitted for errors that are only counted.
    void reported(const QString &text);

private:
    template <typename Driver>
    struct Handlers
    {
        const char *completeName;
        void (DriverEvents::*complete)(Driver *);
        const char *errorName;
        void (DriverEvents::*error)(Driver *, std::int16_t, const QString &);
        const char *vectorName;
        void (DriverEvents::*vector)(const QVector<int> &);
    };
    template <typename Driver>
    void connectHandlers(Driver *driver, const Handlers<Driver> &handlers);

    void aPIC_aComplete(PicDriver *driver);
    void aPIC_aErrore(PicDriver *driver, std::int16_t tipoErrore, const QString &descrizione);
    void aPIC_aVettore(const QVector<int> &vettore);
    void aLPT_aComplete(LptDriver *driver);
    void aLPT_aErrore(LptDriver *driver, std::int16_t tipoErrore, const QString &descrizione);
    void aLPT_aVettore(const QVector<int> &vettore);
    void aVNA_aComplete(VnaDriver *driver);
    void aVNA_aErrore(VnaDriver *driver, std::int16_t tipoErrore, const QString &descrizione);
    void aVNA_aVettore(const QVector<int> &vettore);

    void refused(const QString &text, bool withBeep);
    void completed(AcquisitionDriver *driver);
    void stored(const QVector<int> &vettore);
    void failed(const AcquisitionDriver *driver, std::int16_t tipoErrore, const QString &descrizione);

    Messages &m_messages;
    Log &m_log;
    ErrorBoundary &m_boundary;
    SweepControls &m_controls;
    Instrument &m_instrument;
    TestPanel &m_testPanel;
    AlertQueue m_alerts;
    bool m_reportedElsewhere = false;
};

} // namespace calvorn
