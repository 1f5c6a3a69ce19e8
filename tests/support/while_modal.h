// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <functional>

namespace calvorn::test {

// Does something in the next modal dialog, once it is open, as a person would while its procedure waits.
inline void whileModal(const std::function<void(QWidget &dialog)> &action)
{
    QTimer::singleShot(0, qApp, [action] {
        if (!QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }))
            qFatal("no dialog has opened");
        QWidget *dialog = QApplication::activeModalWidget();
        dialog->activateWindow();
        // Shortcuts go to the active window alone.
        if (!QTest::qWaitFor([dialog] { return dialog->isActiveWindow(); }))
            qFatal("the dialog never became active");
        action(*dialog);
    });
}

// A dialog that is closed with Escape, unread.
inline void dismissNextDialog()
{
    whileModal([](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
}

} // namespace calvorn::test
