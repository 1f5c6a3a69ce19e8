// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/error_codes.h"
#include "protocol/sweep_points.h"
#include "server/links/thread_start.h"
#include "server/links/wake_up.h"

#include <QList>
#include <QObject>
#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <variant>
#include <vector>

namespace calvorn {

// The plan of a sweep: kSweepPoints frequencies, beginning at startHz in steps of stepHz. The default, used until a
// plan is set, is 1 to 10 MHz.
struct SweepPlan
{
    std::int32_t startHz = 1'000'000;
    std::int32_t stepHz = 22'556;

    std::int64_t pointHz(int index) const { return startHz + std::int64_t{index} * stepHz; }
};

// Runs sweeps in its own thread, one after another, until the owner stops it or a point fails. All members must be
// called in the owner's thread. The signals are emitted from that thread's event loop and may be out of date, so the
// receiver must compare their run and plan numbers with the current ones.
class SweepThread : public QObject
{
    Q_OBJECT

public:
    // Returns the count for one point at this frequency (Hz). Called in the sweep thread; may throw.
    using Measure = std::function<int(std::int64_t)>;
    // Called in the sweep thread when all points of a vector have been measured. Throws if they are invalid.
    using Confirm = std::function<void()>;

    SweepThread(Measure measure, Confirm confirm, QObject *parent = nullptr);
    ~SweepThread() override;

    bool isRunning() const { return m_thread.joinable(); }

    // Returns true if no point has been finished for two seconds, which means that a hardware access hangs.
    bool isStuck() const;

    // Starts the thread, which must not be running, and returns the run number. Throws ThreadError if the system cannot
    // start a thread.
    quint64 start();

    // Takes effect immediately: a sweep in progress starts again with the new plan. Returns the plan number.
    quint64 setPlan(const SweepPlan &plan);
    quint64 planNumber() const { return m_planNumber; }

    // Ends the sweep at the next point.
    void requestStop() { m_stop = true; }
    bool isStopping() const { return m_stop; }

    // Waits until the thread has finished. The caller must have requested a stop, unless the sweep has already ended.
    void join();

signals:
    void vectorMeasured(quint64 run, quint64 planNumber, const calvorn::SweepPlan &plan, const QList<int> &vector);
    void failed(quint64 run, calvorn::ErrorCode code, const QString &sentence);
    void ended(quint64 run); // the last signal of a run

private:
    struct Measured
    {
        quint64 run = 0;
        quint64 planNumber = 0;
        SweepPlan plan;
        QList<int> vector;
    };
    struct Failed
    {
        quint64 run = 0;
        ErrorCode code = ErrorCode::Board;
        QString sentence;
    };
    struct Ended
    {
        quint64 run = 0;
    };
    using News = std::variant<Measured, Failed, Ended>;

    // Called in the sweep thread.
    void sweep(quint64 run);
    void onePass(quint64 run);
    void post(News news);

    // Called in the owner's thread.
    void deliver();

    void noteProgress();

    Measure m_measure;
    Confirm m_confirm;
    std::atomic<std::int64_t> m_progressMs{0}; // when the last point was finished (steady clock)
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    quint64 m_run = 0;
    std::mutex m_planLock; // protects m_plan together with m_planNumber
    SweepPlan m_plan;
    std::atomic<quint64> m_planNumber{0};
    std::mutex m_newsLock;
    std::vector<News> m_news;
    WakeUp m_wakeUp;
};

} // namespace calvorn
