// SPDX-License-Identifier: MIT
#include "server/drivers/sweep_thread.h"

#include "server/links/parallel_port.h"
#include "server/synthesiser/dds_clock.h"

#include <chrono>
#include <exception>
#include <utility>

namespace calvorn {

namespace {

constexpr std::int64_t kStuckMs = 2'000; // the slowest point takes 10 ms

std::int64_t steadyMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

SweepThread::SweepThread(Measure measure, Confirm confirm, QObject *parent)
    : QObject(parent)
    , m_measure(std::move(measure))
    , m_confirm(std::move(confirm))
{
    connect(&m_wakeUp, &WakeUp::knocked, this, &SweepThread::deliver);
}

SweepThread::~SweepThread()
{
    requestStop();
    join();
}

quint64 SweepThread::start()
{
    m_stop = false;
    noteProgress();
    const quint64 run = ++m_run;
    m_thread = startThread([this, run] { sweep(run); });
    return run;
}

void SweepThread::noteProgress()
{
    m_progressMs.store(steadyMs(), std::memory_order_relaxed);
}

bool SweepThread::isStuck() const
{
    return isRunning() && steadyMs() - m_progressMs.load(std::memory_order_relaxed) > kStuckMs;
}

quint64 SweepThread::setPlan(const SweepPlan &plan)
{
    const std::lock_guard guard(m_planLock);
    m_plan = plan;
    return ++m_planNumber;
}

void SweepThread::join()
{
    if (m_thread.joinable())
        m_thread.join();
}

void SweepThread::sweep(quint64 run)
{
    try {
        while (!m_stop)
            onePass(run);
    } catch (const FrequencyError &error) {
        post(Failed{run, ErrorCode::Frequency, QString::fromUtf8(error.what())});
    } catch (const SettingError &error) {
        post(Failed{run, ErrorCode::Setting, QString::fromUtf8(error.what())});
    } catch (const PortError &error) {
        post(Failed{run, ErrorCode::Port, QString::fromUtf8(error.what())});
    } catch (const std::exception &error) {
        post(Failed{run, ErrorCode::Board, QString::fromUtf8(error.what())});
    }
    post(Ended{run});
}

void SweepThread::onePass(quint64 run)
{
    SweepPlan plan;
    quint64 number = 0;
    {
        const std::lock_guard guard(m_planLock);
        plan = m_plan;
        number = m_planNumber;
    }
    QList<int> vector;
    vector.reserve(kSweepPoints);
    for (int point = 0; point < kSweepPoints; ++point) {
        if (m_stop || m_planNumber != number)
            return;
        vector.append(m_measure(plan.pointHz(point)));
        noteProgress();
    }
    m_confirm();
    post(Measured{run, number, plan, std::move(vector)});
}

void SweepThread::post(News news)
{
    {
        const std::lock_guard guard(m_newsLock);
        m_news.push_back(std::move(news));
    }
    m_wakeUp.knock();
}

void SweepThread::deliver()
{
    std::vector<News> news;
    {
        const std::lock_guard guard(m_newsLock);
        news.swap(m_news);
    }
    for (const News &item : news) {
        if (const auto *measured = std::get_if<Measured>(&item))
            emit vectorMeasured(measured->run, measured->planNumber, measured->plan, measured->vector);
        else if (const auto *error = std::get_if<Failed>(&item))
            emit failed(error->run, error->code, error->sentence);
        else if (const auto *end = std::get_if<Ended>(&item))
            emit ended(end->run);
    }
}

} // namespace calvorn
