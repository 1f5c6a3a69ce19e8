// SPDX-License-Identifier: MIT
// Measures how many vectors per second the whole program can receive through its socket and store in its table, if a
// server sends prepared vectors as fast as they are acknowledged. Baseline: a receiver that only acknowledges them. The
// two alternate, so that other load on the machine affects both equally; prints medians.
// Usage: vector_rate <flooding server> <initial settings file>. Prints one line for each view under the graph:
// name,vectors per second,vectors per second of the bare receiver,ratio,vectors received.
#include "app/frm_sweep.h"
#include "lpt_proxy.h"
#include "platform/qt_desktop.h"
#include "protocol/vector_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

using namespace calvorn;

namespace {

constexpr int kVectors = 10'000;
constexpr int kRounds = 5;
constexpr int kFirstSamples = 600; // the server's vectors begin with 0 to 599, repeatedly
constexpr int kPatienceMs = 60'000;

// Counts vectors and measures the time since the first one.
class Count
{
public:
    void arrived(int firstSample)
    {
        if (m_vectors == 0)
            m_clock.start();
        m_faults += firstSample == m_vectors % kFirstSamples ? 0 : 1;
        if (++m_vectors == kVectors)
            m_loop.exit(0);
    }

    // Returns false if the vectors do not arrive in time.
    bool await()
    {
        QTimer::singleShot(kPatienceMs, &m_loop, [this] { m_loop.exit(1); });
        const bool all = m_loop.exec() == 0;
        m_perSecond = 1e9 * (m_vectors - 1) / static_cast<double>(m_clock.nsecsElapsed());
        return all;
    }

    int vectors() const { return m_vectors; }
    double perSecond() const { return m_perSecond; }
    int faults() const { return m_faults; }

private:
    QEventLoop m_loop;
    QElapsedTimer m_clock;
    double m_perSecond = 0.0;
    int m_vectors = 0;
    int m_faults = 0;
};

class Bench
{
public:
    Bench(QString server, QString settings)
        : m_server(std::move(server))
        , m_settings(std::move(settings))
    {
        QFile rules(m_rules.filePath(QStringLiteral("rules")));
        if (rules.open(QIODevice::WriteOnly))
            rules.write("flood " + QByteArray::number(kVectors) + '\n');
        qputenv("CALVORN_FAKE_CONTROL", QFile::encodeName(rules.fileName()));
    }

    // Runs one round; returns false if a vector is missing.
    bool round() { return bare() && window("cmdView_0", m_markers) && window("cmdView_1", m_table); }

    void tell()
    {
        for (auto &[name, rates] : {std::pair<const char *, std::vector<double> &>{"markers", m_markers},
                                    std::pair<const char *, std::vector<double> &>{"table", m_table}})
            std::printf("%s,%.0f,%.0f,%.3f,%d\n", name, median(rates), median(m_bare), median(rates) / median(m_bare),
                        kVectors * kRounds);
    }

private:
    static double median(std::vector<double> &values)
    {
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }

    bool bare()
    {
        ServerProcess server(m_server);
        server.connectToServer();
        LptProxy proxy(QString(), QStringLiteral("/aLPT"), server.connection());
        Count count;
        QObject::connect(&proxy, &LptProxy::aVettore, &proxy, [&](const QList<int> &vector) {
            count.arrived(vector.constFirst());
            if (count.vectors() % kVectorsAtOnce == 0)
                proxy.VectorsTaken(kVectorsAtOnce);
        });
        proxy.RunSweep();
        if (!count.await())
            return false;
        m_bare.push_back(count.perSecond());
        return count.faults() == 0;
    }

    // Checks the table after the program has stored the vector.
    bool window(const char *view, std::vector<double> &rates)
    {
        const QTemporaryDir folder;
        const QString settings = folder.filePath(QStringLiteral("Calvorn.ini"));
        if (!QFile::copy(m_server, folder.filePath(QStringLiteral("CalvornAsync"))) ||
            !QFile::copy(m_settings, settings) ||
            !QFile::setPermissions(settings, QFile::ReadOwner | QFile::WriteOwner))
            return false;
        Configuration configuration;
        QtDesktop desktop;
        SweepStation station({folder.path(), folder.path(), folder.path()}, configuration, desktop, desktop);
        FrmSweep window(station);
        if (!window.start())
            return false;
        window.findChild<QAbstractButton *>(QString::fromLatin1(view))->click();
        const auto *table = static_cast<const SweepTable *>(
            window.findChild<QAbstractItemView *>(QStringLiteral("MSFlexGridV"))->model());
        Count count;
        QObject::connect(station.instrument.driver(), &AcquisitionDriver::aVettore, &window,
                         [&] { count.arrived(table->text(1, SweepTable::SampleColumn).toInt()); });
        window.findChild<QAbstractButton *>(QStringLiteral("cmdStart"))->click();
        if (!count.await())
            return false;
        rates.push_back(count.perSecond());
        window.close();
        return count.faults() == 0;
    }

    QString m_server;
    QString m_settings;
    QTemporaryDir m_rules;
    std::vector<double> m_bare; // vectors per second
    std::vector<double> m_markers;
    std::vector<double> m_table;
};

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: vector_rate <server> <settings file>\n");
        return 2;
    }
    Bench bench(arguments[1], arguments[2]);
    for (int round = 0; round < kRounds; ++round) {
        if (!bench.round()) {
            std::fprintf(stderr, "vectors are missing\n");
            return 1;
        }
    }
    bench.tell();
    return 0;
}
