// SPDX-License-Identifier: MIT
// A random walk over every control of the main window, in several locales and with each interface. After each step,
// everything shown in the window must be correct, and nothing unrelated to the step may have changed.
//
// CALVORN_SEED selects another walk, CALVORN_STEPS sets its length, and CALVORN_RESTARTS sets the number of steps after
// which the window is closed and reopened. For each fault, the walk is shortened to the steps that cause it. These are
// printed with their numbers; CALVORN_ONLY=3,17,18 with the same seed repeats only these. CALVORN_SHORTEN limits the
// number of faults treated in this way.
#include "tests/support/walk_scene.h"

#include <QElapsedTimer>

using namespace calvorn;
using calvorn::test::WalkFault;
using calvorn::test::WalkScene;
using calvorn::test::WalkStep;

namespace {

constexpr quint32 kSeed = 20'261'122;
constexpr int kSteps = 2'000;
constexpr int kStepsBetweenRestarts = 400;
constexpr qint64 kShorteningMs = 15'000;

// Known faults, identified by part of their names; the walk continues after them. This list should be empty.
const QStringList kTolerated;

struct Walk
{
    QLocale locale;
    int interfaceType;

    struct Result
    {
        QList<std::pair<int, WalkFault>> faults; // each with the step where it first appeared
    };

    // Performs the steps, and stops at the fault with the id "until" if it occurs.
    Result go(const QList<WalkStep> &steps, const QString &until) const
    {
        WalkScene scene(locale, interfaceType);
        Result result;
        QSet<QString> present;
        for (int at = 0; at < steps.size(); ++at) {
            QSet<QString> now;
            for (const WalkFault &fault : scene.walk(steps[at])) {
                if (!present.contains(fault.id) && !now.contains(fault.id))
                    result.faults.append({at, fault});
                now.insert(fault.id);
                if (fault.id == until)
                    return result;
            }
            present = now;
        }
        return result;
    }

    bool leadsTo(const QList<WalkStep> &steps, const QString &id) const
    {
        for (const auto &[at, fault] : go(steps, id).faults)
            if (fault.id == id)
                return true;
        return false;
    }

    // Removes steps that are not needed to cause the fault: larger parts first, then single steps.
    QList<WalkStep> shortened(QList<WalkStep> steps, const QString &id) const
    {
        QElapsedTimer watch;
        watch.start();
        for (qsizetype last = 12; last < steps.size(); last *= 4)
            if (const QList<WalkStep> end = steps.last(last); leadsTo(end, id)) {
                steps = end;
                break;
            }
        for (qsizetype part = std::max<qsizetype>(1, steps.size() / 2); part >= 1 && watch.elapsed() < kShorteningMs;
             part /= 2)
            for (qsizetype at = steps.size() - part; at >= 0 && watch.elapsed() < kShorteningMs; at -= part) {
                QList<WalkStep> less = steps;
                less.remove(at, std::min(part, less.size() - at));
                if (!less.isEmpty() && leadsTo(less, id))
                    steps = less;
                at = std::min(at, steps.size());
            }
        return steps;
    }
};

QString listed(const QList<WalkStep> &steps)
{
    QStringList lines;
    for (const WalkStep &step : steps)
        lines.append(QStringLiteral("    ") + step.toString());
    return lines.join(u'\n');
}

bool isTolerated(const QString &id)
{
    return std::any_of(kTolerated.begin(), kTolerated.end(), [&](const QString &known) { return id.contains(known); });
}

} // namespace

class TestRandomWalk : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }
    void whatIsShownIsTrue_data();
    void whatIsShownIsTrue();
};

void TestRandomWalk::whatIsShownIsTrue_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<int>("interfaceType");
    QTest::newRow("en_US") << QLocale(QLocale::English, QLocale::UnitedStates) << int{kInterfaceLpt};
    QTest::newRow("it_IT") << QLocale(QLocale::Italian, QLocale::Italy) << int{kInterfaceLpt};
    QTest::newRow("de_DE") << QLocale(QLocale::German, QLocale::Germany) << int{kInterfaceLpt};
    QTest::newRow("C") << QLocale::c() << int{kInterfaceLpt};
    QTest::newRow("PIC") << QLocale(QLocale::English, QLocale::UnitedStates) << int{kInterfacePic};
    QTest::newRow("MiniVNA") << QLocale(QLocale::German, QLocale::Germany) << int{kInterfaceVna};
}

void TestRandomWalk::whatIsShownIsTrue()
{
    QFETCH(QLocale, locale);
    QFETCH(int, interfaceType);
    QLocale::setDefault(locale);
    const quint32 seed = qEnvironmentVariableIsSet("CALVORN_SEED")
                             ? static_cast<quint32>(qEnvironmentVariableIntValue("CALVORN_SEED"))
                             : kSeed;
    const int count =
        qEnvironmentVariableIsSet("CALVORN_STEPS") ? qEnvironmentVariableIntValue("CALVORN_STEPS") : kSteps;
    const int restarts = qEnvironmentVariableIsSet("CALVORN_RESTARTS")
                             ? qEnvironmentVariableIntValue("CALVORN_RESTARTS")
                             : kStepsBetweenRestarts;
    qInfo("seed %u, %d steps", seed, count);
    test::WalkDice dice(seed, QString(locale.groupSeparator()));
    QList<WalkStep> steps;
    for (int i = 1; i <= count; ++i) {
        steps.append(dice.next());
        steps.last().number = i;
        if (i % restarts == 0)
            steps.last().kind = test::WalkKind::Reopen;
    }
    if (qEnvironmentVariableIsSet("CALVORN_ONLY")) {
        const QStringList only = qEnvironmentVariable("CALVORN_ONLY").split(u',');
        steps.removeIf([&](const WalkStep &step) { return !only.contains(QString::number(step.number)); });
    }
    const Walk walk{locale, interfaceType};
    const Walk::Result result = walk.go(steps, {});
    QMap<QString, int> found;
    QStringList unexpected;
    for (const auto &[at, fault] : result.faults) {
        if (found[fault.id]++ == 0 && !isTolerated(fault.id)) {
            unexpected.append(fault.id);
            qWarning("%s: %s: %s", qPrintable(steps[at].toString()), qPrintable(fault.id), qPrintable(fault.detail));
        }
    }
    for (auto it = found.begin(); it != found.end(); ++it)
        qInfo("%4d times%s: %s", it.value(), isTolerated(it.key()) ? " (tolerated)" : "", qPrintable(it.key()));
    const int most = qEnvironmentVariableIsSet("CALVORN_SHORTEN") ? qEnvironmentVariableIntValue("CALVORN_SHORTEN") : 1;
    for (const QString &id : unexpected.first(std::min<qsizetype>(most, unexpected.size()))) {
        const auto first = std::find_if(result.faults.begin(), result.faults.end(),
                                        [&](const auto &entry) { return entry.second.id == id; });
        const QList<WalkStep> needed = walk.shortened(steps.first(first->first + 1), id);
        qWarning("%s after\n%s", qPrintable(id), qPrintable(listed(needed)));
    }
    QVERIFY2(unexpected.isEmpty(),
             qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(unexpected.join(QStringLiteral("; ")))));
}

QTEST_MAIN(TestRandomWalk)
#include "test_random_walk.moc"
