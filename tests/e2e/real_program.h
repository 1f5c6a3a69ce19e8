// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace calvorn::test {

// Runs a window manager, which is needed to bring windows to the front.
class WindowManager
{
public:
    WindowManager();
    ~WindowManager();

private:
    QProcess m_process;
};

// Runs the real program in a temporary folder and operates it as a user would, with keys, mouse and screenshots.
class RealProgram
{
public:
    explicit RealProgram(const QByteArray &settings);
    ~RealProgram();

    QString folder() const { return m_folder.path(); }
    // Copies another file from the build into the folder.
    void bring(const char *name) const;
    QString setting(const char *section, const char *key) const;

    // Sets the command that start() runs. The default is the program in the folder, without arguments.
    void setCommand(const QString &program, const QStringList &arguments);
    // Starts the program and waits for its first window. Returns false if none appears.
    bool start(const QStringList &environment = {}, const QString &titlePattern = QStringLiteral("^Brenik - Calvorn"));
    // Waits until the process exits on its own. Returns false on a timeout.
    bool waitForEnd(int milliseconds = 5000);
    qint64 pid() const { return m_process ? m_process->processId() : 0; }
    void killHard();

    // xdotool keysyms: "F5", "ctrl+q", "alt+s", or several.
    void keys(const QStringList &keysyms) const;
    void typeText(const QString &text) const;
    // Moves the mouse to a position on the screen and performs xdotool actions there, for example {"click", "1"}.
    void mouseAt(QPoint place, const QStringList &actions) const;
    // Sends keys and waits until the window has changed and stopped changing. Returns false if either does not happen.
    // The default is the main window.
    bool keysChange(const QStringList &keysyms, const QString &window = {}) const;
    // Sends keys that copy something and returns the text on the clipboard.
    QString copied(const QStringList &keysyms, int milliseconds = 10'000) const;
    // Returns the upper left corner of a window's contents in screen coordinates.
    QPoint cornerOf(const QString &window) const;

    // Waits for a window whose title matches. Returns its id, or an empty string.
    QString waitForWindow(const QString &titlePattern, int milliseconds = 5000) const;
    // Waits until no window has such a title. Returns false on a timeout.
    bool waitUntilGone(const QString &titlePattern) const;
    // Lists the titles of all windows, for failure messages.
    QString windowsShown() const;
    QString mainWindow() const { return m_window; }
    int exitCode() const { return m_process->exitCode(); }
    // Waits for a message box with the application's title and brings it to the front. Returns its id, or an empty
    // string.
    QString waitForBox() const;
    // Returns the line of a box's text at `place`, in pixels from the corner of the box's contents.
    QString lineOfBox(const QString &box, QPoint place = {120, 17}) const;
    // Makes a window active, so that it receives keys. Returns false on failure.
    static bool activate(const QString &window);
    static QString activeWindow();

    // Returns a screenshot of a window, by default the main window. Excludes the frame, because its icon has the same
    // yellow as the curve.
    QImage screenshot(const QString &window = {}) const;
    // Waits until two consecutive screenshots are equal. Then all input has been handled and no sweep is running, since
    // noise makes every curve different.
    bool becomesStill(const QString &window = {}) const;
    // Waits until the picture has changed this many times.
    bool changes(int times = 3) const;

    // Returns the number of acquisition servers that run from this folder.
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

// Returns the number of pixels in the curve's yellow.
int curvePixels(const QImage &screen);

// Returns the picture row of the curve's highest point, or the picture height if there is no curve.
int highestCurveRow(const QImage &screen);

} // namespace calvorn::test
