// SPDX-License-Identifier: MIT
#include "server/drivers/lpt_driver.h"

#include <algorithm>
#include <utility>

namespace calvorn {

LptDriver::LptDriver(PortOpener opener, QObject *parent)
    : QObject(parent)
    , m_opener(std::move(opener))
    , m_vectors([this](const VectorPlan &plan) { emit PlanOfVectors(plan.startHz, plan.stepHz, plan.mode); },
                [this](const QList<int> &counts) { emit aVettore(counts); })
    , m_sweep([this](std::int64_t hertz) { return m_board.measure(hertz); }, [this] { m_board.confirmPresent(); })
{
    connect(&m_sweep, &SweepThread::vectorMeasured, this, &LptDriver::onVector);
    connect(&m_sweep, &SweepThread::failed, this, &LptDriver::onFailed);
    connect(&m_sweep, &SweepThread::ended, this, &LptDriver::onEnded);
}

LptDriver::~LptDriver() = default;

void LptDriver::StopSweep(short /*reason*/)
{
    if (!m_sweep.isRunning()) {
        report(ErrorCode::Ignorable, tr("No sweep is running."));
        return;
    }
    m_sweep.requestStop();
}

void LptDriver::SetDdsDevice(const QString &chip)
{
    m_remarked = false;
    if (const auto known = ddsChipFromName(chip))
        m_board.setChip(*known);
    else
        report(ErrorCode::Setting, tr("Unknown generator chip: %1").arg(chip));
}

void LptDriver::SetAdcDevice(const QString &converter)
{
    if (const auto known = serialAdcFromName(converter))
        m_board.setConverter(*known);
    else
        report(ErrorCode::Setting, tr("Unknown detector converter: %1").arg(converter));
}

void LptDriver::SetMultiplier(short multiplier)
{
    m_remarked = false;
    m_board.setMultiplier(multiplier);
    m_clockFault.clear();
    reportFailure([this] { m_board.checkClock(); });
}

void LptDriver::SetXtalFrequency(double hertz)
{
    m_remarked = false;
    m_board.setXtal(hertz);
}

void LptDriver::SetOffset(double hertz)
{
    m_board.setOffset(hertz);
}

void LptDriver::SetSpeed(short speed)
{
    if (speed >= numberOf(SweepSpeed::Standard) && speed <= numberOf(SweepSpeed::Calibration))
        m_board.setSpeed(static_cast<SweepSpeed>(speed));
    else
        report(ErrorCode::Setting, tr("Unknown sweep speed: %1").arg(speed));
}

void LptDriver::RunSweep()
{
    if (m_sweep.isRunning()) {
        if (!m_sweep.isStopping())
            return;
        finishSweep();
    }
    if (m_address && (m_lost || !m_board.isOpen()))
        attachPort();
    if (!m_board.isOpen()) {
        const QString notOpen = tr("The parallel port is not open.");
        report(ErrorCode::Port, m_whyClosed.isEmpty() ? notOpen : notOpen + QLatin1Char(' ') + m_whyClosed);
        emit aComplete();
        return;
    }
    m_clockFault.clear(); // report the fault again with every sweep
    if (!reportFailure([this] { m_board.checkClock(); })) {
        emit aComplete();
        return;
    }
    remarkOnce(m_highestHz);
    m_vectors.beginRun();
    try {
        m_run = m_sweep.start();
    } catch (const ThreadError &error) {
        report(ErrorCode::Board, QString::fromUtf8(error.what()));
        emit aComplete();
    }
}

bool LptDriver::OpenPort(short address)
{
    ClosePort();
    // A base address is an unsigned 16-bit number.
    m_address = static_cast<unsigned short>(address);
    m_remarked = false;
    if (attachPort())
        return true;
    report(ErrorCode::Ignorable, m_whyClosed);
    return false;
}

void LptDriver::ResetDevice()
{
    reportFailure([this] { m_board.reset(); });
}

void LptDriver::ClosePort()
{
    if (m_sweep.isRunning())
        finishSweep();
    try {
        m_board.powerDown();
    } catch (const PortError &error) {
        qWarning("%s", error.what()); // the port is being closed anyway
    }
    m_board.detach();
    m_address.reset();
    m_lost = false;
    m_whyClosed.clear();
}

void LptDriver::PrepareSweep(int start, int step)
{
    const SweepPlan plan{start, step};
    m_sweep.setPlan(plan);
    m_vectors.discardWaiting();
    m_highestHz = std::max(plan.pointHz(0), plan.pointHz(kSweepPoints - 1));
    if (m_sweep.isRunning())
        remarkOnce(m_highestHz);
}

void LptDriver::SetFrequency(int hertz)
{
    reportFailure([this, hertz] {
        m_board.setFrequency(hertz);
        remarkOnce(hertz);
    });
}

short LptDriver::ReadDetector()
{
    if (!m_board.isOpen()) {
        report(ErrorCode::Ignorable, tr("The parallel port is not open."));
        return 0;
    }
    int count = 0;
    reportFailure([this, &count] { count = m_board.readDetector(); });
    return static_cast<short>(count);
}

void LptDriver::SetAux(uchar value, short output)
{
    if (output != 1 && output != 2) {
        report(ErrorCode::Setting, tr("Unknown auxiliary output: %1").arg(output));
        return;
    }
    reportFailure([this, value, output] { m_board.setAux(value, output); });
}

bool LptDriver::WriteI2c(uchar control, uchar command, uchar data)
{
    if (!m_board.isOpen())
        return false;
    bool acknowledged = false;
    reportFailure([&] { acknowledged = m_board.writeI2c(control, command, data); });
    return acknowledged;
}

void LptDriver::report(ErrorCode code, const QString &sentence)
{
    emit aErrore(numberOf(code), sentence);
}

// Runs `work` and reports any error. Returns false if it failed.
bool LptDriver::reportFailure(const std::function<void()> &work)
{
    try {
        work();
        return true;
    } catch (const SettingError &error) {
        reportClock(QString::fromUtf8(error.what()));
    } catch (const FrequencyError &error) {
        report(ErrorCode::Frequency, QString::fromUtf8(error.what()));
    } catch (const PortError &error) {
        reportLoss(QString::fromUtf8(error.what()));
        if (!m_sweep.isRunning())
            m_board.detach();
    }
    return false;
}

// Reports the same message only once, because at start-up several settings fail for the same reason.
void LptDriver::reportClock(const QString &sentence)
{
    if (std::exchange(m_clockFault, sentence) != sentence)
        report(ErrorCode::Setting, sentence);
}

// Reports a loss only once, even though every later access fails as well.
void LptDriver::reportLoss(const QString &sentence)
{
    if (!std::exchange(m_lost, true))
        report(ErrorCode::Port, sentence);
}

// Detaches the previous port first, because a port must be released before it can be claimed again.
bool LptDriver::attachPort()
{
    m_board.detach();
    try {
        m_board.attach(m_opener(*m_address));
        m_lost = false;
        m_whyClosed.clear();
    } catch (const PortError &error) {
        m_board.detach();
        m_whyClosed = QString::fromUtf8(error.what());
        qWarning("%s", error.what());
    }
    return m_board.isOpen();
}

// Frequencies above the useful maximum are allowed, because amateurs use the image, but reported once.
void LptDriver::remarkOnce(std::int64_t hertz)
{
    if (m_remarked)
        return;
    const QString remark = m_board.remarkOn(hertz);
    if (remark.isEmpty())
        return;
    m_remarked = true;
    qInfo("%s", qPrintable(remark));
    report(ErrorCode::Ignorable, remark);
}

// Ends the running sweep immediately. Events that its thread has already posted are ignored when they are delivered,
// because their run number is no longer current.
void LptDriver::finishSweep()
{
    m_sweep.requestStop();
    m_sweep.join();
    m_run = 0;
    m_vectors.discardWaiting();
    emit aComplete();
}

void LptDriver::onVector(quint64 run, quint64 planNumber, const SweepPlan &plan, const QList<int> &vector)
{
    if (run == m_run && planNumber == m_sweep.planNumber())
        m_vectors.send({plan.startHz, plan.stepHz}, vector);
}

void LptDriver::onFailed(quint64 run, ErrorCode code, const QString &sentence)
{
    if (run != m_run)
        return;
    if (code != ErrorCode::Port) {
        report(code, sentence);
        return;
    }
    reportLoss(sentence);
    m_board.detach();
}

void LptDriver::onEnded(quint64 run)
{
    if (run == m_run)
        finishSweep();
}

} // namespace calvorn
