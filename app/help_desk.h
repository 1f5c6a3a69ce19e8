// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"

#include <QAction>
#include <QPointer>

namespace calvorn {

class HelpWindow;

// Opens help: the contents from the menu, or with F1 the page about the active window, dialog or message box. There is
// only one help window, which remains usable while a dialog is open.
class HelpDesk : public QObject
{
    Q_OBJECT

public:
    // helpFile: the compiled help; a missing file is reported when help is opened.
    HelpDesk(QString helpFile, Messages &messages, ErrorBoundary &boundary, QWidget *window);
    ~HelpDesk() override;

    // mnuHelpContent, mnuHelpWindow.
    const QList<QAction *> &actions() const { return m_actions; }

    // Closes the help window, if there is one. Called at shutdown.
    void closeAll();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAction *addAction(const char *name, const QString &text, const QString &tip);
    void mnuHelpContent_Click();
    void openPageOf(QWidget *inFront);
    HelpWindow *openWindow(QWidget *inFront);
    void liftAbove(QWidget *owner);

    QString m_helpFile;
    Messages &m_messages;
    ErrorBoundary &m_boundary;
    QWidget *m_window;
    QList<QAction *> m_actions;
    QPointer<QWidget> m_help; // a HelpWindow; only a QWidget while it is being destroyed
};

} // namespace calvorn
