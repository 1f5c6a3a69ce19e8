// SPDX-License-Identifier: MIT
#include "app/driver_events.h"

#include "core/number_text.h"
#include "instrument/lpt_driver.h"
#include "instrument/pic_driver.h"
#include "instrument/vna_driver.h"

namespace calvorn {

DriverEvents::DriverEvents(Messages &messages, Log &log, ErrorBoundary &boundary, SweepControls &controls,
                           Instrument &instrument, TestPanel &testPanel, QObject *parent)
    : QObject(parent)
    , m_messages(messages)
    , m_log(log)
    , m_boundary(boundary)
    , m_controls(controls)
    , m_instrument(instrument)
    , m_testPanel(testPanel)
{
}

void DriverEvents::connectDriver()
{
    AcquisitionDriver *driver = m_instrument.driver();
    m_boundary.connect(driver, &AcquisitionDriver::refused, this, "refused",
                       [this](const QString &text, bool withBeep) { refused(text, withBeep); });
    connect(driver, &AcquisitionDriver::modeChanged, this,
            [this](const QString &caption) { emit reported(tr("Mode: %1").arg(caption)); });
    if (auto *pic = qobject_cast<PicDriver *>(driver))
        connectHandlers(pic, {"aPIC_aComplete", &DriverEvents::aPIC_aComplete, "aPIC_aErrore",
                              &DriverEvents::aPIC_aErrore, "aPIC_aVettore", &DriverEvents::aPIC_aVettore});
    else if (auto *lpt = qobject_cast<LptDriver *>(driver))
        connectHandlers(lpt, {"aLPT_aComplete", &DriverEvents::aLPT_aComplete, "aLPT_aErrore",
                              &DriverEvents::aLPT_aErrore, "aLPT_aVettore", &DriverEvents::aLPT_aVettore});
    else if (auto *vna = qobject_cast<VnaDriver *>(driver))
        connectHandlers(vna, {"aVNA_aComplete", &DriverEvents::aVNA_aComplete, "aVNA_aErrore",
                              &DriverEvents::aVNA_aErrore, "aVNA_aVettore", &DriverEvents::aVNA_aVettore});
}

template <typename Driver>
void DriverEvents::connectHandlers(Driver *driver, const Handlers<Driver> &handlers)
{
    m_boundary.connect(driver, &AcquisitionDriver::aComplete, this, handlers.completeName,
                       [this, driver, handle = handlers.complete] { (this->*handle)(driver); });
    m_boundary.connect(driver, &AcquisitionDriver::aErrore, this, handlers.errorName,
                       [this, driver, handle = handlers.error](std::int16_t code, const QString &text) {
                           (this->*handle)(driver, code, text);
                       });
    m_boundary.connect(driver, &AcquisitionDriver::aVettore, this, handlers.vectorName,
                       [this, handle = handlers.vector](const QVector<int> &vettore) { (this->*handle)(vettore); });
}

void DriverEvents::aPIC_aComplete(PicDriver *driver)
{
    completed(driver);
}

void DriverEvents::aPIC_aErrore(PicDriver *driver, std::int16_t tipoErrore, const QString &descrizione)
{
    failed(driver, tipoErrore, descrizione);
}

void DriverEvents::aPIC_aVettore(const QVector<int> &vettore)
{
    stored(vettore);
}

// Parks the parallel-port generator at the sweep's first frequency; otherwise it would stay at the last one.
void DriverEvents::aLPT_aComplete(LptDriver *driver)
{
    completed(driver);
    driver->sweepCompleted();
}

void DriverEvents::aLPT_aErrore(LptDriver *driver, std::int16_t tipoErrore, const QString &descrizione)
{
    failed(driver, tipoErrore, descrizione);
}

void DriverEvents::aLPT_aVettore(const QVector<int> &vettore)
{
    stored(vettore);
}

void DriverEvents::aVNA_aComplete(VnaDriver *driver)
{
    completed(driver);
}

void DriverEvents::aVNA_aErrore(VnaDriver *driver, std::int16_t tipoErrore, const QString &descrizione)
{
    failed(driver, tipoErrore, descrizione);
}

void DriverEvents::aVNA_aVettore(const QVector<int> &vettore)
{
    stored(vettore);
}

void DriverEvents::refused(const QString &text, bool withBeep)
{
    emit reported(text);
    withBeep ? m_messages.beepAndWarn(text) : m_messages.warn(text);
}

void DriverEvents::completed(AcquisitionDriver *driver)
{
    m_log.writeLog(driver->logPrefix() + tr("Stop sweep"));
    m_controls.sweepCompleted();
}

// Stops the sweep if a vector cannot be stored, because each further vector would cause another error.
void DriverEvents::stored(const QVector<int> &vettore)
{
    try {
        m_instrument.store(vettore);
    } catch (const RuntimeError &) {
        m_boundary.run("cmdStop_Click", [this] { m_controls.cmdStop_Click(); });
        throw;
    }
}

void DriverEvents::failed(const AcquisitionDriver *driver, std::int16_t tipoErrore, const QString &descrizione)
{
    using Reaction = AcquisitionDriver::ErrorReaction;
    const Reaction reaction = driver->reactionTo(tipoErrore);
    if (reaction == Reaction::CountSilently)
        m_testPanel.countError();
    if (m_reportedElsewhere || reaction == Reaction::CountSilently || reaction == Reaction::Ignore)
        return;
    m_log.writeLog(NumberText::fromInteger(tipoErrore) + u' ' + descrizione);
    emit reported(descrizione);
    if (reaction != Reaction::LogAndAsk)
        return;
    m_alerts.show(descrizione, [this](const QString &text) {
        const bool goesOn = m_messages.show(BoxIcon::Critical, BoxButtons::OkCancel, text) != kBoxCancel;
        if (!goesOn)
            emit cancelled();
        return goesOn;
    });
}

} // namespace calvorn
