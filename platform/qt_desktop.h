// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"
#include "platform/desktop.h"

#include <QElapsedTimer>

namespace calvorn {

// The real desktop: message boxes over the active window, the system beep, and a clock that starts at construction.
class QtDesktop : public Desktop, public Clock
{
public:
    QtDesktop();

    std::int16_t messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title) override;
    QString chooseFileToOpen(const QString &filter, const QString &suggested) override;
    QString chooseFileToSave(const QString &filter, const QString &suggested) override;
    bool choosePrinter(QPrinter &printer) override;
    void beep() override;
    std::uint32_t tickCount() override;
    void sleep(int milliseconds) override;
    void pumpMessages(int milliseconds) override;

private:
    QElapsedTimer m_clock;
};

} // namespace calvorn
