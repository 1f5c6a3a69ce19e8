// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "platform/desktop.h"

#include <QStringList>

#include <functional>

namespace calvorn {

// Message boxes under the application title. The text passes through msgText, the answer through msgResult.
class Messages
{
public:
    Messages(Configuration &configuration, Desktop &desktop);

    // Returns kBoxOk or kBoxCancel.
    std::int16_t show(BoxIcon icon, BoxButtons buttons, const QString &text);

    // The same under a title of its own.
    std::int16_t show(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title);

    // A warning with an OK button.
    void warn(const QString &text);

    // A beep, then the warning: how a fault of the hardware is told.
    void beepAndWarn(const QString &text);

    Desktop &desktop() const { return m_desktop; }

private:
    Configuration &m_configuration;
    Desktop &m_desktop;
};

// Boxes about events that arrive while one is still open: each different text is shown, one after the other. A text
// that shows or waits already is not shown again.
class AlertQueue
{
public:
    // Shows a text. False: the user has cancelled, and what waits is dropped.
    using Ask = std::function<bool(const QString &text)>;

    void show(const QString &text, const Ask &ask);

private:
    QStringList m_texts; // the first one shows
};

} // namespace calvorn
