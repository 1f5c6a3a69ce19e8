// SPDX-License-Identifier: MIT
#include "server/drivers/lpt_driver.h"

#include <utility>

namespace calvorn {

LptDriver::LptDriver(PortOpener opener, QObject *parent)
    : QObject(parent)
    , m_opener(std::move(opener))
    , m_sweep([this](std::int64_t hertz) { return m_board.measure(hertz); })
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
    m_board.setMultiplier(multiplier);
}

void LptDriver::SetXtalFrequency(double hertz)
{
    m_board.setXtal(hertz);
}

void LptDriver::SetOffset(double hertz)
{
    m_board.setOffset(hertz);
}

void LptDriver::SetSpeed(short speed)
{
    if (speed >= static_cast<short>(SweepSpeed::Standard) && speed <= static_cast<short>(SweepSpeed::Calibration))
        m_board.setSpeed(static_cast<SweepSpeed>(speed));
    else
        report(ErrorCode::Setting, tr("Unknown sweep speed: %1").arg(speed));
}

void LptDriver::RunSweep()
{
    if (!m_board.isOpen()) {
        report(ErrorCode::Port, tr("The parallel port is not open."));
        emit aComplete();
        return;
    }
    if (m_sweep.isRunning()) {
        if (!m_sweep.isStopping())
            return;
        finishSweep();
    }
    m_run = m_sweep.start();
}

bool LptDriver::OpenPort(short address)
{
    ClosePort();
    // Base addresses are 16 bits without a sign.
    const int base = static_cast<unsigned short>(address);
    try {
        m_board.attach(m_opener(base));
        return true;
    } catch (const PortError &error) {
        m_board.detach();
        report(ErrorCode::Ignorable, QString::fromUtf8(error.what()));
        return false;
    }
}

void LptDriver::ResetDevice()
{
    reportFailure([this] { m_board.reset(); });
}

void LptDriver::ClosePort()
{
    if (m_sweep.isRunning())
        finishSweep();
    m_board.detach();
}

void LptDriver::PrepareSweep(int start, int step)
{
    m_sweep.setPlan({start, step});
    m_gate.discardWaiting();
}

void LptDriver::SetFrequency(int hertz)
{
    reportFailure([this, hertz] { m_board.setFrequency(hertz); });
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

void LptDriver::VectorTaken()
{
    if (const auto vector = m_gate.taken())
        emit aVettore(*vector);
}

void LptDriver::report(ErrorCode code, const QString &sentence)
{
    emit aErrore(static_cast<short>(code), sentence);
}

void LptDriver::reportFailure(const std::function<void()> &work)
{
    try {
        work();
    } catch (const FrequencyError &error) {
        report(ErrorCode::Frequency, QString::fromUtf8(error.what()));
    } catch (const PortError &error) {
        report(ErrorCode::Port, QString::fromUtf8(error.what()));
    }
}

// Ends the running sweep at once. What its thread has posted and nobody has received yet is void: it
// carries the number of a run that is over.
void LptDriver::finishSweep()
{
    m_sweep.requestStop();
    m_sweep.join();
    m_run = 0;
    m_gate.discardWaiting();
    emit aComplete();
}

void LptDriver::onVector(quint64 run, quint64 plan, const QList<int> &vector)
{
    if (run != m_run || plan != m_sweep.planNumber())
        return;
    if (const auto now = m_gate.offer(vector))
        emit aVettore(*now);
}

void LptDriver::onFailed(quint64 run, ErrorCode code, const QString &sentence)
{
    if (run == m_run)
        report(code, sentence);
}

void LptDriver::onEnded(quint64 run)
{
    if (run == m_run)
        finishSweep();
}

} // namespace calvorn
