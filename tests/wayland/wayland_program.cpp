// SPDX-License-Identifier: MIT
#include "tests/wayland/wayland_program.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <sys/prctl.h>
#include <utility>

namespace calvorn::test {

namespace {

constexpr int kStartMs = 20'000;  // long enough for a loaded machine
constexpr int kActionMs = 10'000; // the same, for the reaction to a key or click
constexpr int kAnswerMs = 5'000;

QRect rectOf(const QJsonValue &value)
{
    const QJsonArray numbers = value.toArray();
    return {numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt()};
}

Part partOf(const QJsonObject &object)
{
    return {object["name"].toString(),  object["class"].toString(), object["text"].toString(), rectOf(object["place"]),
            object["enabled"].toBool(), object["focus"].toBool(),   object["checked"].toBool()};
}

Window windowOf(const QJsonObject &object)
{
    const QRect frame = rectOf(object["frame"]);
    const int type = object["type"].toInt();
    Window window{object["title"].toString(),
                  object["name"].toString(),
                  object["class"].toString(),
                  type == Qt::Popup || type == Qt::ToolTip,
                  {object["size"][0].toInt(), object["size"][1].toInt()},
                  {frame.x(), frame.y(), frame.width(), frame.height()},
                  object["active"].toBool(),
                  {}};
    for (const QJsonValue &part : object["parts"].toArray())
        window.parts.append(partOf(part.toObject()));
    return window;
}

} // namespace

QPoint Part::target() const
{
    constexpr int kMark = 8; // logical pixels to its centre
    const bool hasMark = className == u"QRadioButton" || className == u"QCheckBox";
    return hasMark ? QPoint(place.left() + kMark, place.center().y()) : place.center();
}

std::optional<Part> Window::part(const QString &nameOrText) const
{
    for (const auto member : {&Part::name, &Part::text})
        for (const Part &part : parts)
            if (part.*member == nameOrText && !part.place.isEmpty())
                return part;
    return {};
}

WaylandProgram::WaylandProgram(const Compositor &compositor, const QByteArray &settings)
    : m_compositor(compositor)
{
    for (const char *name : {"Calvorn", "CalvornAsync", "Calvorn.qch"}) {
        const QString file = QString::fromLatin1(name);
        // Copies instead of linking: the program finds its folder by its executable file.
        if (!QFile::copy(ProgramFolder::builtFile(file), path(file)))
            qFatal("cannot copy %s", name);
    }
    if (settings.isEmpty())
        return;
    QFile file(path(QStringLiteral("Calvorn.ini")));
    if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size())
        qFatal("cannot write the settings file of the test");
}

WaylandProgram::~WaylandProgram()
{
    if (!runs())
        return;
    m_process->kill();
    m_process->waitForFinished(3000);
}

QString WaylandProgram::setting(const char *section, const char *key) const
{
    return readProfileString(path(QStringLiteral("Calvorn.ini")), QString::fromLatin1(section),
                             QString::fromLatin1(key));
}

void WaylandProgram::setUp(QProcess &process, const QString &errors) const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.remove(QStringLiteral("DISPLAY"));
    // Qt stores the last folder of the file dialogs in the configuration folder.
    const QStringList own{QStringLiteral("QT_QPA_PLATFORM=wayland"),
                          QStringLiteral("LC_ALL=C.UTF-8"),
                          QStringLiteral("LANGUAGE=en"),
                          QStringLiteral("QT_PLUGIN_PATH=" CALVORN_TEST_PLUGINS),
                          QStringLiteral("XDG_CONFIG_HOME=") + path(QStringLiteral("config")),
                          QStringLiteral("QT_QPA_GENERIC_PLUGINS=observer:") + path(QStringLiteral("observer"))};
    for (const QString &variable : own + m_compositor.environment())
        variables.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    process.setProcessEnvironment(variables);
    // File dialogs start in this folder.
    process.setWorkingDirectory(m_folder.path());
    process.setStandardErrorFile(path(errors), QIODevice::Append);
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // An instance that was killed leaves its socket behind.
    QFile::remove(path(QStringLiteral("observer")));
}

bool WaylandProgram::start(const QString &window)
{
    m_process = std::make_unique<QProcess>();
    setUp(*m_process, QStringLiteral("errors"));
    m_process->start(path(QStringLiteral("Calvorn")), QStringList());
    const bool ends = QTest::qWaitFor([&] { return !runs() || !placeNow(window).isEmpty(); }, kStartMs);
    if (!ends || !runs()) {
        qWarning("the program does not show %s: %s", qPrintable(window), qPrintable(complaints()));
        return false;
    }
    return waitForWindow(window);
}

bool WaylandProgram::startSecond(QProcess &second, const QString &window)
{
    setUp(second, QStringLiteral("errors"));
    second.start(path(QStringLiteral("Calvorn")), QStringList());
    return QTest::qWaitFor([&] { return !placeNow(window).isEmpty(); }, kStartMs);
}

bool WaylandProgram::waitForEnd(int milliseconds)
{
    return !runs() || m_process->waitForFinished(milliseconds);
}

