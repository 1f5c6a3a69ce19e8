// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <functional>

namespace calvorn::test {

// Runs the action in the next modal dialog as soon as the dialog is open and active.
inline void whileModal(const std::function<void(QWidget &dialog)> &action)
{
    QTimer::singleShot(0, qApp, [action] {
        if (!QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }))
            qFatal("no dialog has opened");
        QWidget *dialog = QApplication::activeModalWidget();
        dialog->activateWindow();
        // Only the active window receives shortcuts.
        if (!QTest::qWaitFor([dialog] { return dialog->isActiveWindow(); }))
            qFatal("the dialog never became active");
        action(*dialog);
    });
}

// Closes the next dialog with Escape.
inline void dismissNextDialog()
{
    whileModal([](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
}

} // namespace calvorn::test
