// SPDX-License-Identifier: MIT
#pragma once

#include "setup/frm_set_up.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/program_folder.h"
#include "tests/support/widget_hands.h"

#include <memory>

namespace calvorn::test {

// The open configuration dialog with its own settings file.
struct SetUpBench : WidgetHands
{
    ProgramFolder folder;
    Configuration configuration;
    FakeDesktop desktop;
    Messages messages{configuration, desktop};
    Log log{configuration};
    ErrorBoundary boundary{messages, log};
    std::unique_ptr<FrmSetUp> dialog;

    explicit SetUpBench(const QByteArray &settings)
        : folder({}, settings)
    {
        configuration.iniPath = folder.iniPath();
        dialog = std::make_unique<FrmSetUp>(configuration, messages, boundary);
        open();
    }

    void open() const
    {
        dialog->show();
        dialog->activateWindow();
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("the dialog never became active");
    }

    QWidget *root() const override { return dialog.get(); }

    QByteArray file() const
    {
        QFile ini(folder.iniPath());
        return ini.open(QIODevice::ReadOnly) ? ini.readAll() : QByteArray("(no file)");
    }
};

} // namespace calvorn::test
