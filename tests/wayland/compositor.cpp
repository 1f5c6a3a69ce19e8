// SPDX-License-Identifier: MIT
#include "tests/wayland/compositor.h"

#include <QFile>
#include <QGuiApplication>
#include <QPixmap>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>

namespace calvorn::test {

namespace {

constexpr int kStartMs = 20'000; // long enough for a loaded machine
constexpr int kDragSteps = 8;
constexpr int kAttempts = 10;
constexpr int kPointMs = 4'000; // leaving and entering again under load can cost a window the keyboard
const QStringList kPause{QStringLiteral("sleep"), QStringLiteral("0.03")}; // seconds, as between movements of a hand
const QString kSocket = QStringLiteral("wayland-test");

// No panel, animation or screen keyboard: a window is at its place as soon as it is mapped.
constexpr const char *kSettings = R"([core]
shell=desktop-shell.so
idle-time=0
[shell]
panel-position=none
animation=none
startup-animation=none
close-animation=none
focus-animation=none
background-color=0xff404040
[input-method]
path=
)";

void xdotool(const QStringList &arguments)
{
    if (QProcess::execute(QStringLiteral("xdotool"), arguments) != 0)
        qFatal("xdotool failed");
}

} // namespace

Compositor::Compositor(QSize pixels, int scale)
    : m_pixels(pixels)
    , m_scale(scale)
{
    // The compositor gets the place of the mouse when it enters the window.
    leave();
    QFile settings(m_folder.filePath(QStringLiteral("weston.ini")));
    if (!settings.open(QIODevice::WriteOnly))
        qFatal("cannot write the settings of the compositor");
    settings.write(kSettings);
    settings.close();
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
    variables.remove(QStringLiteral("WAYLAND_DISPLAY"));
    m_process.setProcessEnvironment(variables);
    m_process.setStandardOutputFile(m_folder.filePath(QStringLiteral("weston.log")));
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.start(QStringLiteral("weston"),
                    {QStringLiteral("--backend=x11-backend.so"), QStringLiteral("--use-pixman"),
                     QStringLiteral("--debug"), QStringLiteral("--socket=") + kSocket,
                     QStringLiteral("--config=") + settings.fileName(),
                     QStringLiteral("--width=%1").arg(size().width()),
                     QStringLiteral("--height=%1").arg(size().height()), QStringLiteral("--scale=%1").arg(scale)});
    if (!m_process.waitForStarted())
        qFatal("weston does not start: %s", qPrintable(m_process.errorString()));
    const auto showsBackground = [this] {
        return QFile::exists(m_folder.filePath(kSocket)) && screenshot().pixel(1, 1) == qRgb(0x40, 0x40, 0x40);
    };
    const auto isUpOrGone = [&] { return m_process.state() == QProcess::NotRunning || showsBackground(); };
    if (!QTest::qWaitFor(isUpOrGone, kStartMs) || m_process.state() == QProcess::NotRunning) {
        QFile log(m_folder.filePath(QStringLiteral("weston.log")));
        const bool isOpen = log.open(QIODevice::ReadOnly);
        qFatal("weston does not show a screen: %s", isOpen ? log.readAll().constData() : "");
    }
    // Keys go to the window under the mouse.
    pointTo({20, 20});
}

Compositor::~Compositor()
{
    if (m_process.state() == QProcess::NotRunning)
        qWarning("weston has ended");
    m_process.terminate();
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished(1000);
}

QStringList Compositor::environment() const
{
    return {QStringLiteral("XDG_RUNTIME_DIR=") + m_folder.path(), QStringLiteral("WAYLAND_DISPLAY=") + kSocket,
            QStringLiteral("XDG_SESSION_TYPE=wayland")};
}

QByteArray Compositor::output(const QString &program, const QStringList &arguments) const
{
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : environment())
        variables.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    process.setProcessEnvironment(variables);
    process.start(program, arguments);
    if (!process.waitForFinished(10'000))
        qWarning("%s does not finish", qPrintable(program));
    return process.readAllStandardOutput();
}

QList<Surface> Compositor::views() const
{
    const QString scene = QString::fromUtf8(output(QStringLiteral("weston-debug"), {QStringLiteral("scene-graph")}));
    static const QRegularExpression view(QStringLiteral(
        R"(role (\w+)(?:-cursor)?, PID \d+, surface ID \d+, (.*), 0x\w+\):\n\s+position: \((-?\d+), (-?\d+)\) -> \((-?\d+), (-?\d+)\))"));
    QList<Surface> views;
    for (const QRegularExpressionMatch &match : view.globalMatch(scene)) {
        const auto number = [&](int group) { return match.captured(group).toInt(); };
        views.append({match.captured(1), match.captured(2),
                      QRect(QPoint(number(3), number(4)), QSize(number(5) - number(3), number(6) - number(4)))});
    }
    return views;
}

QList<Surface> Compositor::surfaces() const
{
    QList<Surface> surfaces = views();
    surfaces.removeIf([](const Surface &surface) { return !surface.role.startsWith(u"xdg_"); });
    return surfaces;
}

QImage Compositor::screenshot() const
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, 0, 0, m_pixels.width(), m_pixels.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

void Compositor::keys(const QStringList &keysyms)
{
    xdotool(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("40")} + keysyms);
}

void Compositor::typeText(const QString &text)
{
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"), text});
}

QStringList Compositor::moveTo(QPoint place) const
{
    return {QStringLiteral("mousemove"), QString::number(place.x() * m_scale), QString::number(place.y() * m_scale)};
}

void Compositor::leave()
{
    const QPoint corner = QGuiApplication::primaryScreen()->geometry().bottomRight();
    xdotool(QStringList{QStringLiteral("mousemove"), QString::number(corner.x()), QString::number(corner.y())} +
            kPause);
}

// The compositor adds up movements. If it has missed one, it takes the true place when the mouse enters its window.
void Compositor::pointTo(QPoint place) const
{
    const auto isThere = [&] {
        for (const Surface &view : views())
            if (view.role == u"wl_pointer" && view.place.contains(place))
                return true;
        return false;
    };
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        xdotool(moveTo(place));
        if (QTest::qWaitFor(isThere, kPointMs))
            return;
        leave();
    }
    qWarning("the mouse pointer does not arrive");
}

void Compositor::mouseAt(QPoint place, const QStringList &actions) const
{
    pointTo(place);
    if (!actions.isEmpty())
        xdotool(actions);
}

// In steps, because a single jump into a control is no movement inside it.
void Compositor::rest(QPoint place) const
{
    pointTo(place);
    QStringList actions;
    for (int step = kDragSteps; step >= 0; --step)
        actions += moveTo(place + QPoint(step % 2, 0)) + kPause;
    xdotool(actions);
}

void Compositor::drag(QPoint from, QPoint to, bool holds) const
{
    pointTo(from);
    QStringList actions{QStringLiteral("mousedown"), QStringLiteral("1")};
    for (int step = 1; step <= kDragSteps; ++step)
        actions += kPause + moveTo(from + (to - from) * step / kDragSteps);
    if (!holds)
        actions += kPause + QStringList{QStringLiteral("mouseup"), QStringLiteral("1")};
    xdotool(actions);
}

} // namespace calvorn::test
