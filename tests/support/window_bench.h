// SPDX-License-Identifier: MIT
#pragma once

#include "app/frm_sweep.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/program_folder.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <memory>

namespace calvorn::test {

// The whole main window in a program folder of its own, with a desktop that nobody sits at.
struct WindowBench
{
    ProgramFolder folder;
    Configuration configuration;
    FakeDesktop desktop;
    std::unique_ptr<FrmSweep> window;
    bool started = false;

    WindowBench(const QString &server, const QByteArray &settings)
        : folder(server, settings)
    {
        open();
    }

    void open()
    {
        configuration = Configuration();
        window = std::make_unique<FrmSweep>(folder.path(), configuration, desktop);
        started = window->start();
        if (!started)
            return;
        // Nothing activates a window where no window manager runs.
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get()))
            qFatal("the window never became active");
    }

    template <typename Widget = QWidget>
    Widget *find(const char *name) const
    {
        auto *widget = window->findChild<Widget *>(QString::fromLatin1(name));
        if (!widget)
            qFatal("there is no %s", name);
        return widget;
    }

    QString text(const char *name) const { return find<QLineEdit>(name)->text(); }
    QString label(const char *name) const { return find<QLabel>(name)->text(); }
    bool isShown(const char *name) const { return find(name)->isVisible(); }
    void click(const char *name) const
    {
        auto *button = find<QAbstractButton>(name);
        // An option is hit at its mark; the middle of its row may lie beyond its text.
        const QPoint at = button->isCheckable() ? QPoint(10, button->height() / 2) : button->rect().center();
        QTest::mouseClick(button, Qt::LeftButton, {}, at);
    }
    SweepTable *table() const { return qobject_cast<SweepTable *>(find<QAbstractItemView>("MSFlexGridV")->model()); }

    void type(const char *name, const QString &newText) const
    {
        auto *box = find<QLineEdit>(name);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, newText);
        QTest::keyClick(box, Qt::Key_Tab);
    }
};

} // namespace calvorn::test
