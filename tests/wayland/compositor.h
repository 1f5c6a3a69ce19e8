// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QList>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace calvorn::test {

// A window or a popup as the compositor sees it.
struct Surface
{
    QString role;  // "xdg_toplevel", "xdg_popup", ...
    QString label; // "top-level window 'TITLE' of APPLICATION-ID"
    QRect place;   // logical pixels on the screen, with the frame that the program draws
};

// Runs a Wayland compositor in a window of the test's X display. Keys and mouse actions of that display are the real
// keyboard and mouse of the Wayland session.
class Compositor
{
public:
    // The size is smaller than the X display, so that the mouse can leave the window.
    explicit Compositor(QSize pixels = {1280, 900}, int scale = 1);
    ~Compositor();

    // The variables for a program that runs in this session.
    QStringList environment() const;
    // The size of the screen in logical pixels.
    QSize size() const { return m_pixels / m_scale; }
    int scale() const { return m_scale; }

    // Runs a program in this session and returns its standard output.
    QByteArray output(const QString &program, const QStringList &arguments) const;
    // Returns the visible surfaces, the topmost first, without the pointer and the background.
    QList<Surface> surfaces() const;
    // Returns a picture of the screen, in pixels.
    QImage screenshot() const;

    // xdotool keysyms: "F5", "ctrl+q", or several.
    static void keys(const QStringList &keysyms);
    static void typeText(const QString &text);
    // Moves the mouse to a place, in logical pixels, and performs xdotool actions there, for example {"click", "1"}.
    void mouseAt(QPoint place, const QStringList &actions = {}) const;
    // Moves the mouse a little inside a control and leaves it there, which brings up the control's tool tip.
    void rest(QPoint place) const;
    // Presses the left button, moves the mouse in small steps, and releases the button unless `holds`.
    void drag(QPoint from, QPoint to, bool holds = false) const;

private:
    QList<Surface> views() const;
    QStringList moveTo(QPoint place) const;
    // Moves the mouse out of the compositor's window.
    static void leave();
    // Moves the mouse and waits until the compositor's pointer is there.
    void pointTo(QPoint place) const;

    QSize m_pixels;
    int m_scale;
    QTemporaryDir m_folder; // for the sockets
    QProcess m_process;
};

} // namespace calvorn::test
