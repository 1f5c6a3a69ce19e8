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

// The plan of a sweep: kSweepPoints frequencies from startHz in steps of stepHz. The default, before the first plan is
// set, is 1 to 10 MHz.
struct SweepPlan
{
    std::int32_t startHz = 1'000'000;
    std::int32_t stepHz = 22'556;

    std::int64_t pointHz(int index) const { return startHz + std::int64_t{index} * stepHz; }
};

// Runs sweeps in its own thread, one vector after the other, until the owner stops it or a point fails. All members
// must be called in the owner's thread. Its event loop emits the signals, so the receiver must compare their run and
// plan numbers with the current ones.
class SweepThread : public QObject
{
    Q_OBJECT

public:
    // Returns the count of one point at this frequency (Hz). Called in the sweeping thread; may throw.
    using Measure = std::function<int(std::int64_t)>;
    // Called in the sweeping thread when all points of a vector have been measured. Throws when the points are invalid.
    using Confirm = std::function<void()>;

    SweepThread(Measure measure, Confirm confirm, QObject *parent = nullptr);
    ~SweepThread() override;

    bool isRunning() const { return m_thread.joinable(); }

    // Returns true if no point was finished for two seconds: an access to the hardware hangs.
    bool isStuck() const;

    // Returns the number of the run. The thread must not be running. Throws ThreadError when the system cannot start a
    // thread.
    quint64 start();

    // Takes effect at once: a pass with the previous plan is abandoned and restarted. Returns the number of the plan.
    quint64 setPlan(const SweepPlan &plan);
    quint64 planNumber() const { return m_planNumber; }

    // Ends the sweep at the next point.
    void requestStop() { m_stop = true; }
    bool isStopping() const { return m_stop; }

    // Waits for the end of the thread, which must have been asked to stop or have ended by itself.
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

    // Run in the sweeping thread.
    void sweep(quint64 run);
    void onePass(quint64 run);
    void post(News news);

    // Runs in the owner's thread.
    void deliver();

    void noteProgress();

    Measure m_measure;
    Confirm m_confirm;
    std::atomic<std::int64_t> m_progressMs{0}; // steady clock: when the last point was finished
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
