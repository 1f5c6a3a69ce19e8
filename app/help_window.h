// SPDX-License-Identifier: MIT
#pragma once

#include "platform/swept_folder.h"

#include <QTextBrowser>
#include <QWidget>

class QHelpEngine;
class QHelpLink;
class QTabWidget;
class QToolBar;

namespace calvorn {

// Shows only pages of the help file.
class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpBrowser(const QHelpEngine &engine, QWidget *parent = nullptr);

    QVariant loadResource(int type, const QUrl &name) override;

protected:
    // Ignores links to pages outside the help file.
    void doSetSource(const QUrl &url, QTextDocument::ResourceType type) override;

private:
    const QHelpEngine &m_engine;
};

// The help: contents, index and search on the left, the page on the right.
//
// Besides the help file, Qt Help needs files such as the search index. They are stored in a temporary folder, because
// the program folder may be write-protected.
class HelpWindow : public QWidget
{
    Q_OBJECT

public:
    // helpFile: the compiled help, which must exist.
    explicit HelpWindow(const QString &helpFile, QWidget *parent = nullptr);
    ~HelpWindow() override;

    // Whether the help file could be opened.
    bool isUsable() const { return m_usable; }

    // page: "setup.html" or "setup.html#ports".
    void showPage(const QString &page);
    // Shows the first page, with the contents tab in front.
    void showContents();

private:
    void build();
    QWidget *buildIndex();
    QWidget *buildSearch();
    QToolBar *buildToolBar();
    void selectInContents();
    void openDocuments(const QList<QHelpLink> &documents);

    SweptFolder m_folder; // for the collection that Qt Help creates
    QHelpEngine *m_engine;
    HelpBrowser *m_browser = nullptr;
    QTabWidget *m_tabs = nullptr;
    bool m_usable = false;
};

} // namespace calvorn
