// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/page_rows.h"
#include "tests/support/window_bench.h"

#include <QListWidget>
#include <QProcess>
#include <QTimer>

#include <algorithm>

namespace calvorn::test {

// The main window, with counters for correct and wrong sweeps.
struct Scene : WindowBench
{
    Scene(std::int16_t interfaceType, const QByteArray &settings)
        : WindowBench(ProgramFolder::builtFile(QStringLiteral("CalvornAsync")), settings)
        , type(interfaceType)
    {
        window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep"))->setInterval(20);
        QObject::connect(table(), &SweepTable::dataChanged, window.get(), [this] {
            const Rows rows = rowsOf(*table(), type, mode());
            right += rows == Rows::Right ? 1 : 0;
            wrong += rows == Rows::Wrong ? 1 : 0;
        });
    }

    std::int16_t mode() const
    {
        const QString caption = this->caption("cmdMisura");
        return caption == u"Angle" ? std::int16_t{1} : caption == u"RetLoss" ? std::int16_t{2} : std::int16_t{3};
    }
    bool isIdle() const { return isShown("cmdStart") && !isShown("cmdStop"); }
    QStringList log() const
    {
        QStringList lines;
        const auto *list = find<QListWidget>("lstLOG");
        for (int line = 0; line < list->count(); ++line)
            lines.append(list->item(line)->text());
        return lines;
    }
    bool logs(const QString &text) const { return log().filter(text).size() > 0; }
    int boxesWith(const QString &text) const
    {
        return static_cast<int>(std::count_if(desktop.boxes.begin(), desktop.boxes.end(),
                                              [&](const auto &box) { return box.text.contains(text); }));
    }
    void setRange(int start, int stop) const
    {
        WidgetHands::type("txtStart", QString::number(start));
        WidgetHands::type("txtStop", QString::number(stop));
    }
    // Waits until the program has planned the typed range.
    bool rangeIsTaken() const
    {
        const auto *timer = window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
        return QTest::qWaitFor([timer] { return !timer->isActive(); });
    }
    // Starts a sweep if necessary and waits for this many correct sweeps.
    bool sweeps(int count = 2)
    {
        const int before = right;
        if (isShown("cmdStart"))
            click("cmdStart");
        return QTest::qWaitFor([&] { return right >= before + count; }, 10'000);
    }
    bool stops() const
    {
        if (isShown("cmdStop"))
            click("cmdStop");
        return QTest::qWaitFor([&] { return isIdle(); }, 10'000);
    }
    qint64 serverPid() const
    {
        QProcess pgrep;
        pgrep.start(QStringLiteral("pgrep"), {QStringLiteral("-f"), folder.path() + QStringLiteral("/CalvornAsync")});
        pgrep.waitForFinished();
        return pgrep.readAllStandardOutput().trimmed().toLongLong();
    }

    std::int16_t type;
    int right = 0; // stored sweeps with correct counts
    int wrong = 0;
};

} // namespace calvorn::test