QString WaylandProgram::complaints() const
{
    QFile file(path(QStringLiteral("errors")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QList<Window> WaylandProgram::windows() const
{
    QLocalSocket socket;
    socket.connectToServer(path(QStringLiteral("observer")));
    if (!socket.waitForConnected(kAnswerMs))
        return {};
    socket.write("look\n");
    while (!socket.canReadLine())
        if (!socket.waitForReadyRead(kAnswerMs))
            return {};
    QList<Window> windows;
    for (const QJsonValue &window : QJsonDocument::fromJson(socket.readLine()).array())
        windows.append(windowOf(window.toObject()));
    return windows;
}

std::optional<Window> WaylandProgram::window(const QString &key) const
{
    for (const Window &window : windows())
        if (!window.isPopup && (window.name == key || window.title == key || window.className == key))
            return window;
    return {};
}

std::optional<Part> WaylandProgram::part(const QString &window, const QString &part) const
{
    const std::optional<Window> found = this->window(window);
    return found ? found->part(part) : std::nullopt;
}

QString WaylandProgram::textOf(const QString &window, const QString &part) const
{
    const std::optional<Part> found = this->part(window, part);
    return found ? found->text : QStringLiteral("(there is no %1)").arg(part);
}

QString WaylandProgram::focus() const
{
    // A page that passes its focus to a box on it claims the focus, too.
    QString focus;
    for (const Window &window : windows())
        for (const Part &part : window.parts) {
            if (!window.active || !part.focus)
                continue;
            if (!part.name.isEmpty())
                return part.name;
            if (focus.isEmpty())
                focus = part.className;
        }
    return focus;
}

QList<Window> WaylandProgram::popups() const
{
    QList<Window> popups;
    for (const Window &window : windows())
        if (window.isPopup)
            popups.append(window);
    const QList<Surface> surfaces = m_compositor.surfaces();
    const auto depth = [&](const Window &window) {
        return std::find_if(surfaces.begin(), surfaces.end(),
                            [&](const Surface &surface) {
                                return surface.role == u"xdg_popup" && surface.place.size() == window.size;
                            }) -
               surfaces.begin();
    };
    std::stable_sort(popups.begin(), popups.end(),
                     [&](const Window &a, const Window &b) { return depth(a) < depth(b); });
    return popups;
}

QRect WaylandProgram::placeOf(const Window &window) const
{
    const QString label = QStringLiteral("'%1' of org.calvorn.Calvorn").arg(window.title);
    for (const Surface &surface : m_compositor.surfaces()) {
        const bool fits = window.isPopup ? surface.role == u"xdg_popup"
                                         : surface.role == u"xdg_toplevel" && surface.label.endsWith(label);
        if (fits && surface.place.size() == window.size.grownBy(window.frame))
            return surface.place;
    }
    return {};
}

QRect WaylandProgram::placeNow(const QString &window, const QString &part) const
{
    const std::optional<Window> found = this->window(window);
    const QRect outer = found ? placeOf(*found) : QRect();
    if (outer.isEmpty() || part.isEmpty())
        return outer;
    const std::optional<Part> inside = found->part(part);
    return inside ? inside->place.translated(outer.topLeft() + QPoint(found->frame.left(), found->frame.top()))
                  : QRect();
}

QRect WaylandProgram::placeOf(const QString &window) const
{
    return placeOf(window, QString());
}

QRect WaylandProgram::placeOf(const QString &window, const QString &part) const
{
    QRect place;
    waitFor(qPrintable(QStringLiteral("the place of %1 %2").arg(window, part)), [&] {
        place = placeNow(window, part);
        return !place.isEmpty();
    });
    return place;
}

bool WaylandProgram::waitFor(const char *what, const std::function<bool()> &condition)
{
    if (QTest::qWaitFor(condition, kActionMs))
        return true;
    qWarning("timed out: %s", what);
    return false;
}

bool WaylandProgram::click(const QString &window, const QString &part, int button) const
{
    QPoint target;
    const auto isReady = [&] {
        const std::optional<Part> found = this->part(window, part);
        if (!found || !found->enabled)
            return false;
        const QRect place = placeNow(window, part);
        target = found->target() + place.topLeft() - found->place.topLeft();
        return !place.isEmpty();
    };
    if (!waitFor(qPrintable(part), isReady))
        return false;
    m_compositor.mouseAt(target, {QStringLiteral("click"), QString::number(button)});
    return true;
}

bool WaylandProgram::chooseInPopup(const QString &entry) const
{
    QRect place;
    const auto isReady = [&] {
        for (const Window &popup : popups()) {
            const std::optional<Part> part = popup.part(entry);
            const QRect outer = placeOf(popup);
            if (part && part->enabled && !outer.isEmpty()) {
                place = part->place.translated(outer.topLeft());
                return true;
            }
        }
        return false;
    };
    if (!waitFor(qPrintable(entry), isReady))
        return false;
    m_compositor.mouseAt(place.center(), {QStringLiteral("click"), QStringLiteral("1")});
    return waitForNoPopup();
}

bool WaylandProgram::choose(const QString &menu, const QString &entry) const
{
    return click(QStringLiteral("frmSweep"), menu) && chooseInPopup(entry);
}

bool WaylandProgram::waitForWindow(const QString &nameOrTitle) const
{
    return waitFor(qPrintable(nameOrTitle), [&] {
        const std::optional<Window> found = window(nameOrTitle);
        return found && found->active && !placeOf(*found).isEmpty();
    });
}

bool WaylandProgram::waitUntilGone(const QString &nameOrTitle) const
{
    return waitFor(qPrintable(nameOrTitle + QStringLiteral(" disappears")), [&] { return !window(nameOrTitle); });
}

bool WaylandProgram::waitForPopup() const
{
    return waitFor("a menu", [this] {
        const QList<Window> open = popups();
        return !open.isEmpty() && !placeOf(open.first()).isEmpty();
    });
}

bool WaylandProgram::waitForNoPopup() const
{
    return waitFor("no menu", [this] { return popups().isEmpty(); });
}

int curvePixels(const QImage &picture)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb colour = picture.pixel(x, y);
            count += qRed(colour) > 200 && qGreen(colour) > 200 && qBlue(colour) < 60;
        }
    return count;
}

} // namespace calvorn::test
