// SPDX-License-Identifier: MIT
#include "tests/wayland/wayland_bench.h"

namespace calvorn::test {

namespace {

constexpr int kCurve = 200; // pixels; a curve has more
constexpr int kMostTabs = 60;
constexpr int kTabMs = 10'000; // long enough for a loaded machine
constexpr int kOnlyMs = 5'000; // where there may be nothing else to reach

} // namespace

QByteArray settingsWith(const QByteArray &from, const QByteArray &to)
{
    QByteArray settings = ProgramFolder::preparedSettings();
    if (!settings.contains(from))
        qFatal("the prepared settings do not contain %s", from.constData());
    return settings.replace(from, to);
}

void WaylandBench::begin(QSize pixels, int scale, const QByteArray &settings)
{
    m_compositor = std::make_unique<Compositor>(pixels, scale);
    m_program = std::make_unique<WaylandProgram>(*m_compositor, settings);
}

// Any other line on standard error is a fault of the program or of its use of Qt.
void WaylandBench::cleanup()
{
    QString complaints = m_program ? m_program->complaints() : QString();
    complaints.remove(m_expected);
    m_expected.clear();
    if (QTest::currentTestFailed() && m_compositor)
        m_compositor->screenshot().save(
            QStringLiteral("wayland-%1-%2.png")
                .arg(QLatin1String(QTest::currentTestFunction()), QLatin1String(QTest::currentDataTag())));
    m_program.reset();
    m_compositor.reset();
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints));
}

QImage WaylandBench::picture(const QRect &place) const
{
    const int scale = m_compositor->scale();
    return m_compositor->screenshot().copy(QRect(place.topLeft() * scale, place.size() * scale));
}

bool WaylandBench::showsAPeak() const
{
    const QImage shown = picture(graph());
    return curvePixels(shown.copy(0, 0, shown.width(), shown.height() / 2)) > 20 && curvePixels(shown) > kCurve;
}

bool WaylandBench::sweep()
{
    Compositor::keys({QStringLiteral("F5")});
    if (!WaylandProgram::waitFor("the curve", [this] { return showsAPeak(); }))
        return false;
    Compositor::keys({QStringLiteral("F5")});
    return WaylandProgram::waitFor("the end of the sweep", [this] { return text("cmdStart") == u"Sweep ON"; });
}

bool WaylandBench::moveToCorner()
{
    constexpr QPoint kCorner(5, 5);
    const QPoint title = QPoint(200, 12);
    const QPoint place = program().placeOf(kMain).topLeft();
    m_compositor->drag(place + title, kCorner + title);
    return WaylandProgram::waitFor("the window in the corner",
                                   [&] { return program().placeOf(kMain).topLeft() == kCorner; });
}

bool WaylandBench::moveByTitle(const QString &window)
{
    const QRect before = program().placeOf(window);
    const QPoint title = before.topLeft() + QPoint(60, 14);
    const QPoint way(before.left() > 200 ? -80 : 80, before.top() > 100 ? -40 : 40);
    m_compositor->drag(title, title + way);
    return WaylandProgram::waitFor(qPrintable(window + QStringLiteral(" at another place")),
                                   [&] { return program().placeOf(window) == before.translated(way); });
}

bool WaylandBench::openPanel()
{
    if (!moveToCorner())
        return false;
    Compositor::keys({QStringLiteral("ctrl+m")});
    return !program().placeOf(kMain, kPanel).isEmpty();
}

bool WaylandBench::floatPanel()
{
    return openPanel() && program().click(kMain, QStringLiteral("qt_dockwidget_floatbutton")) &&
           program().waitForWindow(kPanel);
}

QStringList WaylandBench::tabRound()
{
    QStringList reached{program().focus()};
    while (reached.size() < kMostTabs) {
        QString now;
        const auto moves = [&] {
            now = program().focus();
            return !now.isEmpty() && now != reached.last();
        };
        Compositor::keys({QStringLiteral("Tab")});
        if (!QTest::qWaitFor(moves, reached.size() == 1 ? kOnlyMs : kTabMs) || now == reached.first())
            break;
        reached.append(now);
    }
    return reached;
}

QString WaylandBench::tipOf(const QString &window, const QString &part, const QString &previous)
{
    const QPoint mouse = program().placeOf(window, part).center();
    m_compositor->rest(mouse);
    QString shown;
    QRect tip;
    const auto isNew = [&] {
        const QList<Window> popups = program().popups();
        shown = popups.isEmpty() ? QString() : popups.first().parts.first().text;
        tip = popups.isEmpty() ? QRect() : program().placeOf(popups.first());
        return !tip.isEmpty() && !shown.isEmpty() && shown != previous;
    };
    const bool isAtMouse = WaylandProgram::waitFor(qPrintable(QStringLiteral("the tip of ") + part), isNew) &&
                           near(tip.left(), mouse.x(), 20) && near(tip.top(), mouse.y(), 40);
    return isAtMouse ? shown : QString();
}

bool WaylandBench::chooseInList(const QString &window, const QString &box, const QString &entry)
{
    const QRect place = program().placeOf(window, box);
    if (!program().click(window, box) || !program().waitForPopup())
        return false;
    const QRect list = program().placeOf(program().popups().first());
    if (!near(list.left(), place.left(), 4) || !list.adjusted(0, -2, 0, 2).intersects(place)) {
        qWarning("the list of %s opens elsewhere: %s", qPrintable(box), both(list, place).constData());
        return false;
    }
    return program().chooseInPopup(entry) &&
           WaylandProgram::waitFor("the chosen entry", [&] { return program().textOf(window, box) == entry; });
}

bool WaylandBench::isOnTop(const QString &window) const
{
    const QRect place = m_program->placeOf(window);
    return !place.isEmpty() && m_compositor->surfaces().first().place == place;
}

} // namespace calvorn::test
