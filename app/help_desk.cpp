// SPDX-License-Identifier: MIT
#include "app/help_desk.h"

#include "app/help_window.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>

#include <array>
#include <utility>

namespace calvorn {

namespace {

struct PageOfWindow
{
    const char *window; // objectName
    const char *page;
};

constexpr std::array kPages{
    PageOfWindow{"frmSweep", "main-window.html"},
    PageOfWindow{"frmSetUp", "setup.html"},
    PageOfWindow{"frmLPTpin", "lpt-board.html#pins"},
    PageOfWindow{"frmCalibraDDS", "calibration.html#generator"},
    PageOfWindow{"frmCalibraADC", "calibration.html#detector"},
    PageOfWindow{"frmCalibraLevel", "calibration.html#level"},
    PageOfWindow{"frmPreferences", "preferences.html"},
    PageOfWindow{"frmAbout", "about.html"},
    PageOfWindow{"messageBox", "messages.html"},
};

QString pageOf(const QWidget *window)
{
    for (const auto &[name, page] : kPages)
        if (window->objectName() == QLatin1String(name))
            return QString::fromLatin1(page);
    // All other windows are system dialogs for choosing a file or a printer.
    return QStringLiteral("files.html");
}

} // namespace

HelpDesk::HelpDesk(QString helpFile, Messages &messages, ErrorBoundary &boundary, QWidget *window)
    : QObject(window)
    , m_helpFile(std::move(helpFile))
    , m_messages(messages)
    , m_boundary(boundary)
    , m_window(window)
{
    QAction *contents = addAction("mnuHelpContent", tr("&Contents"), tr("Open the manual"));
    QAction *page = addAction("mnuHelpWindow", tr("&This window"), tr("Help for the active window"));
    page->setShortcut(QKeySequence(Qt::Key_F1));
    m_boundary.connect(contents, &QAction::triggered, this, "mnuHelpContent_Click", [this] { mnuHelpContent_Click(); });
    m_boundary.connect(page, &QAction::triggered, this, "mnuHelpWindow_Click", [this] { openPageOf(m_window); });
    qApp->installEventFilter(this);
}

HelpDesk::~HelpDesk()
{
    closeAll();
}

QAction *HelpDesk::addAction(const char *name, const QString &text, const QString &tip)
{
    auto *action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setToolTip(tip);
    m_actions.append(action);
    return action;
}

void HelpDesk::closeAll()
{
    delete m_help.data();
}

bool HelpDesk::eventFilter(QObject *watched, QEvent *event)
{
    if (!watched->isWidgetType())
        return false;
    auto *widget = static_cast<QWidget *>(watched);
    if (event->type() == QEvent::Hide && m_help && m_help->parentWidget() == widget && widget != m_window)
        liftAbove(widget->parentWidget() ? widget->parentWidget()->window() : m_window);
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent *>(event)->key() != Qt::Key_F1 ||
        static_cast<QKeyEvent *>(event)->modifiers() != Qt::NoModifier)
        return false;
    QWidget *inFront = widget->window();
    if (inFront != m_help)
        m_boundary.run("mnuHelpWindow_Click", [&] { openPageOf(inFront); });
    return true;
}

void HelpDesk::mnuHelpContent_Click()
{
    if (HelpWindow *help = openWindow(m_window))
        help->showContents();
}

void HelpDesk::openPageOf(QWidget *inFront)
{
    if (HelpWindow *help = openWindow(inFront))
        help->showPage(pageOf(inFront));
}

// If help is not available, reports an error and returns null.
HelpWindow *HelpDesk::openWindow(QWidget *inFront)
{
    if (!m_help && QFileInfo(m_helpFile).isFile())
        m_help = new HelpWindow(m_helpFile, inFront);
    auto *help = static_cast<HelpWindow *>(m_help.data());
    if (!help || !help->isUsable()) {
        closeAll();
        m_messages.warn(tr("The help file %1 is missing or damaged.").arg(m_helpFile));
        return nullptr;
    }
    if (help->parentWidget() != inFront)
        liftAbove(inFront);
    help->show();
    help->raise();
    help->activateWindow();
    return help;
}

// A modal dialog blocks all windows except its children, so the help window becomes a child of the dialog.
void HelpDesk::liftAbove(QWidget *owner)
{
    const bool visible = m_help->isVisible();
    const QRect place = m_help->geometry();
    m_help->setParent(owner, Qt::Window);
    m_help->setGeometry(place);
    m_help->setVisible(visible);
}

} // namespace calvorn
