// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/program_folder.h"
#include "tests/wayland/compositor.h"

#include <QLocalSocket>
#include <QMargins>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace calvorn::test {

// A widget, a menu entry, a tab or a row, as the observer in the program describes it.
struct Part
{
    QString name;      // of the object, often empty
    QString className; // "QAction" for a menu entry, "tab" (named "tab0", "tab1", ...), "row" (named "row0", ...)
    QString text;      // without mnemonics
    QRect place;       // in the contents of its window
    bool enabled = false;
    bool focus = false;
    bool checked = false;

    // Returns where to click: buttons with a mark react only at the mark and its text, which may be short.
    QPoint target() const;
};

struct Window
{
    QString title;
    QString name;
    QString className;
    bool isPopup = false; // a menu, the list of a combo box or a tool tip
    QSize size;           // without the frame
    QMargins frame;
    bool active = false;
    QList<Part> parts;

    // Finds a visible part by its name or its text.
    std::optional<Part> part(const QString &nameOrText) const;
};

// Runs the real program in a temporary folder and in the session of a compositor. The program is unchanged, but loads
// the observer, which says where its widgets are. All input goes through the compositor.
class WaylandProgram
{
public:
    explicit WaylandProgram(const Compositor &compositor,
                            const QByteArray &settings = ProgramFolder::preparedSettings());
    ~WaylandProgram();

    QString folder() const { return m_folder.path(); }
    QString path(const QString &file) const { return m_folder.filePath(file); }
    QString setting(const char *section, const char *key) const;

    // Starts the program and waits until this window is on the screen and active.
    bool start(const QString &window = QStringLiteral("frmSweep"));
    // Starts another instance from the same folder, which reports to the same observer from then on.
    bool startSecond(QProcess &second, const QString &window);
    bool waitForEnd(int milliseconds = 10'000);
    int exitCode() const { return m_process->exitCode(); }
    bool runs() const { return m_process && m_process->state() != QProcess::NotRunning; }
    // Returns what the program wrote on standard error so far.
    QString complaints() const;

    // Returns the visible windows. Empty if the program does not answer.
    QList<Window> windows() const;
    // Finds a window by its object name, title or class.
    std::optional<Window> window(const QString &key) const;
    std::optional<Part> part(const QString &window, const QString &part) const;
    QString textOf(const QString &window, const QString &part) const;
    // Returns the object name of the focused widget, or its class if it has no name.
    QString focus() const;
    // Returns the menus, lists and tool tips, the newest first.
    QList<Window> popups() const;

    // Returns the place of a window on the screen, with its frame. Empty if the program and the compositor disagree
    // about the window, which they do for a moment after each change.
    QRect placeOf(const Window &window) const;
    // These two wait until they agree.
    QRect placeOf(const QString &window) const;
    // Returns the place of a part on the screen.
    QRect placeOf(const QString &window, const QString &part) const;

    // The actions wait for what they need and return false, with a message, if it does not come.
    bool click(const QString &window, const QString &part, int button = 1) const;
    // Clicks through the menu bar: "SetUp", "Configuration".
    bool choose(const QString &menu, const QString &entry) const;
    bool chooseInPopup(const QString &entry) const;
    // Waits until the window is visible, in agreement with the compositor, and active.
    bool waitForWindow(const QString &nameOrTitle) const;
    bool waitUntilGone(const QString &nameOrTitle) const;
    bool waitForPopup() const;
    bool waitForNoPopup() const;
    static bool waitFor(const char *what, const std::function<bool()> &condition);

private:
    void setUp(QProcess &process, const QString &errors) const;
    QRect placeNow(const QString &window, const QString &part = {}) const;

    const Compositor &m_compositor;
    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_process;
};

// Returns the number of pixels in the yellow of the curve.
int curvePixels(const QImage &picture);

} // namespace calvorn::test
