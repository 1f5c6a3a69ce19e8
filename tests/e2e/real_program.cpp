// SPDX-License-Identifier: MIT
#include "tests/e2e/real_program.h"

#include "platform/profile_file.h"
#include "tests/support/start_as_a_shell.h"

#include <QClipboard>
#include <QDeadlineTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

namespace calvorn::test {

namespace {

constexpr int kStartMs = 20'000; // long enough for a loaded machine
constexpr int kActiveMs = 3'000;
constexpr int kActivations = 4;
// The time between two screenshots: longer than a sweep of the simulated board, and longer than a mnemonic holds its
// button down.
constexpr int kLookMs = 200;
constexpr int kStillMs = 10'000;

bool isCurve(QRgb colour)
{
    return qRed(colour) > 200 && qGreen(colour) > 200 && qBlue(colour) < 60;
}

// Returns whether the picture has more than one colour: an unpainted window has only one.
bool isPainted(const QImage &picture)
{
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) != picture.pixel(0, 0))
                return true;
    return false;
}

} // namespace

WindowManager::WindowManager()
{
    m_process.start(QStringLiteral("openbox"), QStringList());
    if (!m_process.waitForStarted())
        qFatal("openbox does not start");
    // A window opened before the window manager is ready would vanish briefly while it gets a frame.
    const bool manages = QTest::qWaitFor(
        [] { return RealProgram::run(QStringLiteral("xdotool"), {QStringLiteral("get_num_desktops")}).toInt() > 0; },
        30'000);
    if (!manages)
        qFatal("openbox does not manage the windows");
}

WindowManager::~WindowManager()
{
    m_process.terminate();
    m_process.waitForFinished(2000);
}

RealProgram::RealProgram(const QByteArray &settings)
    : m_command(m_folder.filePath(QStringLiteral("Calvorn")))
{
    for (const char *name : {"Calvorn", "CalvornAsync"})
        bring(name);
    QFile file(m_folder.filePath(QStringLiteral("Calvorn.ini")));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write the settings file of the test");
    file.write(settings);
}

RealProgram::~RealProgram()
{
    if (m_process && m_process->state() != QProcess::NotRunning)
        killHard();
}

void RealProgram::bring(const char *name) const
{
    const QString built = qEnvironmentVariable("CALVORN_BIN") + u'/';
    // Copies instead of linking, because the program locates its folder from its executable file.
    if (!QFile::copy(built + QString::fromLatin1(name), m_folder.filePath(QString::fromLatin1(name))))
        qFatal("cannot copy %s", name);
}

QString RealProgram::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString RealProgram::setting(const char *section, const char *key) const
{
    return readProfileString(m_folder.filePath(QStringLiteral("Calvorn.ini")), QString::fromLatin1(section),
                             QString::fromLatin1(key));
}

void RealProgram::setCommand(const QString &program, const QStringList &arguments)
{
    m_command = program;
    m_arguments = arguments;
}

bool RealProgram::start(const QStringList &environment, const QString &titlePattern)
{
    m_process = std::make_unique<QProcess>();
    m_process->setProcessChannelMode(QProcess::ForwardedChannels);
    m_process->setChildProcessModifier(startAsAShell);
    QStringList variables = QProcess::systemEnvironment() + environment;
    m_process->setEnvironment(variables);
    // File dialogs start in this folder.
    m_process->setWorkingDirectory(m_folder.path());
    m_process->start(m_command, m_arguments);
    m_window = waitForWindow(titlePattern, kStartMs);
    if (m_window.isEmpty())
        return false;
    // The first iteration of the event loop paints the window; from then on the window handles keys. If the window is
    // on a different display from the test, there is no screenshot, and painting cannot be checked.
    const auto isUp = [this] {
        const QImage picture = screenshot();
        return picture.isNull() || isPainted(picture);
    };
    return activate(m_window) && QTest::qWaitFor(isUp, kStartMs);
}

bool RealProgram::waitForEnd(int milliseconds)
{
    return m_process->state() == QProcess::NotRunning || m_process->waitForFinished(milliseconds);
}

void RealProgram::killHard()
{
    m_process->kill();
    m_process->waitForFinished(3000);
}

void RealProgram::keys(const QStringList &keysyms) const
{
    run(QStringLiteral("xdotool"),
        QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("40")} + keysyms);
}

void RealProgram::typeText(const QString &text) const
{
    run(QStringLiteral("xdotool"), {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("40"), text});
}

void RealProgram::mouseAt(QPoint place, const QStringList &actions) const
{
    run(QStringLiteral("xdotool"),
        QStringList{QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())} + actions);
}

bool RealProgram::keysChange(const QStringList &keysyms, const QString &window) const
{
    const QImage before = screenshot(window);
    keys(keysyms);
    return QTest::qWaitFor([&] { return screenshot(window) != before; }) && becomesStill(window);
}

