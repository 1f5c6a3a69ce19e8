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

// What a sweep measures: kSweepPoints frequencies from startHz in steps of stepHz. Before the first plan is made:
// 1 to 10 MHz.
struct SweepPlan
{
    std::int32_t startHz = 1'000'000;
    std::int32_t stepHz = 22'556;

    std::int64_t pointHz(int index) const { return startHz + std::int64_t{index} * stepHz; }
};

// Runs sweeps in a thread of its own, one vector after the other, until it is told to stop or a point fails. All
// members are for the thread that owns the object, and the signals are emitted there, from its event loop: compare
// their numbers with what is wanted by then.
class SweepThread : public QObject
{
    Q_OBJECT

public:
    // One point: the count at this frequency (Hz). Called in the sweeping thread; may throw.
    using Measure = std::function<int(std::int64_t)>;
    // All points of a vector have been measured: throws when they are void. Called in the sweeping thread.
    using Confirm = std::function<void()>;

    SweepThread(Measure measure, Confirm confirm, QObject *parent = nullptr);
    ~SweepThread() override;

    bool isRunning() const { return m_thread.joinable(); }

    // No point has been finished for two seconds: an access to the hardware hangs.
    bool isStuck() const;

    // Returns the number of the run. The thread must not be running. Throws ThreadError when the system has none left.
    quint64 start();

    // From now on. A pass under the former plan is given up and begun anew. Returns the number of the plan.
    quint64 setPlan(const SweepPlan &plan);
    quint64 planNumber() const { return m_planNumber; }

    // The sweep ends at the next point.
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

    // In the sweeping thread.
    void sweep(quint64 run);
    void onePass(quint64 run);
    void post(News news);

    // In the owner's thread.
    void deliver();

    void noteProgress();

    Measure m_measure;
    Confirm m_confirm;
    std::atomic<std::int64_t> m_progressMs{0}; // steady clock: when the last point was finished
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    quint64 m_run = 0;
    std::mutex m_planLock; // for m_plan together with m_planNumber
    SweepPlan m_plan;
    std::atomic<quint64> m_planNumber{0};
    std::mutex m_newsLock;
    std::vector<News> m_news;
    WakeUp m_wakeUp;
};

} // namespace calvorn
