// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace calvorn::test {

// A window manager for as long as it lives: without one, nothing brings a window to the front.
class WindowManager
{
public:
    WindowManager();
    ~WindowManager();

private:
    QProcess m_process;
};

// The real program in a program folder of its own, driven as a person would: keys and mouse from outside, and a
// look at the screen.
class RealProgram
{
public:
    explicit RealProgram(const QByteArray &settings);
    ~RealProgram();

    QString folder() const { return m_folder.path(); }
    // Puts another file of the built program beside it.
    void bring(const char *name) const;
    QString setting(const char *section, const char *key) const;

    // What start() starts, in place of the program in the folder without arguments.
    void setCommand(const QString &program, const QStringList &arguments);
    // Starts the program and waits for its first window. False when none comes.
    bool start(const QStringList &environment = {}, const QString &titlePattern = QStringLiteral("^Brenik - Calvorn"));
    // Waits for the process to end by itself.
    bool waitForEnd(int milliseconds = 5000);
    qint64 pid() const { return m_process ? m_process->processId() : 0; }
    void killHard();

    // xdotool keysyms: "F5", "ctrl+q", "alt+s", or several.
    void keys(const QStringList &keysyms) const;
    void typeText(const QString &text) const;
    // Takes the mouse to a place on the screen and acts there, in the words of xdotool: {"click", "1"}.
    void mouseAt(QPoint place, const QStringList &actions) const;
    // Keys that change what the window shows, for good: false when it stays as it was, or never comes to rest. Without
    // a window it is the main one.
    bool keysChange(const QStringList &keysyms, const QString &window = {}) const;
    // What these keys make the program put on the clipboard, as text.
    QString copied(const QStringList &keysyms, int milliseconds = 10'000) const;
    // Screen coordinates of the upper left corner of a window's contents.
    QPoint cornerOf(const QString &window) const;

    // Waits for a window whose title matches; its id, or empty.
    QString waitForWindow(const QString &titlePattern, int milliseconds = 5000) const;
    // False when such a window stays.
    bool waitUntilGone(const QString &titlePattern) const;
    // The titles of all windows, for the report of a failure.
    QString windowsShown() const;
    QString mainWindow() const { return m_window; }
    int exitCode() const { return m_process->exitCode(); }
    // Waits for a message box with the application's title and brings it to the front; empty when none comes.
    QString waitForBox() const;
    // The line of a box's text under the place, in pixels from the corner of its contents.
    QString lineOfBox(const QString &box, QPoint place = {120, 17}) const;
    // Keys go to the active window. False when another one stays it.
    static bool activate(const QString &window);
    static QString activeWindow();

    // A window without its frame, by default the main one: the icon there has the yellow of the curve.
    QImage screenshot(const QString &window = {}) const;
    // Waits for two pictures that are the same: what was asked for is done, and no sweep runs, since its noise makes no
    // two curves alike.
    bool becomesStill(const QString &window = {}) const;
    // Waits until the picture has changed that often.
    bool changes(int times = 3) const;

    // Processes of the acquisition server that run out of this folder.
    int serversRunning() const;
    qint64 serverPid() const;

    static QString run(const QString &program, const QStringList &arguments);

private:
    QTemporaryDir m_folder;
    QString m_command;
    QStringList m_arguments;
    std::unique_ptr<QProcess> m_process;
    QString m_window;
};

// Pixels of the curve's yellow anywhere in the picture.
int curvePixels(const QImage &screen);

// Row of the picture on which the curve's highest point lies; the curve of the filter rises, an empty one does not.
int highestCurveRow(const QImage &screen);

} // namespace calvorn::test
