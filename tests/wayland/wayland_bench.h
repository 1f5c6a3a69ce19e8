// SPDX-License-Identifier: MIT
#pragma once

#include "tests/wayland/wayland_program.h"

#include <QObject>
#include <QTest>

#include <cmath>

namespace calvorn::test {

inline const QString kMain = QStringLiteral("frmSweep");
inline const QString kPanel = QStringLiteral("dockMeasure");
inline const QString kGraph = QStringLiteral("picSweep");
// Distances of the centres of the frame's buttons from the corner of the window, in logical pixels.
inline constexpr QPoint kCloseButton(18, 16);
inline constexpr QPoint kMaximiseButton(40, 16);
inline const QStringList kLeftClick{QStringLiteral("click"), QStringLiteral("1")};
inline const QStringList kRightClick{QStringLiteral("click"), QStringLiteral("3")};
inline const QStringList kDoubleClick{QStringLiteral("click"),   QStringLiteral("--repeat"), QStringLiteral("2"),
                                      QStringLiteral("--delay"), QStringLiteral("80"),       QStringLiteral("1")};

inline bool near(int a, int b, int tolerance = 2)
{
    return std::abs(a - b) <= tolerance;
}

// Returns two places as a message for a failed check.
inline QByteArray both(const QRect &a, const QRect &b)
{
    return QTest::toString(a) + QByteArray(" and ") + QTest::toString(b);
}

// Returns the prepared settings with one text replaced.
QByteArray settingsWith(const QByteArray &from, const QByteArray &to);

// Base class of the tests: a compositor and a program for each test function.
class WaylandBench : public QObject
{
    Q_OBJECT

protected:
    // Starts a compositor and prepares the program's folder, but does not start the program yet.
    void begin(QSize pixels = {1280, 900}, int scale = 1,
               const QByteArray &settings = ProgramFolder::preparedSettings());
    WaylandProgram &program() const { return *m_program; }
    const Compositor &compositor() const { return *m_compositor; }
    // These lines may appear on standard error in the current test function.
    void expectComplaint(const QString &lines) { m_expected = lines; }

    QRect screen() const { return {QPoint(), m_compositor->size()}; }
    // Returns a picture of a part of the screen, given in logical pixels.
    QImage picture(const QRect &place) const;
    // Returns the text of a part of the main window.
    QString text(const char *part) const { return m_program->textOf(kMain, QString::fromLatin1(part)); }
    QRect graph() const { return m_program->placeOf(kMain, kGraph); }
    bool showsAPeak() const;
    // Starts a sweep, waits for its curve, and stops it.
    bool sweep();
    // Drags the main window by its title into the corner of the screen, so that it has room to grow.
    bool moveToCorner();
    // Drags a window a little by its title and waits until it is at its new place.
    bool moveByTitle(const QString &window);
    bool openPanel();
    bool floatPanel();
    // Presses Tab until the focus returns to the first widget. Returns the names in the order of the focus; ends early
    // if Tab does not move the focus.
    QStringList tabRound();
    // Rests the mouse on a part and returns the text of the tool tip that appears there. previous: the text of a tip
    // that may still be visible. Empty if no other tip appears at the mouse.
    QString tipOf(const QString &window, const QString &part, const QString &previous = {});
    // Opens the list of a combo box, checks its place and chooses an entry.
    bool chooseInList(const QString &window, const QString &box, const QString &entry);
    // Returns whether the window is above all others.
    bool isOnTop(const QString &window) const;

private slots:
    void cleanup();

private:
    std::unique_ptr<Compositor> m_compositor;
    std::unique_ptr<WaylandProgram> m_program;
    QString m_expected; // on standard error
};

} // namespace calvorn::test
