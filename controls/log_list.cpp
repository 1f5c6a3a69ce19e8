// SPDX-License-Identifier: MIT
#include "controls/log_list.h"

#include "core/whole_file.h"

#include <QAction>
#include <QClipboard>
#include <QDate>
#include <QGuiApplication>
#include <QKeyEvent>

#include <limits>

namespace calvorn {

LogList::LogList(Messages &messages, ErrorBoundary &boundary, QWidget *parent)
    : QListWidget(parent)
    , m_messages(messages)
{
    setObjectName(QStringLiteral("lstLOG"));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformItemSizes(true);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    auto *copyAction = new QAction(tr("&Copy"), this);
    copyAction->setObjectName(QStringLiteral("mnuCopyLog"));
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    auto *allAction = new QAction(tr("Select &all"), this);
    allAction->setObjectName(QStringLiteral("mnuSelectLog"));
    allAction->setShortcut(QKeySequence::SelectAll);
    allAction->setShortcutContext(Qt::WidgetShortcut);
    auto *saveAction = new QAction(tr("&Save…"), this);
    saveAction->setObjectName(QStringLiteral("mnuSaveLog"));
    addActions({copyAction, allAction, saveAction});
    connect(copyAction, &QAction::triggered, this, &LogList::copy);
    connect(allAction, &QAction::triggered, this, &QListWidget::selectAll);
    boundary.connect(saveAction, &QAction::triggered, this, "mnuSaveLog_Click", [this] { save(); });
}

void LogList::appendLine(const QString &text)
{
    if (count() >= std::numeric_limits<std::int16_t>::max())
        throw RuntimeError(RuntimeError::Kind::Overflow, tr("the log list is full"));
    const bool copying = selectedItems().size() > 1;
    addItem(text);
    setCurrentRow(count() - 1, copying ? QItemSelectionModel::NoUpdate : QItemSelectionModel::ClearAndSelect);
    scrollToBottom();
}

// Sends the key to the focused list instead of the menu entry with the same shortcut.
bool LogList::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Copy))
        event->accept();
    return QListWidget::event(event);
}

void LogList::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else
        QListWidget::keyPressEvent(event);
}

void LogList::copy() const
{
    if (selectedItems().isEmpty())
        return;
    QStringList lines;
    for (int row = 0; row < count(); ++row)
        if (item(row)->isSelected())
            lines.append(item(row)->text());
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void LogList::save()
{
    const QString suggested =
        m_lastFile.isEmpty()
            ? tr("log") + QDate::currentDate().toString(QStringLiteral(" yyyy-MM-dd")) + QStringLiteral(".txt")
            : m_lastFile;
    const QString path = m_messages.desktop().chooseFileToSave(tr("Text files (*.txt);;All files (*)"), suggested);
    if (path.isEmpty())
        return;
    QByteArray text;
    for (int row = 0; row < count(); ++row)
        text += item(row)->text().toUtf8() + '\n';
    writeWholeFile(path, text);
    m_lastFile = path;
}

} // namespace calvorn
