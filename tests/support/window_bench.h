// SPDX-License-Identifier: MIT
#pragma once

#include "app/frm_sweep.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/program_folder.h"
#include "tests/support/widget_hands.h"

#include <QAbstractItemView>

#include <memory>

namespace calvorn::test {

// The complete main window in its own program folder, with a fake desktop.
struct WindowBench : WidgetHands
{
    ProgramFolder folder;
    Configuration configuration;
    FakeDesktop desktop;
    std::unique_ptr<SweepStation> station;
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
        window.reset();
        station = std::make_unique<SweepStation>(ProgramFolders{folder.path(), folder.path(), folder.path()},
                                                 configuration, desktop, desktop);
        window = std::make_unique<FrmSweep>(*station);
        started = window->start();
        if (!started)
            return;
        // Without a window manager, windows are not activated automatically.
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get()))
            qFatal("the window never became active");
    }

    AcquisitionDriver *driver() const { return station->instrument.driver(); }
    QWidget *root() const override { return window.get(); }
    SweepTable *table() const { return qobject_cast<SweepTable *>(find<QAbstractItemView>("MSFlexGridV")->model()); }
};

} // namespace calvorn::test