QString RealProgram::copied(const QStringList &keysyms, int milliseconds) const
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    QSignalSpy changed(clipboard, &QClipboard::dataChanged);
    keys(keysyms);
    return changed.count() > 0 || changed.wait(milliseconds) ? clipboard->text() : QStringLiteral("nothing was copied");
}

QPoint RealProgram::cornerOf(const QString &window) const
{
    // "X=560\nY=307\n..."
    const QString place = run(QStringLiteral("xdotool"),
                              {QStringLiteral("mousemove"), QStringLiteral("--window"), window, QStringLiteral("0"),
                               QStringLiteral("0"), QStringLiteral("getmouselocation"), QStringLiteral("--shell")});
    const auto number = [&](int line) { return place.section(u'\n', line, line).section(u'=', 1).toInt(); };
    return {number(0), number(1)};
}

QString RealProgram::activeWindow()
{
    return run(QStringLiteral("xdotool"), {QStringLiteral("getactivewindow")});
}

bool RealProgram::activate(const QString &window)
{
    // The window manager may ignore the request while it moves the focus after a window has opened or closed.
    for (int attempt = 0; attempt < kActivations; ++attempt) {
        if (activeWindow() == window)
            return true;
        run(QStringLiteral("xdotool"), {QStringLiteral("windowactivate"), window});
        if (QTest::qWaitFor([&] { return activeWindow() == window; }, kActiveMs))
            return true;
    }
    return false;
}

QString RealProgram::waitForBox() const
{
    const QString box = waitForWindow(QStringLiteral("^Brenik - Calvorn  v2.0$"));
    if (!box.isEmpty())
        activate(box);
    return box;
}

QString RealProgram::lineOfBox(const QString &box, QPoint place) const
{
    // A triple click selects a line.
    mouseAt(cornerOf(box) + place, {QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("3"),
                                    QStringLiteral("--delay"), QStringLiteral("60"), QStringLiteral("1")});
    return copied({QStringLiteral("ctrl+c")}).trimmed();
}

QString RealProgram::waitForWindow(const QString &titlePattern, int milliseconds) const
{
    QString found;
    (void)QTest::qWaitFor(
        [&] {
            found = run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                    QStringLiteral("--name"), titlePattern});
            return !found.isEmpty();
        },
        milliseconds);
    return found.section(u'\n', -1);
}

bool RealProgram::waitUntilGone(const QString &titlePattern) const
{
    return QTest::qWaitFor([&] { return waitForWindow(titlePattern, 0).isEmpty(); });
}

QString RealProgram::windowsShown() const
{
    QStringList titles;
    const QString windows = run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                            QStringLiteral("--name"), QStringLiteral(".")});
    for (const QString &window : windows.split(u'\n', Qt::SkipEmptyParts))
        titles.append(u'"' + run(QStringLiteral("xdotool"), {QStringLiteral("getwindowname"), window}) + u'"');
    return QStringLiteral("windows ") + titles.join(QStringLiteral(", "));
}

QImage RealProgram::screenshot(const QString &window) const
{
    const QString shown = window.isEmpty() ? m_window : window;
    return QGuiApplication::primaryScreen()->grabWindow(shown.toULongLong()).toImage();
}

bool RealProgram::becomesStill(const QString &window) const
{
    QImage before;
    QImage now = screenshot(window);
    QDeadlineTimer deadline(kStillMs);
    do {
        before = now;
        // Stops waiting as soon as something changes.
        (void)QTest::qWaitFor(
            [&] {
                now = screenshot(window);
                return now != before;
            },
            kLookMs);
    } while (now != before && !deadline.hasExpired());
    return now == before;
}

bool RealProgram::changes(int times) const
{
    QImage before = screenshot();
    for (int time = 0; time < times; ++time) {
        QImage now;
        const bool isOther = QTest::qWaitFor(
            [&] {
                now = screenshot();
                return now != before;
            },
            kStillMs);
        if (!isOther)
            return false;
        before = now;
    }
    return true;
}

int RealProgram::serversRunning() const
{
    const QString pids =
        run(QStringLiteral("pgrep"), {QStringLiteral("-f"), m_folder.filePath(QStringLiteral("CalvornAsync"))});
    return static_cast<int>(pids.split(u'\n', Qt::SkipEmptyParts).size());
}

qint64 RealProgram::serverPid() const
{
    return run(QStringLiteral("pgrep"), {QStringLiteral("-f"), m_folder.filePath(QStringLiteral("CalvornAsync"))})
        .section(u'\n', 0, 0)
        .toLongLong();
}

int curvePixels(const QImage &screen)
{
    int count = 0;
    for (int y = 0; y < screen.height(); ++y)
        for (int x = 0; x < screen.width(); ++x)
            count += isCurve(screen.pixel(x, y)) ? 1 : 0;
    return count;
}

int highestCurveRow(const QImage &screen)
{
    for (int y = 0; y < screen.height(); ++y)
        for (int x = 0; x < screen.width(); ++x)
            if (isCurve(screen.pixel(x, y)))
                return y;
    return screen.height();
}

} // namespace calvorn::test
