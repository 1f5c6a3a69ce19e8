// SPDX-License-Identifier: MIT
#include "widgets/list_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWidget>

namespace calvorn {

namespace {

bool isListOpen()
{
    const QWidget *popup = QApplication::activePopupWidget();
    return popup && popup->inherits("QComboBoxPrivateContainer");
}

} // namespace

bool ListKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (m_forwards || !watched->isWidgetType() || !isListOpen())
        return false;
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const QScopedValueRollback forwards(m_forwards, true);
    const auto *key = static_cast<QKeyEvent *>(event);
    QKeyEvent question(QEvent::ShortcutOverride, key->key(), key->modifiers(), key->text());
    QCoreApplication::sendEvent(watched, &question);
    return !isListOpen();
}

} // namespace calvorn
