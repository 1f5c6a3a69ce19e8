// SPDX-License-Identifier: MIT
// A plugin that Qt loads into the unchanged program (QT_QPA_GENERIC_PLUGINS=observer:SOCKET). It answers every line
// that arrives at its socket with a description of the visible windows and their widgets. It only reads; all input
// comes through the compositor.
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMenu>
#include <QMenuBar>
#include <QMetaProperty>
#include <QTabBar>
#include <QTextEdit>
#include <QTreeView>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int kMostRows = 500;

QJsonArray inJson(const QRect &rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

// Places are relative to the upper left corner of the window's contents.
QRect placeOf(const QWidget &widget, const QRect &part)
{
    return {widget.mapTo(widget.window(), part.topLeft()), part.size()};
}

QString withoutMnemonic(QString text)
{
    return text.section(u'\t', 0, 0).remove(u'&');
}

QString rowsOf(const QAbstractItemView &view)
{
    QStringList rows;
    const QAbstractItemModel *model = view.model();
    for (int row = 0; model && row < std::min(model->rowCount(view.rootIndex()), kMostRows); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(view.rootIndex()); ++column)
            cells.append(model->index(row, column, view.rootIndex()).data().toString());
        rows.append(cells.join(u'\t'));
    }
    return rows.join(u'\n');
}

QString textOf(const QWidget &widget)
{
    if (const auto *view = qobject_cast<const QAbstractItemView *>(&widget))
        return rowsOf(*view);
    if (const auto *text = qobject_cast<const QTextEdit *>(&widget))
        return text->toPlainText();
    for (const char *name : {"text", "currentText", "title"})
        if (const QVariant value = widget.property(name); value.isValid())
            return withoutMnemonic(value.toString());
    return {};
}

QJsonObject describe(const QWidget &widget)
{
    return {{"name", widget.objectName()},
            {"class", QString::fromLatin1(widget.metaObject()->className())},
            {"text", textOf(widget)},
            {"place", inJson(placeOf(widget, widget.rect()))},
            {"enabled", widget.isEnabled()},
            {"focus", widget.hasFocus()},
            {"checked", widget.property("checked").toBool()}};
}

QJsonObject describe(const QWidget &widget, const QAction &action, const QRect &part)
{
    return {{"name", action.objectName()},
            {"class", "QAction"},
            {"text", withoutMnemonic(action.text())},
            {"place", inJson(placeOf(widget, part))},
            {"enabled", action.isEnabled()},
            {"checked", action.isChecked()}};
}

void appendVisibleRows(const QAbstractItemView &view, QJsonArray &parts)
{
    const auto *tree = qobject_cast<const QTreeView *>(&view);
    QModelIndex index = view.model() ? view.model()->index(0, 0, view.rootIndex()) : QModelIndex();
    for (int row = 0; index.isValid() && row < kMostRows; ++row) {
        const QRect place = view.visualRect(index);
        if (view.viewport()->rect().contains(place.center())) {
            parts.append(QJsonObject{{"name", QStringLiteral("row%1").arg(row)},
                                     {"class", "row"},
                                     {"text", index.data().toString()},
                                     {"place", inJson(placeOf(*view.viewport(), place))},
                                     {"enabled", view.isEnabled()}});
        }
        index = tree ? tree->indexBelow(index) : index.siblingAtRow(index.row() + 1);
    }
}

// Appends the parts of a widget that are not widgets themselves: menu entries, tabs, and rows of lists and tables.
void appendParts(const QWidget &widget, QJsonArray &parts)
{
    if (const auto *menu = qobject_cast<const QMenu *>(&widget))
        for (const QAction *action : menu->actions())
            parts.append(describe(widget, *action, menu->actionGeometry(const_cast<QAction *>(action))));
    if (const auto *view = qobject_cast<const QAbstractItemView *>(&widget))
        appendVisibleRows(*view, parts);
    if (const auto *bar = qobject_cast<const QMenuBar *>(&widget))
        for (const QAction *action : bar->actions())
            parts.append(describe(widget, *action, bar->actionGeometry(const_cast<QAction *>(action))));
    if (const auto *tabs = qobject_cast<const QTabBar *>(&widget))
        for (int i = 0; i < tabs->count(); ++i)
            parts.append(QJsonObject{{"name", QStringLiteral("tab%1").arg(i)},
                                     {"class", "tab"},
                                     {"text", withoutMnemonic(tabs->tabText(i))},
                                     {"place", inJson(placeOf(widget, tabs->tabRect(i)))},
                                     {"enabled", tabs->isTabEnabled(i)},
                                     {"checked", tabs->currentIndex() == i}});
}

QJsonObject describeWindow(const QWidget &window)
{
    QJsonArray parts;
    parts.append(describe(window));
    appendParts(window, parts);
    for (const QWidget *widget : window.findChildren<const QWidget *>()) {
        if (widget->window() != &window || !widget->isVisible())
            continue;
        parts.append(describe(*widget));
        appendParts(*widget, parts);
    }
    const QWindow *handle = window.windowHandle();
    const QMargins frame = handle ? handle->frameMargins() : QMargins();
    return {{"title", window.windowTitle()},
            {"name", window.objectName()},
            {"class", QString::fromLatin1(window.metaObject()->className())},
            {"type", static_cast<int>(window.windowType())},
            {"size", QJsonArray{window.width(), window.height()}},
            {"frame", QJsonArray{frame.left(), frame.top(), frame.right(), frame.bottom()}},
            {"active", window.isActiveWindow()},
            {"parts", parts}};
}

QByteArray visibleWindows()
{
    QJsonArray windows;
    for (const QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible())
            windows.append(describeWindow(*window));
    return QJsonDocument(windows).toJson(QJsonDocument::Compact) + '\n';
}

class Observer : public QObject
{
public:
    explicit Observer(const QString &socket)
    {
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
            QLocalSocket *client = m_server.nextPendingConnection();
            QObject::connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
            QObject::connect(client, &QLocalSocket::readyRead, client, [client] {
                while (client->canReadLine()) {
                    client->readLine();
                    client->write(visibleWindows());
                }
            });
        });
        if (!m_server.listen(socket))
            qWarning("the observer cannot listen: %s", qPrintable(m_server.errorString()));
    }

private:
    QLocalServer m_server;
};

} // namespace

class ObserverPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "observer.json")

public:
    QObject *create(const QString &, const QString &socket) override { return new Observer(socket); }
};

#include "observer.moc"
